#include "read/read_image_file.h"

#include <algorithm>
#include <array>

#include "read/file_type.h"
#include "read/ifd_parser.h"
#include "read/jpeg_markers.h"
#include "read/raw_files.h"
#include "read/tiff_header.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// The leading bytes of the file in work. There is one file at a time; the pages beyond its length
/// are never touched.
constinit std::array<std::uint8_t, work_buffer_size> leading_data{};

constexpr std::size_t first_read_length = 0x1000;
static_assert(first_read_length < jpeg_leading_length && jpeg_leading_length < work_buffer_size);

/// A segment's marker and the most that its length field counts.
constexpr std::size_t longest_segment = 2 + 0xFFFF;
static_assert(first_read_length + longest_segment <= work_buffer_size);

/// The shortest file whose first bytes are looked at.
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

/// How many bytes of a JPEG file hold its Exif segment, when it stands where the standards want it:
/// behind APP0, or first of all. Told by the bytes that the file begins with; 0 when they do not.
/// The segment ends within `longest_segment` of those bytes.
std::size_t length_with_exif_segment(std::span<const std::uint8_t> start) {
  std::size_t at = first_marker_pos;
  while (at + 4 <= start.size()) {
    const std::uint16_t marker = load_u16(start.subspan(at).first<2>(), true);
    const std::size_t end = at + 2 + load_u16(start.subspan(at + 2).first<2>(), true);
    if (marker == marker_app1 && text_of(start.subspan(at + 4)).starts_with(exif_mark)) {
      return end;
    }
    if (marker != marker_app0) {
      break;
    }
    at = end;
  }
  return 0;
}

/// Reads no more than is needed: most of a JPEG file is image data. Returns the number of bytes
/// that arrived.
std::size_t read_leading_data(MFILE& file) {
  const std::span<std::uint8_t> data(leading_data);
  const std::size_t length = mfread(data.data(), 1, first_read_length, file);
  if (length < first_read_length) {
    return length;
  }
  std::size_t wanted = data.size();
  if (load_u16(data.first<2>(), true) == marker_soi) {
    const std::size_t with_exif = length_with_exif_segment(data.first(length));
    wanted = with_exif != 0 ? with_exif : jpeg_leading_length;
  }
  return length + mfread(data.data() + length, 1, wanted - std::min(wanted, length), file);
}

ErrorCode read_open_file(ReadContext& context, MFILE& file) {
  ImageFile& image = context.image;
  const std::size_t length = read_leading_data(file);
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

ErrorCode read_source(ReadContext& context, std::string_view directory, const char* file_name,
                      std::span<std::uint8_t> memory, MFileHandle& file) {
  ImageFile& image = context.image;
  reset_image_file(image);
  if (context.hooks.reset_iptc) {
    context.hooks.reset_iptc(context);
  }
  file = open_source(image, directory, file_name, memory);
  if (!file) {
    return ErrorCode::cannot_open_file;
  }
  const ErrorCode result = read_open_file(context, *file);
  image.read_failed = mferror(*file) != 0;
  return result;
}

}  // namespace

ErrorCode read_image_file(ReadContext& context, std::string_view directory, const char* file_name,
                          std::span<std::uint8_t> memory, bool sort) {
  ImageFile& image = context.image;
  MFileHandle file;
  const ErrorCode result = read_source(context, directory, file_name, memory, file);
  close_image_file(file, image);
  if (result == ErrorCode::ok && sort) {
    std::sort(image.table().begin(), image.table().end(),
              [](const FieldEntry& left, const FieldEntry& right) {
                return compare_entries(left, right) < 0;
              });
  }
  return result;
}

ErrorCode read_and_keep_open(ReadContext& context, std::string_view directory,
                             const char* file_name, MFileHandle& file) {
  return read_source(context, directory, file_name, {}, file);
}

}  // namespace tagmend
