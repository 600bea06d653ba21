// Opening image files, and telling their type by their first bytes.
#pragma once

#include <sys/stat.h>

#include <string_view>

#include "read/image_file.h"
#include "support/byte_cursor.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// The identity of the file that `status` describes.
FileIdentity identity_of(const struct stat& status);

/// Opens a file for reading by its name and fills the identity members of the ImageFile; null after
/// a message.
MFileHandle open_image_file(std::string_view directory, const char* file_name, ImageFile& image);

/// Closes what open_image_file opened, with a message when that fails.
void close_image_file(MFileHandle& file, const ImageFile& image);

/// The type of the file whose first bytes the cursor stands on. On a match the cursor takes the
/// signature's byte order and skips the signature.
FileType detect_file_type(ByteCursor& cursor);

/// Whether a file that was opened is long enough to be edited: ok, or unknown_file_type when it has
/// fewer than 50 bytes, in which no image fits. A length that the system did not tell is none to go
/// by.
ErrorCode check_image_length(const ImageFile& image);

/// Opens a file and names its type: ok (the file stands at its start), cannot_open_file,
/// seek_failed or unknown_file_type (also for files of fewer than 50 bytes).
ErrorCode open_and_identify(const char* file_name, const char* mode, FileType& type,
                            MFileHandle& file);

/// Width and height from a JPEG's frame header, 0 and 0 for other types; untouched after a message
/// when the file cannot be opened or its type told.
void get_image_size(const char* file_name, std::uint32_t& width, std::uint32_t& height);

/// Seeks a JPEG to the first marker behind its start-of-image marker: seek_failed. Any other file
/// type is an internal error that ends the program.
ErrorCode seek_to_first_mark(MFILE& file, FileType type);

}  // namespace tagmend
