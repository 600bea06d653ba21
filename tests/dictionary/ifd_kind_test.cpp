#include "dictionary/ifd_kind.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

TEST(IfdKind, Resolution) {
  const struct {
    std::uint32_t pointer_tag, position, layout;
    IfdKind kind;
  } cases[] = {
      {root_main, 1, 11, IfdKind::thumbnail},  // any layout
      {root_main, 2, 0, IfdKind::tiff_image_2},  {root_main, 4, 0, IfdKind::unknown},
      {root_eps, 1, 0, IfdKind::tiff_image_1},   {tag_exif_ifd, 1, 0, IfdKind::unknown},
      {tag_sub_ifd, 5, 0, IfdKind::sub_image_5}, {tag_sub_ifd, 7, 0, IfdKind::sub_image_7},
      {tag_sub_ifd, 9, 0, IfdKind::unknown},     {tag_maker_note, 0, 20, IfdKind::unknown},
      {tag_maker_note, 0, 0, IfdKind::unknown},  {tag_ricoh_info, 0, 33, IfdKind::ricoh_info},
      {tag_ricoh_info, 0, 1, IfdKind::unknown},  {0, 99, 0, IfdKind::unknown},
  };
  for (const auto& [pointer_tag, position, layout, kind] : cases) {
    EXPECT_EQ(resolve_ifd_kind(pointer_tag, position, layout), kind)
        << std::hex << pointer_tag << ' ' << position << ' ' << layout;
  }
}

}  // namespace
}  // namespace tagmend
