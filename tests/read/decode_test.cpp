#include "read/decode.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "common/context_fixture.h"

namespace tagmend::test {
namespace {

constexpr bool II = false;
constexpr bool MM = true;

/// A value and the text that it is to have.
struct Case {
  std::uint32_t tag;
  std::uint16_t type;
  std::uint32_t count;
  Bytes bytes;
  bool big_endian;
  std::string expected;
};

class DecodeTest : public ContextTest {
 protected:
  /// The text that `decode` gives a value; read errors are left in errors_.
  template <typename Decode>
  std::string shown(const Case& value, Decode decode) {
    Bytes bytes = value.bytes;
    ByteCursor cursor = cursor_over(bytes, 1000, value.big_endian);
    auto room = std::make_unique<std::array<char, 2000>>();
    TextBuffer text(*room);
    decode(StoredValue{cursor, value.tag, value.type, value.count}, text);
    errors_ = cursor.error_count;
    EXPECT_EQ(std::string(room->data()), text.text());
    return room->data();
  }
  std::string shown_of_kind(IfdKind kind, const Case& value) {
    return shown(value, [&](const StoredValue& stored, TextBuffer& text) {
      FieldEntry entry;
      entry.kind = kind;
      entry.tag = value.tag;
      entry.level = 3;
      entry.seq = 7;
      entry.ifd.id = 11;
      decode_by_kind(stored, entry, text, context_);
    });
  }
  void expect_of_kind(IfdKind kind, const std::vector<Case>& cases) {
    for (const Case& value : cases) {
      EXPECT_EQ(shown_of_kind(kind, value), value.expected)
          << "kind " << static_cast<int>(kind) << ", tag " << std::hex << value.tag;
      EXPECT_EQ(errors_, 0U) << value.expected;
    }
  }

  std::uint32_t errors_ = 0;
};

TEST_F(DecodeTest, BasicByStoredType) {
  const Case cases[] = {
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
  for (const Case& value : cases) {
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
  const std::pair<Case, std::string> cases[] = {
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
    const Case value{tag, 3, 0xFFFFFFFF, Bytes(9), MM, ""};
    errors_of([&, kind = kind] { shown_of_kind(kind, value); });
    EXPECT_LE(errors_, 24U);
  }
}

TEST_F(DecodeTest, ValueMap) {
  const auto mapped = [&](const char* nickname, const Case& value, std::uint32_t layout) {
    const FieldDef& def = field_table_defs[static_cast<std::size_t>(find_field(nickname))];
    return shown(value, [&](const StoredValue& stored, TextBuffer& text) {
      decode_value_map(stored, def, layout, text);
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
  const Case short_value{0x02, 5, 3, rationals({51, 1, 30}), MM, ""};
  errors_of([&] { EXPECT_EQ(shown_of_kind(IfdKind::gps, short_value), "51 -0 01"); });
  EXPECT_EQ(errors_, 3U);
}

TEST_F(DecodeTest, MakersWithFewRules) {
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

TEST_F(DecodeTest, OlympusAndNikonType2) {
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

TEST_F(DecodeTest, CanonSettingsBecomeFields) {
  const auto fields_of = [&](const Case& value, IfdKind kind = IfdKind::canon) {
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
  EXPECT_STREQ(flash.text.data(), "External Internal FpSyncUsed RearCurtainSync FpSyncEnabled ");
  EXPECT_EQ(flash.tag, 0x1D0001U);
  EXPECT_EQ(flash.value_pos, 1058U);
  EXPECT_STREQ(flash.name.data(), "Flash");
  fields_of({0x01, 3, 30, Bytes(60), MM, ""});
  EXPECT_STREQ(image_->fields[21].text.data(), "None");

  image_->field_count = 199;
  EXPECT_EQ(shown_of_kind(IfdKind::canon, {0x01, 3, 3, hex("0006 0001 0000"), MM, ""}), "6 1 0");
  EXPECT_EQ(image_->field_count, 200U) << "a full table ends it";
}

TEST_F(DecodeTest, CanonCustomFunctions) {
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

TEST_F(DecodeTest, MinoltaElements) {
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
    EXPECT_STREQ(entry.text.data(), row.expected) << row.place;
  }
}

TEST_F(DecodeTest, MinoltaNumbersDependOnTheCamera) {
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

TEST_F(DecodeTest, CanonRaw) {
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
    const FieldDef& def = field_table_defs[static_cast<std::size_t>(find_field(nickname))];
    const Case value{def.tag, static_cast<std::uint16_t>(def.data_type), def.count, bytes, MM, ""};
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
