#include "read/file_type.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

Bytes padded(Bytes bytes, std::size_t size) {
  bytes.resize(size);
  return bytes;
}

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
    Bytes bytes = padded(bytes_of(test.start), 60);
    ByteCursor cursor;
    cursor_init(cursor, nullptr, bytes, 0);
    cursor.big_endian = true;
    EXPECT_EQ(detect_file_type(cursor), test.type);
    EXPECT_EQ(cursor.big_endian, test.big_endian);
    EXPECT_EQ(cursor.pos, test.type == FileType::unknown ? 0 : test.start.size());

    const TempFile on_disk(bytes);
    FileType type = FileType::jpeg;
    MFileHandle file;
    const ErrorCode expected =
        test.type == FileType::unknown ? ErrorCode::unknown_file_type : ErrorCode::ok;
    EXPECT_EQ(open_and_identify(on_disk.name.c_str(), "rb", type, file), expected);
    EXPECT_EQ(type, test.type);
    EXPECT_EQ(file != nullptr, test.type != FileType::unknown);
    EXPECT_TRUE(!file || mftell(*file) == 0);
  }
}

TEST(FileType, NeedsSixBytesToReadAndFiftyToReopen) {
  const Bytes start = bytes_of("II*\0\0\0\0\0"s);
  EXPECT_EQ(read_image(padded(start, 5)).result, ErrorCode::unknown_file_type);
  EXPECT_NE(read_image(padded(start, 6)).result, ErrorCode::unknown_file_type);
  for (const std::size_t size : {49U, 50U}) {
    const TempFile on_disk(padded(start, size));
    FileType type = FileType::jpeg;
    MFileHandle file;
    EXPECT_EQ(open_and_identify(on_disk.name.c_str(), "rb", type, file) == ErrorCode::ok,
              size == 50);
  }
}

TEST(FileType, FilesThatCannotBeOpenedAreReported) {
  const std::string fifo = testing::TempDir() + "read_fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const struct {
    std::string name, reason;
  } cases[] = {{"/no/such/file", "No such file or directory"}, {fifo, "Invalid argument"}};
  for (const auto& test : cases) {
    Reading reading;
    ReadContext context = reading.context();
    testing::internal::CaptureStderr();
    EXPECT_EQ(read_image_file(context, "", test.name.c_str(), {}, false),
              ErrorCode::cannot_open_file);
    FileType type = FileType::jpeg;
    MFileHandle file;
    EXPECT_EQ(open_and_identify(test.name.c_str(), "rb", type, file), ErrorCode::cannot_open_file);
    std::uint32_t width = 7;
    std::uint32_t height = 7;
    get_image_size(test.name.c_str(), width, height);
    const std::string message = "Error: Can't open file " + test.name + ": " + test.reason + "\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), message + message + message +
                                                          "Error: Can't open file " + test.name +
                                                          " to determine image size.\n");
    EXPECT_EQ(width + height, 14U);
    EXPECT_STREQ(reading.image->file_name.data(), "");
    EXPECT_EQ(reading.image->file_type, FileType::unknown);
  }
  std::remove(fifo.c_str());
}

TEST(FileType, NamesAreKeptAndCut) {
  const TempFile on_disk(jpeg({}));
  ImageFile& image = *std::make_unique<ImageFile>().release();
  const std::unique_ptr<ImageFile> owner(&image);
  reset_image_file(image);
  EXPECT_STREQ(image.modified.data(), "YYYY:MM:DD HH:MM:SS");
  const std::string directory(240, 'd');
  ASSERT_TRUE(open_image_file(directory, on_disk.name.c_str(), image));
  EXPECT_EQ(image.file_name.data(), on_disk.name);
  EXPECT_EQ(image.directory.data(), directory);
  EXPECT_EQ(image.path.data(), (directory + "/" + on_disk.name).substr(0, 255));
  EXPECT_EQ(image.file_size, jpeg({}).size());
  EXPECT_TRUE(image.identity.known);
  EXPECT_EQ(image.modified[4], ':');
  EXPECT_NE(image.modified[0], 'Y');
  ASSERT_TRUE(open_image_file("", on_disk.name.c_str(), image));
  EXPECT_EQ(image.path.data(), on_disk.name);
}

TEST(FileType, ImageSizeIsThatOfTheFrameHeader) {
  const struct {
    Bytes bytes;
    std::uint32_t width, height;
  } cases[] = {{jpeg({frame_header(640, 480)}), 640, 480},
               {jpeg({comment("x"), quantisation_table(), frame_header(3, 2)}), 3, 2},
               {jpeg({segment(0xC4, noise(20, 1))}), 7, 7},
               {padded(written_tiff(true, {artist}), 60), 0, 0}};
  for (const auto& test : cases) {
    const TempFile file(test.bytes);
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
    return jpeg({app1_exif(padded(bytes_of(header), 8)), picture()});
  };
  const std::string magic_error = "Error: file FILE -TIFF tag value 2b incorrect (expected 2a)\n";
  const struct {
    const char* name;
    Bytes bytes;
    bool incomplete;
    std::string errors;
  } cases[] = {
      {"no APP1", jpeg({app0_jfif(), picture()}), false, ""},
      {"only XMP", jpeg({app1_xmp(), picture()}), false, ""},
      {"Exif behind the scan", joined({jpeg({picture()}), source_exif(true, {artist})}), false, ""},
      {"no NUL", jpeg({segment(0xE1, bytes_of("Exif__MM"))}), false, ""},
      {"byte order", exif_of("XX\0*"s), true, ""},
      {"magic", exif_of("MM\0+"s), true, magic_error},
      {"magic in the other order", exif_of("II\0*"s), true,
       "Error: file FILE -TIFF tag value 2a00 incorrect (expected 2a)\n"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(test.bytes);
    EXPECT_EQ(reading.result, ErrorCode::no_exif_data);
    EXPECT_EQ(reading.image->incomplete, test.incomplete);
    EXPECT_EQ(reading.errors, test.errors);
    EXPECT_EQ(reading.image->field_count, 0U);
  }
}

TEST(TiffHeader, RafPointsAtItsJpegImage) {
  Bytes raf = padded(bytes_of("FUJIFILMCCD-RAW"), 1000);
  put(raf, 86, 1000, 2, true);
  put(raf, 1000, jpeg({source_exif(false, {artist}), picture()}));
  EXPECT_EQ(fields_of(read_image(raf)), artist_fields);
  put(raf, 86, 1001, 2, true);
  EXPECT_EQ(read_image(raf).result, ErrorCode::no_exif_data);
  put(raf, 86, 65535, 2, true);
  EXPECT_EQ(read_image(raf).result, ErrorCode::no_exif_data);
  EXPECT_EQ(read_image(padded(raf, 87)).result, ErrorCode::seek_failed);
}

TEST(TiffHeader, DosEpsPointsAtItsTiffSection) {
  const auto eps_with = [](const Bytes& tiff, std::size_t tiff_pos) {
    Bytes eps = bytes_of("\xC5\xD0\xD3\xC6");
    put(eps, 20, static_cast<std::uint32_t>(tiff_pos), 4, false);
    put(eps, tiff_pos, tiff);
    return eps;
  };
  // The chain of an EPS file has kinds of its own.
  const Ifd first = ifd_of({text(0x013B, "Jane Doe")});
  const Ifd second = ifd_of({text(0x013B, "John Doe")});
  const Lines fields = {"19/0/0 013b Jane Doe", "20/0/1 013b John Doe"};
  for (const std::size_t tiff_pos : {30U, 300000U}) {
    const Reading reading = read_image(eps_with(scattered_tiff(true, {first, second}), tiff_pos));
    EXPECT_EQ(reading.result, ErrorCode::ok);
    EXPECT_EQ(fields_of(reading), fields);
  }
  EXPECT_EQ(read_image(eps_with(bytes_of("MM\0+\0\0\0\0"s), 30)).result,
            ErrorCode::tiff_tag_missing);
  EXPECT_EQ(read_image(eps_with(bytes_of("XX*\0\0\0\0\0"s), 30)).result,
            ErrorCode::unknown_byte_order);
}

TEST(TiffHeader, TheFirstIfdOfATiffFileMayLieAnywhere) {
  for (const bool big_endian : {true, false}) {
    // An IFD at the end of a file of 600 KB, its value in front of it.
    Bytes far = layout::tiff_header(big_endian);
    const layout::Place place{&far, 0, big_endian};
    far.resize(600'000);
    place.put_offset(4, layout::scatter_ifd(place, artist, 0));
    EXPECT_EQ(fields_of(read_image(far)), artist_fields);
  }
}

}  // namespace
}  // namespace tagmend::test
