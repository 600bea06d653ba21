#include "dictionary/ifd_kind.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

TEST(IfdKind, NamesKeepTheirBlanks) {
  const struct {
    IfdKind kind;
    const char* name;
  } cases[] = {
      {IfdKind::camera, "Camera   "},
      {IfdKind::image, "Image    "},
      {IfdKind::interop, "InterOp  "},
      {IfdKind::tiff_image, "TIFF Image "},
      {IfdKind::unknown, "Unknown  "},
      {IfdKind::thumbnail, "Thumbnail"},
      {IfdKind::olympus3, "Maker Note (Olympus Type 3)"},
      {IfdKind::sub_image_4, "TIFF Image 1-4"},
      {IfdKind::sub_image_5, "TIFF Image 1-5"},
      {IfdKind::sub_image_8, "TIFF Image 1-8"},
      {IfdKind::ricoh_custom, "Ricoh Custom Fields"},
  };
  for (const auto& [kind, name] : cases) {
    EXPECT_STREQ(ifd_kind_names[static_cast<std::size_t>(kind)], name);
  }
}

TEST(IfdKind, ParentTags) {
  const struct {
    IfdKind kind;
    std::uint16_t first_row;  ///< what ifd_parent_tag gives
    std::uint16_t by_kind;    ///< what the array holds
  } cases[] = {
      {IfdKind::camera, 0xFFFF, 0xFFFF},
      {IfdKind::thumbnail, 0xFFFF, 0xFFFF},
      {IfdKind::tiff_image_3, 0xFFFF, 0xFFFF},
      {IfdKind::tiff_image, 0xEEEE, 0xEEEE},
      {IfdKind::camera_embedded, 0xDDDD, 0xDDDD},
      {IfdKind::image, 0x8769, 0x8769},
      {IfdKind::interop, 0xA005, 0xA005},
      {IfdKind::gps, 0x8825, 0x8825},
      {IfdKind::sub_image_0, 0x014A, 0x014A},
      {IfdKind::sub_image_8, 0x014A, 0x014A},
      {IfdKind::nikon_thumbnail, 0x0011, 0x0011},
      {IfdKind::ricoh_info, 0x2001, 0x2001},
      {IfdKind::nikon3, 0x927C, 0x927C},
      {IfdKind::casio, 0x927C, 0x927C},
      {IfdKind::canon_s100, 0xFFFF, 0},
      {IfdKind::canon_raw, 0xFFFF, 0},
      {IfdKind::unknown, 0xFFFF, 0},
  };
  for (const auto& [kind, first_row, by_kind] : cases) {
    SCOPED_TRACE(static_cast<int>(kind));
    EXPECT_EQ(ifd_parent_tag(kind), first_row);
    EXPECT_EQ(parent_tag_by_kind[static_cast<std::size_t>(kind)], by_kind);
  }
}

TEST(IfdKind, Resolution) {
  const struct {
    std::uint32_t pointer_tag, position, layout;
    IfdKind kind;
  } cases[] = {
      {root_main, 0, 0, IfdKind::camera},
      {root_main, 1, 11, IfdKind::thumbnail},  // any layout
      {root_main, 2, 0, IfdKind::tiff_image_2},
      {root_main, 4, 0, IfdKind::unknown},
      {root_eps, 1, 0, IfdKind::tiff_image_1},
      {tag_exif_ifd, 0, 28, IfdKind::image},
      {tag_exif_ifd, 1, 0, IfdKind::unknown},
      {tag_sub_ifd, 4, 0, IfdKind::sub_image_4},
      {tag_sub_ifd, 5, 0, IfdKind::sub_image_5},
      {tag_sub_ifd, 7, 0, IfdKind::sub_image_7},
      {tag_sub_ifd, 9, 0, IfdKind::unknown},
      {tag_maker_note, 0, 12, IfdKind::olympus3},
      {tag_maker_note, 0, 11, IfdKind::olympus2},
      {tag_maker_note, 0, 8, IfdKind::olympus1},
      {tag_maker_note, 0, 17, IfdKind::casio},
      {tag_maker_note, 0, 18, IfdKind::minolta},
      {tag_maker_note, 0, 26, IfdKind::nikon3},
      {tag_maker_note, 0, 28, IfdKind::nikon2},
      {tag_maker_note, 0, 29, IfdKind::nikon1},
      {tag_maker_note, 0, 20, IfdKind::unknown},
      {tag_maker_note, 0, 0, IfdKind::unknown},
      {tag_ricoh_info, 0, 33, IfdKind::ricoh_info},
      {tag_ricoh_info, 0, 1, IfdKind::unknown},
      {0, 99, 0, IfdKind::unknown},
  };
  for (const auto& [pointer_tag, position, layout, kind] : cases) {
    EXPECT_EQ(resolve_ifd_kind(pointer_tag, position, layout), kind)
        << std::hex << pointer_tag << ' ' << position << ' ' << layout;
  }
}

}  // namespace
}  // namespace tagmend
