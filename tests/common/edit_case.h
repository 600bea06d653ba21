// One whole edit of photo.jpg or photo.tif, stated by its arguments, the source file and the file
// that it must become.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "common/camera.h"
#include "common/run_tagmend.h"

namespace tagmend::test {

struct EditCase {
  Words arguments;
  Bytes source;
  Bytes expected;
  std::string err = {};
  RunSettings settings = {};
  Files beside = {};  ///< files that stand beside the photograph and stay as they are
};

/// Runs the edit on `name` and compares messages and every byte of the directory. The original is
/// expected under its backup name unless -b is the first argument.
inline void check_edit(const EditCase& wanted, const std::string& name) {
  SCOPED_TRACE(::testing::PrintToString(wanted.arguments).substr(0, 200));
  Files before = wanted.beside;
  before[name] = wanted.source;
  const Sandbox sandbox(before);
  Words arguments = wanted.arguments;
  arguments.push_back(name);
  expect_outcome(sandbox.run(arguments, wanted.settings), 0, "", wanted.err);
  Files after = wanted.beside;
  after[name] = wanted.expected;
  const std::size_t dot = name.rfind('.');
  if (wanted.arguments.at(0) != "-b") {
    after[name.substr(0, dot) + "-be" + name.substr(dot)] = wanted.source;
  }
  expect_files(sandbox, after);
}

}  // namespace tagmend::test
