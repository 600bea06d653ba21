// What a read works with, and the readers of the layers above that it hands data to.
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

struct IptcStore;
struct ReadContext;

/// Readers of blocks that are not EXIF data. A null member passes its block over.
struct MetadataHooks {
  /// Empties the IPTC store for the file named in the context's ImageFile.
  void (*reset_iptc)(ReadContext& context) = nullptr;
  /// An APP13 segment; the file stands on its payload of `length` bytes.
  ErrorCode (*read_app13)(ReadContext& context, MFILE& file, std::uint32_t length) = nullptr;
  /// The value of field 0x83BB (IPTC-NAA data), on which the cursor stands.
  void (*read_iptc_value)(ReadContext& context, const ByteCursor& value,
                          std::uint64_t length) = nullptr;
  /// The value of field 0x8649 (Photoshop resource blocks), on which the cursor stands.
  void (*read_photoshop_value)(ReadContext& context, const ByteCursor& value,
                               std::uint64_t length) = nullptr;
  /// An APP5 segment; the file stands on its payload of `length` bytes.
  void (*read_rmeta)(ReadContext& context, MFILE& file, std::uint32_t length) = nullptr;
  /// An EPSF-3.0 file; the cursor stands at the start of its leading data.
  ErrorCode (*read_eps)(ReadContext& context, const ByteCursor& data) = nullptr;
};

struct ReadContext {
  ImageFile& image;
  IptcStore& iptc;
  const MetadataHooks& hooks;
};

}  // namespace tagmend
