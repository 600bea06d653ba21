// Directories that a run can't enter or come back to: a name is then not followed from where the
// run happens to stand, where another photograph may have it.
#include <errno.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "faults/photo_scene.h"
#include "faults/traced_run.h"

namespace tagmend::test {
namespace {

/// The run of an edit that can't change to this directory by its name, nor to any by a descriptor.
Outcome run_outside_of(const std::string& directory, const Sandbox& sandbox,
                       const Words& operands) {
  Words arguments = {"-a", "artist=new"};
  arguments.insert(arguments.end(), operands.begin(), operands.end());
  const auto outcome = run_traced(sandbox, arguments, [&](const SystemCall& now) -> Meddling {
    const std::string_view name = now.row->name;
    const bool fails = name == "fchdir" || (name == "chdir" && now.path == directory);
    return fails ? Meddling{.deed = Meddling::Deed::fail, .number = EACCES} : Meddling{};
  });
  return outcome.value_or(Outcome{});
}

using Directories = TracedTest;

TEST_F(Directories, ThatCannotBeEntered) {
  const Files files = {{"photo.jpg", photo_by("here")}, {"sub/photo.jpg", photo_by("there")}};
  const Sandbox sandbox(files);
  expect_outcome(run_outside_of("sub", sandbox, {"sub/photo.jpg"}), 0, "",
                 "Error: Can't open directory sub\n"
                 "Error: File sub/photo.jpg: Can't open file\n");
  expect_files(sandbox, files);
}

TEST_F(Directories, ThatCannotBeReturnedTo) {
  const Files files = {{"photo.jpg", photo_by("here")},
                       {"sub/photo.jpg", photo_by("there")},
                       {"far/photo.jpg", photo_by("far")}};
  const Sandbox sandbox(files);
  std::string start = sandbox.path("");
  start.erase(start.find_last_not_of('/') + 1);
  const std::string lost = "Error: Can't open directory " + start + "\n";
  expect_outcome(
      run_outside_of(start, sandbox, {"sub/photo.jpg", "photo.jpg", sandbox.path("far/photo.jpg")}),
      0, "", lost + "Error: File photo.jpg: Can't open file\n" + lost + lost);
  expect_files(sandbox, {{"photo.jpg", files.at("photo.jpg")},
                         {"sub/photo.jpg", photo_by("new")},
                         {"sub/photo-be.jpg", files.at("sub/photo.jpg")},
                         {"far/photo.jpg", photo_by("new")},
                         {"far/photo-be.jpg", files.at("far/photo.jpg")}});
}

}  // namespace
}  // namespace tagmend::test
