#include "read/file_type.h"

#include <cerrno>
#include <cstring>

#include "read/jpeg_markers.h"
#include "support/file_primitives.h"
#include "support/local_time.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

using namespace std::string_view_literals;

struct Signature {
  std::string_view bytes;
  FileType type;
  bool big_endian;
};

/// Compared at the first byte of the file; the first that matches wins.
constexpr Signature signatures[] = {
    {"\xFF\xD8"sv, FileType::jpeg, true},
    {"MM\0\x2A"sv, FileType::tiff, true},
    {"II\x2A\0"sv, FileType::tiff, false},
    {"FUJIFILMCCD-RAW"sv, FileType::fujifilm_raf, true},
    {"\0MRM"sv, FileType::minolta_mrw, true},
    {"MM\0\x10\0\0HEAPCCDR"sv, FileType::canon_crw, true},
    {"II\x1A\0\0\0HEAPCCDR"sv, FileType::canon_crw, false},
    {"%!PS-Adobe-3.0 EPSF-3.0"sv, FileType::eps, false},
    {"\xC5\xD0\xD3\xC6"sv, FileType::eps_dos, false},
};

/// The shortest file that is looked at: no image fits in fewer bytes.
constexpr std::size_t identification_length = 50;

/// Opening a FIFO would wait for a writer, and a device may do anything: only files are opened.
/// (Directories are opened too; reading them fails, as the type detection then says.)
MFILE* open_regular_file(const char* file_name, const char* mode) {
  struct stat status {};
  if (::stat(file_name, &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
    errno = EINVAL;
    return nullptr;
  }
  return mfopen(file_name, mode);
}

void store_names(ImageFile& image, std::string_view directory, std::string_view file_name) {
  copy_text(image.directory, directory);
  TextBuffer path(image.path);
  if (!directory.empty()) {
    append(path, directory);
    append(path, "/");
  }
  append(path, file_name);
  copy_text(image.file_name, file_name);
}

void store_status(ImageFile& image, const struct stat& status) {
  image.file_size = static_cast<std::uint32_t>(status.st_size);
  image.modified = format_local_time(status.st_mtim.tv_sec);
  image.changed = format_local_time(status.st_ctim.tv_sec);
  image.identity = identity_of(status);
}

}  // namespace

FileIdentity identity_of(const struct stat& status) {
  return {.known = true,
          .device = status.st_dev,
          .inode = status.st_ino,
          .size = status.st_size,
          .modified_sec = status.st_mtim.tv_sec,
          .modified_nsec = status.st_mtim.tv_nsec};
}

MFileHandle open_image_file(std::string_view directory, const char* file_name, ImageFile& image) {
  trace(0, "Opening file %s\n\n", file_name);
  store_names(image, directory, file_name);
  MFileHandle file(open_regular_file(file_name, "rb"));
  if (!file) {
    print_error("Error: Can't open file %s: %s\n", file_name, std::strerror(errno));
    image.file_name.front() = '\0';
    return file;
  }
  struct stat status {};
  if (::fstat(mfdescriptor(*file), &status) == 0) {
    store_status(image, status);
  } else {
    print_warning("Warning: Can't determine size of file %s: %s\n", file_name,
                  std::strerror(errno));
    image.file_size = 0;
  }
  return file;
}

void close_image_file(MFileHandle& file, const ImageFile& image) {
  if (mfclose(file.release()) != 0) {
    print_error("Error: Can't close file %s: %s\n", image.file_name.data(), std::strerror(errno));
  }
}

ErrorCode check_image_length(const ImageFile& image) {
  const auto shortest = static_cast<std::int64_t>(identification_length);
  return image.identity.known && image.identity.size < shortest ? ErrorCode::unknown_file_type
                                                                : ErrorCode::ok;
}

FileType detect_file_type(ByteCursor& cursor) {
  const std::span<const std::uint8_t> start = cursor.rest();
  for (const Signature& signature : signatures) {
    const std::string_view bytes = signature.bytes;
    if (!cursor.has(bytes.size()) || std::memcmp(start.data(), bytes.data(), bytes.size()) != 0) {
      continue;
    }
    cursor.big_endian = signature.big_endian;
    cursor_skip(cursor, static_cast<std::uint32_t>(bytes.size()));
    trace(0, "Image file type %d (%s), id_len %d, byte_order_mm %d\n\n",
          static_cast<int>(signature.type), file_type_info(signature.type).name,
          static_cast<int>(bytes.size()), signature.big_endian ? 1 : 0);
    return signature.type;
  }
  return FileType::unknown;
}

ErrorCode open_and_identify(const char* file_name, const char* mode, FileType& type,
                            MFileHandle& file) {
  type = FileType::unknown;
  file.reset(open_regular_file(file_name, mode));
  if (!file) {
    print_error("Error: Can't open file %s: %s\n", file_name, std::strerror(errno));
    return ErrorCode::cannot_open_file;
  }
  std::array<std::uint8_t, identification_length> start;
  std::size_t bytes_read = 0;
  if (read_block_at(*file, 0, start, bytes_read) == ErrorCode::ok) {
    ByteCursor cursor;
    cursor_init(cursor, file.get(), start, 0);
    cursor.big_endian = true;
    type = detect_file_type(cursor);
  }
  if (type == FileType::unknown) {
    close_with_message(file.release());
    return ErrorCode::unknown_file_type;
  }
  return seek_to_offset(*file, 0);
}

void get_image_size(const char* file_name, std::uint32_t& width, std::uint32_t& height) {
  FileType type = FileType::unknown;
  MFileHandle file;
  if (open_and_identify(file_name, "rb", type, file) != ErrorCode::ok) {
    print_error("Error: Can't open file %s to determine image size.\n", file_name);
    return;
  }
  if (type == FileType::jpeg) {
    read_frame_size(*file, width, height);
  } else {
    width = 0;
    height = 0;
  }
}

ErrorCode seek_to_first_mark(MFILE& file, FileType type) {
  if (type != FileType::jpeg) {
    print_error("Internal Error: Unexpected file type %d in seek_to_first_mark\n",
                static_cast<int>(type));
    end_program(exit_internal);
  }
  return seek_to_offset(file, first_marker_pos);
}

}  // namespace tagmend
