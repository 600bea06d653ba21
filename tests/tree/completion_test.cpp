// The completions name every option, and answer in the shells themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/options.h"
#include "common/temporary_directory.h"
#include "tree/shell_session.h"

namespace tagmend::test {
namespace {

const std::string bash_completion = TAGMEND_COMPLETIONS "/bash/tagmend";
const std::string zsh_directory = TAGMEND_COMPLETIONS "/zsh";
const std::string fish_completion = TAGMEND_COMPLETIONS "/fish/tagmend.fish";

std::string content(const std::string& name) {
  std::ifstream file(name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

bool is_installed(const std::string& shell) {
  return std::system(("command -v " + shell + " >/dev/null 2>&1").c_str()) == 0;
}

/// For the completion of file names.
const Files folder_files = {{"photo.jpg", {}}, {"credits.txt", {}}};

TEST(Completion, NamesEveryOption) {
  const std::string bash = content(bash_completion);
  const std::string zsh = content(zsh_directory + "/_tagmend");
  const std::string fish = content(fish_completion);
  const std::string bash_options = bash.substr(bash.find("_tagmend_options='")).substr(17, 80);
  for (const OptionRow& row : option_rows) {
    const std::string letter(1, row.letter);
    EXPECT_NE(bash_options.find("-" + letter), std::string::npos) << letter;
    EXPECT_NE(zsh.find("\n'-" + letter + "["), std::string::npos) << letter;
    EXPECT_NE(fish.find("\ncomplete -c tagmend -s " + letter + " -d "), std::string::npos)
        << letter;
  }
}

struct Typed {
  std::string text;  ///< behind "tagmend "; TAB where the user presses it
  std::string arguments;
};

/// What holds in bash and zsh alike.
const std::vector<Typed> common_lines = {
    {"-a exp-p\t", "<-a><exp-prog=>"},
    {"-a orient=upper-l\t", "<-a><orient=upper-left>"},
    {"-a orient=up\t", "<-a><orient=upper->"},  // left or right
    {"-a ORIENT=upper-l\t", "<-a><ORIENT=upper-left>"},
    {"-a exp-time=1/125,orie\t", "<-a><exp-time=1/125,orient=>"},
    {"-a exp-time=1/125,orient=lower-r\t", "<-a><exp-time=1/125,orient=lower-right>"},
    {"-a ip-image-or\t", "<-a><ip-image-orient=>"},
    {"-a ip-image-orient=por\t", "<-a><ip-image-orient=portrait>"},
    {"-a date-taken=2005:05:01,res-unit=in\t", "<-a><date-taken=2005:05:01,res-unit=inch>"},
    {"-a fu-white-bal=3\t", "<-a><fu-white-bal=3>"},  // no such value
    {"-a f-number=5\t", "<-a><f-number=5>"},          // a field without named values
    {"-a artist=J,f-number=5\t", "<-a><artist=J,f-number=5>"},
    {"-a maker-no\t", "<-a><maker-no>"},    // cannot be set,
    {"-r maker-no\t", "<-r><maker-note>"},  // but removed
    {"-r artist,copyr\t", "<-r><artist,copyright>"},
    {"-bia exp-p\t", "<-bia><exp-prog=>"},
    {"-b -r exp-prog -a exp-p\t", "<-b><-r><exp-prog><-a><exp-prog=>"},
    {"-p lo\t", "<-p><local=>"},
    {"-p local=UT\t", "<-p><local=UTF-8>"},
    {"-a @cred\t", "<-a><@credits.txt>"},
    {"-b pho\t", "<-b><photo.jpg>"},
    {"-a artist=x pho\t", "<-a><artist=x><photo.jpg>"},
    {"-b photo.jpg pho\t", "<-b><photo.jpg><photo.jpg>"},
};

void check_lines(ShellSession& shell, const std::vector<Typed>& lines) {
  for (const Typed& line : lines) {
    EXPECT_EQ(shell.arguments_of(line.text), line.arguments) << line.text;
  }
}

TEST(Completion, AnswersInBash) {
  if (!is_installed("bash")) {
    GTEST_SKIP() << "bash is not installed";
  }
  const TemporaryDirectory folder(folder_files);
  ShellSession shell({"bash", "--norc", "--noprofile", "-i"}, folder.path(""),
                     {"bind 'set bell-style none'", "source '" + bash_completion + "'"});
  if (!shell.has_terminal()) {
    GTEST_SKIP() << "there is no terminal to be had";
  }
  check_lines(shell, common_lines);
  check_lines(
      shell,
      {
          {"-aexp-p\t", "<-aexp-prog=>"},
          {"-e\t \ti", "<-e><i>"},
          {"-a 'artist=\"Doe, J.\",orient=upper-l\t", "<-a><artist=\"Doe, J.\",orient=upper-left>"},
          {"-a 'artist=\"Doe, orie\t\"'", "<-a><artist=\"Doe, orie\">"},
          {"-a artist='J. Doe',orient=upper-l\t", "<-a><artist=J. Doe,orient=upper-left>"},
      });
}

TEST(Completion, AnswersInZsh) {
  if (!is_installed("zsh")) {
    GTEST_SKIP() << "zsh is not installed";
  }
  const TemporaryDirectory folder(folder_files);
  ShellSession shell({"zsh", "-f", "-i"}, folder.path(""),
                     {"fpath=('" + zsh_directory + "' $fpath)", "autoload -Uz compinit",
                      "compinit -u -D", "setopt no_beep no_auto_remove_slash"});
  if (!shell.has_terminal()) {
    GTEST_SKIP() << "there is no terminal to be had";
  }
  check_lines(shell, common_lines);
}

/// fish completes without a terminal; the candidates, one a line, without their descriptions.
std::vector<std::string> fish_candidates(const std::string& line) {
  const std::string command = "fish --no-config -c 'source \"" + fish_completion +
                              "\"; complete -C \"tagmend " + line + "\"' 2>&1";
  FILE* const pipe = ::popen(command.c_str(), "r");
  std::vector<std::string> candidates;
  char text[512];
  while (std::fgets(text, sizeof text, pipe) != nullptr) {
    const std::string candidate(text);
    candidates.push_back(candidate.substr(0, candidate.find_first_of("\t\n")));
  }
  ::pclose(pipe);
  std::ranges::sort(candidates);
  return candidates;
}

TEST(Completion, AnswersInFish) {
  if (!is_installed("fish")) {
    GTEST_SKIP() << "fish is not installed";
  }
  using Words = std::vector<std::string>;
  const struct {
    std::string line;
    Words candidates;
  } lines[] = {
      {"-a exp-p", {"exp-prog="}},
      {"-a orient=up", {"orient=upper-left", "orient=upper-right"}},
      {"-a ORIENT=upper-l", {"ORIENT=upper-left"}},
      {"-a exp-time=1/125,orie", {"exp-time=1/125,orient="}},
      {"-a exp-time=1/125,orient=lower-r", {"exp-time=1/125,orient=lower-right"}},
      {"-a maker-no", {}},
      {"-r maker-no", {"maker-note"}},
      {"-r artist,copyr", {"artist,copyright"}},
      {"-e ", {"a", "e", "f", "i"}},
      {"-p local=utf-8,ip", {"local=utf-8,iptc="}},
      {"-p local=UT", {"local=UTF-8"}},
  };
  for (const auto& [line, candidates] : lines) {
    EXPECT_EQ(fish_candidates(line), candidates) << line;
  }
}

}  // namespace
}  // namespace tagmend::test
