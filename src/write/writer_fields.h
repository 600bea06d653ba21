// The dictionary rows that the writers use.
#pragma once

#include <cstdint>
#include <string_view>

namespace tagmend {

struct WriterFields {
  std::uint16_t firm_ver;
  std::uint16_t iptc_fields;
  std::uint16_t photoshop;
  std::uint16_t exif_ver;
  std::uint16_t gps_ver;
  std::uint16_t width;
  std::uint16_t height;
};

/// The version of the standard that new EXIF data follows, as its field exif-ver holds it.
inline constexpr std::string_view new_exif_version = "0220";

/// Looks the rows up, once a run; a missing one ends the program (status 1).
const WriterFields& writer_fields();

/// Looks the rows up now: a run that lacks one ends before it touches a file.
void init_writer_indexes();

}  // namespace tagmend
