// What a new file takes over from the file that it replaces.
#pragma once

#include <cstdint>

namespace tagmend {

/// Gives the new file the group, owner, mode and extended attributes (access control lists among
/// them) of the source, each as far as the system allows. Both are open descriptors. Returns the
/// inode of the new file, 0 when the system does not tell.
std::uint64_t copy_attributes(int source, int destination);

}  // namespace tagmend
