// One whole edit of photo.jpg or photo.tif, stated by its arguments, the source file and the file
// that it must become.
#pragma once

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

#include "common/camera.h"
#include "common/run_tagmend.h"

namespace tagmend::test {

/// What an edit of photo.jpg says that keeps the original although -b was given.
inline constexpr std::string_view original_kept =
    "Warning: File photo.jpg: some metadata could not be read, original kept as 'photo-be.jpg'\n";

struct EditCase {
  Words arguments;
  Bytes source;
  Bytes expected;
  std::string err = {};
  RunSettings settings = {};
  Files beside = {};  ///< files that stand beside the photograph and stay as they are
  bool kept = false;  ///< the original stays in spite of -b, and a warning says so
};

/// Runs the edit on `name` and compares messages and every byte of the directory. The original is
/// expected under its backup name unless -b or -bq is the first argument and it is not kept all the
/// same.
inline void check_edit(const EditCase& wanted, const std::string& name = "photo.jpg") {
  SCOPED_TRACE(::testing::PrintToString(wanted.arguments).substr(0, 200));
  Files before = wanted.beside;
  before[name] = wanted.source;
  const Sandbox sandbox(before);
  Words arguments = wanted.arguments;
  arguments.push_back(name);
  const bool is_quiet = wanted.arguments.at(0) == "-bq";
  expect_outcome(run(sandbox, arguments, wanted.settings), 0, "",
                 wanted.err + std::string(wanted.kept && !is_quiet ? original_kept : ""));
  Files after = wanted.beside;
  after[name] = wanted.expected;
  const std::size_t dot = name.rfind('.');
  if (!wanted.arguments.at(0).starts_with("-b") || wanted.kept) {
    after[name.substr(0, dot) + "-be" + name.substr(dot)] = wanted.source;
  }
  expect_files(sandbox, after);
}

inline void check_edits(std::span<const EditCase> cases) {
  for (const EditCase& wanted : cases) {
    check_edit(wanted);
  }
}

/// A run over these files that says why it leaves every one of them as it is.
inline void expect_untouched(const Files& files, const Words& arguments, const std::string& err,
                             int status = 0) {
  const Sandbox sandbox(files);
  expect_outcome(run(sandbox, arguments), status, "", err);
  expect_files(sandbox, files);
}

}  // namespace tagmend::test
