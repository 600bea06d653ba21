#include "iptc/iptc_decode.h"

#include <algorithm>
#include <array>

#include "iptc/app13_format.h"
#include "support/byte_text.h"
#include "support/message.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// Characters that the text of a value made of numbers may have.
constexpr std::size_t number_text_limit = 2000;

/// The number in the first bytes of a value, at most `width` of them.
std::uint32_t leading_number(ByteSpan value, std::size_t width) {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : value.first(std::min(width, value.size()))) {
    number = number << 8 | byte;
  }
  return number;
}

std::size_t number_width(DatasetType type) {
  switch (type) {
    case DatasetType::number16:
      return 2;
    case DatasetType::number32:
      return 4;
    default:
      return 1;
  }
}

/// A value by its type alone.
ByteSpan plain_text(const IptcDatasetDef& def, ByteSpan value, TextBuffer& text) {
  switch (def.type) {
    case DatasetType::number16:
    case DatasetType::number32: {
      const std::uint32_t number = leading_number(value, number_width(def.type));
      append_format(text, "%d", static_cast<int>(number));
      return bytes_of(text.text());
    }
    case DatasetType::bytes:
      for (std::size_t i = 0; i < value.size() && !text.full(); ++i) {
        append_format(text, i == 0 ? "%d" : " %d", value[i]);
      }
      return bytes_of(text.text());
    default:
      return value;
  }
}

/// The name of a value of a row with a map.
ByteSpan mapped_text(const IptcDatasetDef& def, ByteSpan value, TextBuffer& text) {
  if (def.value_map_bytes != nullptr) {
    const ValueMapBytesEntry* entry = map_find_bytes(def.value_map_bytes, 0, value);
    return bytes_of(entry != nullptr ? entry->description : "Unknown value");
  }
  const std::uint32_t number = leading_number(value, number_width(def.type));
  if (const ValueMapEntry* entry = map_find_value(def.value_map, 0, number)) {
    return bytes_of(entry->description);
  }
  append_format(text, "%d", static_cast<int>(number));
  return bytes_of(text.text());
}

/// CCYYMMDD as CCYY/MM/DD.
ByteSpan date_text(ByteSpan value, TextBuffer& text) {
  const std::string_view date = text_of(value.first(8));
  append(text, date.substr(0, 4));
  append(text, "/");
  append(text, date.substr(4, 2));
  append(text, "/");
  append(text, date.substr(6, 2));
  return bytes_of(text.text());
}

/// The text of a value, in the IPTC character set: the value itself, a constant, or made in `text`.
ByteSpan display_text(const IptcDatasetDef& def, ByteSpan value, TextBuffer& text) {
  if (value.empty()) {
    return value;
  }
  if (!library_settings.raw_output) {
    if (def.value_map != nullptr || def.value_map_bytes != nullptr) {
      return mapped_text(def, value, text);
    }
    // A shorter date cannot be taken apart and is shown as it is.
    if (def.type == DatasetType::date && value.size() >= 8) {
      return date_text(value, text);
    }
  }
  return plain_text(def, value, text);
}

/// Adds the dataset whose mark has just been read; at least its header is in the buffer.
ErrorCode add_dataset(IptcStore& store, ByteCursor& cursor, std::uint16_t mark, IptcEntry& entry) {
  entry.record = mark & 0xFF;
  entry.dataset = cursor.rest().front();
  cursor_skip(cursor, 1);
  entry.length = cursor_get_u16(cursor);
  entry.row = find_dataset_by_number(entry.record, entry.dataset);
  const IptcDatasetDef& def = iptc_datasets[entry.row];
  if (!cursor.has(entry.length)) {
    print_warning("Warning: IPTC Field %s long than remaining data length, truncating\n",
                  def.nickname);
    entry.length = static_cast<std::uint16_t>(cursor.rest().size());
    store.incomplete = true;
  }
  entry.file_pos = cursor_tell(cursor);

  std::array<char, number_text_limit + 1> room;
  TextBuffer text(room);
  const ByteSpan shown = display_text(def, cursor.rest().first(entry.length), text);
  cursor_skip(cursor, entry.length);
  trace(0, "IPTC: Mark=%4x, Field=%d:%d, Name=%.*s, Len=%d, Rem=%d\n", mark, entry.record,
        entry.dataset, static_cast<int>(shown.size()), text_of(shown).data(), entry.length,
        static_cast<int>(cursor.rest().size()));
  return add_iptc_entry(store, entry, shown);
}

}  // namespace

ErrorCode decode_datasets(IptcStore& store, ByteCursor cursor, std::string_view resource_name) {
  IptcEntry entry;
  entry.resource = resource_iptc;
  set_resource_name(entry, resource_name);
  cursor.big_endian = true;
  while (cursor.has(dataset_header_size)) {
    const std::uint16_t mark = cursor_get_u16(cursor);
    if (mark >> 8 == dataset_marker) {
      const ErrorCode result = add_dataset(store, cursor, mark, entry);
      if (result != ErrorCode::ok) {
        return result;
      }
    } else if (mark == 0) {
      trace(0, "IPTC: field mark of 0x0000 ignored");
      break;
    } else {
      print_warning("Warning: IPTC Caption field mark missing (%x)\n", mark);
      store.incomplete = true;
    }
  }
  // Zeros are the padding of writers; anything else would be lost when the block is written anew.
  const std::span<const std::uint8_t> rest = cursor.rest();
  if (std::any_of(rest.begin(), rest.end(), [](std::uint8_t byte) { return byte != 0; })) {
    store.incomplete = true;
  }
  return ErrorCode::ok;
}

}  // namespace tagmend
