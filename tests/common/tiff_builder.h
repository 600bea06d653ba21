// Builds TIFF data (TIFF 6.0, section 2) from plain descriptions of its IFDs, in two layouts: the
// one that the writer produces (what a test expects), and a scattered one (what a test starts from)
// that has the values before their IFDs, chains last to first and junk between, so that nothing can
// pass by being left where it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "common/bytes.h"

namespace tagmend::test {

using Numbers = std::vector<std::uint32_t>;

/// The field types of TIFF 6.0 that the tests use.
enum Type : std::uint16_t {
  kByte = 1,
  kAscii = 2,
  kShort = 3,
  kLong = 4,
  kRational = 5,
  kUndefined = 7,
  kSignedShort = 8,
  kSignedLong = 9,
  kSignedRational = 10,
};

struct Ifd;

/// One field. The serialisers fill in the numbers of entries that locate an IFD or an image.
struct Entry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  Numbers numbers;          ///< one a byte, SHORT or LONG, two a rational
  std::vector<Ifd> nested;  ///< the IFD that a pointer leads to, or the members of an array
};

/// From where the offsets inside a nested IFD count.
enum class Base {
  parent,  ///< like those of the IFD around it
  start,   ///< from the first byte of the block's header
  inner,   ///< from a TIFF header of its own that follows the block's header
};

struct Ifd {
  std::vector<Entry> entries;
  Bytes thumbnail;            ///< located by the tags 0x0201 and 0x0202
  std::vector<Bytes> images;  ///< strips (0x0111, 0x0117) or tiles (0x0144, 0x0145)
  Bytes header;               ///< bytes in front of the IFD (maker notes)
  Base base = Base::parent;
  bool own_order = false;  ///< the byte order is `big_endian`, not that of the IFD around
  bool big_endian = false;
};

inline Entry text(std::uint16_t tag, std::string_view value) {
  Entry entry{tag, kAscii, Numbers(value.begin(), value.end()), {}};
  entry.numbers.push_back(0);
  return entry;
}
inline Entry shorts(std::uint16_t tag, Numbers values) {
  return {tag, kShort, std::move(values), {}};
}
inline Entry longs(std::uint16_t tag, Numbers values) {
  return {tag, kLong, std::move(values), {}};
}
inline Entry rationals(std::uint16_t tag, Numbers values) {
  return {tag, kRational, std::move(values), {}};
}
inline Entry octets(std::uint16_t tag, Type type, std::string_view value) {
  Entry entry{tag, type, {}, {}};
  for (const char c : value) {
    entry.numbers.push_back(static_cast<std::uint8_t>(c));
  }
  return entry;
}
inline Entry octets(std::uint16_t tag, Type type, const Bytes& value) {
  return {tag, type, Numbers(value.begin(), value.end()), {}};
}
inline Ifd ifd_of(std::vector<Entry> entries) {
  Ifd ifd;
  ifd.entries = std::move(entries);
  return ifd;
}
/// A pointer to an array of IFDs, or to a single one.
inline Entry pointer(std::uint16_t tag, std::vector<Ifd> nested) {
  return {tag, kLong, {}, std::move(nested)};
}
inline Entry pointer(std::uint16_t tag, std::vector<Entry> entries) {
  return {tag, kLong, {}, {ifd_of(std::move(entries))}};
}
/// A maker note that is itself an IFD.
inline Entry maker_note(Ifd ifd) { return {0x927C, kUndefined, {}, {std::move(ifd)}}; }
/// The offsets or sizes of the IFD's own image data; the serialiser knows the numbers.
inline Entry image_locator(std::uint16_t tag, Type type) { return {tag, type, {}, {}}; }

inline Entry* find(Ifd& ifd, std::uint16_t tag) {
  for (Entry& entry : ifd.entries) {
    if (entry.tag == tag) {
      return &entry;
    }
  }
  return nullptr;
}

/// The first IFD behind the pointer `tag` of `ifd`.
inline Ifd& nested(Ifd& ifd, std::uint16_t tag) { return find(ifd, tag)->nested.at(0); }

/// Replaces the entry of the same tag or inserts in ascending order of tags.
inline void set(Ifd& ifd, Entry entry) {
  if (Entry* const old = find(ifd, entry.tag)) {
    *old = std::move(entry);
    return;
  }
  auto place = ifd.entries.begin();
  while (place != ifd.entries.end() && place->tag < entry.tag) {
    ++place;
  }
  ifd.entries.insert(place, std::move(entry));
}

inline void set(Ifd& ifd, const std::vector<Entry>& entries) {
  for (const Entry& entry : entries) {
    set(ifd, entry);
  }
}

inline void drop(Ifd& ifd, std::uint16_t tag) {
  std::erase_if(ifd.entries, [tag](const Entry& entry) { return entry.tag == tag; });
}

namespace layout {

inline std::size_t type_size(std::uint16_t type) {
  switch (type) {
    case kShort:
    case kSignedShort:
      return 2;
    case kLong:
    case kSignedLong:
      return 4;
    case kRational:
    case kSignedRational:
      return 8;
    default:
      return 1;
  }
}

inline std::size_t number_size(std::uint16_t type) {
  const std::size_t size = type_size(type);
  return size == 8 ? 4 : size;
}

inline Bytes value_bytes(const Entry& entry, bool big_endian) {
  Bytes out;
  const std::size_t size = number_size(entry.type);
  for (const std::uint32_t number : entry.numbers) {
    put(out, out.size(), number, size, big_endian);
  }
  return out;
}

inline bool locates_thumbnail(const Ifd& ifd, const Entry& entry) {
  return !ifd.thumbnail.empty() && (entry.tag == 0x0201 || entry.tag == 0x0202);
}
inline bool holds_image_offsets(const Ifd& ifd, const Entry& entry) {
  return !ifd.images.empty() && (entry.tag == 0x0111 || entry.tag == 0x0144);
}
inline bool holds_image_sizes(const Ifd& ifd, const Entry& entry) {
  return !ifd.images.empty() && (entry.tag == 0x0117 || entry.tag == 0x0145);
}

/// A value with the numbers that only the serialiser knows: sizes now, offsets later.
inline Entry completed(const Ifd& ifd, const Entry& entry) {
  Entry out = entry;
  if (locates_thumbnail(ifd, entry)) {
    out.numbers = {entry.tag == 0x0202 ? size_of(ifd.thumbnail) : 0};
  } else if (holds_image_offsets(ifd, entry)) {
    out.numbers.assign(ifd.images.size(), 0);
  } else if (holds_image_sizes(ifd, entry)) {
    out.numbers.clear();
    for (const Bytes& image : ifd.images) {
      out.numbers.push_back(size_of(image));
    }
  }
  return out;
}

/// The block that an IFD belongs to.
struct Place {
  Bytes* out;
  std::size_t base;  ///< position from which offsets count
  bool big_endian;
  bool scattered;

  [[nodiscard]] std::uint32_t offset(std::size_t position) const {
    return static_cast<std::uint32_t>(position - base);
  }
};

inline std::size_t even(std::size_t position) { return position + position % 2; }

inline std::size_t table_size(const Ifd& ifd) { return 2 + 12 * ifd.entries.size() + 4; }

/// Tag, type and count of the entry at `at`.
inline void put_entry_head(Bytes& out, std::size_t at, const Entry& entry, std::size_t count,
                           bool big_endian) {
  put(out, at, entry.tag, 2, big_endian);
  put(out, at + 2, entry.type, 2, big_endian);
  put(out, at + 4, static_cast<std::uint32_t>(count), 4, big_endian);
}

inline Bytes tiff_header(bool big_endian) {
  Bytes out = bytes_of(big_endian ? "MM" : "II");
  put(out, 2, 42, 2, big_endian);
  put(out, 4, 8, 4, big_endian);
  return out;
}

/// Appends bytes at an even place, in scattered data behind junk, and returns their position.
inline std::size_t append(const Place& place, const Bytes& bytes) {
  Bytes& out = *place.out;
  out.resize(even(out.size()), place.scattered ? 0xA5 : 0);
  if (place.scattered) {
    out.insert(out.end(), {0xA5, 0x5A});
  }
  const std::size_t at = out.size();
  put(out, at, bytes);
  return at;
}

inline std::size_t append_ifd(const Place& around, const Ifd& ifd);

/// Appends what a pointer leads to; returns its value. An array stands before its members, in
/// scattered data behind them. `length` becomes that of the last member.
inline Bytes append_nested(const Place& place, const Entry& entry, std::size_t& length) {
  const bool array_first = entry.nested.size() > 1 && !place.scattered;
  const std::size_t array_at = array_first ? append(place, Bytes(4 * entry.nested.size())) : 0;
  Bytes offsets;
  for (const Ifd& member : entry.nested) {
    const std::size_t at = append_ifd(place, member);
    length = place.out->size() - at;
    put(offsets, offsets.size(), place.offset(at), 4, place.big_endian);
  }
  if (!array_first) {
    return offsets;
  }
  put(*place.out, array_at, offsets);
  Bytes array_offset;
  put(array_offset, 0, place.offset(array_at), 4, place.big_endian);
  return array_offset;
}

/// Appends an IFD with everything that it refers to and returns the position of its header (or,
/// without one, of its table). The writer puts the table first, then the values in entry order with
/// nested IFDs among them, the thumbnail and the strips. Scattered, the values come last to first
/// and the table behind it all; blocks with a base of their own are as the writer makes them.
inline std::size_t append_ifd(const Place& around, const Ifd& ifd) {
  Place place = around;
  place.big_endian = ifd.own_order ? ifd.big_endian : around.big_endian;
  place.scattered = around.scattered && ifd.base == Base::parent;
  const bool big = place.big_endian;
  const std::size_t count = ifd.entries.size();
  Bytes block = ifd.base == Base::inner ? joined({ifd.header, tiff_header(big)}) : ifd.header;
  const std::size_t table_at = block.size();
  block.resize(table_at + table_size(ifd));
  put(block, table_at, static_cast<std::uint32_t>(count), 2, big);
  const std::size_t start = place.scattered ? 0 : append(around, block);
  if (ifd.base != Base::parent) {
    place.base = start + (ifd.base == Base::inner ? ifd.header.size() : 0);
  }
  std::size_t thumbnail_at = 0;
  Bytes* offsets = nullptr;  ///< what holds the offsets of the images, and where
  std::size_t offsets_at = 0;
  std::size_t offset_size = 0;
  for (std::size_t turn = 0; turn < count; ++turn) {
    const std::size_t i = place.scattered ? count - 1 - turn : turn;
    const Entry entry = completed(ifd, ifd.entries[i]);
    const std::size_t at = table_at + 2 + 12 * i;
    Bytes value = value_bytes(entry, big);
    std::size_t values = value.size() / type_size(entry.type);
    if (!entry.nested.empty()) {
      std::size_t length = 0;
      value = append_nested(place, entry, length);
      values = entry.type == kUndefined ? length : entry.nested.size();
    }
    put_entry_head(block, at, entry, values, big);
    Bytes* holder = &block;
    std::size_t value_at = at + 8;
    if (value.size() > 4) {
      holder = place.out;
      value_at = append(place, value);
      put(block, at + 8, place.offset(value_at), 4, big);
    } else {
      put(block, value_at, value);
    }
    if (holds_image_offsets(ifd, entry)) {
      offsets = holder;
      offsets_at = value_at;
      offset_size = type_size(entry.type);
    } else if (entry.tag == 0x0201 && locates_thumbnail(ifd, entry)) {
      thumbnail_at = value_at;
    }
  }
  if (thumbnail_at != 0) {
    put(block, thumbnail_at, place.offset(append(place, ifd.thumbnail)), 4, big);
  }
  for (std::size_t i = 0; offsets != nullptr && i < ifd.images.size(); ++i) {
    const std::uint32_t offset = place.offset(append(place, ifd.images[i]));
    put(*offsets, offsets_at + i * offset_size, offset, offset_size, big);
  }
  if (place.scattered) {
    return append(place, block);
  }
  put(*place.out, start, block);
  place.out->resize(even(place.out->size()));
  return start;
}

inline Bytes tiff(bool big_endian, const std::vector<Ifd>& chain, bool scattered) {
  Bytes out = tiff_header(big_endian);
  const Place place{&out, 0, big_endian, scattered};
  std::vector<std::uint32_t> positions(chain.size());
  for (std::size_t turn = 0; turn < chain.size(); ++turn) {
    const std::size_t i = scattered ? chain.size() - 1 - turn : turn;
    positions[i] = place.offset(append_ifd(place, chain[i]));
  }
  std::size_t link = 4;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    put(out, link, positions[i], 4, big_endian);
    link = positions[i] + table_size(chain[i]) - 4;
  }
  return out;
}

}  // namespace layout

/// TIFF data in the layout that the writer produces.
inline Bytes written_tiff(bool big_endian, const std::vector<Ifd>& chain) {
  return layout::tiff(big_endian, chain, false);
}

/// The same content in the scattered layout of a source file.
inline Bytes scattered_tiff(bool big_endian, const std::vector<Ifd>& chain) {
  return layout::tiff(big_endian, chain, true);
}

}  // namespace tagmend::test
