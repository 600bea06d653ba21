#include "encode/date_time.h"

#include <gtest/gtest.h>

#include <string>

#include "common/bytes.h"
#include "common/printed_errors.h"

namespace tagmend::test {
namespace {

/// The date as EXIF stores it and the zone, or the code.
std::string parse(std::string_view text, DateRequirement requirement) {
  DateRecord date;
  const ErrorCode code = parse_date_time(text, date, requirement);
  if (code != ErrorCode::ok) {
    return "code " + std::to_string(static_cast<unsigned>(code));
  }
  std::string joined = date.year_text.data();
  joined.append(":").append(date.month_text.data()).append(":").append(date.day_text.data());
  joined.append(" ").append(date.hour_text.data()).append(":").append(date.minute_text.data());
  joined.append(":").append(date.second_text.data()).append(" ").append(date.zone_text.data());
  return joined;
}

TEST(DateTime, DateOrTime) {
  const struct {
    const char* text;
    const char* result;
  } cases[] = {
      {"2004:05:01 10:20:30", "2004:05:01 10:20:30 +0000"},
      {"2004:05:01 10:20:30 +0130", "2004:05:01 10:20:30 +0130"},
      {"2004:05:01 10:20 -0500", "2004:05:01 10:20:00 -0500"},
      {"2004:05:01", "2004:05:01 00:00:00 +0000"},
      {"10:20:30 01-05-2004", "2004:05:01 10:20:30 +0000"},
      // Month names, in any case.
      {"2004-May-01 10:20:30 +0100", "2004:05:01 10:20:30 +0100"},
      {"10:20 2004-DEC-31", "2004:12:31 10:20:00 +0000"},
      {"01-May-04", "2001:05:04 00:00:00 +0000"},
      {"31-May-04", "1931:05:04 00:00:00 +0000"},
      {"04-May-31 10:20", "2004:05:31 10:20:00 +0000"},
      {"2004-Mai-01", "code 18"},
      // Two-digit years: year, month, day, unless the last number cannot be a day.
      {"04-12-31", "2004:12:31 00:00:00 +0000"},
      {"12-02-30", "1930:02:12 00:00:00 +0000"},
      {"31-12-99", "1999:12:31 00:00:00 +0000"},
      {"19-01-01", "2019:01:01 00:00:00 +0000"},
      {"20-01-01", "1920:01:01 00:00:00 +0000"},
      {"32-12-99", "code 18"},
      {"10:20 31-12-04", "2004:12:31 10:20:00 +0000"},
      {"10:20 31-02-04", "1931:02:04 10:20:00 +0000"},
      // Packed digits.
      {"20040501", "2004:05:01 00:00:00 +0000"},
      {"31121999 2359", "1999:12:31 23:59:00 +0000"},
      {"25122004", "2004:12:25 00:00:00 +0000"},
      {"20041225 102030 -0100", "2004:12:25 10:20:30 -0100"},
      {"18991231", "1899:12:31 00:00:00 +0000"},
      {"25132004", "code 18"},
      // Limits.
      {"2004:02:29", "2004:02:29 00:00:00 +0000"},
      {"2005:02:29", "2005:02:29 00:00:00 +0000"},
      {"2004:02:30", "code 18"},
      {"2004:00:01", "code 18"},
      {"2004:00:00", "2004:00:00 00:00:00 +0000"},
      {"2004:05:01 23:59:59", "2004:05:01 23:59:59 +0000"},
      {"2004:05:01 24:00:00", "code 18"},
      {"2004:05:01 10:60:00", "code 18"},
      {"2004:05:01 10:20:60", "code 18"},
      {"2004:05:01 10:20:30 +1300", "code 18"},
      {"2004:05:01 10:20:30 -1201", "code 18"},
      // Separators at the end count for nothing, other characters for a shape that nothing has.
      {"2004:05:01 10:20:", "2004:05:01 10:20:00 +0000"},
      {"2004:05:01 - ", "2004:05:01 00:00:00 +0000"},
      {"2004:05:01,", "code 18"},
      {" 2004:05:01", "code 18"},
      {"2004\x05"
       "01",
       "code 18"},
      {"1 May 2004", "code 18"},
      {"", "code 18"},
      // Times alone.
      {"10:20", "code 51"},
      {"1020", "code 51"},
      {"25:00", "code 18"},
      {"10:20:30", "code 18"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(parse(row.text, DateRequirement::date_or_time), row.result) << row.text;
  }
}

TEST(DateTime, DateOrTimeRequired) {
  const struct {
    const char* text;
    const char* as_date;
    const char* as_time;
  } cases[] = {
      {"10:20:30", "code 18", ":: 10:20:30 +0000"},
      {"04:05:06", "2004:05:06 ::00 +0000", ":: 04:05:06 +0000"},
      {"040506", "2004:05:06 ::00 +0000", ":: 04:05:06 +0000"},
      {"10:20", "code 18", ":: 10:20:00 +0000"},
      {"1020+0130", "code 18", ":: 10:20:00 +0130"},
      {"10-11-2004", "2004:11:10 ::00 +0000", "code 18"},
      {"10-11-0100", "0100:11:10 ::00 +0000", ":: 10:11:00 -0100"},
      {"102030 -1200", "code 18", ":: 10:20:30 -1200"},
      {"10:20:30-0100", "code 18", ":: 10:20:30 -0100"},
      {"2004:05:01 10:20:30", "2004:05:01 10:20:30 +0000", "2004:05:01 10:20:30 +0000"},
      {"2004:05:01", "2004:05:01 ::00 +0000", "code 18"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(parse(row.text, DateRequirement::date), row.as_date) << row.text;
    EXPECT_EQ(parse(row.text, DateRequirement::time), row.as_time) << row.text;
  }
}

TEST(DateTime, TextsOfAnyLengthAreSafe) {
  const std::string date = "2004:05:01 10:20:30 +0100";
  EXPECT_EQ(parse(date + std::string(3000, ' '), DateRequirement::date_or_time), date);
  EXPECT_EQ(parse(date + std::string(3000, '1'), DateRequirement::date_or_time), "code 18");
}

TEST(DateTime, UnknownRequirement) {
  EXPECT_EQ(
      errors_of([] { EXPECT_EQ(parse("2004:05:01", static_cast<DateRequirement>(3)), "code 18"); }),
      "Internal Error: Unknown date/time requirement 3\n");
}

TEST(DateTime, NumbersOfNoMonthHaveAName) {
  for (const int month : {-1, 0, 13, 99}) {
    EXPECT_STREQ(month_name_of(month), "xxx");
  }
}

}  // namespace
}  // namespace tagmend::test
