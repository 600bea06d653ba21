#include "write/ifd_writer.h"

#include <algorithm>
#include <array>

#include "read/maker_note.h"
#include "read/tiff_header.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "write/ifd_tree.h"
#include "write/image_data.h"
#include "write/piece_mover.h"

namespace tagmend {
namespace {

constexpr std::uint32_t entry_size = 12;

/// Room for 100 entries; an IFD that is larger gets a buffer of its own size.
constexpr std::uint32_t usual_ifd_buffer = 2 + 100 * entry_size + 4;

/// All offsets are 32-bit numbers, and even.
constexpr std::int64_t max_offset = 0xFFFFFFFE;

/// Lines that failed checks of a type report.
constexpr int line_entry_type = 666;
constexpr int line_pointer_type = 767;

constexpr auto type_long = static_cast<std::uint16_t>(DataType::unsigned_long);
constexpr auto type_undefined = static_cast<std::uint16_t>(DataType::undefined);

/// One IFD that is being assembled.
struct OpenIfd {
  TaggedBytes memory;
  ByteCursor buffer;                   ///< over `memory`
  std::uint32_t header = 0;            ///< bytes in front of the entry count
  std::uint32_t entries = 0;           ///< how many entries it gets
  bool is_image = false;               ///< its image data moves with it
  std::uint32_t stream_offset_at = 0;  ///< buffer offset of the entry 0x0201; 0 for none
  std::uint32_t stream_length_at = 0;  ///< of the entry 0x0202
  std::int64_t stream_source = 0;      ///< file offset of the JPEG stream in the source
  std::uint32_t stream_length = 0;
  std::array<MovedPieces, piece_pairs.size()> pieces{};
};

/// The slots that the offsets of the IFDs of a chain go to when they form an array.
struct OffsetArray {
  std::int64_t next = 0;  ///< output file offset of the next slot
  bool used = false;
};

ErrorCode write_chain(IfdWriter& writer, TableRange chain, std::uint16_t level,
                      std::uint32_t pointer, OffsetArray array);

// ---- Headers in front of an IFD -----------------------------------------------------------------

std::uint32_t header_size(const ImageFile& image, std::uint32_t pointer) {
  if (pointer == tag_ricoh_info) {
    return ricoh_info_header.size();
  }
  if (pointer != tag_maker_note) {
    return 0;
  }
  const MakerDef& maker = maker_def(image.maker_note_kind);
  const bool inner = maker.structure == MakerStructure::tiff_header;
  return maker.header_length + (inner ? tiff_header_length : 0U);
}

void put_header(const IfdWriter& writer, ByteCursor& buffer, std::uint32_t pointer) {
  if (pointer == tag_ricoh_info) {
    cursor_put_bytes(buffer, bytes_of(ricoh_info_header));
  }
  if (pointer != tag_maker_note) {
    return;
  }
  const MakerDef& maker = maker_def(writer.image.maker_note_kind);
  cursor_put_bytes(buffer, std::span(writer.image.maker_note_prefix).first(maker.header_length));
  if (maker.structure == MakerStructure::tiff_header) {
    put_tiff_header(buffer);
  }
}

// ---- Entries ------------------------------------------------------------------------------------

ErrorCode advance_data_end(IfdWriter& writer, std::uint64_t size) {
  const std::uint64_t end = static_cast<std::uint64_t>(writer.data_end) + size;
  if (end > static_cast<std::uint64_t>(max_offset)) {
    return ErrorCode::exif_too_long;
  }
  writer.data_end = static_cast<std::int64_t>(round_up_even(end));
  return ErrorCode::ok;
}

/// A value set by an edit may be shorter than its count says (a block that fills whole numbers);
/// zeros fill it up.
ErrorCode write_new_value(IfdWriter& writer, const FieldEntry& entry, std::uint64_t size) {
  static constexpr std::array<std::uint8_t, 8> zeros{};
  const auto position = static_cast<std::uint64_t>(writer.base + writer.data_end);
  const auto data = entry.data.first(std::min<std::uint64_t>(size, entry.data.size()));
  const char* name = writer.image.file_name.data();
  const ErrorCode result = write_block_at(writer.output, position, data, name);
  if (result != ErrorCode::ok || data.size() == size) {
    return result;
  }
  return write_block_at(writer.output, position + data.size(),
                        std::span(zeros).first(std::min(size - data.size(), zeros.size())), name);
}

ErrorCode write_long_value(IfdWriter& writer, const FieldEntry& entry, std::uint64_t size) {
  if (entry.edited) {
    return write_new_value(writer, entry, size);
  }
  return copy_from_offsets(writer.source, entry.value_pos, writer.output,
                           writer.base + writer.data_end, size);
}

/// Notes what completing the IFD needs to move its image data.
void note_image_data(const IfdWriter& writer, OpenIfd& ifd, const FieldEntry& entry,
                     std::uint32_t entry_at, std::uint64_t size) {
  if (entry.tag == jpeg_stream_pair.offsets_tag) {
    ifd.stream_offset_at = entry_at;
    ifd.stream_source = entry.ifd.source_base + entry_number(entry);
  } else if (entry.tag == jpeg_stream_pair.lengths_tag) {
    ifd.stream_length_at = entry_at;
    ifd.stream_length = entry_number(entry);
  }
  for (std::size_t i = 0; i < piece_pairs.size(); ++i) {
    if (entry.tag == piece_pairs[i].offsets_tag) {
      const std::int64_t inside = writer.ifd_pos + entry_at + entry_size - 4;
      ifd.pieces[i].offsets = &entry;
      ifd.pieces[i].new_offsets_pos = writer.base + (size > 4 ? writer.data_end : inside);
    } else if (entry.tag == piece_pairs[i].lengths_tag) {
      ifd.pieces[i].lengths = &entry;
    }
  }
}

ErrorCode write_entry(IfdWriter& writer, OpenIfd& ifd, const FieldEntry& entry) {
  check_consistency(is_stored_type(entry.type), line_entry_type, module_writer);
  const std::uint64_t size = value_size(entry.type, entry.count);
  if (ifd.is_image) {
    note_image_data(writer, ifd, entry, ifd.buffer.pos, size);
  }
  cursor_put_u16(ifd.buffer, static_cast<std::uint16_t>(entry.tag & 0xFFFF));
  cursor_put_u16(ifd.buffer, entry.type);
  cursor_put_u32(ifd.buffer, entry.count);
  if (size <= entry.raw.size()) {
    cursor_put_bytes(ifd.buffer, entry.raw);
    return ErrorCode::ok;
  }
  cursor_put_u32(ifd.buffer, static_cast<std::uint32_t>(writer.data_end));
  const ErrorCode result = write_long_value(writer, entry, size);
  return result == ErrorCode::ok ? advance_data_end(writer, size) : result;
}

void put_pointer(OpenIfd& ifd, std::uint32_t tag, std::uint16_t type, std::uint32_t count,
                 std::int64_t offset) {
  check_consistency(is_stored_type(type), line_pointer_type, module_writer);
  cursor_put_u16(ifd.buffer, static_cast<std::uint16_t>(tag & 0xFFFF));
  cursor_put_u16(ifd.buffer, type);
  cursor_put_u32(ifd.buffer, count);
  cursor_put_u32(ifd.buffer, static_cast<std::uint32_t>(offset));
}

// ---- Nested IFDs --------------------------------------------------------------------------------

/// The copy of the writer with which a nested chain is written: a maker note may count its offsets
/// from a place of its own.
IfdWriter nested_writer(const IfdWriter& writer, std::uint32_t pointer, bool big_endian) {
  IfdWriter nested = writer;
  nested.ifd_pos = writer.data_end;
  nested.big_endian = big_endian;
  if (pointer != tag_maker_note) {
    return nested;
  }
  const MakerDef& maker = maker_def(writer.image.maker_note_kind);
  const std::int64_t start = writer.base + writer.data_end;
  if (maker.structure == MakerStructure::own_base) {
    nested.base = start;
    nested.ifd_pos = 0;
    nested.data_end = 0;
  } else if (maker.structure == MakerStructure::tiff_header) {
    nested.base = start + maker.header_length;
    nested.ifd_pos = -std::int64_t{maker.header_length};
    nested.data_end = 0;
  }
  return nested;
}

/// Several IFDs behind one pointer get an array of offsets; its slots are filled as they are
/// written.
ErrorCode reserve_offset_array(IfdWriter& writer, std::uint32_t count, OffsetArray& array) {
  array.used = true;
  array.next = writer.base + writer.data_end;
  return advance_data_end(writer, std::uint64_t{count} * 4);
}

ErrorCode write_nested(IfdWriter& writer, OpenIfd& ifd, TableRange chain, std::uint16_t level) {
  const std::span<const FieldEntry> table = writer.image.table();
  const std::uint32_t tag = pointer_tag(table, chain, level);
  const FieldEntry* const own = first_own_entry(table, chain, level);
  const bool is_array = own != nullptr && own->seq >> 16 >= 2;
  const std::uint32_t count = is_array ? count_places(table, chain, level) : 1;
  const std::int64_t start = writer.data_end;
  OffsetArray array;
  if (count >= 2) {
    const ErrorCode result = reserve_offset_array(writer, count, array);
    if (result != ErrorCode::ok) {
      return result;
    }
  }
  // A maker note that has nothing left but an IFD nested in it keeps its byte order.
  const FieldEntry* const ordered =
      own == nullptr && tag == tag_maker_note ? &table[chain.begin] : own;
  const bool big_endian = ordered != nullptr ? ordered->ifd.big_endian : writer.big_endian;
  IfdWriter nested = nested_writer(writer, tag, big_endian);
  const ErrorCode result = write_chain(nested, chain, level, tag, array);
  if (result != ErrorCode::ok) {
    return result;
  }

  const std::int64_t nested_end = round_up_even(nested.data_end + nested.base - writer.base);
  if (tag == tag_maker_note) {
    const auto length = static_cast<std::uint32_t>(nested_end - start);
    put_pointer(ifd, tag, type_undefined, length, start);
  } else {
    put_pointer(ifd, tag, type_long, count, start);
  }
  writer.data_end = nested_end;
  return ErrorCode::ok;
}

// ---- One IFD ------------------------------------------------------------------------------------

ErrorCode begin_ifd(IfdWriter& writer, OpenIfd& ifd, TableRange range, std::uint16_t level,
                    std::uint32_t pointer) {
  const std::span<const FieldEntry> table = writer.image.table();
  ifd.header = header_size(writer.image, pointer);
  ifd.entries = count_entries(table, range, level);
  const std::uint32_t needed = ifd.header + 2 + ifd.entries * entry_size + 4;
  if (writer.ifd_pos + needed > max_offset) {
    return ErrorCode::exif_too_long;
  }
  const std::uint32_t room = std::max(usual_ifd_buffer, needed);
  ifd.memory = make_tagged_bytes(room, "FH", __LINE__);
  if (!ifd.memory) {
    return ErrorCode::no_memory;
  }
  ifd.buffer.big_endian = writer.big_endian;
  cursor_init(ifd.buffer, nullptr, {ifd.memory.get(), room}, 0);
  put_header(writer, ifd.buffer, pointer);
  cursor_put_u16(ifd.buffer, static_cast<std::uint16_t>(ifd.entries));
  writer.data_end = round_up_even(writer.ifd_pos + needed);
  return ErrorCode::ok;
}

/// Moves the JPEG stream behind the IFD's values; both of its entries are written anew.
ErrorCode move_jpeg_stream(IfdWriter& writer, OpenIfd& ifd) {
  if (ifd.stream_source < 0) {
    return ErrorCode::end_of_buffer;
  }
  const ErrorCode result =
      ifd.stream_length == 0 ? ErrorCode::ok
                             : copy_from_offsets(writer.source, ifd.stream_source, writer.output,
                                                 writer.base + writer.data_end, ifd.stream_length);
  if (result != ErrorCode::ok) {
    return result;
  }
  const auto rewrite = [&](std::uint32_t at, std::uint32_t tag, std::int64_t value) {
    if (at == 0) {
      return;
    }
    const std::uint32_t end = ifd.buffer.pos;
    ifd.buffer.pos = at;
    put_pointer(ifd, tag, type_long, 1, value);
    ifd.buffer.pos = end;
  };
  rewrite(ifd.stream_offset_at, jpeg_stream_pair.offsets_tag, writer.data_end);
  rewrite(ifd.stream_length_at, jpeg_stream_pair.lengths_tag, ifd.stream_length);
  return advance_data_end(writer, ifd.stream_length);
}

ErrorCode complete_ifd(IfdWriter& writer, OpenIfd& ifd) {
  if (ifd.stream_offset_at != 0) {
    const ErrorCode result = move_jpeg_stream(writer, ifd);
    if (result != ErrorCode::ok) {
      return result;
    }
  }
  cursor_put_u32(ifd.buffer, 0);
  const auto position = static_cast<std::uint64_t>(writer.base + writer.ifd_pos);
  const char* name = writer.image.file_name.data();
  const ErrorCode result =
      write_block_at(writer.output, position, ifd.buffer.buffer.first(ifd.buffer.pos), name);
  if (result != ErrorCode::ok) {
    return result;
  }
  for (const MovedPieces& pieces : ifd.pieces) {
    if (pieces.offsets == nullptr || pieces.lengths == nullptr) {
      continue;
    }
    const PieceTarget target{writer.source, writer.output, writer.base, writer.image};
    auto data_end = static_cast<std::uint64_t>(writer.data_end);
    const ErrorCode moved = move_pieces(pieces, target, data_end);
    if (moved != ErrorCode::ok) {
      return moved;
    }
    writer.data_end = static_cast<std::int64_t>(data_end);
  }
  return ErrorCode::ok;
}

ErrorCode write_ifd(IfdWriter& writer, TableRange range, std::uint16_t level,
                    std::uint32_t pointer) {
  const std::span<const FieldEntry> table = writer.image.table();
  OpenIfd ifd;
  ErrorCode result = begin_ifd(writer, ifd, range, level, pointer);
  const auto nested_level = static_cast<std::uint16_t>(level + 1);
  for (std::size_t place = range.begin; place < range.end && result == ErrorCode::ok;) {
    if (table[place].level == level) {
      ifd.is_image = is_image_ifd(table[place]);
      result = write_entry(writer, ifd, table[place++]);
    } else {
      TableRange chain = chain_range(table, place, nested_level);
      chain.end = std::min(chain.end, range.end);
      result = write_nested(writer, ifd, chain, nested_level);
      place = chain.end;
    }
  }
  return result == ErrorCode::ok ? complete_ifd(writer, ifd) : result;
}

/// Output file offset of the next-IFD field of the IFD that is about to be written.
std::int64_t next_ifd_field(const IfdWriter& writer, TableRange range, std::uint16_t level,
                            std::uint32_t pointer) {
  const std::uint32_t entries = count_entries(writer.image.table(), range, level);
  return writer.base + writer.ifd_pos + header_size(writer.image, pointer) + 2 +
         std::int64_t{entries} * entry_size;
}

ErrorCode put_offset_at(IfdWriter& writer, std::int64_t position, std::int64_t offset) {
  return write_u32_at(writer.output, static_cast<std::uint64_t>(position),
                      static_cast<std::uint32_t>(offset), writer.big_endian);
}

/// The pages of a TIFF file, of which each must have entries (TIFF 6.0): one that has lost them all
/// goes. Elsewhere an empty IFD keeps its place.
bool holds_pages(const ImageFile& image, std::uint16_t level) {
  return image.file_type == FileType::tiff && level == 0;
}

/// Writes the IFDs of a chain one behind the other, each linked to the next; those of an array are
/// linked through its slots instead.
ErrorCode write_chain(IfdWriter& writer, TableRange chain, std::uint16_t level,
                      std::uint32_t pointer, OffsetArray array) {
  const std::span<const FieldEntry> table = writer.image.table();
  std::int64_t link = 0;
  for (std::uint32_t place = 0; chain.begin < chain.end; ++place) {
    const TableRange ifd = holds_pages(writer.image, level)
                               ? first_ifd(table, chain, level)
                               : ifd_at_place(table, chain, level, place);
    if (array.used) {
      link = array.next;
      array.next += 4;
    }
    if (link != 0) {
      const ErrorCode linked = put_offset_at(writer, link, writer.ifd_pos);
      if (linked != ErrorCode::ok) {
        return linked;
      }
    }
    link = next_ifd_field(writer, ifd, level, pointer);
    const ErrorCode result = write_ifd(writer, ifd, level, pointer);
    if (result != ErrorCode::ok) {
      return result;
    }
    writer.ifd_pos = writer.data_end;
    chain.begin = ifd.end;
    pointer = root_main;  // a header stands in front of the first IFD only
  }
  return ErrorCode::ok;
}

}  // namespace

void put_tiff_header(ByteCursor& buffer) {
  cursor_put_bytes(buffer, bytes_of(buffer.big_endian ? "MM" : "II"));
  cursor_put_u16(buffer, tiff_magic);
  cursor_put_u32(buffer, tiff_header_length);
}

ErrorCode write_main_chain(IfdWriter& writer) {
  const std::span<const FieldEntry> table = writer.image.table();
  return write_chain(writer, {0, table.size()}, 0, root_main, {});
}

}  // namespace tagmend
