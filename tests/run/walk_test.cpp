// Operands and directory walks: which files are edited, under what names they are known, and where
// the walk ends.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "cli/paths.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"
#include "run/shown_fields.h"

namespace tagmend::test {
namespace {

Bytes photo(const std::string& description = {}) {
  Ifd ifd = ifd_of({text(0x010F, "Acme")});
  if (description.empty()) {
    return jpeg({source_exif(true, {ifd}), picture()});
  }
  set(ifd, text(0x010E, description));
  return jpeg({written_exif(true, {ifd}), picture()});
}

/// Of no type that may be edited, which is how a test sees that the walk met it.
Bytes notes() {
  return bytes_of("Nothing but words, more than fifty bytes of them, one after another.");
}

const std::string not_editable =
    "Error: Can't extract EXIF fields: Editing of this file type not supported";

/// The lines of a stream, sorted: a walk meets files in the order of the system.
Texts sorted_lines(const std::string& text) {
  Texts lines = lines_of(text);
  std::ranges::sort(lines);
  return lines;
}

TEST(Walk, NamesAndDirectoriesAreThoseOfTheOperand) {
  // What [file-name-full] and [file-dir] say of the one file that each operand leads to.
  struct {
    Words operands;
    const char* edited;
    const char* description;
    const char* out = "";
  } const cases[] = {
      {{"a.jpg"}, "a.jpg", "a.jpg|"},
      {{"./a.jpg"}, "a.jpg", "./a.jpg|."},
      {{"one/two/b.jpg"}, "one/two/b.jpg", "one/two/b.jpg|one/two"},
      {{"one//two//b.jpg"}, "one/two/b.jpg", "one//two//b.jpg|one//two/"},
      {{"one/two"}, "one/two/b.jpg", "one/two/b.jpg|one/two", "b.jpg: Edit successful.\n"},
      {{"-i", "one"}, "one/two/b.jpg", "one/two/b.jpg|one/two", "b.jpg: Edit successful.\n"},
      {{"."}, "a.jpg", "./a.jpg|.", "a.jpg: Edit successful.\n"},
      {{"one/.."}, "a.jpg", "one/../a.jpg|one/..", "a.jpg: Edit successful.\n"},
      {{"one"}, nullptr, ""},
  };
  for (const auto& wanted : cases) {
    SCOPED_TRACE(::testing::PrintToString(wanted.operands));
    Files files = {{"a.jpg", photo()}, {"one/two/b.jpg", photo()}};
    const Sandbox sandbox(files);
    Words arguments = {"-b", "-a", "description=[file-name-full]|[file-dir]"};
    arguments.insert(arguments.end(), wanted.operands.begin(), wanted.operands.end());
    expect_outcome(run(sandbox, arguments), 0, wanted.out, "");
    if (wanted.edited != nullptr) {
      files[wanted.edited] = photo(wanted.description);
    }
    expect_files(sandbox, files);
  }
}

TEST(Walk, AFileOfTheRootHasItsDirectory) { EXPECT_EQ(split_path("/photo.jpg").directory, "/"); }

TEST(Walk, EveryImageOfADirectoryOnce) {
  Files files = {{"d/notes.txt", notes()}, {"d/sub/s.jpg", photo()}, {"after.jpg", photo()}};
  Files edited = files;
  edited["after.jpg"] = photo("x");
  edited["after-be.jpg"] = photo();
  Texts successes;
  for (int i = 0; i < 40; ++i) {
    const std::string name = "photo" + std::to_string(i);
    files["d/" + name + ".jpg"] = edited["d/" + name + "-be.jpg"] = photo();
    edited["d/" + name + ".jpg"] = photo("x");
    successes.push_back(name + ".jpg: Edit successful.");
  }
  std::ranges::sort(successes);
  const Sandbox sandbox(files);
  const Outcome flat = run(sandbox, {"-q", "-a", "description=x", "d", "after.jpg"});
  EXPECT_EQ(flat.status, 0);
  EXPECT_EQ(sorted_lines(flat.out), successes);
  EXPECT_EQ(flat.err, not_editable + "\n");
  expect_files(sandbox, edited);

  // With -i also the subdirectory, to which the walk comes back once.
  const Sandbox deep(files);
  const Outcome nested = run(deep, {"-i", "-a", "description=x", "d", "after.jpg"});
  successes.emplace_back("s.jpg: Edit successful.");
  std::ranges::sort(successes);
  EXPECT_EQ(sorted_lines(nested.out), successes);
  edited["d/sub/s.jpg"] = photo("x");
  edited["d/sub/s-be.jpg"] = photo();
  expect_files(deep, edited);
}

TEST(Walk, SymbolicLinksAreFollowedButNotForever) {
  const Sandbox sandbox({{"top/a.jpg", photo()},
                         {"top/sub/b.jpg", photo()},
                         {"top/sub/deeper/", {}},
                         {"else/notes.txt", notes()}});
  // The directory above the operand is not being walked when a link leads there: its "top" is.
  const std::pair<std::string, std::string> links[] = {
      {"top/sub/back", "../.."},
      {"top/sub/deeper/away", sandbox.path("else")},
      {"top/self", "."},
      {"top/loop", "loop"},
      {"top/dangling", "nowhere"}};
  Files expected = {{"top/a.jpg", photo("x")},
                    {"top/a-be.jpg", photo()},
                    {"top/sub/b.jpg", photo("x")},
                    {"top/sub/b-be.jpg", photo()},
                    {"else/notes.txt", notes()}};
  for (const auto& [name, target] : links) {
    ASSERT_EQ(::symlink(target.c_str(), sandbox.path(name).c_str()), 0);
    expected[name] = bytes_of("-> " + target);
  }
  const Outcome outcome = run(sandbox, {"-i", "-q", "-a", "description=x", "top"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(sorted_lines(outcome.out),
            (Texts{"a.jpg: Edit successful.", "b.jpg: Edit successful."}));
  const std::string undetermined = ": can't determine file type: ";
  const std::string too_many = "Too many levels of symbolic links";
  EXPECT_EQ(sorted_lines(outcome.err),
            (Texts{not_editable, not_editable,  // by two ways
                   "Error: Can't open directory self:" + too_many,
                   "Error: Can't open directory top:" + too_many,
                   "Error: file dangling" + undetermined + "No such file or directory",
                   "Error: file loop" + undetermined + too_many}));
  expect_files(sandbox, expected);
}

TEST(Walk, DepthIsNotBoundedByOpenFilesOrPathLength) {
  const Sandbox sandbox(Files{{"top/", {}}});
  int directory = ::open(sandbox.path("top").c_str(), O_PATH | O_DIRECTORY);
  for (int i = 0; i < 1500; ++i) {
    ASSERT_EQ(::mkdirat(directory, "deeper", 0777), 0);
    const int inner = ::openat(directory, "deeper", O_PATH | O_DIRECTORY);
    ::close(directory);
    directory = inner;
  }
  const int file = ::openat(directory, "file", O_CREAT | O_WRONLY, 0666);
  ASSERT_EQ(::write(file, notes().data(), 60), 60);
  ::close(file);
  ::close(directory);
  expect_outcome(run(sandbox, {"-i", "-s", "top"}), 0, "", not_editable + "\n");
}

TEST(Walk, DeepPathsAndLongStartDirectories) {
  std::string deep;
  for (int i = 0; i < 40; ++i) {
    deep += std::string(30, 'd') + std::to_string(i) + "/";
  }
  const Files files = {{deep + "photo.jpg", photo()}};
  const Files edited = {{deep + "photo.jpg", photo("x")}};
  const Sandbox walked(files);
  expect_outcome(run(walked, {"-b", "-i", "-a", "description=x", "."}), 0,
                 "photo.jpg: Edit successful.\n", "");
  expect_files(walked, edited);
  const Sandbox named(files);
  const std::string full_name = deep + "photo.jpg";
  expect_outcome(run(named, {"-b", "-a", "description=[file-name-full]", full_name}), 0, "", "");
  expect_files(named, {{full_name, photo(full_name.substr(0, 255))}});
  // From a start directory of over a thousand characters, into another and back.
  const Sandbox started(files);
  expect_outcome(run(started, {"-bia", "description=x", "/proc/self/missing", "..", "photo.jpg"},
                     {.directory = deep}),
                 0, "photo.jpg: Edit successful.\n",
                 "Error: file /proc/self/missing: can't determine file type: No such file or "
                 "directory\n");
  expect_files(started, edited);
}

TEST(Walk, TheListOfCreatedFilesHoldsAThousandNames) {
  Files files;
  for (int i = 0; i < 501; ++i) {
    files["d/" + std::to_string(i) + ".jpg"] = photo();
  }
  const Sandbox sandbox(files);
  const Outcome outcome = run(sandbox, {"-a", "description=x", "d"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Error: Max number of temp files created (1000) - exiting\n");
  EXPECT_EQ(sorted_lines(outcome.out).size(), 500U);
  const Files found = sandbox.files();
  EXPECT_EQ(found.size(), 1001U);
  const auto count_of = [&found](const Bytes& content) {
    return std::ranges::count(found, content, &Files::value_type::second);
  };
  EXPECT_EQ(count_of(photo("x")), 500);
  EXPECT_EQ(count_of(photo()), 501);
}

}  // namespace
}  // namespace tagmend::test
