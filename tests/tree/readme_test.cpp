// The console blocks of the README show what happens: their commands, which follow "$ ", are run in
// a directory that holds a copy of the bundled photograph, and print what stands below them.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Block {
  int line = 0;            ///< of the README, where the block begins
  std::string transcript;  ///< commands and what they print
};

void PrintTo(const Block& block, std::ostream* out) { *out << "README.md:" << block.line; }

std::vector<Block> console_blocks() {
  std::ifstream readme(TAGMEND_README);
  std::vector<Block> blocks;
  bool inside = false;
  int number = 0;
  for (std::string line; std::getline(readme, line);) {
    ++number;
    if (inside && line == "```") {
      inside = false;
    } else if (inside) {
      blocks.back().transcript += line + "\n";
    } else if (line == "```console") {
      inside = true;
      blocks.push_back({.line = number, .transcript = {}});
    }
  }
  return blocks;
}

/// The text as one word of the shell.
std::string shell_word(std::string_view text) {
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + "'";
}

/// A script that prints the commands of a block beside running them.
std::string script_of(const Block& block) {
  std::istringstream lines(block.transcript);
  std::string script = "exec 2>&1\n";
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("$ ")) continue;
    script += "printf '%s\\n' " + shell_word(line) + "\n" + line.substr(2) + "\n";
  }
  return script;
}

/// A directory with a copy of the photograph.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (fs::temp_directory_path() / "readme-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
    fs::copy_file(TAGMEND_PHOTOGRAPH, path_ + "/harbour.jpg");
  }
  ~Scratch() { fs::remove_all(path_); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  [[nodiscard]] std::string run(const std::string& script) const {
    std::ostringstream command;
    command << "cd " << shell_word(path_)
            << " && env LC_ALL=C TZ=UTC PATH=" << shell_word(TAGMEND_BINARIES)
            << ":/usr/bin:/bin sh -c " << shell_word(script);
    FILE* const pipe = ::popen(command.str().c_str(), "r");
    if (pipe == nullptr) return "no shell";
    std::string printed;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;) printed += static_cast<char>(c);
    ::pclose(pipe);
    return printed;
  }

 private:
  std::string path_;
};

TEST(Readme, ShowsTheRecipes) { EXPECT_GE(console_blocks().size(), 10U); }

TEST(Readme, ShowsWhatIsPrinted) {
  for (const Block& block : console_blocks()) {
    EXPECT_EQ(Scratch().run(script_of(block)), block.transcript) << testing::PrintToString(block);
  }
}

}  // namespace
