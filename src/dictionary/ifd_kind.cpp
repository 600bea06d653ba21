#include "dictionary/ifd_kind.h"

#include <iterator>

namespace tagmend {

constexpr std::array<const char*, ifd_kind_count> ifd_kind_names = {
    "Camera   ",
    "Camera (Embedded)",
    "Image    ",
    "Thumbnail",
    "Thumbnail (Embedded)",
    "InterOp  ",
    "Maker Note (Olympus Type 1)",
    "Maker Note (Olympus Type 2)",
    "Maker Note (Nikon Type 1)",
    "Maker Note (Nikon Type 2)",
    "Maker Note (Casio)",
    "Maker Note (Canon)",
    "Maker Note (Canon PowerShot S100)",
    "Maker Note (Canon EOS D30)",
    "Maker Note (Olympus Type 3)",
    "Maker Note (FujiFilm)",
    "GPS",
    "Maker Note (Minolta)",
    "Maker Note (Nikon Type 3)",
    "TIFF Image ",
    "TIFF Image 1",
    "TIFF Image 2",
    "TIFF Image 3",
    "TIFF Image 1-0",
    "TIFF Image 1-1",
    "TIFF Image 1-2",
    "TIFF Image 1-3",
    "TIFF Image 1-4",
    "Maker Note (Epson)",
    "Maker Note (Pentax)",
    "Canon Raw",
    "Maker Note (Panasonic)",
    "TIFF Image 1-5",
    "TIFF Image 1-6",
    "Nikon Thumbnail",
    "Maker Note (Ricoh)",
    "Maker Note (Ricoh Camera Info)",
    "TIFF Image 1-7",
    "TIFF Image 1-8",
    "Ricoh Custom Fields",
    "Unknown  ",
};

namespace {

/// One way in which an IFD gets its kind.
struct KindResolution {
  std::uint32_t pointer_tag;  ///< tag of the pointer field, or a root code; 0 in the end row
  std::uint32_t position;     ///< place of the IFD in its chain or array
  std::uint32_t layout;       ///< maker-note kind (row of the maker table); 0 for any
  IfdKind kind;               ///< the result; unknown in the end row
};

constexpr KindResolution kind_resolution_table[] = {
    {root_main, 0, 0, IfdKind::camera},
    {root_main, 1, 0, IfdKind::thumbnail},
    {root_eps, 0, 0, IfdKind::tiff_image},
    {root_eps, 1, 0, IfdKind::tiff_image_1},
    {root_main, 2, 0, IfdKind::tiff_image_2},
    {root_main, 3, 0, IfdKind::tiff_image_3},
    {tag_exif_ifd, 0, 0, IfdKind::image},
    {tag_interop_ifd, 0, 0, IfdKind::interop},
    {tag_sub_ifd, 0, 0, IfdKind::sub_image_0},
    {tag_sub_ifd, 1, 0, IfdKind::sub_image_1},
    {tag_sub_ifd, 2, 0, IfdKind::sub_image_2},
    {tag_sub_ifd, 3, 0, IfdKind::sub_image_3},
    {tag_sub_ifd, 4, 0, IfdKind::sub_image_4},
    {tag_sub_ifd, 5, 0, IfdKind::sub_image_5},
    {tag_sub_ifd, 6, 0, IfdKind::sub_image_6},
    {tag_sub_ifd, 7, 0, IfdKind::sub_image_7},
    {tag_sub_ifd, 8, 0, IfdKind::sub_image_8},
    {tag_nikon_thumbnail, 0, 0, IfdKind::nikon_thumbnail},
    {tag_gps_ifd, 0, 0, IfdKind::gps},
    {root_embedded, 0, 0, IfdKind::camera_embedded},
    {root_embedded, 1, 0, IfdKind::thumbnail_embedded},
    {tag_maker_note, 0, 13, IfdKind::casio},
    {tag_maker_note, 0, 14, IfdKind::casio},
    {tag_maker_note, 0, 15, IfdKind::casio},
    {tag_maker_note, 0, 12, IfdKind::olympus3},
    {tag_maker_note, 0, 16, IfdKind::casio},
    {tag_maker_note, 0, 17, IfdKind::casio},
    {tag_maker_note, 0, 2, IfdKind::fujifilm},
    {tag_maker_note, 0, 22, IfdKind::minolta},
    {tag_maker_note, 0, 21, IfdKind::minolta},
    {tag_maker_note, 0, 1, IfdKind::canon},
    {tag_maker_note, 0, 7, IfdKind::epson},
    {tag_maker_note, 0, 3, IfdKind::pentax},
    {tag_maker_note, 0, 4, IfdKind::pentax},
    {tag_maker_note, 0, 5, IfdKind::pentax},
    {tag_maker_note, 0, 6, IfdKind::pentax},
    {tag_maker_note, 0, 8, IfdKind::olympus1},
    {tag_maker_note, 0, 9, IfdKind::olympus2},
    {tag_maker_note, 0, 10, IfdKind::olympus2},
    {tag_maker_note, 0, 11, IfdKind::olympus2},
    {tag_maker_note, 0, 19, IfdKind::minolta},
    {tag_maker_note, 0, 18, IfdKind::minolta},
    {tag_maker_note, 0, 27, IfdKind::nikon2},
    {tag_maker_note, 0, 28, IfdKind::nikon2},
    {tag_maker_note, 0, 29, IfdKind::nikon1},
    {tag_maker_note, 0, 30, IfdKind::nikon3},
    {tag_maker_note, 0, 31, IfdKind::nikon3},
    {tag_maker_note, 0, 23, IfdKind::nikon3},
    {tag_maker_note, 0, 24, IfdKind::nikon3},
    {tag_maker_note, 0, 25, IfdKind::nikon3},
    {tag_maker_note, 0, 26, IfdKind::nikon3},
    {tag_maker_note, 0, 32, IfdKind::panasonic},
    {tag_maker_note, 0, 33, IfdKind::ricoh},
    {tag_ricoh_info, 0, 33, IfdKind::ricoh_info},
    {0, 99, 0, IfdKind::unknown},
};

constexpr std::uint16_t low16(std::uint32_t tag) { return static_cast<std::uint16_t>(tag); }

constexpr std::array<std::uint16_t, ifd_kind_count> collect_parent_tags() {
  std::array<std::uint16_t, ifd_kind_count> tags{};
  for (const KindResolution& row : kind_resolution_table) {
    if (row.pointer_tag == 0) {
      break;
    }
    tags[static_cast<std::size_t>(row.kind)] = low16(row.pointer_tag);
  }
  return tags;
}

/// Only the end row has pointer tag 0 or kind unknown: either tells it.
constexpr bool only_the_last_row_ends() {
  for (const KindResolution& row : kind_resolution_table) {
    const bool last = &row == std::end(kind_resolution_table) - 1;
    if ((row.pointer_tag == 0) != last || (row.kind == IfdKind::unknown) != last) {
      return false;
    }
  }
  return true;
}
static_assert(std::size(kind_resolution_table) == 55);
static_assert(only_the_last_row_ends());
static_assert(ifd_kind_names.back() != nullptr);

}  // namespace

constexpr std::array<std::uint16_t, ifd_kind_count> parent_tag_by_kind = collect_parent_tags();

std::uint16_t ifd_parent_tag(IfdKind kind) {
  for (const KindResolution& row : kind_resolution_table) {
    if (row.kind == IfdKind::unknown) {
      break;
    }
    if (row.kind == kind) {
      return low16(row.pointer_tag);
    }
  }
  return 0xFFFF;
}

IfdKind resolve_ifd_kind(std::uint32_t pointer_tag, std::uint32_t position, std::uint32_t layout) {
  IfdKind for_any_layout = IfdKind::unknown;
  for (const KindResolution& row : kind_resolution_table) {
    if (row.kind == IfdKind::unknown) {
      break;
    }
    if (row.pointer_tag != pointer_tag || row.position != position) {
      continue;
    }
    if (row.layout == layout) {
      return row.kind;
    }
    if (row.layout == 0) {
      for_any_layout = row.kind;
    }
  }
  return for_any_layout;
}

}  // namespace tagmend
