#include "cli/paths.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "support/message.h"

namespace tagmend {

PathKind classify_path(const char* name) {
  if (std::strcmp(name, ".") == 0) {
    return PathKind::dot;
  }
  if (std::strcmp(name, "..") == 0) {
    return PathKind::dot_dot;
  }
  struct stat status;
  if (stat(name, &status) != 0) {
    print_error("Error: file %s: can't determine file type: %s\n", name, std::strerror(errno));
    return PathKind::unknown;
  }
  return S_ISDIR(status.st_mode) ? PathKind::directory : PathKind::file;
}

SplitPath split_path(const char* path) {
  const char* slash = std::strrchr(path, '/');
  if (slash == nullptr) {
    return {.directory = {}, .name = path};
  }
  const auto length = static_cast<std::size_t>(slash - path);
  return {.directory = {path, length == 0 ? 1 : length}, .name = slash + 1};
}

std::uint64_t file_size(const char* name) {
  struct stat status;
  return stat(name, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

bool identify_directory(const char* name, DirectoryId& id) {
  struct stat status;
  if (stat(name, &status) != 0) {
    return false;
  }
  id = {.device = status.st_dev, .inode = status.st_ino};
  return true;
}

bool is_symbolic_link(const char* name) {
  struct stat status;
  return lstat(name, &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace tagmend
