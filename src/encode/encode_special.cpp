#include "encode/encode_special.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "encode/encode_numbers.h"
#include "support/charset.h"
#include "support/settings.h"

namespace tagmend {
namespace {

constexpr double log_of_2 = 0.6931471805599453;
constexpr double square_root_of_2 = 1.4142135623730951;

// Exposure (Exif 2.2, section 4.6.5; the APEX units of its annex C)

/// An exposure time as typed: seconds, or 1/x of a second.
struct ExposureTime {
  float number;      ///< x, or the seconds
  bool is_fraction;  ///< typed as 1/x
};

std::optional<ExposureTime> read_exposure_time(std::string_view text) {
  const bool is_fraction = text.starts_with("1/");
  const std::optional<float> number = read_float(is_fraction ? text.substr(2) : text);
  if (!number) {
    return std::nullopt;
  }
  return ExposureTime{*number, is_fraction};
}

ErrorCode store_rational(const FieldValue& field, double value, std::int32_t denominator,
                         std::span<std::uint8_t> output, std::uint32_t& value_count) {
  return encode_rational_value(field.def.data_type, field.target.big_endian, value, denominator,
                               output, value_count);
}

ErrorCode encode_exposure_time(const FieldValue& field, std::span<std::uint8_t> output,
                               std::uint32_t& value_count) {
  const std::optional<ExposureTime> time = read_exposure_time(field.text);
  if (!time || (time->is_fraction && time->number == 0)) {
    return ErrorCode::invalid_number;
  }
  const double seconds = time->is_fraction ? 1.0 / double{time->number} : double{time->number};
  if (seconds < 0) {
    return ErrorCode::invalid_number;
  }
  return store_rational(field, seconds, six_decimals, output, value_count);
}

ErrorCode encode_shutter_speed(const FieldValue& field, std::span<std::uint8_t> output,
                               std::uint32_t& value_count) {
  const std::optional<ExposureTime> time = read_exposure_time(field.text);
  if (!time || !(time->number > 0)) {
    return ErrorCode::invalid_number;
  }
  const double doublings = std::log(double{time->number}) / log_of_2;
  return store_rational(field, time->is_fraction ? doublings : -doublings, six_decimals, output,
                        value_count);
}

ErrorCode encode_aperture(const FieldValue& field, std::span<std::uint8_t> output,
                          std::uint32_t& value_count) {
  const std::optional<float> f_number = read_float(field.text);
  if (!f_number || *f_number < 0) {
    return ErrorCode::invalid_number;
  }
  // The logarithm of 0, minus infinity, is refused like that of any F-number below 1.
  // cppcheck-suppress invalidFunctionArg
  const double stops = std::log(double{*f_number}) / std::log(square_root_of_2);
  return store_rational(field, stops, four_decimals, output, value_count);
}

// Versions

ErrorCode store_bytes(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> output,
                      std::uint32_t& value_count) {
  std::ranges::copy(bytes, output.begin());
  value_count = static_cast<std::uint32_t>(bytes.size());
  return ErrorCode::ok;
}

ErrorCode encode_exif_version(const FieldValue& field, std::span<std::uint8_t> output,
                              std::uint32_t& value_count) {
  if (field.text != "0220" && field.text != "0210") {
    return ErrorCode::invalid_value;
  }
  return store_bytes(bytes_of(field.text), output, value_count);
}

ErrorCode encode_gps_version(const FieldValue& field, std::span<std::uint8_t> output,
                             std::uint32_t& value_count) {
  static constexpr std::array<std::uint8_t, 4> version = {2, 0, 0, 0};
  if (field.text != "2.0.0.0") {
    return ErrorCode::invalid_value;
  }
  return store_bytes(version, output, value_count);
}

// Texts

/// A comment begins with the code of its character set (Exif 2.2, section 4.6.5).
constexpr std::size_t comment_code_size = 8;
constexpr std::array<std::uint8_t, comment_code_size> code_ascii = {'A', 'S', 'C', 'I', 'I'};
constexpr std::array<std::uint8_t, comment_code_size> code_unicode = {'U', 'N', 'I', 'C',
                                                                      'O', 'D', 'E'};
constexpr std::size_t comment_limit = 1991;

ErrorCode encode_comment(const FieldValue& field, std::span<std::uint8_t> output,
                         std::uint32_t& value_count) {
  const std::span<std::uint8_t> room = output.subspan(comment_code_size, comment_limit);
  std::size_t length = 0;
  if (library_settings.unicode_comment) {
    std::ranges::copy(code_unicode, output.begin());
    length = cs_to_utf16(field.text, room);
  } else {
    std::ranges::copy(code_ascii, output.begin());
    length = std::min(field.text.size(), comment_limit);
    std::copy_n(field.text.begin(), length, room.begin());
  }
  value_count = static_cast<std::uint32_t>(comment_code_size + length);
  return ErrorCode::ok;
}

ErrorCode encode_utf16_text(const FieldValue& field, std::span<std::uint8_t> output,
                            std::uint32_t& value_count) {
  value_count = static_cast<std::uint32_t>(cs_to_utf16(field.text, output.first(encoded_limit)));
  return ErrorCode::ok;
}

// GPS coordinates: "45 27.50" or "45 27 30"

std::optional<float> read_non_negative(const NameText& item) {
  const std::optional<float> number = read_float(item.data());
  return number && *number >= 0 ? number : std::nullopt;
}

bool is_whole(float number) { return std::trunc(number) == number; }

ErrorCode put_degrees(ByteCursor& cursor, NumberList& numbers) {
  if (!next_number(numbers)) {
    return ErrorCode::too_few_values;
  }
  const std::optional<float> degrees = read_non_negative(numbers.item);
  if (!degrees) {
    return ErrorCode::invalid_number;
  }
  if (!is_whole(*degrees)) {
    return ErrorCode::fraction_not_allowed;
  }
  return put_rational(cursor, *degrees, whole);
}

ErrorCode put_minutes(ByteCursor& cursor, NumberList& numbers, bool& decimal_minutes) {
  if (!next_number(numbers)) {
    return ErrorCode::too_few_values;
  }
  const std::optional<float> minutes = read_non_negative(numbers.item);
  if (!minutes) {
    return ErrorCode::invalid_number;
  }
  decimal_minutes = std::string_view(numbers.item.data()).find('.') != std::string_view::npos;
  return put_rational(cursor, *minutes, decimal_minutes ? four_decimals : whole);
}

ErrorCode put_seconds(ByteCursor& cursor, NumberList& numbers, bool decimal_minutes) {
  if (!next_number(numbers)) {
    return decimal_minutes ? put_rational(cursor, 0, whole) : ErrorCode::too_few_values;
  }
  if (decimal_minutes) {
    return ErrorCode::too_many_values;
  }
  const std::optional<float> seconds = read_non_negative(numbers.item);
  if (!seconds) {
    return ErrorCode::invalid_number;
  }
  return put_rational(cursor, *seconds, is_whole(*seconds) ? whole : four_decimals);
}

ErrorCode encode_gps_coordinate(const FieldValue& field, std::span<std::uint8_t> output,
                                std::uint32_t& value_count) {
  ByteCursor cursor = value_cursor(output, field.target.big_endian);
  NumberList numbers(field.text);
  bool decimal_minutes = false;
  ErrorCode code = put_degrees(cursor, numbers);
  if (code == ErrorCode::ok) {
    code = put_minutes(cursor, numbers, decimal_minutes);
  }
  if (code == ErrorCode::ok) {
    code = put_seconds(cursor, numbers, decimal_minutes);
  }
  value_count = 3;
  return code;
}

/// Which fields have a form of their own.
struct SpecialForm {
  std::uint32_t tag;
  FieldEncoder encode;
};

constexpr SpecialForm gps_forms[] = {
    {0x0000, encode_gps_version},    {0x0002, encode_gps_coordinate},
    {0x0004, encode_gps_coordinate}, {0x0014, encode_gps_coordinate},
    {0x0016, encode_gps_coordinate},
};

/// Of every other kind, maker notes included.
constexpr SpecialForm forms[] = {
    {0x829A, encode_exposure_time}, {0x9000, encode_exif_version}, {0x9201, encode_shutter_speed},
    {0x9202, encode_aperture},      {0x9205, encode_aperture},     {0x9286, encode_comment},
    {0x4747, encode_utf16_text},    {0x9C9B, encode_utf16_text},   {0x9C9C, encode_utf16_text},
    {0x9C9D, encode_utf16_text},    {0x9C9E, encode_utf16_text},   {0x9C9F, encode_utf16_text},
};

FieldEncoder find_form(std::span<const SpecialForm> table, std::uint32_t tag) {
  for (const SpecialForm& form : table) {
    if (form.tag == tag) {
      return form.encode;
    }
  }
  return nullptr;
}

}  // namespace

FieldEncoder find_special_encoder(const FieldDef& def) {
  return def.ifd_kind == IfdKind::gps ? find_form(gps_forms, def.tag) : find_form(forms, def.tag);
}

}  // namespace tagmend
