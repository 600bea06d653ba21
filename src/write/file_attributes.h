// What a new file takes over from the file that it replaces.
#pragma once

namespace tagmend {

/// Gives the new file the group, owner, mode and extended attributes (access control lists among
/// them) of the source, each as far as the system allows. Both are open descriptors.
void copy_attributes(int source, int destination);

}  // namespace tagmend
