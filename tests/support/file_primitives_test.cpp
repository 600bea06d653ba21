#include "support/file_primitives.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/bytes.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"

namespace tagmend::test {
namespace {

TEST(FilePrimitives, TellHowANumberFailed) {
  Bytes bytes(7);
  const MFileHandle file = memory_file(bytes);
  std::uint16_t half = 0;
  std::uint32_t word = 0;
  constexpr char truncated_16[] = "Error: Data truncated in file write\n";
  constexpr char truncated_32[] = "Error: Data truncated if file write\n";
  const struct {
    std::int64_t position;
    std::function<ErrorCode(MFILE&)> access;
    ErrorCode code;
    std::string errors;
  } cases[] = {
      {6, [](MFILE& f) { return write_u16(f, 1, true); }, ErrorCode::write_failed, truncated_16},
      {4, [](MFILE& f) { return write_u32(f, 1, true); }, ErrorCode::write_failed, truncated_32},
      {6, [&](MFILE& f) { return read_u16(f, half, true); }, ErrorCode::end_of_buffer, ""},
      {4, [&](MFILE& f) { return read_u32(f, word, true); }, ErrorCode::end_of_buffer, ""},
      {0, [](MFILE& f) { return write_u16_at(f, 6, 1, true); }, ErrorCode::seek_failed,
       truncated_16},
      {0, [](MFILE& f) { return write_u32_at(f, 4, 1, true); }, ErrorCode::seek_failed,
       truncated_32},
      {0, [&](MFILE& f) { return read_u16_at(f, 6, half, true); }, ErrorCode::seek_failed, ""},
      {0, [&](MFILE& f) { return read_u32_at(f, 4, word, true); }, ErrorCode::seek_failed, ""},
      {0, [](MFILE& f) { return seek_to_offset(f, UINT64_MAX); }, ErrorCode::seek_failed, ""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(&row - cases);
    ASSERT_EQ(mfseek(*file, row.position, Whence::start), 0);
    EXPECT_EQ(errors_of([&] { EXPECT_EQ(row.access(*file), row.code); }), row.errors);
  }
}

class OnDisk : public InTemporaryDirectory {};

TEST_F(OnDisk, BlocksAreWrittenAndReadWhole) {
  const MFileHandle file(mfopen("out", "wb+"));
  EXPECT_EQ(write_block_at(*file, 3, bytes_of("abc"), "out"), ErrorCode::ok);
  EXPECT_EQ(write_block_at(*file, 9, {}, "out"), ErrorCode::ok) << "nothing is not too little";
  Bytes block(4);
  std::size_t got = 0;
  EXPECT_EQ(read_block_at(*file, 2, block, got), ErrorCode::ok);
  EXPECT_EQ(block, (Bytes{0, 'a', 'b', 'c'}));
  EXPECT_EQ(read_block_at(*file, 4, block, got), ErrorCode::end_of_buffer);
  EXPECT_EQ(got, 2U);
  EXPECT_EQ(read_block_at(*file, UINT64_MAX, block, got), ErrorCode::seek_failed);
  EXPECT_EQ(got, 0U);
  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(write_block_at(*file, UINT64_MAX, block, "out"), ErrorCode::seek_failed);
            }),
            "Error: Seek failed for file write out: Invalid argument\n");
}

TEST_F(OnDisk, FailuresNameTheFileAndTheReason) {
  MFILE* const full = mfopen("/dev/full", "wb+");
  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(write_block_at(*full, 5, noise(200000, 1), "new.jpg"),
                        ErrorCode::write_failed);
            }),
            "Error: Write failed for new.jpg at offset 5: No space left on device\n");
  EXPECT_EQ(errors_of([&] { close_with_message(full); }),
            "Error closing file: No space left on device\n");
  const MFileHandle directory(mfopen(".", "rb"));
  Bytes block(4);
  std::size_t got = 0;
  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(read_block_at(*directory, 0, block, got), ErrorCode::read_failed);
            }),
            "Error: Can't read file: Is a directory\n");
}

TEST_F(OnDisk, CopiesAreExactOrSayWhy) {
  const Bytes bytes = noise(300000, 1);
  here_.add("source", bytes);
  const MFileHandle source(mfopen("source", "rb"));
  const auto copied = [&](std::int64_t from, std::uint64_t count, ErrorCode expected) {
    MFILE* const out = mfopen("out", "wb+");
    EXPECT_EQ(copy_from_offsets(*source, from, *out, 0, count), expected);
    EXPECT_EQ(mfclose(out), 0);
    return here_.content("out");
  };
  EXPECT_EQ(copied(5, 10, ErrorCode::ok), part_of(bytes, 5, 10));
  EXPECT_EQ(copied(current_position, 70000, ErrorCode::ok), part_of(bytes, 15, 70000));
  EXPECT_EQ(copied(100, 0, ErrorCode::ok), part_of(bytes, 100, 299900));
  EXPECT_EQ(copied(current_position, 0, ErrorCode::ok), Bytes{}) << "an empty rest";
  EXPECT_EQ(copied(299990, 11, ErrorCode::end_of_buffer), part_of(bytes, 299990, 10));
  EXPECT_EQ(copied(100000, 200001, ErrorCode::end_of_buffer), part_of(bytes, 100000, 200000));

  const MFileHandle out(mfopen("out", "wb+"));
  EXPECT_EQ(write_marker_and_copy(*source, 2, *out, 0xFFE1, 3), ErrorCode::ok);
  EXPECT_EQ(mfflush(*out), 0);
  EXPECT_EQ(here_.content("out"), (Bytes{0xFF, 0xE1, bytes[2], bytes[3], bytes[4]}));
}

TEST_F(OnDisk, CopiesTellWhichSideFailed) {
  here_.add("source", noise(300000, 1));
  const MFileHandle source(mfopen("source", "rb"));
  const MFileHandle full(mfopen("/dev/full", "wb+"));
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(copy_bytes(*source, *full, 0), ErrorCode::write_failed); }),
            "Error: Can't write to file: No space left on device\n");

  Bytes room(100);
  const MFileHandle small = memory_file(room);
  ASSERT_EQ(seek_to_offset(*source, 0), ErrorCode::ok);
  EXPECT_EQ(
      errors_of([&] { EXPECT_EQ(copy_bytes(*source, *small, 200), ErrorCode::write_failed); }),
      "Error: Data truncated in file write\n");

  // Not even a copy to the end takes an unreadable source for a short one.
  const MFileHandle unreadable(mfopen(".", "rb"));
  const MFileHandle out(mfopen("out", "wb+"));
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(copy_bytes(*unreadable, *out, 0), ErrorCode::read_failed); }),
            "Error: Can't read file: Is a directory\n");
}

TEST(FilePrimitives, ComparingLeavesThePosition) {
  Bytes bytes = bytes_of("Photoshop 3.0");
  const MFileHandle file = memory_file(bytes);
  ASSERT_EQ(seek_to_offset(*file, 10), ErrorCode::ok);
  EXPECT_TRUE(matches_at_position(*file, bytes_of("3.0")));
  EXPECT_FALSE(matches_at_position(*file, bytes_of("3.1")));
  EXPECT_FALSE(matches_at_position(*file, bytes_of("3.00"))) << "the file is shorter";
  EXPECT_TRUE(matches_at_position(*file, {}));
  EXPECT_EQ(mftell(*file), 10);
  EXPECT_EXIT(
      {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        static_cast<void>(matches_at_position(*file, Bytes(101)));
      },
      testing::ExitedWithCode(1), "^ASSERT failed at [0-9]+ in utility.cpp\n$");
}

}  // namespace
}  // namespace tagmend::test
