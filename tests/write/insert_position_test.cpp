// Where new fields go among the entries of a file.
#include "write/insert_position.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tagmend {
namespace {

/// An entry of a table: only what the search looks at.
struct Place {
  IfdKind kind;
  std::uint16_t level;
  std::uint32_t tag;
  std::uint32_t parent;
};

constexpr Place ifd0(std::uint32_t tag) { return {IfdKind::camera, 0, tag, root_main}; }
constexpr Place exif(std::uint32_t tag) { return {IfdKind::image, 1, tag, tag_exif_ifd}; }
constexpr Place interop(std::uint32_t tag) { return {IfdKind::interop, 2, tag, tag_interop_ifd}; }
constexpr Place gps(std::uint32_t tag) { return {IfdKind::gps, 1, tag, tag_gps_ifd}; }
constexpr Place note(std::uint32_t tag) { return {IfdKind::nikon3, 2, tag, tag_maker_note}; }
constexpr Place preview(std::uint32_t tag) {
  return {IfdKind::nikon_thumbnail, 3, tag, tag_nikon_thumbnail};
}
constexpr Place ifd1(std::uint32_t tag) { return {IfdKind::thumbnail, 0, tag, root_main}; }

struct Case {
  const char* name;
  std::vector<Place> table;
  IfdKind kind;
  std::uint32_t tag;
  int position;
  std::uint16_t level;
  bool new_ifd;
};

TEST(InsertPosition, KeepsTagsInOrderAndNestedIfdsWhole) {
  const std::vector<Place> photo = {ifd0(0x010F),    ifd0(0x0132), exif(0x829A),    note(0x0001),
                                    preview(0x0103), exif(0x9290), interop(0x0001), gps(0x0000),
                                    gps(0x0002),     ifd1(0x0103), ifd1(0x0201)};
  const std::vector<Case> cases = {
      {"between two of its IFD", photo, IfdKind::camera, 0x0112, 0, 0, false},
      {"before all", photo, IfdKind::camera, 0x0100, before_all, 0, false},
      {"behind the last of IFD0, in front of what is nested", photo, IfdKind::camera, 0x9C9B, 1, 0,
       false},
      {"behind a nested maker note and its preview", photo, IfdKind::image, 0x9286, 4, 1, false},
      {"in front of a maker note", photo, IfdKind::image, 0x9003, 2, 1, false},
      {"behind an entry with a nested IFD behind it", photo, IfdKind::image, 0xA430, 5, 1, false},
      {"first of its nested IFD", photo, IfdKind::image, 0x8000, 1, 1, false},
      {"first of IFD1 stays behind all that is nested in IFD0", photo, IfdKind::thumbnail, 0x0100,
       8, 0, false},
      {"a pointer's place in front of a later entry of IFD0",
       {ifd0(0x010F), exif(0x829A), interop(0x0001), ifd0(0x9C9B)},
       IfdKind::gps,
       0x0002,
       2,
       1,
       true},
      {"a new GPS IFD behind the last entry of IFD0 below its pointer",
       {ifd0(0x010F), exif(0x829A)},
       IfdKind::gps,
       0x0002,
       0,
       1,
       true},
      {"a new EXIF IFD never in front of IFD0's first entry",
       {ifd0(0x9C9B)},
       IfdKind::image,
       0x829A,
       0,
       1,
       true},
      {"a new EXIF IFD in front of what was nested in the one before",
       {ifd0(0x010F), gps(0x0000), interop(0x0001), ifd0(0x9C9B)},
       IfdKind::image,
       0x829A,
       1,
       1,
       true},
      {"a new IFD1 at the end",
       {ifd0(0x010F), exif(0x829A)},
       IfdKind::thumbnail,
       0x0103,
       1,
       0,
       true},
      {"no place for an IFD that nothing leads to",
       {ifd0(0x010F)},
       IfdKind::interop,
       0x0001,
       nowhere,
       0,
       true},
  };
  const auto image = std::make_unique<ImageFile>();
  for (const Case& test : cases) {
    SCOPED_TRACE(test.name);
    reset_image_file(*image);
    for (const Place& place : test.table) {
      FieldEntry entry;
      entry.kind = place.kind;
      entry.level = place.level;
      entry.tag = place.tag;
      entry.ifd.parent = place.parent;
      entry.index = static_cast<std::uint16_t>(image->field_count);
      ASSERT_EQ(append_field(*image, entry), ErrorCode::ok);
    }
    const InsertPosition found = find_insert_position(test.kind, test.tag, *image);
    EXPECT_EQ(found.position, test.position);
    EXPECT_EQ(found.level, test.level);
    EXPECT_EQ(found.new_ifd, test.new_ifd);
  }
}

}  // namespace
}  // namespace tagmend
