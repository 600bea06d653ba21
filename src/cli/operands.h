// The operands of the command line: each is a file, or a directory whose files are meant.
#pragma once

#include <span>

#include "cli/session.h"

namespace tagmend {

/// Edits what the operands name, in their order. Every file is edited in its own directory; the
/// directory in which the run began is the current one before and after each operand. Failures are
/// reported and the next operand is taken. Ends the program (status 255) when a created-file list
/// cannot be allocated.
void edit_operands(std::span<char* const> operands, bool include_subdirs, Session& session);

}  // namespace tagmend
