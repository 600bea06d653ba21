// What the manual and the field reference must name.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "cli/options.h"
#include "dictionary/field_def.h"
#include "iptc/iptc_dataset.h"

namespace tagmend {
namespace {

std::string document(const std::string& name) {
  std::ifstream file(std::string(TAGMEND_DOCS "/") + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Manual, DescribesEveryOption) {
  const std::string manual = document("tagmend.1");
  for (const OptionRow& row : option_rows) {
    const std::string paragraph = row.takes_argument
                                      ? std::string("\n.TP\n.BI \\-") + row.letter + " \" "
                                      : std::string("\n.TP\n.B \\-") + row.letter + "\n";
    EXPECT_NE(manual.find(paragraph), std::string::npos) << row.letter;
  }
}

TEST(FieldReference, NamesEveryFieldAndDataset) {
  const std::string reference = document("fields.md");
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
}  // namespace tagmend
