// What the command line asked for, as the writers see it.
#pragma once

namespace tagmend {

struct RunOptions {
  bool set_size = false;        ///< -s: EXIF width and height from the image itself
  bool erase_exif = false;      ///< -e e, -e a
  bool erase_flashpix = false;  ///< -e f, -e a
  bool erase_iptc = false;      ///< -e i, -e a
  bool keep_backup = true;      ///< cleared by -b
  char quote_char = '"';        ///< -c: quote character of field lists
  bool exif_added = false;      ///< which blocks must be generated anew
  bool iptc_added = false;
  bool exif_removed = false;
  bool iptc_removed = false;
};

}  // namespace tagmend
