#include "support/file_primitives.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <limits>

#include "support/byte_order.h"
#include "support/message.h"

namespace tagmend {
namespace {

bool write_whole(MFILE& file, std::span<const std::uint8_t> bytes) {
  return bytes.empty() || mfwrite(bytes.data(), bytes.size(), 1, file) == 1;
}

bool read_whole(MFILE& file, std::span<std::uint8_t> bytes) {
  return mfread(bytes.data(), bytes.size(), 1, file) == 1;
}

/// The positioned numbers tell every failure by one code.
ErrorCode any_failure_is_seek_failed(ErrorCode code) {
  return code == ErrorCode::ok ? ErrorCode::ok : ErrorCode::seek_failed;
}

ErrorCode seek_unless_current(MFILE& file, std::int64_t offset) {
  return offset < 0 ? ErrorCode::ok : seek_to_offset(file, static_cast<std::uint64_t>(offset));
}

}  // namespace

ErrorCode seek_to_offset(MFILE& file, std::uint64_t offset) {
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    errno = EINVAL;
    return ErrorCode::seek_failed;
  }
  return mfseek(file, static_cast<std::int64_t>(offset), Whence::start) == 0
             ? ErrorCode::ok
             : ErrorCode::seek_failed;
}

ErrorCode write_block_at(MFILE& file, std::uint64_t offset, std::span<const std::uint8_t> block,
                         const char* file_name) {
  if (const ErrorCode code = seek_to_offset(file, offset); code != ErrorCode::ok) {
    print_error("Error: Seek failed for file write %s: %s\n", file_name, std::strerror(errno));
    return code;
  }
  if (!write_whole(file, block)) {
    print_error("Error: Write failed for %s at offset %lld: %s\n", file_name,
                static_cast<long long>(offset), std::strerror(errno));
    return ErrorCode::write_failed;
  }
  return ErrorCode::ok;
}

ErrorCode read_block_at(MFILE& file, std::uint64_t offset, std::span<std::uint8_t> block,
                        std::size_t& bytes_read) {
  bytes_read = 0;
  if (const ErrorCode code = seek_to_offset(file, offset); code != ErrorCode::ok) {
    return code;
  }
  bytes_read = mfread(block.data(), 1, block.size(), file);
  if (bytes_read == block.size()) {
    return ErrorCode::ok;
  }
  if (const int error = mferror(file); bytes_read == 0 && error != 0) {
    print_error("Error: Can't read file: %s\n", std::strerror(error));
    return ErrorCode::read_failed;
  }
  return ErrorCode::end_of_buffer;
}

ErrorCode write_u16(MFILE& file, std::uint16_t value, bool big_endian) {
  std::array<std::uint8_t, 2> bytes;
  store_u16(bytes, value, big_endian);
  if (!write_whole(file, bytes)) {
    print_error("Error: Data truncated in file write\n");
    return ErrorCode::write_failed;
  }
  return ErrorCode::ok;
}

ErrorCode write_u32(MFILE& file, std::uint32_t value, bool big_endian) {
  std::array<std::uint8_t, 4> bytes;
  store_u32(bytes, value, big_endian);
  if (!write_whole(file, bytes)) {
    print_error("Error: Data truncated if file write\n");
    return ErrorCode::write_failed;
  }
  return ErrorCode::ok;
}

ErrorCode read_u16(MFILE& file, std::uint16_t& value, bool big_endian) {
  std::array<std::uint8_t, 2> bytes;
  if (!read_whole(file, bytes)) {
    return ErrorCode::end_of_buffer;
  }
  value = load_u16(bytes, big_endian);
  return ErrorCode::ok;
}

ErrorCode read_u32(MFILE& file, std::uint32_t& value, bool big_endian) {
  std::array<std::uint8_t, 4> bytes;
  if (!read_whole(file, bytes)) {
    return ErrorCode::end_of_buffer;
  }
  value = load_u32(bytes, big_endian);
  return ErrorCode::ok;
}

ErrorCode write_u16_at(MFILE& file, std::uint64_t offset, std::uint16_t value, bool big_endian) {
  const ErrorCode code = seek_to_offset(file, offset);
  return code != ErrorCode::ok ? code
                               : any_failure_is_seek_failed(write_u16(file, value, big_endian));
}

ErrorCode write_u32_at(MFILE& file, std::uint64_t offset, std::uint32_t value, bool big_endian) {
  const ErrorCode code = seek_to_offset(file, offset);
  return code != ErrorCode::ok ? code
                               : any_failure_is_seek_failed(write_u32(file, value, big_endian));
}

ErrorCode read_u16_at(MFILE& file, std::uint64_t offset, std::uint16_t& value, bool big_endian) {
  const ErrorCode code = seek_to_offset(file, offset);
  return code != ErrorCode::ok ? code
                               : any_failure_is_seek_failed(read_u16(file, value, big_endian));
}

ErrorCode read_u32_at(MFILE& file, std::uint64_t offset, std::uint32_t& value, bool big_endian) {
  const ErrorCode code = seek_to_offset(file, offset);
  return code != ErrorCode::ok ? code
                               : any_failure_is_seek_failed(read_u32(file, value, big_endian));
}

ErrorCode copy_bytes(MFILE& source, MFILE& destination, std::uint64_t count) {
  const bool to_the_end = count == 0;
  const std::uint64_t wanted = to_the_end ? std::numeric_limits<std::uint64_t>::max() : count;
  if (mfcopy(source, destination, wanted) == wanted) {
    return ErrorCode::ok;
  }
  if (const int error = mferror(destination); error != 0) {
    if (mfdescriptor(destination) >= 0) {
      print_error("Error: Can't write to file: %s\n", std::strerror(error));
    } else {
      print_error("Error: Data truncated in file write\n");
    }
    return ErrorCode::write_failed;
  }
  // An unreadable source must not pass for a short one: the image would be cut there.
  if (const int error = mferror(source); error != 0) {
    print_error("Error: Can't read file: %s\n", std::strerror(error));
    return ErrorCode::read_failed;
  }
  return to_the_end ? ErrorCode::ok : ErrorCode::end_of_buffer;
}

ErrorCode copy_from_offsets(MFILE& source, std::int64_t source_offset, MFILE& destination,
                            std::int64_t destination_offset, std::uint64_t count) {
  if (const ErrorCode code = seek_unless_current(source, source_offset); code != ErrorCode::ok) {
    return code;
  }
  if (const ErrorCode code = seek_unless_current(destination, destination_offset);
      code != ErrorCode::ok) {
    return code;
  }
  return copy_bytes(source, destination, count);
}

ErrorCode write_marker_and_copy(MFILE& source, std::int64_t source_offset, MFILE& destination,
                                std::uint16_t marker, std::uint64_t count) {
  if (const ErrorCode code = write_u16(destination, marker, true); code != ErrorCode::ok) {
    return code;
  }
  return copy_from_offsets(source, source_offset, destination, current_position, count);
}

bool matches_at_position(MFILE& file, std::span<const std::uint8_t> bytes) {
  check_consistency(bytes.size() <= max_compare, __LINE__, module_utility);
  const std::int64_t position = tell_with_message(file);
  if (position < 0) {
    return false;
  }
  std::array<std::uint8_t, max_compare> found;
  const std::size_t got = mfread(found.data(), 1, bytes.size(), file);
  if (seek_to_offset(file, static_cast<std::uint64_t>(position)) != ErrorCode::ok) {
    return false;
  }
  return got == bytes.size() && std::equal(bytes.begin(), bytes.end(), found.begin());
}

std::int64_t tell_with_message(MFILE& file) {
  const std::int64_t position = mftell(file);
  if (position < 0) {
    print_error("Can't determine current file offset: %s\n", std::strerror(errno));
  }
  return position;
}

void close_with_message(MFILE* file) {
  if (mfclose(file) != 0) {
    print_error("Error closing file: %s\n", std::strerror(errno));
  }
}

}  // namespace tagmend
