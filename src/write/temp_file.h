// The half-written new file: created so that it can never be somebody else's, and removed whenever
// its rewrite does not come to its end, be it by a failure, a signal or a fatal error.
#pragma once

#include "support/error_code.h"
#include "support/file_names.h"
#include "support/mfile.h"

namespace tagmend {

/// Creates the file under a fresh temporary name, which `name` receives. From here on INT, TERM,
/// HUP and end_program remove it. ok, or cannot_open_file after a message.
ErrorCode create_temp_file(SiblingName& name, MFileHandle& file);

/// Removes the file.
void discard_temp_file();

/// The file has taken its final name: nothing is left to remove.
void release_temp_file();

}  // namespace tagmend
