// Makers of whose values only one or two have a form of their own: a row each.
#include "read/decode_makers.h"
#include "read/value_reader.h"

namespace tagmend {
namespace {

void decode_zoom(const StoredValue& value, TextBuffer& text) {
  append_format(text, "%.1fx", quotient(read_fraction(value.cursor, false)));
}

void decode_number_with_hex(const StoredValue& value, TextBuffer& text) {
  const std::uint32_t number = cursor_get_u16(value.cursor);
  append_format(text, "%d (0x%x)", static_cast<int>(number), number);
}

/// Twelfths of an exposure value; negative ones are stored as 255 more than they are.
void decode_exposure_twelfths(const StoredValue& value, TextBuffer& text) {
  const int byte = read_byte(value.cursor);
  append_format(text, "%.2f", (byte < 128 ? byte : byte - 255) / 12.0);
}

void decode_plain_text(const StoredValue& value, TextBuffer& text) {
  append_value_text(value.cursor, value.count, text);
}

void decode_thirds(const StoredValue& value, TextBuffer& text) {
  append_format(text, "%.2f", read_s16(value.cursor) * 0.333333333);
}

struct TagRule {
  IfdKind kind;
  std::uint32_t tag;
  void (*decode)(const StoredValue& value, TextBuffer& text);
};

constexpr TagRule tag_rules[] = {
    {IfdKind::nikon1, 0x000A, decode_zoom},
    {IfdKind::casio, 0x0011, decode_number_with_hex},
    {IfdKind::nikon3, 0x000E, decode_exposure_twelfths},
    {IfdKind::epson, 0x0209, decode_plain_text},
    {IfdKind::panasonic, 0x0023, decode_thirds},
    {IfdKind::panasonic, 0x0024, decode_thirds},
};

}  // namespace

void decode_by_tag_rule(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                        ReadContext&) {
  for (const TagRule& rule : tag_rules) {
    if (rule.kind == entry.kind && rule.tag == value.tag) {
      rule.decode(value, text);
      return;
    }
  }
  decode_generic(value, text);
}

}  // namespace tagmend
