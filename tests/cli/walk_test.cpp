#include "cli/walk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "common/run_tagmend.h"

namespace tagmend {
namespace {

namespace fs = std::filesystem;

/// A tree of directories, and of texts, which the walk meets without a word: they are of no type
/// that may be edited, which is how a test sees that they were reached.
struct Walk : testing::Test {
  const fs::path start = fs::current_path();
  ~Walk() override { fs::current_path(start); }

  [[nodiscard]] std::string walk(const test::Sandbox& sandbox) const {
    Session session = open_session();
    fs::current_path(sandbox.path("top"));
    testing::internal::CaptureStderr();
    walk_directory("top", true, session);
    return testing::internal::GetCapturedStderr();
  }
};

constexpr const char* reached =
    "Error: Can't extract EXIF fields: Editing of this file type not supported\n";

TEST_F(Walk, ALinkThatLeadsBackIsReportedOnceAndTheWalkGoesOn) {
  const test::Sandbox sandbox(test::Files{{"top/sub/", {}}});
  fs::create_directory_symlink("../..", sandbox.path("top/sub/back"));
  // The directory above the operand is not being walked when the link leads there: its "top" is.
  EXPECT_EQ(walk(sandbox), "Error: Can't open directory top:Too many levels of symbolic links\n");
  fs::remove(sandbox.path("top/sub/back"));
  fs::create_directory_symlink(".", sandbox.path("top/self"));
  EXPECT_EQ(walk(sandbox), "Error: Can't open directory self:Too many levels of symbolic links\n");
  fs::remove(sandbox.path("top/self"));
  fs::create_symlink("loop", sandbox.path("top/loop"));
  EXPECT_EQ(walk(sandbox),
            "Error: file loop: can't determine file type: Too many levels of symbolic links\n");
}

TEST_F(Walk, ComesBackFromWhereALinkLed) {
  const test::Sandbox sandbox(test::Files{{"top/sub/deeper/", {}}, {"else/where/", {}}});
  sandbox.add("top/a", test::bytes_of(std::string(60, 'a')));
  sandbox.add("top/sub/b", test::bytes_of(std::string(60, 'b')));
  sandbox.add("else/where/c", test::bytes_of(std::string(60, 'c')));
  fs::create_directory_symlink(sandbox.path("else/where"), sandbox.path("top/link"));
  fs::create_directory_symlink(sandbox.path("else/where"), sandbox.path("top/sub/deeper/link"));
  // a, b, and c by two ways.
  const std::string once = reached;
  EXPECT_EQ(walk(sandbox), once + once + once + once);
}

TEST_F(Walk, DepthIsNotBoundedByOpenFilesOrPathLength) {
  constexpr int depth = 1500;
  const test::Sandbox sandbox(test::Files{{"top/", {}}});
  int directory = open(sandbox.path("top").c_str(), O_PATH | O_DIRECTORY);
  for (int i = 0; i < depth; ++i) {
    ASSERT_EQ(mkdirat(directory, "deeper", 0777), 0);
    const int inner = openat(directory, "deeper", O_PATH | O_DIRECTORY);
    close(directory);
    directory = inner;
  }
  const int file = openat(directory, "file", O_CREAT | O_WRONLY, 0666);
  ASSERT_EQ(write(file, std::string(60, 'x').data(), 60), 60);
  close(file);
  close(directory);
  EXPECT_EQ(walk(sandbox), reached);
}

}  // namespace
}  // namespace tagmend
