#include "support/charset.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <span>
#include <tuple>

#include "common/bytes.h"
#include "common/printed_errors.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class Charset : public testing::Test {
 protected:
  Charset() {
    for (const char* name : {"ORVALE_UNICODE_COMMENT", "ORVALE_CS_LOCAL", "ORVALE_CS_EXIF",
                             "ORVALE_CS_IPTC", "LC_ALL", "LANG", "LC_CTYPE"}) {
      unsetenv(name);
    }
    cs_init();
  }
  ~Charset() override { library_settings = LibrarySettings{}; }

  static void use(std::string_view local, std::string_view exif, std::string_view iptc) {
    cs_set_name(library_settings.local_charset, local);
    cs_set_name(library_settings.exif_charset, exif);
    cs_set_name(library_settings.iptc_charset, iptc);
  }
};

/// What a conversion did with an output of a given size, each byte of which was '#': the output,
/// the result and the messages.
using Converted = std::tuple<std::string, std::size_t, std::string>;

Converted to_local(std::size_t (*conversion)(ByteSpan, std::span<char>), std::string_view input,
                   std::size_t size) {
  const Bytes bytes = bytes_of(input);
  std::string output(size, '#');
  std::size_t result = 0;
  const std::string errors = errors_of([&] { result = conversion(bytes, output); });
  return {output, result, errors};
}

Converted from_local(std::size_t (*conversion)(std::string_view, std::span<std::uint8_t>),
                     std::string_view input, std::size_t size) {
  Bytes output(size, '#');
  std::size_t result = 0;
  const std::string errors = errors_of([&] { result = conversion(input, output); });
  return {std::string(output.begin(), output.end()), result, errors};
}

TEST_F(Charset, DefaultMeansTheCodeSetOfTheUsersLocale) {
  setenv("ORVALE_CS_LOCAL", "dEfAuLt", 1);
  const struct {
    const char* locale;
    const char* code_set;
  } cases[] = {{"C", "ANSI_X3.4-1968"}, {"C.UTF-8", "UTF-8"}, {"no_SUCH", "ANSI_X3.4-1968"}};
  for (const auto& row : cases) {
    setenv("LC_ALL", row.locale, 1);
    cs_init();
    EXPECT_STREQ(library_settings.local_charset.data(), row.code_set) << row.locale;
    EXPECT_FALSE(std::isalpha(0xE9)) << "letters stay those of the C locale";
  }
}

TEST_F(Charset, WithoutANameBytesAreCopied) {
  constexpr auto ten = "\x00\xFFtest56789"sv;
  static_assert(ten.size() == 11);
  EXPECT_EQ(to_local(cs_iptc_to_local, "0123456789", 5), (Converted{"0123\0"s, 5, ""}));
  EXPECT_EQ(to_local(cs_iptc_to_local, "01", 5), (Converted{"01\0##"s, 3, ""}));
  EXPECT_EQ(to_local(cs_iptc_to_local, "01", 0), (Converted{"", 0, ""}));
  EXPECT_EQ(to_local(cs_exif_to_local, ten, 4), (Converted{"\x00\xFFte"s, 11, ""}));
  EXPECT_EQ(to_local(cs_exif_to_local, "01", 4), (Converted{"01##", 2, ""}));
  EXPECT_EQ(from_local(cs_local_to_exif, "0123456789", 5), (Converted{"01234", 10, ""}));
  EXPECT_EQ(from_local(cs_local_to_iptc, "01", 4), (Converted{"01##", 2, ""}));
}

TEST_F(Charset, ConvertsBetweenTheSets) {
  use("utf-8", "iso-8859-1", "iso-2022-jp");
  EXPECT_EQ(from_local(cs_local_to_exif, "caf\u00E9", 8), (Converted{"caf\xE9####", 4, ""}));
  EXPECT_EQ(to_local(cs_exif_to_local, "caf\xE9", 6), (Converted{"caf\u00E9\0"s, 6, ""}));
  EXPECT_EQ(from_local(cs_to_utf16, "\u00E9\U0001F600", 8),
            (Converted{"\xE9\x00\x3D\xD8\x00\xDE##"s, 6, ""}));
  EXPECT_EQ(to_local(cs_from_utf16, "a\0\xE9\0"sv, 9), (Converted{"a\u00E9\0#####"s, 4, ""}));
  EXPECT_EQ(to_local(cs_from_utf16, "", 3), (Converted{"\0##"s, 1, ""}));
  // A set with shift states ends in its first state (RFC 1468).
  EXPECT_EQ(from_local(cs_local_to_iptc, "\u3042", 10), (Converted{"\x1B$B$\"\x1B(B##", 8, ""}));
  EXPECT_EQ(to_local(cs_iptc_to_local, "\x1B$B$\"\x1B(B", 4), (Converted{"\u3042\0"s, 4, ""}));
}

TEST_F(Charset, AFailedConversionKeepsWhatItHas) {
  use("utf-8", "iso-8859-1", "us-ascii");
  constexpr char invalid[] = "Invalid or incomplete multibyte or wide character\n";
  constexpr char incomplete[] = "Invalid argument\n";
  constexpr char full[] = "Argument list too long\n";
  const std::string utf16 = "Warning: Error converting character string: ";
  const std::string exif = "Warning: Error converting EXIF character string: ";
  const std::string iptc = "Warning: Error converting IPTC character string: ";
  EXPECT_EQ(from_local(cs_local_to_exif, "a\u3042", 3), (Converted{"a##", 1, exif + invalid}));
  EXPECT_EQ(to_local(cs_iptc_to_local, "a\xE9", 4), (Converted{"a\0##"s, 2, iptc + invalid}));
  EXPECT_EQ(to_local(cs_from_utf16, "a\0b"sv, 4), (Converted{"a\0##"s, 2, utf16 + incomplete}));
  EXPECT_EQ(from_local(cs_to_utf16, "abc", 5), (Converted{"a\0b\0#"s, 4, utf16 + full}));
  EXPECT_EQ(to_local(cs_exif_to_local, "\xE9\xE9", 4), (Converted{"\u00E9\0#"s, 3, exif + full}))
      << "the last byte is the terminator's";
  EXPECT_EQ(to_local(cs_from_utf16, "a\0"sv, 1), (Converted{"\0"s, 1, utf16 + full}));
  EXPECT_EQ(from_local(cs_to_utf16, "a", 0), (Converted{"", 0, utf16 + full}));
}

TEST_F(Charset, AnUnknownSetConvertsNothing) {
  use("nosuchset", "nosuchset", "nosuchset");
  constexpr char message[] = "iconv_open error: Invalid argument\n";
  EXPECT_EQ(to_local(cs_from_utf16, "a\0"sv, 3), (Converted{"\0##"s, 1, message}));
  EXPECT_EQ(from_local(cs_local_to_iptc, "a", 3), (Converted{"###", 0, message}));
  library_settings.warnings_suppressed = true;
  EXPECT_EQ(from_local(cs_to_utf16, "a", 3), (Converted{"###", 0, ""}));
}

}  // namespace
}  // namespace tagmend::test
