// What a run works with: the records of the file in work, the edits asked for, and the options.
#pragma once

#include "encode/edit_list.h"
#include "iptc/app13_build.h"
#include "iptc/iptc_store.h"
#include "read/image_file.h"
#include "write/run_options.h"

namespace tagmend {

/// The records are some 2 MB and exist once: they stay zero pages until a file fills them.
struct Session {
  ImageFile& image;
  IptcStore& iptc;
  App13Result& app13;
  EditList& exif_edits;
  EditList& iptc_edits;
  RunOptions options;
};

/// A session with default options over the records of the run.
Session open_session();

}  // namespace tagmend
