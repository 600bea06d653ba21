#include "write/jpeg_rewrite.h"

#include <cerrno>
#include <cstring>
#include <string_view>

#include "iptc/app13_format.h"
#include "read/file_type.h"
#include "read/jpeg_markers.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"
#include "write/exif_generate.h"

namespace tagmend {
namespace {

/// The segment in hand.
struct Segment {
  std::uint16_t marker = 0;
  std::int64_t marker_pos = 0;  ///< file offset in the input
  std::uint16_t length = 0;     ///< as stored; the segment has two bytes more
};

bool starts_with(MFILE& input, std::string_view text) {
  return matches_at_position(input, bytes_of(text));
}

ErrorCode write_exif_segment(JpegRewrite& rewrite) {
  const std::int64_t position = tell_with_message(rewrite.output);
  if (position < 0) {
    return ErrorCode::write_failed;
  }
  const ErrorCode result = generate_exif(rewrite.input, rewrite.output,
                                         static_cast<std::uint64_t>(position), rewrite.image);
  if (result == ErrorCode::ok) {
    rewrite.exif_done = true;
  }
  return result;
}

ErrorCode write_iptc_segment(JpegRewrite& rewrite) {
  const auto segment = rewrite.app13.segment();
  rewrite.iptc_done = true;
  return mfwrite(segment.data(), 1, segment.size(), rewrite.output) == segment.size()
             ? ErrorCode::ok
             : ErrorCode::write_failed;
}

// ---- What becomes of a segment ------------------------------------------------------------------
// Each of these may write a new segment in front, and says whether the old one is dropped.

ErrorCode handle_app1(JpegRewrite& rewrite, bool& drop) {
  const RunOptions& options = rewrite.options;
  if (!starts_with(rewrite.input, exif_mark)) {
    return ErrorCode::ok;
  }
  const bool was_read = !rewrite.exif_seen;
  rewrite.exif_seen = true;
  if (options.erase_exif || rewrite.exif_done) {
    drop = true;
    // A further EXIF segment is never read, so what it holds is in no other place.
    if (!options.erase_exif && !was_read) {
      rewrite.dropped_unread = true;
    }
    return ErrorCode::ok;
  }
  if (!was_read || !(options.exif_added || options.exif_removed)) {
    return ErrorCode::ok;
  }
  drop = true;
  return write_exif_segment(rewrite);
}

ErrorCode handle_app13(JpegRewrite& rewrite, bool& drop) {
  const RunOptions& options = rewrite.options;
  if (options.erase_iptc) {
    drop = true;
    return ErrorCode::ok;
  }
  // Other programs keep data of their own in segments of this number.
  if (!starts_with(rewrite.input, photoshop_header) || !rewrite.app13.built) {
    return ErrorCode::ok;
  }
  if (rewrite.iptc_done) {
    drop = true;
    return ErrorCode::ok;
  }
  if (!options.iptc_added && !options.iptc_removed) {
    return ErrorCode::ok;
  }
  drop = true;
  return write_iptc_segment(rewrite);
}

/// New segments for a file that had none: EXIF data in front of the first segment behind APP0 and
/// APP1, IPTC data in front of the first that is none of APP0 to APP13.
ErrorCode write_missing_segments(JpegRewrite& rewrite, std::uint16_t marker) {
  const RunOptions& options = rewrite.options;
  ErrorCode result = ErrorCode::ok;
  if (marker != marker_app0 && marker != marker_app1 && options.exif_added && !rewrite.exif_done) {
    result = write_exif_segment(rewrite);
  }
  const bool is_app0_to_13 = marker >= marker_app0 && marker <= marker_app13;
  if (result == ErrorCode::ok && !is_app0_to_13 && options.iptc_added && !rewrite.iptc_done &&
      rewrite.app13.built) {
    result = write_iptc_segment(rewrite);
  }
  return result;
}

/// Writes what goes in front of or in place of a segment, and says whether it is dropped.
ErrorCode handle_segment(JpegRewrite& rewrite, const Segment& segment, bool& drop) {
  const auto data_pos = static_cast<std::uint64_t>(segment.marker_pos) + 4;
  ErrorCode result = seek_to_offset(rewrite.input, data_pos);
  if (result == ErrorCode::ok && segment.marker == marker_app1) {
    result = handle_app1(rewrite, drop);
  }
  if (result == ErrorCode::ok) {
    result = write_missing_segments(rewrite, segment.marker);
  }
  if (result == ErrorCode::ok) {
    result = seek_to_offset(rewrite.input, data_pos);
  }
  if (result != ErrorCode::ok) {
    return result;
  }
  if (segment.marker == marker_app2) {
    drop = rewrite.options.erase_flashpix &&
           read_fpxr_header(rewrite.input, segment.length).stream != -1;
  } else if (segment.marker == marker_app13) {
    result = handle_app13(rewrite, drop);
  }
  return result;
}

// ---- The walk -----------------------------------------------------------------------------------

bool edit_is_pending(const JpegRewrite& rewrite) {
  return (rewrite.options.exif_added && !rewrite.exif_done) ||
         (rewrite.options.iptc_added && !rewrite.iptc_done && rewrite.app13.built);
}

/// An index of further pictures behind this one counts their offsets from its own place
/// (Multi-Picture Format, CIPA DC-007).
void note_index(JpegRewrite& rewrite, const Segment& segment, std::int64_t start) {
  if (segment.marker == marker_app2 &&
      seek_to_offset(rewrite.input, static_cast<std::uint64_t>(segment.marker_pos) + 4) ==
          ErrorCode::ok &&
      starts_with(rewrite.input, std::string_view("MPF\0", 4))) {
    rewrite.index_shift = mftell(rewrite.output) - start;
  }
}

/// The rest of the file from `pos` on: the image data, or what is left of a file that ends early.
/// Pictures in it that move otherwise than their index are no longer found by it.
ErrorCode copy_rest(JpegRewrite& rewrite, std::int64_t pos) {
  const std::int64_t shift = mftell(rewrite.output) - pos;
  rewrite.dropped_unread |= rewrite.index_shift.value_or(shift) != shift;
  return copy_from_offsets(rewrite.input, pos, rewrite.output, current_position, 0);
}

/// One step of the walk. `finished` tells that the whole input has been dealt with.
ErrorCode rewrite_segment(JpegRewrite& rewrite, bool& finished) {
  const std::int64_t start = mftell(rewrite.input);
  Segment segment;
  ErrorCode result = read_marker(rewrite.input, segment.marker, segment.marker_pos);
  if (result == ErrorCode::ok && segment.marker == marker_sos) {
    finished = true;
    result = write_missing_segments(rewrite, segment.marker);
    return result == ErrorCode::ok ? copy_rest(rewrite, start) : result;
  }
  if (result == ErrorCode::ok) {
    result = read_u16(rewrite.input, segment.length, true);
  }
  if (result == ErrorCode::end_of_buffer) {
    finished = true;
    return copy_rest(rewrite, start);
  }
  if (result != ErrorCode::ok) {
    return result;
  }
  // Behind bytes that are no segment, the places of the others are not known: a new segment could
  // land inside of image data.
  if (segment.marker < 0xFF00 || segment.length < 2) {
    finished = true;
    return edit_is_pending(rewrite) ? ErrorCode::not_a_jpeg : copy_rest(rewrite, start);
  }
  bool drop = false;
  result = handle_segment(rewrite, segment, drop);
  if (result != ErrorCode::ok) {
    return result;
  }
  const std::int64_t end = segment.marker_pos + 2 + segment.length;
  if (!drop) {
    note_index(rewrite, segment, start);
    result = copy_from_offsets(rewrite.input, start, rewrite.output, current_position,
                               static_cast<std::uint64_t>(end - start));
    // A last segment that is cut off counts: all of it that is there has been copied.
    finished = result == ErrorCode::end_of_buffer;
    if (result != ErrorCode::ok) {
      return finished ? ErrorCode::ok : result;
    }
  }
  if (seek_to_offset(rewrite.input, static_cast<std::uint64_t>(end)) != ErrorCode::ok) {
    print_error("Seek failed while positioning to next mark: %s\n", std::strerror(errno));
  }
  return ErrorCode::ok;
}

}  // namespace

ErrorCode rewrite_jpeg(JpegRewrite& rewrite) {
  ErrorCode result = seek_to_first_mark(rewrite.input, rewrite.image.file_type);
  bool finished = false;
  while (result == ErrorCode::ok && !finished) {
    result = rewrite_segment(rewrite, finished);
  }
  return result;
}

}  // namespace tagmend
