#include "write/exif_generate.h"

#include <array>
#include <string_view>

#include "read/jpeg_markers.h"
#include "support/byte_order.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "support/settings.h"
#include "write/ifd_writer.h"

namespace tagmend {
namespace {

constexpr std::uint32_t tiff_header_size = 8;
constexpr std::uint32_t segment_header_size = 10;  // marker, length, "Exif", two NULs
constexpr std::uint32_t segment_tail_size = 2;     // counted by the segment's length

struct Header {
  std::array<std::uint8_t, segment_header_size + tiff_header_size> bytes{};
  std::size_t length = 0;

  void put(std::string_view text) {
    for (const char c : text) {
      bytes[length++] = static_cast<std::uint8_t>(c);
    }
  }
  void put_u16(std::uint16_t value, bool big_endian) {
    store_u16(std::span(bytes).subspan(length).first<2>(), value, big_endian);
    length += 2;
  }
  void put_u32(std::uint32_t value, bool big_endian) {
    store_u32(std::span(bytes).subspan(length).first<4>(), value, big_endian);
    length += 4;
  }
};

void put_segment_header(Header& header, std::uint64_t data_end) {
  header.put_u16(marker_app1, true);
  header.put_u16(static_cast<std::uint16_t>(data_end + segment_header_size), true);
  header.put(exif_mark);
  header.put(std::string_view("\0", 1));
}

void put_tiff_header(Header& header, bool big_endian) {
  header.put(big_endian ? "MM" : "II");
  header.put_u16(42, big_endian);
  header.put_u32(tiff_header_size, big_endian);
}

// The two bytes behind the TIFF data of a segment.
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
  writer.ifd_pos = tiff_header_size;
  writer.data_end = tiff_header_size;
  writer.big_endian = image.big_endian;
  ErrorCode result = write_main_chain(writer);
  if (result != ErrorCode::ok) {
    return result;
  }

  const auto data_end = static_cast<std::uint64_t>(writer.data_end);
  Header header;
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
  put_tiff_header(header, image.big_endian);
  result =
      write_block_at(output, position, std::span(header.bytes).first(header.length), file_name);
  if (result != ErrorCode::ok) {
    return result;
  }
  return seek_to_offset(output, position + segment_header_size + data_end + segment_tail_size);
}

}  // namespace tagmend
