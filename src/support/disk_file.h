// DiskFile: the half of MFILE that works on a file descriptor. Reads go through a small window and
// writes through a larger one, each a piece of the file held in memory; what does not fit a window
// goes straight to the descriptor. All places are positions in the file, so that the descriptor's
// own position is never used, except on a pipe or terminal, which can only be read on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tagmend {

/// Large enough for the marker and header reads of one area, small enough that jumping over
/// segments reads little that is not wanted.
inline constexpr std::size_t read_window_size = 0x2000;

/// Twice the longest JPEG segment: while one is generated, its length and offsets are still in
/// memory when they are patched.
inline constexpr std::size_t write_window_size = 0x20000;

/// Bytes that were written but have not reached the file yet.
struct WriteWindow {
  std::int64_t start;
  std::size_t length;
  std::array<std::uint8_t, write_window_size> bytes;
};

struct DiskFile {
  int descriptor = -1;
  bool writable = false;
  bool sequential = false;         ///< a pipe or terminal: read on, never positioned
  int error = 0;                   ///< errno of the last failed transfer; stays until the close
  std::int64_t position = 0;       ///< of the next byte to read or write
  WriteWindow* unsaved = nullptr;  ///< of a writable file; null: every write goes straight through
  std::int64_t stored_end = 0;     ///< of a writable file: one past the last byte that reached it
  std::int64_t window_start = 0;
  std::size_t window_length = 0;
  std::array<std::uint8_t, read_window_size> window;
};

/// Opens a file in one of mfopen's modes; false with errno set.
[[nodiscard]] bool disk_open(DiskFile& file, const char* path, const char* mode);

/// Reads from the position on, which moves; fewer bytes at the end of the file or after an error.
std::size_t disk_read(DiskFile& file, std::span<std::uint8_t> destination);

/// Writes at the position, which moves; fewer bytes after an error, errno set.
std::size_t disk_write(DiskFile& file, std::span<const std::uint8_t> source);

/// The file's size, unsaved bytes included; -1 with errno set.
[[nodiscard]] std::int64_t disk_size(const DiskFile& file);

/// Moves the position; 0, or -1 with errno set.
int disk_seek(DiskFile& file, std::int64_t target);

/// Writes the unsaved bytes; 0, or -1 with errno set, also when an earlier write failed.
int disk_flush(DiskFile& file);

/// Flushes and closes; 0, or -1 with the errno of the first failure.
int disk_close(DiskFile& file);

/// Copies `count` bytes between the positions, which move, without bringing them into the process.
/// Ends early wherever the kernel refuses or reaches the end of the source: the caller copies the
/// rest by reading and writing, which tells what is wrong.
std::uint64_t disk_copy(DiskFile& source, DiskFile& destination, std::uint64_t count);

}  // namespace tagmend
