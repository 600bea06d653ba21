// Where a new field goes, so that the tags of an IFD stay in ascending order.
#pragma once

#include <cstdint>

#include "read/image_file.h"

namespace tagmend {

inline constexpr int before_all = -1;
inline constexpr int nowhere = -2;

struct InsertPosition {
  int position = before_all;  ///< table place of the entry to follow, before_all or nowhere
  std::uint16_t level = 0;
  std::uint32_t seq = 0;
  IfdPlace ifd;          ///< of the entries that it joins
  bool new_ifd = false;  ///< its IFD does not exist yet
};

/// The place of a new field of this kind and tag in a table that is sorted by index.
InsertPosition find_insert_position(IfdKind kind, std::uint32_t tag, const ImageFile& image);

}  // namespace tagmend
