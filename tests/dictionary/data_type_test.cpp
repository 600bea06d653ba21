#include "dictionary/data_type.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

TEST(DataType, SizesDoNotOverflow) {
  EXPECT_EQ(value_size(5, 0xFFFFFFFF), 8ULL * 0xFFFFFFFF);
  EXPECT_EQ(value_size(13, 2), 8U);
  EXPECT_EQ(value_size(200, 3), 3U);  // a type that no file may hold
  EXPECT_FALSE(is_stored_type(0));
  EXPECT_TRUE(is_stored_type(15));
  EXPECT_FALSE(is_stored_type(16));
}

}  // namespace
}  // namespace tagmend
