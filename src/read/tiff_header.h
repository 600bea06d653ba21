// Where the TIFF header of a file's EXIF data lies, by file type.
#pragma once

#include <cstdint>

#include "read/image_file.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"

namespace tagmend {

/// What a TIFF header holds behind its byte order, and its bytes: the order, this number, and the
/// offset of the first IFD, which usually stands right behind it (TIFF 6.0, section 2).
inline constexpr std::uint16_t tiff_magic = 42;
inline constexpr std::uint32_t tiff_header_length = 8;

/// Places the cursor (over the first bytes of the file, file_type set, standing behind the
/// signature) so that offset_base is the TIFF header, and gives the offset of the first IFD. ok,
/// no_exif_data, unknown_byte_order or tiff_tag_missing (EPS files), seek_failed or
/// unknown_file_type. Exif data whose TIFF header is damaged marks the ImageFile incomplete.
ErrorCode locate_tiff_header(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd);

/// Reads the TIFF header (TIFF 6.0, section 2) on which the cursor stands: ok, unknown_byte_order
/// or tiff_tag_missing (after a message).
ErrorCode check_tiff_header(ByteCursor& cursor, ImageFile& image, std::uint32_t& first_ifd);

/// Whether the byte-order word at the cursor's base is "MM"; anything else counts as "II".
[[nodiscard]] bool base_is_big_endian(const ByteCursor& cursor);

}  // namespace tagmend
