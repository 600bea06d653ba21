#include "support/disk_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <string_view>

namespace tagmend {
namespace {

static_assert(sizeof(off_t) == sizeof(std::int64_t), "positions are 64 bits wide");

/// One window serves every file of the run in turn and costs nothing before the first write. A file
/// that is written while another one has the window does without.
constinit WriteWindow shared_window{};
bool shared_window_taken = false;

struct OpenMode {
  std::string_view name;
  int flags;
  mode_t permissions;  ///< of a file that is created, before the umask
};

/// A new file that replaces another is nobody else's business until it has that one's permissions.
constexpr OpenMode open_modes[] = {
    {"rb", O_RDONLY, 0},
    {"r", O_RDONLY, 0},
    {"wb+", O_RDWR | O_CREAT | O_TRUNC, 0666},
    {"wbx+", O_RDWR | O_CREAT | O_EXCL, 0600},
};

/// Reads until `enough` bytes have arrived; more are taken when one call brings them.
std::size_t transfer_in(DiskFile& file, std::span<std::uint8_t> destination, std::size_t enough,
                        std::int64_t offset) {
  std::size_t done = 0;
  while (done < enough) {
    const std::span<std::uint8_t> rest = destination.subspan(done);
    const ssize_t got = file.sequential ? read(file.descriptor, rest.data(), rest.size())
                                        : pread(file.descriptor, rest.data(), rest.size(),
                                                offset + static_cast<std::int64_t>(done));
    if (got > 0) {
      done += static_cast<std::size_t>(got);
    } else if (got < 0 && errno == ESPIPE && offset == 0) {
      file.sequential = true;
    } else if (got == 0 || errno != EINTR) {
      file.error = got == 0 ? file.error : errno;
      break;
    }
  }
  return done;
}

/// Writes all bytes; fewer after an error.
std::size_t transfer_out(DiskFile& file, std::span<const std::uint8_t> source,
                         std::int64_t offset) {
  std::size_t done = 0;
  while (done < source.size()) {
    const std::span<const std::uint8_t> rest = source.subspan(done);
    const ssize_t put =
        pwrite(file.descriptor, rest.data(), rest.size(), offset + static_cast<std::int64_t>(done));
    if (put > 0) {
      done += static_cast<std::size_t>(put);
      file.stored_end = std::max(file.stored_end, offset + static_cast<std::int64_t>(done));
    } else if (put == 0 || errno != EINTR) {
      // No file system takes nothing without a reason: it must not become an endless loop.
      file.error = put == 0 ? EIO : errno;
      break;
    }
  }
  return done;
}

/// Where in a piece of `length` bytes at `start` a position lies; false when it is outside.
bool find_in_window(std::int64_t start, std::size_t length, std::int64_t position,
                    std::size_t& place) {
  if (position < start || static_cast<std::uint64_t>(position - start) > length) {
    return false;
  }
  place = static_cast<std::size_t>(position - start);
  return true;
}

/// A written file's bytes: from the window when it holds them all, else from the file.
std::size_t read_back(DiskFile& file, std::span<std::uint8_t> destination) {
  if (const WriteWindow* const unsaved = file.unsaved; unsaved != nullptr) {
    std::size_t place = 0;
    if (find_in_window(unsaved->start, unsaved->length, file.position, place) &&
        destination.size() <= unsaved->length - place) {
      std::copy_n(unsaved->bytes.begin() + static_cast<std::ptrdiff_t>(place), destination.size(),
                  destination.begin());
      return destination.size();
    }
  }
  if (disk_flush(file) != 0) {
    return 0;
  }
  return transfer_in(file, destination, destination.size(), file.position);
}

/// Copies what the read window holds at the position.
std::size_t read_from_window(const DiskFile& file, std::span<std::uint8_t> destination) {
  std::size_t place = 0;
  if (!find_in_window(file.window_start, file.window_length, file.position, place)) {
    return 0;
  }
  const std::size_t count = std::min(destination.size(), file.window_length - place);
  std::copy_n(file.window.begin() + static_cast<std::ptrdiff_t>(place), count, destination.begin());
  return count;
}

/// Fills the window with zeros from its end up to `position`, as a file does where nothing was
/// written; false when stored bytes may lie there, or when there is no room.
bool fill_gap(const DiskFile& file, WriteWindow& window, std::int64_t position) {
  const std::int64_t end = window.start + static_cast<std::int64_t>(window.length);
  const auto room = static_cast<std::int64_t>(window.bytes.size() - window.length);
  if (position < end || end < file.stored_end || position - end > room) {
    return false;
  }
  const auto gap = static_cast<std::size_t>(position - end);
  std::fill_n(window.bytes.begin() + static_cast<std::ptrdiff_t>(window.length), gap,
              std::uint8_t{0});
  window.length += gap;
  return true;
}

/// Puts the bytes into the write window; false when they do not fit.
bool write_to_window(DiskFile& file, std::span<const std::uint8_t> source) {
  WriteWindow* const unsaved = file.unsaved;
  if (unsaved == nullptr) {
    return false;
  }
  if (unsaved->length == 0) {
    unsaved->start = file.position;
  }
  std::size_t place = 0;
  const bool inside = find_in_window(unsaved->start, unsaved->length, file.position, place) ||
                      (fill_gap(file, *unsaved, file.position) &&
                       find_in_window(unsaved->start, unsaved->length, file.position, place));
  if (!inside || source.size() > unsaved->bytes.size() - place) {
    return false;
  }
  std::ranges::copy(source, unsaved->bytes.begin() + static_cast<std::ptrdiff_t>(place));
  unsaved->length = std::max(unsaved->length, place + source.size());
  return true;
}

}  // namespace

bool disk_open(DiskFile& file, const char* path, const char* mode) {
  const auto* const row = std::ranges::find(open_modes, std::string_view(mode), &OpenMode::name);
  if (row == std::ranges::end(open_modes)) {
    errno = EINVAL;
    return false;
  }
  do {
    file.descriptor = open(path, row->flags | O_CLOEXEC, row->permissions);
  } while (file.descriptor < 0 && errno == EINTR);
  if (file.descriptor < 0) {
    return false;
  }
  file.writable = (row->flags & O_ACCMODE) == O_RDWR;
  if (file.writable && !shared_window_taken) {
    shared_window_taken = true;
    shared_window.length = 0;
    file.unsaved = &shared_window;
  }
  return true;
}

std::size_t disk_read(DiskFile& file, std::span<std::uint8_t> destination) {
  if (file.writable) {
    const std::size_t got = read_back(file, destination);
    file.position += static_cast<std::int64_t>(got);
    return got;
  }
  const std::size_t held = read_from_window(file, destination);
  file.position += static_cast<std::int64_t>(held);
  const std::span<std::uint8_t> rest = destination.subspan(held);
  if (rest.empty()) {
    return held;
  }
  std::size_t got = 0;
  if (rest.size() < file.window.size()) {
    file.window_start = file.position;
    file.window_length = 0;
    file.window_length = transfer_in(file, file.window, rest.size(), file.position);
    got = read_from_window(file, rest);
    file.position += static_cast<std::int64_t>(got);
  } else {
    got = transfer_in(file, rest, rest.size(), file.position);
    file.position += static_cast<std::int64_t>(got);
    if (file.sequential) {  // what was passed over is gone
      file.window_start = file.position;
      file.window_length = 0;
    }
  }
  return held + got;
}

std::size_t disk_write(DiskFile& file, std::span<const std::uint8_t> source) {
  if (!file.writable) {
    file.error = EBADF;
  } else if (source.size() >
             static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max() - file.position)) {
    file.error = EFBIG;
  }
  if (file.error != 0) {
    errno = file.error;
    return 0;
  }
  std::size_t done = source.size();
  if (!write_to_window(file, source)) {
    if (disk_flush(file) != 0) {
      return 0;
    }
    if (!write_to_window(file, source)) {
      done = transfer_out(file, source, file.position);
    }
  }
  file.position += static_cast<std::int64_t>(done);
  return done;
}

std::int64_t disk_size(const DiskFile& file) {
  struct stat status {};
  if (fstat(file.descriptor, &status) != 0) {
    return -1;
  }
  std::int64_t size = status.st_size;
  if (file.unsaved != nullptr && file.unsaved->length != 0) {
    size = std::max(size, file.unsaved->start + static_cast<std::int64_t>(file.unsaved->length));
  }
  return size;
}

int disk_seek(DiskFile& file, std::int64_t target) {
  std::size_t place = 0;
  if (target < 0) {
    errno = EINVAL;
    return -1;
  }
  if (file.sequential && !find_in_window(file.window_start, file.window_length, target, place)) {
    errno = ESPIPE;
    return -1;
  }
  file.position = target;
  return 0;
}

int disk_flush(DiskFile& file) {
  if (!file.writable) {
    return 0;
  }
  if (file.unsaved != nullptr && file.error == 0) {
    transfer_out(file, std::span(file.unsaved->bytes).first(file.unsaved->length),
                 file.unsaved->start);
    file.unsaved->length = 0;
  }
  if (file.error != 0) {
    errno = file.error;
    return -1;
  }
  return 0;
}

int disk_close(DiskFile& file) {
  const int flush_error = disk_flush(file) == 0 ? 0 : errno;
  if (file.unsaved != nullptr) {
    file.unsaved = nullptr;
    shared_window_taken = false;
  }
  // An interrupted close has released the descriptor all the same and must not be repeated, but it
  // may have hidden a failed write.
  const int close_error = close(file.descriptor) == 0 ? 0 : errno;
  file.descriptor = -1;
  if (flush_error == 0 && close_error == 0) {
    return 0;
  }
  errno = flush_error != 0 ? flush_error : close_error;
  return -1;
}

std::uint64_t disk_copy(DiskFile& source, DiskFile& destination, std::uint64_t count) {
  if (source.sequential || disk_flush(source) != 0 || disk_flush(destination) != 0) {
    return 0;
  }
  constexpr std::uint64_t longest_request = 0x40000000;
  std::uint64_t done = 0;
  while (done < count) {
    loff_t from = source.position;
    loff_t to = destination.position;
    const ssize_t copied = copy_file_range(source.descriptor, &from, destination.descriptor, &to,
                                           std::min(count - done, longest_request), 0);
    if (copied > 0) {
      source.position += copied;
      destination.position += copied;
      destination.stored_end = std::max(destination.stored_end, destination.position);
      done += static_cast<std::uint64_t>(copied);
    } else if (copied == 0 || errno != EINTR) {
      break;
    }
  }
  return done;
}

}  // namespace tagmend
