// IFDs (TIFF 6.0, section 2) into the field table: every field of every IFD that can be reached,
// past damaged entries up to a fixed number of format errors.
#pragma once

#include <cstdint>

#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// The most entries that an IFD may have, and the most format errors that a chain may have.
inline constexpr std::uint32_t max_ifd_entries = 200;
inline constexpr std::uint32_t max_format_errors = 10;

/// How many IFDs of one file are read: a loop of offsets ends here.
inline constexpr std::uint16_t max_ifds = 250;

/// Reads the chain of IFDs at `offset` (from the cursor's base) and all IFDs nested in it. `parent`
/// is the tag of the pointer that led here, or a root code. Returns the result of the first entry
/// that failed, else ok.
ErrorCode parse_ifd(ByteCursor cursor, std::uint32_t offset, std::uint32_t parent,
                    std::uint16_t level, std::uint32_t seq, ReadContext& context);

}  // namespace tagmend
