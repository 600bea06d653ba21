#include "cli/edit_list_builder.h"

#include <gtest/gtest.h>

#include <string>

#include "common/run_tagmend.h"
#include "support/charset.h"

namespace tagmend {
namespace {

struct EditListBuilder : testing::Test {
  Session session = open_session();

  EditListBuilder() {
    cs_init();
    session.exif_edits.count = session.iptc_edits.count = 0;
  }

  std::string add(const std::string& list) {
    testing::internal::CaptureStderr();
    build_add_list(list.c_str(), session);
    return testing::internal::GetCapturedStderr();
  }

  /// The last value of a list.
  static std::string last_value(const EditList& edits) {
    return edits.entries.at(static_cast<std::size_t>(edits.count) - 1).value.data();
  }
};

TEST_F(EditListBuilder, LongTextsAreCut) {
  EXPECT_EQ(add("ip-caption=" + std::string(2030, 'x')), "");
  EXPECT_EQ(last_value(session.iptc_edits), std::string(2000, 'x'));

  // A list of the command line ends after 2048 characters, here inside the second value.
  EXPECT_EQ(add("description=" + std::string(1990, 'x') + ",artist=" + std::string(100, 'y')), "");
  EXPECT_EQ(last_value(session.exif_edits), std::string(2048 - 12 - 1990 - 8, 'y'));
}

TEST_F(EditListBuilder, ListsFromFiles) {
  const std::string long_value(5000, 'z');
  const test::Sandbox sandbox({{"empty", test::bytes_of("\n")},
                               {"long", test::bytes_of("ip-caption=" + long_value)},
                               {"zero", {'a', '=', '1', '\n', 0, '=', '2'}}});
  EXPECT_EQ(add("@" + sandbox.path("empty")), "");
  EXPECT_EQ(add("@" + sandbox.path("long")), "");
  EXPECT_EQ(last_value(session.iptc_edits), long_value.substr(0, 2000));
  EXPECT_EQ(add("@" + sandbox.path("zero")), "Unknown field 'a' ignored.\n");
  EXPECT_EQ(session.exif_edits.count, 0);
}

}  // namespace
}  // namespace tagmend
