// Canon maker notes, and the fields of Canon Raw files.
#include <algorithm>
#include <cmath>
#include <ctime>

#include "read/decode_array.h"
#include "read/decode_makers.h"
#include "read/value_reader.h"
#include "support/local_time.h"
#include "support/settings.h"

namespace tagmend {
namespace {

constexpr std::uint32_t tag_custom_functions = 0x000F;

/// The high byte of a value names its custom function: a longer array only repeats numbers.
constexpr std::uint32_t max_custom_functions = 256;

/// A time value in steps of 1/32 as seconds or a fraction of a second.
void decode_shutter(int steps, TextBuffer& text) {
  constexpr int bulb = -208;
  if (steps == bulb) {
    append(text, "Bulb");
    return;
  }
  const double apex = steps * 0.03125;
  const double reciprocal = std::pow(2.0, apex);
  if (apex >= 2.0) {
    append_format(text, "1/%d", round_to_int(reciprocal));
  } else {
    append_format(text, "%.1f", finite_or_zero(1.0 / reciprocal));
  }
}

void decode_self_timer(unsigned tenths, TextBuffer& text) {
  if (tenths == 0) {
    append(text, "Off");
  } else {
    append_format(text, "%.1fsec\n", tenths / 10.0);
  }
}

void decode_flash_details(unsigned bits, TextBuffer& text) {
  struct Detail {
    unsigned bit;
    const char* name;
  };
  constexpr Detail details[] = {
      {0x4000, "External "},        {0x2000, "Internal "},      {0x0800, "FpSyncUsed "},
      {0x0080, "RearCurtainSync "}, {0x0010, "FpSyncEnabled "},
  };
  if (bits == 0) {
    append(text, "None");
  }
  for (const Detail& detail : details) {
    if ((bits & detail.bit) != 0) {
      append(text, detail.name);
    }
  }
}

bool decode_element(std::uint32_t element, std::uint32_t array_tag, ByteCursor& cursor,
                    TextBuffer& text) {
  if (array_tag != 0x0001) {
    return false;
  }
  switch (element) {
    case 2:
      decode_self_timer(cursor_get_u16(cursor), text);
      return true;
    case 29:
      decode_flash_details(cursor_get_u16(cursor), text);
      return true;
    default:
      return false;
  }
}

/// Shows the array as numbers, and hands back a cursor behind its first value, which is its length;
/// false when nothing follows that.
bool enter_array(const StoredValue& value, TextBuffer& text, ByteCursor& elements) {
  elements = value.cursor;
  decode_generic(value, text);
  if (value.count < 2) {
    return false;
  }
  elements.error_count = 0;
  cursor_get_u16(elements);
  return true;
}

void decode_settings(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                     ReadContext& context) {
  ByteCursor elements;
  if (!enter_array(value, text, elements)) {
    return;
  }
  const ArrayLayout layout = {.tag = value.tag,
                              .type = DataType::unsigned_short,
                              .length = value.count - 1,
                              .unused_number = 0,
                              .decode = decode_element,
                              .trace_format = trace_element_blanks};
  append_array_elements(elements, entry, layout, context);
  value.cursor.error_count += elements.error_count;
}

/// One custom function: its number in the high byte, its setting in the low byte. A number without
/// row and map leaves no field. False when the table is full.
bool append_custom_function(std::uint16_t function, std::uint32_t value_pos,
                            const FieldEntry& array, ImageFile& image) {
  const std::uint32_t tag = std::uint32_t{function} >> 8 << 16 | tag_custom_functions;
  const std::uint32_t row = find_field_by_tag(array.kind, tag, true);
  const FieldDef& def = field_table_defs[row];
  if (row == 0 || def.value_map == nullptr) {
    return true;
  }
  FieldEntry element =
      make_element(array, row, DataType::unsigned_byte, value_pos, trace_element_blanks);
  TextBuffer text(element.text.room);
  decode_map_number(def.value_map, image.maker_note_kind, function & 0xFF, text);
  return append_element(element, image);
}

void decode_custom_functions(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                             ReadContext& context) {
  ByteCursor elements;
  if (!enter_array(value, text, elements)) {
    return;
  }
  const std::uint32_t length = std::min(value.count - 1, max_custom_functions);
  for (std::uint32_t i = 0; i < length && elements.error_count <= max_read_errors; ++i) {
    const std::uint16_t function = cursor_get_u16(elements);
    if (!append_custom_function(function, cursor_tell(elements), entry, context.image)) {
      break;
    }
  }
  value.cursor.error_count += elements.error_count;
}

void decode_image_number(const StoredValue& value, TextBuffer& text) {
  const std::uint32_t number = cursor_get_u32(value.cursor);
  append_format(text, "%3d-%4d", static_cast<int>(number / 10000),
                static_cast<int>(number % 10000));
  blanks_to_zeros(text, 0, 8);
}

void decode_body_number(const StoredValue& value, TextBuffer& text) {
  const std::uint32_t number = cursor_get_u32(value.cursor);
  append_format(text, "%04X%05d", number >> 16, static_cast<int>(number & 0xFFFF));
  blanks_to_zeros(text, 0, 8);
}

void decode_focus_distance(unsigned centimetres, TextBuffer& text) {
  constexpr unsigned infinity = 65535;
  if (centimetres == infinity) {
    append(text, "Infinity");
  } else {
    append_format(text, "%.3f", centimetres * 0.01);
  }
}

/// Every other byte of this stretch of the meta data block is a custom function's setting.
constexpr bool is_raw_custom_function(std::uint32_t position) {
  return position >= 0x0F1C && position <= 0x0F36 && position % 2 == 0;
}

/// The forms of single Canon Raw positions; false when the position has none.
bool decode_raw_position(std::uint32_t position, ByteCursor& cursor, TextBuffer& text) {
  if (is_raw_custom_function(position)) {
    append_format(text, "%hu", static_cast<unsigned short>(cursor_get_u16(cursor) & 0xFF));
    return true;
  }
  switch (position) {
    case 0x0000:
      append(text, format_local_time(static_cast<std::time_t>(cursor_get_u32(cursor))).data());
      return true;
    case 0x02AA:
    case 0x02AC:
      decode_focus_distance(cursor_get_u16(cursor), text);
      return true;
    case 0x02B0:
      decode_shutter(read_s16(cursor), text);
      return true;
    case 0x02BE:
      append_format(text, "%.2f", cursor_get_u16(cursor) * 0.1);
      return true;
    default:
      return false;
  }
}

}  // namespace

void decode_canon(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                  ReadContext& context) {
  switch (value.tag) {
    case 0x0001:
    case 0x0004:
      return decode_settings(value, entry, text, context);
    case 0x0008:
      return decode_image_number(value, text);
    case 0x000C:
      return decode_body_number(value, text);
    case tag_custom_functions:
      return decode_custom_functions(value, entry, text, context);
    default:
      return decode_generic(value, text);
  }
}

void decode_canon_raw(const StoredValue& value, const FieldDef& def, std::uint32_t maker_note_kind,
                      TextBuffer& text) {
  if (library_settings.raw_output) {
    decode_basic(value, text);
  } else if (def.has_map()) {
    decode_value_map(value, def, maker_note_kind, text);
  } else if (!decode_raw_position(def.tag & 0xFFFF, value.cursor, text)) {
    decode_generic(value, text);
  }
}

}  // namespace tagmend
