// Whole files, written and read.
#pragma once

#include <cstdio>
#include <string>

#include "common/bytes.h"

namespace tagmend::test {

/// Whether all of it was written.
[[nodiscard]] inline bool write_file(const std::string& path, const Bytes& content) {
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) {
    return false;
  }
  const std::size_t written = std::fwrite(content.data(), 1, content.size(), file);
  return std::fclose(file) == 0 && written == content.size();
}

/// Nothing for a file that does not exist.
inline Bytes file_content(const std::string& path) {
  Bytes content;
  std::FILE* const file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    return content;
  }
  Bytes piece(1U << 16U);
  while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), file)) {
    content.insert(content.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got));
  }
  std::fclose(file);
  return content;
}

}  // namespace tagmend::test
