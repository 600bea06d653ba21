// Nikon maker notes, type 2.
#include <array>

#include "read/decode_makers.h"
#include "read/value_reader.h"

namespace tagmend {
namespace {

void decode_iso(const StoredValue& value, TextBuffer& text) {
  const int first = cursor_get_u16(value.cursor);
  const int second = cursor_get_u16(value.cursor);
  if (first == 0) {
    append_format(text, "%d", second);
  } else {
    append_format(text, "%d,%d", first, second);
  }
}

void decode_fraction(const StoredValue& value, const char* format, TextBuffer& text) {
  const Fraction fraction = read_fraction(value.cursor, false);
  if (fraction.denominator > 0) {
    append_format(text, format, quotient(fraction));
  } else {
    append(text, "0.0");
  }
}

/// Which focus area was used. The cameras fill 8 bytes in two ways; four numbers tell which.
void decode_focus_position(const StoredValue& value, TextBuffer& text) {
  constexpr std::array areas = {"Centre", "Top", "Bottom", "Left", "Right"};
  const std::uint16_t a = cursor_get_u16(value.cursor);
  const std::uint16_t b = cursor_get_u16(value.cursor);
  const std::uint16_t c = cursor_get_u16(value.cursor);
  const std::uint16_t d = cursor_get_u16(value.cursor);
  if (a == 0 && c == 0 && d == 0) {
    if (b < areas.size()) {
      append(text, areas[b]);
    } else {
      append_format(text, "Unknown value #2 %d", b);
    }
  } else if (b == 0 && c == 0x8F && d == 2) {
    if ((a & 0xFF) == 0 && (a >> 8) < static_cast<int>(areas.size())) {
      append(text, areas[a >> 8]);
    } else {
      append_format(text, "Unknown value #1 %d", a);
    }
  } else {
    append_format(text, "%d,%d,%d,%d", a, b, c, d);
  }
}

}  // namespace

void decode_nikon2(const StoredValue& value, const FieldEntry&, TextBuffer& text, ReadContext&) {
  switch (value.tag) {
    case 0x0002:
      return decode_iso(value, text);
    case 0x0085:  // manual focus distance
      return decode_fraction(value, "%.1f", text);
    case 0x0086:  // digital zoom
      return decode_fraction(value, "%.1fx", text);
    case 0x0088:
      return decode_focus_position(value, text);
    default:
      return decode_generic(value, text);
  }
}

}  // namespace tagmend
