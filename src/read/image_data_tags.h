// The fields by which an IFD tells where its image data lies: strips and tiles (TIFF 6.0, sections
// 3 and 15) and JPEG interchange streams such as thumbnails (Exif 2.2, 4.5.5).
#pragma once

#include <array>
#include <cstdint>

namespace tagmend {

/// Two fields of an IFD that tell where pieces of image data lie and how long they are.
struct ImageDataPair {
  std::uint32_t offsets_tag;
  std::uint32_t lengths_tag;

  [[nodiscard]] constexpr bool holds(std::uint32_t tag) const {
    return tag == offsets_tag || tag == lengths_tag;
  }
};

inline constexpr ImageDataPair jpeg_stream_pair = {0x0201, 0x0202};
inline constexpr ImageDataPair strip_pair = {0x0111, 0x0117};
inline constexpr ImageDataPair tile_pair = {0x0144, 0x0145};
inline constexpr std::array<ImageDataPair, 2> piece_pairs = {strip_pair, tile_pair};

constexpr bool locates_image_data(std::uint32_t tag) {
  return jpeg_stream_pair.holds(tag) || strip_pair.holds(tag) || tile_pair.holds(tag);
}

}  // namespace tagmend
