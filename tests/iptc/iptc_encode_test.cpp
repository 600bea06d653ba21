#include "iptc/iptc_encode.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/printed_errors.h"
#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

class IptcEncodeTest : public StoreTest {
 protected:
  ErrorCode encode(const char* name, std::string_view text, bool check_only = false) {
    return iptc_encode_field(static_cast<std::uint16_t>(find_dataset(name, 0)), text, *store_,
                             encoded_, check_only, {.image = image_.get()});
  }

  std::string_view encoded_;
};

struct Case {
  const char* name;
  std::string text;
  ErrorCode code;
  std::string bytes;
};

TEST_F(IptcEncodeTest, EveryKindOfValue) {
  const std::vector<Case> cases = {
      {"ip-copyrighted", "n", ErrorCode::ok, "\0\0"s},
      {"ip3-rotation", "270", ErrorCode::ok, "\x03"},
      {"ip3-sample-struct", "o2", ErrorCode::ok, "\x01"},
      {"ip3-scan-dir", "btrl", ErrorCode::ok, "\x07"},
      {"ip3-quant-method", "ld", ErrorCode::ok, "\x01"},
      {"ip3-excursion", "no", ErrorCode::ok, "\0"s},
      {"ip-image-orient", "landscape", ErrorCode::ok, "L"},
      {"ip-action-advised", "OBJECT KILL", ErrorCode::ok, "01"},
      {"ip-audio-type", "rem", ErrorCode::ok, "1Q"},
      {"ip-audio-type", "wrap-stereo", ErrorCode::ok, "2W"},
      {"ip-preview-format", "tiff", ErrorCode::ok, "03"},
      {"ip-preview-format", "Tidningarnas Telegrambyr\xC3\xA0 NITF ", ErrorCode::ok, "27"},
      {"ip-preview-format", "30", ErrorCode::invalid_value, ""},
      {"ip-city", std::string(32, 'x'), ErrorCode::ok, std::string(32, 'x')},
      {"ip-city", std::string(40, 'x'), ErrorCode::value_truncated, std::string(32, 'x')},
      {"ip-version", "2", ErrorCode::ok, "\0\2"s},
      {"ip3-width", "65536", ErrorCode::invalid_number, ""},
      {"ip3-width", "1 2", ErrorCode::too_many_values, ""},
      {"ip3-width", "", ErrorCode::too_few_values, ""},
      {"ip7-obj-size", "65536", ErrorCode::ok, "\0\1\0\0"s},
      {"ip-date", "soon", ErrorCode::date_invalid, ""},
      {"Unknown", "x", ErrorCode::edit_not_permitted, ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name + " = "s + row.text);
    EXPECT_EQ(encode(row.name, row.text), row.code);
    EXPECT_EQ(encoded_, row.bytes);
    const std::size_t used = store_->pool.used;
    EXPECT_EQ(encode(row.name, row.text, true), row.code);
    EXPECT_EQ(store_->pool.used, used) << "a check stores nothing";
  }
}

TEST_F(IptcEncodeTest, TheLimitHoldsForTheTextAndForItsConversion) {
  library_settings.iptc_charset = {"UTF-8"};
  library_settings.local_charset = {"ISO-8859-1"};
  EXPECT_EQ(encode("ip-category", "\xE5"), ErrorCode::ok);
  EXPECT_EQ(encoded_, "\xC3\xA5");
  EXPECT_EQ(encode("ip-category", "ab\xE5"), ErrorCode::value_truncated);
  EXPECT_EQ(encoded_, "ab\xC3");
}

TEST_F(IptcEncodeTest, AFullPoolLeavesTheValueEmpty) {
  store_->pool.used = StringPool::capacity - 5;
  EXPECT_EQ(encode("ip-city", "Rome"), ErrorCode::ok);
  EXPECT_EQ(encoded_, "Rome");
  EXPECT_FALSE(store_->incomplete);
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(encode("ip-city", "Oslo"), ErrorCode::ok); }),
            "Warning: String pool full, some values may be truncated\n");
  EXPECT_EQ(encoded_, "");
  EXPECT_TRUE(store_->incomplete);
}

}  // namespace
}  // namespace tagmend::test
