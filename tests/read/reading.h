// Reads test images the way the program does, from files on disk, and keeps what the read left and
// printed.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"
#include "iptc/iptc_store.h"
#include "read/read_image_file.h"

namespace tagmend::test {

struct Reading {
  std::unique_ptr<ImageFile> image = std::make_unique<ImageFile>();
  std::unique_ptr<IptcStore> iptc = std::make_unique<IptcStore>();
  MetadataHooks hooks;
  ErrorCode result = ErrorCode::ok;
  std::string errors;  ///< on the standard error stream, the file's name as FILE

  [[nodiscard]] ReadContext context() const {
    return {.image = *image, .iptc = *iptc, .hooks = hooks};
  }
};

inline Reading read_image(const Bytes& bytes, const MetadataHooks& hooks = {}, bool sort = false) {
  const TemporaryFile file(bytes);
  Reading reading;
  reading.hooks = hooks;
  ReadContext context = reading.context();
  reading.errors = errors_of(
      [&] { reading.result = read_image_file(context, "", file.name.c_str(), {}, sort); });
  if (const std::size_t at = reading.errors.find(file.name); at != std::string::npos) {
    reading.errors.replace(at, file.name.size(), "FILE");
  }
  return reading;
}

/// "kind/level/seq tag text" of each field, in the order of the table.
inline std::vector<std::string> fields_of(const Reading& reading) {
  std::vector<std::string> fields;
  for (const FieldEntry& entry : reading.image->table()) {
    char place[64];
    std::snprintf(place, sizeof place, "%u/%u/%x %04x ", static_cast<unsigned>(entry.kind),
                  entry.level, entry.seq, entry.tag);
    fields.push_back(place + std::string(entry.text.view()));
  }
  return fields;
}

using Lines = std::vector<std::string>;

}  // namespace tagmend::test
