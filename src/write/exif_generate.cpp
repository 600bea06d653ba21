#include "write/exif_generate.h"

#include <array>

#include "read/jpeg_markers.h"
#include "read/tiff_header.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "support/settings.h"
#include "write/ifd_writer.h"

namespace tagmend {
namespace {

constexpr std::uint32_t segment_header_size = 10;  // marker, length, "Exif", two NULs
constexpr std::uint32_t segment_tail_size = 2;     // counted by the segment's length

/// The header's length field counts the header without its marker, the data and the tail.
void put_segment_header(ByteCursor& header, std::uint64_t data_end) {
  static constexpr std::array<std::uint8_t, 1> padding{};
  header.big_endian = true;
  cursor_put_u16(header, marker_app1);
  cursor_put_u16(header, static_cast<std::uint16_t>(data_end + segment_header_size));
  cursor_put_bytes(header, bytes_of(exif_mark));
  cursor_put_bytes(header, padding);
}

/// The two bytes behind the TIFF data of a segment.
ErrorCode write_tail(MFILE& output, std::uint64_t position, const char* file_name) {
  static constexpr std::array<std::uint8_t, segment_tail_size> zeros{};
  return write_block_at(output, position, zeros, file_name);
}

}  // namespace

ErrorCode generate_exif(MFILE& source, MFILE& output, std::uint64_t position,
                        const ImageFile& image) {
  const bool is_jpeg = image.file_type == FileType::jpeg;
  if (!is_jpeg && image.file_type != FileType::tiff) {
    if (!library_settings.errors_suppressed) {
      print_output("Internal Error: Unknown image file type %d in generate_exif()\n",
                   static_cast<int>(image.file_type));
    }
    end_program(exit_internal);
  }
  const char* file_name = image.file_name.data();
  IfdWriter writer{.image = image, .source = source, .output = output};
  writer.base = static_cast<std::int64_t>(position) + (is_jpeg ? segment_header_size : 0);
  writer.ifd_pos = tiff_header_length;
  writer.data_end = tiff_header_length;
  writer.big_endian = image.big_endian;
  ErrorCode result = write_main_chain(writer);
  if (result != ErrorCode::ok) {
    return result;
  }

  const auto data_end = static_cast<std::uint64_t>(writer.data_end);
  std::array<std::uint8_t, segment_header_size + tiff_header_length> room;
  ByteCursor header;
  cursor_init(header, nullptr, room, 0);
  if (is_jpeg) {
    if (data_end + segment_header_size > 0xFFFF) {
      print_error("Error: File %s: Generated EXIF data too long. File not changed.\n", file_name);
      return ErrorCode::exif_too_long;
    }
    put_segment_header(header, data_end);
    result = write_tail(output, position + segment_header_size + data_end, file_name);
    if (result != ErrorCode::ok) {
      return result;
    }
  }
  header.big_endian = image.big_endian;
  put_tiff_header(header);
  result = write_block_at(output, position, header.buffer.first(header.pos), file_name);
  if (result != ErrorCode::ok) {
    return result;
  }
  return seek_to_offset(output, position + segment_header_size + data_end + segment_tail_size);
}

}  // namespace tagmend
