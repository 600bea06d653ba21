#include "read/jpeg_markers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>

#include "support/byte_order.h"
#include "support/byte_text.h"
#include "support/file_primitives.h"
#include "support/message.h"

namespace tagmend {
namespace {

using namespace std::string_view_literals;

/// Any number of fill bytes is legal; a run longer than any segment is damage.
constexpr std::uint32_t max_fill_bytes = 0x10000;

/// A Flashpix file may spread its streams over thousands of segments; beyond this a walk through
/// damaged data has lost its way.
constexpr std::uint32_t max_segments = 100'000;

template <std::size_t Size>
bool read_bytes(MFILE& file, std::array<std::uint8_t, Size>& bytes) {
  return mfread(bytes.data(), 1, Size, file) == Size;
}

bool read_segment(SegmentWalk& walk) {
  std::int64_t marker_pos = 0;
  if (read_marker(walk.file, walk.segment.marker, marker_pos) != ErrorCode::ok ||
      walk.segment.marker == marker_sos) {
    return false;
  }
  if (++walk.steps > max_segments || marker_pos > std::numeric_limits<std::int32_t>::max()) {
    walk.gave_up = true;
    return false;
  }
  walk.segment.pos = static_cast<std::uint32_t>(marker_pos) + 2;
  return read_u16(walk.file, walk.segment.length, true) == ErrorCode::ok;
}

/// The frame header (T.81, B.2.2): sample precision, number of lines, samples per line.
void read_frame_header(MFILE& file, std::uint32_t& width, std::uint32_t& height) {
  std::array<std::uint8_t, 5> header;
  if (read_bytes(file, header)) {
    const std::span bytes(header);
    height = load_u16(bytes.subspan<1, 2>(), true);
    width = load_u16(bytes.subspan<3, 2>(), true);
  }
}

void record_first(const JpegSegment& segment, std::uint32_t& pos, std::uint32_t& length) {
  if (pos == 0) {
    pos = segment.pos;
    length = segment.length;
  }
}

void record_flashpix(ReadContext& context, MFILE& file, const JpegSegment& segment) {
  JpegSegments& found = context.image.segments;
  const FpxrHeader header = read_fpxr_header(file, segment.length);
  if (header.stream == -1) {
    return;
  }
  if (header.stream >= 0 && header.stream_pos == 0 &&
      has_wave_audio(file, header.data_pos, header.data_len)) {
    found.audio_pos = header.data_pos;
    found.audio_len = header.data_len;
    found.audio_stream = static_cast<std::uint32_t>(header.stream);
    found.audio_next = segment.pos + segment.length;
  }
  if (found.fpxr_len == 0) {
    found.fpxr_pos = segment.pos;
    found.fpxr_len = segment.length;
  } else {
    found.fpxr_len += segment.length + 2U;
  }
}

void record_rmeta(ReadContext& context, MFILE& file, const JpegSegment& segment) {
  JpegSegments& found = context.image.segments;
  const bool is_first = found.app5_pos == 0;
  record_first(segment, found.app5_pos, found.app5_len);
  if (is_first && context.hooks.read_rmeta) {
    context.hooks.read_rmeta(context, file, segment.payload_length());
  }
}

/// The reader of the segment decides whether it is one that starts the IPTC store afresh, and notes
/// in the store what it could not read.
void record_app13(ReadContext& context, MFILE& file, const JpegSegment& segment) {
  JpegSegments& found = context.image.segments;
  record_first(segment, found.app13_pos, found.app13_len);
  if (context.hooks.read_app13) {
    static_cast<void>(context.hooks.read_app13(context, file, segment.payload_length()));
  }
}

void record_segment(ReadContext& context, MFILE& file, const JpegSegment& segment) {
  ImageFile& image = context.image;
  switch (segment.marker) {
    case marker_app1:
      record_first(segment, image.segments.app1_pos, image.segments.app1_len);
      break;
    case marker_app2:
      record_flashpix(context, file, segment);
      break;
    case marker_app5:
      record_rmeta(context, file, segment);
      break;
    case marker_app13:
      record_app13(context, file, segment);
      break;
    default:
      if (is_frame_header(segment.marker)) {
        read_frame_header(file, image.image_width, image.image_height);
      }
  }
}

/// A stream begins with a 28-byte header: FEFF, a zero version, and a class identifier whose last
/// four bytes are not all zero.
bool is_stream_header(const std::array<std::uint8_t, 28>& header) {
  const bool class_known =
      std::any_of(header.begin() + 24, header.end(), [](std::uint8_t byte) { return byte != 0; });
  return text_of(header).starts_with("\xFE\xFF\0\0"sv) && class_known;
}

std::uint32_t length_behind(std::uint32_t length, std::uint32_t header) {
  return length > header ? length - header : 0;
}

}  // namespace

ErrorCode read_marker(MFILE& file, std::uint16_t& marker, std::int64_t& marker_pos) {
  const ErrorCode result = read_u16(file, marker, true);
  for (std::uint32_t fill = 0; result == ErrorCode::ok && marker == 0xFFFF; ++fill) {
    std::array<std::uint8_t, 1> code;
    if (fill == max_fill_bytes || !read_bytes(file, code)) {
      return ErrorCode::end_of_buffer;
    }
    marker = static_cast<std::uint16_t>(0xFF00 | code[0]);
  }
  marker_pos = mftell(file) - 2;
  return result;
}

bool first_segment(SegmentWalk& walk) {
  return seek_to_offset(walk.file, first_marker_pos) == ErrorCode::ok && read_segment(walk);
}

bool next_segment(SegmentWalk& walk) {
  const std::uint64_t next = std::uint64_t{walk.segment.pos} + walk.segment.length;
  return seek_to_offset(walk.file, next) == ErrorCode::ok && read_segment(walk);
}

void scan_jpeg_markers(ReadContext& context, MFILE& file) {
  trace(0, "\n\nAPP Marks...\n");
  context.image.segments = {};
  SegmentWalk walk{.file = file};
  for (bool more = first_segment(walk); more; more = next_segment(walk)) {
    trace(0, "APP mark=%x, len=%d\n", walk.segment.marker, walk.segment.length);
    record_segment(context, file, walk.segment);
  }
  context.image.incomplete |= walk.gave_up;
}

FpxrHeader read_fpxr_header(MFILE& file, std::uint32_t length) {
  constexpr std::uint32_t header_length = 13;
  constexpr std::uint32_t stream_header_length = 28;
  FpxrHeader header;
  std::array<std::uint8_t, header_length> bytes;
  if (length <= 12 || !read_bytes(file, bytes) || !text_of(bytes).starts_with("FPXR\0\0"sv)) {
    return header;
  }
  if (bytes[6] != 2) {
    header.stream = -2;
    return header;
  }
  const std::span fields(bytes);
  header.stream = load_u16(fields.subspan<7, 2>(), true);
  header.stream_pos = load_u32(fields.subspan<9, 4>(), true);
  const auto chunk_pos = static_cast<std::uint32_t>(mftell(file));
  if (static_cast<std::int32_t>(header.stream_pos) > 0) {
    header.data_pos = chunk_pos;
    header.data_len = length_behind(length, 2 + header_length);
    return header;
  }
  std::array<std::uint8_t, stream_header_length> stream_header;
  if (read_bytes(file, stream_header) && is_stream_header(stream_header)) {
    header.data_pos = chunk_pos + stream_header_length;
    header.data_len = length_behind(length, 2 + header_length + stream_header_length);
  }
  return header;
}

bool has_wave_audio(MFILE& file, std::uint32_t offset, std::uint32_t length) {
  std::array<std::uint8_t, 12> header;
  if (length < header.size()) {
    return false;
  }
  if (seek_to_offset(file, offset) != ErrorCode::ok) {
    print_error("Error: Can't seek to audio file offset: %s\n", error_text(ErrorCode::seek_failed));
    return false;
  }
  return read_bytes(file, header) && text_of(header).starts_with("RIFF"sv) &&
         text_of(header).substr(8).starts_with("WAVE"sv);
}

void read_frame_size(MFILE& file, std::uint32_t& width, std::uint32_t& height) {
  SegmentWalk walk{.file = file};
  for (bool more = first_segment(walk); more; more = next_segment(walk)) {
    if (is_frame_header(walk.segment.marker)) {
      read_frame_header(file, width, height);
      return;
    }
  }
}

}  // namespace tagmend
