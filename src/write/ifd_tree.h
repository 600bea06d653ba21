// The shape of the IFDs in the flat field table: which entries make up an IFD, a chain of IFDs, and
// the chains nested in them. All ranges are table indices; a nested chain lies where its pointer
// entry falls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "read/image_file.h"

namespace tagmend {

/// Entries begin to end - 1 of the table.
struct TableRange {
  std::size_t begin;
  std::size_t end;
};

/// The pointer that leads to the IFD that usually holds this one: for IFDs without entries of their
/// own.
std::uint32_t usual_parent(std::uint32_t pointer);

/// The chain of IFDs at `level` that begins with entry `begin`, with all that is nested in it. IFDs
/// nested in one that lost all its own entries are a chain of their own.
TableRange chain_range(std::span<const FieldEntry> table, std::size_t begin, std::uint16_t level);

/// The first IFD of a chain, with all that is nested in it.
TableRange first_ifd(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level);

/// The IFD at a place, counted from 0, of a chain whose places before it are passed; an empty range
/// when no entries are left there and an IFD of a later place is next. What an IFD is hangs on its
/// place.
TableRange ifd_at_place(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level,
                        std::uint32_t place);

/// How many places a chain has, up to that of the last IFD with entries.
std::uint32_t count_places(std::span<const FieldEntry> table, TableRange chain,
                           std::uint16_t level);

/// How many entries an IFD gets: its own, and a pointer for each chain nested in it.
std::uint32_t count_entries(std::span<const FieldEntry> table, TableRange ifd, std::uint16_t level);

/// The first entry of a chain's own IFDs; null when only entries nested deeper are left.
const FieldEntry* first_own_entry(std::span<const FieldEntry> table, TableRange chain,
                                  std::uint16_t level);

/// Tag of the pointer that leads to the IFDs of a chain at `level`.
std::uint32_t pointer_tag(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level);

}  // namespace tagmend
