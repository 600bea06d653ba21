// Numbers in stored bytes: TIFF 6.0 stores them in either order, JPEG and IPTC most significant
// byte first. The spans fix the size, so that no access can leave its field.
#pragma once

#include <cstdint>
#include <span>

namespace tagmend {

constexpr std::uint16_t load_u16(std::span<const std::uint8_t, 2> bytes, bool big_endian) {
  const unsigned high = bytes[big_endian ? 0 : 1];
  const unsigned low = bytes[big_endian ? 1 : 0];
  return static_cast<std::uint16_t>(high << 8 | low);
}

constexpr std::uint32_t load_u32(std::span<const std::uint8_t, 4> bytes, bool big_endian) {
  const std::uint32_t first = load_u16(bytes.first<2>(), big_endian);
  const std::uint32_t second = load_u16(bytes.last<2>(), big_endian);
  return big_endian ? first << 16 | second : second << 16 | first;
}

constexpr void store_u16(std::span<std::uint8_t, 2> bytes, std::uint16_t value, bool big_endian) {
  bytes[big_endian ? 0 : 1] = static_cast<std::uint8_t>(value >> 8);
  bytes[big_endian ? 1 : 0] = static_cast<std::uint8_t>(value & 0xFF);
}

constexpr void store_u32(std::span<std::uint8_t, 4> bytes, std::uint32_t value, bool big_endian) {
  const auto high = static_cast<std::uint16_t>(value >> 16);
  const auto low = static_cast<std::uint16_t>(value & 0xFFFF);
  store_u16(bytes.first<2>(), big_endian ? high : low, big_endian);
  store_u16(bytes.last<2>(), big_endian ? low : high, big_endian);
}

/// The next even number at or above `value`: TIFF 6.0 begins values on word boundaries.
template <typename Number>
constexpr Number round_up_even(Number value) {
  return static_cast<Number>(value + (value & 1));
}

}  // namespace tagmend
