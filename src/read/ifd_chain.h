// What the reader of IFDs and the reader of their values share: the chain in work and one of its
// entries.
#pragma once

#include <array>
#include <cstdint>

#include "dictionary/field_def.h"
#include "read/image_file.h"
#include "support/byte_cursor.h"
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
  IfdPlace place;                   ///< of the IFD in work; `around` is that of the chain
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

}  // namespace tagmend
