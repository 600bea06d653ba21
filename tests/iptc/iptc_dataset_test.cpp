#include "iptc/iptc_dataset.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

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
    EXPECT_EQ(find_dataset(expected.nickname, 0), expected.index);
  }
}

TEST(IptcDataset, NicknamesAreUnique) {
  std::set<std::string> nicknames;
  for (std::size_t i = 0; i < iptc_dataset_count; ++i) {
    nicknames.insert(row(int(i)).nickname);
  }
  EXPECT_EQ(nicknames.size(), iptc_dataset_count);
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
}

TEST(IptcDataset, FindsByNumber) {
  EXPECT_EQ(find_dataset_by_number(2, 120), 58);
  EXPECT_EQ(find_dataset_by_number(3, 0), 81);
  EXPECT_EQ(find_dataset_by_number(2, 99), 0);
  EXPECT_EQ(find_dataset_by_number(0, 255), 0);  // a resource's row is no dataset
  EXPECT_EQ(find_resource(resource_iptc), 1);
  EXPECT_EQ(find_resource(resource_url), 105);
  EXPECT_EQ(find_resource(1036), 0);
  EXPECT_EQ(find_resource(end_resource), 0);
}

TEST(IptcDataset, MapsGiveNumbersOrTwoCharacters) {
  const struct {
    const char* field;
    const char* text;
    std::uint32_t value;
  } numbers[] = {
      {"ip-copyrighted", "yes", 256}, {"ip-image-orient", "landscape", 'L'},
      {"ip3-supp-type", "logo", 2},   {"ip3-color-space", "yuv", 3},
      {"ip3-sample-struct", "o2", 1}, {"ip3-scan-dir", "btrl", 7},
      {"ip3-rotation", "270", 3},     {"ip3-quant-method", "ld", 1},
      {"ip3-excursion", "no", 0},
  };
  for (const auto& [field, text, value] : numbers) {
    SCOPED_TRACE(field);
    const ValueMapEntry* entry = map_lookup(row(find_dataset(field, 0)).value_map, 0, text);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->value, value);
  }
  const struct {
    const char* field;
    const char* text;
    const char* value;
  } texts[] = {
      {"ip-action-advised", "rep", "02"},
      {"ip-audio-type", "text", "0T"},
      {"ip-audio-type", "wrap-stereo", "2W"},
      {"ip-preview-format", "29", "29"},
      {"ip-preview-format", "tiff", "03"},
      {"ip-preview-format", "Tidningarnas Telegrambyr\xC3\xA0 NITF ", "27"},
  };
  for (const auto& [field, text, value] : texts) {
    SCOPED_TRACE(text);
    const ValueMapBytesEntry* entry =
        map_lookup_bytes(row(find_dataset(field, 0)).value_map_bytes, 0, text);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(std::string(entry->bytes, entry->bytes + entry->length), value);
  }
}

}  // namespace
}  // namespace tagmend
