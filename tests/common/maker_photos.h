// A photograph for each maker-note layout, its note filled with every field that the dictionary has
// for the layout, so that each form of value is met.
#pragma once

#include <algorithm>
#include <vector>

#include "common/image_builder.h"
#include "dictionary/field_def.h"
#include "read/maker_note.h"

namespace tagmend::test {

/// A value of the row's type. Arrays get room for every element that has a row of its own.
inline Entry value_for(const FieldDef& row) {
  Entry entry;
  entry.tag = static_cast<std::uint16_t>(row.tag);
  const bool element = row.tag > 0xFFFF;
  const auto type = static_cast<std::uint16_t>(row.data_type);
  entry.type = row.data_type == DataType::short_or_long ? std::uint16_t{kShort} : type;
  const std::uint32_t count = element ? 40 : row.count == 0 ? 6 : std::min(row.count, 60U);
  const Bytes values = noise(count * (layout::type_size(entry.type) == 8 ? 2 : 1), row.tag);
  for (const std::uint8_t value : values) {
    entry.numbers.push_back(entry.type == kAscii ? 'a' + value % 26U : value % 9U);
  }
  if (entry.type == kAscii) entry.numbers.back() = 0;
  return entry;
}

/// The note of a layout, with at most `limit` entries.
inline Ifd note_for(const MakerDef& maker, std::size_t limit) {
  Ifd note;
  note.header.assign(maker.prefix.begin(), maker.prefix.begin() + maker.header_length);
  note.base = maker.structure == MakerStructure::own_base      ? Base::start
              : maker.structure == MakerStructure::tiff_header ? Base::inner
                                                               : Base::parent;
  note.own_order = maker.byte_order != MakerByteOrder::as_file;
  note.big_endian = maker.byte_order == MakerByteOrder::big_endian;
  const IfdKind kind = resolve_ifd_kind(tag_maker_note, 0, maker.kind);
  for (const FieldDef& row : field_table_defs) {
    const auto type = static_cast<std::uint16_t>(row.data_type);
    if (row.ifd_kind != kind || row.is_offset || row.tag == end_tag || type == 0) continue;
    if (note.entries.size() == limit) break;
    set(note, value_for(row));
  }
  return note;
}

inline std::vector<Ifd> maker_chain(const MakerDef& maker, std::size_t limit = 190) {
  return {ifd_of(
      {text(0x010F, maker.make), text(0x0110, *maker.model ? maker.model : "Any"),
       pointer(0x8769, {octets(0x9000, kUndefined, "0220"), maker_note(note_for(maker, limit))})})};
}

/// The layouts whose notes are IFDs.
inline std::vector<MakerDef> makers_with_ifd() {
  std::vector<MakerDef> makers;
  for (const MakerDef& maker : maker_table) {
    if (maker.is_ifd) makers.push_back(maker);
  }
  return makers;
}

}  // namespace tagmend::test
