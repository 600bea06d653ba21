#include "encode/encode_field.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>
#include <utility>

#include "common/field_rows.h"
#include "common/printed_errors.h"
#include "common/tiff_builder.h"
#include "encode/edit_list.h"
#include "support/charset.h"
#include "support/settings.h"

namespace tagmend::test {
namespace {

/// The size of encoded values; a field that may be SHORT or LONG is encoded as LONG.
std::uint64_t encoded_size(const FieldDef& def, std::uint32_t count) {
  const auto type =
      def.data_type == DataType::short_or_long ? DataType::unsigned_long : def.data_type;
  return value_size(static_cast<std::uint16_t>(type), count);
}

/// Value count and the stored bytes in hexadecimal, or the code.
std::string encode(const char* nickname, std::string_view text, EncodeTarget target = {}) {
  const std::uint16_t row = row_of(nickname);
  std::array<std::uint8_t, encoded_limit> output{};
  std::uint32_t count = 0;
  const ErrorCode code = exif_encode_field(row, target, text, output, count, {});
  if (code != ErrorCode::ok) {
    return "code " + std::to_string(static_cast<unsigned>(code));
  }
  const std::uint64_t size = encoded_size(field_table_defs[row], count);
  return std::to_string(count) + ":" + digits_of(std::span(output).first(size), true);
}

std::string rationals(std::initializer_list<std::int32_t> numbers) {
  Bytes bytes;
  for (const std::int32_t number : numbers) {
    put(bytes, bytes.size(), static_cast<std::uint32_t>(number), 4, true);
  }
  return std::to_string(numbers.size() / 2) + ":" + digits_of(bytes, true);
}

struct Case {
  const char* nickname;
  std::string text;
  std::string result;
};

void check(std::initializer_list<Case> cases) {
  for (const Case& row : cases) {
    EXPECT_EQ(encode(row.nickname, row.text), row.result) << row.nickname << " " << row.text;
  }
}

TEST(EncodeField, Exposure) {
  check({
      {"exp-time", "1/125", rationals({8000, 1000000})},
      {"exp-time", "2147", rationals({2147000000, 1000000})},
      {"exp-time", "0", rationals({0, 1000000})},
      {"exp-time", "2148", "code 20"},
      {"exp-time", "1/0", "code 20"},
      {"exp-time", "1/1e-45", "code 20"},
      {"exp-time", "1/-5", "code 20"},
      {"exp-time", "-2", "code 20"},
      {"exp-time", "inf", "code 20"},
      {"exp-time", "nan", "code 20"},
      {"exp-time", "", "code 20"},
      {"shutter", "1/125", rationals({6965784, 1000000})},
      {"shutter", "2", rationals({-1000000, 1000000})},
      {"shutter", "0", "code 20"},
      {"shutter", "1/0", "code 20"},
      {"shutter", "-1", "code 20"},
      {"aperture", "2.8", rationals({29708, 10000})},
      {"aperture", "1", rationals({0, 10000})},
      {"max-aper", "4", rationals({40000, 10000})},
      {"aperture", "0.95", "code 16"},
      {"aperture", "0", "code 16"},
      {"aperture", "-1", "code 20"},
  });
}

TEST(EncodeField, GpsCoordinates) {
  check({
      {"gps-latitude", "45 27.50", rationals({45, 1, 275000, 10000, 0, 1})},
      {"gps-longitude", "45,27,30.25", rationals({45, 1, 27, 1, 302500, 10000})},
      {"gps-latitude", "45 27 30 99 x", rationals({45, 1, 27, 1, 30, 1})},
      {"gps-latitude", "45.0 27 30.0", rationals({45, 1, 27, 1, 30, 1})},
      {"gps-latitude", "", "code 22"},
      {"gps-latitude", "45", "code 22"},
      {"gps-latitude", "45 27", "code 22"},
      {"gps-latitude", "45.5 27 30", "code 37"},
      {"gps-latitude", "45 27.5 30", "code 23"},
      {"gps-latitude", "x 27 30", "code 20"},
      {"gps-latitude", "-45 27 30", "code 20"},
      {"gps-latitude", "45 -27 30", "code 20"},
      {"gps-latitude", "45 27 -30", "code 20"},
      {"gps-latitude", "3e9 27 30", "code 20"},
      {"gps-latitude", "45 300000.0", "code 20"},
      {"gps-latitude", "nan 27 30", "code 20"},
      {"gps-time", "10 20 30.5", rationals({10, 1, 20, 1, 305000, 10000})},
      {"gps-ver", "2.0.0.0", "4:02000000"},
      {"gps-ver", "2.2.0.0", "code 25"},
  });
}

TEST(EncodeField, Rationals) {
  check({
      {"x-res", "72", rationals({72, 1})},
      {"x-res", "72.0", rationals({720000, 10000})},
      // Single precision holds 2.29999995, which is cut, not rounded.
      {"x-res", "2.3", rationals({22999, 10000})},
      {"x-res", "1e3", rationals({1000, 1})},
      {"x-res", "15e-1", rationals({1, 1})},
      {"x-res", "0x10", rationals({16, 1})},
      {"x-res", "72dpi", rationals({72, 1})},
      {"x-res", "1,2", "code 23"},
      {"x-res", "", "code 22"},
      {"x-res", "-1", "code 20"},
      {"x-res", "0x", "code 20"},
      {"x-res", "inf", "code 20"},
      {"x-res", "2147483520", rationals({2147483520, 1})},
      {"x-res", "2147483648", "code 20"},
      {"x-res", "214748.4", "code 20"},
      {"x-res", "1e-45.", rationals({0, 10000})},
      {"exp-bias", "-0.5", rationals({-5000, 10000})},
      {"exp-bias", "-2147483648", rationals({-2147483647 - 1, 1})},
      {"exp-bias", "-2147484000", "code 20"},
  });
}

TEST(EncodeField, Integers) {
  check({
      {"page-num", "65535,0", "2:FFFF0000"},
      {"page-num", "+1 \r2", "2:00010002"},
      {"page-num", "1x 2", "2:00010002"},
      {"page-num", "70000 1", "code 20"},
      {"page-num", "-1 1", "code 20"},
      // Two's complement, as a 32-bit strtoul has it.
      {"page-num", "-4294967295 1", "2:00010001"},
      {"page-num", "1", "code 22"},
      {"page-num", "1 2 3", "code 23"},
      {"main-width", "4294967295", "1:FFFFFFFF"},
      {"main-width", "4294967296", "code 20"},
      {"main-width", "99999999999999999999999", "code 20"},
      {"main-width", "0010", "1:0000000A"},
      {"main-width", "-", "code 20"},
      {"main-width", "+-1", "code 20"},
      {"main-width", "", "code 22"},
      {"main-bits-sam", "", "0:"},
  });
  EXPECT_EQ(encode("page-num", "1 2", {.big_endian = false}), "2:01000200");
  EXPECT_EQ(encode("main-width", "258", {.big_endian = false}), "1:02010000");
}

TEST(EncodeField, SignedShorts) {
  EncodedValue output;
  std::uint32_t count = 0;
  for (const auto& [text, value] :
       {std::pair{"32767", 0x7FFF}, {"-32768", 0x8000}, {"4294967295", 0xFFFF}}) {
    EXPECT_EQ(encode_integers(DataType::signed_short, true, text, output, count), ErrorCode::ok);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(output[0] << 8 | output[1], value) << text;
  }
  for (const char* const text : {"32768", "65535", "-32769"}) {
    EXPECT_EQ(encode_integers(DataType::signed_short, true, text, output, count),
              ErrorCode::invalid_number);
  }
  EXPECT_EQ(encode_integers(DataType::string, true, "1", output, count),
            ErrorCode::format_not_supported);
}

TEST(EncodeField, MoreNumbersThanTheAreaHoldsAreRefused) {
  std::string numbers;
  for (int i = 0; i < 501; ++i) {
    numbers += "1,";
  }
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(encode("cn-body-num", numbers), "code 23"); }),
            "Error: Attempt to write past end of buffer(3144), exiting\n");
}

TEST(EncodeField, BytesAndVersions) {
  check({
      {"flashpix-ver", "30313030", "4:30313030"},
      {"flashpix-ver", "aBcDeF00", "4:ABCDEF00"},
      {"flashpix-ver", "303130", "code 22"},
      {"flashpix-ver", "3031303030", "code 23"},
      {"flashpix-ver", "ABC", "code 57"},
      {"flashpix-ver", "0/", "code 59"},  // the neighbours of the digits
      {"flashpix-ver", "0:", "code 59"},
      {"flashpix-ver", "0@", "code 59"},
      {"flashpix-ver", "0G", "code 59"},
      {"flashpix-ver", "0`", "code 59"},
      {"flashpix-ver", "0g", "code 59"},
      {"flashpix-ver", "0100 30313", "code 59"},
      {"cfa-pattern", "", "0:"},
      {"exif-ver", "0220", "4:30323230"},
      {"exif-ver", "0210", "4:30323130"},
      {"exif-ver", "0230", "code 25"},
      {"exif-ver", "02200", "code 25"},
  });
}

TEST(EncodeField, TextsAndNamedValues) {
  const std::string id(32, 'a');
  check({
      {"artist", "J.D", "4:4A2E4400"},
      {"artist", "", "1:00"},
      {"artist", R"(a\tb)", "4:61096200"},
      {"image-id", id.substr(1), "code 26"},
      {"image-id", id + "a", "code 27"},
      {"date-taken", "1999/12/31", "20:313939393A31323A33312030303A30303A303000"},
      {"date-taken", "1999/12/32", "code 18"},
      {"date-taken", "10:20", "code 51"},
      {"orient", "6", "1:0006"},
      {"orient", "7x", "code 25"},
      {"orient", "", "code 25"},
      {"gps-lat-ref", "north", "2:4E00"},
      {"gps-alt-ref", "x", "code 25"},
  });
  EXPECT_EQ(encode("image-id", id).substr(0, 5), "33:61");
  EXPECT_EQ(encode("artist", std::string(1999, 'a')).substr(0, 7), "2000:61");
}

TEST(EncodeField, Comments) {
  cs_set_name(library_settings.local_charset, "UTF-8");
  const std::string long_text(1995, 'a');
  check({{"comment", "", "8:4153434949000000"}, {"xp-title", "", "0:"}});
  EXPECT_EQ(encode("comment", long_text).substr(0, 23), "1999:415343494900000061");
  library_settings.unicode_comment = true;
  EXPECT_NE(errors_of([&] { EXPECT_EQ(encode("comment", long_text).substr(0, 9), "1998:554E"); }),
            "");
  library_settings.unicode_comment = false;
}

TEST(EncodeField, EveryRowTakesItsNamesAndNoTextOverrunsTheArea) {
  const std::string texts[] = {"", "-", "1e99", "\\", "[", "\"", "=", std::string(2000, '1')};
  testing::internal::CaptureStderr();
  for (std::uint16_t row = 0; row < field_def_count; ++row) {
    const FieldDef& def = field_table_defs[row];
    EncodedValue output;
    std::uint32_t count = 0;
    const auto code_of = [&](std::string_view text) {
      return exif_encode_field(row, {}, text, output, count, {});
    };
    if (!def.editable) {
      EXPECT_EQ(code_of("1"), ErrorCode::edit_not_permitted);
      continue;
    }
    for (auto* entry = def.value_map; entry && entry->nickname; ++entry) {
      EXPECT_EQ(code_of(entry->nickname), ErrorCode::ok) << def.nickname << entry->nickname;
    }
    for (auto* entry = def.value_map_bytes; entry && entry->nickname; ++entry) {
      EXPECT_EQ(code_of(entry->nickname), ErrorCode::ok) << def.nickname << entry->nickname;
    }
    for (const std::string& text : texts) {
      const bool ends_the_program = def.data_type == DataType::string && text.size() == 2000;
      if (ends_the_program || code_of(text) != ErrorCode::ok) {
        continue;
      }
      EXPECT_LE(encoded_size(def, count), encoded_limit);
    }
  }
  testing::internal::GetCapturedStderr();
}

}  // namespace
}  // namespace tagmend::test
