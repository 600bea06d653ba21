// The -p option: which character sets to use.
#pragma once

#include <string_view>

namespace tagmend {

/// Applies one -p argument ("local=utf-8,iptc=iso-8859-1") to the settings. Returns 0, or 1 when
/// any item was refused (after its message); the other items hold.
int cs_parse_option(std::string_view argument);

}  // namespace tagmend
