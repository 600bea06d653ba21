// Writing IFDs (TIFF 6.0, section 2): entries, the values that do not fit in them, nested IFDs and
// the image data that they point at, laid out depth first in table order.
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Where the writing of one nesting level stands; a nested level gets a copy. Offsets count from
/// `base`; all of them stay below 2^32.
struct IfdWriter {
  const ImageFile& image;
  MFILE& source;  ///< unchanged values and image data are copied from here
  MFILE& output;
  std::int64_t base = 0;      ///< output file offset from which the stored offsets count
  std::int64_t ifd_pos = 0;   ///< offset of the IFD to be written next; negative before a maker
                              ///< note's own TIFF header
  std::int64_t data_end = 0;  ///< offset of the next free byte, always even
  bool big_endian = true;
};

/// Puts the TIFF header of an IFD that stands right behind it, in the byte order of the cursor.
void put_tiff_header(ByteCursor& buffer);

/// Writes the main chain of the table with all that is nested in it. end_of_buffer when the source
/// ends within a value, exif_too_long past 4 GiB, file_type_not_editable when image data would lie
/// beyond the reach of its offsets, seek_failed, read_failed, write_failed, no_memory or
/// fatal_internal.
ErrorCode write_main_chain(IfdWriter& writer);

}  // namespace tagmend
