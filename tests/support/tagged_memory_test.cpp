#include "support/tagged_memory.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>

namespace tagmend::test {
namespace {

struct Header {
  char marks[4];
  std::uint32_t size;
  std::uint32_t line;
  std::uint32_t sequence;
};

Header header_of(const TaggedBytes& block) {
  Header header;
  std::memcpy(&header, block.get() - sizeof header, sizeof header);
  return header;
}

TEST(TaggedMemory, BlocksCarryTheirHeader) {
  const TaggedBytes first = make_tagged_bytes(5, "EL", 77);
  make_tagged_bytes(5, "EL", 1).reset();
  const TaggedBytes third = make_tagged_bytes(1, "X", 1);
  const Header header = header_of(first);
  EXPECT_EQ(std::string(header.marks, 4), "EXEL");
  EXPECT_EQ(header.size, 21U);
  EXPECT_EQ(header.line, 77U);
  EXPECT_EQ(header_of(third).sequence, header.sequence + 2) << "released blocks count";
  EXPECT_EQ(std::string(header_of(third).marks, 4), std::string("EXX\0", 4));
  EXPECT_EQ(std::bit_cast<std::uintptr_t>(third.get()) % 16, 0U);
}

TEST(TaggedMemory, AWrongOwnerEndsTheProgram) {
  void* const block = exif_malloc(4, "EL", 1);
  EXPECT_EXIT(exif_mfree(block, "CB"), testing::ExitedWithCode(255),
              "^Interal Error: exif_mfree buffer type incorrect \\('EXEL' != 'EXCB'\\)\n$");
  exif_mfree(block, "EL");
}

}  // namespace
}  // namespace tagmend::test
