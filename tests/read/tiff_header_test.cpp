#include "read/tiff_header.h"

#include <gtest/gtest.h>

#include <string>

#include "common/container_files.h"
#include "common/jpeg_builder.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

const Ifd artist = ifd_of({text(0x013B, "Jane Doe")});
const Lines artist_fields = {"0/0/0 013b Jane Doe"};

TEST(TiffHeader, IsFoundInTheFirstExifSegment) {
  const Bytes exif = source_exif(true, {artist});
  const Bytes other = source_exif(false, {ifd_of({text(0x010F, "Other")})});
  const Bytes not_exif = segment(0xE1, bytes_of("Exif!"));
  const Bytes filled = joined({{0xFF, 0xFF, 0xFF}, exif});
  const struct {
    const char* name;
    Bytes bytes;
    std::int64_t header_pos;
  } cases[] = {
      {"behind XMP", jpeg({app0_jfif(), app2_icc(), app1_xmp(), exif, other}),
       2 + 18 + 79 + 45 + 10},
      {"behind another APP1", jpeg({not_exif, exif, other}), 2 + 9 + 10},
      {"behind fill bytes", jpeg({filled}), 15},
      {"far into the file",
       jpeg({segment(0xE2, noise(65000, 1)), segment(0xE2, noise(65000, 2)),
             segment(0xE2, noise(65000, 3)), segment(0xE2, noise(65000, 4)),
             segment(0xE2, noise(65000, 5)), exif}),
       2 + 5 * 65004 + 10},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(test.bytes);
    EXPECT_EQ(reading.result, ErrorCode::ok);
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(fields_of(reading), artist_fields);
    EXPECT_EQ(reading.image->tiff_header_pos, test.header_pos);
    EXPECT_TRUE(reading.image->big_endian);
    EXPECT_FALSE(reading.image->incomplete);
  }
}

TEST(TiffHeader, FilesWithoutExifDataAndDamagedHeaders) {
  const auto exif_of = [](const std::string& header) {
    return jpeg({app1_exif(cut_at(bytes_of(header), 8)), picture()});
  };
  Bytes raf = cut_at(bytes_of("FUJIFILMCCD-RAW"), 87);
  put(raf, 86, 65535, 2, true);
  const std::string magic = "Error: file FILE -TIFF tag value ";
  const struct {
    const char* name;
    Bytes bytes;
    bool incomplete = false;
    std::string errors = {};
    ErrorCode result = ErrorCode::no_exif_data;
  } cases[] = {
      {"no APP1", jpeg({app0_jfif(), picture()})},
      {"only XMP", jpeg({app1_xmp(), picture()})},
      {"Exif behind the scan", joined({jpeg({picture()}), source_exif(true, {artist})})},
      {"no NUL", jpeg({segment(0xE1, bytes_of("Exif__MM"))})},
      {"byte order", exif_of("XX\0*"s), true},
      {"magic", exif_of("MM\0+"s), true, magic + "2b incorrect (expected 2a)\n"},
      {"magic in the other order", exif_of("II\0*"s), true,
       magic + "2a00 incorrect (expected 2a)\n"},
      {"RAF, no image at its place", cut_at(raf, 1000)},
      {"RAF, no place", cut_at(raf, 87), false, "", ErrorCode::seek_failed},
      {"EPS magic", dos_eps_file(bytes_of("MM\0+\0\0\0\0"s)), false, "",
       ErrorCode::tiff_tag_missing},
      {"EPS byte order", dos_eps_file(bytes_of("XX*\0\0\0\0\0"s)), false, "",
       ErrorCode::unknown_byte_order},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(test.bytes);
    EXPECT_EQ(reading.result, test.result);
    EXPECT_EQ(reading.image->incomplete, test.incomplete);
    EXPECT_EQ(reading.errors, test.errors);
    EXPECT_EQ(reading.image->field_count, 0U);
  }
}

TEST(TiffHeader, TheTiffSectionOfADosEpsFileMayLieAnywhere) {
  // Its chain has kinds of its own.
  Bytes eps = dos_eps_file({});
  put(eps, 20, 300000, 4, false);
  put(eps, 300000, scattered_tiff(true, {artist, artist}));
  EXPECT_EQ(fields_of(read_image(eps)), (Lines{"19/0/0 013b Jane Doe", "20/0/1 013b Jane Doe"}));
}

}  // namespace
}  // namespace tagmend::test
