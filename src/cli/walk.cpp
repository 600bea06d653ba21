#include "cli/walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "cli/created_list.h"
#include "cli/edit_file.h"
#include "cli/paths.h"
#include "support/descriptor.h"
#include "support/message.h"

namespace tagmend {
namespace {

/// A directory being walked. Its names are read before the first of its files is edited: a level
/// then holds no open file, so that trees may be deeper than a process may have files open.
struct Level {
  std::string names;     ///< its entries, a NUL behind each
  std::size_t next = 0;  ///< where in `names` the next entry to visit begins
  CreatedList created;
  std::size_t outer_length = 0;  ///< of the walk path without this directory
  DirectoryId id;
  Descriptor way_back;  ///< to the level above, where ".." does not lead there
};

struct Walk {
  bool include_subdirs;
  Session& session;
  std::string path;  ///< of the directory being walked, from the operand on
  std::vector<Level> levels;
};

void report_directory(const char* name, int error) {
  print_error("Error: Can't open directory %s:%s\n", name, std::strerror(error));
}

/// Lists a directory's names into `names`; 0 or an errno value.
int read_names(const char* directory, std::string& names) {
  struct CloseDirectory {
    void operator()(DIR* open_directory) const { closedir(open_directory); }
  };
  const std::unique_ptr<DIR, CloseDirectory> listing(opendir(directory));
  if (listing == nullptr) {
    return errno;
  }
  for (;;) {
    errno = 0;
    const dirent* entry = readdir(listing.get());
    if (entry == nullptr) {
      return errno;
    }
    names.append(entry->d_name, std::strlen(entry->d_name) + 1);
  }
}

bool is_being_walked(const Walk& walk, const DirectoryId& id) {
  return std::any_of(walk.levels.begin(), walk.levels.end(),
                     [&id](const Level& level) { return level.id == id; });
}

/// Makes the directory `where` the innermost level; 0 or an errno value. It is not yet entered.
int add_level(Walk& walk, const char* name, const char* where) {
  Level level;
  level.outer_length = walk.path.size();
  if (!identify_directory(where, level.id)) {
    return errno;
  }
  if (is_being_walked(walk, level.id)) {
    return ELOOP;
  }
  if (is_symbolic_link(where)) {
    level.way_back = Descriptor(open(".", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!level.way_back.is_open()) {
      return errno;
    }
  }
  level.created = new_created_list();
  const std::size_t outer_length = level.outer_length;
  try {
    if (const int error = read_names(where, level.names); error != 0) {
      return error;
    }
    walk.path.append(walk.path.empty() ? "" : "/").append(name);
    walk.levels.push_back(std::move(level));
    return 0;
  } catch (const std::bad_alloc&) {
    walk.path.resize(outer_length);
    return ENOMEM;
  }
}

void drop_level(Walk& walk) {
  walk.path.resize(walk.levels.back().outer_length);
  walk.levels.pop_back();
}

void enter_subdirectory(Walk& walk, const std::string& name) {
  if (const int error = add_level(walk, name.c_str(), name.c_str()); error != 0) {
    report_directory(name.c_str(), error);
  } else if (chdir(name.c_str()) != 0) {
    report_directory(name.c_str(), errno);
    drop_level(walk);
  }
}

/// Comes back to the level above, if there is one. A walk that cannot come back is over: it would
/// go on in a directory that nobody named.
void leave_directory(Walk& walk) {
  const Descriptor way_back = std::move(walk.levels.back().way_back);
  drop_level(walk);
  if (walk.levels.empty()) {
    return;
  }
  if (way_back.is_open()) {
    if (fchdir(way_back.number) == 0) {
      return;
    }
  } else if (chdir("..") == 0) {
    DirectoryId id;
    if (identify_directory(".", id) && id == walk.levels.back().id) {
      return;
    }
    errno = ENOENT;  // it was moved meanwhile
  }
  report_directory(walk.path.c_str(), errno);
  walk.levels.clear();
}

void visit_file(Walk& walk, const char* name) {
  CreatedFileList& created = *walk.levels.back().created;
  if (created_list_contains(created, name)) {
    return;
  }
  MFileHandle source;
  ErrorCode code = load_file(walk.path, name, walk.session, source);
  if (code == ErrorCode::read_failed) {
    print_error("Error: File %s: %s\n", name, error_text(code));
    return;
  }
  if (code == ErrorCode::ok) {
    code = edit_file(name, std::move(source), created, walk.session);
    if (code == ErrorCode::ok) {
      print_output("%s: Edit successful.\n", name);
    }
  }
  // Other failures are left to those who met them; the names of the edited files tell the rest.
  if (code == ErrorCode::file_type_not_editable || code == ErrorCode::not_a_jpeg) {
    print_error("Error: Can't extract EXIF fields: %s\n", error_text(code));
  }
}

/// Visits the next entry of the innermost level.
void visit_entry(Walk& walk) {
  Level& level = walk.levels.back();
  const char* name = level.names.c_str() + level.next;
  level.next += std::strlen(name) + 1;
  switch (classify_path(name)) {
    case PathKind::directory:
      if (walk.include_subdirs) {
        enter_subdirectory(walk, std::string(name));  // the level that holds it may move
      }
      break;
    case PathKind::file:
      visit_file(walk, name);
      break;
    case PathKind::dot:
    case PathKind::dot_dot:
    case PathKind::unknown:
      break;
  }
}

}  // namespace

void walk_directory(const char* name, bool include_subdirs, Session& session) {
  Walk walk{.include_subdirs = include_subdirs, .session = session, .path = {}, .levels = {}};
  if (const int error = add_level(walk, name, "."); error != 0) {
    report_directory(name, error);
    return;
  }
  while (!walk.levels.empty()) {
    if (walk.levels.back().next < walk.levels.back().names.size()) {
      visit_entry(walk);
    } else {
      leave_directory(walk);
    }
  }
}

}  // namespace tagmend
