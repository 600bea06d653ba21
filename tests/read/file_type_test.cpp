#include "read/file_type.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "common/jpeg_builder.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

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
               {cut_at(written_tiff(true, {ifd_of({text(0x013B, "x")})}), 60), 0, 0}};
  for (const auto& test : cases) {
    const TemporaryFile file(test.bytes);
    std::uint32_t width = 7;
    std::uint32_t height = 7;
    get_image_size(file.name.c_str(), width, height);
    EXPECT_EQ(width, test.width);
    EXPECT_EQ(height, test.height);
  }
}

}  // namespace
}  // namespace tagmend::test
