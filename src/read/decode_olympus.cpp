// Olympus maker notes, types 1 and 3.
#include <array>

#include "read/decode_makers.h"
#include "read/value_reader.h"

namespace tagmend {
namespace {

/// Picture mode, number in a sequence, direction of a panorama.
void decode_special_mode(const StoredValue& value, TextBuffer& text) {
  constexpr std::array modes = {"Normal, %d", "Unknown, %d", "Fast, %d", "Panorama, %d"};
  constexpr std::array directions = {"Left to Right", "Right to Left", "Bottom to Top",
                                     "Top to Bottom"};
  const std::uint32_t mode = cursor_get_u32(value.cursor);
  const auto number = static_cast<std::int32_t>(cursor_get_u32(value.cursor));
  const std::uint32_t direction = cursor_get_u32(value.cursor);
  if (mode < modes.size()) {
    append_format(text, modes[mode], number);
  } else {
    append_format(text, "%d, %d", static_cast<std::int32_t>(mode), number);
  }
  if (direction >= 1 && direction <= directions.size()) {
    append_format(text, ", %s", directions[direction - 1]);
  } else {
    append_format(text, ", %d", static_cast<std::int32_t>(direction));
  }
}

}  // namespace

void decode_olympus(const StoredValue& value, const FieldEntry&, TextBuffer& text, ReadContext&) {
  switch (value.tag) {
    case 0x0200:
      return decode_special_mode(value, text);
    case 0x0209:  // camera identifier
      return append_value_text(value.cursor, value.count, text);
    default:
      return decode_generic(value, text);
  }
}

}  // namespace tagmend
