#include "iptc/app13_build.h"

#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

class App13BuildTest : public StoreTest {
 protected:
  App13BuildTest() : result_(std::make_unique<App13Result>()) {}

  /// Reads a segment's payload and builds the segment of a file that holds it.
  ErrorCode rebuild(const Bytes& payload) {
    const TemporaryFile file(joined({{0xFF, 0xD8, 0xFF, 0xE0}, payload, Bytes(60)}));
    {
      const MFileHandle handle(mfopen(file.name.c_str(), "rb"));
      mfseek(*handle, 4, Whence::start);
      EXPECT_EQ(read_app13(context_, *handle, static_cast<std::uint32_t>(payload.size())),
                ErrorCode::ok);
    }
    if (change_) {
      change_(*store_);
    }
    return build_app13(*result_, *store_, file.name.c_str());
  }

  [[nodiscard]] Bytes built() const {
    return {result_->segment().begin(), result_->segment().end()};
  }

  std::unique_ptr<App13Result> result_;
  void (*change_)(IptcStore& store) = nullptr;
};

TEST_F(App13BuildTest, UnchangedEntriesAreCopiedByteForByte) {
  const Bytes datasets = joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 25, "odd"),
                                 dataset(2, 99, Bytes{0, 255, 0}), dataset(7, 20, Bytes(4, 9))});
  const Bytes payload = photoshop({
      resource(1000, "name", {1, 2, 3}),
      resource(1028, "", datasets),
      resource(1034, "", {1, 0, 0, 0}),
      resource(1035, "odd", bytes_of("u")),
      resource(1058, "", bytes_of("Exif")),
      resource(2000, "", {}),
  });
  ASSERT_EQ(rebuild(payload), ErrorCode::ok);
  EXPECT_TRUE(result_->built);
  const Bytes length = big16(static_cast<std::uint32_t>(payload.size() + 2));
  EXPECT_EQ(built(), joined({{0xFF, 0xED}, length, payload}));
  // The blocks begin behind marker, length, "Photoshop 3.0" and NUL; the datasets behind the first
  // block (4 + 2 + 6 + 4 + 4 bytes) and the header of their own (12 bytes).
  EXPECT_EQ(result_->blocks_pos, 18U);
  EXPECT_EQ(result_->blocks_len, payload.size() - 14);
  EXPECT_EQ(result_->iptc_pos, 18U + 20 + 12);
  EXPECT_EQ(result_->iptc_len, datasets.size());
}

TEST_F(App13BuildTest, NewValuesTakeTheirPlaces) {
  change_ = [](IptcStore& store) {
    store.entries[0].has_new_value = true;
    store.entries[0].new_value = "Rome!";
    store.entries[1].has_new_value = true;
    store.entries[1].new_value = "";
    store.entries[2].has_new_value = true;
    store.entries[2].new_value = {"\1\0", 2};
  };
  const Bytes payload = photoshop({
      resource(1028, "", joined({dataset(2, 90, "Oslo"), dataset(2, 5, "Boat")})),
      resource(1034, "", {0}),
  });
  ASSERT_EQ(rebuild(payload), ErrorCode::ok);
  EXPECT_EQ(built(), joined({{0xFF, 0xED, 0, 16 + 12 + 16 + 12 + 2},
                             bytes_of("Photoshop 3.0"),
                             {0},
                             bytes_of("8BIM"),
                             {4, 4, 0, 0, 0, 0, 0, 15},
                             {0x1C, 2, 90, 0, 5, 'R', 'o', 'm', 'e', '!'},
                             {0x1C, 2, 5, 0, 0, 0},
                             bytes_of("8BIM"),
                             {4, 10, 0, 0, 0, 0, 0, 2, 1, 0}}));
}

TEST_F(App13BuildTest, ACopyrightFlagHasFourBytes) {
  for (const Bytes& flag : {Bytes{1}, Bytes{1, 0}, Bytes{1, 0, 0, 0}}) {
    ASSERT_EQ(rebuild(photoshop({resource(1034, "", flag)})), ErrorCode::ok);
    EXPECT_EQ(built(),
              joined({{0xFF, 0xED, 0, 32}, photoshop({resource(1034, "", {1, 0, 0, 0})})}));
  }
}

TEST_F(App13BuildTest, AnEmptyStoreBuildsNothingUnlessEditsEmptiedIt) {
  result_->built = true;
  ASSERT_EQ(rebuild(photoshop({})), ErrorCode::ok);
  EXPECT_FALSE(result_->built);
  change_ = [](IptcStore& store) { store.emptied = true; };
  ASSERT_EQ(rebuild(photoshop({})), ErrorCode::ok);
  EXPECT_TRUE(result_->built);
  EXPECT_EQ(built(), joined({{0xFF, 0xED, 0, 16}, bytes_of("Photoshop 3.0"), {0}}));
}

TEST_F(App13BuildTest, TheSegmentMayHaveNoMoreThan65535Bytes) {
  // 18 bytes of header and 12 of the block leave an even 65504 for data, and 65505 would be padded.
  const auto block = [](std::size_t size) {
    return photoshop({resource(1000, "", Bytes(size, 7))});
  };
  EXPECT_EQ(rebuild(block(65504)), ErrorCode::ok);
  EXPECT_EQ(result_->length, 65534U);
  EXPECT_EQ(rebuild(block(65505)), ErrorCode::exif_too_long);
  EXPECT_FALSE(result_->built);
}

TEST_F(App13BuildTest, ValuesThatTheSourceNoLongerHoldsAreNotInvented) {
  change_ = [](IptcStore& store) { store.entries[0].file_pos = 0x7FFFFFFF; };
  for (const Bytes& block :
       {resource(1028, "", dataset(2, 90, "Oslo")), resource(1000, "", {1, 2, 3, 4})}) {
    const Messages messages;
    EXPECT_EQ(rebuild(photoshop({block})), ErrorCode::text_too_short);
    const std::string text = messages.text();
    EXPECT_TRUE(text.starts_with("Error: Internal error reading /tmp/tagmend-iptc-"));
    EXPECT_TRUE(text.ends_with(": IPTC field read is shorter than expected (0/4)\n"));
    EXPECT_FALSE(result_->built);
  }
  store_->count = 1;
  const Messages messages;
  EXPECT_EQ(build_app13(*result_, *store_, "/tmp/no/such/file"), ErrorCode::cannot_open_file);
  EXPECT_TRUE(messages.text().ends_with(
      "Error: Can't open image file /tmp/no/such/file: Can't open file\n"));
}

}  // namespace
}  // namespace tagmend::test
