// Maker notes: which camera maker's layout applies, where its IFD starts, from where its offsets
// count and in which byte order it is stored.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "read/image_file.h"
#include "support/byte_cursor.h"

namespace tagmend {

enum class MakerStructure : std::uint16_t {
  value = 0,        ///< not an IFD: an ordinary field
  shared_base = 1,  ///< offsets count from the base of the enclosing EXIF data
  own_base = 2,     ///< offsets count from the maker note's start
  tiff_header = 3,  ///< a TIFF header of its own stands behind the prefix
};

enum class MakerByteOrder : std::uint16_t { as_file = 0, big_endian = 1, little_endian = 2 };

/// One layout; its row number is the maker-note kind.
struct MakerDef {
  std::uint32_t kind;
  bool is_ifd;
  MakerStructure structure;
  MakerByteOrder byte_order;
  std::uint16_t header_length;          ///< of the prefix, behind which IFD or TIFF header stand
  std::array<std::uint8_t, 12> prefix;  ///< header_length of them count
  std::string_view make;
  std::string_view model;  ///< empty matches any model
};

inline constexpr std::uint32_t maker_generic = 0;
inline constexpr std::uint32_t maker_undetermined = any_layout;

/// The layouts and the end row.
inline constexpr std::size_t maker_table_size = 36;
extern const std::array<MakerDef, maker_table_size> maker_table;

/// What stands in front of the IFD that the Ricoh camera information pointer leads to.
inline constexpr std::string_view ricoh_info_header("[Ricoh Camera Info]\0", 20);

/// The layout of a maker-note kind; the generic one for a number out of range.
const MakerDef& maker_def(std::uint32_t kind);

/// Maker-note kind for a make (absent when the file has none) and a model: 0 when no row matches.
std::uint32_t find_maker(std::optional<std::string_view> make, std::string_view model);

/// Checks the first bytes of the maker note at `offset` against the layout and moves the choice
/// where they belong to another. False when they fit none and the choice stays. The cursor is a
/// copy of the entry's.
bool recognise_maker_note(ByteCursor cursor, std::uint32_t offset, WorkBuffer& alternate,
                          std::uint32_t& kind);

/// The offset behind a header that stands at `offset`. Past 32 bits it is the largest one, which
/// cannot be reached either.
std::uint32_t offset_behind(std::uint32_t offset, std::size_t header_length);

/// Sets the cursor's base and byte order for the maker note at `offset` and returns the offset of
/// its IFD from the new base.
std::uint32_t enter_maker_note(ByteCursor& cursor, std::uint32_t offset, ImageFile& image);

}  // namespace tagmend
