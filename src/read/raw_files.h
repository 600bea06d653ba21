// Canon CRW and Minolta MRW files.
#pragma once

#include <cstdint>

#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Finds the TTW block of an MRW file; the cursor then stands on its data. ok or no_exif_data.
ErrorCode find_mrw_tiff(ByteCursor& cursor, std::uint32_t& data_pos, std::uint32_t& data_len);

/// Reads the meta data block of a CRW file into the field table, and where its thumbnail lies. ok,
/// seek_failed, end_of_buffer, read_failed or no_memory.
ErrorCode read_crw(ReadContext& context, MFILE& file, bool big_endian);

}  // namespace tagmend
