#include "support/message.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>

#include "common/printed_errors.h"
#include "support/settings.h"

namespace tagmend::test {
namespace {

class Messages : public testing::Test {
 protected:
  ~Messages() override { library_settings = LibrarySettings{}; }
};

TEST_F(Messages, EachSwitchSilencesItsKind) {
  const auto print = [] {
    print_error("Error: %d\n", 1);
    print_warning("Warning: %d\n", 2);
  };
  EXPECT_EQ(errors_of(print), "Error: 1\nWarning: 2\n");
  library_settings.warnings_suppressed = true;
  EXPECT_EQ(errors_of(print), "Error: 1\n");
  library_settings.errors_suppressed = true;
  EXPECT_EQ(errors_of(print), "");
}

TEST_F(Messages, LeaveErrnoAloneEvenWhenTheyCannotBePrinted) {
  EXPECT_EXIT(
      {
        dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
        print_output("lost");
        errno = EMLINK;
        print_error("Error: too many links\n");
        _exit(errno == EMLINK ? 0 : 1);
      },
      testing::ExitedWithCode(0), "^Error: too many links\n$");
}

// Both streams lead to one file: the file shows them in the program's order.
TEST_F(Messages, KeepTheProgramsOrderAndCleanUpOnce) {
  EXPECT_EXIT(
      {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        set_end_cleanup([] {
          print_output("cleaned\n");
          end_program(3);
        });
        print_output("first\n");
        print_error("second\n");
        print_output("third\n");
        end_program(7);
      },
      testing::ExitedWithCode(3), "^first\nsecond\nthird\ncleaned\n$");
}

}  // namespace
}  // namespace tagmend::test
