#include "dictionary/field_def.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tagmend::test {
namespace {

const FieldDef& row(int index) { return field_table_defs[static_cast<std::size_t>(index)]; }

// One row from every table at least. The other columns stand in the field reference, which is
// compared with the table.
TEST(FieldDef, TagsAreThoseOfTheirStandardOrMaker) {
  using enum IfdKind;
  const struct {
    const char* nickname;
    IfdKind kind;
    std::uint32_t tag;
  } rows[] = {
      {"unknown", unknown, 0xFFFF},
      {"iop-index", interop, 0x0001},
      {"image-type", camera, 0x00FE},
      {"trans-func", camera, 0x012D},
      {"ref-bw", camera, 0x0214},
      {"comment-old", camera, 0x9286},
      {"comment", image, 0x9286},
      {"file-src", image, 0xA300},
      {"th-if-offset", thumbnail, 0x0201},
      {"th-ref-bw", thumbnail, 0x0214},
      {"gps-date", gps, 0x001D},
      {"tf-sample-pix", tiff_image, 0x0115},
      {"cn-exp-mode", canon, 0x00140001},
      {"cn-sensor-cleaning", canon, 0x000D000F},
      {"cs-digi-zoom", casio, 0x000A},
      {"eps-0f00", epson, 0x0F00},
      {"mns2-0003-39", minolta, 0x00390003},
      {"mn-0006", minolta, 0x0106},
      {"n1-0020", nikon1, 0x0009},
      {"n2-saturation", nikon2, 0x0094},
      {"n3-flash-comp", nikon3, 0x0012},
      {"ol-data-dump", olympus1, 0x0F00},
      {"olc2500l-0206", olympus3, 0x0206},
      {"ole-1031", olympus2, 0x1031},
      {"pn-spot-mode", panasonic, 0x000F},
      {"px-lens-id", pentax, 0x003F},
      {"ro-1002", ricoh, 0x1002},
      {"ri-0005", ricoh_info, 0x0004},
      {"crw-focal-len-used", canon_raw, 0x000F152E},
      {"rc-value5", ricoh_custom, 0xF5020005},
  };
  for (const auto& expected : rows) {
    SCOPED_TRACE(expected.nickname);
    const int index = find_field(expected.nickname);
    ASSERT_NE(index, not_found);
    EXPECT_STREQ(row(index).nickname, expected.nickname);
    EXPECT_EQ(row(index).ifd_kind, expected.kind);
    EXPECT_EQ(row(index).tag, expected.tag);
    EXPECT_EQ(find_field_by_tag(expected.kind, expected.tag, true), index);
  }
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
      {"mns1-flashfired", "mns1-flashFired"},
      {"", nullptr},
      {"exp-tim", nullptr},
      {"exp\rtime", nullptr},  // letters alone fold
      {"end-table*", nullptr},
      {"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx*", nullptr},
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
}  // namespace tagmend::test
