// IFD kinds: which IFD or group of fields a field lives in, and how an IFD met in a file gets its
// kind from the pointer that leads to it.
#pragma once

#include <array>
#include <cstdint>

namespace tagmend {

/// Codes stay what they are: a new kind comes last.
enum class IfdKind : std::uint16_t {
  camera = 0,  ///< IFD0, the primary image
  camera_embedded = 1,
  image = 2,      ///< the EXIF IFD
  thumbnail = 3,  ///< IFD1
  thumbnail_embedded = 4,
  interop = 5,
  olympus1 = 6,
  olympus2 = 7,
  nikon1 = 8,
  nikon2 = 9,
  casio = 10,
  canon = 11,
  canon_s100 = 12,
  canon_d30 = 13,
  olympus3 = 14,
  fujifilm = 15,
  gps = 16,
  minolta = 17,
  nikon3 = 18,
  tiff_image = 19,
  tiff_image_1 = 20,
  tiff_image_2 = 21,
  tiff_image_3 = 22,
  sub_image_0 = 23,
  sub_image_1 = 24,
  sub_image_2 = 25,
  sub_image_3 = 26,
  sub_image_4 = 27,
  epson = 28,
  pentax = 29,
  canon_raw = 30,
  panasonic = 31,
  sub_image_5 = 32,
  sub_image_6 = 33,
  nikon_thumbnail = 34,
  ricoh = 35,
  ricoh_info = 36,
  sub_image_7 = 37,
  sub_image_8 = 38,
  ricoh_custom = 39,
  unknown = 40,
};
inline constexpr std::size_t ifd_kind_count = 41;

/// Display names by code; trailing blanks are part of them.
extern const std::array<const char*, ifd_kind_count> ifd_kind_names;

/// Root codes: they stand in place of a pointer tag for chains that no field points at.
inline constexpr std::uint32_t root_main = 0xFFFFFFFF;      ///< a file's own EXIF or TIFF chain
inline constexpr std::uint32_t root_eps = 0xEEEEEEEE;       ///< the TIFF data of an EPS file
inline constexpr std::uint32_t root_embedded = 0xDDDDDDDD;  ///< EXIF data inside an IPTC block

/// Pointer tags.
inline constexpr std::uint32_t tag_sub_ifd = 0x014A;
inline constexpr std::uint32_t tag_exif_ifd = 0x8769;
inline constexpr std::uint32_t tag_gps_ifd = 0x8825;
inline constexpr std::uint32_t tag_maker_note = 0x927C;
inline constexpr std::uint32_t tag_interop_ifd = 0xA005;
inline constexpr std::uint32_t tag_nikon_thumbnail = 0x0011;
inline constexpr std::uint32_t tag_ricoh_info = 0x2001;

/// Low 16 bits of the pointer tag that leads to IFDs of a kind, by code; 0 for kinds without one.
/// The last row of the resolution table for a kind decides.
extern const std::array<std::uint16_t, ifd_kind_count> parent_tag_by_kind;

/// Low 16 bits of the pointer tag of the first resolution row for a kind; 0xFFFF for none.
std::uint16_t ifd_parent_tag(IfdKind kind);

/// The kind of an IFD reached through `pointer_tag` at `position` in a file of maker-note kind
/// `layout`: the exact row, else the last row for any layout, else unknown.
IfdKind resolve_ifd_kind(std::uint32_t pointer_tag, std::uint32_t position, std::uint32_t layout);

}  // namespace tagmend
