// Stored values into display text. The cursor stands on the value's first byte.
#pragma once

#include <cstdint>

#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/text_buffer.h"

namespace tagmend {

/// A value to be shown.
struct StoredValue {
  ByteCursor& cursor;
  std::uint32_t tag;    ///< of the field
  std::uint16_t type;   ///< data type code as stored
  std::uint32_t count;  ///< as stored
};

/// By stored type alone.
void decode_basic(const StoredValue& value, TextBuffer& text);

/// As decode_basic, with fractions as decimals.
void decode_generic(const StoredValue& value, TextBuffer& text);

/// Through the value map of a dictionary row, for the file's maker-note kind.
void decode_value_map(const StoredValue& value, const FieldDef& def, std::uint32_t maker_note_kind,
                      TextBuffer& text);

/// TIFF and Exif 2.2 fields.
void decode_standard(const StoredValue& value, TextBuffer& text, ReadContext& context);

/// GPS fields (Exif 2.2, section 4.6.6).
void decode_gps(const StoredValue& value, TextBuffer& text);

/// By the decoder that belongs to the IFD kind of `entry`. Array fields (Canon 1, 4 and 15, Minolta
/// 1 and 3) append an entry for each known element to the table, with the place of `entry`.
void decode_by_kind(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                    ReadContext& context);

/// Canon Raw fields: `def` is the row, the cursor stands on the value in the meta data block.
void decode_canon_raw(const StoredValue& value, const FieldDef& def, std::uint32_t maker_note_kind,
                      TextBuffer& text);

}  // namespace tagmend
