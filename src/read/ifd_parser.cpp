#include "read/ifd_parser.h"

#include <algorithm>
#include <optional>

#include "read/ifd_value.h"
#include "read/image_data_tags.h"
#include "read/maker_note.h"
#include "read/tiff_header.h"
#include "read/unmoved_data.h"
#include "support/message.h"

namespace tagmend {
namespace {

constexpr std::uint32_t entry_length = 12;
constexpr std::uint32_t count_length = 2;
constexpr std::uint32_t next_offset_length = 4;

/// Where the first IFD of the chain lies, from the cursor's base, which is set up for it.
std::uint32_t enter_chain(IfdChain& chain, std::uint32_t offset, ImageFile& image) {
  switch (chain.parent) {
    case tag_maker_note: {
      const MakerDef& def = maker_def(image.maker_note_kind);
      if (def.structure == MakerStructure::tiff_header) {
        // The header has to be at hand; where it is not, the seek to the IFD behind it tells.
        static_cast<void>(
            place_cursor(chain.cursor, offset, def.header_length + 2U, chain.ifd_buffer));
      }
      return enter_maker_note(chain.cursor, offset, image);
    }
    case tag_ricoh_info:
      return offset_behind(offset, ricoh_info_header.size());
    case root_embedded:
      chain.cursor.big_endian = base_is_big_endian(chain.cursor);
      chain.parent = root_main;
      return tiff_header_length;
    default:
      return offset;
  }
}

/// Stands the cursor on the first entry of the IFD and gives the number of entries; none when the
/// IFD is out of reach or cannot be one. Vain attempts count as IFDs, which bounds their number.
std::optional<std::uint16_t> begin_ifd(IfdChain& chain, std::uint32_t offset, ImageFile& image) {
  ByteCursor& cursor = chain.cursor;
  if (image.ifd_count >= max_ifds) {
    return std::nullopt;
  }
  chain.kind = resolve_ifd_kind(chain.parent, chain.seq & 0xFFFF, image.maker_note_kind);
  chain.place = {.id = image.ifd_count++,
                 .around = chain.place.around,
                 .parent = chain.parent,
                 .source_base = cursor_base_pos(cursor),
                 .big_endian = cursor.big_endian};
  if (place_cursor(cursor, offset, count_length, chain.ifd_buffer) != ErrorCode::ok) {
    trace(chain.level, "Pointer to next IFD (%d) out of bounds. IFD ignored.\n", offset);
    return std::nullopt;
  }
  const std::uint16_t count = cursor_get_u16(cursor);
  trace(chain.level, "IFD contains %d entries, parent=%x, seq=0x%x\n", count, chain.parent,
        chain.seq);
  if (count > max_ifd_entries) {
    trace(chain.level, "Number of IFD entries (%d) exceed maximum sane value (%d). IFD ignored.\n",
          count, max_ifd_entries);
    return std::nullopt;
  }
  const std::uint32_t length = count_length + count * entry_length + next_offset_length;
  if (!cursor.has(length - count_length) &&
      place_cursor(cursor, offset, length, chain.ifd_buffer) == ErrorCode::ok) {
    cursor_skip(cursor, count_length);
  }
  return count;
}

/// The row that describes the entry. Two pointer tags are common numbers that other makers use for
/// values: they are pointers only in the IFDs of their own rows.
std::uint16_t find_definition(IfdKind kind, std::uint32_t tag) {
  const std::uint16_t def = find_field_by_tag(kind, tag, false);
  const bool own_kind_only = tag == tag_nikon_thumbnail || tag == tag_ricoh_info;
  return own_kind_only && field_table_defs[def].ifd_kind != kind ? 0 : def;
}

StoredEntry read_stored_entry(IfdChain& chain) {
  ByteCursor& cursor = chain.cursor;
  StoredEntry entry;
  entry.tag = cursor_get_u16(cursor);
  entry.type = cursor_get_u16(cursor);
  entry.count = cursor_get_u32(cursor);
  entry.def = find_definition(chain.kind, entry.tag);
  entry.value = cursor;
  entry.value.error_count = 0;
  if (cursor.has(entry.raw.size())) {
    std::copy_n(cursor.rest().begin(), entry.raw.size(), entry.raw.begin());
  }
  cursor_skip(cursor, inline_value_length);
  return entry;
}

/// A maker note of up to four bytes lies in the entry itself and is no IFD.
bool is_pointer(const StoredEntry& entry, const ImageFile& image) {
  return entry.row().is_offset ||
         (entry.tag == tag_maker_note && entry.size() > inline_value_length &&
          maker_def(image.maker_note_kind).is_ifd);
}

bool is_ifd_array(const StoredEntry& entry) {
  return entry.count != 1 && entry.tag != tag_maker_note && entry.tag != tag_ricoh_info;
}

/// Whether there is an IFD that may be read: a damaged file can point on and on.
bool may_descend(const IfdChain& chain, const StoredEntry& entry, const ImageFile& image) {
  return entry.count != 0 && chain.level < max_ifd_level && image.ifd_count < max_ifds;
}

/// Where a chain of IFDs begins, and what led to it.
struct ChainStart {
  std::uint32_t offset;  ///< of the first IFD, from the cursor's base
  std::uint32_t parent;  ///< a pointer tag or a root code
  std::uint16_t level;   ///< nesting depth
  std::uint32_t seq;     ///< sequence code of the first IFD
  EnclosingIfds around{};
};

/// For a chain that a pointer in the IFD in work leads to.
EnclosingIfds around_nested(const IfdChain& chain) {
  EnclosingIfds around = chain.place.around;
  around[chain.level] = chain.place.id;
  return around;
}

/// As parse_ifd, but gives nothing when not even the first IFD can be read.
std::optional<ErrorCode> read_chain(ByteCursor cursor, const ChainStart& start,
                                    ReadContext& context);

/// A chain without a readable IFD fails nothing, but leaves the read incomplete.
ErrorCode result_of_chain(const std::optional<ErrorCode>& result, ImageFile& image) {
  image.incomplete |= !result;
  return result.value_or(ErrorCode::ok);
}

/// Reads all IFDs of an array of offsets, whatever each returns, up to the limit for one file.
ErrorCode read_ifd_array(IfdChain& chain, StoredEntry& entry, ReadContext& context) {
  ImageFile& image = context.image;
  ByteCursor& offsets = entry.value;
  const std::uint32_t array_offset = cursor_get_u32(offsets);
  trace_array(chain, entry, array_offset);
  const std::uint32_t count = std::min<std::uint32_t>(entry.count, max_ifds);
  ErrorCode result =
      place_cursor(offsets, array_offset, std::uint64_t{4} * count, chain.array_buffer);
  if (result != ErrorCode::ok) {
    return result;
  }
  const auto nested_level = static_cast<std::uint16_t>(chain.level + 1);
  std::uint32_t i = 0;
  for (; i < count && image.ifd_count < max_ifds; ++i) {
    const std::uint32_t offset = cursor_get_u32(offsets);
    if (offsets.error_count != 0) {
      break;
    }
    trace(nested_level, "Entering IFD#%d in multi-IFD tag, offset %d\n", i, offset);
    trace(nested_level, "Entering nested IFD, offset=%d\n", offset);
    const ChainStart start{.offset = offset,
                           .parent = entry.tag,
                           .level = nested_level,
                           .seq = i + (entry.count << 16),
                           .around = around_nested(chain)};
    result = result_of_chain(read_chain(chain.cursor, start, context), image);
  }
  image.incomplete |= i < entry.count;
  image.images_unread |= i < entry.count;
  return result;
}

/// Whether the file holds all bytes of the value at the offset, and the offset is allowed.
bool is_whole(IfdChain& chain, const StoredEntry& entry, std::uint32_t offset) {
  ByteCursor cursor = entry.value;
  if (cursor.file == nullptr || mfseek(*cursor.file, 0, Whence::end) != 0) {
    return false;
  }
  const std::int64_t end =
      cursor_base_pos(cursor) + offset + static_cast<std::int64_t>(entry.size());
  return end <= mftell(*cursor.file) &&
         place_cursor(cursor, offset, entry.size(), chain.value_buffer) == ErrorCode::ok;
}

std::optional<ErrorCode> enter_nested(const IfdChain& chain, const StoredEntry& entry,
                                      const ByteCursor& cursor, std::uint32_t offset,
                                      ReadContext& context) {
  trace_pointer(chain, entry, offset);
  const auto nested_level = static_cast<std::uint16_t>(chain.level + 1);
  trace(nested_level, "Entering nested IFD, offset=%d\n", offset);
  const ChainStart start{.offset = offset,
                         .parent = entry.tag,
                         .level = nested_level,
                         .seq = 0,
                         .around = around_nested(chain)};
  return read_chain(cursor, start, context);
}

/// Whether a maker note can be copied as it is: its offsets count from a place inside of it.
bool is_movable(const MakerDef& maker) {
  return maker.structure == MakerStructure::own_base ||
         maker.structure == MakerStructure::tiff_header;
}

/// Keeps the bytes in front of the IFD: those of the layout, or what stands there instead.
void keep_prefix(IfdChain& chain, ByteCursor cursor, std::uint32_t offset, bool fits,
                 ImageFile& image) {
  const MakerDef& maker = maker_def(image.maker_note_kind);
  image.maker_note_prefix = maker.prefix;
  if (!fits &&
      place_cursor(cursor, offset, maker.header_length, chain.maker_note_buffer) == ErrorCode::ok &&
      cursor.has(maker.header_length)) {
    std::copy_n(cursor.rest().begin(), maker.header_length, image.maker_note_prefix.begin());
  }
}

/// What the notes of a file are written with: there is one for all of them.
struct NoteLayout {
  std::uint32_t kind;
  decltype(ImageFile::maker_note_prefix) prefix;

  bool operator==(const NoteLayout&) const = default;
};

bool has_maker_fields(const ImageFile& image) {
  return std::ranges::any_of(image.table(), [](const FieldEntry& entry) {
    return entry.ifd.parent == tag_maker_note && !entry.ifd.display_only;
  });
}

/// Reads a maker note as an IFD. Nothing when it is none, when it holds no field (a note of another
/// form may begin with zeros), when an earlier note of the file has another layout, or when it
/// could not be read whole and its bytes survive an edit better than what was understood of them:
/// it is then an ordinary value, and the fields that were read are for display only.
std::optional<ErrorCode> read_maker_note(IfdChain& chain, const StoredEntry& entry,
                                         ReadContext& context) {
  ImageFile& image = context.image;
  ByteCursor cursor = entry.value;
  const std::uint32_t offset = cursor_get_u32(cursor);
  const NoteLayout first{image.maker_note_kind, image.maker_note_prefix};
  const bool fits =
      recognise_maker_note(cursor, offset, chain.maker_note_buffer, image.maker_note_kind);
  const MakerDef& maker = maker_def(image.maker_note_kind);
  if (maker.is_ifd) {
    keep_prefix(chain, cursor, offset, fits, image);
  }
  if (has_maker_fields(image) &&
      NoteLayout{image.maker_note_kind, image.maker_note_prefix} != first) {
    image.maker_note_kind = first.kind;
    image.maker_note_prefix = first.prefix;
    image.incomplete |= maker.is_ifd && (!fits || !is_movable(maker));
    return std::nullopt;
  }
  if (!maker.is_ifd) {
    return std::nullopt;
  }
  const std::uint32_t first_field = image.field_count;
  const bool was_incomplete = image.incomplete;
  image.incomplete = false;
  const auto result = enter_nested(chain, entry, cursor, offset, context);
  const bool whole = result == ErrorCode::ok && !image.incomplete;
  image.incomplete |= was_incomplete;
  const bool no_field = result == ErrorCode::ok && image.field_count == first_field;
  const bool better_copied = no_field || (!whole && (!result || !fits || is_movable(maker)));
  if (better_copied && is_whole(chain, entry, offset)) {
    for (FieldEntry& field : image.table().subspan(first_field)) {
      field.ifd.display_only = true;
    }
    return std::nullopt;
  }
  return result_of_chain(result, image);
}

/// Reads the one IFD that the entry points at.
ErrorCode read_nested_ifd(const IfdChain& chain, const StoredEntry& entry, ReadContext& context) {
  ByteCursor cursor = entry.value;
  const std::uint32_t offset = cursor_get_u32(cursor);
  return result_of_chain(enter_nested(chain, entry, cursor, offset, context), context.image);
}

/// Whether the IFDs of a chain may describe images: pages and sub-images.
bool may_hold_images(std::uint16_t level, std::uint32_t parent) {
  return level == 0 || parent == tag_sub_ifd;
}

/// Reads the value of an entry that is no IFD to the reader.
ErrorCode read_plain_value(IfdChain& chain, StoredEntry& entry, ReadContext& context) {
  const StoredEntry stored = entry;
  const ErrorCode result = read_value(chain, entry, context);
  context.image.incomplete |= result == ErrorCode::ok && leads_to_unmoved_data(chain, stored);
  return result;
}

ErrorCode read_entry(IfdChain& chain, ReadContext& context) {
  StoredEntry entry = read_stored_entry(chain);
  if (!is_stored_type(entry.type)) {
    trace(chain.level, "Warning: (%s) Field 0x%.4x has unknown field data type %d, field ignored\n",
          context.image.file_name.data(), entry.tag, entry.type);
    ++chain.format_errors;
    context.image.incomplete = true;
    context.image.images_unread |=
        may_hold_images(chain.level, chain.parent) && locates_image_data(entry.tag);
    return ErrorCode::ok;
  }
  if (is_pointer(entry, context.image)) {
    if (!may_descend(chain, entry, context.image)) {
      context.image.incomplete = true;
      context.image.images_unread |= entry.tag == tag_sub_ifd;
      return ErrorCode::ok;
    }
    if (entry.tag == tag_maker_note) {
      const auto result = read_maker_note(chain, entry, context);
      return result ? *result : read_plain_value(chain, entry, context);
    }
    if (is_ifd_array(entry)) {
      const ErrorCode result = read_ifd_array(chain, entry, context);
      chain.cursor.error_count += entry.value.error_count;
      return result;
    }
    return read_nested_ifd(chain, entry, context);
  }
  return read_plain_value(chain, entry, context);
}

/// Reads the entries of an IFD up to the first that fails, or to too many format errors.
ErrorCode read_entries(IfdChain& chain, std::uint16_t count, ReadContext& context) {
  ErrorCode result = ErrorCode::ok;
  for (std::uint16_t i = 0; i < count && result == ErrorCode::ok; ++i) {
    if (chain.format_errors > max_format_errors) {
      break;
    }
    result = read_entry(chain, context);
  }
  return result;
}

std::uint32_t all_errors(const IfdChain& chain) {
  return chain.format_errors + chain.cursor.error_count;
}

/// The IFDs of an array are linked by it alone: what one of them links to has no place when they
/// are written.
void note_chain_in_array(const IfdChain& chain, std::uint32_t next_offset, ImageFile& image) {
  const bool is_in_array = chain.seq >> 16 != 0;
  if (is_in_array && next_offset != 0) {
    image.incomplete = true;
    image.images_unread |= chain.parent == tag_sub_ifd;
  }
}

std::optional<ErrorCode> read_ifds(IfdChain& chain, std::uint32_t offset, ReadContext& context) {
  for (bool first = true;; first = false) {
    const auto count = begin_ifd(chain, offset, context.image);
    if (!count) {
      ++chain.format_errors;
      // What stands behind the only IFD of a maker note need not be an offset.
      context.image.incomplete |= !first && chain.parent != tag_maker_note;
      return first ? std::nullopt : std::optional(ErrorCode::ok);
    }
    // A maker note that begins with zeros is no IFD, and what follows them leads anywhere.
    if (first && *count == 0 && chain.parent == tag_maker_note) {
      return std::nullopt;
    }
    const ErrorCode result = read_entries(chain, *count, context);
    if (result != ErrorCode::ok || all_errors(chain) > max_format_errors) {
      return result;
    }
    offset = cursor_get_u32(chain.cursor);
    context.image.images_unread |= chain.level == 0 && *count == 0 && offset != 0;
    note_chain_in_array(chain, offset, context.image);
    ++chain.seq;
    chain.ended = offset == 0;
    if (chain.ended || all_errors(chain) > max_format_errors) {
      return result;
    }
  }
}

std::optional<ErrorCode> read_chain(ByteCursor cursor, const ChainStart& start,
                                    ReadContext& context) {
  ImageFile& image = context.image;
  cursor.error_count = 0;
  IfdChain chain;
  chain.cursor = cursor;
  chain.parent = start.parent;
  chain.place.around = start.around;
  chain.level = start.level;
  chain.seq = start.seq;
  const std::uint32_t first = enter_chain(chain, start.offset, image);
  const auto result = read_ifds(chain, first, context);
  if (all_errors(chain) > max_format_errors) {
    print_error("Error: (%s) Too many format errors detected, EXIF data may be incomplete\n",
                image.file_name.data());
  }
  image.images_unread |= !chain.ended && may_hold_images(start.level, start.parent);
  if (result) {
    image.incomplete |= *result != ErrorCode::ok || chain.cursor.error_count != 0 ||
                        all_errors(chain) > max_format_errors;
  }
  return result;
}

}  // namespace

ErrorCode parse_ifd(ByteCursor cursor, std::uint32_t offset, std::uint32_t parent,
                    std::uint16_t level, std::uint32_t seq, ReadContext& context) {
  const ChainStart start{.offset = offset, .parent = parent, .level = level, .seq = seq};
  return result_of_chain(read_chain(cursor, start, context), context.image);
}

}  // namespace tagmend
