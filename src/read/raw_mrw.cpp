// Minolta MRW files: a length-prefixed sequence of named blocks, one of which holds TIFF data.
#include "read/raw_files.h"

namespace tagmend {
namespace {

/// The length of the blocks' area stands behind the signature; it counts from its own place.
constexpr std::uint32_t area_length_pos = 4;

/// A NUL and "TTW".
constexpr std::uint32_t ttw_block = 0x00545457;

}  // namespace

ErrorCode find_mrw_tiff(ByteCursor& cursor, std::uint32_t& data_pos, std::uint32_t& data_len) {
  cursor.pos = 0;
  cursor.error_count = 0;
  cursor_skip(cursor, area_length_pos);
  const std::uint64_t area_end = std::uint64_t{cursor_get_u32(cursor)} + area_length_pos;
  while (cursor.error_count == 0) {
    const std::uint32_t name = cursor_get_u32(cursor);
    if (cursor.error_count > 0) {
      break;
    }
    const std::uint32_t length = cursor_get_u32(cursor);
    if (name == ttw_block) {
      data_pos = cursor_tell(cursor);
      data_len = length;
      return ErrorCode::ok;
    }
    if (std::uint64_t{cursor_tell(cursor)} + length >= area_end) {
      break;
    }
    const bool reachable = cursor.has(length);
    cursor_skip(cursor, length);
    if (!reachable) {
      break;
    }
  }
  return ErrorCode::no_exif_data;
}

}  // namespace tagmend
