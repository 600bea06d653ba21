#include "write/ifd_tree.h"

#include <algorithm>
#include <optional>

namespace tagmend {
namespace {

// Whether the IFD of `next` follows that of `last` in one chain, or in one array of offsets. On the
// main chain an emptied IFD between the two is passed over.
bool continues_chain(const FieldEntry& last, const FieldEntry& next) {
  if (next.level == 0) {
    return true;
  }
  return next.ifd.parent == last.ifd.parent && next.seq >> 16 == last.seq >> 16 &&
         next.seq > last.seq;
}

/// The IFD that usually holds a pointer, for pointers whose own IFD has no other entry left.
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

std::uint32_t usual_parent(std::uint32_t pointer) {
  for (const UsualParent& row : usual_parents) {
    if (row.pointer == pointer) {
      return row.parent;
    }
  }
  return tag_sub_ifd;
}

}  // namespace

TableRange chain_range(std::span<const FieldEntry> table, std::size_t begin, std::uint16_t level) {
  std::optional<std::size_t> last;
  std::size_t end = begin;
  for (; end < table.size() && table[end].level >= level; ++end) {
    if (table[end].level != level) {
      continue;
    }
    if (last && table[end].ifd.id != table[*last].ifd.id &&
        !continues_chain(table[*last], table[end])) {
      break;
    }
    last = end;
  }
  return {begin, end};
}

TableRange first_ifd(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level) {
  std::optional<std::size_t> last;
  for (std::size_t place = chain.begin; place < chain.end; ++place) {
    if (table[place].level != level) {
      continue;
    }
    if (last && table[place].ifd.id != table[*last].ifd.id) {
      return {chain.begin, place};
    }
    last = place;
  }
  return chain;
}

std::uint32_t count_ifds(std::span<const FieldEntry> table, TableRange chain, std::uint16_t level) {
  std::uint32_t count = 0;
  while (chain.begin < chain.end) {
    chain.begin = first_ifd(table, chain, level).end;
    ++count;
  }
  return count;
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
