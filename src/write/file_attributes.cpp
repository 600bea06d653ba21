#include "write/file_attributes.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

namespace tagmend {
namespace {

/// Linux allows names and values of 64 KiB; nearly all fit in far less.
constexpr std::size_t usual_names = 1024;
constexpr std::size_t usual_value = 1024;
constexpr std::size_t largest_attribute = 65536;

/// Room for an attribute's bytes: on the stack when they fit.
template <std::size_t Usual>
struct AttributeRoom {
  std::array<char, Usual> usual;
  std::vector<char> large;
  char* data = usual.data();
  std::size_t size = Usual;

  void grow() {
    large.resize(largest_attribute);
    data = large.data();
    size = large.size();
  }
};

void copy_attribute(int source, int destination, const char* name) {
  AttributeRoom<usual_value> room;
  ssize_t length = fgetxattr(source, name, room.data, room.size);
  if (length < 0 && errno == ERANGE) {
    room.grow();
    length = fgetxattr(source, name, room.data, room.size);
  }
  if (length >= 0) {
    fsetxattr(destination, name, room.data, static_cast<std::size_t>(length), 0);
  }
}

void copy_extended_attributes(int source, int destination) {
  AttributeRoom<usual_names> names;
  ssize_t length = flistxattr(source, names.data, names.size);
  if (length < 0 && errno == ERANGE) {
    names.grow();
    length = flistxattr(source, names.data, names.size);
  }
  for (const char* name = names.data; length > 0;) {
    const std::size_t name_size = strnlen(name, static_cast<std::size_t>(length)) + 1;
    copy_attribute(source, destination, name);
    name += name_size;
    length -= static_cast<ssize_t>(name_size);
  }
}

}  // namespace

// Group first, while the file is still ours; then owner; then the mode, which a change of owner may
// have cut; access control lists last, because a later change of the mode would alter them.
std::uint64_t copy_attributes(int source, int destination) {
  struct stat from {};
  struct stat to {};
  if (fstat(destination, &to) != 0 || fstat(source, &from) != 0) {
    return to.st_ino;
  }
  mode_t mode = from.st_mode & 07777;
  if (from.st_gid != to.st_gid && fchown(destination, static_cast<uid_t>(-1), from.st_gid) != 0) {
    // What the old group was allowed must not pass to another group.
    mode &= ~static_cast<mode_t>(S_ISGID | S_IRWXG);
    mode |= (mode & S_IRWXO) << 3;
  }
  if (from.st_uid != to.st_uid && fchown(destination, from.st_uid, static_cast<gid_t>(-1)) != 0) {
    mode &= ~static_cast<mode_t>(S_ISUID);
  }
  fchmod(destination, mode);
  copy_extended_attributes(source, destination);
  return to.st_ino;
}

}  // namespace tagmend
