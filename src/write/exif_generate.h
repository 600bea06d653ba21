// The field table back into EXIF data: an APP1 segment (Exif 2.2), or a whole TIFF file (TIFF 6.0).
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Writes the EXIF data of the table to the output: for a JPEG an APP1 segment at `position`, for a
/// TIFF the file from `position` on. Unchanged values and image data are copied from the source.
/// Behind a segment the output then stands where the next one goes. exif_too_long, or a code of
/// write_main_chain.
ErrorCode generate_exif(MFILE& source, MFILE& output, std::uint64_t position,
                        const ImageFile& image);

}  // namespace tagmend
