// Bytes as a test writes them, readers over bytes in memory, and what is printed.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "common/image_builder.h"
#include "support/byte_cursor.h"
#include "support/mfile.h"

namespace tagmend::test {

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

/// A text and its NUL.
inline Bytes ascii(std::string_view text) { return joined({bytes_of(text), {0}}); }

/// The bytes cut, or followed by zeros.
inline Bytes cut_at(Bytes bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

/// What `action` prints on standard error.
template <typename Action>
std::string errors_of(Action&& action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

/// A file in memory, all of it data. `bytes` outlives it and is not empty.
inline MFileHandle memory_file(Bytes& bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  return MFileHandle(mfopen_memfile(bytes.data(), size, size));
}

/// A cursor on the first of `bytes`, which lie at `file_pos` of no file.
inline ByteCursor cursor_over(Bytes& bytes, std::uint32_t file_pos = 0, bool big_endian = false) {
  ByteCursor cursor;
  cursor_init(cursor, nullptr, bytes, file_pos);
  cursor.big_endian = big_endian;
  return cursor;
}

}  // namespace tagmend::test
