#include "read/decode.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

#include "common/field_rows.h"
#include "common/printed_errors.h"
#include "common/tiff_builder.h"
#include "read/decode_fixture.h"

namespace tagmend::test {
namespace {

TEST_F(DecodeTest, BasicByStoredType) {
  const DecodeCase cases[] = {
      {0, 7, 2, hex("01 AB"), II, "01ab"},
      {0, 1, 3, hex("00 0F F0"), II, "000ff0"},
      {0, 6, 1, hex("80"), II, "80"},
      {0, 2, 6, bytes_of(std::string_view("abc\0d\0", 6)), II, "abc"},
      {0, 2, 3, bytes_of("abcdef"), II, "abc"},
      {0, 3, 3, hex("0001 FFFF 0100"), MM, "1 65535 256"},
      {0, 3, 2, hex("0100 0001"), II, "1 256"},
      {0, 4, 2, hex("FFFFFFFF 7FFFFFFF"), MM, "-1 2147483647"},
      {0, 8, 2, hex("FFFF 8000"), MM, "-1 -32768"},
      {0, 9, 2, hex("FFFFFFFE 80000000"), MM, "-2 -2147483648"},
      {0, 5, 2, hex("00000001 000000FA FFFFFFFF 00000000"), MM, "1/250 4294967295/0"},
      {0, 10, 1, hex("FFFFFFFF FEFFFFFF"), II, "-1/-2"},
      {0, 11, 1, hex("00000000"), II, "<not yet implemented>"},
      {0, 12, 1, hex("0000000000000000"), II, "<not yet implemented>"},
      {0, 0, 1, hex("00"), II, "Unrecognised data type: 0"},
      {0, 13, 1, hex("00000008"), II, "Unrecognised data type: 13"},
      {0, 3, 0, {}, II, ""},
  };
  for (const DecodeCase& value : cases) {
    EXPECT_EQ(shown(value, decode_basic), value.expected) << "type " << value.type;
    EXPECT_EQ(errors_, 0U);
  }
}

TEST_F(DecodeTest, TextStopsAtItsRoom) {
  const Bytes bytes(5000, 'A');
  EXPECT_EQ(shown({0, 2, 5000, bytes, II, ""}, decode_basic), std::string(1999, 'A'));
  // Two digits a byte, while the text is at most 1996 characters long.
  EXPECT_EQ(shown({0, 7, 5000, bytes, II, ""}, decode_basic).size(), 1998U);
  EXPECT_EQ(shown({0, 3, 2500, bytes, II, ""}, decode_basic).size(), 1999U);
  EXPECT_EQ(errors_, 0U);
  library_settings.exif_charset = {"ISO-8859-1"};
  EXPECT_EQ(shown({0, 2, 3, hex("61 E9 62"), II, ""}, decode_basic), "aéb");
  EXPECT_EQ(shown({0, 2, 5000, bytes, II, ""}, decode_basic), std::string(1999, 'A'));
}

TEST_F(DecodeTest, UnreadableValuesBecomeMarkers) {
  const std::string number = "Error: Attempt to read past end of buffer(3047)\n";
  const std::string u16 = "Error: Attempt to read past end of buffer(505).\n";
  const std::string u32 = "Error: Attempt to read past end of buffer(449).\n";
  const std::string s16 = "Error: Attempt to read past end of buffer (3018)\n";
  const std::pair<DecodeCase, std::string> cases[] = {
      {{0, 3, 2, hex("0001 02"), MM, "1 57005"}, u16},
      {{0, 4, 1, hex("000001"), MM, "-559038801"}, u32},
      {{0, 8, 2, hex("0001"), MM, "1 -8531"}, s16},
      {{0, 5, 1, hex("00000001 0000"), MM, "1/-559038784"}, number},
      {{0, 2, 9, bytes_of("ab"), MM, "ab"}, number},
      {{0, 7, 0xFFFFFFFF, hex("01"), MM, "01"}, number},
  };
  for (const auto& [value, messages] : cases) {
    const auto show = [&, &value = value] {
      EXPECT_EQ(shown(value, decode_basic), value.expected);
    };
    EXPECT_EQ(errors_of(show), messages);
    EXPECT_EQ(errors_, 1U);
  }
  // The largest count ends after eleven failed reads.
  for (const std::uint16_t type : std::to_array<std::uint16_t>({3, 4, 5, 8, 9, 10})) {
    errors_of([&] { shown({0, type, 0xFFFFFFFF, {}, MM, ""}, decode_generic); });
    EXPECT_LE(errors_, 12U);
  }
  // So do those of arrays, which are shown and then taken apart.
  const std::pair<IfdKind, std::uint32_t> arrays[] = {
      {IfdKind::canon, 0x01}, {IfdKind::canon, 0x0F}, {IfdKind::minolta, 0x03}};
  for (const auto& [kind, tag] : arrays) {
    const DecodeCase value{tag, 3, 0xFFFFFFFF, Bytes(9), MM, ""};
    errors_of([&, kind = kind] { shown_of_kind(kind, value); });
    EXPECT_LE(errors_, 24U);
  }
}

TEST_F(DecodeTest, ValueMap) {
  const auto mapped = [&](const char* nickname, const DecodeCase& value, std::uint32_t layout) {
    return shown(value, [&](const StoredValue& stored, TextBuffer& text) {
      decode_value_map(stored, field_named(nickname), layout, text);
    });
  };
  for (const std::uint16_t type : std::to_array<std::uint16_t>({1, 2, 6, 7})) {
    EXPECT_EQ(mapped("file-src", {0, type, 1, hex("03"), MM, ""}, 0), "Digital Still Camera");
  }
  EXPECT_EQ(mapped("file-src", {0, 7, 1, hex("07"), MM, ""}, 0), "7");
  EXPECT_EQ(mapped("main-comp", {0, 3, 1, hex("0600"), II, ""}, 0), "JPEG Compression");
  EXPECT_EQ(mapped("main-comp", {0, 4, 1, hex("FFFFFFFF"), II, ""}, 0), "-1");
  EXPECT_EQ(mapped("main-comp", {0, 9, 1, hex("06000000"), II, ""}, 0), "JPEG Compression");
  EXPECT_EQ(mapped("n2-saturation", {0, 8, 1, hex("FFFE"), MM, ""}, 27), "-2");
  // Entries of one layout: that of the file, or any for 34.
  EXPECT_EQ(mapped("cs-rec-mode", {0, 3, 1, hex("0007"), MM, ""}, 0), "7");
  EXPECT_EQ(mapped("cs-rec-mode", {0, 3, 1, hex("0007"), MM, ""}, 34), "Panorama");
  EXPECT_EQ(mapped("gps-lat-ref", {0, 2, 2, hex("4E 00"), MM, ""}, 0), "North");
  EXPECT_EQ(mapped("gps-lat-ref", {0, 2, 2, hex("6E 00"), MM, ""}, 0), "Unknown value");
  EXPECT_EQ(mapped("pn-spot-mode", {0, 1, 2, hex("1001"), II, ""}, 32), "On");

  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(mapped("gps-lat-ref", {0, 2, 2, hex("4E"), MM, ""}, 0), "Unknown value");
              EXPECT_EQ(mapped("file-src", {0, 5, 1, hex("03"), MM, ""}, 0), "0");
            }),
            "Error: Attempt to skip past end of buffer(2,435), exiting\n"
            "Internal Error: unexpected data type\n");
}

TEST_F(DecodeTest, Standard) {
  const Bytes xp = hex("4100 E900 0000");
  expect_of_kind(IfdKind::image,
                 {
                     {0x0002, 7, 4, bytes_of("0100"), II, "0100"},
                     {0x9000, 7, 4, bytes_of("0220"), II, "0220"},
                     {0xA000, 7, 4, bytes_of("0100"), II, "0100"},
                     {0x00FE, 4, 1, hex("00000000"), MM, "Main "},
                     {0x00FE, 9, 1, hex("00000005"), MM, "Thumbnail Transparency-mask "},
                     {0x00FE, 4, 1, hex("02000000"), II, "Main Multi-page "},
                     {0x011A, 5, 1, hex("000000B4 00000001"), MM, "180"},
                     {0x011B, 5, 1, hex("48000000 00000000"), II, "0"},
                     {0xA215, 5, 1, hex("00000190 00000003"), MM, "133"},
                     {0x829A, 5, 1, hex("00000001 000000FA"), MM, "1/250"},
                     {0x829A, 5, 1, hex("00000001 00000002"), MM, "1/2"},
                     {0x829A, 5, 1, hex("00000002 00000001"), MM, "2.0"},
                     {0x829A, 5, 1, hex("00000006 0000000A"), MM, "0.6"},
                     {0x829A, 5, 1, hex("00000000 0000000A"), MM, "1/0"},
                     {0x829D, 5, 1, hex("0000001C 0000000A"), MM, "2.8"},
                     {0x4747, 1, 6, xp, II, "Aé"},
                     {0x9C9B, 1, 6, xp, MM, "Aé"},
                     {0x9C9C, 1, 6, xp, II, "Aé"},
                     {0x9C9D, 1, 6, xp, II, "Aé"},
                     {0x9C9E, 1, 6, xp, II, "Aé"},
                     {0x9C9F, 1, 2, hex("4100"), MM, "A"},
                     {0x9201, 10, 1, hex("00000007 00000001"), MM, "1/128"},
                     {0x9201, 10, 1, hex("00000000 00000001"), MM, "1/1"},
                     {0x9201, 10, 1, hex("00000006 0000000A"), MM, "1/2"},  // -0.4 rounds to 0
                     {0x9201, 10, 1, hex("00000007 00000002"), MM, "1/8"},  // 2.5 rounds to even
                     {0x9201, 10, 1, hex("FFFFFFFE 00000001"), MM, "4"},
                     {0x9201, 5, 1, hex("FFFFFFFE 00000001"), MM, "4"},
                     {0x9201, 10, 1, hex("7FFFFFFF 00000001"), MM, "1/1073741824"},
                     {0x9201, 10, 1, hex("80000000 00000001"), MM, "2147483647"},
                     {0x9201, 10, 1, hex("00000001 00000000"), MM, "1/1"},
                     {0x9202, 5, 1, hex("00000003 00000001"), MM, "2.8"},
                     {0x9205, 5, 1, hex("00000004 00000001"), MM, "4.0"},
                     {0x9202, 5, 1, hex("FFFFFFFF 00000001"), MM, "0.0"},  // overflows
                     {0x9204, 10, 1, hex("FFFFFFFF 00000003"), MM, "-0.33"},
                     {0x9206, 5, 1, hex("00000019 0000000A"), MM, "2.5"},
                     {0x920A, 5, 1, hex("00000055 0000000A"), MM, "8.50"},
                     {0xA20E, 5, 1, hex("FFFFFFFF 00000002"), MM, "-0.5"},
                     {0xA20F, 5, 1, hex("00000003 00000002"), MM, "1.5"},
                     {0x9286, 2, 3, ascii("hi"), II, "hi"},
                     {0x9286, 7, 12, joined({bytes_of("UNICODE"), hex("00 6100 E900")}), MM, "aé"},
                     {0x9286, 7, 21, bytes_of(std::string_view("ASCII\0\0\0Hello\0World\0\0", 21)),
                      II, "Hello\nWorld"},
                     {0x9286, 7, 10, joined({Bytes(8), bytes_of("ab")}), II, "ab"},
                     {0x9286, 7, 8, ascii("UNICODE"), II, ""},
                     {0x9286, 7, 4, bytes_of("ASCI"), II, ""},
                     {0x83BB, 4, 1, hex("1C020000"), II, "See separate IPTC fields."},
                     {0x8649, 1, 4, hex("3842494D"), II, "Binary data."},
                 });
}

TEST_F(DecodeTest, SecondDisplayFlag) {
  library_settings.display_units = true;
  expect_of_kind(IfdKind::image,
                 {
                     {0x9003, 2, 20, ascii("2004:05:01 10:20:30"), II, "2004/05/01 10:20:30"},
                     {0x9004, 2, 6, ascii("20040"), II, "2004/"},
                     {0x829A, 5, 1, hex("00000001 000000FA"), MM, "1/250 sec"},
                     {0x9201, 10, 1, hex("00000007 00000001"), MM, "1/128 sec"},
                     {0x9201, 10, 1, hex("FFFFFFFF 00000001"), MM, "2 sec"},
                 });
}

TEST_F(DecodeTest, Gps) {
  const auto rationals = [](const Numbers& numbers) {
    return layout::value_bytes(test::rationals(0, numbers), true);
  };
  expect_of_kind(IfdKind::gps,
                 {
                     {0x00, 1, 4, hex("02020000"), II, "2.2.0.0"},
                     {0x02, 5, 3, rationals({51, 1, 30, 1, 0, 1}), MM, "51 30 00"},
                     {0x02, 5, 3, rationals({51, 1, 3050, 100, 0, 1}), MM, "51 30.500"},
                     {0x14, 5, 3, rationals({5, 1, 725, 100, 0, 0}), MM, "05 7.250"},
                     {0x14, 5, 3, rationals({5, 1, 3, 1, 725, 100}), MM, "05 03 7.250"},
                     {0x02, 5, 3, rationals({5, 0, 3, 0, 7, 0}), MM, "00 00 00"},
                     {0x04, 5, 3, rationals({5, 1, 3, 1, 7, 1}), MM, "005 03 07"},
                     {0x04, 5, 3, rationals({151, 1, 3050, 100, 0, 1}), MM, "151 30.50"},
                     {0x16, 5, 3, rationals({15, 1, 725, 100, 0, 1}), MM, "015 07.25"},
                     {0x16, 5, 3, rationals({15, 1, 3, 1, 725, 100}), MM, "015 03 07.25"},
                     {0x07, 5, 3, rationals({9, 1, 30, 1, 50, 10}), MM, " 9:30: 5"},
                     {0x06, 5, 1, rationals({1234, 10}), MM, "123.40"},
                     {0x12, 2, 7, ascii("WGS-84"), MM, "WGS-84"},
                 });
  const DecodeCase short_value{0x02, 5, 3, rationals({51, 1, 30}), MM, ""};
  errors_of([&] { EXPECT_EQ(shown_of_kind(IfdKind::gps, short_value), "51 -0 01"); });
  EXPECT_EQ(errors_, 3U);
}

TEST_F(DecodeTest, EveryKindHasItsDecoder) {
  // Tag 0x011A tells the standard decoder ("1") from the generic one ("1.00").
  for (std::uint16_t kind = 0; kind < ifd_kind_count; ++kind) {
    const bool standard = kind == 0 || kind == 2 || kind == 3 || kind == 5 ||
                          (kind >= 19 && kind <= 27) || kind == 32 || kind == 33 || kind == 37 ||
                          kind == 40;
    EXPECT_EQ(shown_of_kind(IfdKind{kind}, {0x011A, 5, 1, hex("00000001 00000001"), MM, ""}),
              standard ? "1" : "1.00")
        << kind;
  }
}

}  // namespace
}  // namespace tagmend::test
