// Prints the field reference, or the tables of the completion for one shell, from the program's own
// tables. The build runs it, so that neither can drift from the program.
#include "reference.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tagmend::reference {
namespace {

constexpr char markdown_introduction[] =
    "<!-- Made by tagmend-reference from the program's tables; do not edit by hand. -->\n"
    "# Fields\n"
    "\n"
    "Every field that tagmend knows, by the nickname that `-a`, `-r` and templates take. Letter "
    "case\n"
    "does not count in nicknames of EXIF fields; those of IPTC datasets are written as shown.\n"
    "\n"
    "- **Type** and **Count**: how the value is stored. The count of a string includes its "
    "closing\n"
    "  NUL; \"any\" stands for any number of values.\n"
    "- **Value**: what `-a` takes. Where names are listed, a value is given by its nickname, by "
    "the\n"
    "  short code in parentheses, or by the description behind them; nothing else is taken.\n"
    "- **Edit**: *yes*: `-a` and `-r` work. *remove*: only `-r` does. *no*: the field is read, "
    "and\n"
    "  shown in templates.\n";

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
  std::fputs(markdown_introduction, stdout);
  for (const Group& group : groups) {
    std::printf("\n## %s\n\n%s\n\n", group.heading, group.note);
    std::puts("| Nickname | Description | Type | Count | Value | Edit |");
    std::puts("|---|---|---|---|---|---|");
    for (const Field& field : group.fields) {
      print_row(field);
    }
  }
}

void fail(const std::string& message) {
  std::fprintf(stderr, "tagmend-reference: %s\n", message.c_str());
  std::exit(1);
}

namespace {

using TablePrinter = void (*)(const std::vector<Group>&, const std::vector<Option>&);

struct Format {
  const char* name;
  TablePrinter print;
};

constexpr Format formats[] = {
    {"bash", print_bash_tables},
    {"zsh", print_zsh_tables},
    {"fish", print_fish_tables},
    {"markdown", [](const auto& groups, const auto&) { print_markdown(groups); }},
};

int print_format(const char* name) {
  for (const Format& format : formats) {
    if (std::strcmp(format.name, name) == 0) {
      format.print(collect_groups(), collect_options());
      return std::fflush(stdout) == 0 && std::ferror(stdout) == 0 ? 0 : 1;
    }
  }
  fail(std::string("unknown format ") + name);
}

}  // namespace
}  // namespace tagmend::reference

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: tagmend-reference bash|zsh|fish|markdown\n", stderr);
    return 1;
  }
  return tagmend::reference::print_format(argv[1]);
}
