#include "read/ifd_value.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>

#include "read/decode.h"
#include "read/image_data_tags.h"
#include "read/maker_note.h"
#include "support/message.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

constexpr std::uint32_t tag_make = 0x010F;
constexpr std::uint32_t tag_model = 0x0110;
constexpr std::uint32_t tag_iptc = 0x83BB;
constexpr std::uint32_t tag_photoshop = 0x8649;

const char* long_type_name(std::uint32_t type) {
  return type < type_names.size() ? type_names[type] : "???";
}

const char* short_type_name(std::uint32_t type) {
  return type < type_short_names.size() ? type_short_names[type] : "???";
}

void trace_value(const IfdChain& chain, const StoredEntry& entry, const char* place_name,
                 std::uint32_t place) {
  trace(chain.level,
        "IFD Entry: %s %-15s tag=0x%04x, level=%d, seq=%8x, data_type=%s, count=%d, %s=%d(0%o)\n",
        ifd_kind_names[static_cast<std::size_t>(chain.kind)], entry.row().nickname, entry.tag,
        chain.level, chain.seq, short_type_name(entry.type), entry.count, place_name, place, place);
}

/// Whether a value of the stored type may stand in a field of the row: the same type, or one that
/// differs in sign or width only as the standard or common practice has it.
bool type_fits(const FieldDef& def, DataType stored) {
  struct Accepted {
    DataType defined, stored;
  };
  using enum DataType;
  static constexpr Accepted accepted[] = {
      {short_or_long, unsigned_short},
      {short_or_long, unsigned_long},
      {unsigned_byte, string},
      {string, unsigned_byte},
      {signed_short, unsigned_short},
      {signed_long, unsigned_long},
      {signed_rational, unsigned_rational},
  };
  const bool is_block = def.tag == tag_iptc || def.tag == tag_photoshop;
  return def.data_type == stored ||
         (is_block && (stored == unsigned_byte || stored == undefined)) ||
         std::any_of(std::begin(accepted), std::end(accepted), [&](const Accepted& pair) {
           return pair.defined == def.data_type && pair.stored == stored;
         });
}

/// Notes a value that does not fit its row. What the two containers of other metadata hold is then
/// not read.
void count_misfit(IfdChain& chain, const FieldDef& def, ImageFile& image) {
  ++chain.format_errors;
  image.incomplete |= def.tag == tag_iptc || def.tag == tag_photoshop;
}

void decode_text(IfdChain& chain, StoredEntry& stored, FieldEntry& entry, ReadContext& context) {
  const FieldDef& def = stored.row();
  const StoredValue value{
      .cursor = stored.value, .tag = stored.tag, .type = stored.type, .count = stored.count};
  const char* const file_name = context.image.file_name.data();
  TextBuffer text(entry.text.room);
  if (library_settings.raw_output) {
    decode_basic(value, text);
  } else if (!type_fits(def, DataType{stored.type})) {
    if (stored.def != 0) {
      trace(chain.level,
            "Warning: file %s: Unexpected data type for field '%s' (0x%x), expected %s, actual "
            "%s.\n",
            file_name, def.description, stored.tag,
            long_type_name(static_cast<std::uint32_t>(def.data_type)), long_type_name(stored.type));
      count_misfit(chain, def, context.image);
    }
    decode_generic(value, text);
  } else if (def.count != 0 && def.count != stored.count) {
    trace(chain.level,
          "Warning: file %s - Unexpected data repeat count for field '%s', expected %d, actual "
          "%d\n",
          file_name, def.description, def.count, stored.count);
    count_misfit(chain, def, context.image);
    decode_generic(value, text);
  } else if (def.has_map()) {
    decode_value_map(value, def, context.image.maker_note_kind, text);
  } else {
    decode_by_kind(value, entry, text, context);
  }
}

/// The number that a text begins with; 0 without one.
std::uint32_t leading_number(std::string_view text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return static_cast<std::uint32_t>(number);
}

bool may_hold_thumbnail(IfdKind kind) {
  return kind == IfdKind::thumbnail || kind == IfdKind::nikon_thumbnail ||
         (kind >= IfdKind::tiff_image && kind <= IfdKind::sub_image_4);
}

/// Make and model choose the layout of the maker note. Once its IFD has been read the choice stays:
/// the fields could not be written back under another one.
void choose_maker(ImageFile& image, std::string_view model) {
  std::optional<std::string_view> make;
  for (const FieldEntry& entry : image.table()) {
    if (entry.ifd.parent == tag_maker_note) {
      return;
    }
    if (entry.tag == tag_make && !make) {
      make = entry.text.view();
    }
  }
  image.maker_note_kind = find_maker(make, model);
}

/// What the rest of the read needs to know of a field.
void note_landmark(ImageFile& image, const FieldEntry& entry) {
  const std::string_view text = entry.text.view();
  if (entry.tag == tag_model) {
    choose_maker(image, text);
  } else if (entry.tag == jpeg_stream_pair.offsets_tag && may_hold_thumbnail(entry.kind)) {
    image.thumbnail_offset =
        static_cast<std::uint32_t>(entry.ifd.source_base) + leading_number(text);
  } else if (entry.tag == jpeg_stream_pair.lengths_tag && may_hold_thumbnail(entry.kind)) {
    image.thumbnail_length = leading_number(text);
  }
}

void name_field(FieldEntry& entry) {
  if (entry.def != 0) {
    copy_text(entry.name, field_table_defs[entry.def].description);
  } else {
    std::snprintf(entry.name.data(), entry.name.size(), "Unknown Field 0x%.4x     ", entry.tag);
  }
}

}  // namespace

ErrorCode place_cursor(ByteCursor& cursor, std::uint32_t offset, std::uint64_t needed,
                       WorkBuffer& buffer) {
  const ErrorCode result = cursor_seek_offset(cursor, offset, &buffer);
  const bool whole = cursor.has(std::min<std::uint64_t>(needed, work_buffer_size));
  if (result != ErrorCode::ok || whole || cursor.pos == 0 || cursor.file == nullptr) {
    return result;
  }
  ByteCursor refilled = cursor;
  refilled.buffer = refilled.buffer.first(0);
  refilled.pos = 0;
  if (cursor_seek_offset(refilled, offset, &buffer) == ErrorCode::ok) {
    cursor = refilled;
  }
  return ErrorCode::ok;
}

ErrorCode read_value(IfdChain& chain, StoredEntry& stored, ReadContext& context) {
  ImageFile& image = context.image;
  if (stored.size() > inline_value_length) {
    const std::uint32_t offset = cursor_get_u32(stored.value);
    const ErrorCode result = place_cursor(stored.value, offset, stored.size(), chain.value_buffer);
    if (result != ErrorCode::ok) {
      return result;
    }
  }
  FieldEntry entry;
  entry.kind = chain.kind;
  entry.level = chain.level;
  entry.seq = chain.seq;
  entry.tag = stored.tag;
  entry.def = stored.def;
  entry.value_pos = cursor_tell(stored.value);
  // What follows the metadata is no part of the value, and stays behind when the value moves.
  const std::int64_t end = std::int64_t{entry.value_pos} + static_cast<std::int64_t>(stored.size());
  image.incomplete |= image.metadata_end != 0 && end > image.metadata_end;
  entry.type = stored.type;
  entry.count = stored.count;
  entry.raw = stored.raw;
  entry.ifd = chain.place;
  name_field(entry);
  trace_value(chain, stored, "file_offset", entry.value_pos);
  decode_text(chain, stored, entry, context);
  entry.index = static_cast<std::uint16_t>(image.field_count);
  const ErrorCode result = append_field(image, entry);
  if (entry.def != 0) {
    note_landmark(image, entry);
  }
  chain.cursor.error_count += stored.value.error_count;
  return result;
}

void trace_pointer(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset) {
  trace(0, "\n");
  trace_value(chain, entry, "val_offset", offset);
}

void trace_array(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset) {
  trace(0, "\n");
  trace(chain.level,
        "IFD Entry: %s %-15s tag=0x%04x, level=%d, seq=%8x, data_type=%s, val_offset=%d(0%o)\n",
        ifd_kind_names[static_cast<std::size_t>(chain.kind)], entry.row().nickname, entry.tag,
        chain.level, chain.seq, short_type_name(entry.type), offset, offset);
}

}  // namespace tagmend
