#include "support/mfile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <limits>
#include <new>
#include <span>

#include "support/disk_file.h"
#include "support/message.h"
#include "support/tagged_memory.h"

namespace tagmend {

/// A view of bytes that belong to the caller. Both places are at most the buffer's size.
struct MemoryFile {
  std::span<std::uint8_t> buffer;  ///< its size is the capacity
  std::size_t data_end = 0;        ///< one past the last byte of data
  std::size_t position = 0;        ///< of the next byte to read or write
  int error = 0;                   ///< of the last access
};

struct MFILE {
  bool on_disk = false;
  MemoryFile memory;  ///< used when not on disk
  DiskFile disk;
};

namespace {

constexpr char handle_tag[] = "FH";

/// The one handle on the standard input: bytes read ahead must not be lost to a second one.
MFILE* standard_input = nullptr;

MFILE* new_handle() {
  void* const block = exif_malloc(sizeof(MFILE), handle_tag, __LINE__);
  if (block == nullptr) {
    print_error("Error: Can't allocate MFILE handle\n");
    return nullptr;
  }
  // Without parentheses: the window is left as it is, so that its pages stay untouched.
  return ::new (block) MFILE;
}

void release_handle(MFILE* file) {
  const int saved_errno = errno;
  file->~MFILE();
  exif_mfree(file, handle_tag);
  errno = saved_errno;
}

/// The bytes of `count` items; a product that no memory can hold becomes the largest number.
std::size_t byte_count(std::size_t size, std::size_t count) {
  std::size_t bytes = 0;
  return __builtin_mul_overflow(size, count, &bytes) ? std::numeric_limits<std::size_t>::max()
                                                     : bytes;
}

std::size_t memory_read(MemoryFile& file, std::uint8_t* destination, std::size_t wanted) {
  file.error = 0;
  // The position may stand behind the data, where a seek has left it.
  const std::size_t left = file.data_end - std::min(file.position, file.data_end);
  const std::size_t count = std::min(wanted, left);
  std::ranges::copy(file.buffer.subspan(file.data_end - left, count), destination);
  file.position = file.data_end - left + count;
  return count;
}

std::size_t memory_write(MemoryFile& file, const std::uint8_t* source, std::size_t size,
                         std::size_t count) {
  file.error = 0;
  const std::size_t items = std::min(count, (file.buffer.size() - file.position) / size);
  std::copy_n(source, items * size, file.buffer.subspan(file.position).begin());
  file.position += items * size;
  file.data_end = std::max(file.data_end, file.position);
  return items;
}

int memory_refuse_seek(MemoryFile& file, const char* whence, std::int64_t offset) {
  print_error("Internal Error: Attempt to seek past end of memfile (%s %ld)\n", whence,
              static_cast<long>(offset));
  file.error = EINVAL;
  return 1;
}

int memory_seek(MemoryFile& file, std::int64_t offset, Whence whence) {
  // Offsets far outside would overflow the sum; they are refused like any other outside the buffer.
  constexpr std::int64_t far_outside = std::int64_t{1} << 40;
  const auto capacity = static_cast<std::int64_t>(file.buffer.size());
  const std::int64_t distance = std::clamp(offset, -far_outside, far_outside);
  std::int64_t target = distance;
  std::int64_t last = capacity;
  const char* name = "SEEK_SET";
  switch (whence) {
    case Whence::start:
      last = capacity - 1;
      break;
    case Whence::position:
      target += static_cast<std::int64_t>(file.position);
      name = "SEEK_CUR";
      break;
    case Whence::end:
      target += static_cast<std::int64_t>(file.data_end);
      name = "SEEK_END";
      break;
    default:
      print_error("Internal Error: Invalid whence past to mfseek(whence=%d)\n",
                  static_cast<int>(whence));
      return 0;
  }
  if (target < 0 || target > last) {
    return memory_refuse_seek(file, name, offset);
  }
  file.position = static_cast<std::size_t>(target);
  return 0;
}

/// The bytes from the position of a disk file to its end, no more than `count`; `count` where the
/// size is not known (devices, and the files of the kernel that claim to be empty).
std::uint64_t bound_by_size(const DiskFile& file, std::uint64_t count) {
  const std::int64_t size = disk_size(file);
  return size > file.position ? std::min(count, static_cast<std::uint64_t>(size - file.position))
                              : count;
}

/// Shorter stretches are quicker through a buffer, where they join what is written around them.
constexpr std::uint64_t kernel_copy_minimum = 0x10000;

}  // namespace

MFILE* mfopen(const char* path, const char* mode) {
  MFILE* const file = new_handle();
  if (file == nullptr) {
    errno = ENOMEM;
    return nullptr;
  }
  file->on_disk = true;
  if (!disk_open(file->disk, path, mode)) {
    release_handle(file);
    return nullptr;
  }
  return file;
}

MFILE* mfopen_memfile(void* buffer, std::uint32_t capacity, std::uint32_t length) {
  if (buffer == nullptr || capacity < 1 || capacity < length) {
    print_error("Internal Error: Invalid params passed to mfopen_memfile(0%x,%d, %d)\n",
                static_cast<unsigned>(std::bit_cast<std::uintptr_t>(buffer)),
                static_cast<int>(capacity), static_cast<int>(length));
    return nullptr;
  }
  MFILE* const file = new_handle();
  if (file != nullptr) {
    file->memory.buffer = {static_cast<std::uint8_t*>(buffer), capacity};
    file->memory.data_end = length;
  }
  return file;
}

MFILE* mfopen_stdin() {
  if (standard_input == nullptr) {
    standard_input = new_handle();
    if (standard_input != nullptr) {
      standard_input->on_disk = true;
      standard_input->disk.descriptor = STDIN_FILENO;
      standard_input->disk.sequential = true;
    }
  }
  return standard_input;
}

std::size_t mfread(void* destination, std::size_t size, std::size_t count, MFILE& file) {
  const std::size_t wanted = byte_count(size, count);
  if (wanted == 0) {
    file.memory.error = 0;
    return 0;
  }
  auto* const bytes = static_cast<std::uint8_t*>(destination);
  const std::size_t got = file.on_disk ? disk_read(file.disk, {bytes, wanted})
                                       : memory_read(file.memory, bytes, wanted);
  return got / size;
}

std::size_t mfwrite(const void* source, std::size_t size, std::size_t count, MFILE& file) {
  const std::size_t offered = byte_count(size, count);
  if (offered == 0) {
    file.memory.error = 0;
    return 0;
  }
  const auto* const bytes = static_cast<const std::uint8_t*>(source);
  return file.on_disk ? disk_write(file.disk, {bytes, offered}) / size
                      : memory_write(file.memory, bytes, size, count);
}

std::int64_t mftell(MFILE& file) {
  return file.on_disk ? file.disk.position : static_cast<std::int64_t>(file.memory.position);
}

int mfseek(MFILE& file, std::int64_t offset, Whence whence) {
  if (!file.on_disk) {
    return memory_seek(file.memory, offset, whence);
  }
  std::int64_t base = 0;
  switch (whence) {
    case Whence::start:
      break;
    case Whence::position:
      base = file.disk.position;
      break;
    case Whence::end:
      base = disk_size(file.disk);
      break;
    default:
      base = -1;
      errno = EINVAL;
  }
  if (base < 0) {
    return -1;
  }
  std::int64_t target = 0;
  if (__builtin_add_overflow(base, offset, &target)) {
    errno = EOVERFLOW;
    return -1;
  }
  return disk_seek(file.disk, target);
}

int mferror(const MFILE& file) { return file.on_disk ? file.disk.error : file.memory.error; }

int mfflush(MFILE& file) { return file.on_disk ? disk_flush(file.disk) : 0; }

int mfclose(MFILE* file) {
  if (file == nullptr || file == standard_input) {
    return 0;
  }
  const int result = file->on_disk ? disk_close(file->disk) : 0;
  release_handle(file);
  return result;
}

int mfdescriptor(const MFILE& file) { return file.disk.descriptor; }

std::uint64_t mfcopy(MFILE& source, MFILE& destination, std::uint64_t count) {
  std::uint64_t copied = 0;
  if (source.on_disk && destination.on_disk && count >= kernel_copy_minimum) {
    count = bound_by_size(source.disk, count);
    if (count >= kernel_copy_minimum) {
      copied = disk_copy(source.disk, destination.disk, count);
    }
  }
  std::array<std::uint8_t, 0x10000> buffer;
  while (copied < count) {
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(count - copied, buffer.size()));
    const std::size_t got = mfread(buffer.data(), 1, wanted, source);
    const std::size_t put = mfwrite(buffer.data(), 1, got, destination);
    copied += put;
    if (put < got && mferror(destination) == 0) {
      destination.memory.error = ENOSPC;
    }
    if (put < got || got < wanted) {
      break;
    }
  }
  return copied;
}

}  // namespace tagmend
