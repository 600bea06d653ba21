// The syntax of field lists: "name=value,name=value", "name,name", "1 2 3" and "a;b;c". Every
// deviation is reported with its own message and passed over; a list is never rejected as a whole.
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace tagmend {

inline constexpr std::size_t name_limit = 50;     ///< characters of a name that are kept
inline constexpr std::size_t value_limit = 2000;  ///< characters of a value that are kept
inline constexpr std::size_t list_limit = 2048;   ///< characters of a list from the command line

using NameText = std::array<char, name_limit + 1>;
using ValueText = std::array<char, value_limit + 1>;

/// A list being read: the text, which the escape rule changes in place, and how far it has been
/// read.
struct ListText {
  std::span<char> text;  ///< without a terminating NUL
  std::size_t pos = 0;
  std::size_t blanks = 0;  ///< behind the text, one for each backslash that was taken out of it
};

enum class TokenKind { name = 1, value = 2, end = 3 };

/// Where the lexer stands in the list; `invalid` is never entered by itself.
enum class ListState {
  invalid = 0,
  start = 1,
  in_name = 2,
  after_name = 3,
  after_equals = 4,
  in_value = 5,
  in_quoted = 6,
};

/// The lexer: its state carries over from one token to the next.
struct ListLexer {
  ListState state = ListState::start;
  char quote = '"';
};

/// Takes the next token from the list: a NAME cut to 50 characters or a VALUE cut to 2000.
TokenKind next_list_token(ListLexer& lexer, ListText& list, ValueText& token);

/// The next name and value; false at the end of the list. Starts a fresh lexer at every call.
bool next_add_item(ListText& list, char quote, NameText& name, ValueText& value);

/// The next name; false (and an empty name) at the end of the list.
bool next_remove_item(ListText& list, char quote, NameText& name);

/// The next item of a value whose parts the separator divides, cut to 2000 characters; false at the
/// end.
bool split_repeated_value(ListText& list, char quote, char separator, ValueText& item);

/// Reads a list file (the standard input for a name that begins with "-") into `buffer`, at most
/// its size - 1 bytes, and terminates them. Returns the count; 0 after a message when the file
/// cannot be opened or read.
std::size_t read_list_file(const char* file_name, std::span<char> buffer);

}  // namespace tagmend
