// Reading Photoshop image resource blocks and the IPTC datasets in them.
#pragma once

#include <cstdint>

#include "iptc/iptc_store.h"
#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// Reads a JPEG APP13 payload of `length` bytes at the file's position: ok, iptc_invalid or
/// too_many_iptc_fields. A segment that is not Photoshop's leaves the store as it is.
ErrorCode read_app13(ReadContext& context, MFILE& file, std::uint32_t length);

/// Walks resource blocks from the cursor's position to the end of its buffer. With the header flag
/// they follow "Photoshop 3.0" and IPTC datasets are decoded; without it those are passed over.
/// Codes of read_app13.
ErrorCode walk_resource_blocks(ReadContext& context, ByteCursor cursor, bool header);

/// The hooks of a read that reach this folder: fields 0x83BB and 0x8649 of a TIFF file.
void read_iptc_value(ReadContext& context, const ByteCursor& value, std::uint64_t length);
void read_photoshop_value(ReadContext& context, const ByteCursor& value, std::uint64_t length);

}  // namespace tagmend
