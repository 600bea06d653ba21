#include "read/decode_array.h"

#include <algorithm>

#include "read/value_reader.h"
#include "support/message.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// The highest number that the dictionary gives an element of an array; 0 for none. What stands
/// behind it in a file, however much, is not looked at.
std::uint32_t last_known_element(IfdKind kind, std::uint32_t array_tag) {
  std::uint32_t last = 0;
  for (const FieldDef& def : field_table_defs) {
    if (def.ifd_kind == kind && (def.tag & 0xFFFF) == array_tag) {
      last = std::max(last, def.tag >> 16);
    }
  }
  return last;
}

/// An element that is not shown is read like the others: one that the file lacks is reported.
void pass_over_element(DataType type, ByteCursor& cursor) {
  if (type == DataType::unsigned_short) {
    cursor_get_u16(cursor);
  } else {
    cursor_get_u32(cursor);
  }
}

void decode_element(const StoredValue& value, const FieldDef& def, const ArrayLayout& layout,
                    std::uint32_t maker_note_kind, TextBuffer& text) {
  if (library_settings.raw_output) {
    decode_basic(value, text);
  } else if (def.has_map()) {
    decode_value_map(value, def, maker_note_kind, text);
  } else if (!layout.decode(value.tag >> 16, value.tag & 0xFFFF, value.cursor, text)) {
    decode_generic(value, text);
  }
}

}  // namespace

FieldEntry make_element(const FieldEntry& array, std::uint32_t row, DataType type,
                        std::uint32_t value_pos, const char* trace_format) {
  const FieldDef& def = field_table_defs[row];
  trace(array.level, trace_format, ifd_kind_names[static_cast<std::size_t>(array.kind)],
        def.nickname, def.tag, array.level, array.seq,
        type_short_names[static_cast<std::size_t>(type)], 1, value_pos, value_pos);
  FieldEntry element;
  element.kind = array.kind;
  element.level = array.level;
  element.seq = array.seq;
  element.ifd = array.ifd;
  element.tag = def.tag;
  element.def = row;
  element.value_pos = value_pos;
  element.type = static_cast<std::uint16_t>(type);
  element.count = 1;
  copy_text(element.name, def.description);
  return element;
}

bool append_element(FieldEntry& element, ImageFile& image) {
  element.index = static_cast<std::uint16_t>(image.field_count);
  const std::string_view text = element.text.view();
  std::copy_n(text.begin(), std::min(text.size(), element.raw.size()), element.raw.begin());
  return append_field(image, element) == ErrorCode::ok;
}

void append_array_elements(ByteCursor& cursor, const FieldEntry& array, const ArrayLayout& layout,
                           ReadContext& context) {
  const std::uint32_t last = last_known_element(array.kind, layout.tag);
  for (std::uint32_t place = 1; place <= layout.length; ++place) {
    const bool behind_unused = layout.unused_number != 0 && place >= layout.unused_number;
    const std::uint32_t number = behind_unused ? place + 1 : place;
    if (number > last || cursor.error_count > max_read_errors) {
      return;
    }
    const std::uint32_t tag = number << 16 | layout.tag;
    const std::uint32_t row = find_field_by_tag(array.kind, tag, true);
    if (row == 0) {
      pass_over_element(layout.type, cursor);
      continue;
    }
    FieldEntry element =
        make_element(array, row, layout.type, cursor_tell(cursor), layout.trace_format);
    TextBuffer text(element.text.room);
    decode_element({cursor, tag, element.type, 1}, field_table_defs[row], layout,
                   context.image.maker_note_kind, text);
    if (!append_element(element, context.image)) {
      return;
    }
  }
}

}  // namespace tagmend
