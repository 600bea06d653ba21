// What the tests of this folder share: a directory of their own, captured streams, owned handles.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/mfile.h"

namespace tagmend::test {

using Octets = std::vector<std::uint8_t>;

inline Octets octets(std::string_view text) { return {text.begin(), text.end()}; }

/// Bytes that no shift or loss leaves the same.
inline Octets pattern(std::size_t size, std::uint32_t seed = 1) {
  Octets bytes(size);
  for (std::uint8_t& byte : bytes) {
    seed = seed * 1664525U + 1013904223U;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  return bytes;
}

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

  static void write_file(const std::string& name, const Octets& bytes) {
    std::ofstream stream(name, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
  }
  static Octets read_file(const std::string& name) {
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
inline MFileHandle memory_file(Octets& bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  return MFileHandle(mfopen_memfile(bytes.data(), size, size));
}

}  // namespace tagmend::test
