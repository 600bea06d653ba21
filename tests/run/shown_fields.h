// The fields that the program shows for a file, one line each.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "common/maker_cameras.h"
#include "common/run_tagmend.h"

namespace tagmend::test {

inline Texts lines_of(const std::string& text) {
  Texts lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

/// The lines that the program shows for a file.
inline Texts shown(const Bytes& file, const std::string& name) {
  const Sandbox sandbox({{name, file}});
  RunSettings settings;
  settings.program = TAGDUMP_PROGRAM;
  const Outcome outcome = sandbox.run({name}, settings);
  expect_outcome(outcome, 0, outcome.out, "");
  return lines_of(outcome.out);
}

/// The lines of a note's fields: the elements of an array, then the array.
inline void append_lines(Texts& lines, const std::vector<NoteField>& fields) {
  for (const NoteField& field : fields) {
    lines.insert(lines.end(), field.elements.begin(), field.elements.end());
    lines.push_back(std::string(field.def->nickname) + "=" + field.shown);
  }
}

}  // namespace tagmend::test
