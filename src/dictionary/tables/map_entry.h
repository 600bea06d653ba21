// Helpers with which value maps are written down as constant rows. A row of the first form is a
// plain {layout, value, "description", "nickname", "short code"}.
#pragma once

#include <cstdint>

#include "dictionary/value_map.h"

namespace tagmend::tables {

inline constexpr ValueMapEntry map_end{};
inline constexpr ValueMapBytesEntry bytes_map_end{};

template <std::uint8_t... values>
inline constexpr std::uint8_t stored_bytes[] = {values...};

/// A row of the second form, for the bytes that are stored: bytes<'N', 0>("North", "north", "n").
template <std::uint8_t... values>
constexpr ValueMapBytesEntry bytes(const char* description, const char* nickname,
                                   const char* short_code) {
  return {0, sizeof...(values), stored_bytes<values...>, description, nickname, short_code};
}

/// Either form of value map, or none.
struct MapRef {
  const ValueMapEntry* values = nullptr;
  const ValueMapBytesEntry* bytes = nullptr;

  constexpr MapRef() = default;
  constexpr MapRef(const ValueMapEntry* map) : values(map) {}
  constexpr MapRef(const ValueMapBytesEntry* map) : bytes(map) {}
};

}  // namespace tagmend::tables
