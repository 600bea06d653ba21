#include "read/jpeg_markers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/jpeg_builder.h"
#include "common/memory_readers.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

// What the hooks were called with: name, file position, length.
std::vector<std::string> calls;

void note_call(const char* name, MFILE& file, std::uint32_t length) {
  calls.push_back(std::string(name) + " " + std::to_string(mftell(file)) + " " +
                  std::to_string(length));
}

const MetadataHooks noting_hooks = {
    .read_app13 =
        [](ReadContext&, MFILE& file, std::uint32_t length) {
          note_call("APP13", file, length);
          return length == 1 ? ErrorCode::iptc_invalid : ErrorCode::ok;
        },
    .read_rmeta = [](ReadContext&, MFILE& file,
                     std::uint32_t length) { note_call("APP5", file, length); }};

Bytes flashpix(std::uint8_t type, std::uint32_t stream_pos, const Bytes& data) {
  return segment(0xE2, joined({bytes_of("FPXR"), {0, 0, type, 0, 9}, big32(stream_pos), data}));
}

Bytes stream_header() {
  Bytes header = {0xFE, 0xFF};
  put(header, 24, 1, 4, true);
  return header;
}

Bytes wave() { return joined({bytes_of("RIFF"), {1, 2, 3, 4}, bytes_of("WAVE"), noise(20, 4)}); }

TEST(JpegMarkers, FirstSegmentsAreRecordedByPositionAndLength) {
  calls.clear();
  const Bytes fill = {0xFF, 0xFF, 0xFF};  // belongs to no segment
  const Reading reading = read_image(
      jpeg({app1_xmp(), fill, app1_xmp(), segment(0xED, {1}), segment(0xE5, {1, 2}),
            segment(0xED, {1, 2, 3}), segment(0xE5, {9}), frame_header(8, 4), frame_header(6, 3)}),
      noting_hooks);
  const JpegSegments& found = reading.image->segments;
  EXPECT_EQ(found.app1_pos, 4U);
  EXPECT_EQ(found.app1_len, 43U);
  EXPECT_EQ(found.app13_pos, 97U);
  EXPECT_EQ(found.app13_len, 3U);
  EXPECT_EQ(found.app5_pos, 102U);
  EXPECT_EQ(found.app5_len, 4U);
  EXPECT_EQ(calls, (Lines{"APP13 99 1", "APP5 104 2", "APP13 110 3"}));
  EXPECT_EQ(reading.image->image_width, 6U);
  EXPECT_EQ(reading.image->image_height, 3U);
  EXPECT_EQ(reading.errors, "");
}

TEST(JpegMarkers, SizeIsThatOfAnyKindOfFrame) {
  for (unsigned marker = 0xC0; marker <= 0xCF; ++marker) {
    const Bytes frame = segment(static_cast<std::uint8_t>(marker), {8, 1, 2, 3, 4, 1, 1, 0x11, 0});
    const bool counts = marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    const Reading reading = read_image(jpeg({frame}));
    EXPECT_EQ(reading.image->image_height, counts ? 0x0102U : 0U);
    EXPECT_EQ(reading.image->image_width, counts ? 0x0304U : 0U);
  }
}

TEST(JpegMarkers, FlashpixSegmentsAreSummedAndTheirSoundIsFound) {
  const Bytes sound = flashpix(2, 0, joined({stream_header(), wave()}));
  Bytes no_class = stream_header();
  no_class[27] = 0;
  const struct {
    const char* name;
    Bytes segments;
    std::uint32_t fpxr_len, audio_pos, audio_len;
  } cases[] = {
      {"three of lengths 100, 200 and 300",
       joined({flashpix(2, 1, Bytes(85)), flashpix(2, 2, Bytes(185)), flashpix(2, 3, Bytes(285))}),
       604, 0, 0},
      {"another type counts", flashpix(1, 0, wave()), 47, 0, 0},
      {"sound", sound, 75, 2 + 4 + 13 + 28, 32},
      {"sound behind another stream", joined({flashpix(2, 5, Bytes(85)), sound}), 100 + 77, 149,
       32},
      {"a later chunk is no sound", flashpix(2, 1, joined({stream_header(), wave()})), 75, 0, 0},
      {"no stream header", flashpix(2, 0, joined({no_class, wave()})), 75, 0, 0},
      {"not a sound", flashpix(2, 0, joined({stream_header(), Bytes(32)})), 75, 0, 0},
      {"header only", flashpix(2, 0, {}), 15, 0, 0},
      {"not Flashpix", app2_icc(), 0, 0, 0},
      {"too short", segment(0xE2, bytes_of("FPXR")), 0, 0, 0},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(jpeg({test.segments}));
    const JpegSegments& found = reading.image->segments;
    EXPECT_EQ(found.fpxr_pos, test.fpxr_len == 0 ? 0U : 4U);
    EXPECT_EQ(found.fpxr_len, test.fpxr_len);
    EXPECT_EQ(found.audio_pos, test.audio_pos);
    EXPECT_EQ(found.audio_len, test.audio_len);
    EXPECT_EQ(found.audio_stream, test.audio_pos == 0 ? 0U : 9U);
    EXPECT_EQ(found.audio_next, test.audio_pos == 0 ? 0U : test.audio_pos + test.audio_len);
  }
}

TEST(JpegMarkers, MarkerAndPlaceAreTold) {
  const struct {
    Bytes bytes;
    ErrorCode result;
    std::uint16_t marker;
    std::int64_t pos;
  } cases[] = {{{0xFF, 0xE1, 0}, ErrorCode::ok, 0xFFE1, 0},
               {{0xFF, 0xFF, 0xE1}, ErrorCode::ok, 0xFFE1, 1},
               {{0x12, 0x34}, ErrorCode::ok, 0x1234, 0},
               {{0xFF, 0xFF}, ErrorCode::end_of_buffer, 0, 0},
               {Bytes(70'000, 0xFF), ErrorCode::end_of_buffer, 0, 0}};
  for (auto [bytes, result, expected_marker, expected_pos] : cases) {
    const MFileHandle file = memory_file(bytes);
    std::uint16_t marker = 0;
    std::int64_t pos = 0;
    EXPECT_EQ(read_marker(*file, marker, pos), result);
    EXPECT_TRUE(result != ErrorCode::ok || (marker == expected_marker && pos == expected_pos));
  }
}

TEST(JpegMarkers, DamagedFilesEndTheScan) {
  const Bytes whole = jpeg({app1_xmp(), flashpix(2, 0, joined({stream_header(), wave()})),
                            segment(0xED, {1, 2, 3}), segment(0xE5, {1, 2}), picture()});
  for (std::size_t size = 6; size < whole.size(); ++size) {
    const Reading reading = read_image(cut_at(whole, size));
    EXPECT_EQ(reading.result, ErrorCode::no_exif_data);
    EXPECT_EQ(reading.errors, "");
    EXPECT_LE(reading.image->segments.app1_pos, 4U);
  }
  const Bytes endless[] = {
      jpeg({Bytes(3'000'000)}),                       // segments of no length
      jpeg({Bytes(3'000'000, 0xFF)}),                 // nothing but fill bytes
      jpeg({segment(0xE2, {}), {0xFF, 0xE2, 0, 1}}),  // a length that ends inside its own field
  };
  for (const Bytes& bytes : endless) {
    EXPECT_EQ(read_image(bytes).result, ErrorCode::no_exif_data);
  }
}

}  // namespace
}  // namespace tagmend::test
