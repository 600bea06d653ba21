// Image data that an IFD points at: strips and tiles (TIFF 6.0, sections 3 and 15) and JPEG
// interchange streams such as thumbnails (Exif 2.2, 4.5.5).
#pragma once

#include <array>
#include <cstdint>

#include "read/image_file.h"

namespace tagmend {

/// Two fields of an IFD that tell where pieces of image data lie and how long they are.
struct ImageDataPair {
  std::uint32_t offsets_tag;
  std::uint32_t lengths_tag;
};

inline constexpr ImageDataPair jpeg_stream_pair = {0x0201, 0x0202};
inline constexpr std::array<ImageDataPair, 2> piece_pairs = {{
    {0x0111, 0x0117},  // strips
    {0x0144, 0x0145},  // tiles
}};

/// Whether the IFD of an entry describes an image: those of the main chain, of sub-IFD arrays, and
/// the Nikon thumbnail. Elsewhere (in maker notes) the tags above mean other things.
bool is_image_ifd(const FieldEntry& entry);

/// Whether all image data that the file's IFDs point at can be carried over.
[[nodiscard]] bool can_carry_image_data(const ImageFile& image);

/// The number that an entry holds: its value when it is one SHORT or LONG, else the number that its
/// text begins with.
std::uint32_t entry_number(const FieldEntry& entry);

}  // namespace tagmend
