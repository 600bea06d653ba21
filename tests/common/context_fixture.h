// A read's records for tests that call one reader alone, and what they see of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "iptc/iptc_store.h"
#include "read/read_context.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend::test {

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
               std::to_string(entry.type) + " [" + entry.text.room.data() + "] " +
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
