#include "iptc/iptc_read.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

#include "iptc/app13_format.h"
#include "iptc/iptc_decode.h"
#include "read/ifd_parser.h"
#include "read/tiff_header.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view exif_header = "Exif\0\0"sv;

/// Bytes of a copyright flag that are carried over.
constexpr std::uint32_t copyright_flag_size = 4;

/// A cursor over `size` bytes at the position of another one; at most what there is.
ByteCursor cursor_over(const ByteCursor& cursor, std::uint64_t size) {
  ByteCursor part;
  const std::span<std::uint8_t> rest = cursor.rest();
  const auto kept = static_cast<std::size_t>(std::min<std::uint64_t>(size, rest.size()));
  cursor_init(part, cursor.file, rest.first(kept), cursor_tell(cursor));
  part.file_type = cursor.file_type;
  part.big_endian = true;
  return part;
}

/// One image resource block.
struct ResourceBlock {
  std::uint16_t number = 0;
  std::string_view name;
  std::uint32_t size = 0;  ///< of its data, as the block tells it
  ByteCursor data;         ///< over its data alone
  ByteSpan following;      ///< from its data on to the end of all blocks

  [[nodiscard]] bool is_whole() const { return data.buffer.size() == size; }
};

/// Reads a block up to its data, where the cursor then stands; iptc_invalid.
ErrorCode read_block(ByteCursor& cursor, ResourceBlock& block) {
  const ByteSpan start = cursor.rest();
  if (!text_of(start).starts_with(block_signature)) {
    std::array<std::uint8_t, 4> found{};
    std::copy_n(start.begin(), std::min(start.size(), found.size()), found.begin());
    trace(0, "IPTC: Chunk header not found: %x%x%x%x\n", found[0], found[1], found[2], found[3]);
    return ErrorCode::iptc_invalid;
  }
  cursor_skip(cursor, block_signature.size());
  block.number = cursor_get_u16(cursor);
  if (cursor.error_count > 0 || !cursor.has(1)) {
    return ErrorCode::iptc_invalid;
  }
  const std::uint8_t name_length = cursor.rest().front();
  cursor_skip(cursor, 1);
  if (!cursor.has(name_length)) {
    print_error("Error: Attempt to read past end of buffer in get_bytes()\n");
    end_program(exit_internal);
  }
  block.name = text_of(cursor.rest().first(name_length));
  const auto end = static_cast<std::uint32_t>(cursor.buffer.size());
  cursor.pos = std::min(round_up_even(cursor.pos + name_length), end);
  const std::uint32_t size_field = cursor_get_u32(cursor);
  if (cursor.error_count > 0) {
    return ErrorCode::iptc_invalid;
  }
  block.size = size_field & 0xFFFF;
  block.data = cursor_over(cursor, block.size);
  block.following = cursor.rest();
  return size_field > 0xFFFF ? ErrorCode::value_truncated : ErrorCode::ok;
}

/// The entry of a resource that is kept as a whole.
IptcEntry resource_entry(const ResourceBlock& block) {
  IptcEntry entry;
  entry.row = find_resource(block.number);
  entry.resource = block.number;
  entry.file_pos = cursor_tell(block.data);
  entry.length = static_cast<std::uint16_t>(block.data.buffer.size());
  set_resource_name(entry, block.name);
  return entry;
}

/// The flag is one byte that is padded to an even length, or two. It is read and kept with the
/// bytes behind it; zeros stand for those that the end of the blocks lacks.
ErrorCode add_copyright_flag(IptcStore& store, const ResourceBlock& block) {
  IptcEntry entry = resource_entry(block);
  std::array<std::uint8_t, 2> flag{};
  if (entry.length > 0) {
    const std::size_t kept = std::min<std::size_t>(copyright_flag_size, block.following.size());
    std::copy_n(block.following.begin(), std::min(kept, flag.size()), flag.begin());
    entry.length = static_cast<std::uint16_t>(kept);
    entry.padding = static_cast<std::uint16_t>(copyright_flag_size - kept);
  }
  store.incomplete |= block.size > copyright_flag_size;
  const std::uint16_t number = load_u16(flag, true);
  std::array<char, 8> room;
  TextBuffer text(room);
  if (library_settings.raw_output) {
    append_format(text, "%d", number);
  } else {
    append(text, number != 0 ? "Yes" : "No");
  }
  trace(0, "IPTC: Copyright Flag: %s=%s\n", iptc_datasets[entry.row].nickname, room.data());
  return add_iptc_entry(store, entry, bytes_of(text.text()));
}

/// Reads the fields of EXIF data that is embedded in an EPS file.
void parse_embedded_exif(ReadContext& context, const ResourceBlock& block) {
  const auto type = static_cast<unsigned>(context.image.file_type);
  const FileTypeInfo& info = file_type_info(context.image.file_type);
  if (!info.is_eps) {
    trace(0, "IPTC: Embedded EXIF present but ignored for file type '%s'(%u)\n", info.name, type);
    return;
  }
  trace(0, "IPTC: Embedded EXIF: '%s' to be processed for image type '%s'(%u)\n",
        exif_header.data(), info.name, type);
  ByteCursor cursor = block.data;
  if (!text_of(cursor.rest()).starts_with(exif_header) ||
      !cursor.has(exif_header.size() + tiff_header_length)) {
    context.iptc.incomplete = true;
    return;
  }
  cursor_skip(cursor, exif_header.size());
  cursor.offset_base = cursor.pos;
  if (parse_ifd(cursor, tiff_header_length, root_embedded, 0, 0, context) != ErrorCode::ok) {
    context.iptc.incomplete = true;
  }
}

ErrorCode add_embedded_exif(ReadContext& context, const ResourceBlock& block) {
  // Its text ends at the first NUL: the binary data behind it would only use up the pool.
  const std::string_view data = text_of(block.data.rest());
  const std::uint16_t count = context.iptc.count;
  const ErrorCode result = add_iptc_entry(context.iptc, resource_entry(block),
                                          bytes_of(data.substr(0, data.find('\0'))));
  // A block that was left out as the second of its kind may be one that lies within the first.
  if (context.iptc.count > count) {
    parse_embedded_exif(context, block);
  }
  return result;
}

/// Writers pad datasets with zeros to the size that the place at hand asks for.
std::size_t hash_of_datasets(ByteSpan bytes) {
  const std::string_view text = text_of(bytes);
  return std::hash<std::string_view>{}(text.substr(0, text.find_last_not_of('\0') + 1));
}

bool holds_datasets(const IptcStore& store) {
  const std::span<const IptcEntry> entries = store.list();
  return std::any_of(entries.begin(), entries.end(),
                     [](const IptcEntry& entry) { return entry.resource == resource_iptc; });
}

ErrorCode add_datasets(IptcStore& store, const ByteCursor& data, std::string_view name) {
  store.datasets_hash = hash_of_datasets(data.rest());
  return decode_datasets(store, data, name);
}

/// Whether these are the datasets that have been read before.
bool is_repetition(const IptcStore& store, const ByteCursor& data) {
  return hash_of_datasets(data.rest()) == store.datasets_hash;
}

/// Datasets that are left out will be gone once those of the store are written in their place, in a
/// block of this name.
void pass_over_datasets(IptcStore& store, const ByteCursor& data, std::string_view name) {
  store.incomplete |= !is_repetition(store, data);
  for (IptcEntry& entry : store.list()) {
    if (entry.resource == resource_iptc) {
      set_resource_name(entry, name);
    }
  }
}

ErrorCode add_resource(ReadContext& context, const ResourceBlock& block, bool decode_iptc) {
  const std::string_view data = text_of(block.data.rest());
  switch (block.number) {
    case resource_iptc:
      if (decode_iptc) {
        return add_datasets(context.iptc, block.data, block.name);
      }
      pass_over_datasets(context.iptc, block.data, block.name);
      return ErrorCode::ok;
    case resource_copyright_flag:
      return add_copyright_flag(context.iptc, block);
    case resource_url:
      trace(0, "IPTC: Image URL: %.*s\n", static_cast<int>(data.size()), data.data());
      return add_iptc_entry(context.iptc, resource_entry(block), bytes_of(data));
    case resource_exif:
      return add_embedded_exif(context, block);
    default:
      trace(0, "IPTC: Type=%4x, Name=%.*s, Len=%u\n", block.number,
            static_cast<int>(block.name.size()), block.name.data(), block.size);
      return add_iptc_entry(context.iptc, resource_entry(block), bytes_of("Opaque data"));
  }
}

/// Walks the blocks that fill the cursor's buffer from its position on.
ErrorCode walk_blocks(ReadContext& context, ByteCursor cursor, bool decode_iptc) {
  while (cursor.has(1)) {
    ResourceBlock block;
    ErrorCode result = read_block(cursor, block);
    if (result == ErrorCode::value_truncated) {
      context.iptc.incomplete = true;
    } else if (result != ErrorCode::ok) {
      return result;
    }
    result = add_resource(context, block, decode_iptc);
    if (result != ErrorCode::ok) {
      return result;
    }
    context.iptc.incomplete |= !block.is_whole();
    const auto end = static_cast<std::uint32_t>(cursor.buffer.size());
    cursor.pos = std::min(round_up_even(cursor.pos + block.size), end);
  }
  return ErrorCode::ok;
}

bool has_photoshop_header(ByteSpan payload) {
  const bool found = text_of(payload).starts_with(photoshop_header);
  trace(0, found ? "IPTC: Photoshop header detected"
                 : "APP13 Block does not contain Photoshop IPTC data");
  return found;
}

/// Walks blocks and notes when not all of them were understood.
ErrorCode read_blocks(ReadContext& context, const ByteCursor& cursor, bool decode_iptc) {
  const ErrorCode result = walk_blocks(context, cursor, decode_iptc);
  context.iptc.incomplete |= result != ErrorCode::ok;
  return result;
}

/// The whole value at a cursor: one that begins near the end of the piece of file at hand is read
/// anew into `buffer`. A value that cannot be had whole marks the store incomplete.
ByteCursor whole_value(ReadContext& context, const ByteCursor& value, std::uint64_t length,
                       WorkBuffer& buffer) {
  ByteCursor whole = cursor_over(value, length);
  if (whole.buffer.size() < length && value.file != nullptr) {
    const std::span<std::uint8_t> room = buffer.bytes();
    const std::uint64_t reachable = file_offset_end - cursor_tell(value);
    const std::uint64_t wanted = std::min({length, std::uint64_t{room.size()}, reachable});
    std::size_t arrived = 0;
    static_cast<void>(read_block_at(*value.file, cursor_tell(value),
                                    room.first(static_cast<std::size_t>(wanted)), arrived));
    if (arrived > whole.buffer.size()) {
      cursor_init(whole, value.file, room.first(arrived), cursor_tell(value));
    }
  }
  context.iptc.incomplete |= whole.buffer.size() < length;
  return whole;
}

}  // namespace

ErrorCode walk_resource_blocks(ReadContext& context, ByteCursor cursor, bool header) {
  // Blocks begin at even offsets from the start of the data.
  cursor = cursor_over(cursor, cursor.rest().size());
  if (!header) {
    return read_blocks(context, cursor, false);
  }
  if (!has_photoshop_header(cursor.rest())) {
    return ErrorCode::iptc_invalid;
  }
  const auto end = static_cast<std::uint32_t>(cursor.buffer.size());
  cursor.pos = std::min(round_up_even(static_cast<std::uint32_t>(photoshop_header.size())), end);
  return read_blocks(context, cursor, true);
}

ErrorCode read_app13(ReadContext& context, MFILE& file, std::uint32_t length) {
  IptcStore& store = context.iptc;
  WorkBuffer work;
  const std::span<std::uint8_t> room = work.bytes();
  const auto file_pos = static_cast<std::uint32_t>(tell_with_message(file));
  const std::size_t wanted = std::min<std::size_t>(length, room.size());
  const std::size_t arrived = mfread(room.data(), 1, wanted, file);
  const std::span<std::uint8_t> payload = room.first(arrived);
  const bool photoshop = text_of(payload).starts_with(photoshop_header);
  if (arrived < length) {
    trace(0, "IPTC: APP13 data block too short (%d) to be a Photoshop IPTC data\n",
          static_cast<int>(arrived));
    const bool unknown = arrived < photoshop_header.size();
    store.incomplete |= photoshop || unknown;
    return ErrorCode::iptc_invalid;
  }
  if (photoshop) {
    // The last segment counts. What an earlier one held goes when the segment is written anew.
    const bool second = store.segment_seen;
    reset_iptc_store(store);
    store.segment_seen = true;
    store.incomplete = second;
  }
  ByteCursor cursor;
  cursor_init(cursor, &file, payload, file_pos);
  cursor.file_type = static_cast<std::uint16_t>(context.image.file_type);
  return walk_resource_blocks(context, cursor, true);
}

void read_iptc_value(ReadContext& context, const ByteCursor& value, std::uint64_t length) {
  WorkBuffer buffer;
  const ByteCursor whole = whole_value(context, value, length, buffer);
  IptcStore& store = context.iptc;
  if (holds_datasets(store)) {
    store.incomplete |= !is_repetition(store, whole);
    return;
  }
  static_cast<void>(add_datasets(store, whole, ""));
}

void read_photoshop_value(ReadContext& context, const ByteCursor& value, std::uint64_t length) {
  // Both fields hold the same datasets as a rule; those of the field that comes first count, which
  // is the IPTC field where tags ascend.
  const bool decode_iptc = !holds_datasets(context.iptc);
  // A second one belongs to another page, and stays there.
  if (context.iptc.field_seen) {
    return;
  }
  context.iptc.field_seen = true;
  WorkBuffer buffer;
  static_cast<void>(read_blocks(context, whole_value(context, value, length, buffer), decode_iptc));
}

}  // namespace tagmend
