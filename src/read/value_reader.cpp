#include "read/value_reader.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/message.h"

namespace tagmend {
namespace {

void count_unreadable(ByteCursor& cursor) {
  print_error("Error: Attempt to read past end of buffer(%d)\n", 3047);
  ++cursor.error_count;
}

}  // namespace

double read_number(ByteCursor& cursor, bool is_signed) {
  if (!cursor.has(4)) {
    count_unreadable(cursor);
    return unreadable_number;
  }
  const std::uint32_t number = load_u32(cursor.rest().first<4>(), cursor.big_endian);
  cursor.pos += 4;
  return is_signed ? static_cast<double>(static_cast<std::int32_t>(number))
                   : static_cast<double>(number);
}

Fraction read_fraction(ByteCursor& cursor, bool is_signed) {
  Fraction fraction;
  fraction.numerator = read_number(cursor, is_signed);
  fraction.denominator = read_number(cursor, is_signed);
  return fraction;
}

std::int16_t read_s16(ByteCursor& cursor) {
  if (!cursor.has(2)) {
    print_error("Error: Attempt to read past end of buffer (%d)\n", 3018);
    ++cursor.error_count;
    return unreadable_s16;
  }
  const std::uint16_t number = load_u16(cursor.rest().first<2>(), cursor.big_endian);
  cursor.pos += 2;
  return static_cast<std::int16_t>(number);
}

std::uint8_t read_byte(ByteCursor& cursor) {
  const std::span<const std::uint8_t> byte = read_bytes(cursor, 1);
  return byte.empty() ? unreadable_byte : byte.front();
}

std::span<const std::uint8_t> read_bytes(ByteCursor& cursor, std::uint64_t count) {
  const std::span<const std::uint8_t> rest = cursor.rest();
  if (count > rest.size()) {
    count_unreadable(cursor);
    count = rest.size();
  }
  cursor.pos += static_cast<std::uint32_t>(count);
  return rest.first(static_cast<std::size_t>(count));
}

double quotient(const Fraction& fraction) {
  return fraction.denominator == 0 ? 0 : fraction.numerator / fraction.denominator;
}

double finite_or_zero(double number) { return std::isfinite(number) ? number : 0; }

int round_to_int(double number) {
  if (std::isnan(number)) {
    return 0;
  }
  return static_cast<int>(std::lrint(std::clamp(number, double{INT_MIN}, double{INT_MAX})));
}

void append_value_text(ByteCursor& cursor, std::uint64_t count, TextBuffer& text) {
  const std::string_view value = text_of(read_bytes(cursor, std::min(count, max_value_text)));
  append(text, value.substr(0, value.find('\0')));
}

void measure_text(TextBuffer& text) {
  text.room.back() = '\0';
  text.length = std::string_view(text.room.data()).size();
}

void blanks_to_zeros(TextBuffer& text, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < std::min(last, text.length); ++i) {
    if (text.room[i] == ' ') {
      text.room[i] = '0';
    }
  }
}

}  // namespace tagmend
