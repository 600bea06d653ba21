// Runs the built program under the kernel's tracing facility and lets a test meddle with each of
// its system calls: make it fail, move fewer bytes than asked, or be the moment at which a signal
// comes.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "common/run_tagmend.h"

namespace tagmend::test {

/// A system call that can fail, with the errors that a file system or the kernel may answer.
struct FailingCall {
  std::uint64_t number;
  const char* name;
  int path_argument;          ///< which argument leads to a path; -1: none
  int length_argument;        ///< which argument says how many bytes to move; -1: none
  std::array<int, 9> errors;  ///< ends at the first 0
};

/// The row of a call, null for one that does not fail by anything outside of the program.
const FailingCall* find_failing_call(std::uint64_t number);

/// A call that the program is about to make.
struct SystemCall {
  std::size_t index = 0;  ///< among the calls that can fail, counted from the end of the start-up
  const FailingCall* row = nullptr;
  std::array<std::uint64_t, 6> arguments{};
  std::string path;  ///< empty when the call takes none

  /// Whether it prints on standard output or standard error.
  [[nodiscard]] bool prints() const;
  /// "pwrite64(5), call 31", or with the path instead of the descriptor.
  [[nodiscard]] std::string text() const;
};

/// What happens instead of the call, or with it.
struct Meddling {
  enum class Deed { none, fail, shorten, signal };
  Deed deed = Deed::none;
  int number = 0;        ///< the errno value or the signal
  bool is_last = false;  ///< the program runs on by itself afterwards
};

using Meddler = std::function<Meddling(const SystemCall&)>;

/// Runs the program in the sandbox, like `run`, and asks `meddler` about every call that can
/// fail, from the first one that looks at the start directory or at a file named by it on. Nothing
/// where tracing is not possible.
std::optional<Outcome> run_traced(const Sandbox& sandbox, const Words& arguments,
                                  const Meddler& meddler, const Words& environment = {});

/// Tests that trace programs, which can't be done everywhere.
class TracedTest : public testing::Test {
 protected:
  void SetUp() override;
};

}  // namespace tagmend::test
