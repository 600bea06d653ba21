// The run-wide settings: what the environment and the options chose, constant once they are parsed.
#pragma once

#include <array>
#include <cstdint>

namespace tagmend {

/// A character-set name as iconv takes it: at most 99 characters and a NUL; empty means not set.
using CharsetName = std::array<char, 100>;

struct LibrarySettings {
  bool option_d = false;             ///< option -d; read by nothing
  bool verbose = false;              ///< print trace lines; no option sets it
  bool warnings_suppressed = false;  ///< option -q
  bool errors_suppressed = false;    ///< no option sets it
  bool raw_output = false;           ///< show values uninterpreted; no option sets it
  bool display_units = false;        ///< "/" in dates and " sec" behind times; no option sets it
  char quote = '"';                  ///< quote character around values of a value list
  char separator = ';';              ///< between the values of a repeating field (-j)
  const char* thumbnail_template = "[file-base]-th.jpg";
  std::uint32_t thumbnail_template_length = 18;
  const char* audio_template = "[file-base].wav";
  std::uint32_t audio_template_length = 15;
  const char* exif_template = "[file-base].exi";
  std::uint32_t exif_template_length = 15;
  bool unicode_comment = false;  ///< store the EXIF comment as UNICODE (-u, environment)
  CharsetName local_charset{};   ///< of texts typed and shown
  CharsetName iptc_charset{};    ///< of IPTC texts; empty: bytes are copied as they are
  CharsetName exif_charset{};    ///< of EXIF texts; empty: bytes are copied as they are
};

/// The one settings record of the run.
extern LibrarySettings library_settings;

}  // namespace tagmend
