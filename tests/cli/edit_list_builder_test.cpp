#include "cli/edit_list_builder.h"

#include <gtest/gtest.h>

#include <string>

#include "common/run_tagmend.h"
#include "dictionary/field_def.h"
#include "iptc/iptc_dataset.h"
#include "support/charset.h"
#include "support/settings.h"

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

  std::string remove(const std::string& list) {
    testing::internal::CaptureStderr();
    build_remove_list(list.c_str(), session);
    return testing::internal::GetCapturedStderr();
  }

  [[nodiscard]] const EditEntry& exif(std::size_t index) const {
    return session.exif_edits.entries[index];
  }
};

std::string repeated(const std::string& item, int count) {
  std::string list;
  for (int i = 0; i < count; ++i) {
    list += item + ",";
  }
  return list;
}

TEST_F(EditListBuilder, StoresFieldsAndDatasetsWithTheirTypes) {
  EXPECT_EQ(add("artist=\"J. Doe\",EXP-TIME=1/125,ip-caption=Dawn"), "");
  ASSERT_EQ(session.exif_edits.count, 2);
  ASSERT_EQ(session.iptc_edits.count, 1);
  EXPECT_STREQ(field_table_defs[exif(0).field].nickname, "artist");
  EXPECT_STREQ(exif(0).value.data(), "J. Doe");
  EXPECT_EQ(exif(0).type, static_cast<std::uint16_t>(DataType::string));
  EXPECT_EQ(exif(1).type, static_cast<std::uint16_t>(DataType::unsigned_rational));
  EXPECT_STREQ(iptc_datasets[session.iptc_edits.entries[0].field].nickname, "ip-caption");
  EXPECT_TRUE(session.options.exif_added && session.options.iptc_added);
  EXPECT_FALSE(session.options.exif_removed || session.options.iptc_removed);

  EXPECT_EQ(remove("artist,ip-caption"), "");
  ASSERT_EQ(session.exif_edits.count, 3);
  EXPECT_EQ(exif(2).op, EditOp::remove);
  EXPECT_EQ(exif(2).field, exif(0).field);
  EXPECT_TRUE(session.options.exif_removed && session.options.iptc_removed);
}

TEST_F(EditListBuilder, FieldsOfShortOrLongAreStoredAsLong) {
  const int row = find_field_by_tag(IfdKind::image, 0xA002, true);
  ASSERT_EQ(field_table_defs[static_cast<std::size_t>(row)].data_type, DataType::short_or_long);
  EXPECT_EQ(add(std::string(field_table_defs[static_cast<std::size_t>(row)].nickname) + "=640"),
            "");
  EXPECT_EQ(exif(0).type, static_cast<std::uint16_t>(DataType::unsigned_long));
}

TEST_F(EditListBuilder, ReportsAndLeavesOutWhatIsNotValid) {
  EXPECT_EQ(add("nonsense=1,orient=99999999999,artist=A"),
            "Unknown field 'nonsense' ignored.\n"
            "Invalid value specified for orient: Invalid field value specified\n");
  EXPECT_EQ(session.exif_edits.count, 1);
  EXPECT_EQ(remove("nonsense,ip-Caption,artist"),
            "Unknown field 'nonsense' ignored.\nUnknown field 'ip-Caption' ignored.\n");
  EXPECT_EQ(session.exif_edits.count, 2);
  EXPECT_FALSE(session.options.iptc_removed);
}

TEST_F(EditListBuilder, LongTextsAreCut) {
  EXPECT_EQ(add("ip-caption=" + std::string(2030, 'x')), "");
  EXPECT_STREQ(session.iptc_edits.entries[0].value.data(), std::string(2000, 'x').c_str());

  // A list of the command line ends after 2048 characters, here inside the second value.
  EXPECT_EQ(add("description=" + std::string(1990, 'x') + ",artist=" + std::string(100, 'y')), "");
  EXPECT_STREQ(exif(1).value.data(), std::string(2048 - 12 - 1990 - 8, 'y').c_str());
}

TEST_F(EditListBuilder, BothListsShareTwoHundredEntries) {
  EXPECT_EQ(add(repeated("artist=A", 150)), "");
  EXPECT_EQ(remove(repeated("ip-city", 49)), "");
  EXPECT_EQ(add("ip-city=B,copyright=C,artist=D"),
            "Max number of edit fields reached, copyright and all fields following ignored.\n");
  EXPECT_EQ(session.exif_edits.count, 150);
  EXPECT_EQ(session.iptc_edits.count, 50);
  EXPECT_EQ(remove("make,model"),
            "Warning: Max number of edit fields reached, make and all fields following ignored.\n");
  library_settings.warnings_suppressed = true;
  EXPECT_EQ(remove("make,model"), "");
}

TEST_F(EditListBuilder, ListsFromFiles) {
  const std::string long_value(5000, 'z');
  const test::Sandbox sandbox({{"list", test::bytes_of("artist=A\ncopyright=B\nbad\n")},
                               {"names", test::bytes_of("artist\ncopyright")},
                               {"empty", test::bytes_of("\n")},
                               {"long", test::bytes_of("ip-caption=" + long_value)},
                               {"zero", {'a', '=', '1', '\n', 0, '=', '2'}}});
  EXPECT_EQ(add("@" + sandbox.path("list")),
            "Unexpected end of list where value expected. Field 'bad' ignored\n");
  EXPECT_EQ(session.exif_edits.count, 2);
  EXPECT_EQ(remove("@" + sandbox.path("names")), "");
  EXPECT_EQ(session.exif_edits.count, 4);
  EXPECT_EQ(add("@" + sandbox.path("empty")), "");
  EXPECT_EQ(add("@" + sandbox.path("long")), "");
  EXPECT_STREQ(session.iptc_edits.entries[0].value.data(), long_value.substr(0, 2000).c_str());
  EXPECT_EQ(add("@" + sandbox.path("zero")), "Unknown field 'a' ignored.\n");
  EXPECT_EQ(
      add("@" + sandbox.path("none")),
      "Error: Can't open file list file " + sandbox.path("none") + ": No such file or directory\n");
}

}  // namespace
}  // namespace tagmend
