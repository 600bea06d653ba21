// Runs the built program in a fresh directory and shows what it left there, so that a test states
// the whole outcome: exit status, both streams, and every byte of every file.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "common/bytes.h"
#include "common/temporary_directory.h"

namespace tagmend::test {

using Words = std::vector<std::string>;

struct RunSettings {
  std::string directory = {};              ///< start directory below the sandbox
  std::string input = {};                  ///< standard input
  Words environment = {};                  ///< NAME=value, beside a minimal environment
  bool merged = false;                     ///< both streams into one file
  bool as_nobody = false;                  ///< without the rights of root
  std::function<void()> before_exec = {};  ///< called in the child
  bool without_prefix = false;             ///< no checker runs the program
  std::string program = TAGMEND_PROGRAM;   ///< another one that is run in the same way
};

struct Outcome {
  int status = -1;  ///< exit status, or minus the signal that ended the program
  std::string out;
  std::string err;
  pid_t pid = 0;
};

/// A directory in which the program is run.
using Sandbox = TemporaryDirectory;

namespace run_details {

inline std::string drained(int descriptor) {
  std::string all;
  ::lseek(descriptor, 0, SEEK_SET);
  char piece[4096];
  for (ssize_t got = 0; (got = ::read(descriptor, piece, sizeof piece)) > 0;) {
    all.append(piece, static_cast<std::size_t>(got));
  }
  ::close(descriptor);
  return all;
}

inline std::vector<char*> pointers(Words& words) {
  std::vector<char*> out;
  for (std::string& word : words) {
    out.push_back(word.data());
  }
  out.push_back(nullptr);
  return out;
}

inline Words environment_for(const RunSettings& settings) {
  Words all = settings.environment;
  const std::string directory = std::filesystem::path(settings.program).parent_path();
  for (const std::string& usual :
       {"PATH=" + directory + ":/usr/bin:/bin", std::string("LC_ALL=C"), std::string("TZ=UTC")}) {
    const std::string name = usual.substr(0, usual.find('=') + 1);
    if (std::ranges::none_of(all, [&](const auto& set) { return set.starts_with(name); })) {
      all.push_back(usual);
    }
  }
  for (const char* const name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE"}) {
    if (const char* const value = std::getenv(name)) {
      all.push_back(std::string(name) + "=" + value);
    }
  }
  return all;
}

/// The file to execute and its arguments. TAGMEND_RUN_PREFIX holds words, divided by blanks, that
/// stand in front of the program: a checker that runs it.
struct Command {
  std::string file;
  Words words;
};

inline Command command_for(const RunSettings& settings, const Words& arguments) {
  Command command{.file = settings.program, .words = {"tagmend"}};
  const char* const prefix = std::getenv("TAGMEND_RUN_PREFIX");
  if (prefix != nullptr && !settings.without_prefix) {
    std::istringstream words(prefix);
    command.words.assign(std::istream_iterator<std::string>(words), {});
    // Without its path, as getopt's messages show it; the checker finds it through PATH.
    command.words.push_back(std::filesystem::path(settings.program).filename());
    command.file = command.words.front();
  }
  command.words.insert(command.words.end(), arguments.begin(), arguments.end());
  return command;
}

}  // namespace run_details

/// A program that runs, and what it reads and prints.
struct Started {
  int in, out, err;
  pid_t pid;
};

inline Started start(const Sandbox& sandbox, const Words& arguments, const RunSettings& settings) {
  run_details::Command command = run_details::command_for(settings, arguments);
  Words environment = run_details::environment_for(settings);
  const std::vector<char*> argument_list = run_details::pointers(command.words);
  const std::vector<char*> environment_list = run_details::pointers(environment);
  const std::string directory = sandbox.path(settings.directory);
  Started started{
      .in = ::memfd_create("in", 0), .out = ::memfd_create("out", 0), .err = 0, .pid = 0};
  started.err = settings.merged ? ::dup(started.out) : ::memfd_create("err", 0);
  EXPECT_EQ(::write(started.in, settings.input.data(), settings.input.size()),
            static_cast<ssize_t>(settings.input.size()));
  ::lseek(started.in, 0, SEEK_SET);
  started.pid = ::fork();
  if (started.pid == 0) {
    ::umask(022);
    ::dup2(started.in, 0);
    ::dup2(started.out, 1);
    ::dup2(started.err, 2);
    if (::chdir(directory.c_str()) != 0) {
      ::_exit(126);
    }
    if (settings.before_exec) {
      settings.before_exec();
    }
    if (settings.as_nobody && ::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
      ::_exit(126);
    }
    ::execvpe(command.file.c_str(), argument_list.data(), environment_list.data());
    ::_exit(127);
  }
  return started;
}

/// The outcome of a program whose end the system described by `status`.
inline Outcome finish(const Started& started, int status) {
  ::close(started.in);
  return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
          .out = run_details::drained(started.out),
          .err = run_details::drained(started.err),
          .pid = started.pid};
}

inline Outcome run(const Sandbox& sandbox, const Words& arguments,
                   const RunSettings& settings = {}) {
  const Started started = start(sandbox, arguments, settings);
  int status = 0;
  ::waitpid(started.pid, &status, 0);
  return finish(started, status);
}

/// Where two byte strings part, with the bytes around, or an empty text when they are equal.
inline std::string difference(const Bytes& expected, const Bytes& actual) {
  if (expected == actual) {
    return {};
  }
  const auto place = std::ranges::mismatch(expected, actual).in1 - expected.begin();
  const auto at = static_cast<std::size_t>(place);
  const auto shown = [at](std::span<const std::uint8_t> bytes) {
    return digits_of(bytes.first(at).last(std::min<std::size_t>(at, 16)), false) + " | " +
           digits_of(bytes.subspan(at, std::min<std::size_t>(bytes.size() - at, 32)), false);
  };
  return "sizes " + std::to_string(expected.size()) + " expected, " +
         std::to_string(actual.size()) + " found; first difference at " + std::to_string(at) +
         "\n  expected " + shown(expected) + "\n  found    " + shown(actual);
}

/// The directory holds exactly these files, byte for byte.
inline void expect_files(const Sandbox& sandbox, const Files& expected) {
  const Files found = sandbox.files();
  for (const auto& [name, content] : expected) {
    const auto place = found.find(name);
    if (place == found.end()) {
      ADD_FAILURE() << name << " is missing";
    } else {
      const std::string parts = difference(content, place->second);
      EXPECT_TRUE(parts.empty()) << name << ": " << parts;
    }
  }
  for (const auto& [name, content] : found) {
    EXPECT_TRUE(expected.contains(name)) << name << " was left behind";
  }
}

inline void expect_outcome(const Outcome& outcome, int status, std::string_view out,
                           std::string_view err) {
  EXPECT_EQ(outcome.status, status);
  EXPECT_EQ(outcome.out, out);
  EXPECT_EQ(outcome.err, err);
}

}  // namespace tagmend::test
