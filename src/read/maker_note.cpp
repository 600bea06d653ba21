#include "read/maker_note.h"

#include <algorithm>
#include <limits>

#include "read/tiff_header.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// Rows of the maker table that the recognition names: those that find_maker gives for a maker, and
/// those that the first bytes of the note tell apart.
constexpr std::uint32_t maker_canon = 1;
constexpr std::uint32_t maker_pentax = 3;
constexpr std::array<std::uint32_t, 4> pentax_layouts = {3, 4, 5, 6};
constexpr std::uint32_t nikon_first = 23;
constexpr std::uint32_t nikon_last = 28;
constexpr std::array<std::uint32_t, 3> nikon_layouts = {29, 30, 31};

/// Canon's note has no prefix: what has fewer entries than any camera writes is none of its IFDs.
constexpr std::uint16_t canon_min_entries = 6;

bool begins_with(const ByteCursor& cursor, std::span<const std::uint8_t> bytes) {
  const std::span<const std::uint8_t> rest = cursor.rest();
  return rest.size() >= bytes.size() && std::equal(bytes.begin(), bytes.end(), rest.begin());
}

bool has_prefix(const ByteCursor& cursor, const MakerDef& def) {
  return begins_with(cursor, std::span(def.prefix).first(def.header_length));
}

/// The first of the layouts whose prefix the note begins with.
template <std::size_t Count>
std::optional<std::uint32_t> match_layout(const ByteCursor& cursor,
                                          const std::array<std::uint32_t, Count>& layouts) {
  for (const std::uint32_t layout : layouts) {
    if (has_prefix(cursor, maker_def(layout))) {
      return layout;
    }
  }
  return std::nullopt;
}

void recognise_pentax(const ByteCursor& cursor, std::uint32_t& kind) {
  const auto layout = match_layout(cursor, pentax_layouts);
  if (!layout) {
    print_warning(
        "Warning: Unrecognised Pentax Maker Note format. Maker note will not be interpretted\n");
  }
  kind = layout.value_or(maker_generic);
}

void recognise_nikon(const ByteCursor& cursor, std::uint32_t& kind) {
  constexpr std::array<std::uint8_t, 5> name = {'N', 'i', 'k', 'o', 'n'};
  if (const auto layout = match_layout(cursor, nikon_layouts)) {
    kind = *layout;
  } else if (begins_with(cursor, name)) {
    print_warning(
        "Warning: Unrecognised Nikon Maker Note format. Maker note will not be interpretted\n");
    kind = maker_generic;
  }
}

void report_wrong_prefix(const ByteCursor& cursor, const MakerDef& def) {
  std::array<std::uint8_t, 8> first{};
  const std::span<const std::uint8_t> rest = cursor.rest();
  std::copy_n(rest.begin(), std::min(rest.size(), first.size()), first.begin());
  print_warning("Warning: %s Maker Note prefix is incorrect.\n", def.make.data());
  print_output("buf_p=0x%02x %02x %02x %02x %02x %02x %02x %02x\n", first[0], first[1], first[2],
               first[3], first[4], first[5], first[6], first[7]);
}

void set_byte_order(ByteCursor& cursor, MakerByteOrder order) {
  switch (order) {
    case MakerByteOrder::as_file:
      return;
    case MakerByteOrder::big_endian:
      cursor.big_endian = true;
      return;
    case MakerByteOrder::little_endian:
      cursor.big_endian = false;
      return;
  }
  print_error("Internal Error: Unknown Maker Note byte ordering %d\n", static_cast<int>(order));
}

}  // namespace

std::uint32_t find_maker(std::optional<std::string_view> make, std::string_view model) {
  for (const MakerDef& def : std::span(maker_table).first(maker_table.size() - 1)) {
    const bool fits =
        make ? *make == def.make && (def.model.empty() || model == def.model) : model == def.model;
    if (fits) {
      return def.kind;
    }
  }
  return maker_generic;
}

bool recognise_maker_note(ByteCursor cursor, std::uint32_t offset, WorkBuffer& alternate,
                          std::uint32_t& kind) {
  if (cursor_seek_offset(cursor, offset, &alternate) != ErrorCode::ok) {
    cursor.pos = static_cast<std::uint32_t>(cursor.buffer.size());
  }
  const MakerDef& def = maker_def(kind);
  if (kind == maker_pentax) {
    recognise_pentax(cursor, kind);
  } else if (kind == maker_canon) {
    if (cursor_get_u16(cursor) < canon_min_entries) {
      kind = maker_generic;
    }
  } else if (kind >= nikon_first && kind <= nikon_last) {
    recognise_nikon(cursor, kind);
  } else if (def.header_length != 0 && !has_prefix(cursor, def)) {
    report_wrong_prefix(cursor, def);
    return false;
  }
  return true;
}

std::uint32_t offset_behind(std::uint32_t offset, std::size_t header_length) {
  constexpr std::uint64_t largest = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(offset + std::uint64_t{header_length}, largest));
}

std::uint32_t enter_maker_note(ByteCursor& cursor, std::uint32_t offset, ImageFile& image) {
  const MakerDef& def = maker_def(image.maker_note_kind);
  std::uint32_t ifd_offset = offset_behind(offset, def.header_length);
  switch (def.structure) {
    case MakerStructure::own_base:
      cursor.offset_base += offset;
      ifd_offset = def.header_length;
      set_byte_order(cursor, def.byte_order);
      break;
    case MakerStructure::tiff_header:
      cursor.offset_base += ifd_offset;
      ifd_offset = tiff_header_length;
      cursor.big_endian = base_is_big_endian(cursor);
      break;
    case MakerStructure::value:
    case MakerStructure::shared_base:
      set_byte_order(cursor, def.byte_order);
      break;
  }
  image.maker_note_big_endian = cursor.big_endian;
  return ifd_offset;
}

}  // namespace tagmend
