// Values by their stored type alone, and through value maps.
#include <algorithm>

#include "dictionary/value_map.h"
#include "read/decode.h"
#include "read/decode_makers.h"
#include "read/value_reader.h"
#include "support/charset.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// Two digits a byte are added up to here.
constexpr std::size_t max_text_before_byte = 1996;

void decode_hex(const StoredValue& value, TextBuffer& text) {
  constexpr std::uint32_t max_bytes = max_text_before_byte / 2 + 1;
  for (const unsigned byte : read_bytes(value.cursor, std::min(value.count, max_bytes))) {
    append_format(text, "%1x%1x", byte >> 4, byte & 0xF);
  }
}

void decode_string(const StoredValue& value, TextBuffer& text) {
  const std::uint64_t wanted = std::min<std::uint64_t>(value.count, max_value_text);
  const std::span<const std::uint8_t> bytes = read_bytes(value.cursor, wanted);
  if (bytes.empty()) {
    return;
  }
  const std::span<char> room = text.room.subspan(text.length);
  const std::size_t written = cs_exif_to_local(bytes, room);
  // A plain copy is not terminated, and tells the input's length even when less than that fits.
  room[std::min(written, room.size() - 1)] = '\0';
  measure_text(text);
}

/// Each value in its turn, with a blank between two.
template <typename AppendOne>
void join_values(const StoredValue& value, TextBuffer& text, AppendOne append_one) {
  for (std::uint32_t i = 0; i < value.count && goes_on(value.cursor, text); ++i) {
    if (i > 0) {
      append(text, " ");
    }
    append_one(value.cursor);
  }
}

/// One value of a field with a map of numbers.
std::uint32_t read_map_number(const StoredValue& value) {
  switch (DataType{value.type}) {
    case DataType::unsigned_byte:
    case DataType::string:
    case DataType::signed_byte:
    case DataType::undefined:
      return read_byte(value.cursor);
    case DataType::unsigned_short:
    case DataType::signed_short:
      return cursor_get_u16(value.cursor);
    case DataType::unsigned_long:
    case DataType::signed_long:
      return cursor_get_u32(value.cursor);
    default:
      print_error("Internal Error: unexpected data type\n");
      return 0;
  }
}

void decode_bytes_map(const StoredValue& value, const ValueMapBytesEntry* map,
                      std::uint32_t maker_note_kind, TextBuffer& text) {
  const ValueMapBytesEntry* found = nullptr;
  if (map != nullptr && value.cursor.has(value.count)) {
    found = map_find_bytes(map, maker_note_kind, value.cursor.rest().first(value.count));
  }
  append(text, found != nullptr ? found->description : "Unknown value");
  cursor_skip(value.cursor, value.count);
}

}  // namespace

void decode_basic(const StoredValue& value, TextBuffer& text) {
  switch (DataType{value.type}) {
    case DataType::unsigned_byte:
    case DataType::signed_byte:
    case DataType::undefined:
      return decode_hex(value, text);
    case DataType::string:
      return decode_string(value, text);
    case DataType::unsigned_short:
      return join_values(value, text, [&](ByteCursor& cursor) {
        append_format(text, "%d", cursor_get_u16(cursor));
      });
    case DataType::signed_short:
      return join_values(value, text,
                         [&](ByteCursor& cursor) { append_format(text, "%d", read_s16(cursor)); });
    case DataType::unsigned_long:
    case DataType::signed_long:
      return join_values(value, text, [&](ByteCursor& cursor) {
        append_format(text, "%d", static_cast<std::int32_t>(cursor_get_u32(cursor)));
      });
    case DataType::unsigned_rational:
    case DataType::signed_rational:
      return join_values(value, text, [&](ByteCursor& cursor) {
        const bool is_signed = DataType{value.type} == DataType::signed_rational;
        const Fraction fraction = read_fraction(cursor, is_signed);
        append_format(text, "%.0f/%.0f", fraction.numerator, fraction.denominator);
      });
    case DataType::signed_float:
    case DataType::double_float:
      return append(text, "<not yet implemented>");
    default:
      return append_format(text, "Unrecognised data type: %d", value.type);
  }
}

void decode_generic(const StoredValue& value, TextBuffer& text) {
  const bool is_signed = DataType{value.type} == DataType::signed_rational;
  if (!is_signed && DataType{value.type} != DataType::unsigned_rational) {
    decode_basic(value, text);
    return;
  }
  join_values(value, text, [&](ByteCursor& cursor) {
    append_format(text, "%.2f", quotient(read_fraction(cursor, is_signed)));
  });
}

void decode_map_number(const ValueMapEntry* map, std::uint32_t maker_note_kind,
                       std::uint32_t number, TextBuffer& text) {
  const ValueMapEntry* entry = map_find_value(map, maker_note_kind, number);
  if (entry != nullptr) {
    append(text, entry->description);
  } else {
    append_format(text, "%d", static_cast<std::int32_t>(number));
  }
}

void decode_value_map(const StoredValue& value, const FieldDef& def, std::uint32_t maker_note_kind,
                      TextBuffer& text) {
  if (value.count == 1 && def.value_map != nullptr) {
    decode_map_number(def.value_map, maker_note_kind, read_map_number(value), text);
  } else {
    decode_bytes_map(value, def.value_map_bytes, maker_note_kind, text);
  }
}

}  // namespace tagmend
