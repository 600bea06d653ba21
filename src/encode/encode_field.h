// The text of a value into the bytes that are stored.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "dictionary/field_def.h"
#include "encode/template.h"
#include "support/error_code.h"

namespace tagmend {

/// Bytes that an encoded value may have.
inline constexpr std::size_t encoded_limit = 2000;

/// How a value is to be stored.
struct EncodeTarget {
  bool big_endian = true;             ///< byte order of the IFD that gets it
  std::uint32_t layout = any_layout;  ///< maker-note kind of the file
  bool early_check = false;           ///< check only: a value that depends on the file passes
};

/// Encodes `text` for a dictionary row into `output` (at least encoded_limit bytes) and counts its
/// values. ok, edit_not_permitted, format_not_supported, invalid_number, too_few_values,
/// too_many_values, invalid_value, text_too_short, text_too_long, fraction_not_allowed,
/// odd_hex_length, invalid_hex_digit, or a code of the date parser. The output is undefined after a
/// failure. A text of more than encoded_limit - 1 bytes ends the program (status 1), after a
/// message.
ErrorCode exif_encode_field(std::uint16_t row, const EncodeTarget& target, std::string_view text,
                            std::span<std::uint8_t> output, std::uint32_t& value_count,
                            const SubstitutionContext& context);

/// Unsigned decimal numbers (a minus sign gives the two's complement) as 16-bit or 32-bit values:
/// ok, format_not_supported or invalid_number. Output of at least encoded_limit bytes.
ErrorCode encode_integers(DataType type, bool big_endian, std::string_view text,
                          std::span<std::uint8_t> output, std::uint32_t& value_count);

}  // namespace tagmend
