#include "iptc/iptc_dataset.h"

#include <gtest/gtest.h>

namespace tagmend {
namespace {

const IptcDatasetDef& row(int index) { return iptc_datasets[static_cast<std::size_t>(index)]; }

TEST(IptcDataset, RowsFollowTheStandard) {
  using enum DatasetType;
  const struct {
    int index;
    const char* nickname;
    std::uint16_t resource, record, dataset;
    const char* description;
    DatasetType type;
    std::uint16_t max_length, max_count;
    bool editable;
  } rows[] = {
      {0, "Unknown", 0, 0, 0, "Unknown", text, 1999, 999, false},
      {1, "ip1-version", 1028, 1, 0, "Dataset 1 Record Version", number16, 1, 1, true},
      {10, "ip1-time-sent", 1028, 1, 80, "Time Sent", time, 11, 1, true},
      {26, "ip-keyword", 1028, 2, 25, "Keywords", text, 1999, 999, true},
      {36, "ip-ref-date", 1028, 2, 47, "Reference Date", date, 8, 999, true},
      {47, "ip-city", 1028, 2, 90, "City", text, 32, 1, true},
      {86, "ip3-pix-size-perp", 1028, 3, 50, "Pixel Size - Perpedicular", number16, 1, 1, true},
      {90, "ip3-color-seq", 1028, 3, 65, "Color Sequence", bytes, 4, 1, true},
      {103, "ip7-obj-size", 1028, 7, 90, "Object Size Announced", number32, 1, 1, true},
      {104, "ip-copyrighted", 1034, 0, 255, "Mark as Copyrighted", number16, 1, 1, true},
      {105, "ip-url", 1035, 0, 255, "Image URL", text, 255, 1, true},
      {106, "ip-exif", 1058, 0, 255, "Embedded EXIF", bytes, 255, 1, false},
  };
  for (const auto& expected : rows) {
    SCOPED_TRACE(expected.nickname);
    const IptcDatasetDef& def = row(expected.index);
    EXPECT_STREQ(def.nickname, expected.nickname);
    EXPECT_EQ(def.resource, expected.resource);
    EXPECT_EQ(def.record, expected.record);
    EXPECT_EQ(def.dataset, expected.dataset);
    EXPECT_STREQ(def.description, expected.description);
    EXPECT_EQ(def.type, expected.type);
    EXPECT_EQ(def.max_length, expected.max_length);
    EXPECT_EQ(def.max_count, expected.max_count);
    EXPECT_EQ(def.editable, expected.editable);
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
