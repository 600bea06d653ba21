// ASCII characters, whatever the locale: their classes and their case.
#pragma once

#include <algorithm>
#include <string_view>

namespace tagmend {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_letter(char c) { return is_upper(c) || is_lower(c); }

constexpr char to_lower(char c) { return is_upper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char to_upper(char c) { return is_lower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

/// Letters compare equal in either case.
constexpr bool equal_ignoring_case(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return to_lower(a) == to_lower(b); });
}

/// What hex_digit_value gives for other characters.
inline constexpr unsigned no_hex_digit = 255;

/// The value of a hexadecimal digit in either case.
constexpr unsigned hex_digit_value(char c) {
  if (is_digit(c)) {
    return static_cast<unsigned>(c - '0');
  }
  const char letter = to_lower(c);
  return letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10 : no_hex_digit;
}

}  // namespace tagmend
