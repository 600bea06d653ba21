// The walk over a directory: its files are edited, in the order in which the system lists them.
#pragma once

#include "cli/session.h"

namespace tagmend {

/// Edits the files of the current directory, which `name` names in messages and in the path handed
/// to the reader; with `include_subdirs` those of all its subdirectories too. A directory that
/// cannot be read, and one that a symbolic link leads back to, is reported and passed over. The
/// current directory is afterwards any of those walked. Ends the program (status 255) when a
/// created-file list cannot be allocated.
void walk_directory(const char* name, bool include_subdirs, Session& session);

}  // namespace tagmend
