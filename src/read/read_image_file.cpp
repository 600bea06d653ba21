#include "read/read_image_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "read/file_type.h"
#include "read/ifd_parser.h"
#include "read/jpeg_markers.h"
#include "read/raw_files.h"
#include "read/tiff_header.h"
#include "support/message.h"

namespace tagmend {
namespace {

// The leading bytes of the file in work. There is one file at a time; the pages beyond its length
// are never touched.
constinit std::array<std::uint8_t, work_buffer_size> leading_data{};

// The shortest file whose first bytes are looked at.
constexpr std::size_t min_file_length = 6;

MFileHandle open_source(ImageFile& image, std::string_view directory, const char* file_name,
                        std::span<std::uint8_t> memory) {
  if (memory.empty()) {
    return open_image_file(directory, file_name, image);
  }
  const auto length = static_cast<std::uint32_t>(memory.size());
  return MFileHandle(mfopen_memfile(memory.data(), length, length));
}

ErrorCode read_tiff_data(ReadContext& context, ByteCursor& cursor, FileType type) {
  std::uint32_t first_ifd = 0;
  const ErrorCode result = locate_tiff_header(cursor, context.image, first_ifd);
  if (result != ErrorCode::ok) {
    return result;
  }
  const std::uint32_t root = file_type_info(type).is_eps ? root_eps : root_main;
  return parse_ifd(cursor, first_ifd, root, 0, 0, context);
}

ErrorCode read_open_file(ReadContext& context, MFILE& file) {
  ImageFile& image = context.image;
  const std::size_t length = mfread(leading_data.data(), 1, leading_data.size(), file);
  if (length < min_file_length) {
    return ErrorCode::unknown_file_type;
  }
  ByteCursor cursor;
  cursor_init(cursor, &file, std::span(leading_data).first(length), 0);
  cursor.big_endian = true;
  const ByteCursor start = cursor;
  const FileType type = detect_file_type(cursor);
  image.file_type = type;
  if (type == FileType::unknown) {
    return ErrorCode::unknown_file_type;
  }
  cursor.file_type = static_cast<std::uint16_t>(type);
  image.big_endian = cursor.big_endian;
  const ErrorCode result = read_tiff_data(context, cursor, type);
  switch (type) {
    case FileType::jpeg:
      scan_jpeg_markers(context, file);
      return result;
    case FileType::canon_crw:
      return read_crw(context, file, image.big_endian);
    case FileType::eps:
      return context.hooks.read_eps ? context.hooks.read_eps(context, start) : result;
    default:
      return result;
  }
}

}  // namespace

ErrorCode read_image_file(ReadContext& context, std::string_view directory, const char* file_name,
                          std::span<std::uint8_t> memory, bool sort) {
  ImageFile& image = context.image;
  reset_image_file(image);
  if (context.hooks.reset_iptc) {
    context.hooks.reset_iptc(context);
  }
  MFileHandle file = open_source(image, directory, file_name, memory);
  if (!file) {
    return ErrorCode::cannot_open_file;
  }
  const ErrorCode result = read_open_file(context, *file);
  image.read_failed = mferror(*file) != 0;
  if (mfclose(file.release()) != 0) {
    print_error("Error: Can't close file %s: %s\n", image.file_name.data(), std::strerror(errno));
  }
  if (result == ErrorCode::ok && sort) {
    std::sort(image.table().begin(), image.table().end(),
              [](const FieldEntry& left, const FieldEntry& right) {
                return compare_entries(left, right) < 0;
              });
  }
  return result;
}

}  // namespace tagmend
