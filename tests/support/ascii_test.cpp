// Character classes end where ASCII's letters and digits end, and never depend on the locale.
#include "support/ascii.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

TEST(Ascii, OnlyAsciiLettersFold) {
  EXPECT_TRUE(equal_ignoring_case("aZ-9", "Az-9"));
  EXPECT_FALSE(equal_ignoring_case("@[`{", "`{@["));
  EXPECT_FALSE(equal_ignoring_case("\xC4", "\xE4"));
  EXPECT_FALSE(equal_ignoring_case("ab", "abc"));
}

TEST(Ascii, HexadecimalDigits) {
  constexpr std::string_view digits = "0123456789abcdef";
  for (int code = 0; code < 256; ++code) {
    const auto c = static_cast<char>(code);
    const std::size_t place = digits.find(to_lower(c));
    EXPECT_EQ(hex_digit_value(c), place == std::string_view::npos ? no_hex_digit : place) << code;
  }
}

}  // namespace
}  // namespace tagmend
