#include "cli/paths.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tagmend
