// What the manual, the completions and the field reference must name.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "cli/options.h"
#include "dictionary/field_def.h"
#include "iptc/iptc_dataset.h"

namespace tagmend::test {
namespace {

std::string document(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Manual, DescribesEveryOption) {
  const std::string manual = document(TAGMEND_DOCS "/tagmend.1");
  for (const OptionRow& row : option_rows) {
    const std::string paragraph = row.takes_argument
                                      ? std::string("\n.TP\n.BI \\-") + row.letter + " \" "
                                      : std::string("\n.TP\n.B \\-") + row.letter + "\n";
    EXPECT_NE(manual.find(paragraph), std::string::npos) << row.letter;
  }
}

TEST(Completions, NameEveryOption) {
  const std::string bash = document(TAGMEND_COMPLETIONS "/bash/tagmend");
  const std::string zsh = document(TAGMEND_COMPLETIONS "/zsh/_tagmend");
  const std::string fish = document(TAGMEND_COMPLETIONS "/fish/tagmend.fish");
  const std::string bash_options = bash.substr(bash.find("_tagmend_options='")).substr(17, 80);
  for (const OptionRow& row : option_rows) {
    const std::string letter(1, row.letter);
    EXPECT_NE(bash_options.find("-" + letter), std::string::npos) << letter;
    EXPECT_NE(zsh.find("\n'-" + letter + "["), std::string::npos) << letter;
    EXPECT_NE(fish.find("\ncomplete -c tagmend -s " + letter + " -d "), std::string::npos)
        << letter;
  }
}

TEST(FieldReference, NamesEveryFieldAndDataset) {
  const std::string reference = document(TAGMEND_DOCS "/fields.md");
  const auto expect_row = [&reference](const char* nickname, const char* description) {
    std::string row = std::string("\n| `") + nickname + "` | " + description;
    row.erase(row.find_last_not_of(' ') + 1);
    EXPECT_NE(reference.find(row + " |"), std::string::npos) << row;
  };
  for (const FieldDef& field : field_table_defs) {
    const bool stands_for_none = &field == &field_table_defs.front() || field.tag == end_tag;
    if (!stands_for_none) {
      expect_row(field.nickname, field.description);
    }
  }
  for (std::size_t row = 1; row < iptc_dataset_count; ++row) {
    expect_row(iptc_datasets[row].nickname, iptc_datasets[row].description);
  }
}

}  // namespace
}  // namespace tagmend::test
