#include "read/tiff_header.h"

#include "read/jpeg_markers.h"
#include "read/raw_files.h"
#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"

namespace tagmend {
namespace {

constexpr std::uint16_t order_little = 0x4949;  // "II"
constexpr std::uint16_t order_big = 0x4D4D;     // "MM"

constexpr std::uint32_t exif_header_length = 6;  // the mark and a padding byte

/// DOS EPS binary header: the little-endian offset of the TIFF section.
constexpr std::uint32_t eps_tiff_pointer_pos = 20;

std::int64_t buffer_end_pos(const ByteCursor& cursor) {
  return std::int64_t{cursor.buf_file_pos} + static_cast<std::int64_t>(cursor.buffer.size());
}

/// Stands the cursor on a file offset with at least `length` bytes behind it, where the file has
/// them. A buffer shorter than jpeg_leading_length holds the whole Exif segment, or all that the
/// file has; otherwise what lies outside is read into it again.
ErrorCode move_to_file_pos(ByteCursor& cursor, std::uint32_t file_pos, std::uint64_t length) {
  const std::int64_t in_buffer = std::int64_t{file_pos} - cursor.buf_file_pos;
  const bool whole =
      in_buffer >= 0 && file_pos + static_cast<std::int64_t>(length) <= buffer_end_pos(cursor);
  const bool begun = in_buffer >= 0 && in_buffer < static_cast<std::int64_t>(cursor.buffer.size());
  if (whole || (begun && cursor.buffer.size() < jpeg_leading_length)) {
    cursor.pos = static_cast<std::uint32_t>(in_buffer);
    return ErrorCode::ok;
  }
  if (seek_to_offset(*cursor.file, file_pos) != ErrorCode::ok) {
    return ErrorCode::seek_failed;
  }
  const std::size_t arrived = mfread(cursor.buffer.data(), 1, cursor.buffer.size(), *cursor.file);
  cursor.buffer = cursor.buffer.first(arrived);
  cursor.buf_file_pos = file_pos;
  cursor.pos = 0;
  return ErrorCode::ok;
}

bool stands_on_exif_mark(const ByteCursor& cursor) {
  return text_of(cursor.rest()).starts_with(exif_mark);
}

/// An Exif segment's data: the mark and the TIFF header (Exif 2.2, 4.7.2).
ErrorCode enter_exif_segment(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  if (!stands_on_exif_mark(cursor)) {
    return ErrorCode::no_exif_data;
  }
  cursor_skip(cursor, exif_header_length);
  if (check_tiff_header(cursor, image, first_ifd) != ErrorCode::ok) {
    image.incomplete = true;
    return ErrorCode::no_exif_data;
  }
  return ErrorCode::ok;
}

/// Stands the cursor behind the length field of an APP1 segment. Offsets are limited to those of
/// one segment only where Exif is the first segment, as the standard demands.
ErrorCode enter_app1(ByteCursor& cursor, const SegmentWalk& walk, ImageFile& image) {
  const JpegSegment& segment = walk.segment;
  if (walk.steps > 1) {
    cursor.file_type = static_cast<std::uint16_t>(FileType::unknown);
  }
  const ErrorCode result = move_to_file_pos(cursor, segment.pos + 2, segment.payload_length());
  cursor.segment_len = segment.length;
  image.metadata_end = std::int64_t{segment.pos} + segment.length;
  cursor.segment_end = image.metadata_end - cursor.buf_file_pos;
  return result;
}

/// The first APP1 segment that begins with the Exif mark; others (XMP) are passed over.
ErrorCode locate_in_jpeg(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  SegmentWalk walk{.file = *cursor.file};
  for (bool more = first_segment(walk); more; more = next_segment(walk)) {
    std::array<std::uint8_t, exif_mark.size()> mark{};
    if (walk.segment.marker != marker_app1 ||
        mfread(mark.data(), 1, mark.size(), walk.file) != mark.size() ||
        text_of(mark) != exif_mark) {
      continue;
    }
    return enter_app1(cursor, walk, image) == ErrorCode::ok
               ? enter_exif_segment(cursor, image, first_ifd)
               : ErrorCode::no_exif_data;
  }
  return ErrorCode::no_exif_data;
}

/// The embedded JPEG image of a RAF file: start-of-image, APP1 marker, length field, Exif data.
ErrorCode locate_in_raf(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  std::uint16_t jpeg_pos = 0;
  const std::uint32_t pointer_pos = file_type_info(FileType::fujifilm_raf).jpeg_pointer_pos;
  if (const ErrorCode result = read_u16_at(*cursor.file, pointer_pos, jpeg_pos, true);
      result != ErrorCode::ok) {
    return result;
  }
  trace(0, "Fujifilm .RAF meta block is at offset %d (0%o 0x%x)\n", jpeg_pos, jpeg_pos, jpeg_pos);
  const std::uint32_t exif_pos = jpeg_pos + 6U;
  if (exif_pos >= cursor.buffer.size()) {
    return ErrorCode::no_exif_data;
  }
  cursor.pos = exif_pos;
  return enter_exif_segment(cursor, image, first_ifd);
}

ErrorCode locate_in_mrw(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  std::uint32_t data_pos = 0;
  std::uint32_t data_len = 0;
  if (find_mrw_tiff(cursor, data_pos, data_len) != ErrorCode::ok) {
    return ErrorCode::no_exif_data;
  }
  if (check_tiff_header(cursor, image, first_ifd) != ErrorCode::ok) {
    image.incomplete = true;
    return ErrorCode::no_exif_data;
  }
  return ErrorCode::ok;
}

/// What follows the header of a Canon raw file (CR2): a second header, with the offset of the IFD
/// of the raw picture. It is no part of any IFD, so nothing could write it again.
constexpr std::string_view raw_header_mark("CR\2\0", 4);

/// The signature was the header's first half. The IFD itself is fetched by its reader, wherever it
/// lies.
ErrorCode locate_in_tiff(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  first_ifd = cursor_get_u32(cursor);
  cursor.offset_base = 0;
  image.tiff_header_pos = 0;
  image.metadata_end = image.identity.size;
  image.images_unread |= text_of(cursor.rest()).starts_with(raw_header_mark);
  return seek_to_offset(*cursor.file, first_ifd);
}

/// The TIFF section of a DOS EPS file; its offsets count from its own first byte.
ErrorCode locate_in_eps(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  std::uint32_t tiff_pos = 0;
  if (read_u32_at(*cursor.file, eps_tiff_pointer_pos, tiff_pos, false) != ErrorCode::ok ||
      move_to_file_pos(cursor, tiff_pos, work_buffer_size) != ErrorCode::ok) {
    return ErrorCode::seek_failed;
  }
  cursor.offset_base = cursor.pos;
  image.tiff_header_pos = tiff_pos;
  const std::uint16_t order = cursor_get_u16(cursor);
  ErrorCode result = ErrorCode::ok;
  if (order != order_little && order != order_big) {
    trace(0, "EPS: File contains invalid byte order %4x\n", order);
    result = ErrorCode::unknown_byte_order;
  }
  cursor.big_endian = order == order_big;
  image.big_endian = cursor.big_endian;
  if (cursor_get_u16(cursor) != tiff_magic) {
    return ErrorCode::tiff_tag_missing;
  }
  first_ifd = cursor_get_u32(cursor);
  return result;
}

}  // namespace

ErrorCode locate_tiff_header(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  switch (static_cast<FileType>(cursor.file_type)) {
    case FileType::fujifilm_raf:
      return locate_in_raf(cursor, image, first_ifd);
    case FileType::minolta_mrw:
      return locate_in_mrw(cursor, image, first_ifd);
    case FileType::jpeg:
      return locate_in_jpeg(cursor, image, first_ifd);
    case FileType::tiff:
      return locate_in_tiff(cursor, image, first_ifd);
    case FileType::canon_crw:
    case FileType::eps:
      return ErrorCode::no_exif_data;
    case FileType::eps_dos:
      return locate_in_eps(cursor, image, first_ifd);
    case FileType::wave_audio:
    case FileType::unknown:
      break;
  }
  return ErrorCode::unknown_file_type;
}

ErrorCode check_tiff_header(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd) {
  cursor.offset_base = cursor.pos;
  image.tiff_header_pos = cursor_tell(cursor);
  const std::uint16_t order = cursor_get_u16(cursor);
  cursor.big_endian = order == order_big;
  if (order != order_little && order != order_big) {
    return ErrorCode::unknown_byte_order;
  }
  image.big_endian = cursor.big_endian;
  const std::uint16_t magic = cursor_get_u16(cursor);
  if (magic != tiff_magic) {
    print_error("Error: file %s -TIFF tag value %x incorrect (expected %x)\n",
                image.file_name.data(), magic, tiff_magic);
    return ErrorCode::tiff_tag_missing;
  }
  first_ifd = cursor_get_u32(cursor);
  return ErrorCode::ok;
}

bool base_is_big_endian(const ByteCursor& cursor) {
  const std::int64_t base = cursor.offset_base;
  if (base < 0 || base + 2 > static_cast<std::int64_t>(cursor.buffer.size())) {
    return false;
  }
  const auto word = cursor.buffer.subspan(static_cast<std::size_t>(base)).first<2>();
  return load_u16(word, true) == order_big;
}

}  // namespace tagmend
