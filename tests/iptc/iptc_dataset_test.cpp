#include "iptc/iptc_dataset.h"

#include <gtest/gtest.h>

namespace tagmend::test {
namespace {

const IptcDatasetDef& row(int index) { return iptc_datasets[static_cast<std::size_t>(index)]; }

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
}  // namespace tagmend::test
