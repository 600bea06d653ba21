// The half-written new file: created so that it can never be somebody else's, and removed whenever
// its rewrite does not come to its end, be it by a failure, a signal or a fatal error.
#pragma once

#include <signal.h>

#include "support/error_code.h"
#include "support/file_names.h"
#include "support/mfile.h"

namespace tagmend {

/// Creates the file under a fresh temporary name, which `name` receives. From here on INT, TERM,
/// HUP and end_program remove it. ok, or cannot_open_file after a message.
ErrorCode create_temp_file(SiblingName& name, MFileHandle& file);

/// Holds INT, TERM and HUP back while it lives: for steps that no signal may come between.
struct SignalsHeld {
  sigset_t before;

  SignalsHeld();
  ~SignalsHeld();
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
};

/// Removes the file.
void discard_temp_file();

/// What stands under the temporary name, if anything, is no longer to be removed.
void release_temp_file();

}  // namespace tagmend
