#include "cli/operands.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "cli/created_list.h"
#include "cli/edit_file.h"
#include "cli/paths.h"
#include "cli/walk.h"
#include "support/descriptor.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// getcwd's text comes from malloc.
struct FreeText {
  // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
  void operator()(char* text) const { std::free(text); }
};

/// The directory in which the run began. The descriptor leads back to it however long its path is
/// and wherever it is moved; the path is for the message, and for systems that open no descriptor.
struct StartDirectory {
  Descriptor descriptor;
  std::unique_ptr<char, FreeText> path;
};

/// Descriptors of the start directory, which can be neither read nor written, also take the places
/// of standard streams that the caller closed: a file opened there would be sent our messages.
int open_start_directory() {
  int number = -1;
  do {
    number = open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
  } while (number >= 0 && number <= STDERR_FILENO);
  return number;
}

StartDirectory record_start_directory() {
  return {.descriptor = Descriptor(open_start_directory()),
          .path = std::unique_ptr<char, FreeText>(getcwd(nullptr, 0))};
}

bool return_to(const StartDirectory& start) {
  const char* path = start.path == nullptr ? "." : start.path.get();
  if (fchdir(start.descriptor.number) == 0 || chdir(path) == 0) {
    return true;
  }
  print_error("Error: Can't open directory %s\n", path);
  return false;
}

bool enter_directory(const char* name) {
  if (chdir(name) == 0) {
    return true;
  }
  print_error("Error: Can't open directory %s\n", name);
  return false;
}

void refuse_operand(const char* operand, ErrorCode code) {
  print_error("Error: File %s: %s\n", operand, error_text(code));
}

void edit_file_operand(const char* operand, CreatedFileList& created, Session& session) {
  const SplitPath path = split_path(operand);
  if (!path.directory.empty() && !enter_directory(std::string(path.directory).c_str())) {
    refuse_operand(operand, ErrorCode::cannot_open_file);
    return;
  }
  MFileHandle source;
  ErrorCode code = load_file(path.directory, path.name, session, source);
  if (code == ErrorCode::not_a_jpeg || code == ErrorCode::unknown_file_type) {
    return;
  }
  if (code == ErrorCode::ok) {
    code = edit_file(path.name, std::move(source), created, session);
  }
  if (code != ErrorCode::ok) {
    refuse_operand(operand, code);
  }
}

void edit_operand(const char* operand, bool include_subdirs, CreatedFileList& created,
                  Session& session) {
  switch (classify_path(operand)) {
    case PathKind::file:
      edit_file_operand(operand, created, session);
      break;
    case PathKind::directory:
    case PathKind::dot:
    case PathKind::dot_dot:
      if (enter_directory(operand)) {
        walk_directory(operand, include_subdirs, session);
      }
      break;
    case PathKind::unknown:
      break;
  }
}

}  // namespace

// A name is followed only from where its giver stood: elsewhere it may be that of another
// photograph.
void edit_operands(std::span<char* const> operands, bool include_subdirs, Session& session) {
  const StartDirectory start = record_start_directory();
  const CreatedList created = new_created_list();
  bool at_start = true;
  for (const char* operand : operands) {
    try {
      if (at_start || *operand == '/') {
        edit_operand(operand, include_subdirs, *created, session);
      } else {
        refuse_operand(operand, ErrorCode::cannot_open_file);
      }
    } catch (const std::bad_alloc&) {
      refuse_operand(operand, ErrorCode::no_memory);
    }
    at_start = return_to(start);
  }
}

}  // namespace tagmend
