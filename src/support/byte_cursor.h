// ByteCursor: a bounded position in a byte buffer, through which every reader and writer of binary
// metadata walks. An access that would leave the buffer is not performed: a message is printed and
// a fixed marker value comes back instead of data. All places are kept as distances from the first
// byte of the buffer, so that no pointer can leave it.
#pragma once

#include <cstdint>
#include <span>

#include "support/error_code.h"
#include "support/mfile.h"
#include "support/tagged_memory.h"

namespace tagmend {

/// File offsets have 32 bits: no cursor reaches what lies behind the first 4 GiB of a file.
inline constexpr std::uint64_t file_offset_end = std::uint64_t{1} << 32;

struct ByteCursor {
  std::uint32_t error_count = 0;   ///< failed reads since the owner last cleared it (but those of
                                   ///< cursor_get_u16_mm)
  MFILE* file = nullptr;           ///< where the buffer was filled from; may be null
  std::uint16_t file_type = 8;     ///< FileType code; JPEG (2) limits offsets to below 65535
  std::uint32_t buf_file_pos = 0;  ///< file offset of the buffer's first byte
  std::span<std::uint8_t> buffer;  ///< the bytes that may be read or written
  std::uint32_t pos = 0;           ///< buffer offset of the next byte; at most the buffer's size
  std::uint32_t segment_len = 0;   ///< length field of the JPEG segment the cursor stands in
  std::int64_t segment_end = 0;    ///< buffer offset one past that segment
  bool big_endian = false;         ///< numbers are stored most significant byte first ("MM")
  std::int64_t offset_base = 0;  ///< buffer offset from which stored offsets count; may be negative

  /// Bytes from the position to the end of the buffer.
  [[nodiscard]] std::span<std::uint8_t> rest() const { return buffer.subspan(pos); }

  /// Whether `count` bytes at the position may be read or written.
  [[nodiscard]] bool has(std::uint64_t count) const { return count <= buffer.size() - pos; }
};

/// What a failed read returns in place of data.
inline constexpr std::uint32_t unreadable_u32 = 0xDEADBEAF;
inline constexpr std::uint16_t unreadable_u16 = 0xDEAD;

/// Sets the cursor up over a buffer whose first byte lies at `file_pos` of `file` (may be null).
/// The byte order is left as it is: every caller sets it.
void cursor_init(ByteCursor& cursor, MFILE* file, std::span<std::uint8_t> buffer,
                 std::uint32_t file_pos);

/// The file offset of the position.
[[nodiscard]] std::uint32_t cursor_tell(const ByteCursor& cursor);

/// The file offset from which the cursor's stored offsets count.
[[nodiscard]] std::int64_t cursor_base_pos(const ByteCursor& cursor);

/// Moves forward by `count` bytes; past the end it prints a message and stands on the last byte.
void cursor_skip(ByteCursor& cursor, std::uint32_t count);

/// Numbers in the cursor's byte order (get_u16_mm and put_u16_mm: most significant byte first). An
/// unreadable one prints "Error: Attempt to read past end of buffer(%d).\n" and gives the marker;
/// one that does not fit prints "Error: Attempt to write past end of buffer(%d), exiting\n".
std::uint32_t cursor_get_u32(ByteCursor& cursor);
std::uint16_t cursor_get_u16(ByteCursor& cursor);
std::uint16_t cursor_get_u16_mm(ByteCursor& cursor);
void cursor_put_u16(ByteCursor& cursor, std::uint16_t value);
void cursor_put_u16_mm(ByteCursor& cursor, std::uint16_t value);
void cursor_put_u32(ByteCursor& cursor, std::uint32_t value);
void cursor_put_bytes(ByteCursor& cursor, std::span<const std::uint8_t> bytes);

/// Places the cursor on a stored offset (counted from offset_base), refilling from the file into
/// `alternate` when it lies outside the buffer (null: no refill possible). Returns ok,
/// end_of_buffer (no alternate), seek_failed, read_failed or invalid_offset (65535 or more in a
/// JPEG).
ErrorCode cursor_seek_offset(ByteCursor& cursor, std::uint32_t offset, WorkBuffer* alternate);

}  // namespace tagmend
