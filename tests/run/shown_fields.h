// The fields that the program shows for a file, one line each.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "common/maker_cameras.h"
#include "common/run_tagmend.h"

namespace tagmend::test {

inline Texts lines_of(const std::string& text) {
  Texts lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// The lines that the program shows for a file.
inline Texts shown(const Bytes& file, const std::string& name) {
  const Sandbox sandbox({{name, file}});
  const Outcome outcome = run(sandbox, {name}, {.program = TAGDUMP_PROGRAM});
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
