#include "iptc/app13_build.h"

#include <unistd.h>

#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

/// A file that lives as long as the record.
struct TemporaryFile {
  std::string name = testing::TempDir() + "tagmend-iptc-XXXXXX";

  explicit TemporaryFile(const Bytes& content) {
    const int descriptor = mkstemp(name.data());
    EXPECT_EQ(write(descriptor, content.data(), content.size()),
              static_cast<ssize_t>(content.size()));
    close(descriptor);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { unlink(name.c_str()); }
};

class App13BuildTest : public StoreTest {
 protected:
  /// Reads a segment's payload and builds the segment of a file that holds it, or held it once.
  ErrorCode rebuild(const Bytes& payload, bool source_is_cut = false) {
    Bytes photo = joined({{0xFF, 0xD8, 0xFF, 0xE0}, payload, Bytes(60)});
    const TemporaryFile file(photo);
    const MFileHandle source = memory_file(photo);
    mfseek(*source, 4, Whence::start);
    EXPECT_EQ(read_app13(context_, *source, static_cast<std::uint32_t>(payload.size())),
              ErrorCode::ok);
    if (source_is_cut) {
      store_->entries[0].file_pos = 0x7FFFFFFF;
    }
    return build_app13(*result_, *store_, file.name.c_str());
  }

  std::unique_ptr<App13Result> result_ = std::make_unique<App13Result>();
};

TEST_F(App13BuildTest, ACopyrightFlagHasFourBytes) {
  for (const Bytes& flag : {Bytes{1}, Bytes{1, 0}, Bytes{1, 0, 0, 0}}) {
    ASSERT_EQ(rebuild(photoshop({resource(1034, "", flag)})), ErrorCode::ok);
    const Bytes built(result_->segment().begin(), result_->segment().end());
    EXPECT_EQ(built, joined({{0xFF, 0xED, 0, 32}, photoshop({resource(1034, "", {1, 0, 0, 0})})}));
  }
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
  for (const Bytes& block :
       {resource(1028, "", dataset(2, 90, "Oslo")), resource(1000, "", {1, 2, 3, 4})}) {
    const std::string errors =
        errors_of([&] { EXPECT_EQ(rebuild(photoshop({block}), true), ErrorCode::text_too_short); });
    EXPECT_TRUE(errors.starts_with("Error: Internal error reading ")) << errors;
    EXPECT_TRUE(errors.ends_with(": IPTC field read is shorter than expected (0/4)\n")) << errors;
    EXPECT_FALSE(result_->built);
  }
  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(build_app13(*result_, *store_, "/no/such/file"),
                        ErrorCode::cannot_open_file);
            }),
            "Error: Can't open file /no/such/file: No such file or directory\n"
            "Error: Can't open image file /no/such/file: Can't open file\n");
}

}  // namespace
}  // namespace tagmend::test
