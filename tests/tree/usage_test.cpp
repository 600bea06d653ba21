// The option table, the parser and the usage text agree.
#include "cli/usage.h"

#include <gtest/gtest.h>

#include <string>

#include "cli/options.h"

namespace tagmend {
namespace {

TEST(Usage, NamesEveryOptionThatItShouldName) {
  testing::internal::CaptureStdout();
  print_usage();
  const std::string usage = testing::internal::GetCapturedStdout();
  std::string letters;
  for (const OptionRow& row : option_rows) {
    letters += row.letter;
    letters += row.takes_argument ? ":" : "";
    const bool hidden = row.letter == 'd' || row.letter == 'p' || row.letter == 't';
    const std::string line = std::string("\n   -") + row.letter + " ";
    EXPECT_EQ(usage.find(line) != std::string::npos, !hidden) << row.letter;
  }
  EXPECT_EQ(letters, "a:bc:de:hij:p:qr:st:uv");
}

}  // namespace
}  // namespace tagmend
