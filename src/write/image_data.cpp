#include "write/image_data.h"

#include <algorithm>
#include <cstdlib>

#include "support/byte_order.h"

namespace tagmend {
namespace {

/// Data of an obsolete kind whose tables and lists of free space cannot be moved (TIFF 6.0, section
/// 22 and FreeOffsets).
constexpr bool is_immovable(std::uint32_t tag) {
  return tag == 0x0207 || tag == 0x0208 || tag == 0x0209 || tag == 0x0120;
}

const FieldEntry* find_in_ifd(const ImageFile& image, const FieldEntry& place, std::uint32_t tag) {
  for (const FieldEntry& entry : image.table()) {
    if (entry.ifd.id == place.ifd.id && entry.tag == tag) {
      return &entry;
    }
  }
  return nullptr;
}

/// Whether the partner of an offsets or lengths field stands beside it with the same count.
bool has_partner(const ImageFile& image, const FieldEntry& entry, const ImageDataPair& pair) {
  if (!pair.holds(entry.tag)) {
    return true;
  }
  const bool is_offsets = entry.tag == pair.offsets_tag;
  const FieldEntry* partner =
      find_in_ifd(image, entry, is_offsets ? pair.lengths_tag : pair.offsets_tag);
  return partner != nullptr && partner->count == entry.count;
}

bool can_be_carried(const ImageFile& image, const FieldEntry& entry) {
  if (is_immovable(entry.tag)) {
    return false;
  }
  // A field that stands twice in an IFD leaves open which of them holds.
  if (locates_image_data(entry.tag) &&
      (integer_size(entry) == 0 || find_in_ifd(image, entry, entry.tag) != &entry)) {
    return false;
  }
  for (const ImageDataPair& pair : piece_pairs) {
    if (!has_partner(image, entry, pair)) {
      return false;
    }
  }
  if (!has_partner(image, entry, jpeg_stream_pair)) {
    return false;
  }
  const bool jpeg_field = entry.tag == jpeg_stream_pair.offsets_tag;
  return !jpeg_field || entry.count == 1;
}

/// Where Minolta and Pentax notes have it.
bool locates_preview(const FieldEntry& entry) {
  const bool is_offset = (entry.kind == IfdKind::minolta && entry.tag == 0x0088) ||
                         (entry.kind == IfdKind::pentax && entry.tag == 0x0004);
  return is_offset && !entry.edited && !entry.ifd.display_only && entry.count == 1;
}

}  // namespace

bool is_image_ifd(const FieldEntry& entry) {
  // In maker notes the tags of image data are common numbers.
  const bool in_maker_note =
      entry.ifd.parent == tag_maker_note || entry.ifd.parent == tag_ricoh_info;
  return entry.kind == IfdKind::nikon_thumbnail || !in_maker_note;
}

std::uint32_t integer_size(const FieldEntry& entry) {
  switch (static_cast<DataType>(entry.type)) {
    case DataType::unsigned_short:
    case DataType::signed_short:
      return 2;
    case DataType::unsigned_long:
    case DataType::signed_long:
    case DataType::ifd_offset:
      return 4;
    default:
      return 0;
  }
}

std::uint32_t entry_number(const FieldEntry& entry) {
  const std::span<const std::uint8_t, 4> raw(entry.raw);
  switch (entry.count == 1 ? integer_size(entry) : 0) {
    case 2:
      return load_u16(raw.first<2>(), entry.ifd.big_endian);
    case 4:
      return load_u32(raw, entry.ifd.big_endian);
    default:
      return static_cast<std::uint32_t>(std::strtoull(entry.text.room.data(), nullptr, 10));
  }
}

bool leaves_preview_behind(const ImageFile& image, std::int64_t moved) {
  return std::ranges::any_of(image.table(), [&](const FieldEntry& entry) {
    const std::uint32_t offset = locates_preview(entry) ? entry_number(entry) : 0;
    const std::int64_t place = entry.ifd.source_base + offset;
    return offset != 0 && place >= moved && place < image.identity.size;
  });
}

bool can_carry_image_data(const ImageFile& image) {
  return std::ranges::none_of(image.table(), [&](const FieldEntry& entry) {
    return is_image_ifd(entry) && !can_be_carried(image, entry);
  });
}

}  // namespace tagmend
