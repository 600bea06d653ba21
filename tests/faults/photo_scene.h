// Two photographs that one run edits, what each of them is before and after, and what must hold of
// them whatever happens to the run.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "common/bytes.h"
#include "common/run_tagmend.h"

namespace tagmend::test {

struct Photo {
  std::string path;  ///< below the sandbox
  Bytes before;
  Bytes after;

  [[nodiscard]] std::string name() const { return path.substr(path.rfind('/') + 1); }
};

struct Scene {
  std::string title;  ///< letters and digits
  Words options;
  Words operands;
  std::vector<Photo> photos;
  Words environment = {};            ///< NAME=value
  bool has_large_attribute = false;  ///< an extended attribute that fits no small buffer
  bool without_links = false;        ///< as on a file system that has no hard links

  [[nodiscard]] bool keeps_backup() const { return options.at(0) != "-b"; }
  /// Whether the photographs are met in a walk, whose messages name directories too.
  [[nodiscard]] bool is_walk() const { return operands.at(0) == "."; }
  [[nodiscard]] Words arguments() const;
};

/// A JPEG file with this artist, as the writer lays it out.
Bytes photo_by(const std::string& artist);

/// For the names of test cases.
inline void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.title; }

/// Whether TAGMEND_FAULTS=all asks for the scenes that take long or show known gaps.
bool all_scenes_wanted();

/// JPEG and TIFF files, EXIF and IPTC edits, with and without -b; files and a directory as
/// operands.
const std::vector<Scene>& scenes();

/// A fresh directory, in memory where there is such a file system, with the photographs in it.
struct SceneSandbox {
  explicit SceneSandbox(const Scene& scene);
  Sandbox directory;
};

/// Makes the sandboxes of this process stand in memory where there is such a file system.
void use_memory_file_system();

/// How the run of a scene ended.
struct Disturbance {
  std::string text;           ///< what was done, for the messages of failed checks
  bool ended_early = false;   ///< by a signal: photographs not yet reached stay as they were
  std::size_t temps = 0;      ///< files that it may leave behind: the original or the new file
  bool is_permanent = false;  ///< the photographs behind the first that failed may fail too
  bool is_silent = false;     ///< the messages themselves could not be printed
  bool must_succeed = false;  ///< what any program has to live with
  std::size_t in_work = 0;    ///< the photograph whose edit was disturbed; past the last: none
};

/// Every name leads to its old or its new file, no original is lost, no temporary file is left, the
/// messages name what failed, and the status is that of the run.
void check_scene(const Scene& scene, const SceneSandbox& sandbox, const Outcome& outcome,
                 const Disturbance& disturbance);

}  // namespace tagmend::test
