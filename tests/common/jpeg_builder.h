// Builds JPEG files (ITU-T T.81, annex B) with the segments that hold metadata, and the Photoshop
// resources with IPTC datasets (IPTC IIM 4) that stand in one of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "common/bytes.h"
#include "common/tiff_builder.h"

namespace tagmend::test {

// ---- Segments ----

inline Bytes segment(std::uint8_t marker, const Bytes& payload) {
  return joined({{0xFF, marker}, big16(size_of(payload) + 2), payload});
}

/// Compressed data with the byte stuffing and restart markers of a real scan, and bytes after the
/// end-of-image marker that some cameras leave there.
inline Bytes scan_and_trailer() {
  return joined({segment(0xDA, {1, 1, 0, 0, 63, 0}),
                 {0x12, 0xFF, 0x00, 0x34, 0xFF, 0xD0},
                 noise(75, 3),
                 {0xFF, 0xD9},
                 bytes_of("after the image")});
}

/// Start of image, the segments, and the scan.
inline Bytes jpeg(std::initializer_list<Bytes> segments) {
  return joined({{0xFF, 0xD8}, joined(segments), scan_and_trailer()});
}

inline Bytes app0_jfif() {
  return segment(0xE0, joined({bytes_of("JFIF"), {0, 1, 1, 1, 0, 72, 0, 72, 0, 0}}));
}
inline Bytes app1_exif(const Bytes& tiff) {
  return segment(0xE1, joined({bytes_of("Exif"), {0, 0}, tiff}));
}
inline Bytes app1_xmp() {
  return segment(0xE1,
                 joined({bytes_of("http://ns.adobe.com/xap/1.0/"), {0}, bytes_of("<x:xmpmeta/>")}));
}
inline Bytes app2_icc() {
  return segment(0xE2, joined({bytes_of("ICC_PROFILE"), {0, 1, 1}, noise(61, 2)}));
}
/// A Flashpix extension segment with stream data.
inline Bytes app2_flashpix(std::uint8_t stream) {
  return segment(0xE2,
                 joined({bytes_of("FPXR"), {0, 0, 2, 0, stream, 0, 0, 0, 5}, noise(33, stream)}));
}
inline Bytes app14_adobe() {
  return segment(0xEE, joined({bytes_of("Adobe"), {0, 100, 0, 0, 0, 0, 1}}));
}
inline Bytes comment(std::string_view value) { return segment(0xFE, bytes_of(value)); }
inline Bytes quantisation_table() { return segment(0xDB, joined({{0}, noise(64, 5)})); }
inline Bytes frame_header(std::uint32_t width, std::uint32_t height) {
  return segment(0xC0, joined({{8}, big16(height), big16(width), {1, 1, 0x11, 0}}));
}
/// What every JPEG here ends its headers with.
inline Bytes picture() { return joined({quantisation_table(), frame_header(1234, 567)}); }

/// A source segment with scattered TIFF data.
inline Bytes source_exif(bool big_endian, const std::vector<Ifd>& chain) {
  return app1_exif(scattered_tiff(big_endian, chain));
}
/// The segment that the writer makes: its data and two closing zero bytes.
inline Bytes written_exif(bool big_endian, const std::vector<Ifd>& chain) {
  return app1_exif(joined({written_tiff(big_endian, chain), {0, 0}}));
}

// ---- Photoshop resources and IPTC datasets ----

/// An image resource block; name and data are padded to an even length.
inline Bytes resource(std::uint16_t number, std::string_view name, const Bytes& data) {
  Bytes out = joined(
      {bytes_of("8BIM"), big16(number), {static_cast<std::uint8_t>(name.size())}, bytes_of(name)});
  out.resize(layout::even(out.size()));
  out = joined({out, big32(size_of(data)), data});
  out.resize(layout::even(out.size()));
  return out;
}
inline Bytes dataset(std::uint8_t record, std::uint8_t number, const Bytes& value) {
  return joined({{0x1C, record, number}, big16(size_of(value)), value});
}
inline Bytes dataset(std::uint8_t record, std::uint8_t number, std::string_view value) {
  return dataset(record, number, bytes_of(value));
}
/// The datasets as a field of a TIFF file: LONGs in the file's order that lie as the bytes do.
inline Entry iptc_field(Bytes content, bool big_endian) {
  content.resize((content.size() + 3) / 4 * 4);
  Entry field = longs(0x83BB, Numbers(content.size() / 4));
  for (std::size_t at = 0; at < content.size(); ++at) {
    field.numbers[at / 4] |= std::uint32_t{content[at]} << 8 * (big_endian ? 3 - at % 4 : at % 4);
  }
  return field;
}
/// The payload of an APP13 segment.
inline Bytes photoshop(std::initializer_list<Bytes> resources) {
  return joined({bytes_of("Photoshop 3.0"), {0}, joined(resources)});
}
inline Bytes app13_photoshop(std::initializer_list<Bytes> resources) {
  return segment(0xED, photoshop(resources));
}

}  // namespace tagmend::test
