#include "cli/paths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "common/run_tagmend.h"

namespace tagmend {
namespace {

TEST(SplitPath, CutsAtTheLastSlash) {
  struct Row {
    const char* path;
    const char* directory;
    const char* name;
  };
  const Row rows[] = {
      {"photo.jpg", "", "photo.jpg"},      {"a/photo.jpg", "a", "photo.jpg"},
      {"/photo.jpg", "/", "photo.jpg"},    {"/a/b/photo.jpg", "/a/b", "photo.jpg"},
      {"a//photo.jpg", "a/", "photo.jpg"}, {"//photo.jpg", "/", "photo.jpg"},
      {"./-.jpg", ".", "-.jpg"},           {"a/", "a", ""},
  };
  for (const Row& row : rows) {
    const SplitPath split = split_path(row.path);
    EXPECT_EQ(split.directory, row.directory) << row.path;
    EXPECT_STREQ(split.name, row.name) << row.path;
  }
}

TEST(ClassifyPath, FollowsLinksAndReportsWhatItCannotExamine) {
  const test::Sandbox sandbox({{"file", test::bytes_of("12345")}, {"directory/", {}}});
  const auto path = [&sandbox](const char* name) { return sandbox.path(name); };
  ASSERT_EQ(symlink("file", path("to-file").c_str()), 0);
  ASSERT_EQ(symlink("directory", path("to-directory").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", path("to-nowhere").c_str()), 0);

  EXPECT_EQ(classify_path("."), PathKind::dot);
  EXPECT_EQ(classify_path(".."), PathKind::dot_dot);
  EXPECT_EQ(classify_path("./"), PathKind::directory);
  EXPECT_EQ(classify_path(path("file").c_str()), PathKind::file);
  EXPECT_EQ(classify_path(path("to-file").c_str()), PathKind::file);
  EXPECT_EQ(classify_path(path("to-directory").c_str()), PathKind::directory);
  EXPECT_EQ(classify_path("/dev/null"), PathKind::file);

  testing::internal::CaptureStderr();
  EXPECT_EQ(classify_path(path("to-nowhere").c_str()), PathKind::unknown);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: file " + path("to-nowhere") +
                ": can't determine file type: No such file or directory\n");

  EXPECT_EQ(file_size(path("to-file").c_str()), 5U);
  EXPECT_EQ(file_size(path("nowhere").c_str()), 0U);
}

}  // namespace
}  // namespace tagmend
