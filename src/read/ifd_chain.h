// What the reader of IFDs and the reader of their values share: the chain in work and one of its
// entries.
#pragma once

#include <array>
#include <cstdint>

#include "dictionary/field_def.h"
#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/tagged_memory.h"

namespace tagmend {

/// Bytes of an entry's value field: a longer value lies elsewhere, and its offset in the field.
inline constexpr std::uint32_t inline_value_length = 4;

/// The chain of IFDs in work, and the buffers for what lies outside the one that the reader holds.
/// A buffer serves one entry after the other.
struct IfdChain {
  ByteCursor cursor;                ///< stands on the next entry
  std::uint32_t parent = 0;         ///< as recorded: a pointer tag or a root code
  std::uint16_t level = 0;          ///< nesting depth
  std::uint32_t seq = 0;            ///< sequence code of the IFD in work
  IfdKind kind = IfdKind::unknown;  ///< of the IFD in work
  IfdPlace place;                   ///< of the IFD in work
  std::uint32_t format_errors = 0;
  bool ended = false;  ///< the last IFD of the chain has been read
  WorkBuffer ifd_buffer;
  WorkBuffer value_buffer;
  WorkBuffer array_buffer;
  WorkBuffer maker_note_buffer;
};

/// An entry as it is stored.
struct StoredEntry {
  std::uint32_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::uint16_t def = 0;              ///< row of the field dictionary
  std::array<std::uint8_t, 4> raw{};  ///< the value field
  ByteCursor value;                   ///< stands on the value field, later on the value

  [[nodiscard]] const FieldDef& row() const { return field_table_defs[def]; }
  [[nodiscard]] std::uint64_t size() const { return value_size(type, count); }
};

/// cursor_seek_offset to an offset with the bytes behind it that are needed, as far as the file has
/// them: what begins near the end of the buffer is read again in one piece.
ErrorCode place_cursor(ByteCursor& cursor, std::uint32_t offset, std::uint64_t needed,
                       WorkBuffer& buffer);

/// Decodes the value of an ordinary entry and appends its field to the table: ok, too_many_fields
/// or a code of cursor_seek_offset.
ErrorCode read_value(IfdChain& chain, StoredEntry& stored, ReadContext& context);

/// Trace lines of entries that point at one IFD and at an array of IFDs.
void trace_pointer(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset);
void trace_array(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset);

}  // namespace tagmend
