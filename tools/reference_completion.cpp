// The tables of the completions. The scripts that use them stand in completions/.
#include <cstdio>
#include <set>
#include <string_view>

#include "reference.h"

namespace tagmend::reference {
namespace {

/// Names that the shells would split or that nobody can type are not offered.
bool can_be_offered(std::string_view name) {
  return !name.empty() &&
         name.find_first_of(" \t\n,;:'\"\\$`&|()<>[]{}*?!#~=") == std::string_view::npos;
}

/// What to offer for a field, each name once: of every value its nickname, or its short code where
/// that alone can be typed.
std::vector<ValueName> offered_values(const Field& field) {
  std::vector<ValueName> offered;
  std::set<std::string> names;
  for (const ValueName& value : field.values) {
    const std::string& name = can_be_offered(value.nickname) ? value.nickname : value.short_code;
    if (can_be_offered(name) && names.insert(name).second) {
      offered.push_back({name, value.short_code, value.description});
    }
  }
  return offered;
}

std::string trimmed(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

/// In single quotes, as sh, bash and zsh read them.
std::string quoted(std::string_view text) {
  std::string result = "'";
  for (const char c : text) {
    result += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return result + "'";
}

/// In single quotes, as fish reads them.
std::string fish_quoted(std::string_view text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') {
      result += '\\';
    }
    result += c;
  }
  return result + "'";
}

/// Visits the fields that can be set, or those that can be removed.
template <class Visit>
void for_each_field(const std::vector<Group>& groups, bool Field::*flag, Visit visit) {
  for (const Group& group : groups) {
    for (const Field& field : group.fields) {
      if (field.*flag) {
        visit(field);
      }
    }
  }
}

/// Visits the fields whose values have names, with those to offer.
template <class Visit>
void for_each_value_list(const std::vector<Group>& groups, Visit visit) {
  for_each_field(groups, &Field::settable, [&visit](const Field& field) {
    if (!field.values.empty()) {
      visit(field, offered_values(field));
    }
  });
}

void print_bash_names(const char* variable, const std::vector<Group>& groups, bool Field::*flag) {
  std::printf("%s='", variable);
  for_each_field(groups, flag,
                 [](const Field& field) { std::printf("%s\n", field.nickname.c_str()); });
  std::puts("'");
}

/// A line "name:description" for each field.
void print_zsh_names(const char* variable, const std::vector<Group>& groups, bool Field::*flag) {
  std::printf("typeset -ga %s=(\n", variable);
  for_each_field(groups, flag, [](const Field& field) {
    std::puts(quoted(field.nickname + ":" + trimmed(field.description)).c_str());
  });
  std::puts(")");
}

void print_fish_names(const char* variable, const std::vector<Group>& groups, bool Field::*flag) {
  std::printf("set -g %s", variable);
  for_each_field(groups, flag, [](const Field& field) {
    std::printf(" \\\n%s", fish_quoted(field.nickname + "\t" + trimmed(field.description)).c_str());
  });
  std::puts("");
}

// What completes the argument of an option; the completion scripts hold these functions.

/// A leading blank keeps _arguments from adding words of its own.
const char* zsh_action(char letter) {
  switch (letter) {
    case 'a':
      return " _tagmend_list settable";
    case 'r':
      return " _tagmend_list removable";
    case 'e':
      return R"(((e\:EXIF f\:Flashpix i\:IPTC a\:all)))";
    case 'p':
      return " _tagmend_charsets";
    default:
      return " ";
  }
}

const char* fish_action(char letter) {
  switch (letter) {
    case 'a':
      return "(__tagmend_list settable)";
    case 'r':
      return "(__tagmend_list removable)";
    case 'e':
      return R"(e\tEXIF f\tFlashpix i\tIPTC a\tall)";
    case 'p':
      return "(__tagmend_charsets)";
    default:
      return "";
  }
}

}  // namespace

void print_bash_tables(const std::vector<Group>& groups, const std::vector<Option>& options) {
  std::puts("# bash completion for tagmend");
  std::string letters;
  std::string with_argument;
  for (const Option& option : options) {
    letters += std::string(letters.empty() ? "" : " ") + '-' + option.letter;
    if (option.takes_argument) {
      with_argument += option.letter;
    }
  }
  std::printf("_tagmend_options='%s'\n", letters.c_str());
  std::printf("_tagmend_with_argument='%s'\n", with_argument.c_str());
  print_bash_names("_tagmend_settable", groups, &Field::settable);
  print_bash_names("_tagmend_removable", groups, &Field::removable);
  std::puts("declare -gA _tagmend_values=(");
  for_each_value_list(groups, [](const Field& field, const std::vector<ValueName>& values) {
    std::string names;
    for (const ValueName& value : values) {
      names += value.nickname + "\n";
    }
    std::printf("[%s]=%s\n", field.nickname.c_str(), quoted(names).c_str());
  });
  std::puts(")");
}

void print_zsh_tables(const std::vector<Group>& groups, const std::vector<Option>& options) {
  std::puts("#compdef tagmend\n# zsh completion for tagmend");
  std::puts("typeset -ga _tagmend_options=(");
  for (const Option& option : options) {
    std::string entry = std::string("-") + option.letter + "[" + option.description + "]";
    if (option.takes_argument) {
      entry += std::string(":") + option.argument + ":" + zsh_action(option.letter);
    }
    std::puts(quoted(entry).c_str());
  }
  std::puts(")");
  print_zsh_names("_tagmend_settable", groups, &Field::settable);
  print_zsh_names("_tagmend_removable", groups, &Field::removable);
  std::puts("typeset -gA _tagmend_values=(");
  for_each_value_list(groups, [](const Field& field, const std::vector<ValueName>& values) {
    std::string lines;
    for (const ValueName& value : values) {
      lines += (lines.empty() ? "" : "\n") + value.nickname + ":" + trimmed(value.description);
    }
    std::printf("%s %s\n", field.nickname.c_str(), quoted(lines).c_str());
  });
  std::puts(")");
}

void print_fish_tables(const std::vector<Group>& groups, const std::vector<Option>& options) {
  std::puts("# fish completion for tagmend");
  for (const Option& option : options) {
    std::printf("complete -c tagmend -s %c -d %s", option.letter,
                fish_quoted(option.description).c_str());
    if (option.takes_argument) {
      std::printf(" -x -a \"%s\"", fish_action(option.letter));
    }
    std::puts("");
  }
  print_fish_names("__tagmend_settable", groups, &Field::settable);
  print_fish_names("__tagmend_removable", groups, &Field::removable);
  std::puts("function __tagmend_values -a field\nswitch $field");
  for_each_value_list(groups, [](const Field& field, const std::vector<ValueName>& values) {
    std::printf("case %s\nprintf '%%s\\t%%s\\n'", fish_quoted(field.nickname).c_str());
    for (const ValueName& value : values) {
      std::printf(" %s %s", fish_quoted(value.nickname).c_str(),
                  fish_quoted(trimmed(value.description)).c_str());
    }
    std::puts("");
  });
  std::puts("end\nend");
}

}  // namespace tagmend::reference
