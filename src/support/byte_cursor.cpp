#include "support/byte_cursor.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "support/byte_order.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// The numbers by which the messages tell the operations apart.
enum class Place : int {
  skip = 435,
  get_u32 = 449,
  get_u16_mm = 484,
  get_u16 = 505,
  put_u16 = 3099,
  put_u16_mm = 3126,
  put_u32 = 3144,
  put_bytes = 3177,
};

/// File type of the offsets that a segment length bounds (FileType::jpeg; named by a higher layer).
constexpr std::uint16_t jpeg_file_type = 2;

/// No offset inside a JPEG segment reaches its longest length (ITU-T T.81, B.1.1.4).
constexpr std::uint32_t jpeg_offset_limit = 65535;

bool may_read(const ByteCursor& cursor, std::size_t count, Place place) {
  if (!cursor.has(count)) {
    print_error("Error: Attempt to read past end of buffer(%d).\n", static_cast<int>(place));
    return false;
  }
  return true;
}

bool may_write(const ByteCursor& cursor, std::size_t count, Place place) {
  if (!cursor.has(count)) {
    print_error("Error: Attempt to write past end of buffer(%d), exiting\n",
                static_cast<int>(place));
    return false;
  }
  return true;
}

void stand_on_last_byte(ByteCursor& cursor) {
  cursor.pos = cursor.buffer.empty() ? 0 : static_cast<std::uint32_t>(cursor.buffer.size() - 1);
}

/// The next bytes, which the caller has tested for; moves behind them.
template <std::size_t count>
std::span<std::uint8_t, count> take(ByteCursor& cursor) {
  const auto bytes = cursor.rest().first<count>();
  cursor.pos += static_cast<std::uint32_t>(count);
  return bytes;
}

/// Reads the file from `file_offset` on into `area` and makes that the cursor's buffer, with the
/// target as its first byte. A failure leaves the cursor in the buffer that it had.
ErrorCode refill(ByteCursor& cursor, std::uint32_t offset, std::int64_t file_offset,
                 std::span<std::uint8_t> area) {
  if (cursor.file == nullptr || file_offset < 0 ||
      static_cast<std::uint64_t>(file_offset) >= file_offset_end ||
      mfseek(*cursor.file, file_offset, Whence::start) != 0) {
    return ErrorCode::seek_failed;
  }
  errno = 0;
  const std::uint64_t reachable = file_offset_end - static_cast<std::uint64_t>(file_offset);
  const std::size_t wanted = std::min<std::uint64_t>(area.size(), reachable);
  const std::size_t got = mfread(area.data(), 1, wanted, *cursor.file);
  if (got == 0) {
    print_error("Can't read context data: %s\n", std::strerror(errno));
    return ErrorCode::read_failed;
  }
  // Only bytes of the file may be taken for data: the buffer ends where the file does.
  cursor.buffer = area.first(got);
  cursor.pos = 0;
  cursor.segment_end += static_cast<std::int64_t>(cursor.buf_file_pos) - file_offset;
  cursor.offset_base = -static_cast<std::int64_t>(offset);
  cursor.buf_file_pos = static_cast<std::uint32_t>(file_offset);
  return ErrorCode::ok;
}

}  // namespace

void cursor_init(ByteCursor& cursor, MFILE* file, std::span<std::uint8_t> buffer,
                 std::uint32_t file_pos) {
  cursor.error_count = 0;
  cursor.file = file;
  cursor.file_type = ByteCursor{}.file_type;
  cursor.buf_file_pos = file_pos;
  cursor.buffer = buffer;
  cursor.pos = 0;
  cursor.offset_base = 0;
}

std::uint32_t cursor_tell(const ByteCursor& cursor) { return cursor.buf_file_pos + cursor.pos; }

std::int64_t cursor_base_pos(const ByteCursor& cursor) {
  return cursor.buf_file_pos + cursor.offset_base;
}

void cursor_skip(ByteCursor& cursor, std::uint32_t count) {
  if (!cursor.has(count)) {
    print_error("Error: Attempt to skip past end of buffer(%d,%d), exiting\n",
                static_cast<int>(count), static_cast<int>(Place::skip));
    stand_on_last_byte(cursor);
    return;
  }
  cursor.pos += count;
}

std::uint32_t cursor_get_u32(ByteCursor& cursor) {
  if (!may_read(cursor, 4, Place::get_u32)) {
    stand_on_last_byte(cursor);
    ++cursor.error_count;
    return unreadable_u32;
  }
  return load_u32(take<4>(cursor), cursor.big_endian);
}

std::uint16_t cursor_get_u16(ByteCursor& cursor) {
  if (!may_read(cursor, 2, Place::get_u16)) {
    ++cursor.error_count;
    return unreadable_u16;
  }
  return load_u16(take<2>(cursor), cursor.big_endian);
}

std::uint16_t cursor_get_u16_mm(ByteCursor& cursor) {
  if (!may_read(cursor, 2, Place::get_u16_mm)) {
    return unreadable_u16;
  }
  return load_u16(take<2>(cursor), true);
}

void cursor_put_u16(ByteCursor& cursor, std::uint16_t value) {
  if (may_write(cursor, 2, Place::put_u16)) {
    store_u16(take<2>(cursor), value, cursor.big_endian);
  }
}

void cursor_put_u16_mm(ByteCursor& cursor, std::uint16_t value) {
  if (may_write(cursor, 2, Place::put_u16_mm)) {
    store_u16(take<2>(cursor), value, true);
  }
}

void cursor_put_u32(ByteCursor& cursor, std::uint32_t value) {
  if (may_write(cursor, 4, Place::put_u32)) {
    store_u32(take<4>(cursor), value, cursor.big_endian);
  }
}

void cursor_put_bytes(ByteCursor& cursor, std::span<const std::uint8_t> bytes) {
  if (may_write(cursor, bytes.size(), Place::put_bytes)) {
    std::ranges::copy(bytes, cursor.rest().begin());
    cursor.pos += static_cast<std::uint32_t>(bytes.size());
  }
}

ErrorCode cursor_seek_offset(ByteCursor& cursor, std::uint32_t offset, WorkBuffer* alternate) {
  if (cursor.file_type == jpeg_file_type && offset >= jpeg_offset_limit) {
    trace(0, "Warning: Invalid offset detected: %d\n", static_cast<int>(offset));
    return ErrorCode::invalid_offset;
  }
  const std::int64_t target = cursor.offset_base + offset;
  // A target on the very last byte counts as outside: nothing but a single byte could be read
  // there.
  if (target >= 0 && target < static_cast<std::int64_t>(cursor.buffer.size()) - 1) {
    cursor.pos = static_cast<std::uint32_t>(target);
    return ErrorCode::ok;
  }
  const std::span<std::uint8_t> area =
      alternate == nullptr ? std::span<std::uint8_t>{} : alternate->bytes();
  if (area.empty()) {
    print_error("Internal Error: No alt buffer specified when when setting buffer offset.\n");
    return ErrorCode::end_of_buffer;
  }
  return refill(cursor, offset, target + cursor.buf_file_pos, area);
}

}  // namespace tagmend
