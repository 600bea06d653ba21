// Value maps: the fixed values of a field, each with the names by which users type and see it.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tagmend {

/// One value of a field that holds one number. A map ends with an entry whose nickname is null.
struct ValueMapEntry {
  std::uint32_t layout;     ///< the maker-note layout for which alone it holds; 0 for all
  std::uint32_t value;      ///< the number stored
  const char* description;  ///< display text
  const char* nickname;     ///< name to type
  const char* short_code;   ///< shorter name to type
};

/// One value of a field that holds several bytes.
struct ValueMapBytesEntry {
  std::uint32_t layout;
  std::uint32_t length;       ///< how many bytes
  const std::uint8_t* bytes;  ///< exactly what is stored
  const char* description;
  const char* nickname;
  const char* short_code;
};

/// Accepts entries of every layout.
inline constexpr std::uint32_t any_layout = 34;

/// The first entry whose nickname, short code or description equals `text` (whole, ignoring ASCII
/// case) and that holds for the layout; null when there is none.
const ValueMapEntry* map_lookup(const ValueMapEntry* map, std::uint32_t layout,
                                std::string_view text);
const ValueMapBytesEntry* map_lookup_bytes(const ValueMapBytesEntry* map, std::uint32_t layout,
                                           std::string_view text);

/// The first entry for a stored value. Layout 0 takes only entries that hold for all layouts, 34
/// any entry, another layout its own entries and those for all.
const ValueMapEntry* map_find_value(const ValueMapEntry* map, std::uint32_t layout,
                                    std::uint32_t value);
const ValueMapBytesEntry* map_find_bytes(const ValueMapBytesEntry* map, std::uint32_t layout,
                                         std::span<const std::uint8_t> bytes);

}  // namespace tagmend
