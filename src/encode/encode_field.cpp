#include "encode/encode_field.h"

#include <algorithm>

#include "dictionary/value_map.h"
#include "encode/date_time.h"
#include "encode/encode_numbers.h"
#include "encode/encode_special.h"
#include "encode/field_list.h"
#include "support/byte_order.h"
#include "support/charset.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// Bytes of a text, without its NUL.
constexpr std::size_t text_limit = encoded_limit - 1;

ErrorCode encode_date(const FieldValue& field, std::span<std::uint8_t> output,
                      std::uint32_t& value_count) {
  DateRecord date;
  const ErrorCode code = parse_date_time(field.text, date, DateRequirement::date_or_time);
  if (code != ErrorCode::ok) {
    return code;
  }
  std::array<char, 20> text;
  TextBuffer buffer(text);
  append_format(buffer, "%4s:%2s:%2s %2s:%2s:%2s", date.year_text.data(), date.month_text.data(),
                date.day_text.data(), date.hour_text.data(), date.minute_text.data(),
                date.second_text.data());
  std::ranges::copy(text, output.begin());
  value_count = static_cast<std::uint32_t>(text.size());
  return ErrorCode::ok;
}

ErrorCode encode_text(const FieldValue& field, std::span<std::uint8_t> output,
                      std::uint32_t& value_count) {
  if (field.def.is_date) {
    return encode_date(field, output, value_count);
  }

  const std::size_t length = cs_local_to_exif(field.text, output.first(text_limit));
  if (field.def.count != 0) {
    if (length + 1 < field.def.count) {
      return ErrorCode::text_too_short;
    }
    if (length + 1 > field.def.count) {
      return ErrorCode::text_too_long;
    }
  }
  if (length > text_limit) {
    print_error("Internal error - long string exif_encode_field('%s')\n", field.text.data());
    end_program(exit_refused);
  }
  output[length] = 0;
  value_count = static_cast<std::uint32_t>(length + 1);
  return ErrorCode::ok;
}

ErrorCode encode_by_type(const FieldValue& field, std::span<std::uint8_t> output,
                         std::uint32_t& value_count) {
  const DataType type = field.def.data_type;
  switch (type) {
    case DataType::unsigned_byte:
    case DataType::signed_byte:
    case DataType::undefined:
      return encode_hex_bytes(field.text, output, value_count);
    case DataType::string:
      return encode_text(field, output, value_count);
    case DataType::unsigned_short:
    case DataType::unsigned_long:
    case DataType::signed_short:
    case DataType::signed_long:
    case DataType::short_or_long:
      return encode_integers(type, field.target.big_endian, field.text, output, value_count);
    case DataType::unsigned_rational:
    case DataType::signed_rational:
      return encode_rationals(type, field.target.big_endian, field.text, four_decimals, output,
                              value_count);
    default:
      return ErrorCode::format_not_supported;
  }
}

/// The number of a map entry in the type of its field.
ErrorCode store_map_number(const FieldValue& field, std::uint32_t number,
                           std::span<std::uint8_t> output, std::uint32_t& value_count) {
  const bool big_endian = field.target.big_endian;
  value_count = 1;
  switch (field.def.data_type) {
    case DataType::unsigned_byte:
    case DataType::undefined:
    case DataType::signed_byte:
      output[0] = static_cast<std::uint8_t>(number & 0xFF);
      return ErrorCode::ok;
    case DataType::unsigned_short:
    case DataType::signed_short:
      store_u16(output.first<2>(), static_cast<std::uint16_t>(number & 0xFFFF), big_endian);
      return ErrorCode::ok;
    case DataType::unsigned_long:
    case DataType::signed_long:
    case DataType::short_or_long:
      store_u32(output.first<4>(), number, big_endian);
      return ErrorCode::ok;
    case DataType::string:  // a character and its NUL need a count of 2
      return ErrorCode::format_not_supported;
    default:
      print_error("Unexpected datatype %d after decode\n", static_cast<int>(field.def.data_type));
      return ErrorCode::format_not_supported;
  }
}

ErrorCode encode_from_map(const FieldValue& field, std::span<std::uint8_t> output,
                          std::uint32_t& value_count) {
  const FieldDef& def = field.def;
  const std::uint32_t layout = field.target.layout;
  if (def.count == 1) {
    const ValueMapEntry* const entry =
        def.value_map ? map_lookup(def.value_map, layout, field.text) : nullptr;
    if (!entry) {
      return ErrorCode::invalid_value;
    }
    return store_map_number(field, entry->value, output, value_count);
  }
  const ValueMapBytesEntry* const entry =
      def.value_map_bytes ? map_lookup_bytes(def.value_map_bytes, layout, field.text) : nullptr;
  if (!entry) {
    return ErrorCode::invalid_value;
  }
  std::copy_n(entry->bytes, entry->length, output.begin());
  value_count = entry->length;
  return ErrorCode::ok;
}

ErrorCode check_count(const FieldDef& def, std::uint32_t value_count) {
  if (def.data_type == DataType::string) {
    return ErrorCode::ok;
  }
  const DataType stored =
      def.data_type == DataType::short_or_long ? DataType::unsigned_long : def.data_type;
  // Where any count is allowed, the values must still fit: the rest of them was not written.
  if (value_size(static_cast<std::uint16_t>(stored), value_count) > encoded_limit) {
    return ErrorCode::too_many_values;
  }
  if (def.count == 0 || value_count == def.count) {
    return ErrorCode::ok;
  }
  return value_count < def.count ? ErrorCode::too_few_values : ErrorCode::too_many_values;
}

FieldEncoder choose_encoder(const FieldDef& def) {
  if (def.has_map()) {
    return encode_from_map;
  }
  const FieldEncoder special = find_special_encoder(def);
  return special ? special : encode_by_type;
}

}  // namespace

ErrorCode exif_encode_field(std::uint16_t row, const EncodeTarget& target, std::string_view text,
                            std::span<std::uint8_t> output, std::uint32_t& value_count,
                            const SubstitutionContext& context) {
  value_count = 0;
  const FieldDef& def = field_table_defs[row < field_table_defs.size() ? row : 0];
  if (!def.editable) {
    return ErrorCode::edit_not_permitted;
  }
  if (def.is_offset) {
    return ErrorCode::format_not_supported;
  }

  ValueText expanded;
  const ErrorCode names = expand_template(text, TemplateSection::file, expanded, context);
  if (target.early_check && names == ErrorCode::ok) {
    return ErrorCode::ok;
  }

  const FieldValue value{def, target, expanded.data()};
  const ErrorCode code = choose_encoder(def)(value, output, value_count);
  return code == ErrorCode::ok ? check_count(def, value_count) : code;
}

}  // namespace tagmend
