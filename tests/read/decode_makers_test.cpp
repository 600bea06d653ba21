#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "common/bytes.h"
#include "common/field_rows.h"
#include "common/printed_errors.h"
#include "read/decode.h"
#include "read/decode_fixture.h"

namespace tagmend::test {
namespace {

using DecodeMakersTest = DecodeTest;

TEST_F(DecodeMakersTest, MakersWithFewRules) {
  expect_of_kind(IfdKind::nikon1,
                 {{0x0A, 5, 1, hex("00000019 00000000"), MM, "0.0x"},
                  {0x08, 5, 2, hex("00000001 00000003 00000001 00000000"), MM, "0.33 0.00"},
                  {0x08, 5, 1, hex("FFFFFFFF 00000001"), MM, "4294967295.00"},
                  {0x08, 10, 2, hex("FFFFFFFF 00000003 00000007 00000000"), MM, "-0.33 0.00"}});
  expect_of_kind(IfdKind::casio, {{0x11, 4, 1, hex("FFFF0000"), II, "65535 (0xffff)"},
                                  {0x06, 4, 1, hex("00000007"), MM, "7"}});
  expect_of_kind(IfdKind::nikon3, {{0x0E, 7, 4, hex("06 010C00"), MM, "0.50"},
                                   {0x0E, 7, 4, hex("F9 010C00"), MM, "-0.50"},
                                   {0x0E, 7, 4, hex("7F 010C00"), MM, "10.58"},
                                   {0x0E, 7, 4, hex("80 010C00"), MM, "-10.58"}});
  expect_of_kind(IfdKind::epson, {{0x0209, 7, 4, bytes_of("PHOTO PC"), II, "PHOT"},
                                  {0x0F00, 7, 2, hex("0102"), II, "0102"}});
  expect_of_kind(IfdKind::panasonic, {{0x23, 8, 1, hex("FFFF"), MM, "-0.33"},
                                      {0x24, 8, 1, hex("0300"), II, "1.00"},
                                      {0x25, 8, 1, hex("FFFF"), MM, "-1"}});
  for (const IfdKind kind : {IfdKind::canon, IfdKind::canon_s100, IfdKind::canon_d30}) {
    expect_of_kind(kind, {{0x08, 4, 1, hex("0000271A"), MM, "001-0010"},
                          {0x08, 4, 1, hex("FFFFFFFF"), MM, "429496-7295"},
                          {0x0C, 4, 1, hex("0700AB0F"), II, "0FAB00007"}});
  }
  errors_of([&] {
    EXPECT_EQ(shown_of_kind(IfdKind::panasonic, {0x24, 8, 1, {}, MM, ""}), "-2843.67");
  });
}

TEST_F(DecodeMakersTest, OlympusAndNikonType2) {
  const auto mode = [](std::uint32_t m, std::uint32_t n, std::uint32_t d) {
    return joined({big32(m), big32(n), big32(d)});
  };
  for (const IfdKind kind : {IfdKind::olympus1, IfdKind::olympus3}) {
    expect_of_kind(kind, {{0x0200, 4, 3, mode(0, 5, 1), MM, "Normal, 5, Left to Right"},
                          {0x0200, 4, 3, mode(1, 5, 2), MM, "Unknown, 5, Right to Left"},
                          {0x0200, 4, 3, mode(2, 0, 3), MM, "Fast, 0, Bottom to Top"},
                          {0x0200, 4, 3, mode(3, 1, 4), MM, "Panorama, 1, Top to Bottom"},
                          {0x0200, 4, 3, mode(4, 1, 5), MM, "4, 1, 5"},
                          {0x0200, 4, 3, mode(~0U, ~0U, 0), MM, "-1, -1, 0"},
                          {0x0209, 7, 6, bytes_of("OLYMP C"), MM, "OLYMP "},
                          {0x0204, 5, 1, hex("00000003 00000002"), MM, "1.50"}});
  }
  expect_of_kind(IfdKind::olympus2, {{0x0200, 4, 3, mode(0, 5, 1), MM, "0 5 1"}});
  expect_of_kind(IfdKind::nikon2,
                 {
                     {0x02, 3, 2, hex("0000 0064"), MM, "100"},
                     {0x02, 3, 2, hex("0100 6400"), II, "1,100"},
                     {0x85, 5, 1, hex("00000019 0000000A"), MM, "2.5"},
                     {0x85, 5, 1, hex("00000019 00000000"), MM, "0.0"},
                     {0x86, 5, 1, hex("00000014 0000000A"), MM, "2.0x"},
                     {0x86, 5, 1, hex("00000014 00000000"), MM, "0.0"},
                     {0x88, 7, 4, hex("0000 0000 0000 0000"), MM, "Centre"},
                     {0x88, 7, 4, hex("0000 0003 0000 0000"), MM, "Left"},
                     {0x88, 7, 4, hex("0000 0005 0000 0000"), MM, "Unknown value #2 5"},
                     {0x88, 7, 4, hex("0100 0000 008F 0002"), MM, "Top"},
                     {0x88, 7, 4, hex("0000 0000 008F 0002"), MM, "Centre"},
                     {0x88, 7, 4, hex("0004 0000 8F00 0200"), II, "Right"},
                     {0x88, 7, 4, hex("0101 0000 008F 0002"), MM, "Unknown value #1 257"},
                     {0x88, 7, 4, hex("0001 0002 0003 0004"), MM, "1,2,3,4"},
                     {0x0A, 5, 1, hex("00000003 00000002"), MM, "1.50"},
                 });
}

TEST_F(DecodeMakersTest, CanonSettingsBecomeFields) {
  const auto fields_of = [&](const DecodeCase& value, IfdKind kind = IfdKind::canon) {
    image_->field_count = 0;
    shown_of_kind(kind, value);
    return listed();
  };
  EXPECT_EQ(fields_of({0x04, 3, 8, hex("1000 0000 0000 0000 0000 0000 0000 0200"), II, ""}),
            "cn-white-bal 3 [Cloudy] 1014\n");
  EXPECT_EQ(fields_of({0x01, 3, 3, hex("0006 0001 0000"), MM, ""}),
            "cn-macro-mode 3 [Macro] 1002\ncn-self-timer 3 [Off] 1004\n");
  EXPECT_EQ(fields_of({0x01, 3, 3, hex("0006 0001 0000"), MM, ""}, IfdKind::canon_d30), "");
  EXPECT_EQ(fields_of({0x01, 3, 1, hex("0006"), MM, ""}), "") << "one value only";

  // All elements are zero but the last, 29: flash details.
  Bytes array(58);
  put(array, 58, 0x6890, 2, true);
  EXPECT_EQ(shown_of_kind(IfdKind::canon, {0x01, 3, 30, array, MM, ""}).substr(0, 7), "0 0 0 0");
  ASSERT_EQ(image_->field_count, 22U);
  const FieldEntry& flash = image_->fields[21];
  EXPECT_EQ(flash.text.view(), "External Internal FpSyncUsed RearCurtainSync FpSyncEnabled ");
  EXPECT_EQ(flash.tag, 0x1D0001U);
  EXPECT_EQ(flash.value_pos, 1058U);
  EXPECT_STREQ(flash.name.data(), "Flash");
  fields_of({0x01, 3, 30, Bytes(60), MM, ""});
  EXPECT_EQ(image_->fields[21].text.view(), "None");

  image_->field_count = 199;
  EXPECT_EQ(shown_of_kind(IfdKind::canon, {0x01, 3, 3, hex("0006 0001 0000"), MM, ""}), "6 1 0");
  EXPECT_EQ(image_->field_count, 200U) << "a full table ends it";
}

TEST_F(DecodeMakersTest, CanonCustomFunctions) {
  // The numbers 0 (the array's own row) and 0x40 (no row) leave no field, and nothing is misread
  // behind them. A setting without entry in the map is shown as a number.
  const Bytes array = hex("000C 0001 0101 4001 0203 0D01 0109");
  EXPECT_EQ(shown_of_kind(IfdKind::canon, {0x0F, 3, 7, array, MM, ""}),
            "12 1 257 16385 515 3329 265");
  shown_of_kind(IfdKind::canon_s100, {0x0F, 3, 2, hex("0400 0101"), II, ""});
  EXPECT_EQ(shown_of_kind(IfdKind::canon, {0x0F, 3, 1, hex("0101"), II, ""}), "257");
  EXPECT_EQ(listed(),
            "cn-noise-reduct 1 [On] 1006\n"
            "cn-ae-lock 1 [AE+release/AE+AF] 1010\n"
            "cn-sensor-cleaning 1 [Enabled] 1012\n"
            "cn-noise-reduct 1 [9] 1014\n");
  EXPECT_EQ(image_->fields[1].tag, 0x0002000FU);
  EXPECT_STREQ(image_->fields[1].name.data(), "AE Lock Button");
}

/// A settings array of the file's byte order, all zero but for some places.
Bytes minolta_array(std::initializer_list<std::pair<std::size_t, std::uint32_t>> places) {
  Bytes array(std::size_t{57} * 4);
  for (const auto& [place, number] : places) {
    put(array, (place - 1) * 4, number, 4, true);
  }
  return array;
}

TEST_F(DecodeMakersTest, MinoltaElements) {
  const struct {
    std::size_t place;
    std::uint32_t number;
    const char* expected;
  } cases[] = {
      {2, 1, "Aperture Priority"},
      {9, 48, "5.00"},
      {10, 56, "1.00"},
      {11, 16, "1.00"},
      {14, 7, "0.33"},
      {16, 0xFFFFFFFF, "-1"},
      {17, 0xFFFFFFFF, "0"},
      {18, 12, "12"},
      {19, 1843, "7.199"},
      {20, 1500, "1.500"},
      {22, 0x07D20507, "2002/05/07"},
      {23, 0x00090503, "9:05:03"},
      {24, 40, "4.0"},
      {24, 0xFFFFFFFF, "0.0"},  // overflows
      {29, 256, "2.00"},
      {30, 128, "1.41"},
      {32, 0, "-3"},
      {33, 5, "2"},
      {36, 3, "-1.00"},
      {42, 3, "0"},
      {45, 20, "-3.50"},
      // Single precision: 2^24 + 1 becomes 2^24 before the formula.
      {9, 16777217, "2097151.00"},
      {20, 16777217, "16777.216"},
  };
  const Bytes plain = minolta_array({});
  for (const auto& row : cases) {
    image_->field_count = 0;
    const Bytes array = minolta_array({{row.place, row.number}});
    shown_of_kind(IfdKind::minolta, {0x03, 7, 57 * 4, array, MM, ""});
    ASSERT_EQ(image_->field_count, 56U);  // all but the number 52
    const FieldEntry& entry = image_->fields[row.place - 1];
    EXPECT_EQ(entry.tag, row.place << 16 | 3);
    EXPECT_EQ(entry.type, 4);
    EXPECT_EQ(entry.value_pos, 1000 + (row.place - 1) * 4);
    EXPECT_EQ(entry.text.view(), row.expected) << row.place;
  }
}

TEST_F(DecodeMakersTest, MinoltaNumbersDependOnTheCamera) {
  const Bytes array = minolta_array({{51, 2}, {52, 1}, {53, 1}});
  // The 7Hi has an element 52; with other cameras that place holds element 53.
  const std::pair<std::uint32_t, const char*> cameras[] = {
      {19,
       "mns1-dec-setting 4 [Saturation] 1200\n"
       "mns1-embedded-profile 4 [Yes] 1204\n"
       "mns1-data-imprint 4 [yyy/mm/dd] 1208\n"},
      {22,
       "mns1-dec-setting 4 [Saturation] 1200\n"
       "mns1-data-imprint 4 [yyy/mm/dd] 1204\n"
       "mns1-0003-36 4 [1] 1208\n"}};
  for (const auto& [camera, last_fields] : cameras) {
    image_->field_count = 0;
    image_->maker_note_kind = camera;
    shown_of_kind(IfdKind::minolta, {0x01, 7, 53 * 4 + 3, array, MM, ""});
    EXPECT_EQ(image_->field_count, 52U);  // element 1 has no row
    EXPECT_TRUE(listed().ends_with(last_fields)) << listed();
  }
  image_->field_count = 0;
  EXPECT_EQ(shown_of_kind(IfdKind::minolta, {0x01, 7, 3, hex("010203"), MM, ""}), "010203");
  EXPECT_EQ(shown_of_kind(IfdKind::minolta, {0x40, 4, 1, hex("00000007"), MM, ""}), "7");
  EXPECT_EQ(image_->field_count, 0U);
}

TEST_F(DecodeMakersTest, CanonRaw) {
  const struct {
    const char* nickname;
    Bytes bytes;
    const char* expected;
  } cases[] = {
      {"crw-iso", hex("00C0"), "200"},     {"crw-shutter", hex("FF30"), "Bulb"},
      {"crw-shutter", hex("003F"), "0.3"}, {"crw-shutter", hex("0001"), "1.0"},
      {"crw-shutter", hex("FFC0"), "4.0"}, {"crw-shutter", hex("7FFF"), "1/2147483647"},
      {"crw-shutter", hex("8000"), "0.0"},  // overflows
  };
  const auto raw = [&](const char* nickname, const Bytes& bytes) {
    const FieldDef& def = field_named(nickname);
    const DecodeCase value{def.tag, static_cast<std::uint16_t>(def.data_type), def.count, bytes, MM,
                           ""};
    return shown(value, [&](const StoredValue& stored, TextBuffer& text) {
      decode_canon_raw(stored, def, 0, text);
    });
  };
  for (const auto& row : cases) {
    EXPECT_EQ(raw(row.nickname, row.bytes), row.expected) << row.nickname;
  }
  errors_of([&] { EXPECT_EQ(raw("crw-shutter", hex("00")), raw("crw-shutter", hex("DEAD"))); });
  library_settings.raw_output = true;
  EXPECT_EQ(raw("crw-iso", hex("00C0")), "192");
  EXPECT_EQ(raw("crw-shutter", hex("FF30")), "-208");
}

}  // namespace
}  // namespace tagmend::test
