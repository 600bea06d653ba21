// File times as text.
#pragma once

#include <array>
#include <ctime>

namespace tagmend {

/// "YYYY:MM:DD HH:MM:SS" and a NUL.
using LocalTimeText = std::array<char, 20>;

/// The local time as "%04d:%02d:%02d %02d:%02d:%02d"; all digits 0 when it cannot be converted.
LocalTimeText format_local_time(std::time_t time);

}  // namespace tagmend
