// What the generated documents say about fields, taken from the program's own tables.
#pragma once

#include <string>
#include <vector>

namespace tagmend::reference {

/// A name of a value, as it is typed, and its display text.
struct ValueName {
  std::string nickname;
  std::string short_code;
  std::string description;
};

/// One field or dataset.
struct Field {
  std::string nickname;
  std::string description;
  std::string type;
  std::string count;
  std::string form;               ///< how a value is typed, when it is not one of `values`
  std::vector<ValueName> values;  ///< the values that its map knows
  bool settable;                  ///< -a stores a value
  bool removable;                 ///< -r takes it out of a file
};

struct Group {
  const char* heading;
  const char* note;  ///< what holds for the group as a whole
  std::vector<Field> fields;
};

/// All groups, those that most users need first. Ends the program with a message when a table of
/// the program has grown and the descriptions here have not.
std::vector<Group> collect_groups();

/// One option of the command line.
struct Option {
  char letter;
  bool takes_argument;
  const char* description;
  const char* argument;  ///< what the argument is, for options that take one
};

/// In the order of the usage text. Ends the program like collect_groups.
std::vector<Option> collect_options();

void print_markdown(const std::vector<Group>& groups);

/// The tables for the completion of one shell. The script that uses them stands in completions/.
void print_bash_tables(const std::vector<Group>& groups, const std::vector<Option>& options);
void print_zsh_tables(const std::vector<Group>& groups, const std::vector<Option>& options);
void print_fish_tables(const std::vector<Group>& groups, const std::vector<Option>& options);

/// Says what is wrong and ends the program: the build fails.
[[noreturn]] void fail(const std::string& message);

}  // namespace tagmend::reference
