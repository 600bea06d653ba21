// The readers of IPTC, EPS and RMETA blocks, wired together for the reader of image files.
#pragma once

#include "read/read_context.h"

namespace tagmend {

/// All of them; for every read by the program.
const MetadataHooks& metadata_hooks();

}  // namespace tagmend
