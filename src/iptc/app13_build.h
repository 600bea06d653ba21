// Building the new APP13 segment of a file from its IPTC store.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "iptc/iptc_store.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

/// A complete APP13 segment, marker included, for one file.
struct App13Result {
  bool built = false;  ///< for the file in work
  std::array<std::uint8_t, 65537> bytes{};
  std::uint32_t length = 0;      ///< of the segment with its marker
  std::uint32_t blocks_pos = 0;  ///< of the first "8BIM" block in `bytes`
  std::uint32_t blocks_len = 0;
  std::uint32_t iptc_pos = 0;  ///< of the IPTC-NAA data in `bytes`
  std::uint32_t iptc_len = 0;

  [[nodiscard]] std::span<const std::uint8_t> segment() const { return {bytes.data(), length}; }
  [[nodiscard]] std::span<const std::uint8_t> blocks() const {
    return std::span(bytes).subspan(blocks_pos, blocks_len);
  }
  [[nodiscard]] std::span<const std::uint8_t> iptc() const {
    return std::span(bytes).subspan(iptc_pos, iptc_len);
  }
};

/// Builds the segment; values that no edit set are copied from the source file. A store that was
/// read empty builds nothing; one that edits have emptied builds a segment without blocks.
/// text_too_short when the source no longer holds a value (with a message that gives its name), or
/// exif_too_long when the segment would not fit.
ErrorCode build_app13(App13Result& result, const IptcStore& store, MFILE& source,
                      const char* source_name);

}  // namespace tagmend
