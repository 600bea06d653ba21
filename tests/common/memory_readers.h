// Readers over bytes in memory.
#pragma once

#include <cstdint>

#include "common/bytes.h"
#include "support/byte_cursor.h"
#include "support/mfile.h"

namespace tagmend::test {

/// A file in memory, all of it data. `bytes` outlives it and is not empty.
inline MFileHandle memory_file(Bytes& bytes) {
  return MFileHandle(mfopen_memfile(bytes.data(), size_of(bytes), size_of(bytes)));
}

/// A cursor on the first of `bytes`, which lie at `file_pos` of no file.
inline ByteCursor cursor_over(Bytes& bytes, std::uint32_t file_pos = 0, bool big_endian = false) {
  ByteCursor cursor;
  cursor_init(cursor, nullptr, bytes, file_pos);
  cursor.big_endian = big_endian;
  return cursor;
}

}  // namespace tagmend::test
