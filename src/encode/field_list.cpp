#include "encode/field_list.h"

#include "encode/list_scan.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

using namespace list_scan;

Step begin_name(Token& token, ListLexer& lexer) {
  token.start = token.list.pos;
  lexer.state = ListState::in_name;
  return Step::skip;
}

Step begin_value(Token& token, ListLexer& lexer, ListState state, std::size_t start) {
  token.start = start;
  lexer.state = state;
  return Step::skip;
}

Step ignore_quote(char quote) {
  print_error("Unexpected quote character '%c' ignored\n", quote);
  return Step::skip;
}

Step step_start(Token& token, ListLexer& lexer, char c) {
  if (is_white_space(c)) {
    return Step::skip;
  }
  if (c == ',') {
    lexer.state = ListState::after_name;
    return Step::skip;
  }
  if (c == '=') {
    lexer.state = ListState::after_equals;
    return Step::skip;
  }
  if (c == lexer.quote) {
    return ignore_quote(c);
  }
  return begin_name(token, lexer);
}

Step step_in_name(Token& token, ListLexer& lexer, char c) {
  if (c == ',' || is_white_space(c)) {
    lexer.state = ListState::after_name;
    return finish_before(token);
  }
  if (c == '=') {
    lexer.state = ListState::after_equals;
    return finish_before(token);
  }
  if (c == lexer.quote) {
    print_error("Unexpected quote character '%c' ignored.\n", c);
  }
  return Step::skip;
}

Step step_after_name(Token& token, ListLexer& lexer, char c) {
  if (is_white_space(c) || c == ',') {
    return Step::skip;
  }
  if (c == '=') {
    print_error("Unexpected '=' after ',' ignored\n");
    return Step::skip;
  }
  if (c == lexer.quote) {
    return ignore_quote(c);
  }
  return begin_name(token, lexer);
}

Step step_after_equals(Token& token, ListLexer& lexer, char c) {
  if (is_white_space(c)) {
    return Step::skip;
  }
  if (c == ',') {
    print_error("Unexpected ',' where value expected. Previous field name ignored\n");
    lexer.state = ListState::after_name;
    return Step::skip;
  }
  if (c == '=') {
    print_error("Unexpected duplicate '=' ignored\n");
    return Step::skip;
  }
  const std::size_t here = token.list.pos;
  if (c == lexer.quote) {
    return begin_value(token, lexer, ListState::in_quoted, here + 1);
  }
  return begin_value(token, lexer, ListState::in_value, here);
}

Step step_in_value(Token& token, ListLexer& lexer, char c) {
  if (is_blank(c)) {
    return note_blank(token);
  }
  if (c == ',') {
    lexer.state = ListState::after_name;
    return finish_trimmed(token);
  }
  if (c == '\n') {
    lexer.state = ListState::start;
    return finish_trimmed(token);
  }
  if (c == '=') {
    print_error("Unexpected '=' ignored\n");
    lexer.state = ListState::start;
    return finish_trimmed(token);
  }
  if (c == lexer.quote) {
    print_error("Unexpected '\"' ignored\n");
    return Step::skip;
  }
  return keep_character(token);
}

Step step_in_quoted(Token& token, ListLexer& lexer, char c) {
  if (token.escaped) {
    return resolve_escape(token, c, lexer.quote);
  }
  if (c == '\\') {
    token.escaped = true;
  } else if (c == lexer.quote) {
    lexer.state = ListState::start;
    return finish_before(token);
  }
  return keep_quoted(token, c);
}

Step take_character(Token& token, ListLexer& lexer, char c) {
  switch (lexer.state) {
    case ListState::start:
      return step_start(token, lexer, c);
    case ListState::in_name:
      return step_in_name(token, lexer, c);
    case ListState::after_name:
      return step_after_name(token, lexer, c);
    case ListState::after_equals:
      return step_after_equals(token, lexer, c);
    case ListState::in_value:
      return step_in_value(token, lexer, c);
    case ListState::in_quoted:
      return step_in_quoted(token, lexer, c);
    case ListState::invalid:
      break;
  }
  report_unreachable();
  return Step::skip;
}

TokenKind deliver_name(const Token& token, ValueText& text) {
  deliver(token, name_limit, text);
  return TokenKind::name;
}

TokenKind deliver_value(const Token& token, ValueText& text) {
  deliver(token, value_limit, text);
  return TokenKind::value;
}

TokenKind take_end(Token& token, ListLexer& lexer, ValueText& text) {
  token.end = token.list.text.size();
  switch (lexer.state) {
    case ListState::start:
    case ListState::after_name:
      return TokenKind::end;
    case ListState::in_name:
      lexer.state = ListState::start;
      return deliver_name(token, text);
    case ListState::after_equals:
      print_warning("End of string reached after '='\n");
      return TokenKind::end;
    case ListState::in_value:
      lexer.state = ListState::start;
      deliver_to_end(token, text);
      return TokenKind::value;
    case ListState::in_quoted:
      print_warning("End of string reached inside quoted string\n");
      return TokenKind::end;
    case ListState::invalid:
      break;
  }
  end_unreachable(2314);
}

}  // namespace

TokenKind next_list_token(ListLexer& lexer, ListText& list, ValueText& token_text) {
  Token token{list};
  while (list.pos < list.text.size()) {
    const bool in_name = lexer.state == ListState::in_name;
    const Step step = take_character(token, lexer, list.text[list.pos]);
    ++list.pos;
    if (step == Step::finish) {
      return in_name ? deliver_name(token, token_text) : deliver_value(token, token_text);
    }
  }
  return take_end(token, lexer, token_text);
}

bool next_add_item(ListText& list, char quote, NameText& name, ValueText& value) {
  ListLexer lexer{ListState::start, quote};
  bool name_pending = false;
  for (;;) {
    switch (next_list_token(lexer, list, value)) {
      case TokenKind::name:
        if (name_pending) {
          print_error("No value following field '%s', field ignored\n", name.data());
        }
        copy_text(name, value.data());
        name_pending = true;
        break;
      case TokenKind::value:
        if (name_pending) {
          return true;
        }
        print_error("Unexpected value '%s', field ignored\n", value.data());
        break;
      case TokenKind::end:
        if (name_pending) {
          print_error("Unexpected end of list where value expected. Field '%s' ignored\n",
                      name.data());
        }
        name.front() = '\0';
        value.front() = '\0';
        return false;
    }
  }
}

bool next_remove_item(ListText& list, char quote, NameText& name) {
  ListLexer lexer{ListState::start, quote};
  ValueText token;
  TokenKind kind = next_list_token(lexer, list, token);
  while (kind == TokenKind::value) {
    print_error("Unexpected value '%s' ignored\n", token.data());
    kind = next_list_token(lexer, list, token);
  }
  const bool found = kind == TokenKind::name;
  copy_text(name, found ? token.data() : "");
  return found;
}

}  // namespace tagmend
