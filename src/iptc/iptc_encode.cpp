#include "iptc/iptc_encode.h"

#include <algorithm>
#include <array>
#include <span>

#include "encode/date_time.h"
#include "encode/encode_field.h"
#include "encode/field_list.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/charset.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// Room for any encoded value: a text of 2000 characters in a set of four bytes a character, with
/// the escape sequences or the byte order mark that some sets add.
constexpr std::size_t encoded_room = 4 * value_limit + 16;

/// A value being encoded.
struct Encoding {
  std::array<std::uint8_t, encoded_room> bytes;
  std::size_t length = 0;
};

void set_bytes(Encoding& encoding, std::span<const std::uint8_t> bytes) {
  encoding.length = std::min(bytes.size(), encoding.bytes.size());
  std::copy_n(bytes.begin(), encoding.length, encoding.bytes.begin());
}

void set_text(Encoding& encoding, std::string_view text) { set_bytes(encoding, bytes_of(text)); }

ErrorCode encode_mapped_number(const IptcDatasetDef& def, std::string_view text,
                               Encoding& encoding) {
  const ValueMapEntry* entry = map_lookup(def.value_map, any_layout, text);
  if (entry == nullptr) {
    return ErrorCode::invalid_value;
  }
  std::array<std::uint8_t, 4> number;
  store_u32(number, entry->value, true);
  switch (def.type) {
    case DatasetType::bytes:
    case DatasetType::text:
      set_bytes(encoding, std::span(number).last<1>());
      return ErrorCode::ok;
    case DatasetType::number16:
      set_bytes(encoding, std::span(number).last<2>());
      return ErrorCode::ok;
    case DatasetType::number32:
      set_bytes(encoding, number);
      return ErrorCode::ok;
    default:
      trace(0, "Error: Unexpected IPTC datatype %d after decode\n", static_cast<int>(def.type));
      return ErrorCode::format_not_supported;
  }
}

ErrorCode encode_mapped_bytes(const IptcDatasetDef& def, std::string_view text,
                              Encoding& encoding) {
  const ValueMapBytesEntry* entry = map_lookup_bytes(def.value_map_bytes, any_layout, text);
  if (entry == nullptr) {
    return ErrorCode::invalid_value;
  }
  set_bytes(encoding, {entry->bytes, entry->length});
  return ErrorCode::ok;
}

/// The limit holds for the text as typed and for what is stored of it.
ErrorCode encode_text(const IptcDatasetDef& def, std::string_view text, Encoding& encoding) {
  const std::string_view kept = text.substr(0, def.max_length);
  const std::size_t converted = cs_local_to_iptc(kept, encoding.bytes);
  encoding.length = std::min<std::size_t>(converted, def.max_length);
  const bool cut = text.size() > def.max_length || converted > def.max_length;
  return cut ? ErrorCode::value_truncated : ErrorCode::ok;
}

ErrorCode encode_number(const IptcDatasetDef& def, std::string_view text, Encoding& encoding) {
  const bool is_short = def.type == DatasetType::number16;
  std::uint32_t count = 0;
  const ErrorCode result =
      encode_integers(is_short ? DataType::unsigned_short : DataType::unsigned_long, true, text,
                      encoding.bytes, count);
  if (result != ErrorCode::ok) {
    return result;
  }
  encoding.length = is_short ? 2 : 4;
  if (count < def.max_length) {
    return ErrorCode::too_few_values;
  }
  return count > def.max_length ? ErrorCode::too_many_values : ErrorCode::ok;
}

ErrorCode encode_date(std::string_view text, Encoding& encoding) {
  DateRecord date;
  const ErrorCode result = parse_date_time(text, date, DateRequirement::date);
  if (result != ErrorCode::ok) {
    return result;
  }
  std::array<char, 9> room;
  TextBuffer stored(room);
  append_format(stored, "%4s%2s%2s", date.year_text.data(), date.month_text.data(),
                date.day_text.data());
  set_text(encoding, stored.text());
  return ErrorCode::ok;
}

ErrorCode encode_time(std::string_view text, Encoding& encoding) {
  DateRecord date;
  const ErrorCode result = parse_date_time(text, date, DateRequirement::time);
  if (result != ErrorCode::ok) {
    return result;
  }
  std::array<char, 12> room;
  TextBuffer stored(room);
  append_format(stored, "%s%2s%2s%5s", date.hour_text.data(), date.minute_text.data(),
                date.second_text.data(), date.zone_text.data());
  set_text(encoding, stored.text());
  return ErrorCode::ok;
}

ErrorCode encode_value(const IptcDatasetDef& def, std::string_view text, Encoding& encoding) {
  if (def.value_map != nullptr) {
    return encode_mapped_number(def, text, encoding);
  }
  if (def.value_map_bytes != nullptr) {
    return encode_mapped_bytes(def, text, encoding);
  }
  switch (def.type) {
    case DatasetType::text:
      return encode_text(def, text, encoding);
    case DatasetType::number16:
    case DatasetType::number32:
      return encode_number(def, text, encoding);
    case DatasetType::date:
      return encode_date(text, encoding);
    case DatasetType::time:
      return encode_time(text, encoding);
    default:
      return ErrorCode::format_not_supported;
  }
}

}  // namespace

ErrorCode iptc_encode_field(std::uint16_t row, std::string_view text, IptcStore& store,
                            std::string_view& encoded, bool check_only,
                            const SubstitutionContext& context) {
  encoded = {};
  const IptcDatasetDef& def = iptc_datasets[row];
  if (!def.editable) {
    return ErrorCode::edit_not_permitted;
  }
  ValueText expanded;
  const ErrorCode names = expand_template(text, TemplateSection::file, expanded, context);
  if (check_only && names == ErrorCode::ok) {
    return ErrorCode::ok;
  }
  Encoding encoding;
  const ErrorCode result = encode_value(def, expanded.data(), encoding);
  if (check_only || (result != ErrorCode::ok && result != ErrorCode::value_truncated)) {
    return result;
  }
  const std::string_view bytes = text_of(std::span(encoding.bytes).first(encoding.length));
  if (!append_to_pool(store.pool, bytes, encoded)) {
    print_warning("Warning: String pool full, some values may be truncated\n");
    store.incomplete = true;
  }
  return result;
}

}  // namespace tagmend
