// Runs of the program inside this process, in a directory of their own: a fuzzer needs thousands.
#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "cli/metadata_hooks.h"
#include "cli/run.h"
#include "cli/session.h"
#include "support/message.h"
#include "support/settings.h"
#include "write/temp_file.h"

namespace tagmend::test {

/// Thrown where the program would have ended: end_program runs its clean-up first, which is ours.
struct EndOfProgram {};

/// From here on an early end of the program throws EndOfProgram, once. The writers register their
/// own clean-up with the first temporary file, which therefore comes before.
inline void throw_at_end_of_program() {
  static bool registered = false;
  if (!registered) {
    registered = true;
    SiblingName name;
    MFileHandle file;
    if (create_temp_file(name, file) == ErrorCode::ok) {
      discard_temp_file();
    }
  }
  set_end_cleanup([] {
    discard_temp_file();
    throw EndOfProgram{};
  });
}

/// Exit status of a run with these arguments in the current directory; -1 when it was ended early.
inline int run_here(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "tagmend");
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) {
    argv.push_back(argument.data());
  }
  argv.push_back(nullptr);
  library_settings = {};
  throw_at_end_of_program();
  try {
    return run(static_cast<int>(arguments.size()), argv.data());
  } catch (const EndOfProgram&) {
    return -1;
  }
}

/// What a reader fills: the records of the session.
inline ReadContext context_of(const Session& session) {
  return {.image = session.image, .iptc = session.iptc, .hooks = metadata_hooks()};
}

/// A fresh directory, in memory where the system has such a place, that is the current one while
/// the object lives.
class ScratchDirectory {
 public:
  ScratchDirectory() : outside_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    for (const char* const place : {"/dev/shm", "/tmp"}) {
      root_ = std::string(place) + "/tagmend-XXXXXX";
      if (::mkdtemp(root_.data()) != nullptr && ::chdir(root_.c_str()) == 0) {
        return;
      }
    }
    std::abort();
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory() {
    clear();
    if (::fchdir(outside_) == 0) {
      ::rmdir(root_.c_str());
    }
    ::close(outside_);
  }

  static std::vector<std::string> names() {
    std::vector<std::string> found;
    DIR* const directory = ::opendir(".");
    while (const dirent* const entry = ::readdir(directory)) {
      if (entry->d_name[0] != '.') {
        found.emplace_back(entry->d_name);
      }
    }
    ::closedir(directory);
    return found;
  }

  static void clear() {
    for (const std::string& name : names()) {
      ::unlink(name.c_str());
    }
  }

 private:
  std::string root_;
  int outside_;
};

}  // namespace tagmend::test
