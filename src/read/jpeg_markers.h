// The marker segments of a JPEG file (ITU-T T.81, annex B): which there are, and where.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "read/read_context.h"
#include "support/error_code.h"
#include "support/mfile.h"

namespace tagmend {

inline constexpr std::uint16_t marker_soi = 0xFFD8;
inline constexpr std::uint16_t marker_sos = 0xFFDA;
inline constexpr std::uint16_t marker_app0 = 0xFFE0;
inline constexpr std::uint16_t marker_app1 = 0xFFE1;
inline constexpr std::uint16_t marker_app2 = 0xFFE2;
inline constexpr std::uint16_t marker_app5 = 0xFFE5;
inline constexpr std::uint16_t marker_app13 = 0xFFED;

/// What the data of an Exif APP1 segment begins with; a padding byte follows (Exif 2.2, 4.7.2).
inline constexpr std::string_view exif_mark("Exif\0", 5);

/// FFC0 to FFCF without the three that are no frame headers.
constexpr bool is_frame_header(std::uint16_t marker) {
  return marker >= 0xFFC0 && marker <= 0xFFCF && marker != 0xFFC4 && marker != 0xFFC8 &&
         marker != 0xFFCC;
}

/// Bytes that are read of a JPEG file whose Exif segment is not found at once: APP0 and an Exif
/// segment of any length lie in them where they stand as the standards want it.
inline constexpr std::size_t jpeg_leading_length = 0x12000;

/// File offset of the first marker, behind the start-of-image marker.
inline constexpr std::uint32_t first_marker_pos = 2;

/// Reads the marker at the file's position, past fill bytes in front of it (T.81, B.1.1.2), and
/// tells the file offset of its two bytes; the file then stands behind them. end_of_buffer.
ErrorCode read_marker(MFILE& file, std::uint16_t& marker, std::int64_t& marker_pos);

/// A segment of the walk from marker to marker.
struct JpegSegment {
  std::uint16_t marker = 0;
  std::uint16_t length = 0;  ///< as stored: counts the length field itself
  std::uint32_t pos = 0;     ///< file offset of the length field

  /// Bytes behind the length field, on which the file stands when the segment has been read.
  [[nodiscard]] std::uint32_t payload_length() const { return length > 2 ? length - 2U : 0; }
};

/// Steps from segment to segment, always forward. Each returns false at the start of scan, at the
/// end of the file and where a damaged file has no end of segments.
struct SegmentWalk {
  MFILE& file;
  JpegSegment segment{};
  std::uint32_t steps = 0;  ///< segments passed
  bool gave_up = false;     ///< a limit ended the walk: segments behind it were not seen
};
bool first_segment(SegmentWalk& walk);
bool next_segment(SegmentWalk& walk);

/// Walks the segments up to the start of scan and records them and the image size in the context's
/// ImageFile; hands APP13 and the first APP5 segment to the context's hooks.
void scan_jpeg_markers(ReadContext& context, MFILE& file);

/// What an APP2 segment holds.
struct FpxrHeader {
  std::int32_t stream = -1;      ///< stream index; -2 another Flashpix segment; -1 not Flashpix
  std::uint32_t data_pos = 0;    ///< file offset of the chunk's data
  std::uint32_t stream_pos = 0;  ///< offset of the chunk within its stream
  std::uint32_t data_len = 0;
};

/// Reads the header of an APP2 segment on whose data the file stands. `length` is the segment's.
FpxrHeader read_fpxr_header(MFILE& file, std::uint32_t length);

/// Whether the data at a file offset is a RIFF file of form WAVE.
bool has_wave_audio(MFILE& file, std::uint32_t offset, std::uint32_t length);

/// Width and height of a JPEG's frame header; untouched when it cannot be reached.
void read_frame_size(MFILE& file, std::uint32_t& width, std::uint32_t& height);

}  // namespace tagmend
