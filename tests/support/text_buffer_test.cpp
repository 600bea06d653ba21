#include "support/text_buffer.h"

#include <gtest/gtest.h>

#include <array>

namespace tagmend::test {
namespace {

TEST(TextBuffer, StopsWhereItsRoomEnds) {
  std::array<char, 8> room;
  TextBuffer text(room);
  append_format(text, "%d:", 12);
  append(text, "ab");
  EXPECT_EQ(text.text(), "12:ab");
  append_format(text, "%s", "cdef");
  EXPECT_STREQ(room.data(), "12:abcd");
  EXPECT_TRUE(text.full());
  append_format(text, "%d", 9);
  append(text, "x");
  EXPECT_EQ(text.text(), "12:abcd");
}

}  // namespace
}  // namespace tagmend::test
