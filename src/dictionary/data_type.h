// The data types of stored values: TIFF 6.0 field types 1 to 12 and IFD offsets (13), and one code
// that only dictionary rows use.
#pragma once

#include <array>
#include <cstdint>

namespace tagmend {

enum class DataType : std::uint16_t {
  zero = 0,
  unsigned_byte = 1,
  string = 2,
  unsigned_short = 3,
  unsigned_long = 4,
  unsigned_rational = 5,
  signed_byte = 6,
  undefined = 7,
  signed_short = 8,
  signed_long = 9,
  signed_rational = 10,
  signed_float = 11,
  double_float = 12,
  ifd_offset = 13,
  short_or_long_name = 14,  ///< has a name, is used by no row
  short_or_long = 16,       ///< rows only: the standard allows SHORT or LONG
};

/// Long and three-letter names of codes 0 to 14.
extern const std::array<const char*, 15> type_names;
extern const std::array<const char*, 15> type_short_names;

/// Bytes of one value, for the codes 0 to 15 that a file may hold.
inline constexpr std::array<std::uint8_t, 16> type_sizes = {1, 1, 1, 2, 4, 8, 1, 1,
                                                            2, 4, 8, 4, 8, 4, 1, 1};

/// Whether a stored entry may have this type.
constexpr bool is_stored_type(std::uint16_t type) { return type >= 1 && type <= 15; }

/// Bytes of `count` values of a stored type. No overflow: both factors are 32-bit numbers.
constexpr std::uint64_t value_size(std::uint16_t type, std::uint32_t count) {
  return std::uint64_t{type_sizes[type < type_sizes.size() ? type : 0]} * count;
}

}  // namespace tagmend
