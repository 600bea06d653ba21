// Image data that an IFD points at, and whether it can be carried into a new file.
#pragma once

#include <cstdint>

#include "read/image_data_tags.h"
#include "read/image_file.h"

namespace tagmend {

/// Whether the fields of an entry's IFD may locate image data: in all but maker notes, where their
/// tags mean other things; of those only the Nikon thumbnail does.
bool is_image_ifd(const FieldEntry& entry);

/// Bytes of one number of a field of integers of 16 or 32 bits, which is what offsets and lengths
/// are; 0 for any other type.
std::uint32_t integer_size(const FieldEntry& entry);

/// Whether all image data that the file's IFDs point at can be carried over: offsets and lengths
/// stand once each, in pairs, and none of them is of a kind that cannot be moved.
[[nodiscard]] bool can_carry_image_data(const ImageFile& image);

/// Whether a maker note tells where in the file a preview picture lies, from the file offset
/// `moved` on: outside of all fields, it goes with the old metadata, or moves while its offset
/// stays.
[[nodiscard]] bool leaves_preview_behind(const ImageFile& image, std::int64_t moved);

/// The number that an entry holds: its value when it is one SHORT or LONG, else the number that its
/// text begins with.
std::uint32_t entry_number(const FieldEntry& entry);

}  // namespace tagmend
