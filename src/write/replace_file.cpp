#include "write/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/descriptor.h"
#include "support/message.h"
#include "write/temp_file.h"

namespace tagmend {
namespace {

// Lines that a backup name past its limit reports: with an extension and without.
constexpr int line_backup_with_extension = 4883;
constexpr int line_backup_plain = 4897;
constexpr int line_numbered_with_extension = 4290;
constexpr int line_numbered_plain = 4304;

// A rename that takes no name that is in use, where the system can do that.
int rename_to_free(const char* name, const char* backup) {
  if (renameat2(AT_FDCWD, name, AT_FDCWD, backup, RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return -1;
  }
  return std::rename(name, backup);
}

// A hard link leaves the original under its own name until the new file takes it.
int keep_original(const char* name, const char* backup) {
  if (link(name, backup) == 0) {
    return 0;
  }
  switch (errno) {
    case EPERM:
    case EACCES:
    case EOPNOTSUPP:
    case ENOSYS:
    case EMLINK:
    case EXDEV:
    case EINVAL:
      return rename_to_free(name, backup);
    default:
      return -1;
  }
}

bool has_extension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && dot != 0;
}

// Whether the name leads to the file that was read.
bool is_unchanged(const char* name, const FileIdentity& identity) {
  struct stat status {};
  if (!identity.known) {
    return true;
  }
  return stat(name, &status) == 0 && status.st_dev == identity.device &&
         status.st_ino == identity.inode && status.st_size == identity.size &&
         status.st_mtim.tv_sec == identity.modified_sec &&
         status.st_mtim.tv_nsec == identity.modified_nsec;
}

ErrorCode refuse_rename(const char* from, const char* to) {
  print_error("Error: Can't rename '%s' to '%s': %s\n", from, to, std::strerror(errno));
  discard_temp_file();
  return ErrorCode::rename_failed;
}

ErrorCode refuse_changed(const Replacement& files) {
  print_error("Error: File %s was changed by another program. File not changed.\n", files.name);
  discard_temp_file();
  return ErrorCode::read_failed;
}

bool sync_directory() {
  const Descriptor directory(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory.is_open()) {
    return false;
  }
  // File systems that cannot sync a directory say EINVAL; there is nothing more to wait for then.
  return fsync(directory.number) == 0 || errno == EINVAL;
}

}  // namespace

SiblingName make_backup_name(const char* name) {
  SiblingName backup;
  const bool fits = name_with_suffix(name, "-be", backup);
  const bool dotted = std::strchr(name, '.') != nullptr;
  check_consistency(fits, dotted ? line_backup_with_extension : line_backup_plain, module_utility);
  return backup;
}

ErrorCode replace_file(Replacement& files, const FileIdentity& identity) {
  if (!is_unchanged(files.name, identity)) {
    return refuse_changed(files);
  }
  if (give_free_name(files.name, files.backup, keep_original) != 0) {
    const bool dotted = has_extension(files.backup.data());
    check_consistency(errno != ENAMETOOLONG,
                      dotted ? line_numbered_with_extension : line_numbered_plain, module_utility);
    return refuse_rename(files.name, files.backup.data());
  }
  files.backup_made = true;
  // Another process may have replaced the file since it was looked at; what it wrote goes back.
  if (!is_unchanged(files.backup.data(), identity)) {
    if (is_unchanged(files.name, identity) || access(files.name, F_OK) == 0) {
      unlink(files.backup.data());
    } else {
      std::rename(files.backup.data(), files.name);
    }
    files.backup_made = false;
    return refuse_changed(files);
  }
  if (std::rename(files.temp.data(), files.name) != 0) {
    const ErrorCode result = refuse_rename(files.temp.data(), files.name);
    print_error("       Original file backed up as '%s'\n", files.backup.data());
    return result;
  }
  release_temp_file();
  return ErrorCode::ok;
}

bool remove_backup(const char* backup) { return sync_directory() && unlink(backup) == 0; }

}  // namespace tagmend
