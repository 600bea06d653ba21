// The messages that a test provokes.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace tagmend::test {

/// What `action` prints on standard error.
template <typename Action>
std::string errors_of(Action&& action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

}  // namespace tagmend::test
