// The arguments of -a and -r into the edit lists: names are looked up and values are tried once,
// before any file is touched.
#pragma once

#include "cli/session.h"

namespace tagmend {

/// Reads "name=value,..." ("@file" or "@-" for a list kept elsewhere) and appends what is valid to
/// the session's lists, setting exif_added and iptc_added. The rest is reported and left out.
void build_add_list(const char* argument, Session& session);

/// Reads "name,..." in the same way, setting exif_removed and iptc_removed.
void build_remove_list(const char* argument, Session& session);

}  // namespace tagmend
