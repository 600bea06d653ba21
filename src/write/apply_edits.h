// Applying the requested EXIF edits to the field table.
#pragma once

#include <cstdint>
#include <optional>

#include "encode/edit_list.h"
#include "encode/template.h"
#include "iptc/app13_build.h"
#include "read/image_file.h"
#include "support/error_code.h"
#include "write/run_options.h"

namespace tagmend {

/// Checks that the dictionary holds every field that the writers use; ends the program (status 1)
/// on the first that is missing.
void init_writer_indexes();

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

/// Where a new field goes.
struct InsertPosition {
  int position = -1;  ///< table place of the entry to follow; -1 before all, -2 nowhere
  std::uint16_t level = 0;
  std::uint32_t seq = 0;
  IfdPlace ifd;          ///< of the entries that it joins
  bool new_ifd = false;  ///< its IFD does not exist yet
};
inline constexpr int before_all = -1;
inline constexpr int nowhere = -2;

InsertPosition find_insert_position(IfdKind kind, std::uint32_t tag, const ImageFile& image);

}  // namespace tagmend
