#include "iptc/app13_build.h"

#include <algorithm>

#include "iptc/app13_format.h"
#include "read/jpeg_markers.h"
#include "support/byte_cursor.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/error_code.h"
#include "support/file_primitives.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// The most bytes of a segment with its marker.
constexpr std::uint32_t segment_limit = 65535;

/// Marker, length field, header and its terminating NUL.
constexpr std::uint64_t segment_header_size = 2 + 2 + photoshop_header.size() + 1;
static_assert(segment_header_size % 2 == 0, "blocks begin at even offsets");

/// Signature, resource number and the length byte of the name.
constexpr std::uint64_t block_start_size = block_signature.size() + 2 + 1;
constexpr std::uint64_t size_field_size = 4;

std::size_t value_length(const IptcEntry& entry) {
  return entry.has_new_value ? entry.new_value.size() : std::size_t{entry.length} + entry.padding;
}

/// The entries that share a block with the first: a run of datasets, or one other resource.
std::span<const IptcEntry> block_entries(std::span<const IptcEntry> entries) {
  if (entries.front().resource != resource_iptc) {
    return entries.first(1);
  }
  const auto end = std::find_if(entries.begin(), entries.end(), [](const IptcEntry& entry) {
    return entry.resource != resource_iptc;
  });
  return {entries.begin(), end};
}

std::uint64_t data_size(std::span<const IptcEntry> block) {
  const bool datasets = block.front().resource == resource_iptc;
  std::uint64_t size = 0;
  for (const IptcEntry& entry : block) {
    size += value_length(entry) + (datasets ? dataset_header_size : 0);
  }
  return size;
}

std::uint64_t segment_size(const IptcStore& store) {
  std::uint64_t size = segment_header_size;
  for (std::span<const IptcEntry> rest = store.list(); !rest.empty();) {
    const std::span<const IptcEntry> block = block_entries(rest);
    size += round_up_even(block_start_size + block.front().resource_name_length);
    size += size_field_size + round_up_even(data_size(block));
    rest = rest.subspan(block.size());
  }
  return size;
}

/// A segment being written. It is known to fit.
struct SegmentWriter {
  ByteCursor cursor;
  MFILE& source;
  const char* source_name;
};

void put_byte(ByteCursor& cursor, std::uint8_t byte) { cursor_put_bytes(cursor, {&byte, 1}); }

void pad_to_even(ByteCursor& cursor) {
  if (cursor.pos % 2 != 0) {
    put_byte(cursor, 0);
  }
}

/// Copies the bytes of a value from the source file.
ErrorCode copy_value(SegmentWriter& writer, const IptcEntry& entry) {
  if (entry.length == 0) {
    return ErrorCode::ok;
  }
  const std::span<std::uint8_t> room = writer.cursor.rest().first(entry.length);
  std::size_t arrived = 0;
  const ErrorCode result = read_block_at(writer.source, entry.file_pos, room, arrived);
  if (result != ErrorCode::ok || arrived < room.size()) {
    print_error(
        "Error: Internal error reading %s: IPTC field read is shorter than expected (%d/%d)\n",
        writer.source_name, static_cast<int>(arrived), entry.length);
    return ErrorCode::text_too_short;
  }
  cursor_skip(writer.cursor, entry.length);
  for (std::uint16_t i = 0; i < entry.padding; ++i) {
    put_byte(writer.cursor, 0);
  }
  return ErrorCode::ok;
}

ErrorCode put_value(SegmentWriter& writer, const IptcEntry& entry) {
  if (entry.has_new_value) {
    cursor_put_bytes(writer.cursor, bytes_of(entry.new_value));
    return ErrorCode::ok;
  }
  return copy_value(writer, entry);
}

ErrorCode put_datasets(SegmentWriter& writer, std::span<const IptcEntry> block) {
  for (const IptcEntry& entry : block) {
    put_byte(writer.cursor, dataset_marker);
    put_byte(writer.cursor, static_cast<std::uint8_t>(entry.record));
    put_byte(writer.cursor, entry.dataset);
    cursor_put_u16(writer.cursor, static_cast<std::uint16_t>(value_length(entry)));
    const ErrorCode result = put_value(writer, entry);
    if (result != ErrorCode::ok) {
      return result;
    }
  }
  return ErrorCode::ok;
}

ErrorCode put_block(SegmentWriter& writer, std::span<const IptcEntry> block, App13Result& result) {
  ByteCursor& cursor = writer.cursor;
  const IptcEntry& first = block.front();
  const auto size = static_cast<std::uint32_t>(data_size(block));
  cursor_put_bytes(cursor, bytes_of(block_signature));
  cursor_put_u16(cursor, first.resource);
  put_byte(cursor, static_cast<std::uint8_t>(first.resource_name_length));
  cursor_put_bytes(cursor, bytes_of({first.resource_name.data(), first.resource_name_length}));
  pad_to_even(cursor);
  cursor_put_u32(cursor, size);
  ErrorCode code = ErrorCode::ok;
  if (first.resource == resource_iptc) {
    result.iptc_pos = cursor.pos;
    result.iptc_len = size;
    code = put_datasets(writer, block);
  } else {
    code = put_value(writer, first);
  }
  pad_to_even(cursor);
  return code;
}

ErrorCode put_segment(SegmentWriter& writer, const IptcStore& store, App13Result& result) {
  cursor_put_u16(writer.cursor, marker_app13);
  cursor_put_u16(writer.cursor, static_cast<std::uint16_t>(result.length - 2));
  cursor_put_bytes(writer.cursor, bytes_of(photoshop_header));
  put_byte(writer.cursor, 0);
  result.blocks_pos = writer.cursor.pos;
  for (std::span<const IptcEntry> rest = store.list(); !rest.empty();) {
    const std::span<const IptcEntry> block = block_entries(rest);
    const ErrorCode code = put_block(writer, block, result);
    if (code != ErrorCode::ok) {
      return code;
    }
    rest = rest.subspan(block.size());
  }
  result.blocks_len = writer.cursor.pos - result.blocks_pos;
  return ErrorCode::ok;
}

}  // namespace

ErrorCode build_app13(App13Result& result, const IptcStore& store, MFILE& source,
                      const char* source_name) {
  result.built = false;
  result.length = 0;
  result.blocks_pos = result.blocks_len = 0;
  result.iptc_pos = result.iptc_len = 0;
  if (store.count == 0 && !store.emptied) {
    return ErrorCode::ok;
  }
  const std::uint64_t size = segment_size(store);
  if (size > segment_limit) {
    return ErrorCode::exif_too_long;
  }
  result.length = static_cast<std::uint32_t>(size);
  SegmentWriter writer{.cursor = {}, .source = source, .source_name = source_name};
  cursor_init(writer.cursor, nullptr, std::span(result.bytes).first(result.length), 0);
  writer.cursor.big_endian = true;
  const ErrorCode code = put_segment(writer, store, result);
  result.built = code == ErrorCode::ok;
  return code;
}

}  // namespace tagmend
