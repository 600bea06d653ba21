#include "support/message.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "support/settings.h"
#include "support/support_test_tools.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

class Messages : public testing::Test {
 protected:
  ~Messages() override { library_settings = LibrarySettings{}; }

  static std::string errors_and_warnings() {
    return test::errors_of([] {
      print_error("Error: %d\n", 1);
      print_warning("Warning: %d\n", 2);
    });
  }
};

TEST_F(Messages, EachSwitchSilencesItsKind) {
  EXPECT_EQ(errors_and_warnings(), "Error: 1\nWarning: 2\n");
  library_settings.warnings_suppressed = true;
  EXPECT_EQ(errors_and_warnings(), "Error: 1\n");
  library_settings.errors_suppressed = true;
  EXPECT_EQ(errors_and_warnings(), "");
}

TEST_F(Messages, TraceNeedsTheVerboseFlagAndIndents) {
  testing::internal::CaptureStdout();
  trace(1, "silent\n");
  library_settings.verbose = true;
  trace(0, "none\n");
  trace(2, "six\n");
  trace(7, "twenty-one\n");
  trace(1000, "no more\n");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "none\n      six\n                     twenty-one\n                     no more\n");
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

TEST_F(Messages, AFailedCheckSpeaksWhateverTheSwitchesSay) {
  check_consistency(true, 1, module_exif);
  library_settings.errors_suppressed = true;
  EXPECT_EXIT(
      {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        check_consistency(false, 5342, module_exif);
      },
      testing::ExitedWithCode(1), "^ASSERT failed at 5342 in exif.cpp\n$");
}

TEST(TextBuffer, StopsWhereItsRoomEnds) {
  std::array<char, 8> room;
  TextBuffer text(room);
  append_format(text, "%d:", 12);
  append(text, "ab");
  EXPECT_EQ(text.text(), "12:ab");
  append_format(text, "%s", "cdef");
  EXPECT_STREQ(room.data(), "12:abcd");
  EXPECT_TRUE(text.full());
  append_format(text, "%d", 9);
  append(text, "x");
  EXPECT_EQ(text.text(), "12:abcd");
}

}  // namespace
}  // namespace tagmend
