// A store, and what a test sees of it after a block of image resources was read into it.
#pragma once

#include <string>

#include "common/bytes.h"
#include "common/context_fixture.h"
#include "iptc/iptc_read.h"
#include "iptc/iptc_store.h"

namespace tagmend::test {

class StoreTest : public ContextTest {
 protected:
  StoreTest() { image_->file_type = FileType::jpeg; }

  /// Reads the payload of a segment; positions in the file are positions in `payload`.
  ErrorCode read_segment(const Bytes& payload, std::uint32_t length) {
    Bytes room = joined({payload, {0}});
    const auto size = static_cast<std::uint32_t>(payload.size());
    const MFileHandle file(mfopen_memfile(room.data(), size + 1, size));
    return read_app13(context_, *file, length);
  }
  ErrorCode read_segment(const Bytes& payload) {
    return read_segment(payload, static_cast<std::uint32_t>(payload.size()));
  }

  /// "resource record:dataset nickname [text] position+length name", one entry a line.
  [[nodiscard]] std::string stored() const {
    std::string lines;
    for (const IptcEntry& entry : store_->list()) {
      lines += std::to_string(entry.resource) + " " + std::to_string(entry.record) + ":" +
               std::to_string(entry.dataset) + " " + iptc_datasets[entry.row].nickname + " [" +
               std::string(entry.text) + "] " + std::to_string(entry.file_pos) + "+" +
               std::to_string(entry.length) + " " +
               std::string(entry.resource_name.data(), entry.resource_name_length) + "\n";
    }
    return lines;
  }
};

}  // namespace tagmend::test
