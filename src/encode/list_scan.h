// What the two lexers of lists share: the token being read, and the rules for blanks at the end of
// a value and for backslashes in quoted text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "encode/field_list.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend::list_scan {

/// A token being read. The list's position is that of the character in hand.
struct Token {
  ListText& list;
  std::size_t start = list.pos;               ///< its first character
  std::size_t end = list.pos;                 ///< one past its last character, once that is known
  std::optional<std::size_t> blank_run = {};  ///< first blank of a run that the value may end in
  bool escaped = false;                       ///< the character before was a backslash
};

/// What a character does to the token.
enum class Step {
  skip,    ///< go on with the next character
  again,   ///< go on with what now stands at the position
  finish,  ///< the token is complete; go on behind the character
};

constexpr bool is_blank(char c) { return c == ' ' || c == '\t'; }
constexpr bool is_white_space(char c) { return is_blank(c) || c == '\n'; }

/// A blank inside an unquoted value: the value ends before it when nothing but blanks follows.
inline Step note_blank(Token& token) {
  if (!token.blank_run) {
    token.blank_run = token.list.pos;
  }
  return Step::skip;
}

/// An ordinary character of an unquoted value: the blanks before it belong to the value.
inline Step keep_character(Token& token) {
  token.blank_run.reset();
  return Step::skip;
}

/// The token ends before the character in hand.
inline Step finish_before(Token& token) {
  token.end = token.list.pos;
  return Step::finish;
}

/// The value ends before the character in hand, or before the blanks in front of it.
inline Step finish_trimmed(Token& token) {
  token.end = token.blank_run.value_or(token.list.pos);
  return Step::finish;
}

/// The character in hand follows a backslash. A quote character loses the backslash: the rest of
/// the list moves up and a blank fills its end.
inline Step resolve_escape(Token& token, char c, char quote) {
  token.escaped = false;
  if (c != quote) {
    return Step::skip;
  }
  const std::span<char> rest = token.list.text.subspan(token.list.pos - 1);
  std::copy(rest.begin() + 1, rest.end(), rest.begin());
  rest.back() = ' ';
  return Step::again;
}

/// Copies the token, cut to `limit` characters; an empty one is delivered as a single blank.
inline void deliver(const Token& token, std::size_t limit, ValueText& destination) {
  const std::size_t length = token.end - token.start;
  const std::string_view text{token.list.text.data() + token.start, length};
  copy_text(std::span(destination).first(limit + 1), length == 0 ? " " : text);
}

inline void report_unreachable() {
  print_error("Error: Unreachable 'default' statement reached.\n");
}

/// A state in which no list can end: the lexer itself is at fault.
[[noreturn]] inline void end_unreachable(int line) {
  print_error("Error: Unreachable 'default' statement reached: %s, line %d\n", module_utility,
              line);
  end_program(exit_refused);
}

}  // namespace tagmend::list_scan
