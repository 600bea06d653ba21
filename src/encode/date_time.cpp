#include "encode/date_time.h"

#include <charconv>
#include <utility>

#include "encode/date_templates.h"
#include "support/ascii.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

constexpr std::int32_t not_given = -1;
constexpr std::int32_t zone_not_given = 99999;
constexpr std::int32_t zone_limit = 1200;

struct Month {
  const char* digits;
  const char* name;
  std::int32_t days;
};

/// Row 0 has no days, so that no day fits the month 00, and a name that no three letters match.
/// February has 29 days in every year.
constexpr std::array<Month, 13> months = {{
    {"00", "NeVeR MaTcH", 0},
    {"01", "Jan", 31},
    {"02", "Feb", 29},
    {"03", "Mar", 31},
    {"04", "Apr", 30},
    {"05", "May", 31},
    {"06", "Jun", 30},
    {"07", "Jul", 31},
    {"08", "Aug", 31},
    {"09", "Sep", 30},
    {"10", "Oct", 31},
    {"11", "Nov", 30},
    {"12", "Dec", 31},
}};

bool is_month(std::int32_t month) {
  return month >= 0 && month < static_cast<std::int32_t>(months.size());
}

bool fits_month(std::int32_t day, std::int32_t month) {
  return is_month(month) && day <= months[static_cast<std::size_t>(month)].days;
}

constexpr bool is_separator(char c) {
  return std::string_view(":.-/+").find(c) != std::string_view::npos;
}

/// The shape of a character, or the character itself where it has none: such a text matches
/// nothing.
constexpr char shape_of(char c) {
  if (is_digit(c)) {
    return '9';
  }
  if (is_letter(c)) {
    return 'X';
  }
  return is_separator(c) ? '-' : c;
}

/// The text up to the blanks and separators at its end.
std::string_view without_trailing_separators(std::string_view text) {
  while (!text.empty() && (text.back() == ' ' || is_separator(text.back()))) {
    text.remove_suffix(1);
  }
  return text;
}

using ShapeText = std::array<char, date_templates::longest_shape>;

/// The shape of the text; empty, which matches nothing, when it is longer than any known shape.
std::string_view date_shape(std::string_view text, ShapeText& shape) {
  text = without_trailing_separators(text);
  if (text.size() > shape.size()) {
    return {};
  }
  std::transform(text.begin(), text.end(), shape.begin(), shape_of);
  return {shape.data(), text.size()};
}

bool fits_requirement(const DateTemplate& row, DateRequirement requirement) {
  switch (requirement) {
    case DateRequirement::date_or_time:
      return row.has_date || row.has_time;
    case DateRequirement::date:
      return row.has_date;
    case DateRequirement::time:
      return row.has_time;
  }
  return false;
}

const DateTemplate* find_date_template(std::string_view shape, DateRequirement requirement) {
  if (requirement > DateRequirement::time) {
    print_error("Internal Error: Unknown date/time requirement %d\n",
                static_cast<int>(requirement));
    return nullptr;
  }
  for (const DateTemplate& row : date_templates::table) {
    if (row.shape == shape && fits_requirement(row, requirement)) {
      return &row;
    }
  }
  return nullptr;
}

/// The number that a text begins with, after an optional sign; 0 for none.
std::int32_t to_number(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  std::int32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// Copies one part of the text, as many characters as `part` holds; empty when the shape has none.
std::string_view take_part(std::string_view text, int position, std::span<char> part) {
  copy_text(part, {});
  if (position == date_templates::none) {
    return {};
  }
  const std::string_view taken = text.substr(static_cast<std::size_t>(position), part.size() - 1);
  copy_text(part, taken);
  return taken;
}

std::int32_t take_number(std::string_view text, int position, std::span<char> part) {
  const std::string_view taken = take_part(text, position, part);
  return taken.empty() ? not_given : to_number(taken);
}

ErrorCode take_month_name(std::string_view text, const DateTemplate& row, DateRecord& record) {
  const std::string_view name = take_part(text, row.month_name, record.month_name);
  if (name.empty()) {
    return ErrorCode::ok;
  }
  for (std::size_t month = 1; month < months.size(); ++month) {
    if (!equal_ignoring_case(name, months[month].name)) {
      continue;
    }
    record.month = static_cast<std::int32_t>(month);
    copy_text(record.month_text, months[month].digits);
    return ErrorCode::ok;
  }
  return ErrorCode::date_invalid;
}

ErrorCode read_date_fields(std::string_view text, const DateTemplate& row, DateRecord& record) {
  record.year = take_number(text, row.year, record.year_text);
  record.yy = take_number(text, row.yy, record.yy_text);
  record.month = take_number(text, row.month, record.month_text);
  record.day = take_number(text, row.day, record.day_text);
  record.hour = take_number(text, row.hour, record.hour_text);
  record.minute = take_number(text, row.minute, record.minute_text);
  record.second = take_number(text, row.second, record.second_text);
  if (row.second == date_templates::none) {
    copy_text(record.second_text, "00");
  }

  const std::string_view zone = take_part(text, row.zone, record.zone_text);
  record.zone = zone.empty() ? zone_not_given : to_number(zone);
  if (zone.empty()) {
    copy_text(record.zone_text, "+0000");
  }
  return take_month_name(text, row, record);
}

/// Year, month, day, unless the last number cannot be a day: then day, month, year.
void resolve_short_year(DateRecord& record) {
  if (!is_month(record.month) || fits_month(record.day, record.month)) {
    return;
  }
  std::swap(record.yy, record.day);
  std::swap(record.yy_text, record.day_text);
}

/// Eight digits: year, month, day, unless they begin with no year of 1900 to 2099 and end in one:
/// then day, month, year.
void resolve_packed_date(DateRecord& record) {
  const std::int32_t century = record.year - record.yy;
  if (century == 2000 || century == 1900) {
    return;
  }
  if (record.month != 19 && record.month != 20) {
    return;
  }

  const DateRecord read = record;
  record.year = read.month * 100 + read.day;
  TextBuffer year(record.year_text);
  append(year, read.month_text.data());
  append(year, read.day_text.data());
  record.month = read.yy;
  record.month_text = read.yy_text;
  record.day = read.year / 100;
  copy_text(record.day_text, std::string_view(read.year_text.data(), 2));
  record.yy = read.day;
  record.yy_text = read.day_text;
}

void resolve_date_order(DateRecord& record) {
  if (record.year == not_given) {
    resolve_short_year(record);
  } else {
    resolve_packed_date(record);
  }
}

bool is_plausible(const DateRecord& record) {
  if (record.yy != not_given && !fits_month(record.day, record.month)) {
    return false;
  }
  if (record.hour != not_given && (record.hour > 23 || record.minute > 59 || record.second > 59)) {
    return false;
  }
  return record.zone == zone_not_given || (record.zone >= -zone_limit && record.zone <= zone_limit);
}

/// Two-digit years are those of 1920 to 2019.
void complete_year(DateRecord& record) {
  if (record.year != not_given) {
    return;
  }
  record.year = record.yy > 19 ? 1900 + record.yy : 2000 + record.yy;
  TextBuffer text(record.year_text);
  append_format(text, "%4d", record.year);
}

void set_midnight(DateRecord& record) {
  record.hour = record.minute = record.second = record.zone = 0;
  copy_text(record.hour_text, "00");
  copy_text(record.minute_text, "00");
  copy_text(record.second_text, "00");
  copy_text(record.zone_text, "+0000");
}

}  // namespace

ErrorCode parse_date_time(std::string_view text, DateRecord& record, DateRequirement requirement) {
  ShapeText shape;
  const DateTemplate* const row = find_date_template(date_shape(text, shape), requirement);
  if (!row) {
    return ErrorCode::date_invalid;
  }

  const ErrorCode code = read_date_fields(text, *row, record);
  if (code != ErrorCode::ok) {
    return code;
  }
  if (row->order == DateOrder::guessed) {
    resolve_date_order(record);
  }
  if (!is_plausible(record)) {
    return ErrorCode::date_invalid;
  }
  if (row->has_date) {
    complete_year(record);
  }

  if (requirement != DateRequirement::date_or_time) {
    return ErrorCode::ok;
  }
  if (!row->has_date) {
    return ErrorCode::time_where_date_expected;
  }
  if (!row->has_time) {
    set_midnight(record);
  }
  return ErrorCode::ok;
}

const char* month_name_of(int month) {
  return month >= 1 && is_month(month) ? months[static_cast<std::size_t>(month)].name : "xxx";
}

}  // namespace tagmend
