// Names of files and directories as the command line and directory listings give them.
#pragma once

#include <cstdint>
#include <string_view>

namespace tagmend {

enum class PathKind { directory = 0, file = 1, dot = 2, dot_dot = 3, unknown = 4 };

/// What a name leads to (symbolic links are followed): a directory, a file (anything else), the
/// name "." or "..", or unknown, after a message, when it cannot be examined.
PathKind classify_path(const char* name);

/// A path in two: the part in front of its last "/" (without it, "/" for a file of the root, empty
/// without any "/") and the part behind it.
struct SplitPath {
  std::string_view directory;
  const char* name;
};
SplitPath split_path(const char* path);

/// Size of a file in bytes; 0 when it does not exist.
std::uint64_t file_size(const char* name);

/// What tells one directory from another, whatever path leads to it.
struct DirectoryId {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  bool operator==(const DirectoryId&) const = default;
};

/// The identity of a directory; false with errno set when it cannot be examined.
[[nodiscard]] bool identify_directory(const char* name, DirectoryId& id);

/// Whether the name itself is a symbolic link.
[[nodiscard]] bool is_symbolic_link(const char* name);

}  // namespace tagmend
