// The new file beside the old one, and the moment in which it takes the old one's name.
#pragma once

#include "iptc/app13_build.h"
#include "read/image_file.h"
#include "support/error_code.h"
#include "support/file_names.h"
#include "support/mfile.h"
#include "write/run_options.h"

namespace tagmend {

/// Writes the edited file, whose source is still open from reading it, under a temporary name,
/// keeps the original under a backup name, if it is to be kept, and gives the new file its name; at
/// every instant the name leads to the whole old or the whole new file, as far as the file system
/// allows it (replace_file). The names written are added to `created`.
/// Codes of the readers and writers, unknown_file_type (check_image_length), or rename_failed.
ErrorCode rewrite_file(const char* name, MFileHandle source, CreatedFileList& created,
                       const ImageFile& image, const RunOptions& options, const App13Result& app13,
                       bool metadata_incomplete);

}  // namespace tagmend
