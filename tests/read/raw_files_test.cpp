#include "read/raw_files.h"

#include <gtest/gtest.h>

#include <string>

#include "common/bytes.h"
#include "common/container_files.h"
#include "common/context_fixture.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

// ---- MRW ----

Bytes mrw_blocks(std::uint32_t area_length, std::initializer_list<Bytes> blocks) {
  return mrw_block("MRM", area_length, joined(blocks));
}

TEST(RawFilesTest, MrwBlockWalk) {
  const Bytes prd = mrw_block("PRD", 8, Bytes(8, 1));
  const Bytes ttw = mrw_block("TTW", 10, Bytes(10, 2));
  const std::string unreadable = "Error: Attempt to read past end of buffer(449).\n";
  const struct {
    const char* what;
    Bytes file;
    std::uint32_t pos;  ///< 0 when there is none
    std::uint32_t length;
    std::string errors;
  } cases[] = {
      {"first", mrw_blocks(18, {ttw}), 16, 10, ""},
      {"second", mrw_blocks(34, {prd, ttw}), 32, 10, ""},
      {"none", mrw_blocks(16, {prd}), 0, 0, ""},
      {"behind the end of the area", mrw_blocks(16, {prd, ttw}), 0, 0, ""},
      {"at the end of the area", mrw_blocks(20, {prd, mrw_block("TTW", 90, {})}), 0, 0, ""},
      {"reaches over the end", mrw_blocks(21, {prd, mrw_block("TTW", 90, {})}), 32, 90, ""},
      {"empty blocks", mrw_blocks(99, {mrw_block("PRD", 0, {}), mrw_block("WBG", 0, {}), ttw}), 32,
       10, ""},
      {"longer than the buffer", mrw_blocks(0xFFFFFFFF, {mrw_block("PRD", 0x10000, Bytes(8))}), 0,
       0, "Error: Attempt to skip past end of buffer(65536,435), exiting\n"},
      {"longest lengths", mrw_blocks(0xFFFFFFFF, {mrw_block("PRD", 0xFFFFFFFF, Bytes(8))}), 0, 0,
       ""},
      {"no name", mrw_blocks(99, {prd, {0, 'T'}}), 0, 0, unreadable},
      {"no length", mrw_blocks(99, {prd, {0, 'R', 'I', 'F', 0}}), 0, 0, unreadable},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    Bytes file = row.file;
    ByteCursor cursor = cursor_over(file, 0, true);
    cursor.pos = 4;  // behind the signature
    std::uint32_t pos = 0;
    std::uint32_t length = 0;
    ErrorCode code = ErrorCode::ok;
    EXPECT_EQ(errors_of([&] { code = find_mrw_tiff(cursor, pos, length); }), row.errors);
    EXPECT_EQ(code, row.pos != 0 ? ErrorCode::ok : ErrorCode::no_exif_data);
    EXPECT_EQ(pos, row.pos);
    EXPECT_EQ(length, row.length);
  }
}

// ---- CRW ----

class CrwTest : public ContextTest {
 protected:
  ErrorCode read(const Bytes& bytes, bool big_endian) {
    const TemporaryFile temp(bytes);
    const MFileHandle file(mfopen(temp.name.c_str(), "rb"));
    return read_crw(context_, *file, big_endian);
  }
};

TEST_F(CrwTest, ShortBlocksHaveFewerFields) {
  EXPECT_EQ(read(crw_file(Bytes(0x0178), true), true), ErrorCode::ok);
  EXPECT_TRUE(listed().ends_with("\ncrw-rotation 8 [0] 12\n"));
  EXPECT_EQ(image_->field_count, 2U);
  // A text needs its first byte only; the rest of it is missed.
  image_->field_count = 0;
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(read(crw_file(Bytes(0x0179), true), true), ErrorCode::ok); }),
            "Error: Attempt to read past end of buffer(3047)\n");
  EXPECT_EQ(image_->field_count, 3U);
  image_->field_count = 0;
  EXPECT_EQ(read(crw_file(Bytes(3), true), true), ErrorCode::ok);
  EXPECT_EQ(image_->field_count, 0U);
}

TEST_F(CrwTest, AFullTableIsNoError) {
  for (const std::uint32_t count : {199U, 200U}) {
    image_->field_count = count;
    EXPECT_EQ(read(crw_file(Bytes(0x0178), false), false), ErrorCode::ok);
    EXPECT_EQ(image_->field_count, 200U);
  }
  EXPECT_EQ(image_->thumbnail_offset, 26U + 8);
  EXPECT_EQ(image_->thumbnail_length, 500U);
}

TEST_F(CrwTest, NumbersOutsideTheFileAreRefused) {
  const std::string no_start =
      "Error: Can't seek to Canon Raw Meta data start offset: Invalid argument\n";
  const std::string no_memory =
      "Attempt to allocate zero bytes: Type=CR, Line=%, Size=0\n"
      "Error: Can't allocate memory for Canon Raw info block\n";
  const Bytes whole = crw_file(Bytes(50), false);
  const auto with = [&](std::size_t at, std::uint32_t number) {
    Bytes file = whole;
    put(file, at, number, 4, false);
    return file;
  };
  const std::size_t start = whole.size() - 8;
  const std::size_t end = whole.size() - 4;
  const struct {
    Bytes file;
    ErrorCode code;
    std::string errors;
  } cases[] = {
      {{'I'}, ErrorCode::end_of_buffer, ""},
      {{'I', 'I', 0, 0, 0}, ErrorCode::end_of_buffer, ""},
      {cut_at(whole, 7), ErrorCode::seek_failed, no_start},
      {with(2, 0xFFFFFFFF), ErrorCode::read_failed, ""},
      {with(2, 500), ErrorCode::read_failed, ""},
      {with(start, 91), ErrorCode::read_failed, ""},
      {with(start, 90), ErrorCode::no_memory, no_memory},
      {with(start, 0xFFFFFFFF), ErrorCode::read_failed, ""},
      {with(end, 0x7FFFFFFF), ErrorCode::read_failed, ""},
      {with(end, 113), ErrorCode::read_failed, ""},  // one byte behind the end
      {with(end, 112), ErrorCode::ok, ""},
  };
  for (const auto& row : cases) {
    std::string errors = errors_of([&] { EXPECT_EQ(read(row.file, false), row.code); });
    if (const std::size_t line = errors.find("Line="); line != std::string::npos) {
      errors.replace(line + 5, errors.find(',', line) - line - 5, "%");
    }
    EXPECT_EQ(errors, row.errors);
  }
  // A file in memory tells the reason itself.
  Bytes stump = cut_at(whole, 7);
  const MFileHandle file = memory_file(stump);
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(read_crw(context_, *file, false), ErrorCode::seek_failed); }),
            "Internal Error: Attempt to seek past end of memfile (SEEK_END -8)\n" + no_start);
}

TEST_F(CrwTest, AThumbnailThatCannotBeReachedIsLeftOut) {
  // The file ends 20 bytes behind its start: the numbers at 18 and 22 bytes before the end overlap
  // the header or lie outside.
  Bytes file = crw_file({}, false);
  put(file, 2, 0, 4, false);
  file.resize(20);
  put(file, 12, 0, 4, false);
  put(file, 16, 4, 4, false);
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(read(file, false), ErrorCode::ok); }),
            "Error: Can't seek to Canon Raw Meta thumb size offset: Invalid argument\n");
  EXPECT_EQ(image_->thumbnail_offset, 0U);

  Bytes whole = crw_file(Bytes(50), false);
  put(whole, whole.size() - 18, 0xFFFFFFF0, 4, false);
  EXPECT_EQ(read(whole, false), ErrorCode::ok);
  EXPECT_EQ(image_->thumbnail_length, 0U);
}

}  // namespace
}  // namespace tagmend::test
