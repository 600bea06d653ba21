// The steps that readers and writers take on an MFILE, each turning a failure into an ErrorCode and
// printing its message.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Seeks from the start; seek_failed.
ErrorCode seek_to_offset(MFILE& file, std::uint64_t offset);

/// Writes a block at a file offset; seek_failed or write_failed, each with a message that names the
/// file.
ErrorCode write_block_at(MFILE& file, std::uint64_t offset, std::span<const std::uint8_t> block,
                         const char* file_name);

/// Reads up to block.size() bytes at a file offset and tells how many arrived. seek_failed,
/// read_failed (nothing arrived and the handle is in error; message), end_of_buffer (fewer
/// arrived).
ErrorCode read_block_at(MFILE& file, std::uint64_t offset, std::span<std::uint8_t> block,
                        std::size_t& bytes_read);

/// Numbers at the position; write_failed (message) or end_of_buffer.
ErrorCode write_u16(MFILE& file, std::uint16_t value, bool big_endian);
ErrorCode write_u32(MFILE& file, std::uint32_t value, bool big_endian);
ErrorCode read_u16(MFILE& file, std::uint16_t& value, bool big_endian);
ErrorCode read_u32(MFILE& file, std::uint32_t& value, bool big_endian);

/// Numbers at a file offset; seek_failed for any failure, the seek's or the transfer's.
ErrorCode write_u16_at(MFILE& file, std::uint64_t offset, std::uint16_t value, bool big_endian);
ErrorCode write_u32_at(MFILE& file, std::uint64_t offset, std::uint32_t value, bool big_endian);
ErrorCode read_u16_at(MFILE& file, std::uint64_t offset, std::uint16_t& value, bool big_endian);
ErrorCode read_u32_at(MFILE& file, std::uint64_t offset, std::uint32_t& value, bool big_endian);

/// Copies `count` bytes between the positions of two files; 0 copies to the end of the source.
/// end_of_buffer when the source ends before (what arrived has been written), write_failed or, for
/// a source that cannot be read, read_failed (messages).
ErrorCode copy_bytes(MFILE& source, MFILE& destination, std::uint64_t count);

/// Stands for "the current position" where an offset is asked for.
inline constexpr std::int64_t current_position = -1;

/// Seeks both files (a negative offset leaves the position), then copies. Adds seek_failed.
ErrorCode copy_from_offsets(MFILE& source, std::int64_t source_offset, MFILE& destination,
                            std::int64_t destination_offset, std::uint64_t count);

/// Writes a big-endian 16-bit marker, then copies from an offset of the source.
ErrorCode write_marker_and_copy(MFILE& source, std::int64_t source_offset, MFILE& destination,
                                std::uint16_t marker, std::uint64_t count);

/// The most bytes that matches_at_position compares.
inline constexpr std::size_t max_compare = 100;

/// Whether the next bytes of the file equal `bytes` (at most 100); the position stays.
[[nodiscard]] bool matches_at_position(MFILE& file, std::span<const std::uint8_t> bytes);

/// mftell that says when it fails.
[[nodiscard]] std::int64_t tell_with_message(MFILE& file);

/// mfclose that says when it fails.
void close_with_message(MFILE* file);

}  // namespace tagmend
