// MFILE: one handle over a disk file or over a buffer in memory. Disk files are read through a
// small window and written through a larger one, so that the many short positioned accesses of
// metadata cost few system calls; long stretches go from file to file inside the kernel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tagmend {

struct MFILE;

enum class Whence : int { start = 0, position = 1, end = 2 };

/// Opens a disk file. Modes: "rb" or "r" reads; "wb+" creates or empties for writing and reading;
/// "wbx+" the same but fails with EEXIST when the name is taken. Null on failure, errno set.
MFILE* mfopen(const char* path, const char* mode);

/// A view of `capacity` bytes at `buffer` that already hold `length` bytes of data. The memory
/// stays the caller's. Null after a message when the arguments make no sense.
MFILE* mfopen_memfile(void* buffer, std::uint32_t capacity, std::uint32_t length);

/// A handle on the standard input; it is never closed.
MFILE* mfopen_stdin();

/// Reads `count` items of `size` bytes; returns how many whole items arrived. A partial last item
/// is copied but not counted.
std::size_t mfread(void* destination, std::size_t size, std::size_t count, MFILE& file);

/// Writes `count` items of `size` bytes; returns how many whole items were taken. On a disk file a
/// failure may show only in a later mfwrite, mfflush or mfclose.
std::size_t mfwrite(const void* source, std::size_t size, std::size_t count, MFILE& file);

/// The position in bytes from the start, or negative on failure.
std::int64_t mftell(MFILE& file);

/// Moves the position; 0 on success, else non-zero and the position stays. A position before the
/// start is refused.
int mfseek(MFILE& file, std::int64_t offset, Whence whence);

/// Non-zero after a failed access (the errno value where there is one).
int mferror(const MFILE& file);

/// Writes what is still buffered; 0, or -1 with errno set.
int mfflush(MFILE& file);

/// Flushes, closes and releases the handle (it is gone in any case); 0, or -1 with errno set when
/// anything that was written may not have arrived.
int mfclose(MFILE* file);

/// The file descriptor of a disk file, -1 for a memory file. For attributes, stat and fsync only.
int mfdescriptor(const MFILE& file);

/// Copies up to `count` bytes from the position of one file to the position of the other, in the
/// kernel where both are disk files and the stretch is long. Both positions advance. Returns how
/// many bytes were copied; fewer than `count` means the end of the source, or an error that mferror
/// of one of the two tells.
std::uint64_t mfcopy(MFILE& source, MFILE& destination, std::uint64_t count);

/// Closes a handle whose close result nobody needs (files opened for reading).
struct MFileClose {
  void operator()(MFILE* file) const { mfclose(file); }
};
using MFileHandle = std::unique_ptr<MFILE, MFileClose>;

}  // namespace tagmend
