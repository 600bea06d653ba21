// A directory of a test's own, which is gone with it, and the files in it.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "common/bytes.h"
#include "common/file_content.h"

namespace tagmend::test {

/// Path below the directory → content. An empty directory ends in "/" and holds nothing; a symbolic
/// link holds "-> " and its target.
using Files = std::map<std::string, Bytes>;

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tagmend-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    ::chmod(root_.c_str(), 0777);
  }
  explicit TemporaryDirectory(const Files& files) : TemporaryDirectory() {
    for (const auto& [name, content] : files) {
      add(name, content);
    }
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  [[nodiscard]] std::string path(const std::string& name) const { return root_ + "/" + name; }

  /// Adds a file with the directories that lead to it, or a directory when the name ends in "/".
  void add(const std::string& name, const Bytes& content) const {
    const std::filesystem::path target = path(name);
    std::filesystem::create_directories(target.parent_path());
    if (name.back() != '/') {
      EXPECT_TRUE(write_file(target, content)) << target;
    }
  }

  [[nodiscard]] Bytes content(const std::string& name) const { return file_content(path(name)); }

  /// Every file below the directory, and the directories that are empty.
  [[nodiscard]] Files files() const {
    Files found;
    namespace fs = std::filesystem;
    for (const auto& entry : fs::recursive_directory_iterator(root_)) {
      const std::string name = entry.path().string().substr(root_.size() + 1);
      if (entry.is_symlink()) {
        found[name] = bytes_of("-> " + fs::read_symlink(entry.path()).string());
      } else if (!entry.is_directory()) {
        found[name] = content(name);
      } else if (fs::is_empty(entry.path())) {
        found[name + "/"];
      }
    }
    return found;
  }

 private:
  std::string root_;
};

/// One file by its whole path.
struct TemporaryFile {
  TemporaryDirectory directory;
  std::string name = directory.path("file");

  explicit TemporaryFile(const Bytes& bytes) { directory.add("file", bytes); }
};

/// Stands in a directory of its own for the length of a test.
class InTemporaryDirectory : public testing::Test {
 protected:
  InTemporaryDirectory() { std::filesystem::current_path(here_.path("")); }
  ~InTemporaryDirectory() override { std::filesystem::current_path(start_); }

  std::filesystem::path start_ = std::filesystem::current_path();
  TemporaryDirectory here_;
};

}  // namespace tagmend::test
