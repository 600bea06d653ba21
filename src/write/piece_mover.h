// Moving the strips or tiles of an image into the new layout.
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// The pieces of one image: where the source tells of them, and where their new offsets go.
struct MovedPieces {
  const FieldEntry* offsets = nullptr;
  const FieldEntry* lengths = nullptr;
  std::int64_t new_offsets_pos = 0;  ///< output file offset of the first new offset
};

struct PieceTarget {
  MFILE& source;
  MFILE& output;
  std::int64_t base;  ///< output file offset from which offsets count
  const ImageFile& image;
};

/// Copies each piece to `data_end` (an offset from the base, moved behind it and to an even place)
/// and writes its new offset. end_of_buffer, exif_too_long past 4 GiB, file_type_not_editable when
/// a 16-bit offset cannot reach its piece, seek_failed, read_failed, write_failed, fatal_internal
/// for fields of a type that holds no offsets.
ErrorCode move_pieces(const MovedPieces& pieces, const PieceTarget& target,
                      std::uint64_t& data_end);

}  // namespace tagmend
