#include "support/local_time.h"

#include <cstdio>

namespace tagmend {

LocalTimeText format_local_time(std::time_t time) {
  LocalTimeText text;
  std::tm local{};
  if (localtime_r(&time, &local) != nullptr) {
    // A year of five digits does not fit the 19 characters: it counts as not convertible.
    const long long year = local.tm_year + 1900LL;
    const int length =
        std::snprintf(text.data(), text.size(), "%04lld:%02d:%02d %02d:%02d:%02d", year,
                      local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    if (length > 0 && static_cast<std::size_t>(length) < text.size()) {
      return text;
    }
  }
  return {"0000:00:00 00:00:00"};
}

}  // namespace tagmend
