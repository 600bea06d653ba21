// The field reference, docs/fields.md.
#include <cstdio>

#include "reference.h"

namespace tagmend::reference {
namespace {

constexpr char introduction[] =
    R"(<!-- Made by tagmend-reference from the program's tables; do not edit by hand. -->
# Fields

Every field that tagmend knows, by the nickname that `-a`, `-r` and templates take. Letter case
does not count in nicknames of EXIF fields; those of IPTC datasets are written as shown.

- **Type** and **Count**: how the value is stored. The count of a string includes its closing
  NUL; "any" stands for any number of values.
- **Value**: what `-a` takes. Where names are listed, a value is given by its nickname, by the
  short code in parentheses, or by the description behind them; nothing else is taken.
- **Edit**: *yes*: `-a` and `-r` work. *remove*: only `-r` does. *no*: the field is read, and
  shown in templates.
)";

/// A table cell: its bar must not end it.
std::string cell(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    escaped += c == '|' ? "\\|" : std::string(1, c);
  }
  const std::size_t end = escaped.find_last_not_of(' ');
  return escaped.substr(0, end + 1);
}

/// A name in code type. Code type drops blanks at both ends, hence the words.
std::string name_in_code(const std::string& name) {
  if (name.empty()) {
    return "(empty)";
  }
  const std::size_t end = name.find_last_not_of(' ') + 1;
  std::string text("`");
  text.append(cell(name)).append("`");
  if (end < name.size()) {
    const std::size_t blanks = name.size() - end;
    text.append(" and ").append(std::to_string(blanks)).append(blanks == 1 ? " blank" : " blanks");
  }
  return text;
}

std::string value_list(const std::vector<ValueName>& values) {
  std::string list;
  for (const ValueName& value : values) {
    if (!list.empty()) {
      list.append("; ");
    }
    list.append(name_in_code(value.nickname));
    if (value.short_code != value.nickname) {
      list.append(" (").append(name_in_code(value.short_code)).append(")");
    }
    if (value.description != value.nickname) {
      list.append(" ").append(cell(value.description));
    }
  }
  return list;
}

void print_row(const Field& field) {
  const char* const edit = field.settable ? "yes" : field.removable ? "remove" : "no";
  const std::string value = field.values.empty() ? cell(field.form) : value_list(field.values);
  std::printf("| `%s` | %s | %s | %s | %s | %s |\n", field.nickname.c_str(),
              cell(field.description).c_str(), field.type.c_str(), field.count.c_str(),
              value.c_str(), edit);
}

}  // namespace

void print_markdown(const std::vector<Group>& groups) {
  std::fputs(introduction, stdout);
  for (const Group& group : groups) {
    std::printf("\n## %s\n\n%s\n\n", group.heading, group.note);
    std::puts("| Nickname | Description | Type | Count | Value | Edit |");
    std::puts("|---|---|---|---|---|---|");
    for (const Field& field : group.fields) {
      print_row(field);
    }
  }
}

}  // namespace tagmend::reference
