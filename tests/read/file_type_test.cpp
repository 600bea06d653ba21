#include "read/file_type.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "common/container_files.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

const Ifd artist = ifd_of({text(0x013B, "Jane Doe")});
const Lines artist_fields = {"0/0/0 013b Jane Doe"};

TEST(FileType, IsKnownByTheFirstBytes) {
  const struct {
    std::string start;
    FileType type;
    bool big_endian;
  } cases[] = {
      {"\xFF\xD8"s, FileType::jpeg, true},
      {"MM\0*"s, FileType::tiff, true},
      {"II*\0"s, FileType::tiff, false},
      {"FUJIFILMCCD-RAW"s, FileType::fujifilm_raf, true},
      {"\0MRM"s, FileType::minolta_mrw, true},
      {"MM\0\x10\0\0HEAPCCDR"s, FileType::canon_crw, true},
      {"II\x1A\0\0\0HEAPCCDR"s, FileType::canon_crw, false},
      {"%!PS-Adobe-3.0 EPSF-3.0"s, FileType::eps, false},
      {"\xC5\xD0\xD3\xC6"s, FileType::eps_dos, false},
      {"%!PS-Adobe-3.0 EPSF-2.0"s, FileType::unknown, true},
      {"II\x1A\0\0\0HEAPCCDX"s, FileType::unknown, true},
      {"MM*\0"s, FileType::unknown, true},
      {"FUJIFILM"s, FileType::unknown, true},
      {" \xFF\xD8"s, FileType::unknown, true},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.start);
    Bytes bytes = cut_at(bytes_of(test.start), 60);
    ByteCursor cursor = cursor_over(bytes, 0, true);
    EXPECT_EQ(detect_file_type(cursor), test.type);
    EXPECT_EQ(cursor.big_endian, test.big_endian);
    EXPECT_EQ(cursor.pos, test.type == FileType::unknown ? 0 : test.start.size());
  }
}

TEST(FileType, NeedsSixBytesToReadAndFiftyToReopen) {
  const Bytes start = bytes_of("II*\0\0\0\0\0"s);
  EXPECT_EQ(read_image(cut_at(start, 5)).result, ErrorCode::unknown_file_type);
  EXPECT_NE(read_image(cut_at(start, 6)).result, ErrorCode::unknown_file_type);
  for (const std::size_t size : {49U, 50U}) {
    const TemporaryFile on_disk(cut_at(start, size));
    FileType type = FileType::jpeg;
    MFileHandle file;
    EXPECT_EQ(open_and_identify(on_disk.name.c_str(), "rb", type, file) == ErrorCode::ok,
              size == 50);
  }
}

TEST(FileType, FilesThatCannotBeOpenedAreReported) {
  const TemporaryDirectory directory;
  const std::string fifo = directory.path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const std::pair<std::string, std::string> cases[] = {
      {"/no/such/file", "No such file or directory"}, {fifo, "Invalid argument"}};
  for (const auto& [name, reason] : cases) {
    Reading reading;
    ReadContext context = reading.context();
    std::uint32_t width = 7;
    std::uint32_t height = 7;
    const std::string errors = errors_of([&, &name = name] {
      EXPECT_EQ(read_image_file(context, "", name.c_str(), {}, false), ErrorCode::cannot_open_file);
      get_image_size(name.c_str(), width, height);
    });
    const std::string message = "Error: Can't open file " + name;
    EXPECT_EQ(errors, message + ": " + reason + "\n" + message + ": " + reason + "\n" + message +
                          " to determine image size.\n");
    EXPECT_EQ(width + height, 14U);
    EXPECT_STREQ(reading.image->file_name.data(), "");
    EXPECT_EQ(reading.image->file_type, FileType::unknown);
  }
}

TEST(FileType, ImageSizeIsThatOfTheFrameHeader) {
  const struct {
    Bytes bytes;
    std::uint32_t width, height;
  } cases[] = {{jpeg({frame_header(640, 480)}), 640, 480},
               {jpeg({segment(0xC4, noise(20, 1))}), 7, 7},
               {cut_at(written_tiff(true, {artist}), 60), 0, 0}};
  for (const auto& test : cases) {
    const TemporaryFile file(test.bytes);
    std::uint32_t width = 7;
    std::uint32_t height = 7;
    get_image_size(file.name.c_str(), width, height);
    EXPECT_EQ(width, test.width);
    EXPECT_EQ(height, test.height);
  }
}

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
