// The usage and version texts, on standard output.
#pragma once

namespace tagmend {

void print_usage();
void print_version();

}  // namespace tagmend
