#include "containers/eps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/context_fixture.h"
#include "common/jpeg_builder.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"

namespace tagmend::test {
namespace {

std::string eps(std::string_view directive, std::string_view count, std::string_view lines) {
  return "%!PS-Adobe-3.0 EPSF-3.0\n%%Title: a\n" + std::string(directive) + std::string(count) +
         "\n" + std::string(lines);
}

class EpsTest : public ContextTest {
 protected:
  EpsTest() { image_->file_type = FileType::eps; }

  ErrorCode read(const std::string& text) {
    reset_iptc_store(*store_);
    Bytes bytes = bytes_of(text);
    ByteCursor cursor = cursor_over(bytes);
    cursor.pos = 9;  // behind the signature
    return read_eps_photoshop(context_, cursor);
  }

  /// "nickname=text" of the store's entries.
  [[nodiscard]] std::string stored() const {
    std::string texts;
    for (const IptcEntry& entry : store_->list()) {
      texts += std::string(iptc_datasets[entry.row].nickname) + "=" + std::string(entry.text) + " ";
    }
    return texts;
  }
};

// 52 bytes: datasets, which are passed over, a URL and a resource of another kind.
const char* const resource_texts = "ip-url=http://a Unknown=Opaque data ";
Bytes resources() {
  return joined({resource(1028, "", dataset(2, 90, "Oslo")),
                 resource(1035, "", bytes_of("http://a")), resource(1000, "", {1, 2})});
}

TEST_F(EpsTest, WalksTheDecodedResources) {
  const Bytes bytes = resources();
  const std::string count = std::to_string(bytes.size());
  const std::string end = "%EndPhotoshop\n";
  for (const char* const line_end : {"\n", "\r"}) {
    const std::string lines = eps_lines(bytes, 8, line_end[0] == '\r', line_end);
    for (const std::string& file :
         {eps("%BeginPhotoshop: ", count, lines + end), eps("%beginPHOTOSHOP:", count, lines + end),
          eps("%BeginPhotoshop:  ", count + " bytes", lines + "%"),
          eps("%BeginPhotoshop: ", count, lines + "junk" + end)}) {
      EXPECT_EQ(read(file), ErrorCode::ok);
      EXPECT_EQ(stored(), resource_texts);
    }
  }
  // The walk's own failures.
  EXPECT_EQ(read(eps("%BeginPhotoshop: ", "4", "% 38424950\n" + end)), ErrorCode::iptc_invalid);
  const Bytes many = joined(std::vector(201, resource(1000, "", {1, 2})));
  EXPECT_EQ(read(eps("%BeginPhotoshop: ", std::to_string(many.size()),
                     eps_lines(many, 8, false, "\n") + end)),
            ErrorCode::too_many_iptc_fields);
}

TEST_F(EpsTest, DamagedBlocksAreRefused) {
  const std::string failed = "EPS hex decode error: ";
  const std::string invalid = "Error: Invalid hexadecimal character found\n";
  const struct {
    const char* what;
    std::string text;
    ErrorCode code;
    std::string errors;
  } cases[] = {
      {"no directive", "%!PS-Adobe-3.0 EPSF-3.0\n% 38\n", ErrorCode::no_exif_data, ""},
      {"behind a NUL", std::string(1, '\0') + eps("%BeginPhotoshop: ", "4", "% 38424950\n%"),
       ErrorCode::no_exif_data, ""},
      {"no count", eps("%BeginPhotoshop:", "", "% 38424950\n%"), ErrorCode::iptc_invalid, ""},
      {"count 2", eps("%BeginPhotoshop: ", "2x", "% 3842\n%"), ErrorCode::iptc_invalid, ""},
      {"a letter", eps("%BeginPhotoshop: ", "4", "% 38424G4D\n%"), ErrorCode::odd_hex_length,
       invalid + failed + "final len 2 != expected len 4\n"},
      {"more digits", eps("%BeginPhotoshop: ", "3", "% 38424950\n%"), ErrorCode::invalid_hex_digit,
       invalid + failed + "invalid hex char found\n"},
      {"more lines", eps("%BeginPhotoshop: ", "4", "% 38424950\n% 3842\n%"),
       ErrorCode::invalid_hex_digit, failed + "invalid hex char found\n"},
      {"no line behind it", eps("%BeginPhotoshop: ", "4", "% 38424950\n"), ErrorCode::end_of_buffer,
       failed + "ran off end og buffer\n"},
      {"data ends in the line", eps("%BeginPhotoshop: ", "4", "% 38424950"),
       ErrorCode::end_of_buffer, failed + "ran off end og buffer\n"},
      {"data ends early", eps("%BeginPhotoshop: ", "4", "% 384249"), ErrorCode::odd_hex_length,
       failed + "final len 3 != expected len 4\n"},
      {"half a pair", eps("%BeginPhotoshop: ", "4", "% 3842495"), ErrorCode::odd_hex_length,
       invalid + failed + "final len 3 != expected len 4\n"},
      {"lines end early", eps("%BeginPhotoshop: ", "4", "% 384249\n%End\n"),
       ErrorCode::odd_hex_length, failed + "final len 3 != expected len 4\n"},
      {"nothing", "%BeginPhotoshop: 4", ErrorCode::odd_hex_length,
       failed + "final len 0 != expected len 4\n"},
      {"largest count", eps("%BeginPhotoshop: ", "99999999999999999999", "% 38424950\n%"),
       ErrorCode::odd_hex_length, failed + "final len 4 != expected len 2147483647\n"},
  };
  for (const auto& row : cases) {
    ErrorCode code = ErrorCode::ok;
    EXPECT_EQ(errors_of([&] { code = read(row.text); }), row.errors) << row.what;
    EXPECT_EQ(code, row.code) << row.what;
    EXPECT_EQ(stored(), "") << row.what;
  }
}

}  // namespace
}  // namespace tagmend::test
