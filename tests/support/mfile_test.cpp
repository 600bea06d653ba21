#include "support/mfile.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "common/bytes.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"

namespace tagmend::test {
namespace {

Bytes read_bytes(MFILE& file, std::size_t count) {
  Bytes bytes(count);
  bytes.resize(mfread(bytes.data(), 1, count, file));
  return bytes;
}

// ---- Memory files

TEST(MemoryFile, ReadsAndWritesWholeItems) {
  std::array<char, 11> buffer{"abcdXXXXXX"};
  const MFileHandle file(mfopen_memfile(buffer.data(), 10, 4));
  std::array<char, 7> out{"......"};
  EXPECT_EQ(mfread(out.data(), 3, 2, *file), 1U);
  EXPECT_STREQ(out.data(), "abcd..") << "the partial item is copied";
  EXPECT_EQ(mftell(*file), 4);
  EXPECT_EQ(mfread(out.data(), 1, 1, *file), 0U);
  EXPECT_EQ(mfread(out.data(), ~std::size_t{0}, 2, *file), 0U) << "a product beyond any memory";
  EXPECT_EQ(mfseek(*file, 8, Whence::start), 0);
  EXPECT_EQ(mfread(out.data(), 1, 1, *file), 0U) << "behind the data";
  EXPECT_EQ(mfseek(*file, 4, Whence::start), 0);

  EXPECT_EQ(mfwrite("12345678", 1, 8, *file), 6U) << "grows to its capacity";
  EXPECT_STREQ(buffer.data(), "abcd123456");
  EXPECT_EQ(mfseek(*file, -3, Whence::end), 0);
  EXPECT_EQ(mfwrite("wxyz", 4, 1, *file), 0U) << "no item fits";
  EXPECT_EQ(mftell(*file), 7);
  EXPECT_EQ(mfwrite("wxyz", 2, 2, *file), 1U);
  EXPECT_STREQ(buffer.data(), "abcd123wx6");
  EXPECT_EQ(mfwrite("wxyz", 0, 2, *file), 0U);
}

TEST(MemoryFile, SeeksInsideItsBuffer) {
  const struct {
    std::int64_t offset;
    Whence whence;
    std::int64_t position;  // -1: refused
    const char* name;
  } cases[] = {
      {9, Whence::start, 9, ""},
      {10, Whence::start, -1, "SEEK_SET 10"},
      {-1, Whence::start, -1, "SEEK_SET -1"},
      {6, Whence::position, 10, ""},
      {7, Whence::position, -1, "SEEK_CUR 7"},
      {-4, Whence::position, 0, ""},
      {-5, Whence::position, -1, "SEEK_CUR -5"},
      {2, Whence::end, 10, ""},
      {3, Whence::end, -1, "SEEK_END 3"},
      {-9, Whence::end, -1, "SEEK_END -9"},
      {INT64_MAX, Whence::position, -1, "SEEK_CUR 9223372036854775807"},
      {INT64_MIN, Whence::end, -1, "SEEK_END -9223372036854775808"},
  };
  Bytes buffer(10);
  for (const auto& row : cases) {
    const MFileHandle file(mfopen_memfile(buffer.data(), 10, 8));
    ASSERT_EQ(mfseek(*file, 4, Whence::start), 0);
    int result = 0;
    const std::string errors = errors_of([&] { result = mfseek(*file, row.offset, row.whence); });
    const bool refused = row.position < 0;
    EXPECT_EQ(result, refused ? 1 : 0);
    EXPECT_EQ(mftell(*file), refused ? 4 : row.position);
    EXPECT_EQ(mferror(*file), refused ? 22 : 0);
    EXPECT_EQ(errors, refused
                          ? std::string("Internal Error: Attempt to seek past end of memfile (") +
                                row.name + ")\n"
                          : "");
    mfread(buffer.data(), 0, 1, *file);
    EXPECT_EQ(mferror(*file), 0) << "any access clears the error";
  }
}

TEST(MemoryFile, RefusesWhatMakesNoSense) {
  Bytes buffer(4);
  EXPECT_EQ(errors_of([] { EXPECT_EQ(mfopen_memfile(nullptr, 4, 0), nullptr); }),
            "Internal Error: Invalid params passed to mfopen_memfile(00,4, 0)\n");
  errors_of([&] {
    EXPECT_EQ(mfopen_memfile(buffer.data(), 0, 0), nullptr);
    EXPECT_EQ(mfopen_memfile(buffer.data(), 4, 5), nullptr);
  });
  const MFileHandle file = memory_file(buffer);
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(mfseek(*file, 1, static_cast<Whence>(3)), 0); }),
            "Internal Error: Invalid whence past to mfseek(whence=3)\n");
  EXPECT_EQ(mftell(*file), 0);
  EXPECT_EQ(mfdescriptor(*file), -1);
}

// ---- Disk files

class DiskFiles : public InTemporaryDirectory {};

TEST_F(DiskFiles, OpenAsTheirModeSays) {
  EXPECT_EQ(mfopen("photo.jpg", "rb"), nullptr);
  EXPECT_EQ(errno, ENOENT);
  here_.add("photo.jpg", bytes_of("old"));
  EXPECT_EQ(mfopen("photo.jpg", "wbx+"), nullptr);
  EXPECT_EQ(errno, EEXIST);
  EXPECT_EQ(mfopen("photo.jpg", "ab"), nullptr);
  EXPECT_EQ(errno, EINVAL);
  for (const char* const mode : {"r", "rb"}) {
    const MFileHandle reader(mfopen("photo.jpg", mode));
    ASSERT_NE(reader, nullptr);
    EXPECT_NE(fcntl(mfdescriptor(*reader), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(mfwrite("new", 1, 3, *reader), 0U);
    EXPECT_EQ(mferror(*reader), EBADF);
  }
  EXPECT_EQ(here_.content("photo.jpg"), bytes_of("old"));
  EXPECT_EQ(mfclose(mfopen("photo.jpg", "wb+")), 0);
  EXPECT_EQ(here_.content("photo.jpg"), Bytes{});
}

TEST_F(DiskFiles, SeekAnywhereButBeforeTheStart) {
  here_.add("photo.jpg", noise(100, 1));
  const MFileHandle file(mfopen("photo.jpg", "rb"));
  EXPECT_EQ(mfseek(*file, -1, Whence::start), -1);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(mfseek(*file, 10, Whence::end), 0);
  EXPECT_EQ(mftell(*file), 110);
  EXPECT_EQ(read_bytes(*file, 1), Bytes{});
  EXPECT_EQ(mferror(*file), 0) << "the end is no error";
  EXPECT_EQ(mfseek(*file, INT64_MAX, Whence::position), -1);
  EXPECT_EQ(mfseek(*file, 0, static_cast<Whence>(9)), -1);
  EXPECT_EQ(mftell(*file), 110);
  EXPECT_EQ(mfseek(*file, -111, Whence::position), -1);
  EXPECT_EQ(mfseek(*file, -20, Whence::position), 0);
  std::array<std::uint8_t, 12> items;
  EXPECT_EQ(mfread(items.data(), 4, 3, *file), 2U);
  EXPECT_EQ(mftell(*file), 100);
}

/// Random accesses of one file beside the same on a vector: sizes on both sides of the windows,
/// places in front of, inside, right behind and far behind them.
void run_against_model(MFILE& file, MFILE& source, const Bytes& source_bytes, Bytes& model,
                       std::uint32_t seed) {
  const auto random = [&seed](std::uint32_t limit) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<std::size_t>(static_cast<std::uint64_t>(seed) * limit >> 32);
  };
  constexpr std::uint32_t sizes[] = {1, 2, 4, 60, 5000, 8192, 70000, 131072, 200000};
  std::size_t position = 0;
  for (int step = 0; step < 400; ++step) {
    const std::size_t size = 1 + random(sizes[random(std::size(sizes))]);
    const std::size_t action = random(6);
    if (action == 0) {
      position = random(600000);
      ASSERT_EQ(mfseek(file, static_cast<std::int64_t>(position), Whence::start), 0);
    } else if (action == 1) {
      position -= std::min(position, random(300));
      ASSERT_EQ(mfseek(file, static_cast<std::int64_t>(position), Whence::start), 0);
    } else if (action == 2) {
      const std::size_t at = std::min(position, model.size());
      const Bytes expected = part_of(model, at, std::min(size, model.size() - at));
      ASSERT_EQ(read_bytes(file, size), expected) << step;
      position += expected.size();
    } else {
      const std::size_t from = random(static_cast<std::uint32_t>(source_bytes.size() - size));
      ASSERT_EQ(mfseek(source, static_cast<std::int64_t>(from), Whence::start), 0);
      if (action == 3) {
        ASSERT_EQ(mfcopy(source, file, size), size);
      } else {
        ASSERT_EQ(mfwrite(read_bytes(source, size).data(), size, 1, file), 1U);
      }
      ASSERT_EQ(mftell(source), static_cast<std::int64_t>(from + size));
      put(model, position, part_of(source_bytes, from, size));
      position += size;
    }
    ASSERT_EQ(mftell(file), static_cast<std::int64_t>(position)) << step;
  }
}

TEST_F(DiskFiles, BehaveAsTheirBytesDo) {
  const Bytes source_bytes = noise(300000, 1);
  here_.add("source", source_bytes);
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(seed);
    // With seed 6 the window is taken: every write goes straight to the file.
    const MFileHandle holder(seed == 6 ? mfopen("holder", "wb+") : nullptr);
    const MFileHandle source(mfopen("source", "rb"));
    MFILE* const file = mfopen("out", "wb+");
    Bytes model;
    run_against_model(*file, *source, source_bytes, model, seed);
    EXPECT_EQ(mfclose(file), 0);
    ASSERT_EQ(here_.content("out"), model);
  }
}

TEST_F(DiskFiles, CopyTheWholeOfWhatIsThere) {
  constexpr std::uint64_t everything = UINT64_MAX;
  for (const std::size_t size : {0U, 1U, 65535U, 65536U, 3000000U}) {
    SCOPED_TRACE(size);
    const Bytes bytes = noise(size, 1);
    here_.add("source", bytes);
    const MFileHandle source(mfopen("source", "rb"));
    MFILE* const out = mfopen("out", "wb+");
    EXPECT_EQ(mfwrite("head", 4, 1, *out), 1U);
    EXPECT_EQ(mfcopy(*source, *out, everything), size);
    EXPECT_EQ(mfcopy(*source, *out, 70000), 0U);
    EXPECT_EQ(mferror(*source), 0);
    EXPECT_EQ(mfclose(out), 0);
    EXPECT_EQ(here_.content("out"), joined({bytes_of("head"), bytes}));
  }
  // The kernel's files do not tell their size.
  const MFileHandle source(mfopen("/proc/self/status", "rb"));
  const MFileHandle out(mfopen("out", "wb+"));
  EXPECT_GT(mfcopy(*source, *out, everything), 0U);
}

TEST_F(DiskFiles, CopyToAndFromMemory) {
  Bytes bytes = noise(200000, 1);
  Bytes target(150000);
  const MFileHandle memory = memory_file(bytes);
  const MFileHandle small(mfopen_memfile(target.data(), 150000, 0));
  const MFileHandle disk(mfopen("out", "wb+"));
  EXPECT_EQ(mfcopy(*memory, *disk, 200000), 200000U);
  EXPECT_EQ(mfseek(*disk, 0, Whence::start), 0);
  EXPECT_EQ(mfcopy(*disk, *small, 200000), 150000U);
  EXPECT_NE(mferror(*small), 0) << "the short copy is the destination's fault";
  EXPECT_TRUE(std::equal(target.begin(), target.end(), bytes.begin()));
}

TEST_F(DiskFiles, APipeIsReadOn) {
  const Bytes bytes = noise(30000, 1);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], bytes.data(), bytes.size()), 30000);
  close(ends[1]);
  const MFileHandle file(mfopen(("/dev/fd/" + std::to_string(ends[0])).c_str(), "rb"));
  ASSERT_NE(file, nullptr);
  Bytes found;
  for (const std::size_t size : {1U, 3000U, 9000U, 5U, 40000U}) {
    const Bytes piece = read_bytes(*file, size);
    found.insert(found.end(), piece.begin(), piece.end());
  }
  EXPECT_EQ(found, bytes);
  EXPECT_EQ(mfseek(*file, 0, Whence::start), -1);
  EXPECT_EQ(errno, ESPIPE);
  EXPECT_EQ(mferror(*file), 0);
  close(ends[0]);
}

TEST_F(DiskFiles, TheStandardInputIsNeverClosed) {
  const int flags = fcntl(STDIN_FILENO, F_GETFD);
  EXPECT_EQ(mfclose(mfopen_stdin()), 0);
  EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), flags);
}

}  // namespace
}  // namespace tagmend::test
