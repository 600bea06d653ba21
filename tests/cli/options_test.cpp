#include "cli/options.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/settings.h"

namespace tagmend {
namespace {

struct Parsed {
  int first_operand = 0;
  RunOptions options;
  std::string err;
};

Parsed parse(std::vector<std::string> words) {
  words.insert(words.begin(), "tagmend");
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);
  Session session = open_session();
  CommandFlags flags;
  Parsed parsed;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  parsed.first_operand = parse_options(static_cast<int>(words.size()), argv.data(), session, flags);
  testing::internal::GetCapturedStdout();
  parsed.err = testing::internal::GetCapturedStderr();
  parsed.options = session.options;
  return parsed;
}

std::string erased_blocks(const RunOptions& options) {
  return std::string(options.erase_exif ? "e" : "") + (options.erase_flashpix ? "f" : "") +
         (options.erase_iptc ? "i" : "");
}

TEST(ParseOptions, TheFirstLetterChoosesWhatIsErased) {
  const std::pair<const char*, std::string> rows[] = {
      {"e", "e"},    {"Exif", "e"}, {"f", "f"},   {"F", "f"}, {"i", "i"},
      {"IPTC", "i"}, {"a", "efi"},  {"A", "efi"}, {"x", ""},  {"", ""}};
  for (const auto& [argument, erased] : rows) {
    EXPECT_EQ(erased_blocks(parse({"-e", argument, "photo.jpg"}).options), erased) << argument;
  }
}

TEST(ParseOptions, AnEditDropsTheEraseButNotWhatItMarked) {
  for (const bool is_edit : {false, true}) {
    const RunOptions options = parse({"-ea", is_edit ? "-s" : "-t120", "photo.jpg"}).options;
    EXPECT_EQ(erased_blocks(options), is_edit ? "" : "efi");
    EXPECT_TRUE(options.exif_removed && options.iptc_removed);
  }
}

TEST(ParseOptions, CharactersAreGivenAsThemselvesOrByNumber) {
  struct Row {
    const char* argument;
    char character;
  };
  const Row rows[] = {{"!", '!'},   {"0", '0'},   {"7", '7'},   {"065", '5'},
                      {"42", '*'},  {"042", '"'}, {"65", 'A'},  {"09", '\0'},
                      {"65x", 'A'}, {" 65", 'A'}, {"321", 'A'}, {"-191", 'A'}};
  for (const Row& row : rows) {
    EXPECT_EQ(parse({"-c", row.argument, "photo.jpg"}).options.quote_char, row.character)
        << row.argument;
    parse({"-j", row.argument, "photo.jpg"});
    EXPECT_EQ(library_settings.separator, row.character) << row.argument;
  }
  for (const char* argument : {"ab", "", "x1", "--"}) {
    const Parsed quote = parse({"-c", argument, "photo.jpg"});
    EXPECT_EQ(quote.first_operand, -1);
    EXPECT_EQ(quote.err, std::string("Error: Quote character (-c ") + argument + ") is invalid\n");
    const Parsed separator = parse({"-j", argument, "photo.jpg"});
    EXPECT_EQ(separator.first_operand, -1);
    EXPECT_EQ(separator.err,
              std::string("Error: Separator character (-j ") + argument + ") is invalid\n");
  }
}

}  // namespace
}  // namespace tagmend
