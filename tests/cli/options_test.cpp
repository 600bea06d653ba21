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
  CommandFlags flags;
  std::string out, err;
};

Parsed parse(std::vector<std::string> words) {
  words.insert(words.begin(), "tagmend");
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);
  Session session = open_session();
  Parsed parsed;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  parsed.first_operand =
      parse_options(static_cast<int>(words.size()), argv.data(), session, parsed.flags);
  parsed.out = testing::internal::GetCapturedStdout();
  parsed.err = testing::internal::GetCapturedStderr();
  parsed.options = session.options;
  return parsed;
}

constexpr const char* erase_dropped =
    "Warning: Can't specify -e option with -a, -r, -t, or -s options.\n"
    "         -e option ignored.\n";

TEST(ParseOptions, StopsAtTheFirstOperand) {
  EXPECT_EQ(parse({"-b", "photo.jpg", "-q"}).first_operand, 2);
  EXPECT_FALSE(library_settings.warnings_suppressed);
  EXPECT_EQ(parse({"-bi", "-q", "--", "-q"}).first_operand, 4);
  EXPECT_EQ(parse({"-bc!", "photo.jpg"}).first_operand, 2);
  EXPECT_EQ(parse({"-ea"}).first_operand, 2);
}

TEST(ParseOptions, StartsFromDefaultsEveryTime) {
  parse({"-biqsud", "-c!", "-j,", "-ee", "photo.jpg"});
  const Parsed none = parse({"photo.jpg"});
  EXPECT_TRUE(none.options.keep_backup);
  EXPECT_EQ(none.options.quote_char, '"');
  EXPECT_FALSE(none.options.set_size || none.options.exif_added || none.options.exif_removed);
  EXPECT_FALSE(none.flags.include_subdirs);
  EXPECT_EQ(library_settings.separator, ';');
  EXPECT_FALSE(library_settings.warnings_suppressed || library_settings.unicode_comment ||
               library_settings.option_d);
  EXPECT_TRUE(parse({}).flags.show_version);
}

TEST(ParseOptions, EraseBlocks) {
  struct Row {
    const char* argument;
    bool exif, flashpix, iptc;
  };
  const Row rows[] = {{"e", true, false, false},    {"Exif", true, false, false},
                      {"f", false, true, false},    {"F", false, true, false},
                      {"iptc", false, false, true}, {"I", false, false, true},
                      {"a", true, true, true},      {"A", true, true, true}};
  for (const Row& row : rows) {
    const RunOptions options = parse({"-e", row.argument, "photo.jpg"}).options;
    EXPECT_EQ(options.erase_exif, row.exif) << row.argument;
    EXPECT_EQ(options.exif_removed, row.exif) << row.argument;
    EXPECT_EQ(options.erase_flashpix, row.flashpix) << row.argument;
    EXPECT_EQ(options.erase_iptc, row.iptc) << row.argument;
    EXPECT_EQ(options.iptc_removed, row.iptc) << row.argument;
  }
  for (const char* argument : {"x", ""}) {
    const Parsed refused = parse({"-e", argument, "photo.jpg"});
    EXPECT_EQ(refused.first_operand, 3);
    EXPECT_EQ(refused.out,
              std::string("Error: Invalid erase option '-e ") + argument + "' specified.\n");
    EXPECT_EQ(refused.err, "");
  }
}

TEST(ParseOptions, AnEditDropsTheEraseButNotWhatItMarked) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"-s", "-ea", "photo.jpg"},
        {"-ea", "-s", "photo.jpg"},
        {"-ea", "-r", "nothing-known", "-s", "photo.jpg"}}) {
    const Parsed parsed = parse(words);
    EXPECT_TRUE(parsed.err.ends_with(erase_dropped)) << parsed.err;
    EXPECT_FALSE(parsed.options.erase_exif || parsed.options.erase_flashpix ||
                 parsed.options.erase_iptc);
    EXPECT_TRUE(parsed.options.exif_removed && parsed.options.iptc_removed);
  }
  EXPECT_EQ(parse({"-q", "-ea", "-s", "photo.jpg"}).err, "");
  const Parsed thumbnail = parse({"-ea", "-t", "120", "photo.jpg"});
  EXPECT_EQ(thumbnail.err, "Warning: -t option ignored. Thumbnail operations not supported.\n");
  EXPECT_TRUE(thumbnail.options.erase_exif);
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

TEST(ParseOptions, OneFaultIsEnoughWhateverFollows) {
  EXPECT_EQ(parse({"-Z", "-c", "!", "photo.jpg"}).err, "tagmend: invalid option -- 'Z'\n");
  EXPECT_EQ(parse({"-Z", "-c", "!", "photo.jpg"}).first_operand, -1);
  EXPECT_EQ(parse({"-c"}).err, "tagmend: option requires an argument -- 'c'\n");
  EXPECT_EQ(parse({"-c"}).first_operand, -1);
  EXPECT_EQ(parse({"-p", "FOO=UTF-8", "-b", "photo.jpg"}).first_operand, -1);
}

}  // namespace
}  // namespace tagmend
