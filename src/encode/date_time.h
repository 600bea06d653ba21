// Dates and times as people type them: the text is reduced to a shape, the shape is looked up in a
// table of templates, and what is ambiguous is resolved by plausibility.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "support/error_code.h"

namespace tagmend {

/// A parsed date and time. Numbers are -1 when not given; texts are the characters typed.
struct DateRecord {
  std::int32_t year = -1;
  std::int32_t yy = -1;
  std::int32_t month = -1;
  std::int32_t day = -1;
  std::int32_t hour = -1;
  std::int32_t minute = -1;
  std::int32_t second = -1;
  std::int32_t zone = 99999;  ///< signed hhmm; 99999 when not given
  std::array<char, 5> year_text{};
  std::array<char, 3> yy_text{};
  std::array<char, 3> month_text{};
  std::array<char, 3> day_text{};
  std::array<char, 4> month_name{};
  std::array<char, 3> hour_text{};
  std::array<char, 3> minute_text{};
  std::array<char, 3> second_text{};
  std::array<char, 6> zone_text{};
};

enum class DateRequirement : std::uint16_t { date_or_time = 0, date = 1, time = 2 };

/// Parses a date and time: ok, date_invalid or time_where_date_expected. The record is undefined
/// after a failure.
ErrorCode parse_date_time(std::string_view text, DateRecord& record, DateRequirement requirement);

/// "Jan" to "Dec", or "xxx" outside 1 to 12.
const char* month_name_of(int month);

}  // namespace tagmend
