// Prints the field reference, or the tables of the completion for one shell, from the program's own
// tables. The build runs it, so that neither can drift from the program.
#include "reference.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tagmend::reference {
namespace {

using Printer = void (*)(const std::vector<Group>&, const std::vector<Option>&);

struct Format {
  const char* name;
  Printer print;
};

constexpr Format formats[] = {
    {"bash", print_bash_tables},
    {"zsh", print_zsh_tables},
    {"fish", print_fish_tables},
    {"markdown", [](const auto& groups, const auto&) { print_markdown(groups); }},
};

int print_format(const char* name) {
  for (const Format& format : formats) {
    if (std::strcmp(format.name, name) == 0) {
      format.print(collect_groups(), collect_options());
      return std::fflush(stdout) == 0 && std::ferror(stdout) == 0 ? 0 : 1;
    }
  }
  fail(std::string("unknown format ") + name);
}

}  // namespace

void fail(const std::string& message) {
  std::fprintf(stderr, "tagmend-reference: %s\n", message.c_str());
  std::exit(1);
}

}  // namespace tagmend::reference

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: tagmend-reference bash|zsh|fish|markdown\n", stderr);
    return 1;
  }
  return tagmend::reference::print_format(argv[1]);
}
