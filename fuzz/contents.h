// What a photograph holds, as the reader shows it: to compare one before and after an edit.
#pragma once

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "common/tiff_builder.h"
#include "in_process.h"
#include "read/read_image_file.h"

namespace tagmend::test {

/// The result of a read, and a line for each field and dataset, in ascending order.
struct Contents {
  ErrorCode code = ErrorCode::ok;
  bool whole = false;         ///< nothing was met that could not be read
  bool edited_twice = false;  ///< a field that is edited occurs more than once
  std::vector<std::string> lines;
};

/// Whether the session's edits set or remove what has this tag, or this record and dataset.
inline bool is_edited(const Session& session, const FieldEntry& entry) {
  return std::ranges::any_of(session.exif_edits.list(), [&entry](const EditEntry& edit) {
    return field_table_defs[edit.field].tag == entry.tag;
  });
}
inline bool is_edited(const Session& session, const IptcEntry& entry) {
  return std::ranges::any_of(session.iptc_edits.list(),
                             [&entry](const EditEntry& edit) { return edit.field == entry.row; });
}

/// Where image data lies: a rewrite moves it. A thumbnail's length of a type that holds no number
/// becomes one.
inline bool is_place(const FieldEntry& entry) {
  const bool odd_length = entry.tag == 0x0202 && entry.type != kShort && entry.type != kLong;
  return odd_length || entry.tag == 0x0201 || entry.tag == 0x0111 || entry.tag == 0x0144;
}

/// The type that a field has once it has been written anew: a thumbnail's length is a LONG.
inline unsigned written_type(const FieldEntry& entry) {
  return entry.tag == 0x0202 && entry.type == kShort ? kLong : entry.type;
}

/// Reads a file and lists what neither the session's edits nor the new places of image data change.
inline Contents unedited_contents(const Session& session, const Bytes& bytes) {
  Bytes file = bytes;  // what is read lies in memory that may be written
  Contents contents;
  if (file.empty()) {
    return contents;
  }
  ReadContext context = context_of(session);
  contents.code = read_image_file(context, "", "", file, false);
  contents.whole = !session.image.incomplete && !session.iptc.incomplete;
  char place[64];
  const std::span<const FieldEntry> fields = session.image.table();
  for (const FieldEntry& entry : fields) {
    if (is_edited(session, entry)) {
      contents.edited_twice |= std::count_if(fields.begin(), fields.end(), [&](const auto& other) {
                                 return other.kind == entry.kind && other.tag == entry.tag;
                               }) > 1;
      continue;
    }
    if (is_place(entry)) {
      continue;
    }
    std::snprintf(place, sizeof place,
                  "kind %u tag %x type %u: ", static_cast<unsigned>(entry.kind), entry.tag,
                  written_type(entry));
    contents.lines.push_back(place + std::string(entry.text.view()));
  }
  for (const IptcEntry& entry : session.iptc.list()) {
    if (is_edited(session, entry)) {
      continue;
    }
    std::snprintf(place, sizeof place, "resource %u dataset %u:%u: ", entry.resource, entry.record,
                  entry.dataset);
    contents.lines.push_back(place + std::string(entry.text));
  }
  std::sort(contents.lines.begin(), contents.lines.end());
  return contents;
}

/// The first line of `before` that `after` lacks; empty when it has them all.
inline std::string lost_line(const Contents& before, const Contents& after) {
  std::vector<std::string> lost;
  std::set_difference(before.lines.begin(), before.lines.end(), after.lines.begin(),
                      after.lines.end(), std::back_inserter(lost));
  return lost.empty() ? std::string() : lost.front();
}

}  // namespace tagmend::test
