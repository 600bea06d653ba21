// Ricoh custom fields: names and values that the camera's user defined, in a JPEG APP5 segment.
#pragma once

#include <cstdint>

#include "read/read_context.h"
#include "support/mfile.h"

namespace tagmend {

/// Reads an APP5 payload of `length` bytes at the file's position; fields go to the field table.
void read_rmeta(ReadContext& context, MFILE& file, std::uint32_t length);

}  // namespace tagmend
