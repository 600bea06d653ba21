// Stored bytes seen as text, and text as the bytes that are stored. Nothing is copied.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tagmend {

using ByteSpan = std::span<const std::uint8_t>;

// char and std::uint8_t may stand for each other; nowhere else are bytes cast.
// NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast)
inline ByteSpan bytes_of(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

inline std::string_view text_of(ByteSpan bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Bytes into which text is to be written.
inline std::span<char> characters_of(std::span<std::uint8_t> bytes) {
  return {reinterpret_cast<char*>(bytes.data()), bytes.size()};
}
// NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)

}  // namespace tagmend
