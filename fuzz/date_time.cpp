// Dates and times as people type them.
#include "encode/date_time.h"

#include "harness.h"

namespace tagmend::fuzz {
namespace {

/// The numbers that a date was found to have can be stored.
void check_date(const DateRecord& date) {
  require(date.month >= -1 && date.month <= 12, "a month past December");
  require(date.day >= -1 && date.day <= 31, "a day past the 31st");
  require(date.hour >= -1 && date.hour <= 23, "an hour past 23");
  require(date.minute >= -1 && date.minute <= 59, "a minute past 59");
  static_cast<void>(month_name_of(date.month));
}

}  // namespace
}  // namespace tagmend::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  const std::string text = fuzz::text_of({data, size});
  fuzz::run_input([&text] {
    for (const auto requirement :
         {DateRequirement::date_or_time, DateRequirement::date, DateRequirement::time}) {
      DateRecord record;
      if (parse_date_time(text, record, requirement) == ErrorCode::ok) {
        fuzz::check_date(record);
      }
    }
  });
  return 0;
}
