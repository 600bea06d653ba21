#include "iptc/iptc_dataset.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

const IptcDatasetDef& row(int index) { return iptc_datasets[static_cast<std::size_t>(index)]; }

// The other columns stand in the field reference, which is compared with the table.
TEST(IptcDataset, NumbersAreThoseOfTheStandard) {
  const struct {
    int index;
    const char* nickname;
    std::uint16_t resource, record, dataset;
  } rows[] = {
      {0, "Unknown", 0, 0, 0},
      {1, "ip1-version", 1028, 1, 0},
      {10, "ip1-time-sent", 1028, 1, 80},
      {36, "ip-ref-date", 1028, 2, 47},
      {86, "ip3-pix-size-perp", 1028, 3, 50},
      {90, "ip3-color-seq", 1028, 3, 65},
      {103, "ip7-obj-size", 1028, 7, 90},
      {106, "ip-exif", 1058, 0, 255},
  };
  for (const auto& expected : rows) {
    const IptcDatasetDef& def = row(expected.index);
    EXPECT_STREQ(def.nickname, expected.nickname);
    EXPECT_EQ(def.resource, expected.resource) << def.nickname;
    EXPECT_EQ(def.record, expected.record) << def.nickname;
    EXPECT_EQ(def.dataset, expected.dataset) << def.nickname;
  }
}

TEST(IptcDataset, FindsByNickname) {
  const int ip_date = 38;
  const struct {
    const char* name;
    std::size_t start;
    int found;
  } cases[] = {
      {"ip-date", 0, ip_date}, {"ip-date*", 0, ip_date}, {"IP-DATE", 0, -1}, {"ip-dat", 0, -1},
      {"ip-date", 39, -1},     {"ip3-*", 0, 81},         {"ip3-*", 82, 82},  {"*", 0, 0},
      {"*", 106, 106},         {"*", 107, -1},           {"*", 5000, -1},    {"", 0, -1},
  };
  for (const auto& [name, start, found] : cases) {
    EXPECT_EQ(find_dataset(name, start), found) << name << " from " << start;
  }
  for (int index = 0; index < static_cast<int>(iptc_dataset_count); ++index) {
    EXPECT_EQ(find_dataset(row(index).nickname, 0), index) << "no name stands twice";
  }
}

TEST(IptcDataset, ResourcesAreNoDatasets) {
  EXPECT_EQ(find_dataset_by_number(2, 120), 58);
  EXPECT_EQ(find_dataset_by_number(0, 255), 0);
  EXPECT_EQ(find_resource(resource_url), 105);
  EXPECT_EQ(find_resource(end_resource), 0);
}

}  // namespace
}  // namespace tagmend
