// The top-level read of a file.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "read/read_context.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// Reads the metadata of the file `file_name` (in the current directory, `directory` is for
/// messages and templates), or of `memory` when it is not empty, into the context's records. `sort`
/// orders the table with compare_entries. The result is that of the reader that failed first.
ErrorCode read_image_file(ReadContext& context, std::string_view directory, const char* file_name,
                          std::span<std::uint8_t> memory, bool sort);

/// The same for an edit, which takes over from the open file what it does not change: what is
/// written then comes from the very file that was read. `file` is null when it could not be opened;
/// close_image_file closes it.
ErrorCode read_and_keep_open(ReadContext& context, std::string_view directory,
                             const char* file_name, MFileHandle& file);

}  // namespace tagmend
