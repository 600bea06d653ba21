// Applying the requested EXIF edits to the field table.
#pragma once

#include "encode/edit_list.h"
#include "encode/template.h"
#include "iptc/app13_build.h"
#include "read/image_file.h"
#include "support/error_code.h"
#include "write/run_options.h"

namespace tagmend {

/// What apply_exif_edits works with.
struct EditContext {
  ImageFile& image;
  const App13Result& app13;
  const RunOptions& options;
  SubstitutionContext substitution;
};

/// Applies the list to the field table; the list may grow (-s, version fields, IPTC data in TIFF).
/// ok, too_many_deleted (IFD0 would be empty), or the code of a value that could not be encoded.
ErrorCode apply_exif_edits(EditContext& context, EditList& edits);

}  // namespace tagmend
