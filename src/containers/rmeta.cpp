#include "containers/rmeta.h"

#include <algorithm>
#include <string_view>

#include "support/byte_cursor.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "support/tagged_memory.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view signature = "RMETA\0"sv;
constexpr std::string_view character_set = "ASCII\0"sv;

/// The byte order mark, and four bytes of unknown use.
constexpr std::uint32_t order_size = 2;
constexpr std::uint32_t unknown_size = 4;

/// A record ends where the payload has no room for its type and length and any data.
constexpr std::uint32_t record_header_size = 4;

/// The dictionary knows this many names, and as many values.
constexpr std::uint32_t max_texts = 5;

enum RecordType : std::uint16_t { record_charset = 0, record_names = 1, record_values = 2 };

/// Names or values: the tag before the first, and how many have become fields.
struct TextFields {
  std::uint16_t ifd_id;  ///< the block's own, so that no IFD of the EXIF data claims its fields
  std::uint32_t base_tag;
  const char* trace_format;
  std::uint32_t taken = 0;
};

/// The next name or value.
ErrorCode append_custom_field(const TextFields& fields, std::uint32_t value_pos,
                              std::string_view value, ImageFile& image) {
  const std::uint32_t tag = fields.base_tag + fields.taken;
  FieldEntry entry;
  entry.kind = IfdKind::ricoh_custom;
  entry.ifd.id = fields.ifd_id;
  entry.index = static_cast<std::uint16_t>(image.field_count);
  entry.tag = tag;
  entry.def = find_field_by_tag(IfdKind::ricoh_custom, tag, true);
  entry.value_pos = value_pos;
  entry.type = static_cast<std::uint16_t>(DataType::string);
  entry.count = static_cast<std::uint32_t>(value.size());
  copy_text(entry.name, field_table_defs[entry.def].description);
  copy_text(entry.text.room, value);
  return append_field(image, entry);
}

/// Texts one after the other, each with a NUL behind it, up to an empty one. `data_pos` is the file
/// offset of the data. too_many_fields.
ErrorCode take_texts(ByteSpan data, std::uint32_t data_pos, TextFields& fields, ImageFile& image) {
  std::string_view left = text_of(data);
  while (!left.empty() && left.front() != '\0' && fields.taken < max_texts) {
    const std::string_view value = left.substr(0, left.find('\0'));
    ++fields.taken;
    trace(0, fields.trace_format, fields.taken, static_cast<int>(value.size()), value.data());
    const auto distance = static_cast<std::uint32_t>(data.size() - left.size());
    const ErrorCode code = append_custom_field(fields, data_pos + distance, value, image);
    if (code != ErrorCode::ok) {
      return code;
    }
    left.remove_prefix(std::min(value.size() + 1, left.size()));
  }
  return ErrorCode::ok;
}

/// Nothing depends on the character set: it is only traced. The cursor moves behind its number.
void trace_character_set(ByteCursor& cursor) {
  constexpr unsigned ascii_number = 5;
  if (!cursor.has(2)) {
    return;
  }
  const unsigned number = cursor_get_u16(cursor);
  if (number != ascii_number) {
    trace(0, "Unexpected character set length %d (expected %d)", static_cast<int>(number),
          static_cast<int>(ascii_number));
  } else if (text_of(cursor.rest()).starts_with(character_set)) {
    trace(0, "Character set is '%s'\n", character_set.data());
  } else {
    trace(0, "Unexpected character set length '%d' (expected '%s')", static_cast<int>(number),
          character_set.data());
  }
}

void parse_records(ByteCursor cursor, ImageFile& image) {
  const std::uint16_t ifd_id = image.ifd_count++;
  TextFields names = {ifd_id, 0xF5010000, "Field Name  %u = '%.*s'\n"};
  TextFields values = {ifd_id, 0xF5020000, "Field Value %u = '%.*s'\n"};
  ErrorCode code = ErrorCode::ok;
  std::int64_t left = static_cast<std::int64_t>(cursor.rest().size());
  while (left > record_header_size && code == ErrorCode::ok) {
    const std::uint16_t type = cursor_get_u16(cursor);
    const std::uint16_t length = cursor_get_u16(cursor);
    trace(0, "RMETA: Field %d, Length %d\n", type, length);
    // The length counts itself; one that does not even do that stands for no data.
    const std::uint32_t data_length = std::max<std::uint32_t>(length, 2) - 2;
    const ByteSpan rest = cursor.rest();
    const ByteSpan data = rest.first(std::min<std::size_t>(data_length, rest.size()));
    if (type == record_names || type == record_values) {
      code = take_texts(data, cursor_tell(cursor), type == record_names ? names : values, image);
    } else if (type == record_charset) {
      trace_character_set(cursor);
    }
    left = static_cast<std::int64_t>(cursor.rest().size()) - data_length;
    cursor.pos +=
        static_cast<std::uint32_t>(std::min<std::size_t>(data_length, cursor.rest().size()));
  }
  if (left != 0) {
    trace(0, "RMETA: Parsing did not finish exactly at end of block (%d)\n",
          static_cast<int>(left));
  }
  if (names.taken != values.taken) {
    trace(0, "RMETA: Number of field names (%u) does not match number of field values (%u)\n",
          names.taken, values.taken);
  }
}

/// Takes the byte order mark on which the cursor stands; false when it is none.
bool take_byte_order(ByteCursor& cursor) {
  if (!cursor.has(order_size)) {
    return false;
  }
  const ByteSpan mark = cursor.rest().first(order_size);
  if (text_of(mark) == "MM") {
    cursor.big_endian = true;
    trace(0, "RMETA: Byte order is Motorola");
  } else if (text_of(mark) == "II") {
    cursor.big_endian = false;
    trace(0, "RMETA: Byte order is Intel");
  } else {
    print_error("RMETA: Invalid Byte order '0x%02x%02x'\n", mark[0], mark[1]);
    return false;
  }
  cursor_skip(cursor, order_size);
  return true;
}

}  // namespace

void read_rmeta(ReadContext& context, MFILE& file, std::uint32_t length) {
  if (length == 0 || length > work_buffer_size) {
    return;
  }
  const std::int64_t payload_pos = tell_with_message(file);
  const TaggedBytes block = make_tagged_bytes(length, "CB", __LINE__);
  if (block == nullptr) {
    return;
  }
  const std::span payload(block.get(), length);
  const std::size_t got = mfread(payload.data(), 1, payload.size(), file);
  if (got < length) {
    trace(0, "RMETA: APP5 data block too short (%d) to be a Photoshop IPTC data\n",
          static_cast<int>(got));
    return;
  }
  ByteCursor cursor;
  cursor_init(cursor, &file, payload, static_cast<std::uint32_t>(payload_pos));
  cursor.big_endian = true;
  if (!text_of(payload).starts_with(signature)) {
    const std::string_view text = text_of(payload);
    trace(0, "APP5 block ignored, 'RMETA' header missing ('%.*s')\n", static_cast<int>(text.size()),
          text.data());
    return;
  }
  trace(0, "APP5 'RMETA' block found.");
  cursor_skip(cursor, signature.size());
  if (take_byte_order(cursor) && cursor.has(unknown_size)) {
    cursor_skip(cursor, unknown_size);
    parse_records(cursor, context.image);
  }
}

}  // namespace tagmend
