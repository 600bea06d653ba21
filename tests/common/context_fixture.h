// A read's records for tests that call one reader alone, and what they see of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "common/image_builder.h"
#include "iptc/iptc_store.h"
#include "read/read_context.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend::test {

/// Bytes from hexadecimal digits; blanks are for the reader.
inline Bytes hex(std::string_view digits) {
  Bytes bytes;
  std::string pair;
  for (const char digit : digits) {
    if (digit == ' ') {
      continue;
    }
    pair += digit;
    if (pair.size() == 2) {
      bytes.push_back(static_cast<std::uint8_t>(std::stoi(pair, nullptr, 16)));
      pair.clear();
    }
  }
  return bytes;
}

/// A text and its NUL.
inline Bytes ascii(std::string_view text) { return joined({bytes_of(text), {0}}); }

/// What `action` prints on standard error.
template <typename Action>
std::string errors_of(Action action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

/// A file in memory. `bytes` outlives it and is not empty.
inline MFileHandle memory_file(Bytes& bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  return MFileHandle(mfopen_memfile(bytes.data(), size, size));
}

class ContextTest : public testing::Test {
 protected:
  ContextTest()
      : image_(std::make_unique<ImageFile>()),
        store_(std::make_unique<IptcStore>()),
        context_{.image = *image_, .iptc = *store_, .hooks = hooks_} {
    library_settings = {};
    copy_text(library_settings.local_charset, "UTF-8");
    reset_iptc_store(*store_);
  }
  ~ContextTest() override { library_settings = {}; }

  /// "nickname type [text] position", one field of the table a line.
  [[nodiscard]] std::string listed() const {
    std::string lines;
    for (const FieldEntry& entry : image_->table()) {
      lines += std::string(field_table_defs[entry.def].nickname) + " " +
               std::to_string(entry.type) + " [" + entry.text.data() + "] " +
               std::to_string(entry.value_pos) + "\n";
    }
    return lines;
  }

  MetadataHooks hooks_;
  std::unique_ptr<ImageFile> image_;
  std::unique_ptr<IptcStore> store_;
  ReadContext context_;
};

}  // namespace tagmend::test
