// A store, a file to read it from, and what a test sees of both.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "common/image_builder.h"
#include "iptc/iptc_read.h"
#include "iptc/iptc_store.h"
#include "support/file_primitives.h"
#include "support/settings.h"

namespace tagmend::test {

/// A file that lives as long as the record.
struct TemporaryFile {
  std::string name;

  explicit TemporaryFile(const Bytes& content) {
    char pattern[] = "/tmp/tagmend-iptc-XXXXXX";
    const int descriptor = mkstemp(pattern);
    EXPECT_EQ(write(descriptor, content.data(), content.size()),
              static_cast<ssize_t>(content.size()));
    close(descriptor);
    name = pattern;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { unlink(name.c_str()); }
};

/// Collects what the program prints on standard error.
struct Messages {
  Messages() { testing::internal::CaptureStderr(); }
  [[nodiscard]] std::string text() const { return testing::internal::GetCapturedStderr(); }
};

/// "resource record:dataset nickname [text] position+length name", one entry a line.
inline std::string listed(const IptcStore& store) {
  std::string lines;
  for (const IptcEntry& entry : store.list()) {
    lines += std::to_string(entry.resource) + " " + std::to_string(entry.record) + ":" +
             std::to_string(entry.dataset) + " " + iptc_datasets[entry.row].nickname + " [" +
             std::string(entry.text) + "] " + std::to_string(entry.file_pos) + "+" +
             std::to_string(entry.length) + " " +
             std::string(entry.resource_name.data(), entry.resource_name_length) + "\n";
  }
  return lines;
}

class StoreTest : public testing::Test {
 protected:
  StoreTest()
      : image_(std::make_unique<ImageFile>()),
        store_(std::make_unique<IptcStore>()),
        context_{.image = *image_, .iptc = *store_, .hooks = hooks_} {
    library_settings = {};
    image_->file_type = FileType::jpeg;
    reset_iptc_store(*store_);
  }

  /// Reads the payload of a segment; positions in the file are positions in `payload`.
  ErrorCode read_segment(const Bytes& payload, std::uint32_t length) {
    const TemporaryFile file(payload);
    const MFileHandle handle(mfopen(file.name.c_str(), "rb"));
    return read_app13(context_, *handle, length);
  }
  ErrorCode read_segment(const Bytes& payload) {
    return read_segment(payload, static_cast<std::uint32_t>(payload.size()));
  }

  MetadataHooks hooks_;
  std::unique_ptr<ImageFile> image_;
  std::unique_ptr<IptcStore> store_;
  ReadContext context_;
};

/// "Photoshop 3.0", a NUL, and resources: the payload of an APP13 segment.
inline Bytes photoshop(std::initializer_list<Bytes> resources) {
  return joined({bytes_of("Photoshop 3.0"), {0}, joined(resources)});
}

}  // namespace tagmend::test
