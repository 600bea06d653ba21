// The photograph is never at risk: whatever fails, its name leads to the whole old or the whole new
// file, and the original's bytes are never lost.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

Bytes before() { return source_photo(false, camera()); }

Bytes after() { return written_photo(false, with_artist(camera(), "x")); }

std::string temporary_name(pid_t process, int number) {
  char name[64];
  std::snprintf(name, sizeof name, "orvale_%lx%d", static_cast<unsigned long>(process), number);
  return name;
}

const Words add_artist = {"-b", "-a", "artist=x", "photo.jpg"};

TEST(Safety, DirectoryThatCannotBeWritten) {
  const Sandbox sandbox({{"photo.jpg", before()}});
  ::chmod(sandbox.path("").c_str(), 0555);
  const Outcome outcome = run(sandbox, add_artist, {.as_nobody = true});
  ::chmod(sandbox.path("").c_str(), 0755);
  if (outcome.status == 127) {
    GTEST_SKIP() << "other users cannot reach the program";
  }
  const std::string name = temporary_name(outcome.pid, 0);
  expect_outcome(outcome, 0, "",
                 "Error: Can't open file " + name + ": Permission denied\n" +
                     "Error: Can't create destination file " + name + ": Can't open file\n" +
                     "Error: File photo.jpg: Can't open file\n");
  expect_files(sandbox, {{"photo.jpg", before()}});
}

TEST(Safety, TemporaryNameThatIsTaken) {
  const Sandbox sandbox({{"photo.jpg", before()}});
  const auto take_name = [] {
    FILE* const file = std::fopen(temporary_name(::getpid(), 0).c_str(), "wb");
    std::fputs("mine", file);
    std::fclose(file);
  };
  const Outcome outcome = run(sandbox, add_artist, {.before_exec = take_name});
  expect_outcome(outcome, 0, "", "");
  expect_files(sandbox,
               {{"photo.jpg", after()}, {temporary_name(outcome.pid, 0), bytes_of("mine")}});
}

TEST(Safety, WhatCouldNotBeReadStaysInTheBackup) {
  Chain odd = camera();
  odd[0].entries.push_back({0xC123, 16, {}, {}});  // of no type that there is
  // Data of an IFD that lies past the end of the file.
  const Bytes cut_pointer =
      scattered_tiff(true, {ifd_of({text(0x010F, "Acme"), longs(0x8825, {60000})})});
  const Chain without_gps = {ifd_of({text(0x010F, "Acme"), text(0x013B, "x")})};
  // An index of further pictures counts from its own place, and Exif comes in front of it.
  const Bytes index = segment(0xE2, joined({bytes_of(std::string_view("MPF\0", 4)), noise(80, 3)}));
  const Bytes exif = source_exif(true, camera());
  const Bytes new_exif = written_exif(true, with_artist(camera(), "x"));
  // More segments than are looked at, and the metadata behind them.
  const Bytes many_segments = joined(std::vector(100'000, comment("")));
  struct {
    Bytes source;
    Bytes expected;
    const char* err;
  } const cases[] = {
      {jpeg({source_exif(true, odd), picture()}),
       jpeg({written_exif(true, with_artist(camera(), "x")), picture()}), ""},
      {jpeg({app1_exif(cut_pointer), picture()}),
       jpeg({written_exif(true, without_gps), picture()}), "Can't read context data: Success\n"},
      {jpeg({app0_jfif(), index, exif, picture()}), jpeg({app0_jfif(), new_exif, index, picture()}),
       ""},
      {jpeg({many_segments, exif, picture()}),
       jpeg({written_exif(true, with_artist(minimal(), "x")), many_segments, picture()}), ""},
  };
  for (const auto& wanted : cases) {
    for (const char* const options : {"-b", "-bq"}) {
      check_edit({.arguments = {options, "-a", "artist=x"},
                  .source = wanted.source,
                  .expected = wanted.expected,
                  .err = wanted.err,
                  .kept = true});
    }
  }
  check_edit({{"-b", "-a", "artist=x"},
              jpeg({app0_jfif(), exif, index, picture()}),
              jpeg({app0_jfif(), new_exif, index, picture()})});
}

TEST(Safety, TheNewFileTakesOverWhatTheOldOneWas) {
  const Sandbox sandbox({{"photo.jpg", before()}});
  const std::string path = sandbox.path("photo.jpg");
  ASSERT_EQ(::link(path.c_str(), sandbox.path("other-name.jpg").c_str()), 0);
  ::chmod(path.c_str(), 0604);
  const bool privileged = ::geteuid() == 0 && ::chown(path.c_str(), 1234, 2345) == 0;
  const bool attributes = ::setxattr(path.c_str(), "user.rating", "5", 1, 0) == 0;
  struct stat old_status = {};
  ::stat(path.c_str(), &old_status);
  expect_outcome(run(sandbox, {"-a", "artist=x", "photo.jpg"}), 0, "", "");
  struct stat status = {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode, old_status.st_mode);
  if (privileged) {
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
  }
  char value = 0;
  if (attributes) {
    EXPECT_EQ(::getxattr(path.c_str(), "user.rating", &value, 1), 1);
    EXPECT_EQ(value, '5');
  }
  // The backup is the original file itself; its other names still lead to it.
  ASSERT_EQ(::stat(sandbox.path("photo-be.jpg").c_str(), &status), 0);
  EXPECT_EQ(status.st_ino, old_status.st_ino);
  expect_files(sandbox,
               {{"photo.jpg", after()}, {"photo-be.jpg", before()}, {"other-name.jpg", before()}});
}

TEST(Safety, NamesThatAreTooLongEndTheRunFirst) {
  const std::string name = std::string(94, 'n') + ".jpg";
  const std::string bare(98, 'b');
  const Files files = {{name, before()}, {bare, before()}};
  const Sandbox sandbox(files);
  const Outcome dotted = run(sandbox, {"-b", "-a", "artist=x", name});
  EXPECT_EQ(dotted.status, 1);
  EXPECT_EQ(dotted.out.rfind("ASSERT failed at 4883 in ", 0), 0U) << dotted.out;
  const Outcome undotted = run(sandbox, {"-b", "-a", "artist=x", bare});
  EXPECT_EQ(undotted.status, 1);
  EXPECT_EQ(undotted.out.rfind("ASSERT failed at 4897 in ", 0), 0U) << undotted.out;
  EXPECT_EQ(dotted.err + undotted.err, "");
  expect_files(sandbox, files);
}

TEST(Safety, BackupsAreNumberedAndNeverOverwritten) {
  const Bytes before = jpeg({source_exif(true, camera()), picture()});
  const Bytes after = jpeg({written_exif(true, with_artist(camera(), "x")), picture()});
  const Bytes other = bytes_of("somebody's file");
  struct {
    const char* name;
    const char* backup;
    const char* second;
  } const cases[] = {
      {"photo.jpg", "photo-be.jpg", "photo-be(1).jpg"},
      {"a.b.jpeg", "a.b-be.jpeg", "a.b-be(1).jpeg"},
      {"archive", "archive-be", "archive-be(1)"},
      {".hidden", "-be.hidden", "-be(1).hidden"},
      {"dot.", "dot-be.", "dot-be(1)."},
      {"in/a folder/photo.jpg", "in/a folder/photo-be.jpg", "in/a folder/photo-be(1).jpg"},
  };
  for (const auto& names : cases) {
    SCOPED_TRACE(names.name);
    const Sandbox sandbox({{names.name, before}});
    // An operand given twice is edited twice.
    expect_outcome(run(sandbox, {"-a", "artist=x", "--", names.name, names.name}), 0, "", "");
    expect_files(sandbox, {{names.name, after}, {names.backup, before}, {names.second, after}});
  }

  Files files = {{"photo.jpg", before}, {"photo-be.jpg", other}};
  for (int i = 1; i < 99; ++i) {
    files["photo-be(" + std::to_string(i) + ").jpg"] = other;
  }
  const Sandbox sandbox(files);
  files["photo-be(99).jpg"] = before;
  files["photo.jpg"] = after;
  expect_outcome(run(sandbox, {"-a", "artist=x", "photo.jpg"}), 0, "", "");
  expect_files(sandbox, files);
  expect_outcome(run(sandbox, {"-a", "artist=y", "photo.jpg"}), 0, "",
                 "Error: Can't rename 'photo.jpg' to 'photo-be.jpg': File exists\n"
                 "Error: File photo.jpg: File rename failed\n");
  expect_files(sandbox, files);
}

}  // namespace
}  // namespace tagmend::test
