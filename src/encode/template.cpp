#include "encode/template.h"

#include <optional>

#include "encode/template_names.h"
#include "support/ascii.h"
#include "support/message.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

// The expander is a table: the class of the character in hand and the state give an action and the
// next state.

enum class CharClass : std::uint8_t {
  left_bracket,
  right_bracket,
  backslash,
  escape_letter,  ///< n, r and t
  name_character,
  other,
  line_feed,
  end,
};

enum class State : std::uint8_t { text, name, escape, after_mark, end };

enum class Action : std::uint8_t {
  copy,
  skip,
  start_name,
  restart_name,
  give_up_name,
  escape,
  substitute,
};

struct Transition {
  Action action;
  State next;
};

using enum Action;

// clang-format off
constexpr Transition transitions[8][4] = {
    // text                      name                           escape                  after_mark
    {{start_name, State::name},  {restart_name, State::name},   {escape, State::name},  {start_name, State::name}},   // left_bracket
    {{copy, State::text},        {substitute, State::text},     {escape, State::text},  {copy, State::text}},         // right_bracket
    {{skip, State::escape},      {give_up_name, State::text},   {escape, State::text},  {skip, State::escape}},       // backslash
    {{copy, State::text},        {skip, State::name},           {escape, State::text},  {copy, State::text}},         // escape_letter
    {{copy, State::text},        {skip, State::name},           {escape, State::text},  {copy, State::text}},         // name_character
    {{copy, State::text},        {give_up_name, State::text},   {escape, State::text},  {copy, State::text}},         // other
    {{copy, State::text},        {give_up_name, State::text},   {escape, State::text},  {skip, State::text}},         // line_feed
    {{skip, State::end},         {give_up_name, State::end},    {escape, State::end},   {skip, State::end}},          // end
};
// clang-format on

constexpr CharClass class_of(char c) {
  switch (c) {
    case '[':
      return CharClass::left_bracket;
    case ']':
      return CharClass::right_bracket;
    case '\\':
      return CharClass::backslash;
    case 'n':
    case 'r':
    case 't':
      return CharClass::escape_letter;
    case '\n':
      return CharClass::line_feed;
    default:
      break;
  }
  const bool named = is_letter(c) || is_digit(c) || c == '-';
  return named ? CharClass::name_character : CharClass::other;
}

/// An expansion in progress.
struct Expansion {
  std::string_view text;
  TemplateSection wanted;
  const SubstitutionContext& context;
  std::optional<TextBuffer> output;  ///< the standard output without it
  State state = State::text;
  std::size_t pos = 0;         ///< of the character in hand
  std::size_t name_start = 0;  ///< first character behind the bracket that opened the name
  TemplateSection section = TemplateSection::file;
  bool name_met = false;
  bool full = false;

  [[nodiscard]] bool at_end() const { return pos >= text.size(); }
  [[nodiscard]] std::string_view name() const { return text.substr(name_start, pos - name_start); }
};

/// Writes a piece whole or, when the output cannot take it, ends the expansion.
void write(Expansion& expansion, std::string_view piece) {
  if (expansion.section != expansion.wanted || expansion.full) {
    return;
  }
  if (!expansion.output) {
    print_output("%.*s", static_cast<int>(piece.size()), piece.data());
    return;
  }
  TextBuffer& output = *expansion.output;
  const std::size_t room = output.room.size() - 1 - output.length;
  if (piece.size() <= room) {
    append(output, piece);
  }
  expansion.full = piece.size() >= room;
}

/// Writes a text as far as the output can take it.
void write_text(Expansion& expansion, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    write(expansion, text.substr(i, 1));
  }
}

/// Writes a value; a quote character in it would end a quoted item, so it gets a backslash.
void write_value(Expansion& expansion, std::string_view value) {
  for (const char c : value) {
    const char escaped[] = {'\\', c};
    const bool is_quote = c == library_settings.quote;
    write(expansion, is_quote ? std::string_view(escaped, 2) : std::string_view(escaped + 1, 1));
  }
}

/// The text from the bracket that opened the name up to, not including, a position.
std::string_view text_from_bracket(const Expansion& expansion, std::size_t end) {
  const std::size_t bracket = expansion.name_start - 1;
  return expansion.text.substr(bracket, end - bracket);
}

void start_name_here(Expansion& expansion) { expansion.name_start = expansion.pos + 1; }

/// What stands for a backslash and the character in hand; also for a backslash at the end.
void write_escape(Expansion& expansion) {
  if (expansion.at_end()) {
    return write(expansion, "\\");
  }
  const char c = expansion.text[expansion.pos];
  switch (c) {
    case '\\':
      return write(expansion, "\\");
    case 'n':
      return write(expansion, "\n");
    case 'r':
      return write(expansion, "\r");
    case 't':
      return write(expansion, "\t");
    case '[':
      start_name_here(expansion);
      return write(expansion, "\\");
    default:
      write(expansion, "\\");
      return write(expansion, {&c, 1});
  }
}

std::optional<TemplateSection> section_mark(std::string_view name) {
  if (equal_ignoring_case(name, "exif-head")) {
    return TemplateSection::head;
  }
  if (equal_ignoring_case(name, "exif-file")) {
    return TemplateSection::file;
  }
  if (equal_ignoring_case(name, "exif-tail")) {
    return TemplateSection::tail;
  }
  return std::nullopt;
}

/// The name ends at the bracket in hand: a section mark, or a name that its value replaces.
void substitute_here(Expansion& expansion) {
  if (const auto mark = section_mark(expansion.name())) {
    expansion.section = *mark;
    expansion.state = State::after_mark;
    return;
  }
  if (expansion.section != expansion.wanted) {
    return;
  }

  NameValue value;
  switch (substitute_name(expansion.name(), value, expansion.context)) {
    case ErrorCode::ok:
      expansion.name_met = true;
      return write_value(expansion, value.text);
    case ErrorCode::field_not_present:
      expansion.name_met = true;
      return;
    default:
      return write_text(expansion, text_from_bracket(expansion, expansion.pos + 1));
  }
}

void perform(Expansion& expansion, Action action) {
  switch (action) {
    case copy:
      return write(expansion, expansion.text.substr(expansion.pos, 1));
    case skip:
      return;
    case start_name:
      return start_name_here(expansion);
    case restart_name:
      write_text(expansion, text_from_bracket(expansion, expansion.pos));
      return start_name_here(expansion);
    case give_up_name:
      return write_text(expansion, text_from_bracket(expansion, expansion.pos + 1));
    case escape:
      return write_escape(expansion);
    case substitute:
      return substitute_here(expansion);
  }
}

}  // namespace

ErrorCode expand_template(std::string_view text, TemplateSection section, std::span<char> output,
                          const SubstitutionContext& context) {
  Expansion expansion{text, section, context, std::nullopt};
  if (!output.empty()) {
    expansion.output.emplace(output);
  }

  while (expansion.state != State::end && !expansion.full) {
    const CharClass input = expansion.at_end() ? CharClass::end : class_of(text[expansion.pos]);
    const Transition& transition =
        transitions[static_cast<std::size_t>(input)][static_cast<std::size_t>(expansion.state)];
    expansion.state = transition.next;
    perform(expansion, transition.action);
    ++expansion.pos;
  }
  return expansion.name_met ? ErrorCode::ok : ErrorCode::no_names_in_template;
}

}  // namespace tagmend
