// The shapes of dates and times that are understood, in the order in which they are tried.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tagmend {

/// Whether the order of the numbers is certain, or is resolved by what they can mean.
enum class DateOrder : std::uint8_t { fixed, guessed };

/// One shape: digits as 9, letters as X, separators as '-', and where each part stands in it.
struct DateTemplate {
  std::string_view shape;
  int year;  ///< four digits; their last two are the two-digit year
  int yy;    ///< two digits, as all that follow unless said
  int month;
  int day;
  int month_name;  ///< three letters
  int hour;
  int minute;
  int second;
  int zone;  ///< sign and four digits
  bool has_date;
  bool has_time;
  DateOrder order;
};

namespace date_templates {

inline constexpr int none = -1;
inline constexpr auto fixed = DateOrder::fixed;
inline constexpr auto guessed = DateOrder::guessed;

// clang-format off
inline constexpr std::array<DateTemplate, 42> table = {{
    // shape, year, yy, month, day, month name, hour, minute, second, zone, date, time, order
    {"9999-XXX-99 99-99-99 -9999", 0, 2, none, 9, 5, 12, 15, 18, 21, true, true, fixed},
    {"9999-XXX-99 99-99-99", 0, 2, none, 9, 5, 12, 15, 18, none, true, true, fixed},
    {"9999-XXX-99 99-99 -9999", 0, 2, none, 9, 5, 12, 15, none, 18, true, true, fixed},
    {"9999-XXX-99 99-99", 0, 2, none, 9, 5, 12, 15, none, none, true, true, fixed},
    {"99-99-99 9999-XXX-99", 9, 11, none, 18, 14, 0, 3, 6, none, true, true, fixed},
    {"99-99 9999-XXX-99", 6, 8, none, 15, 11, 0, 3, none, none, true, true, fixed},
    {"99-XXX-99 99-99-99", none, 0, none, 7, 3, 10, 13, 16, none, true, true, guessed},
    {"99-XXX-99 99-99", none, 0, none, 7, 3, 10, 13, none, none, true, true, guessed},
    {"99-99 99-XXX-99", none, 6, none, 13, 9, 0, 3, none, none, true, true, guessed},
    {"9999-99-99 99-99-99", 0, 2, 5, 8, none, 11, 14, 17, none, true, true, fixed},
    {"9999-99-99 99-99-99 -9999", 0, 2, 5, 8, none, 11, 14, 17, 20, true, true, fixed},
    {"9999-99-99 99-99", 0, 2, 5, 8, none, 11, 14, none, none, true, true, fixed},
    {"9999-99-99 99-99 -9999", 0, 2, 5, 8, none, 11, 14, none, 17, true, true, fixed},
    {"99-99-99 9999-99-99", 9, 11, 14, 17, none, 0, 3, 6, none, true, true, fixed},
    {"99-99 9999-99-99", 6, 8, 11, 14, none, 0, 3, none, none, true, true, fixed},
    {"99-99-99 99-99-9999", 15, 17, 12, 9, none, 0, 3, 6, none, true, true, fixed},
    {"99-99 99-99-99", none, 12, 9, 6, none, 0, 3, none, none, true, true, guessed},
    {"99-99-99 99-99", none, 0, 3, 6, none, 9, 12, none, none, true, true, guessed},
    {"99999999 999999 -9999", 0, 2, 4, 6, none, 9, 11, 13, 16, true, true, guessed},
    {"99999999 999999", 0, 2, 4, 6, none, 9, 11, 13, none, true, true, guessed},
    {"99999999 9999", 0, 2, 4, 6, none, 9, 11, none, none, true, true, guessed},
    {"99999999 9999 -9999", 0, 2, 4, 6, none, 9, 11, none, 14, true, true, guessed},
    {"9999-99-99", 0, 2, 5, 8, none, none, none, none, none, true, false, fixed},
    {"9999-XXX-99", 0, 2, none, 9, 5, none, none, none, none, true, false, fixed},
    {"99-XXX-9999", 7, 9, none, 0, 3, none, none, none, none, true, false, fixed},
    {"99-XXX-99", none, 0, none, 7, 3, none, none, none, none, true, false, guessed},
    {"99-99-9999", 6, 8, 3, 0, none, none, none, none, none, true, false, fixed},
    {"99999999", 0, 2, 4, 6, none, none, none, none, none, true, false, guessed},
    {"99-99-99", none, 0, 3, 6, none, none, none, none, none, true, false, guessed},
    {"999999", none, 0, 2, 4, none, none, none, none, none, true, false, guessed},
    {"99-99-99", none, none, none, none, none, 0, 3, 6, none, false, true, fixed},
    {"99-99", none, none, none, none, none, 0, 3, none, none, false, true, fixed},
    {"999999", none, none, none, none, none, 0, 2, 4, none, false, true, fixed},
    {"9999", none, none, none, none, none, 0, 2, none, none, false, true, fixed},
    {"999999 -9999", none, none, none, none, none, 0, 2, 4, 7, false, true, fixed},
    {"9999 -9999", none, none, none, none, none, 0, 2, none, 5, false, true, fixed},
    {"99-99-99 -9999", none, none, none, none, none, 0, 3, 6, 9, false, true, fixed},
    {"99-99 -9999", none, none, none, none, none, 0, 3, none, 6, false, true, fixed},
    {"999999-9999", none, none, none, none, none, 0, 2, 4, 6, false, true, fixed},
    {"9999-9999", none, none, none, none, none, 0, 2, none, 4, false, true, fixed},
    {"99-99-99-9999", none, none, none, none, none, 0, 3, 6, 8, false, true, fixed},
    {"99-99-9999", none, none, none, none, none, 0, 3, none, 5, false, true, fixed},
}};
// clang-format on

/// Whether the part at `position` consists of the characters of `pattern`.
constexpr bool part_is(const DateTemplate& row, int position, std::string_view pattern) {
  return position == none ||
         row.shape.substr(static_cast<std::size_t>(position), pattern.size()) == pattern;
}

/// Whether every part lies inside the shape, on characters of its kind.
constexpr bool is_sound(const DateTemplate& row) {
  const bool numbers = part_is(row, row.year, "9999") && part_is(row, row.yy, "99") &&
                       part_is(row, row.month, "99") && part_is(row, row.day, "99") &&
                       part_is(row, row.hour, "99") && part_is(row, row.minute, "99") &&
                       part_is(row, row.second, "99");
  const bool texts = part_is(row, row.month_name, "XXX") && part_is(row, row.zone, "-9999");
  const bool year = row.year == none || row.yy == row.year + 2;
  const bool date = row.has_date == (row.yy != none) && row.has_date == (row.day != none) &&
                    row.has_date == ((row.month != none) != (row.month_name != none));
  const bool time = row.has_time == (row.hour != none) && row.has_time == (row.minute != none);
  return numbers && texts && year && date && time;
}
static_assert(std::ranges::all_of(table, is_sound));

/// Characters of the longest shape: a longer one matches no row.
inline constexpr std::size_t longest_shape =
    std::ranges::max(table, {}, [](const DateTemplate& row) {
      return row.shape.size();
    }).shape.size();

}  // namespace date_templates
}  // namespace tagmend
