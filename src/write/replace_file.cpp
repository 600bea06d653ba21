#include "write/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "read/file_type.h"
#include "support/message.h"
#include "write/temp_file.h"

namespace tagmend {
namespace {

/// Lines that a backup name past its limit reports: with an extension and without.
constexpr int line_backup_with_extension = 4883;
constexpr int line_backup_plain = 4897;
constexpr int line_numbered_with_extension = 4290;
constexpr int line_numbered_plain = 4304;

/// A rename that takes no name that is in use, where the system can do that.
int rename_to_free(const char* name, const char* backup) {
  if (renameat2(AT_FDCWD, name, AT_FDCWD, backup, RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return -1;
  }
  struct stat status {};
  if (lstat(backup, &status) == 0) {
    errno = EEXIST;
    return -1;
  }
  return std::rename(name, backup);
}

bool lacks_links(int error) {
  switch (error) {
    case EPERM:
    case EACCES:
    case EOPNOTSUPP:
    case ENOSYS:
    case EMLINK:
    case EXDEV:
    case EINVAL:
      return true;
    default:
      return false;
  }
}

/// The two names change places. False where the file system can't do that, and on every failure: a
/// rename then tells whether it was one.
bool exchange(const char* temp, const char* name) {
  return renameat2(AT_FDCWD, temp, AT_FDCWD, name, RENAME_EXCHANGE) == 0;
}

bool has_extension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && dot != 0;
}

/// Whether the name leads to the file that was read.
bool is_unchanged(const char* name, const FileIdentity& identity) {
  struct stat status {};
  return !identity.known || (stat(name, &status) == 0 && identity_of(status) == identity);
}

ErrorCode refuse_rename(const char* from, const char* to) {
  print_error("Error: Can't rename '%s' to '%s': %s\n", from, to, std::strerror(errno));
  discard_temp_file();
  return ErrorCode::rename_failed;
}

ErrorCode refuse_backup(const Replacement& files) {
  const bool dotted = has_extension(files.backup.data());
  check_consistency(errno != ENAMETOOLONG,
                    dotted ? line_numbered_with_extension : line_numbered_plain, module_utility);
  return refuse_rename(files.name, files.backup.data());
}

ErrorCode refuse_new_name(const Replacement& files) {
  const ErrorCode result = refuse_rename(files.temp.data(), files.name);
  print_error("       Original file backed up as '%s'\n", files.backup.data());
  return result;
}

ErrorCode refuse_changed(const Replacement& files) {
  print_error("Error: File %s was changed by another program. File not changed.\n", files.name);
  discard_temp_file();
  return ErrorCode::read_failed;
}

bool sync_directory(const Descriptor& directory) {
  if (!directory.is_open()) {
    return false;
  }
  // File systems that cannot sync a directory say EINVAL; there is nothing more to wait for then.
  return fsync(directory.number) == 0 || errno == EINVAL;
}

/// Two runs that exchange names in one directory at the same time could each take the other's new
/// file for the one that they replace. Where there are no such locks they are not kept apart.
Descriptor lock_directory() {
  Descriptor directory(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.is_open()) {
    while (flock(directory.number, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  return directory;
}

/// The original has its backup name too. One more try helps where a network answered badly.
void remove_exchanged(const char* temp) {
  if (unlink(temp) != 0) {
    unlink(temp);
  }
}

void report_kept(const Replacement& files) {
  print_error("Error: What stood under the name %s is kept as '%s'\n", files.name,
              files.temp.data());
  release_temp_file();
}

/// Gives the name back to what came out of an exchange. What then comes out is the new file, unless
/// yet another one is seen to have taken the name meanwhile: that is nobody's to remove.
void exchange_back(const Replacement& files) {
  const char* const temp = files.temp.data();
  struct stat status {};
  const bool exchanged = exchange(temp, files.name);
  if (!exchanged && std::rename(temp, files.name) == 0) {
    return;
  }
  const bool is_other =
      files.inode != 0 && lstat(temp, &status) == 0 && status.st_ino != files.inode;
  if (!exchanged || is_other) {
    report_kept(files);
  }
}

/// The original goes as soon as its name is sure to lead to the new file; it gets the backup name
/// when it can't go.
ErrorCode remove_original(Replacement& files, const FileIdentity& identity) {
  const char* const temp = files.temp.data();
  if (!is_unchanged(temp, identity)) {
    exchange_back(files);
    return refuse_changed(files);
  }
  const bool gone = sync_directory(files.directory) && unlink(temp) == 0;
  files.backup_made = !gone && give_free_name(temp, files.backup, rename_to_free) == 0;
  if (gone || files.backup_made) {
    release_temp_file();
  } else {
    report_kept(files);
  }
  return ErrorCode::ok;
}

/// The backup is a second name of the original, which keeps its own until the new file takes it.
ErrorCode replace_linked(Replacement& files, const FileIdentity& identity) {
  const char* const temp = files.temp.data();
  const char* const backup = files.backup.data();
  if (!is_unchanged(backup, identity)) {
    static_cast<void>(link(backup, files.name));  // fails unless the name has gone
    unlink(backup);
    return refuse_changed(files);
  }
  if (exchange(temp, files.name)) {
    if (!is_unchanged(temp, identity)) {
      exchange_back(files);
      unlink(backup);
      return refuse_changed(files);
    }
    files.backup_made = true;
    remove_exchanged(temp);
  } else {
    files.backup_made = true;
    if (std::rename(temp, files.name) != 0) {
      return refuse_new_name(files);
    }
  }
  release_temp_file();
  return ErrorCode::ok;
}

/// Without hard links the original gets the backup name once the new file stands in its place.
ErrorCode back_up_exchanged(Replacement& files, const FileIdentity& identity) {
  if (!is_unchanged(files.temp.data(), identity)) {
    exchange_back(files);
    return refuse_changed(files);
  }
  if (give_free_name(files.temp.data(), files.backup, rename_to_free) != 0) {
    const int error = errno;
    exchange_back(files);
    errno = error;
    return refuse_backup(files);
  }
  files.backup_made = true;
  release_temp_file();
  return ErrorCode::ok;
}

/// For file systems that can do neither: the name is missing between the two renames.
ErrorCode replace_by_renames(Replacement& files, const FileIdentity& identity) {
  const char* const backup = files.backup.data();
  if (give_free_name(files.name, files.backup, rename_to_free) != 0) {
    return refuse_backup(files);
  }
  files.backup_made = true;
  if (!is_unchanged(backup, identity)) {
    files.backup_made = rename_to_free(backup, files.name) != 0;
    return refuse_changed(files);
  }
  if (std::rename(files.temp.data(), files.name) != 0) {
    return refuse_new_name(files);
  }
  release_temp_file();
  return ErrorCode::ok;
}

}  // namespace

SiblingName make_backup_name(const char* name) {
  SiblingName backup;
  const bool fits = name_with_suffix(name, "-be", backup);
  const bool dotted = std::strchr(name, '.') != nullptr;
  check_consistency(fits, dotted ? line_backup_with_extension : line_backup_plain, module_utility);
  return backup;
}

// What comes out of an exchange must not be taken for the new file by a signal.
ErrorCode replace_file(Replacement& files, const FileIdentity& identity, bool keep_backup) {
  files.directory = lock_directory();
  const SignalsHeld held;
  if (!keep_backup && name_is_free(files.backup.data()) && is_unchanged(files.name, identity) &&
      exchange(files.temp.data(), files.name)) {
    return remove_original(files, identity);
  }
  const SiblingName wanted = files.backup;
  if (give_free_name(files.name, files.backup, link) == 0) {
    return replace_linked(files, identity);
  }
  if (!lacks_links(errno)) {
    return refuse_backup(files);
  }
  files.backup = wanted;
  if (exchange(files.temp.data(), files.name)) {
    return back_up_exchanged(files, identity);
  }
  return replace_by_renames(files, identity);
}

bool remove_backup(const Replacement& files) {
  return sync_directory(files.directory) && unlink(files.backup.data()) == 0;
}

}  // namespace tagmend
