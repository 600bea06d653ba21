#include "write/ifd_tree.h"

#include <algorithm>
#include <optional>

namespace tagmend {
namespace {

/// Whether the IFD of `next` follows that of `last` in one chain, or in one array of offsets.
bool continues_chain(const FieldEntry& last, const FieldEntry& next) {
  return next.ifd.parent == last.ifd.parent && next.seq >> 16 == last.seq >> 16 &&
         next.seq > last.seq;
}

/// The pointer to the IFD that usually holds a pointer.
struct UsualParent {
  std::uint32_t pointer;
  std::uint32_t parent;
};
constexpr UsualParent usual_parents[] = {
    {tag_interop_ifd, tag_exif_ifd},
    {tag_maker_note, tag_exif_ifd},
    {tag_nikon_thumbnail, tag_maker_note},
    {tag_ricoh_info, tag_maker_note},
};

/// Id of the IFD at `level` that the entry belongs to or lies in.
std::uint16_t ifd_at(const FieldEntry& entry, std::uint16_t level) {
  return entry.level == level ? entry.ifd.id : entry.ifd.around[level];
}

/// The first entry from `place` on of an IFD at `level`; null when it lost all its own entries.
const FieldEntry* own_entry(std::span<const FieldEntry> table, std::size_t place,
                            std::uint16_t level, std::uint16_t ifd) {
  for (; place < table.size() && table[place].level >= level; ++place) {
    if (table[place].level == level && table[place].ifd.id == ifd) {
      return &table[place];
    }
  }
  return nullptr;
}

}  // namespace

std::uint32_t usual_parent(std::uint32_t pointer) {
  for (const UsualParent& row : usual_parents) {
    if (row.pointer == pointer) {
      return row.parent;
    }
  }
  return tag_sub_ifd;
}

// On the main chain an emptied IFD between two others does not end it.
TableRange chain_range(std::span<const FieldEntry> table, std::size_t begin, std::uint16_t level) {
  std::optional<std::uint16_t> current;
  const FieldEntry* last = nullptr;  // of the current IFD
  std::size_t end = begin;
  for (; end < table.size() && table[end].level >= level; ++end) {
    const std::uint16_t ifd = ifd_at(table[end], level);
    if (ifd == current) {
      continue;
    }
    const FieldEntry* const own = own_entry(table, end, level, ifd);
    const bool goes_on = !current || level == 0 ||
                         (last != nullptr && own != nullptr && continues_chain(*last, *own));
    if (!goes_on) {
      break;
    }
    current = ifd;
    last = own;
  }
  return {begin, end};
}

TableRange first_ifd(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level) {
  std::size_t end = chain.begin;
  while (end < chain.end && ifd_at(table[end], level) == ifd_at(table[chain.begin], level)) {
    ++end;
  }
  return {chain.begin, end};
}

TableRange ifd_at_place(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level,
                        std::uint32_t place) {
  const TableRange ifd = first_ifd(table, chain, level);
  const FieldEntry* const own = first_own_entry(table, ifd, level);
  const bool lies_behind = own != nullptr && (own->seq & 0xFFFF) > place;
  return lies_behind ? TableRange{chain.begin, chain.begin} : ifd;
}

std::uint32_t count_places(std::span<const FieldEntry> table, TableRange chain,
                           std::uint16_t level) {
  std::uint32_t place = 0;
  for (; chain.begin < chain.end; ++place) {
    chain.begin = ifd_at_place(table, chain, level, place).end;
  }
  return place;
}

std::uint32_t count_entries(std::span<const FieldEntry> table, TableRange ifd,
                            std::uint16_t level) {
  std::uint32_t count = 0;
  for (std::size_t place = ifd.begin; place < ifd.end; ++count) {
    const bool own = table[place].level == level;
    place = own ? place + 1
                : std::min(chain_range(table, place, static_cast<std::uint16_t>(level + 1)).end,
                           ifd.end);
  }
  return count;
}

const FieldEntry* first_own_entry(std::span<const FieldEntry> table, TableRange chain,
                                  std::uint16_t level) {
  const auto entries = table.subspan(chain.begin, chain.end - chain.begin);
  const auto own = std::ranges::find(entries, level, &FieldEntry::level);
  return own != entries.end() ? &*own : nullptr;
}

std::uint32_t pointer_tag(std::span<const FieldEntry> table, TableRange chain,
                          std::uint16_t level) {
  if (const FieldEntry* own = first_own_entry(table, chain, level)) {
    return own->ifd.parent;
  }
  const FieldEntry& deeper = table[chain.begin];
  std::uint32_t tag = deeper.ifd.parent;
  for (std::uint16_t depth = deeper.level; depth > level; --depth) {
    tag = usual_parent(tag);
  }
  return tag;
}

}  // namespace tagmend
