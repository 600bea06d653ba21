// The dictionary rows that the writers use.
#pragma once

#include <cstdint>

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

/// Looks the rows up, once a run; a missing one ends the program (status 1).
const WriterFields& writer_fields();

/// Looks the rows up now: a run that lacks one ends before it touches a file.
void init_writer_indexes();

}  // namespace tagmend
