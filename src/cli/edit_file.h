// One file: read, checked, edited and rewritten.
#pragma once

#include <string_view>

#include "cli/session.h"
#include "support/error_code.h"
#include "support/file_names.h"
#include "support/mfile.h"

namespace tagmend {

/// Reads the file `name` of the current directory into the session's records; `directory` is for
/// messages and templates. ok, with the file open for edit_file, when it may be edited, else
/// file_type_not_editable, not_a_jpeg, unknown_file_type, or read_failed when the system could not
/// read it. Any other failure of the reader leaves a file that can be edited, of which not
/// everything could be read.
ErrorCode load_file(std::string_view directory, const char* name, Session& session,
                    MFileHandle& source);

/// Applies all edits of the session to the file that load_file has read and left open, and rewrites
/// it. Codes of the writers; the file is then unchanged under its name.
ErrorCode edit_file(const char* name, MFileHandle source, CreatedFileList& created,
                    Session& session);

}  // namespace tagmend
