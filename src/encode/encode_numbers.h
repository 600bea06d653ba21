// The number forms of values: hexadecimal bytes, integers and rationals.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "dictionary/data_type.h"
#include "encode/encode_field.h"
#include "encode/field_list.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// Denominators: how many decimals a rational keeps.
inline constexpr std::int32_t whole = 1;
inline constexpr std::int32_t four_decimals = 10000;
inline constexpr std::int32_t six_decimals = 1000000;

/// A list of numbers, over a copy of the text that the list's escape rule may change. It stays
/// where it was made: the list refers to the copy.
struct NumberList {
  ValueText copy;
  ListText list;
  NameText item;  ///< the number in hand

  explicit NumberList(std::string_view text);
  NumberList(const NumberList&) = delete;
  NumberList& operator=(const NumberList&) = delete;
  ~NumberList() = default;
};

/// Goes on to the next number; false at the end of the list.
bool next_number(NumberList& numbers);

/// The number a text begins with, as scanf's "%f" reads it; nothing when there is none, or when it
/// is infinite or not a number.
std::optional<float> read_float(std::string_view text);

/// The first encoded_limit bytes of the output, to be written in a byte order.
ByteCursor value_cursor(std::span<std::uint8_t> output, bool big_endian);

/// Writes value x denominator, truncated, over the denominator. invalid_number, and nothing
/// written, when the numerator is no signed 32-bit number.
ErrorCode put_rational(ByteCursor& cursor, double value, std::int32_t denominator);

/// Pairs of hexadecimal digits as bytes: ok, odd_hex_length or invalid_hex_digit.
ErrorCode encode_hex_bytes(std::string_view text, std::span<std::uint8_t> output,
                           std::uint32_t& value_count);

/// A list of rationals; numbers with a decimal point keep the denominator's decimals, others are
/// stored over 1. ok, format_not_supported or invalid_number.
ErrorCode encode_rationals(DataType type, bool big_endian, std::string_view text,
                           std::int32_t denominator, std::span<std::uint8_t> output,
                           std::uint32_t& value_count);

/// One rational of a computed value, which counts in single precision: ok, format_not_supported (a
/// negative value of an unsigned type) or invalid_number.
ErrorCode encode_rational_value(DataType type, bool big_endian, double value,
                                std::int32_t denominator, std::span<std::uint8_t> output,
                                std::uint32_t& value_count);

}  // namespace tagmend
