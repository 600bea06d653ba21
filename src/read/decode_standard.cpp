// TIFF 6.0 and Exif 2.2 fields, and the private ones that image software stores beside them.
#include <algorithm>
#include <array>
#include <cmath>

#include "read/decode.h"
#include "read/value_reader.h"
#include "support/charset.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// Fields that show the quotient of one rational.
struct FractionRule {
  std::uint32_t tag;
  bool is_signed;
  const char* format;
};

constexpr FractionRule fraction_rules[] = {
    {0x011A, false, "%.0f"},   // horizontal resolution
    {0x011B, false, "%.0f"},   // vertical resolution
    {0x829D, false, "%3.1f"},  // F-number
    {0x9204, true, "%.2f"},    // exposure bias
    {0x9206, false, "%.1f"},   // subject distance
    {0x920A, false, "%.2f"},   // focal length
    {0xA20E, true, "%.1f"},    // horizontal resolution of the focal plane
    {0xA20F, true, "%.1f"},    // vertical resolution of the focal plane
    {0xA215, false, "%.0f"},   // exposure index
};

void append_seconds(TextBuffer& text) {
  if (library_settings.display_units) {
    append(text, " sec");
  }
}

void decode_version(const StoredValue& value, TextBuffer& text, ReadContext&) {
  append_value_text(value.cursor, value.count, text);
}

void decode_subfile_type(const StoredValue& value, TextBuffer& text, ReadContext&) {
  const std::uint32_t bits = cursor_get_u32(value.cursor);
  append(text, (bits & 1) == 0 ? "Main " : "Thumbnail ");
  if ((bits & 2) != 0) {
    append(text, "Multi-page ");
  }
  if ((bits & 4) != 0) {
    append(text, "Transparency-mask ");
  }
}

void decode_date(const StoredValue& value, TextBuffer& text, ReadContext&) {
  append_value_text(value.cursor, value.count, text);
  constexpr std::array<std::size_t, 2> separators = {4, 7};
  for (const std::size_t place : separators) {
    if (library_settings.display_units && place < text.length) {
      text.room[place] = '/';
    }
  }
}

void decode_exposure_time(const StoredValue& value, TextBuffer& text, ReadContext&) {
  const Fraction time = read_fraction(value.cursor, false);
  const double seconds = quotient(time);
  if (seconds <= 0.5) {
    append_format(text, "1/%.0f", quotient({time.denominator, time.numerator}));
  } else {
    append_format(text, "%.1f", seconds);
  }
  append_seconds(text);
}

/// APEX time value: 2 to its power is the reciprocal of the exposure time. Shown as a whole power
/// of two, from 1 (a value that rounds to 0) to the largest that a signed number holds.
void decode_shutter_speed(const StoredValue& value, TextBuffer& text, ReadContext&) {
  const double apex = quotient(read_fraction(value.cursor, true));
  if (apex >= 0) {
    const int shift = std::clamp(round_to_int(apex - 1.0), -1, 29);
    append_format(text, "1/%d", 1 << (shift + 1));
  } else {
    append_format(text, "%d", round_to_int(std::pow(2.0, -apex)));
  }
  append_seconds(text);
}

/// APEX aperture value.
void decode_aperture(const StoredValue& value, TextBuffer& text, ReadContext&) {
  const double apex = quotient(read_fraction(value.cursor, false));
  append_format(text, "%.1f", finite_or_zero(std::pow(std::sqrt(2.0), apex)));
}

void append_utf16(std::span<const std::uint8_t> bytes, TextBuffer& text) {
  if (!bytes.empty() && !text.full()) {
    cs_from_utf16(bytes, text.room.subspan(text.length));
    measure_text(text);
  }
}

/// The text fields of a desktop system's file properties.
void decode_utf16_text(const StoredValue& value, TextBuffer& text, ReadContext&) {
  constexpr std::uint32_t max_bytes = 2000;
  append_utf16(read_bytes(value.cursor, std::min(value.count, max_bytes)), text);
}

/// Some software separates the lines of a comment by NULs.
void append_comment_lines(std::span<const std::uint8_t> bytes, TextBuffer& text) {
  while (!bytes.empty() && bytes.back() == 0) {
    bytes = bytes.first(bytes.size() - 1);
  }
  for (const std::uint8_t byte : bytes) {
    const char character = byte == 0 ? '\n' : static_cast<char>(byte);
    append(text, {&character, 1});
  }
}

/// UserComment (Exif 2.2, section 4.6.5): 8 bytes name the character code of what follows.
void decode_user_comment(const StoredValue& value, TextBuffer& text, ReadContext&) {
  constexpr std::array<std::uint8_t, 8> unicode = {'U', 'N', 'I', 'C', 'O', 'D', 'E', 0};
  if (DataType{value.type} == DataType::string) {
    decode_basic(value, text);
    return;
  }
  if (value.count < unicode.size()) {
    return;
  }
  const std::span<const std::uint8_t> code = read_bytes(value.cursor, unicode.size());
  const std::uint32_t length = value.count - static_cast<std::uint32_t>(unicode.size());
  if (std::equal(code.begin(), code.end(), unicode.begin(), unicode.end())) {
    append_utf16(read_bytes(value.cursor, length), text);
  } else {
    append_comment_lines(read_bytes(value.cursor, std::min<std::uint64_t>(length, max_value_text)),
                         text);
  }
}

void decode_iptc(const StoredValue& value, TextBuffer& text, ReadContext& context) {
  if (context.hooks.read_iptc_value != nullptr) {
    context.hooks.read_iptc_value(context, value.cursor, value_size(value.type, value.count));
  }
  append(text, "See separate IPTC fields.");
}

void decode_photoshop(const StoredValue& value, TextBuffer& text, ReadContext& context) {
  if (context.hooks.read_photoshop_value != nullptr) {
    context.hooks.read_photoshop_value(context, value.cursor, value_size(value.type, value.count));
  }
  append(text, "Binary data.");
}

struct StandardRule {
  std::uint32_t tag;
  void (*decode)(const StoredValue& value, TextBuffer& text, ReadContext& context);
};

constexpr StandardRule standard_rules[] = {
    {0x0002, decode_version},        // Interoperability version
    {0x00FE, decode_subfile_type},   // new subfile type
    {0x0132, decode_date},           // date and time of the file's change
    {0x4747, decode_utf16_text},     // tags
    {0x829A, decode_exposure_time},  // exposure time
    {0x83BB, decode_iptc},           // IPTC-NAA data
    {0x8649, decode_photoshop},      // image resources
    {0x9000, decode_version},        // Exif version
    {0x9003, decode_date},           // date and time of the original
    {0x9004, decode_date},           // date and time of the digital data
    {0x9201, decode_shutter_speed},  // shutter speed
    {0x9202, decode_aperture},       // aperture
    {0x9205, decode_aperture},       // largest aperture
    {0x9286, decode_user_comment},   // user comment
    {0x9C9B, decode_utf16_text},     // title
    {0x9C9C, decode_utf16_text},     // comment
    {0x9C9D, decode_utf16_text},     // author
    {0x9C9E, decode_utf16_text},     // keywords
    {0x9C9F, decode_utf16_text},     // subject
    {0xA000, decode_version},        // FlashPix version
};

}  // namespace

void decode_standard(const StoredValue& value, TextBuffer& text, ReadContext& context) {
  for (const StandardRule& rule : standard_rules) {
    if (rule.tag == value.tag) {
      rule.decode(value, text, context);
      return;
    }
  }
  for (const FractionRule& rule : fraction_rules) {
    if (rule.tag == value.tag) {
      append_format(text, rule.format, quotient(read_fraction(value.cursor, rule.is_signed)));
      return;
    }
  }
  decode_generic(value, text);
}

}  // namespace tagmend
