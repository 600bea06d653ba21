// GPS fields (Exif 2.2, section 4.6.6).
#include <array>
#include <cstddef>

#include "read/decode.h"
#include "read/value_reader.h"

namespace tagmend {
namespace {

/// How a coordinate is shown, by the precision in which it is stored.
struct CoordinateForm {
  const char* minutes_fraction;  ///< degrees and minutes
  const char* seconds_fraction;  ///< degrees, minutes and seconds
  const char* whole;
  std::size_t degrees_width;
};

constexpr CoordinateForm latitude = {"%2.0f %5.3f", "%2.0f %2.0f %5.3f", "%2.0f %2.0f %2.0f", 2};
constexpr CoordinateForm longitude = {"%3.0f %5.2f", "%3.0f %2.0f %5.2f", "%3.0f %2.0f %2.0f", 3};

/// Numbers keep their width: the blanks that begin at a number's place become zeros.
void fill_number(TextBuffer& text, std::size_t place) {
  std::size_t end = place;
  while (end < text.length && text.room[end] == ' ') {
    ++end;
  }
  blanks_to_zeros(text, place, end);
}

void decode_coordinate(const StoredValue& value, const CoordinateForm& form, TextBuffer& text) {
  const double degrees = quotient(read_fraction(value.cursor, false));
  const Fraction minutes = read_fraction(value.cursor, false);
  const Fraction seconds = read_fraction(value.cursor, false);
  const bool two_numbers = minutes.denominator > 1;
  if (two_numbers) {
    append_format(text, form.minutes_fraction, degrees, quotient(minutes));
  } else {
    append_format(text, seconds.denominator > 1 ? form.seconds_fraction : form.whole, degrees,
                  quotient(minutes), quotient(seconds));
  }
  fill_number(text, 0);
  fill_number(text, form.degrees_width + 1);
  if (!two_numbers) {
    fill_number(text, form.degrees_width + 4);
  }
}

void decode_time(const StoredValue& value, TextBuffer& text) {
  const double hours = quotient(read_fraction(value.cursor, false));
  const double minutes = quotient(read_fraction(value.cursor, false));
  const double seconds = quotient(read_fraction(value.cursor, false));
  append_format(text, "%2.0f:%2.0f:%2.0f", hours, minutes, seconds);
}

void decode_version(const StoredValue& value, TextBuffer& text) {
  std::array<int, 4> part{};
  for (int& number : part) {
    number = read_byte(value.cursor);
  }
  append_format(text, "%d.%d.%d.%d", part[0], part[1], part[2], part[3]);
}

}  // namespace

void decode_gps(const StoredValue& value, TextBuffer& text) {
  switch (value.tag) {
    case 0x0000:
      return decode_version(value, text);
    case 0x0002:
    case 0x0014:
      return decode_coordinate(value, latitude, text);
    case 0x0004:
    case 0x0016:
      return decode_coordinate(value, longitude, text);
    case 0x0007:
      return decode_time(value, text);
    default:
      return decode_generic(value, text);
  }
}

}  // namespace tagmend
