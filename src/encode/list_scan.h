// What the two lexers of lists share: the token being read, and the rules for blanks at the end of
// a value and for backslashes in quoted text.
#pragma once

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
  std::size_t removed = 0;                    ///< backslashes that its quoted text has lost
};

/// What a character does to the token.
enum class Step {
  skip,    ///< go on with the next character
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
  token.end = token.list.pos - token.removed;
  return Step::finish;
}

/// The value ends before the character in hand, or before the blanks in front of it.
inline Step finish_trimmed(Token& token) {
  token.end = token.blank_run.value_or(token.list.pos);
  return Step::finish;
}

/// An ordinary character of a quoted value: it closes the gap of the backslashes taken out before.
inline Step keep_quoted(Token& token, char c) {
  token.list.text[token.list.pos - token.removed] = c;
  return Step::skip;
}

/// The character in hand follows a backslash. A quote character loses the backslash: the rest of
/// the list counts as moved up, and a blank as standing at its end.
inline Step resolve_escape(Token& token, char c, char quote) {
  token.escaped = false;
  if (c == quote) {
    ++token.removed;
    ++token.list.blanks;
  }
  return keep_quoted(token, c);
}

/// Copies the token, cut to `limit` characters; an empty one is delivered as a single blank.
inline void deliver(const Token& token, std::size_t limit, ValueText& destination) {
  const std::size_t length = token.end - token.start;
  const std::string_view text{token.list.text.data() + token.start, length};
  copy_text(std::span(destination).first(limit + 1), length == 0 ? " " : text);
}

/// Copies an unquoted value that ends with the list: the blanks at the end are part of it.
inline void deliver_to_end(const Token& token, ValueText& destination) {
  const ListText& list = token.list;
  TextBuffer value(destination);
  append(value, {list.text.data() + token.start, list.text.size() - token.start});
  for (std::size_t blank = 0; blank < list.blanks && !value.full(); ++blank) {
    append(value, " ");
  }
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
