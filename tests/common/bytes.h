// Bytes put together by hand: what a test states, it states in these, and never copies from the
// program.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tagmend::test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

/// Bytes from hexadecimal digits; blanks are for the reader.
inline Bytes hex(std::string_view digits) {
  std::string text(digits);
  std::erase(text, ' ');
  Bytes bytes;
  for (std::size_t at = 0; at < text.size(); at += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
  }
  return bytes;
}

inline std::uint32_t size_of(const Bytes& bytes) {
  return static_cast<std::uint32_t>(bytes.size());
}

inline Bytes joined(std::span<const Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}
inline Bytes joined(std::initializer_list<Bytes> parts) {
  return joined(std::span(parts.begin(), parts.size()));
}

/// A text and its NUL.
inline Bytes ascii(std::string_view text) { return joined({bytes_of(text), {0}}); }

/// The bytes cut, or followed by zeros.
inline Bytes cut_at(Bytes bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

inline Bytes part_of(const Bytes& bytes, std::size_t at, std::size_t size) {
  const auto part = std::span(bytes).subspan(at, size);
  return {part.begin(), part.end()};
}

/// Where `wanted` first stands in `bytes`; their size when it does not.
inline std::size_t position_of(const Bytes& bytes, const Bytes& wanted) {
  const auto place = std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end());
  return static_cast<std::size_t>(place - bytes.begin());
}

/// Two hexadecimal digits for each byte.
inline std::string digits_of(std::span<const std::uint8_t> bytes, bool upper_case) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, upper_case ? "%02X" : "%02x", byte);
    text += digits;
  }
  return text;
}

/// `size` bytes that differ from each other and from one `seed` to the next.
inline Bytes noise(std::size_t size, std::uint32_t seed) {
  Bytes bytes(size);
  for (std::uint8_t& byte : bytes) {
    seed = seed * 1664525U + 1013904223U;
    byte = static_cast<std::uint8_t>(seed >> 24U);
  }
  return bytes;
}

/// Writes `size` low bytes of `value` at `at`, growing `out` with zero bytes as needed.
inline void put(Bytes& out, std::size_t at, std::uint32_t value, std::size_t size,
                bool big_endian) {
  if (out.size() < at + size) {
    out.resize(at + size);
  }
  for (std::size_t i = 0; i < size; ++i) {
    const std::size_t shift = 8 * (big_endian ? size - 1 - i : i);
    out[at + i] = static_cast<std::uint8_t>(value >> shift);
  }
}

inline void put(Bytes& out, std::size_t at, const Bytes& bytes) {
  if (out.size() < at + bytes.size()) {
    out.resize(at + bytes.size());
  }
  std::ranges::copy(bytes, out.begin() + static_cast<std::ptrdiff_t>(at));
}

inline Bytes big16(std::uint32_t value) {
  Bytes out;
  put(out, 0, value, 2, true);
  return out;
}

inline Bytes big32(std::uint32_t value) {
  Bytes out;
  put(out, 0, value, 4, true);
  return out;
}

}  // namespace tagmend::test
