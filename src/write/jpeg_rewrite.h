// A JPEG file rewritten segment by segment (ITU-T T.81, annex B): metadata segments are generated
// anew, kept or dropped, everything else is copied byte for byte.
#pragma once

#include <cstdint>
#include <optional>

#include "iptc/app13_build.h"
#include "read/image_file.h"
#include "support/error_code.h"
#include "support/mfile.h"
#include "write/run_options.h"

namespace tagmend {

struct JpegRewrite {
  MFILE& input;
  MFILE& output;  ///< holds the start-of-image marker already
  const ImageFile& image;
  const RunOptions& options;
  const App13Result& app13;
  bool exif_done = false;       ///< the new EXIF segment has been written
  bool iptc_done = false;       ///< the new IPTC segment has been written
  bool exif_seen = false;       ///< the EXIF segment that was read has been passed
  bool dropped_unread = false;  ///< what the reader passed over was left out, or can't be found
  std::optional<std::int64_t> index_shift{};  ///< how far an index of further pictures has moved
};

/// Writes the whole file. not_a_jpeg when an edit is still to be made where the segments end in
/// disorder; else the codes of generate_exif and of copying.
ErrorCode rewrite_jpeg(JpegRewrite& rewrite);

}  // namespace tagmend
