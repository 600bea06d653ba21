#include "dictionary/field_def.h"

#include <gtest/gtest.h>

#include <set>
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
      {"trans-func", K::camera, 0x012D, unsigned_short, 768, "Transfer Function", true, false},
      {"ref-bw", K::camera, 0x0214, unsigned_rational, 6, "Reference Black&White", true, false},
      {"comment-old", K::camera, 0x9286, string, 0, "User Comment (EXIF 2.0)", true, false},
      {"comment", K::image, 0x9286, undefined, 0, "User Comment", true, false},
      {"file-src", K::image, 0xA300, undefined, 1, "File Source", true, true},
      {"th-if-offset", K::thumbnail, 0x0201, unsigned_long, 1, "Thumb Jpeg IF Offset", true, false},
      {"th-ref-bw", K::thumbnail, 0x0214, unsigned_rational, 6, "Thumb Reference Black/White", true,
       false},
      {"gps-date", K::gps, 0x001D, string, 11, "Datestamp", true, false},
      {"tf-sample-pix", K::tiff_image, 0x0115, unsigned_short, 1, "TIFF Sample per Pixel", false,
       false},
      {"cn-exp-mode", K::canon, 0x00140001, unsigned_short, 1, "Exposure Moded", false, true},
      {"cn-sensor-cleaning", K::canon, 0x000D000F, unsigned_short, 1, "Sensor Cleaning", true,
       true},
      {"cs-digi-zoom", K::casio, 0x000A, unsigned_long, 1, "Digital Zoom", true, true},
      {"eps-0f00", K::epson, 0x0F00, undefined, 0, "Field 0x0f00", true, false},
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
      {"end-table*", nullptr},
      {"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx*", nullptr},
      {"gps-offset*", nullptr},
  };
  for (const auto& [name, found] : cases) {
    SCOPED_TRACE(name);
    const int index = find_field(name);
    ASSERT_EQ(index != not_found, found != nullptr);
    if (found) {
      EXPECT_STREQ(row(index).nickname, found);
    }
  }
}

TEST(FieldDef, GoesOnFromAGivenRow) {
  EXPECT_EQ(row(find_field("n3-0091")).tag, 0x0091U);
  const int first = find_field("px-zoom");
  EXPECT_EQ(row(first).tag, 0x000AU);
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

TEST(FieldDef, TablesStandInTheirOrder) {
  std::vector<IfdKind> order;
  for (std::size_t i = 0; i + 1 < field_def_count; ++i) {
    const IfdKind kind = field_table_defs[i].ifd_kind;
    if (order.empty() || order.back() != kind) {
      order.push_back(kind);
    }
  }
  using enum IfdKind;
  EXPECT_EQ(order,
            (std::vector{unknown, interop, camera,     image,      thumbnail, gps,
                         canon,   casio,   epson,      fujifilm,   minolta,   nikon1,
                         nikon2,  nikon3,  olympus1,   olympus3,   olympus2,  panasonic,
                         pentax,  ricoh,   ricoh_info, tiff_image, canon_raw, ricoh_custom}));
}

TEST(FieldDef, NicknamesThatFindNoRowOrAnother) {
  std::set<std::string> hidden;
  std::set<std::string> dates;
  for (std::size_t i = 0; i < field_def_count; ++i) {
    const FieldDef& def = field_table_defs[i];
    if (find_field(def.nickname) != static_cast<int>(i)) {
      hidden.insert(def.nickname);
    }
    if (def.is_date) {
      dates.insert(def.nickname);
    }
  }
  // Rows of offsets have no name to the user; two names stand in front of two rows each.
  EXPECT_EQ(hidden, (std::set<std::string>{"exif-offset", "gps-offset", "inter-offset", "sub-ifd",
                                           "n3-thumb-offset", "ro-2001", "n3-0091", "px-zoom",
                                           "end-table"}));
  EXPECT_EQ(dates, (std::set<std::string>{"date-mod", "date-taken", "date-digi", "th-date-mod",
                                          "tf-date-mod"}));
}

}  // namespace
}  // namespace tagmend
