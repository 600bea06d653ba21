// Canon CRW files: a heap of records, of which one stretch (the meta data block) is read. Every
// field stands at a fixed position in it. All places are found from the end of the file.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <span>

#include "read/decode.h"
#include "read/raw_files.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "support/tagged_memory.h"

namespace tagmend {
namespace {

constexpr char block_tag[] = "CR";

/// A row's position is a 16-bit number: what a block holds behind this many bytes is never looked
/// at.
constexpr std::uint64_t max_useful_block = 0x20000;

/// A 32-bit number that tells where something lies, and what a failed seek to it is reported as.
struct HeapNumber {
  std::int64_t offset;
  Whence whence;
  const char* seek_message;
};

constexpr HeapNumber header_length = {2, Whence::start,
                                      "Error: Can't seek to Canon Raw header len offset: %s\n"};
constexpr HeapNumber meta_start = {-8, Whence::end,
                                   "Error: Can't seek to Canon Raw Meta data start offset: %s\n"};
constexpr HeapNumber meta_end = {-4, Whence::end,
                                 "Error: Can't seek to Canon Raw Meta data end offset: %s\n"};
constexpr HeapNumber thumb_start = {-18, Whence::end,
                                    "Error: Can't seek to Canon Raw Meta thumb start offset: %s\n"};
constexpr HeapNumber thumb_size = {-22, Whence::end,
                                   "Error: Can't seek to Canon Raw Meta thumb size offset: %s\n"};

ErrorCode read_heap_number(MFILE& file, const HeapNumber& number, bool big_endian,
                           std::uint32_t& value) {
  if (mfseek(file, number.offset, number.whence) != 0) {
    const int error = mferror(file) != 0 ? mferror(file) : errno;
    print_error(number.seek_message, std::strerror(error));
    return ErrorCode::seek_failed;
  }
  return read_u32(file, value, big_endian);
}

/// The number of bytes in the file; 0 when that cannot be told.
std::uint64_t file_length(MFILE& file) {
  if (mfseek(file, 0, Whence::end) != 0) {
    return 0;
  }
  return static_cast<std::uint64_t>(std::max<std::int64_t>(mftell(file), 0));
}

/// The meta data block, as much of it as is of use.
struct MetaBlock {
  TaggedBytes bytes;
  std::uint32_t length = 0;
  ByteCursor cursor;  ///< over the bytes
};

ErrorCode read_crw_meta(MFILE& file, bool big_endian, MetaBlock& block) {
  std::uint32_t header = 0;
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  ErrorCode code = read_heap_number(file, header_length, big_endian, header);
  if (code == ErrorCode::ok) {
    code = read_heap_number(file, meta_start, big_endian, start);
  }
  if (code == ErrorCode::ok) {
    code = read_heap_number(file, meta_end, big_endian, end);
  }
  if (code != ErrorCode::ok) {
    return code;
  }
  const std::uint64_t position = std::uint64_t{header} + start;
  if (end < start || position + (end - start) > file_length(file)) {
    return ErrorCode::read_failed;
  }
  block.length = static_cast<std::uint32_t>(std::min<std::uint64_t>(end - start, max_useful_block));
  block.bytes = make_tagged_bytes(block.length, block_tag, __LINE__);
  if (block.bytes == nullptr) {
    print_error("Error: Can't allocate memory for Canon Raw info block\n");
    return ErrorCode::no_memory;
  }
  const std::span bytes(block.bytes.get(), block.length);
  std::size_t bytes_read = 0;
  code = read_block_at(file, position, bytes, bytes_read);
  if (code != ErrorCode::ok) {
    return code == ErrorCode::end_of_buffer ? ErrorCode::read_failed : code;
  }
  cursor_init(block.cursor, &file, bytes, static_cast<std::uint32_t>(position));
  block.cursor.big_endian = big_endian;
  return ErrorCode::ok;
}

/// Leaves the ImageFile as it is when the numbers cannot be read or the sum is no file offset.
void read_crw_thumbnail(MFILE& file, bool big_endian, ImageFile& image) {
  std::uint32_t header = 0;
  std::uint32_t start = 0;
  std::uint32_t size = 0;
  if (read_heap_number(file, header_length, big_endian, header) != ErrorCode::ok ||
      read_heap_number(file, thumb_start, big_endian, start) != ErrorCode::ok ||
      read_heap_number(file, thumb_size, big_endian, size) != ErrorCode::ok) {
    return;
  }
  const std::uint64_t offset = std::uint64_t{header} + start;
  if (offset <= std::numeric_limits<std::uint32_t>::max()) {
    image.thumbnail_offset = static_cast<std::uint32_t>(offset);
    image.thumbnail_length = size;
  }
}

/// The field of one row. Its position inside the block stands in its tag.
FieldEntry make_field(const MetaBlock& block, std::uint32_t row, std::uint32_t maker_note_kind) {
  const FieldDef& def = field_table_defs[row];
  FieldEntry entry;
  entry.kind = IfdKind::canon_raw;
  entry.level = 1;
  entry.tag = def.tag;
  entry.def = row;
  entry.value_pos = def.tag & 0xFFFF;
  entry.type = static_cast<std::uint16_t>(def.data_type);
  entry.count = def.count;
  copy_text(entry.name, def.description);
  ByteCursor cursor = block.cursor;
  cursor.pos = entry.value_pos;
  TextBuffer text(entry.text.room);
  decode_canon_raw({cursor, entry.tag, entry.type, entry.count}, def, maker_note_kind, text);
  return entry;
}

void append_fields(const MetaBlock& block, ImageFile& image) {
  const int first = first_field_of_kind(IfdKind::canon_raw);
  if (first == not_found) {
    print_error("Internal Error: Can't find Canon Raw field definitions\n");
    end_program(exit_internal);
  }
  for (auto row = static_cast<std::uint32_t>(first);
       field_table_defs[row].ifd_kind == IfdKind::canon_raw; ++row) {
    const FieldDef& def = field_table_defs[row];
    const std::uint64_t size = value_size(static_cast<std::uint16_t>(def.data_type), 1);
    if ((def.tag & 0xFFFF) + size > block.length) {
      continue;
    }
    FieldEntry entry = make_field(block, row, image.maker_note_kind);
    entry.index = static_cast<std::uint16_t>(image.field_count);
    if (append_field(image, entry) != ErrorCode::ok) {
      return;
    }
  }
}

}  // namespace

ErrorCode read_crw(ReadContext& context, MFILE& file, bool big_endian) {
  MetaBlock block;
  const ErrorCode code = read_crw_meta(file, big_endian, block);
  if (code != ErrorCode::ok) {
    return code;
  }
  append_fields(block, context.image);
  read_crw_thumbnail(file, big_endian, context.image);
  return ErrorCode::ok;
}

}  // namespace tagmend
