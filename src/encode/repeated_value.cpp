// Values that repeat: "harbour;dawn;boats" is three values.
#include "encode/field_list.h"
#include "encode/list_scan.h"
#include "support/message.h"

namespace tagmend {
namespace {

using namespace list_scan;

enum class State { between, in_item, in_quoted };

struct Separators {
  char quote;
  char separator;
};

Step step_between(Token& token, State& state, const Separators& marks, char c) {
  if (is_white_space(c)) {
    return Step::skip;
  }
  if (c == marks.quote) {
    state = State::in_quoted;
    token.start = token.list.pos + 1;
  } else if (c != marks.separator) {
    state = State::in_item;
    token.start = token.list.pos;
  }
  return Step::skip;
}

Step step_in_item(Token& token, const Separators& marks, char c) {
  if (is_blank(c)) {
    return note_blank(token);
  }
  if (c == '\n' || c == marks.separator) {
    return finish_trimmed(token);
  }
  if (c == marks.quote) {
    print_error("Unexpected '%c' ignored\n", c);
    return Step::skip;
  }
  return keep_character(token);
}

Step step_in_quoted(Token& token, const Separators& marks, char c) {
  if (token.escaped) {
    return resolve_escape(token, c, marks.quote);
  }
  if (c == '\\') {
    token.escaped = true;
  } else if (c == marks.quote) {
    return finish_before(token);
  }
  return keep_quoted(token, c);
}

Step take_character(Token& token, State& state, const Separators& marks, char c) {
  switch (state) {
    case State::between:
      return step_between(token, state, marks, c);
    case State::in_item:
      return step_in_item(token, marks, c);
    case State::in_quoted:
      return step_in_quoted(token, marks, c);
  }
  report_unreachable();
  return Step::skip;
}

bool take_end(Token& token, State state, ValueText& item) {
  switch (state) {
    case State::between:
      return false;
    case State::in_item:
      deliver_to_end(token, item);
      return true;
    case State::in_quoted:
      print_warning("End of string reached inside quoted string\n");
      return false;
  }
  end_unreachable(2575);
}

}  // namespace

bool split_repeated_value(ListText& list, char quote, char separator, ValueText& item) {
  const Separators marks{quote, separator};
  State state = State::between;
  Token token{list};
  while (list.pos < list.text.size()) {
    const Step step = take_character(token, state, marks, list.text[list.pos]);
    ++list.pos;
    if (step == Step::finish) {
      deliver(token, value_limit, item);
      return true;
    }
  }
  return take_end(token, state, item);
}

}  // namespace tagmend
