#include "support/error_code.h"

#include <gtest/gtest.h>

namespace tagmend::test {
namespace {

TEST(ErrorText, HasATextForEveryNumber) {
  const struct {
    std::uint32_t code;
    const char* text;
  } cases[] = {
      {0, "Unspecified"},
      {1, "Can't open file"},
      {9, "Too many EXIF fields (>200)"},
      {27, "Text string too long"},
      {28, "Unknown EXIF error code 28"},
      {30, "Copying of selected fields failed due to system error"},
      {52, "Specified Date and/or time is ambiguous"},
      {53, "Unknown EXIF error code 53"},
      {54, "Field value too long - truncating"},
      {59, "Binary hexadecimal string contains characters other than '0123456789AaBbCcDdEeFf'"},
      {60, "Unknown EXIF error code 60"},
      {1000, "Unknown EXIF error code 1000"},
      {0x80000000, "Unknown EXIF error code -2147483648"},
  };
  for (const auto& row : cases) {
    EXPECT_STREQ(error_text(static_cast<ErrorCode>(row.code)), row.text);
  }
}

}  // namespace
}  // namespace tagmend::test
