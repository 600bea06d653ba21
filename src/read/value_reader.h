// Numbers, bytes and text of a stored value that is to be shown. The value may be damaged: what
// lies outside the cursor's buffer comes back as a marker, after a message and a counted error.
#pragma once

#include <cstdint>
#include <span>

#include "support/byte_cursor.h"
#include "support/text_buffer.h"

namespace tagmend {

/// The longest text of a field.
inline constexpr std::uint64_t max_value_text = 1999;

/// After more failed reads than these the rest of a value is given up.
inline constexpr std::uint32_t max_read_errors = 10;

/// What unreadable numbers come back as.
inline constexpr double unreadable_number = -559038784.0;
inline constexpr std::int16_t unreadable_s16 = -8531;
inline constexpr std::uint8_t unreadable_byte = 0xAD;

/// A stored rational.
struct Fraction {
  double numerator = 0;
  double denominator = 0;
};

/// Whether the next number of a value is worth reading: the text has room for it, and not too many
/// reads have failed. Ends every loop over a count from a file.
[[nodiscard]] inline bool goes_on(const ByteCursor& cursor, const TextBuffer& text) {
  return !text.full() && cursor.error_count <= max_read_errors;
}

/// A 32-bit number; "Error: Attempt to read past end of buffer(%d)\n" with 3047 when it is
/// unreadable.
double read_number(ByteCursor& cursor, bool is_signed);

/// Two such numbers.
Fraction read_fraction(ByteCursor& cursor, bool is_signed);

/// A signed 16-bit number; "Error: Attempt to read past end of buffer (%d)\n" with 3018.
std::int16_t read_s16(ByteCursor& cursor);

/// One byte, or as many of `count` bytes as there are; the message of read_number when any is
/// missing.
std::uint8_t read_byte(ByteCursor& cursor);
std::span<const std::uint8_t> read_bytes(ByteCursor& cursor, std::uint64_t count);

/// Numerator by denominator; 0 when the denominator is 0 (no text ever reads "inf" or "nan").
[[nodiscard]] double quotient(const Fraction& fraction);

/// The number, or 0 for an infinite one: exponents from a damaged file overflow.
[[nodiscard]] double finite_or_zero(double number);

/// The nearest int, half to even; at most what an int holds.
[[nodiscard]] int round_to_int(double number);

/// Appends `count` bytes of the value, at most 1999 and up to the first NUL, as they are.
void append_value_text(ByteCursor& cursor, std::uint64_t count, TextBuffer& text);

/// Takes up, after somebody wrote a C string behind the text, what stands there.
void measure_text(TextBuffer& text);

/// Turns the blanks among the characters from `first` up to `last` (excluded) into zeros.
void blanks_to_zeros(TextBuffer& text, std::size_t first, std::size_t last);

}  // namespace tagmend
