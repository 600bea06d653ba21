// What the fuzz targets share: the numbers that an input begins with, and runs of it in which an
// early end of the program ends the input only.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "in_process.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend::fuzz {

using Input = std::span<const std::uint8_t>;

/// The first bytes of the input, which then begins behind them; 0 for what it lacks.
inline std::uint8_t take_byte(Input& input) {
  if (input.empty()) {
    return 0;
  }
  const std::uint8_t byte = input.front();
  input = input.subspan(1);
  return byte;
}
inline std::uint16_t take_u16(Input& input) {
  const unsigned high = take_byte(input);
  return static_cast<std::uint16_t>(high << 8U | take_byte(input));
}

inline std::string text_of(Input input) { return {input.begin(), input.end()}; }

/// Stops the fuzzer with this finding unless the condition holds.
inline void require(bool condition, const char* finding) {
  if (condition) {
    return;
  }
  std::fprintf(stderr, "FINDING: %s\n", finding);
  std::abort();
}

/// Runs `action` with the settings of a run without options. That the program ends itself after a
/// message is no finding; whatever it held is released on the way back.
template <typename Action>
void run_input(Action action) {
  library_settings = {};
  copy_text(library_settings.local_charset, "UTF-8");
  test::throw_at_end_of_program();
  try {
    action();
  } catch (const test::EndOfProgram&) {
  }
}

}  // namespace tagmend::fuzz
