// Edits that meet a limit of the system: a full file system, a file-size limit, a directory that
// belongs to somebody else, messages that nobody reads.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "faults/photo_scene.h"

namespace tagmend::test {
namespace {

constexpr int exit_not_permitted = 77;

/// The scenes of single files, reduced to their first photograph.
std::vector<Scene> single_scenes() {
  std::vector<Scene> all;
  for (const Scene& scene : scenes()) {
    if (scene.is_walk() || scene.without_links || scene.has_large_attribute) {
      continue;
    }
    all.push_back(scene);
    all.back().photos.resize(1);
    all.back().operands.resize(1);
  }
  return all;
}

bool is_edited(const SceneSandbox& sandbox, const Photo& photo) {
  return sandbox.directory.content(photo.path) == photo.after;
}

// ---- A file system of its own -------------------------------------------------------------------

/// Mounts a file system in memory that only this process sees; leaves the process where that is not
/// permitted. Sandboxes then stand on it.
void enter_file_system(const std::string& place, const std::string& options) {
  const int others = ::geteuid() == 0 ? 0 : CLONE_NEWUSER;
  if (::unshare(CLONE_NEWNS | others) != 0 ||
      ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      ::mount("tmpfs", place.c_str(), "tmpfs", 0, options.c_str()) != 0) {
    ::_exit(exit_not_permitted);
  }
  ::setenv("TMPDIR", place.c_str(), 1);
}

/// Runs checks in a child process on such a file system, where that can be had.
template <typename Checks>
void run_on_file_system(const std::string& options, Checks checks) {
  const Sandbox place;
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child == 0) {
    enter_file_system(place.path(""), options);
    checks(place);
    std::fflush(stdout);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == exit_not_permitted) {
    GTEST_SKIP() << "File systems can't be mounted here.";
  }
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "see the failures above";
}

TEST(Limits, FileSystemThatFillsUp) {
  constexpr std::size_t page = 4096;
  constexpr std::size_t capacity = 200 << 10U;
  run_on_file_system("size=200k", [](const Sandbox& place) {
    for (const Scene& scene : single_scenes()) {
      const std::size_t photo = (scene.photos[0].before.size() + page - 1) / page * page;
      std::size_t edited = 0;
      std::size_t refused = 0;
      for (std::size_t filler = 0; filler + photo <= capacity; filler += page) {
        const SceneSandbox sandbox(scene);
        place.add("filler", Bytes(filler, 0xA5));
        const Outcome outcome = run(sandbox.directory, scene.arguments());
        check_scene(scene, sandbox, outcome, {.text = std::to_string(filler) + " bytes in use"});
        ++(is_edited(sandbox, scene.photos[0]) ? edited : refused);
        ::unlink(place.path("filler").c_str());
      }
      EXPECT_GT(edited, 0U) << scene.title;
      EXPECT_GT(refused, 0U) << scene.title;
    }
  });
}

TEST(Limits, FileSystemWithoutRoomForNames) {
  for (int inodes = 5; inodes < 10; ++inodes) {
    const std::string options = "size=1m,nr_inodes=" + std::to_string(inodes);
    run_on_file_system(options, [inodes](const Sandbox&) {
      for (const Scene& scene : single_scenes()) {
        const SceneSandbox sandbox(scene);
        const Outcome outcome = run(sandbox.directory, scene.arguments());
        check_scene(scene, sandbox, outcome, {.text = std::to_string(inodes) + " inodes"});
      }
    });
  }
}

// ---- Limits of the process ----------------------------------------------------------------------

TEST(Limits, FileSize) {
  for (const Scene& scene : single_scenes()) {
    const Photo& photo = scene.photos[0];
    for (const rlim_t size :
         std::vector<rlim_t>{1000, 4096, 65536, photo.after.size() - 1, photo.after.size()}) {
      const SceneSandbox sandbox(scene);
      const auto limit_files = [size] {
        ::signal(SIGXFSZ, SIG_DFL);
        const rlimit limit = {size, size};
        ::setrlimit(RLIMIT_FSIZE, &limit);
      };
      const Outcome outcome =
          run(sandbox.directory, scene.arguments(), {.before_exec = limit_files});
      check_scene(scene, sandbox, outcome, {.text = "files of " + std::to_string(size) + " bytes"});
      EXPECT_EQ(is_edited(sandbox, photo), size == photo.after.size()) << scene.title;
    }
  }
}

/// Both streams lead to a pipe that nobody reads any more.
void close_reader() {
  int ends[2];
  if (::pipe(ends) != 0) {
    ::_exit(126);
  }
  ::close(ends[0]);
  ::dup2(ends[1], 1);
  ::dup2(ends[1], 2);
  ::signal(SIGPIPE, SIG_DFL);
}

TEST(Limits, NobodyReadsTheMessages) {
  for (const Scene& scene : scenes()) {
    if (scene.without_links) {
      continue;
    }
    for (const bool small_files : {false, true}) {
      const SceneSandbox sandbox(scene);
      const auto before_exec = [small_files] {
        close_reader();
        const rlimit limit = {1000, 1000};
        if (small_files) {
          ::setrlimit(RLIMIT_FSIZE, &limit);
        }
      };
      const Outcome outcome =
          run(sandbox.directory, scene.arguments(), {.before_exec = before_exec});
      check_scene(scene, sandbox, outcome,
                  {.text = small_files ? "no reader, no room" : "no reader",
                   .is_permanent = true,
                   .is_silent = true,
                   .must_succeed = !small_files});
    }
  }
}

// ---- Rights -------------------------------------------------------------------------------------

struct Rights {
  mode_t directory;
  mode_t photo;
};

/// A file of somebody else is refused: nothing but, perhaps, a second name of it is there
/// afterwards.
void check_refused(const Scene& scene, const Rights& rights) {
  const Photo& photo = scene.photos[0];
  SCOPED_TRACE(scene.title + " " + std::to_string(rights.directory));
  const Sandbox sandbox({{photo.path, photo.before}});
  const std::string directory = sandbox.path("a");
  ::chmod(sandbox.path(photo.path).c_str(), rights.photo);
  ::chmod(directory.c_str(), rights.directory);
  const Outcome outcome = run(sandbox, scene.arguments(), {.as_nobody = true});
  ::chmod(directory.c_str(), 0755);
  if (outcome.status == 127) {
    GTEST_SKIP() << "Other users can't reach the program.";
  }
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("Error: File " + photo.path), std::string::npos) << outcome.err;
  const Files files = sandbox.files();
  EXPECT_TRUE(files.contains(photo.path));
  for (const auto& [path, content] : files) {
    EXPECT_EQ(difference(photo.before, content), "") << path;
    EXPECT_EQ(path.find("orvale_"), std::string::npos) << path << " was left behind";
  }
}

TEST(Limits, DirectoryOfSomebodyElse) {
  for (const Scene& scene : single_scenes()) {
    check_refused(scene, {.directory = 0555, .photo = 0644});
    if (::geteuid() != 0) {  // what follows needs a file of another user
      continue;
    }
    // Everybody may create files; only the owner may rename or remove them.
    check_refused(scene, {.directory = 01777, .photo = 0644});
    check_refused(scene, {.directory = 01777, .photo = 0666});
  }
}

}  // namespace
}  // namespace tagmend::test
