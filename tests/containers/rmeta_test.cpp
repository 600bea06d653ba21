#include "containers/rmeta.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/bytes.h"
#include "common/container_files.h"
#include "common/context_fixture.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"

namespace tagmend::test {
namespace {

Bytes record(std::uint32_t type, const std::vector<std::string>& texts) {
  return rmeta_record(type, texts, true);
}

Bytes payload(std::string_view order, std::initializer_list<Bytes> records) {
  return joined({ascii("RMETA"), bytes_of(order), {9, 9, 9, 9}, joined(records)});
}

class RmetaTest : public ContextTest {
 protected:
  /// Reads the payload of a segment that stands 100 bytes into a file.
  void read(const Bytes& bytes, std::uint32_t length) {
    Bytes content = joined({Bytes(100), bytes, {0xFF}});
    const MFileHandle file = memory_file(content);
    ASSERT_EQ(mfseek(*file, 100, Whence::start), 0);
    read_rmeta(context_, *file, length);
  }
  void read(const Bytes& bytes) { read(bytes, static_cast<std::uint32_t>(bytes.size())); }
};

TEST_F(RmetaTest, TakesFiveOfEachAndStopsAtAnEmptyText) {
  const std::vector<std::string> seven = {"a", "b", "c", "d", "e", "f", "g"};
  read(payload("MM",
               {record(1, seven), record(1, {"h"}), record(7, seven), record(2, {"x", "", "y"}),
                record(2, {""}), rmeta_record(2, bytes_of("open"), true)}));
  EXPECT_EQ(listed(),
            "rc-name1 2 [a] 116\nrc-name2 2 [b] 118\nrc-name3 2 [c] 120\nrc-name4 2 [d] 122\n"
            "rc-name5 2 [e] 124\nrc-value1 2 [x] 158\nrc-value2 2 [open] 172\n");
  const FieldEntry& entry = image_->fields[6];
  EXPECT_EQ(entry.kind, IfdKind::ricoh_custom);
  EXPECT_EQ(entry.tag, 0xF5020002U);
  EXPECT_EQ(entry.index, 6);
  EXPECT_STREQ(entry.name.data(), "Custom Field 2 Value");
}

// The character set's length counts its text but not its number.
TEST_F(RmetaTest, CharacterSetsArePassedOver) {
  const struct {
    Bytes payload;
    const char* listed;
  } cases[] = {
      {payload("MM", {hex("0000 0008 0005"), ascii("ASCII"), record(1, {"Who"})}),
       "rc-name1 2 [Who] 128\n"},
      {payload("II", {hex("0000 0800 0500"),
                      ascii("LATIN"),
                      hex("0000 0200 0600"),
                      rmeta_record(2, ascii("Ann"), false),
                      {0}}),
       "rc-value1 2 [Ann] 134\n"},
      {bytes_of("RMETAL!"), ""},
  };
  for (const auto& row : cases) {
    image_->field_count = 0;
    EXPECT_EQ(errors_of([&] { read(row.payload); }), "");
    EXPECT_EQ(listed(), row.listed);
  }
}

TEST_F(RmetaTest, OnlyAWrongByteOrderIsReported) {
  const auto quiet = [&](const Bytes& bytes) { return errors_of([&] { read(bytes); }); };
  EXPECT_EQ(quiet(payload("XY", {record(1, {"Who"})})), "RMETA: Invalid Byte order '0x5859'\n");
  EXPECT_EQ(quiet(ascii("RMETA")), "");
  EXPECT_EQ(quiet(bytes_of("RM")), "");
  EXPECT_EQ(quiet(payload("MM", {{0, 1, 0, 0, 0}})), "");  // lengths below 2
  EXPECT_EQ(quiet(payload("MM", {{0, 1, 0, 1, 0}})), "");
  EXPECT_EQ(quiet(payload("MM", {{0, 0, 0, 9, 0}})), "");        // half a number
  EXPECT_EQ(quiet(payload("MM", {{0, 3, 0xFF, 0xFF, 0}})), "");  // past the end
  EXPECT_EQ(image_->field_count, 0U);
  EXPECT_EQ(quiet(payload("MM", {{0, 1, 0xFF, 0xFF, 'a', 'b'}})), "");
  EXPECT_EQ(listed(), "rc-name1 2 [ab] 116\n");
  EXPECT_EQ(errors_of([&] { read({}, 0); }), "");
  EXPECT_EQ(errors_of([&] { read(payload("MM", {}), 500); }), "");
  EXPECT_EQ(errors_of([&] { read({}, 0xFFFFFFFF); }), "");
}

TEST_F(RmetaTest, AFullTableEndsTheParsing) {
  image_->field_count = 199;
  read(payload("MM", {record(1, {"a", "b"}), record(2, {"c"})}));
  EXPECT_EQ(image_->field_count, 200U);
  EXPECT_STREQ(image_->fields[199].text.room.data(), "a");
}

}  // namespace
}  // namespace tagmend::test
