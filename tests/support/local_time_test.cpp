#include "support/local_time.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace tagmend::test {
namespace {

TEST(LocalTime, IsWrittenInDigitsOrNotAtAll) {
  setenv("TZ", "XYZ-2", 1);
  tzset();
  EXPECT_STREQ(format_local_time(0).data(), "1970:01:01 02:00:00");
  EXPECT_STREQ(format_local_time(1709251199).data(), "2024:03:01 01:59:59");
  EXPECT_STREQ(format_local_time(-7201).data(), "1969:12:31 23:59:59");
  EXPECT_STREQ(format_local_time(253402293599).data(), "9999:12:31 23:59:59");
  EXPECT_STREQ(format_local_time(-62167226401).data(), "-001:12:31 23:59:59");
  EXPECT_STREQ(format_local_time(253402300800).data(), "0000:00:00 00:00:00") << "year 10000";
  EXPECT_STREQ(format_local_time(std::numeric_limits<std::time_t>::max()).data(),
               "0000:00:00 00:00:00");
}

}  // namespace
}  // namespace tagmend::test
