// The value of an IFD entry: brought into reach, decoded, and appended to the table as a field.
#pragma once

#include <cstdint>

#include "read/ifd_chain.h"
#include "read/read_context.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/tagged_memory.h"

namespace tagmend {

/// cursor_seek_offset to an offset with the bytes behind it that are needed, as far as the file has
/// them: what begins near the end of the buffer is read again in one piece.
ErrorCode place_cursor(ByteCursor& cursor, std::uint32_t offset, std::uint64_t needed,
                       WorkBuffer& buffer);

/// Decodes the value of an ordinary entry and appends its field to the table: ok, too_many_fields
/// or a code of cursor_seek_offset.
ErrorCode read_value(IfdChain& chain, StoredEntry& stored, ReadContext& context);

/// Trace lines of entries that point at one IFD and at an array of IFDs.
void trace_pointer(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset);
void trace_array(const IfdChain& chain, const StoredEntry& entry, std::uint32_t offset);

}  // namespace tagmend
