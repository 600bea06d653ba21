#include "iptc/app13_build.h"

#include <memory>

#include "common/temporary_directory.h"
#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

TEST_F(StoreTest, ValuesThatTheSourceNoLongerHoldsAreNotInvented) {
  const auto result = std::make_unique<App13Result>();
  const TemporaryFile file(jpeg({}));
  for (const Bytes& block :
       {resource(1028, "", dataset(2, 90, "Oslo")), resource(1000, "", {1, 2, 3, 4})}) {
    EXPECT_EQ(read_segment(photoshop({block})), ErrorCode::ok);
    store_->entries[0].file_pos = 0x7FFFFFFF;
    EXPECT_EQ(errors_of([&] {
                EXPECT_EQ(build_app13(*result, *store_, file.name.c_str()),
                          ErrorCode::text_too_short);
              }),
              "Error: Internal error reading " + file.name +
                  ": IPTC field read is shorter than expected (0/4)\n");
    EXPECT_FALSE(result->built);
  }
  EXPECT_EQ(errors_of([&] {
              EXPECT_EQ(build_app13(*result, *store_, "/no/such/file"),
                        ErrorCode::cannot_open_file);
            }),
            "Error: Can't open file /no/such/file: No such file or directory\n"
            "Error: Can't open image file /no/such/file: Can't open file\n");
}

}  // namespace
}  // namespace tagmend::test
