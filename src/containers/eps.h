// The Photoshop block of an EPSF-3.0 file: image resources as hexadecimal comment lines.
#pragma once

#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// Finds, decodes and walks the block in the leading data of the file. ok, no_exif_data (no block),
/// no_memory, end_of_buffer, odd_hex_length, invalid_hex_digit, iptc_invalid or
/// too_many_iptc_fields.
ErrorCode read_eps_photoshop(ReadContext& context, const ByteCursor& data);

}  // namespace tagmend
