// What the tests of this folder share: a directory of their own, captured streams, owned handles.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "common/image_builder.h"
#include "support/mfile.h"

namespace tagmend::test {

/// Stands in a fresh directory for the length of a test.
class InScratchDirectory : public testing::Test {
 protected:
  InScratchDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "support-XXXXXX").string();
    scratch_ = mkdtemp(name.data());
    std::filesystem::current_path(scratch_);
  }
  ~InScratchDirectory() override {
    std::filesystem::current_path(start_);
    std::filesystem::remove_all(scratch_);
  }

  static void write_file(const std::string& name, const Bytes& bytes) {
    std::ofstream stream(name, std::ios::binary);
    std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(stream));
  }
  static Bytes read_file(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  std::filesystem::path start_ = std::filesystem::current_path();
  std::filesystem::path scratch_;
};

/// What `action` prints on standard error.
template <typename Action>
std::string errors_of(Action&& action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

/// A memory file over `bytes`, all of them data.
inline MFileHandle memory_file(Bytes& bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  return MFileHandle(mfopen_memfile(bytes.data(), size, size));
}

}  // namespace tagmend::test
