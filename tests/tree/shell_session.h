// An interactive shell on a terminal of its own, to which a test types. In it "tagmend" is a
// function that prints its arguments: they show what a TAB has made of the line.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace tagmend::test {

class ShellSession {
 public:
  /// Starts the shell in a directory. `set_up` is typed first.
  ShellSession(std::vector<std::string> command, const std::string& directory,
               const std::vector<std::string>& set_up) {
    winsize size{};
    size.ws_row = 50;
    size.ws_col = 500;  // so that no line is wrapped
    child_ = ::forkpty(&terminal_, nullptr, nullptr, &size);
    if (child_ == 0) {
      start(command, directory);
    }
    if (!has_terminal()) {
      return;
    }
    for (const std::string& line : set_up) {
      type(line + "\n");
    }
    // In two pieces, so that the echo of this line is not taken for a prompt or an answer.
    type("tagmend() { printf 'arg'; printf 's:'; printf '<%s>' \"$@\"; echo; }\n");
    type("PS1='rea''dy> '; PROMPT=$PS1\n");
    read_until("ready> ");
  }
  ~ShellSession() {
    if (!has_terminal()) {
      return;
    }
    ::close(terminal_);
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  ShellSession(const ShellSession&) = delete;
  ShellSession& operator=(const ShellSession&) = delete;

  /// Whether the system had a terminal to give; without one nothing may be typed.
  [[nodiscard]] bool has_terminal() const { return child_ > 0; }

  /// Types "tagmend", a blank and the text, and ends the line. Returns the program's arguments,
  /// each between "<" and ">".
  std::string arguments_of(const std::string& text) {
    type("tagmend " + text + "\n");
    read_until("args:");
    std::string line = read_until("ready> ");
    return line.substr(0, line.find_first_of("\r\n"));
  }

 private:
  static constexpr int patience_ms = 20'000;

  [[noreturn]] static void start(std::vector<std::string>& command, const std::string& directory) {
    std::vector<char*> words;
    for (std::string& word : command) {
      words.push_back(word.data());
    }
    words.push_back(nullptr);
    ::setenv("TERM", "dumb", 1);
    ::setenv("INPUTRC", "/dev/null", 1);
    ::setenv("HISTFILE", "/dev/null", 1);
    ::setenv("HOME", directory.c_str(), 1);
    ::setenv("LC_ALL", "C", 1);
    if (::chdir(directory.c_str()) == 0) {
      ::execvp(words[0], words.data());
    }
    ::_exit(127);
  }

  void type(const std::string& text) const {
    EXPECT_EQ(::write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  /// What the terminal shows up to this text, which is taken off too.
  std::string read_until(const std::string& text) {
    std::size_t found = 0;
    while ((found = shown_.find(text)) == std::string::npos) {
      pollfd ready{.fd = terminal_, .events = POLLIN, .revents = 0};
      char piece[4096];
      const ssize_t got =
          ::poll(&ready, 1, patience_ms) == 1 ? ::read(terminal_, piece, sizeof piece) : -1;
      if (got <= 0) {
        ADD_FAILURE() << "no '" << text << "' on the terminal, but\n" << shown_;
        return {};
      }
      shown_.append(piece, static_cast<std::size_t>(got));
    }
    std::string before = shown_.substr(0, found);
    shown_.erase(0, found + text.size());
    return before;
  }

  int terminal_ = -1;
  pid_t child_ = -1;
  std::string shown_;
};

}  // namespace tagmend::test
