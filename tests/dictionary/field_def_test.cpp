#include "dictionary/field_def.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tagmend {
namespace {

const FieldDef& row(int index) { return field_table_defs[static_cast<std::size_t>(index)]; }

// One row from every table at least, with what a slip in a column would change.
TEST(FieldDef, RowsSayWhatTheirStandardOrMakerSays) {
  using enum DataType;
  using K = IfdKind;
  const struct {
    const char* nickname;
    IfdKind kind;
    std::uint32_t tag;
    DataType type;
    std::uint32_t count;
    const char* description;
    bool editable;
    bool has_map;
  } rows[] = {
      {"unknown", K::unknown, 0xFFFF, undefined, 0, "Unknown Field Tag", false, false},
      {"iop-index", K::interop, 0x0001, string, 4, "Interop. Index", true, false},
      {"image-type", K::camera, 0x00FE, signed_long, 1, "Image Type ", true, false},
      {"main-width", K::camera, 0x0100, short_or_long, 1, "Main Image Width", true, false},
      {"strip-off", K::camera, 0x0111, short_or_long, 0, "Strip Offsets", false, false},
      {"trans-func", K::camera, 0x012D, unsigned_short, 768, "Transfer Function", true, false},
      {"ref-bw", K::camera, 0x0214, unsigned_rational, 6, "Reference Black&White", true, false},
      {"comment-old", K::camera, 0x9286, string, 0, "User Comment (EXIF 2.0)", true, false},
      {"comment", K::image, 0x9286, undefined, 0, "User Comment", true, false},
      {"exp-time", K::image, 0x829A, unsigned_rational, 1, "Exposure Time (sec)", true, false},
      {"shutter", K::image, 0x9201, signed_rational, 1, "Shutter Speed (sec)", true, false},
      {"maker-note", K::image, 0x927C, undefined, 0, "Maker Note", false, false},
      {"file-src", K::image, 0xA300, undefined, 1, "File Source", true, true},
      {"image-id", K::image, 0xA420, string, 33, "Unique Image Id", true, false},
      {"th-if-offset", K::thumbnail, 0x0201, unsigned_long, 1, "Thumb Jpeg IF Offset", true, false},
      {"th-ref-bw", K::thumbnail, 0x0214, unsigned_rational, 6, "Thumb Reference Black/White", true,
       false},
      {"gps-lat-ref", K::gps, 0x0001, string, 2, "Latitude Reference", true, true},
      {"gps-date", K::gps, 0x001D, string, 11, "Datestamp", true, false},
      {"tf-sample-pix", K::tiff_image, 0x0115, unsigned_short, 1, "TIFF Sample per Pixel", false,
       false},
      {"cn-macro-mode", K::canon, 0x00010001, unsigned_short, 1, "Macro Mode", false, true},
      {"cn-exp-mode", K::canon, 0x00140001, unsigned_short, 1, "Exposure Moded", false, true},
      {"cn-sensor-cleaning", K::canon, 0x000D000F, unsigned_short, 1, "Sensor Cleaning", true,
       true},
      {"cs-digi-zoom", K::casio, 0x000A, unsigned_long, 1, "Digital Zoom", true, true},
      {"eps-0f00", K::epson, 0x0F00, undefined, 0, "Field 0x0f00", true, false},
      {"fu-flash-str", K::fujifilm, 0x1011, signed_rational, 1, "Flash Strength Comp", true, false},
      {"mns1-flashFired", K::minolta, 0x00150001, unsigned_long, 1, "Flash Fired", false, true},
      {"mns2-0003-39", K::minolta, 0x00390003, unsigned_long, 1, "Field 0x0003-39", false, false},
      {"mn-0006", K::minolta, 0x0106, short_or_long, 1, "Field 0x0106", true, false},
      {"n1-0020", K::nikon1, 0x0009, string, 20, "Field 0x0020", true, false},
      {"n2-saturation", K::nikon2, 0x0094, signed_short, 1, "Saturation Adjustment", true, true},
      {"n3-flash-comp", K::nikon3, 0x0012, undefined, 4, "Flash Compensation", true, true},
      {"ol-data-dump", K::olympus1, 0x0F00, unsigned_long, 30, "Data Dump", true, false},
      {"olc2500l-0206", K::olympus3, 0x0206, signed_short, 6, "Field 0x0206", true, false},
      {"ole-1031", K::olympus2, 0x1031, unsigned_long, 8, "Field 0x1031", true, false},
      {"pn-spot-mode", K::panasonic, 0x000F, unsigned_byte, 2, "Spot Mode", true, true},
      {"px-lens-id", K::pentax, 0x003F, unsigned_byte, 2, "Lens Id", true, true},
      {"px-0047", K::pentax, 0x0047, signed_byte, 0, "Field 0x0047", true, false},
      {"ro-1002", K::ricoh, 0x1002, unsigned_long, 0, "Field 0x1002", true, false},
      {"ri-0005", K::ricoh_info, 0x0004, string, 0, "Field 0x0005", true, false},
      {"crw-focal-len-used", K::canon_raw, 0x000F152E, signed_short, 1, "Focal Length Used", false,
       false},
      {"rc-value5", K::ricoh_custom, 0xF5020005, string, 32, "Custom Field 5 Value", false, false},
  };
  for (const auto& expected : rows) {
    SCOPED_TRACE(expected.nickname);
    const int index = find_field(expected.nickname);
    ASSERT_NE(index, not_found);
    const FieldDef& def = row(index);
    EXPECT_STREQ(def.nickname, expected.nickname);
    EXPECT_EQ(def.ifd_kind, expected.kind);
    EXPECT_EQ(def.tag, expected.tag);
    EXPECT_EQ(def.data_type, expected.type);
    EXPECT_EQ(def.count, expected.count);
    EXPECT_STREQ(def.description, expected.description);
    EXPECT_EQ(def.editable, expected.editable);
    EXPECT_EQ(def.has_map(), expected.has_map);
    EXPECT_EQ(find_field_by_tag(def.ifd_kind, def.tag, true), index);
  }
  EXPECT_STREQ(field_table_defs.back().description, "**** End of of Table ****");
}

TEST(FieldDef, FindsByNickname) {
  const struct {
    const char* name;
    const char* found;  ///< null when nothing is
  } cases[] = {
      {"DATE-TAKEN", "date-taken"},
      {"date", nullptr},
      {"date*", "date-mod"},
      {"GPS-*", "gps-ver"},
      {"*", "unknown"},
      {"**", nullptr},
      {"unknown", "unknown"},
      {"mns1-flashfired", "mns1-flashFired"},
      {"", nullptr},
      {"exp-tim", nullptr},
      {"exp-time ", nullptr},
      {"end-table", nullptr},
      {"end-table*", nullptr},
      {"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx*", nullptr},
      // Offset rows have no name to the user.
      {"exif-offset", nullptr},
      {"gps-offset", nullptr},
      {"gps-offset*", nullptr},
      {"inter-offset", nullptr},
      {"sub-ifd", nullptr},
      {"n3-thumb-offset", nullptr},
      {"ro-2001", nullptr},
  };
  for (const auto& [name, found] : cases) {
    SCOPED_TRACE(name);
    const int index = find_field(name);
    ASSERT_EQ(index != not_found, found != nullptr);
    if (found) {
      EXPECT_STREQ(row(index).nickname, found);
    }
  }
  EXPECT_EQ(row(find_field("n3-0091")).tag, 0x0091U);
  EXPECT_EQ(row(find_field("px-zoom")).tag, 0x000AU);
}

TEST(FieldDef, GoesOnFromAGivenRow) {
  const int first = find_field("px-zoom");
  const int second = find_field_from("px-zoom", static_cast<std::uint32_t>(first) + 1);
  ASSERT_NE(second, not_found);
  EXPECT_EQ(row(second).tag, 0x001EU);
  EXPECT_EQ(find_field_from("px-zoom", static_cast<std::uint32_t>(second) + 1), not_found);
  constexpr std::uint32_t end_row = field_def_count - 1;
  EXPECT_EQ(find_field_from("*", end_row - 1), static_cast<int>(end_row) - 1);
  for (const std::uint32_t start : {end_row, end_row + 1, 0xFFFFFFFFU}) {
    EXPECT_EQ(find_field_from("*", start), not_found) << start;
  }
}

TEST(FieldDef, FindsByTag) {
  const struct {
    IfdKind kind;
    std::uint32_t tag;
    const char* strict;  ///< nickname of the row found
    const char* lenient;
  } cases[] = {
      {IfdKind::image, 0x829A, "exp-time", "exp-time"},
      {IfdKind::camera, 0x0132, "date-mod", "date-mod"},
      {IfdKind::thumbnail, 0x0132, "th-date-mod", "th-date-mod"},
      {IfdKind::sub_image_3, 0x0100, "unknown", "tf-width"},
      {IfdKind::camera_embedded, 0x829A, "unknown", "exp-time"},
      {IfdKind::canon_d30, 0x000F, "unknown", "ri-000f"},
      {IfdKind::camera, 0x00010001, "unknown", "cn-macro-mode"},
      {IfdKind::nikon3, 0x0097, "n3-0091", "n3-0091"},
      {IfdKind::pentax, 0x001E, "px-zoom", "px-zoom"},
      {IfdKind::image, 0xBEEF, "unknown", "unknown"},
      {IfdKind::image, 0xFFFF, "unknown", "unknown"},
      {IfdKind::camera, 0xFFFFFFFF, "unknown", "unknown"},
  };
  for (const auto& [kind, tag, strict, lenient] : cases) {
    SCOPED_TRACE(tag);
    EXPECT_STREQ(field_table_defs[find_field_by_tag(kind, tag, true)].nickname, strict);
    EXPECT_STREQ(field_table_defs[find_field_by_tag(kind, tag, false)].nickname, lenient);
  }
}

TEST(FieldDef, KindsStandTogetherInTheirOrder) {
  std::vector<std::pair<int, int>> runs;
  for (std::size_t i = 0; i + 1 < field_table_defs.size(); ++i) {
    const int kind = static_cast<int>(field_table_defs[i].ifd_kind);
    if (runs.empty() || runs.back().first != kind) {
      EXPECT_EQ(first_field_of_kind(field_table_defs[i].ifd_kind), static_cast<int>(i));
      runs.emplace_back(kind, 0);
    }
    ++runs.back().second;
  }
  const std::vector<std::pair<int, int>> expected = {
      {40, 1}, {5, 5},   {0, 50},   {2, 58}, {3, 29},  {16, 31}, {11, 67}, {10, 29},
      {28, 2}, {15, 18}, {17, 135}, {8, 11}, {9, 18},  {18, 45}, {6, 11},  {14, 52},
      {7, 53}, {31, 25}, {29, 82},  {35, 8}, {36, 15}, {19, 30}, {30, 48}, {39, 10}};
  EXPECT_EQ(runs, expected);
  EXPECT_EQ(first_field_of_kind(IfdKind::canon_s100), not_found);
}

TEST(FieldDef, NicknamesAreUniqueButForTwo) {
  std::map<std::string, int> uses;
  for (const FieldDef& def : field_table_defs) {
    ++uses[def.nickname];
  }
  std::vector<std::string> doubled;
  for (const auto& [nickname, count] : uses) {
    if (count > 1) {
      doubled.push_back(nickname);
    }
  }
  EXPECT_EQ(doubled, (std::vector<std::string>{"n3-0091", "px-zoom"}));
}

TEST(FieldDef, DatesAreEnteredAsDates) {
  for (const char* name : {"date-mod", "date-taken", "date-digi", "th-date-mod", "tf-date-mod"}) {
    EXPECT_TRUE(row(find_field(name)).is_date) << name;
  }
  EXPECT_FALSE(row(find_field("gps-date")).is_date);
}

}  // namespace
}  // namespace tagmend
