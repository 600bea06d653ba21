#include "encode/encode_numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "support/ascii.h"
#include "support/message.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

using Int16Limits = std::numeric_limits<std::int16_t>;
using Int32Limits = std::numeric_limits<std::int32_t>;
using Uint16Limits = std::numeric_limits<std::uint16_t>;
using Uint32Limits = std::numeric_limits<std::uint32_t>;

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

void skip_spaces(std::string_view& text) {
  while (!text.empty() && is_space(text.front())) {
    text.remove_prefix(1);
  }
}

/// Takes a sign off the text; whether it is a minus.
bool take_sign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) {
    text.remove_prefix(1);
  }
  return negative;
}

/// The number a text begins with, as strtoul reads it where long has 32 bits: a minus sign gives
/// the two's complement. Nothing without a digit, or when the number needs more than 32 bits.
std::optional<std::uint32_t> read_unsigned(std::string_view text) {
  skip_spaces(text);
  const bool negative = take_sign(text);
  if (text.empty() || !is_digit(text.front())) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  for (; !text.empty() && is_digit(text.front()); text.remove_prefix(1)) {
    number = number * 10 + static_cast<std::uint64_t>(text.front() - '0');
    if (number > Uint32Limits::max()) {
      return std::nullopt;
    }
  }
  const auto low = static_cast<std::uint32_t>(number);
  return negative ? 0 - low : low;
}

/// Whether "0x" stands at the start without a hexadecimal digit behind it: strtof would take the 0,
/// scanf takes nothing.
bool is_bare_hex_prefix(std::string_view text, std::string_view taken) {
  skip_spaces(taken);
  take_sign(taken);
  const char next = text.empty() ? '\0' : text.front();
  return taken == "0" && (next == 'x' || next == 'X');
}

bool fits_type(DataType type, std::uint32_t number) {
  const auto as_signed = static_cast<std::int32_t>(number);
  switch (type) {
    case DataType::unsigned_short:
      return number <= Uint16Limits::max();
    case DataType::signed_short:
      return as_signed >= Int16Limits::min() && as_signed <= Int16Limits::max();
    default:
      return true;
  }
}

constexpr bool is_short(DataType type) {
  return type == DataType::unsigned_short || type == DataType::signed_short;
}

constexpr bool is_integer(DataType type) {
  return is_short(type) || type == DataType::unsigned_long || type == DataType::signed_long ||
         type == DataType::short_or_long;
}

constexpr bool is_rational(DataType type) {
  return type == DataType::unsigned_rational || type == DataType::signed_rational;
}

ErrorCode put_rational_item(ByteCursor& cursor, std::string_view item, DataType type,
                            std::int32_t denominator) {
  const std::optional<float> number = read_float(item);
  if (!number) {
    return ErrorCode::invalid_number;
  }
  if (type == DataType::unsigned_rational && *number < 0) {
    return ErrorCode::invalid_number;
  }
  const bool has_point = item.find('.') != std::string_view::npos;
  return put_rational(cursor, *number, has_point ? denominator : whole);
}

}  // namespace

NumberList::NumberList(std::string_view text) {
  copy_text(copy, text);
  list.text = std::span(copy).first(std::min(text.size(), value_limit));
}

bool next_number(NumberList& numbers) {
  return next_remove_item(numbers.list, library_settings.quote, numbers.item);
}

std::optional<float> read_float(std::string_view text) {
  ValueText terminated;
  copy_text(terminated, text);
  const char* const begin = terminated.data();
  char* end = nullptr;
  const float number = std::strtof(begin, &end);
  const auto length = static_cast<std::size_t>(end - begin);
  if (length == 0 || !std::isfinite(number)) {
    return std::nullopt;
  }
  if (is_bare_hex_prefix(end, {begin, length})) {
    return std::nullopt;
  }
  return number;
}

ByteCursor value_cursor(std::span<std::uint8_t> output, bool big_endian) {
  ByteCursor cursor;
  cursor_init(cursor, nullptr, output.first(encoded_limit), 0);
  cursor.big_endian = big_endian;
  return cursor;
}

ErrorCode put_rational(ByteCursor& cursor, double value, std::int32_t denominator) {
  const double numerator = std::trunc(value * denominator);
  // Written so that what is not a number fails, too.
  if (!(numerator >= Int32Limits::min() && numerator <= Int32Limits::max())) {
    return ErrorCode::invalid_number;
  }
  cursor_put_u32(cursor, static_cast<std::uint32_t>(static_cast<std::int32_t>(numerator)));
  cursor_put_u32(cursor, static_cast<std::uint32_t>(denominator));
  return ErrorCode::ok;
}

ErrorCode encode_hex_bytes(std::string_view text, std::span<std::uint8_t> output,
                           std::uint32_t& value_count) {
  value_count = 0;
  if (text.size() % 2 != 0) {
    return ErrorCode::odd_hex_length;
  }
  text = text.substr(0, 2 * encoded_limit);
  for (; !text.empty(); text.remove_prefix(2)) {
    const unsigned high = hex_digit_value(text[0]);
    const unsigned low = hex_digit_value(text[1]);
    if (high == no_hex_digit || low == no_hex_digit) {
      return ErrorCode::invalid_hex_digit;
    }
    output[value_count++] = static_cast<std::uint8_t>(high << 4 | low);
  }
  return ErrorCode::ok;
}

ErrorCode encode_integers(DataType type, bool big_endian, std::string_view text,
                          std::span<std::uint8_t> output, std::uint32_t& value_count) {
  value_count = 0;
  if (!is_integer(type)) {
    return ErrorCode::format_not_supported;
  }
  ByteCursor cursor = value_cursor(output, big_endian);
  ErrorCode result = ErrorCode::ok;
  for (NumberList numbers(text); next_number(numbers);) {
    const std::optional<std::uint32_t> number = read_unsigned(numbers.item.data());
    if (!number || !fits_type(type, *number)) {
      result = ErrorCode::invalid_number;
      continue;
    }
    if (is_short(type)) {
      cursor_put_u16(cursor, static_cast<std::uint16_t>(*number & Uint16Limits::max()));
    } else {
      cursor_put_u32(cursor, *number);
    }
    ++value_count;
  }
  return result;
}

ErrorCode encode_rationals(DataType type, bool big_endian, std::string_view text,
                           std::int32_t denominator, std::span<std::uint8_t> output,
                           std::uint32_t& value_count) {
  value_count = 0;
  if (!is_rational(type)) {
    return ErrorCode::format_not_supported;
  }
  ByteCursor cursor = value_cursor(output, big_endian);
  ErrorCode result = ErrorCode::ok;
  for (NumberList numbers(text); next_number(numbers);) {
    if (put_rational_item(cursor, numbers.item.data(), type, denominator) == ErrorCode::ok) {
      ++value_count;
    } else {
      result = ErrorCode::invalid_number;
    }
  }
  return result;
}

ErrorCode encode_rational_value(DataType type, bool big_endian, double value,
                                std::int32_t denominator, std::span<std::uint8_t> output,
                                std::uint32_t& value_count) {
  value_count = 0;
  check_consistency(is_rational(type), 5342, module_exif);
  if (type == DataType::unsigned_rational && value < 0) {
    return ErrorCode::format_not_supported;
  }
  if (!(std::abs(value) <= std::numeric_limits<float>::max())) {
    return ErrorCode::invalid_number;
  }
  ByteCursor cursor = value_cursor(output, big_endian);
  value_count = 1;
  return put_rational(cursor, static_cast<float>(value), denominator);
}

}  // namespace tagmend
