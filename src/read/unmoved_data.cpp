#include "read/unmoved_data.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "read/ifd_value.h"
#include "read/image_data_tags.h"
#include "support/byte_order.h"

namespace tagmend {
namespace {

constexpr std::uint32_t tag_global_parameters = 0x0190;  // RFC 3949
constexpr std::uint32_t tag_private_data = 0xC634;       // DNG; some writers store but an offset
constexpr std::uint32_t tag_camera_profiles = 0xC6F5;    // DNG

/// Lengths of what makers put in front of the IFD of a note.
constexpr std::array<std::size_t, 5> usual_prefixes = {0, 6, 8, 10, 12};

/// Any IFD of type 13 (TIFF Technical Note 1), and what fields of the main chain locate.
bool locates_unread(const IfdChain& chain, const StoredEntry& entry) {
  if (entry.count == 0 || locates_image_data(entry.tag)) {
    return false;
  }
  if (entry.type == static_cast<std::uint16_t>(DataType::ifd_offset)) {
    return true;
  }
  const bool is_offset = entry.size() == inline_value_length;
  return chain.level == 0 &&
         (entry.tag == tag_global_parameters || entry.tag == tag_camera_profiles ||
          (entry.tag == tag_private_data && is_offset));
}

/// The lowest of the offsets by which an IFD behind `prefix` bytes of a maker note tells where its
/// values lie; nothing when no IFD with such values fits in there.
std::optional<std::uint32_t> lowest_offset(std::span<const std::uint8_t> note, std::size_t prefix,
                                           bool big_endian) {
  constexpr std::size_t entry_length = 12;
  if (note.size() < prefix + 2) {
    return std::nullopt;
  }
  const std::size_t count = load_u16(note.subspan(prefix).first<2>(), big_endian);
  if (note.size() < prefix + 2 + count * entry_length) {
    return std::nullopt;
  }
  std::optional<std::uint32_t> lowest;
  for (std::size_t i = 0; i < count; ++i) {
    const auto entry = note.subspan(prefix + 2 + i * entry_length, entry_length);
    const std::uint16_t type = load_u16(entry.subspan<2, 2>(), big_endian);
    if (!is_stored_type(type)) {
      return std::nullopt;
    }
    if (value_size(type, load_u32(entry.subspan<4, 4>(), big_endian)) > inline_value_length) {
      const std::uint32_t offset = load_u32(entry.subspan<8, 4>(), big_endian);
      lowest = std::min(lowest.value_or(offset), offset);
    }
  }
  return lowest;
}

/// Whether a maker note of no known layout looks like an IFD whose offsets count from the base of
/// the enclosing EXIF data: once moved, it misses its values, which stand behind the directory.
/// Offsets from the note's own start would begin lower.
bool is_bound_note(IfdChain& chain, const StoredEntry& entry) {
  if (entry.tag != tag_maker_note || entry.size() <= inline_value_length) {
    return false;
  }
  ByteCursor cursor = entry.value;
  const std::uint32_t offset = cursor_get_u32(cursor);
  if (place_cursor(cursor, offset, entry.size(), chain.value_buffer) != ErrorCode::ok) {
    return false;
  }
  const auto rest = cursor.rest();
  const auto note = rest.first(std::min<std::uint64_t>(entry.size(), rest.size()));
  return std::ranges::any_of(usual_prefixes, [&](std::size_t prefix) {
    const auto lowest = lowest_offset(note, prefix, cursor.big_endian);
    return lowest && *lowest > offset && *lowest - offset < note.size();
  });
}

}  // namespace

bool leads_to_unmoved_data(IfdChain& chain, const StoredEntry& entry) {
  return locates_unread(chain, entry) || is_bound_note(chain, entry);
}

}  // namespace tagmend
