// The README holds. Its console blocks are run: their commands, which follow "$ ", in a directory
// that holds a copy of the bundled photograph, print what stands below them. What else it names
// stands in the tree.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "common/temporary_directory.h"

namespace {

namespace fs = std::filesystem;

const fs::path tree = fs::path(TAGMEND_README).parent_path();

std::string content(const fs::path& name) {
  std::ifstream file(name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct Block {
  int line = 0;            ///< of the README, where the block begins
  int recipe = 0;          ///< the number of the recipe that it belongs to; 0: of none
  std::string transcript;  ///< commands and what they print
};

void PrintTo(const Block& block, std::ostream* out) { *out << "README.md:" << block.line; }

std::vector<Block> console_blocks() {
  std::ifstream readme(TAGMEND_README);
  std::vector<Block> blocks;
  bool inside = false;
  int number = 0;
  int recipe = 0;
  for (std::string line; std::getline(readme, line);) {
    ++number;
    if (inside && line == "```") {
      inside = false;
      recipe = 0;
    } else if (inside) {
      blocks.back().transcript += line + "\n";
    } else if (line == "```console") {
      inside = true;
      blocks.push_back({.line = number, .recipe = recipe, .transcript = {}});
    } else if (line.starts_with("**") && line[2] >= '0' && line[2] <= '9') {
      recipe = std::atoi(line.c_str() + 2);
    }
  }
  return blocks;
}

/// The text as one word of the shell.
std::string shell_word(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return word + "'";
}

/// A script that prints the commands of a block beside running them.
std::string script_of(const Block& block) {
  std::istringstream lines(block.transcript);
  std::string script = "exec 2>&1\n";
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("$ ")) {
      // Between command and "$?" nothing may stand, so the echo of a command precedes it in one
      // line.
      script += "status=$?; printf '%s\\n' " + shell_word(line) + "; (exit $status)\n" +
                line.substr(2) + "\n";
    }
  }
  return script;
}

/// What a script prints in a directory with a copy of the photograph. Its whole environment is the
/// path to the programs.
std::string printed_by(const std::string& script) {
  const tagmend::test::TemporaryDirectory scratch;
  fs::copy_file(TAGMEND_PHOTOGRAPH, scratch.path("harbour.jpg"));
  std::ostringstream command;
  command << "cd " << shell_word(scratch.path(""))
          << " && env -i LC_ALL=C TZ=UTC PATH=" << shell_word(TAGMEND_BINARIES ":/usr/bin:/bin")
          << " sh -c " << shell_word(script);
  FILE* const pipe = ::popen(command.str().c_str(), "r");
  if (pipe == nullptr) {
    return "no shell";
  }
  std::string printed;
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;) {
    printed += static_cast<char>(c);
  }
  ::pclose(pipe);
  return printed;
}

TEST(Readme, ShowsTenRecipes) {
  std::vector<int> recipes;
  for (const Block& block : console_blocks()) {
    if (block.recipe != 0) {
      recipes.push_back(block.recipe);
    }
  }
  EXPECT_EQ(recipes, (std::vector{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(Readme, ShowsWhatIsPrinted) {
  for (const Block& block : console_blocks()) {
    EXPECT_EQ(printed_by(script_of(block)), block.transcript) << testing::PrintToString(block);
  }
}

/// Every match of the first group of a pattern.
std::set<std::string> found_in(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

TEST(Readme, NamesWhatIsThere) {
  const std::string readme = content(TAGMEND_README);
  for (const std::string& link : found_in(readme, R"(\]\(([^)#:]+)\))")) {
    EXPECT_TRUE(fs::exists(tree / link)) << link;
  }
  for (const std::string& path : found_in(readme, R"(`((?:examples|fuzz|tests)/[\w./]*)`)")) {
    EXPECT_TRUE(fs::exists(tree / path)) << path;
  }
  const std::string makefile = "\n" + content(tree / "Makefile");
  for (const std::string& target : found_in(readme, R"(\bmake ([a-z][a-z-]+)\b(?=[` ]))")) {
    EXPECT_NE(makefile.find("\n" + target + ":"), std::string::npos) << target;
  }
  for (const auto& folder : fs::directory_iterator(TAGMEND_SOURCES)) {
    if (folder.is_directory()) {
      const std::string name = "\n    src/" + folder.path().filename().string() + " ";
      EXPECT_NE(readme.find(name), std::string::npos) << name;
    }
  }
}

}  // namespace
