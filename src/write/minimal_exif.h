// The fields that a file without EXIF data starts with.
#pragma once

#include "read/image_file.h"

namespace tagmend {

/// Gives a file without any EXIF field the two that new EXIF data starts with.
void init_minimal_exif(ImageFile& image);

}  // namespace tagmend
