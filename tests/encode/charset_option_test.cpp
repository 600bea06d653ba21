#include "encode/charset_option.h"

#include <gtest/gtest.h>

#include <string>

#include "support/charset.h"
#include "support/settings.h"

namespace tagmend {
namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

TEST(CharsetOption, Arguments) {
  const struct {
    const char* argument;
    int result;
    const char* local;
    const char* exif;
    const char* iptc;
    const char* messages;
  } cases[] = {
      {"", 0, "ISO-8859-1", "", "", ""},
      {"local=utf-8,iptc=iso-8859-1", 0, "UTF-8", "", "ISO-8859-1", ""},
      {"Exif=\"utf-8\"", 0, "ISO-8859-1", "UTF-8", "", ""},
      {"LOCAL=UTF-8,LOCAL=ASCII", 0, "UTF-8", "", "",
       "Warning: Attempt to set LOCAL character set mutlple times on -p option, only first value "
       "used.\n"},
      {"IPTC=UTF-8,IPTC=NOSUCHSET", 0, "ISO-8859-1", "", "UTF-8",
       "Warning: Attempt to set IPTC character set mutlple times on -p option, only first value "
       "used.\n"},
      {"exif=nosuchset,exif=utf-8", 1, "ISO-8859-1", "UTF-8", "",
       "Error: Unrecognised EXIF Character Set name 'NOSUCHSET' on -p option.\n"},
      {"foo=UTF-8,local=utf-8", 1, "UTF-8", "", "",
       "Error: Invalid character set type 'FOO' on -p option.\n"},
      {"local", 0, "ISO-8859-1", "", "",
       "Unexpected end of list where value expected. Field 'local' ignored\n"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.argument);
    cs_set_name(library_settings.local_charset, "ISO-8859-1");
    cs_set_name(library_settings.exif_charset, "");
    cs_set_name(library_settings.iptc_charset, "");
    CaptureStderr();
    EXPECT_EQ(cs_parse_option(row.argument), row.result);
    EXPECT_EQ(GetCapturedStderr(), row.messages);
    EXPECT_STREQ(library_settings.local_charset.data(), row.local);
    EXPECT_STREQ(library_settings.exif_charset.data(), row.exif);
    EXPECT_STREQ(library_settings.iptc_charset.data(), row.iptc);
  }
}

TEST(CharsetOption, ResultIsTheSameWhenMessagesAreSuppressed) {
  library_settings.errors_suppressed = library_settings.warnings_suppressed = true;
  CaptureStderr();
  EXPECT_EQ(cs_parse_option("foo=1,local=utf-8,local=utf-8"), 1);
  EXPECT_EQ(GetCapturedStderr(), "");
  library_settings.errors_suppressed = library_settings.warnings_suppressed = false;
}

}  // namespace
}  // namespace tagmend
