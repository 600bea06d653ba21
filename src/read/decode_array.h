// Maker-note fields that hold an array of settings: every element that has a row in the dictionary
// becomes a field of its own, in the place of the array.
#pragma once

#include <cstdint>

#include "read/decode.h"

namespace tagmend {

/// Shows one element, reading it from the cursor; false when the maker has no form for it (nothing
/// has been read then).
using ElementDecoder = bool (*)(std::uint32_t element, std::uint32_t array_tag, ByteCursor& cursor,
                                TextBuffer& text);

/// How a maker lays out its arrays.
struct ArrayLayout {
  std::uint32_t tag;            ///< of the array field
  DataType type;                ///< of one element: unsigned_short or unsigned_long
  std::uint32_t length;         ///< elements from the cursor's position on, numbered from 1
  std::uint32_t unused_number;  ///< is passed over in the numbering; 0 for none
  ElementDecoder decode;        ///< for elements without a value map
  const char* trace_format;
};

inline constexpr char trace_element_blanks[] =
    "IFD Entry: %s %-15s tag=0x%8x, level=%d, seq=%8x, data_type=%s, count=%d, "
    "file_offset=%d(0%o)\n";
inline constexpr char trace_element_zeros[] =
    "IFD Entry: %s %-15s tag=0x%08x, level=%d, seq=%8x, data_type=%s, count=%d, "
    "file_offset=%d(0%o)\n";

/// Appends the elements of the array of field `array`, on whose first numbered element the cursor
/// stands. Stops when the table is full.
void append_array_elements(ByteCursor& cursor, const FieldEntry& array, const ArrayLayout& layout,
                           ReadContext& context);

/// A field that is one element of `array`: row, type, count 1, place and name; without text.
/// Traced.
FieldEntry make_element(const FieldEntry& array, std::uint32_t row, DataType type,
                        std::uint32_t value_pos, const char* trace_format);

/// Appends an element whose text stands; false when the table is full.
bool append_element(FieldEntry& element, ImageFile& image);

}  // namespace tagmend
