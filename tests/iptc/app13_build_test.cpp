#include "iptc/app13_build.h"

#include <gtest/gtest.h>

#include <memory>

#include "common/jpeg_builder.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"
#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

TEST_F(StoreTest, ValuesThatTheSourceNoLongerHoldsAreNotInvented) {
  const auto result = std::make_unique<App13Result>();
  const TemporaryFile file(jpeg({}));
  const MFileHandle source(mfopen(file.name.c_str(), "rb"));
  for (const Bytes& block :
       {resource(1028, "", dataset(2, 90, "Oslo")), resource(1000, "", {1, 2, 3, 4})}) {
    EXPECT_EQ(read_segment(photoshop({block})), ErrorCode::ok);
    store_->entries[0].file_pos = 0x7FFFFFFF;
    EXPECT_EQ(errors_of([&] {
                EXPECT_EQ(build_app13(*result, *store_, *source, "photo.jpg"),
                          ErrorCode::text_too_short);
              }),
              "Error: Internal error reading photo.jpg: "
              "IPTC field read is shorter than expected (0/4)\n");
    EXPECT_FALSE(result->built);
  }
}

}  // namespace
}  // namespace tagmend::test
