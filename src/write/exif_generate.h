// The field table back into EXIF data: an APP1 segment (Exif 2.2), or a whole TIFF file (TIFF 6.0).
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Writes the EXIF data of the table to the output: for a JPEG an APP1 segment at `position`, for a
/// TIFF the file from `position` on. Unchanged values and image data are copied from the source.
/// The output then stands behind what was written. exif_too_long, end_of_buffer (the source ends
/// within a value), seek_failed, write_failed or fatal_internal.
ErrorCode generate_exif(MFILE& source, MFILE& output, std::uint64_t position,
                        const ImageFile& image);

}  // namespace tagmend
