#include "dictionary/value_map.h"

#include <algorithm>

#include "support/ascii.h"

namespace tagmend {
namespace {

/// Whether an entry holds in a file of the requested layout.
constexpr bool holds_for(std::uint32_t entry_layout, std::uint32_t requested) {
  return requested == any_layout || entry_layout == requested || entry_layout == 0;
}

/// The first entry before the end entry that `accept` takes; null when there is none.
template <class Entry, class Accept>
const Entry* find_entry(const Entry* map, Accept accept) {
  for (const Entry* entry = map; entry && entry->nickname; ++entry) {
    if (accept(*entry)) {
      return entry;
    }
  }
  return nullptr;
}

template <class Entry>
const Entry* lookup_text(const Entry* map, std::uint32_t layout, std::string_view text) {
  return find_entry(map, [&](const Entry& entry) {
    return holds_for(entry.layout, layout) && (equal_ignoring_case(text, entry.nickname) ||
                                               equal_ignoring_case(text, entry.short_code) ||
                                               equal_ignoring_case(text, entry.description));
  });
}

}  // namespace

const ValueMapEntry* map_lookup(const ValueMapEntry* map, std::uint32_t layout,
                                std::string_view text) {
  return lookup_text(map, layout, text);
}

const ValueMapBytesEntry* map_lookup_bytes(const ValueMapBytesEntry* map, std::uint32_t layout,
                                           std::string_view text) {
  return lookup_text(map, layout, text);
}

const ValueMapEntry* map_find_value(const ValueMapEntry* map, std::uint32_t layout,
                                    std::uint32_t value) {
  return find_entry(map, [&](const ValueMapEntry& entry) {
    return entry.value == value && holds_for(entry.layout, layout);
  });
}

const ValueMapBytesEntry* map_find_bytes(const ValueMapBytesEntry* map, std::uint32_t layout,
                                         std::span<const std::uint8_t> bytes) {
  return find_entry(map, [&](const ValueMapBytesEntry& entry) {
    return std::equal(bytes.begin(), bytes.end(), entry.bytes, entry.bytes + entry.length) &&
           holds_for(entry.layout, layout);
  });
}

}  // namespace tagmend
