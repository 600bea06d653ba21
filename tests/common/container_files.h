// Files of the raw formats and PostScript, and an RMETA segment, around the metadata that they
// hold.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/jpeg_builder.h"

namespace tagmend::test {

/// A Fujifilm RAF file. The 16-bit position of the embedded image stands at 86.
inline Bytes raf_file(const Bytes& image) {
  Bytes file = bytes_of("FUJIFILMCCD-RAW 0201");
  put(file, 86, 0x94, 2, true);
  file.resize(0x94, 0xEE);
  return joined({file, image, noise(300, 1)});
}

/// A block that says to be of some length.
inline Bytes mrw_block(std::string_view name, std::uint32_t length, const Bytes& data) {
  return joined({{0}, bytes_of(name), big32(length), data});
}
inline Bytes mrw_block(std::string_view name, const Bytes& data) {
  return mrw_block(name, size_of(data), data);
}
/// A Minolta MRW file: its blocks, and the image.
inline Bytes mrw_file(const Bytes& blocks) {
  return joined({mrw_block("MRM", blocks), noise(300, 3)});
}

/// A Canon CRW file. The signature tells where the heap begins; the meta data block lies 40 bytes
/// behind that, and the last records of the file tell its place and that of the thumbnail.
inline Bytes crw_file(const Bytes& block, bool big_endian, std::uint32_t heap = 0x1A) {
  constexpr std::uint32_t block_at = 40;
  Bytes file = bytes_of(big_endian ? "MM" : "II");
  put(file, 2, heap, 4, big_endian);
  put(file, 6, bytes_of("HEAPCCDR"));
  put(file, heap + block_at, block);
  const std::size_t end = file.size() + 22;
  put(file, end - 22, 500, 4, big_endian);
  put(file, end - 18, 8, 4, big_endian);
  put(file, end - 8, block_at, 4, big_endian);
  put(file, end - 4, block_at + size_of(block), 4, big_endian);
  return file;
}

/// Comment lines of hexadecimal digits.
inline std::string eps_lines(const Bytes& bytes, std::size_t bytes_per_line, bool upper_case,
                             const std::string& line_end) {
  std::string lines;
  for (std::size_t at = 0; at < bytes.size(); at += bytes_per_line) {
    const std::size_t size = std::min(bytes_per_line, bytes.size() - at);
    lines += "% " + digits_of(std::span(bytes).subspan(at, size), upper_case) + line_end;
  }
  return lines;
}

/// An EPS file with image resources as such lines.
inline Bytes eps_file(const Bytes& resources, bool upper_case) {
  return bytes_of(
      "%!PS-Adobe-3.0 EPSF-3.0\n%%Title: a\n%BeginPhotoshop: " + std::to_string(resources.size()) +
      "\n" + eps_lines(resources, 32, upper_case, "\r\n") + "%EndPhotoshop\nshowpage\n");
}

/// EXIF data as an image resource.
inline Bytes exif_resource(const Bytes& tiff) {
  return resource(1058, "", joined({bytes_of("Exif"), {0, 0}, tiff}));
}

/// A DOS EPS file: the binary header, the script and the TIFF preview.
inline Bytes dos_eps_file(const Bytes& tiff) {
  const Bytes script = bytes_of("%!PS-Adobe-3.0 EPSF-3.0\nshowpage\n");
  Bytes file = {0xC5, 0xD0, 0xD3, 0xC6};
  put(file, 4, 30, 4, false);
  put(file, 8, size_of(script), 4, false);
  put(file, 20, 30 + size_of(script), 4, false);
  put(file, 24, size_of(tiff), 4, false);
  put(file, 28, 0xFFFF, 2, false);
  return joined({file, script, tiff});
}

/// A record of an RMETA segment, whose length counts itself.
inline Bytes rmeta_record(std::uint32_t type, const Bytes& data, bool big_endian) {
  Bytes record;
  put(record, 0, type, 2, big_endian);
  put(record, 2, size_of(data) + 2, 2, big_endian);
  return joined({record, data});
}
inline Bytes rmeta_record(std::uint32_t type, const std::vector<std::string>& texts,
                          bool big_endian) {
  Bytes data;
  for (const std::string& value : texts) {
    data = joined({data, bytes_of(value), {0}});
  }
  return rmeta_record(type, data, big_endian);
}

/// An APP5 segment with three custom fields.
inline Bytes app5_rmeta(bool big_endian) {
  return segment(0xE5, joined({bytes_of("RMETA"),
                               {0},
                               bytes_of(big_endian ? "MM" : "II"),
                               {1, 2, 3, 4},
                               rmeta_record(1, {"Who", "Where", "Why"}, big_endian),
                               rmeta_record(2, {"Ann", "Oslo", "?"}, big_endian)}));
}

}  // namespace tagmend::test
