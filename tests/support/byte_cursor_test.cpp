#include "support/byte_cursor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <span>

#include "common/bytes.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"

namespace tagmend::test {
namespace {

TEST(ByteCursor, NothingLeavesTheBuffer) {
  constexpr char read[] = "Error: Attempt to read past end of buffer(%d).\n";
  constexpr char write[] = "Error: Attempt to write past end of buffer(%d), exiting\n";
  constexpr char skip[] = "Error: Attempt to skip past end of buffer(4,%d), exiting\n";
  const struct {
    std::uint32_t room;  // bytes left at the position
    std::uint32_t (*access)(ByteCursor& cursor);
    const char* message;
    int place;
    std::uint32_t result;
    bool on_last_byte;
    std::uint32_t errors;
  } cases[] = {
      {3, [](ByteCursor& c) { return cursor_get_u32(c); }, read, 449, 0xDEADBEAF, true, 1},
      {1, [](ByteCursor& c) -> std::uint32_t { return cursor_get_u16_mm(c); }, read, 484, 0xDEAD,
       false, 0},
      {1, [](ByteCursor& c) -> std::uint32_t { return cursor_get_u16(c); }, read, 505, 0xDEAD,
       false, 1},
      {3, [](ByteCursor& c) { return cursor_skip(c, 4), 0U; }, skip, 435, 0, true, 0},
      {1, [](ByteCursor& c) { return cursor_put_u16(c, 1), 0U; }, write, 3099, 0, false, 0},
      {1, [](ByteCursor& c) { return cursor_put_u16_mm(c, 1), 0U; }, write, 3126, 0, false, 0},
      {3, [](ByteCursor& c) { return cursor_put_u32(c, 1), 0U; }, write, 3144, 0, false, 0},
      {3, [](ByteCursor& c) { return cursor_put_bytes(c, std::array<std::uint8_t, 4>{}), 0U; },
       write, 3177, 0, false, 0},
  };
  for (const auto& row : cases) {
    for (std::uint32_t size : {0U, row.room, row.room + 9}) {
      SCOPED_TRACE(testing::Message() << row.place << " in " << size << " bytes");
      Bytes bytes(size, 0x77);
      ByteCursor cursor = cursor_over(bytes, 0);
      const std::uint32_t start = size - std::min(size, row.room);
      cursor_skip(cursor, start);
      std::array<char, 100> message;
      std::snprintf(message.data(), message.size(), row.message, row.place);
      EXPECT_EQ(errors_of([&] { EXPECT_EQ(row.access(cursor), row.result); }), message.data());
      EXPECT_EQ(cursor.pos, row.on_last_byte && size != 0 ? size - 1 : start);
      EXPECT_EQ(cursor.error_count, row.errors);
      EXPECT_EQ(bytes, Bytes(size, 0x77));
    }
  }
}

TEST(ByteCursor, SkipsUpToTheEnd) {
  Bytes bytes(8);
  ByteCursor cursor = cursor_over(bytes, 1000);
  EXPECT_EQ(errors_of([&] { cursor_skip(cursor, 8); }), "");
  EXPECT_EQ(cursor_tell(cursor), 1008U);
  EXPECT_EQ(errors_of([&] { cursor_skip(cursor, 0xFFFFFFFF); }),
            "Error: Attempt to skip past end of buffer(-1,435), exiting\n");
}

/// A file of 300,000 bytes, of which the cursor holds those from 100 to 1099; offsets count from
/// 112.
class SeekOffset : public testing::Test {
 protected:
  SeekOffset() {
    cursor_init(cursor, file.get(), std::span(content).subspan(100, 1000), 100);
    cursor.offset_base = 12;
    cursor.big_endian = true;
    cursor.segment_end = 2000;
  }

  Bytes content = noise(300000, 1);
  MFileHandle file = memory_file(content);
  ByteCursor cursor;
  WorkBuffer alternate;
};

TEST_F(SeekOffset, StaysInTheBufferWhereItCan) {
  mfseek(*file, 7, Whence::start);
  EXPECT_EQ(cursor_seek_offset(cursor, 986, &alternate), ErrorCode::ok);
  EXPECT_EQ(cursor.pos, 998U);
  EXPECT_EQ(mftell(*file), 7);
  EXPECT_EQ(alternate.block, nullptr);
  EXPECT_EQ(cursor_base_pos(cursor), 112);
}

TEST_F(SeekOffset, RefillsFromTheLastByteOn) {
  for (const std::uint32_t offset : {987U, 1500U, 200000U, 5U, 299887U}) {
    SCOPED_TRACE(offset);
    EXPECT_EQ(cursor_seek_offset(cursor, offset, &alternate), ErrorCode::ok);
    EXPECT_EQ(cursor_tell(cursor), offset + 112);
    EXPECT_EQ(cursor.rest()[0], content[offset + 112]);
    EXPECT_EQ(cursor_base_pos(cursor), 112) << "stored offsets count from the same place";
    EXPECT_EQ(cursor.segment_end + cursor.buf_file_pos, 2100) << "the segment ends where it did";
  }
  EXPECT_TRUE(cursor.big_endian) << "a new buffer does not change the order";
  EXPECT_EQ(cursor.buffer.size(), 1U) << "bytes behind the file are no data";
  EXPECT_EQ(cursor_seek_offset(cursor, 8, &alternate), ErrorCode::ok);
  EXPECT_EQ(cursor.buffer.size(), 0x40000U) << "a short buffer does not stay short";
  EXPECT_EQ(cursor_seek_offset(cursor, 100008, &alternate), ErrorCode::ok);
  EXPECT_EQ(cursor.pos, 100000U) << "in the buffer";
}

TEST_F(SeekOffset, FailuresLeaveTheCursorWhereItWas) {
  cursor.pos = 40;
  const auto seek = [this](std::uint32_t offset, WorkBuffer* buffer, ErrorCode expected) {
    return errors_of([&] { EXPECT_EQ(cursor_seek_offset(cursor, offset, buffer), expected); });
  };
  EXPECT_EQ(seek(987, nullptr, ErrorCode::end_of_buffer),
            "Internal Error: No alt buffer specified when when setting buffer offset.\n");
  EXPECT_EQ(seek(300000, &alternate, ErrorCode::seek_failed),
            "Internal Error: Attempt to seek past end of memfile (SEEK_SET 300112)\n");
  cursor.offset_base = -200;
  EXPECT_EQ(seek(50, &alternate, ErrorCode::seek_failed), "") << "before the file";
  cursor.offset_base = 0xFFFFFFFF;
  EXPECT_EQ(seek(0xFFFFFFFF, &alternate, ErrorCode::seek_failed), "") << "behind any file";
  cursor.file = nullptr;
  EXPECT_EQ(seek(0, &alternate, ErrorCode::seek_failed), "");
  EXPECT_EQ(cursor.pos, 40U);
  EXPECT_EQ(cursor.buffer.data(), content.data() + 100);
}

class LargeFile : public InTemporaryDirectory {};

TEST_F(LargeFile, NothingIsReadBehindTheLastOffset) {
  const MFileHandle file(mfopen("large", "wb+"));
  if (ftruncate(mfdescriptor(*file), (std::int64_t{1} << 32) + 100) != 0) {
    GTEST_SKIP() << "no room for a sparse file";
  }
  ByteCursor cursor;
  WorkBuffer alternate;
  cursor_init(cursor, file.get(), {}, 0);
  EXPECT_EQ(cursor_seek_offset(cursor, 0xFFFFFFF0, &alternate), ErrorCode::ok);
  EXPECT_EQ(cursor.rest().size(), 16U);
  cursor.offset_base = 16;
  EXPECT_EQ(cursor_seek_offset(cursor, 0xFFFFFFF0, &alternate), ErrorCode::seek_failed);
}

}  // namespace
}  // namespace tagmend::test
