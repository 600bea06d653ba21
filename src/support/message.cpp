#include "support/message.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "support/settings.h"

namespace tagmend {
namespace {

/// Callers print a failure and then look at errno: printing leaves it as it was.
struct KeepErrno {
  int value = errno;

  KeepErrno() = default;
  KeepErrno(const KeepErrno&) = delete;
  KeepErrno& operator=(const KeepErrno&) = delete;
  ~KeepErrno() { errno = value; }
};

void print_on_standard_error(const char* format, std::va_list arguments) {
  std::fflush(stdout);
  std::vfprintf(stderr, format, arguments);
}

void (*end_cleanup)() = nullptr;

}  // namespace

void print_error(const char* format, ...) {
  if (library_settings.errors_suppressed) {
    return;
  }
  const KeepErrno keep;
  std::va_list arguments;
  va_start(arguments, format);
  print_on_standard_error(format, arguments);
  va_end(arguments);
}

void print_warning(const char* format, ...) {
  if (library_settings.warnings_suppressed) {
    return;
  }
  const KeepErrno keep;
  std::va_list arguments;
  va_start(arguments, format);
  print_on_standard_error(format, arguments);
  va_end(arguments);
}

void print_output(const char* format, ...) {
  const KeepErrno keep;
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void trace(unsigned level, const char* format, ...) {
  if (!library_settings.verbose) {
    return;
  }
  constexpr unsigned deepest = 7;
  const KeepErrno keep;
  std::printf("%*s", static_cast<int>(3 * std::min(level, deepest)), "");
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void check_consistency(bool condition, int line, const char* module) {
  if (!condition) {
    print_output("ASSERT failed at %d in %s\n", line, module);
    end_program(exit_refused);
  }
}

void end_program(int status) {
  // Taken before it runs: a clean-up that fails and ends the program itself is not entered again.
  if (auto* const cleanup = std::exchange(end_cleanup, nullptr); cleanup != nullptr) {
    cleanup();
  }
  std::fflush(stdout);
  std::fflush(stderr);
  std::exit(status);
}

void set_end_cleanup(void (*cleanup)()) { end_cleanup = cleanup; }

}  // namespace tagmend
