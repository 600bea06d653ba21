#include "iptc/iptc_read.h"

#include <gtest/gtest.h>

#include <vector>

#include "common/jpeg_builder.h"
#include "common/memory_readers.h"
#include "common/printed_errors.h"
#include "iptc/store_fixture.h"

namespace tagmend::test {
namespace {

using IptcReadTest = StoreTest;

TEST_F(IptcReadTest, KeepsEveryDatasetAndResourceWithItsPlace) {
  const Bytes datasets = joined({
      dataset(1, 0, Bytes{0, 4}),         // 26: number of two bytes
      dataset(2, 5, "Boat"),              // 33
      dataset(2, 25, "harbour"),          // 42
      dataset(2, 42, "02"),               // 54: map of texts
      dataset(2, 55, "20040501"),         // 61: date
      dataset(2, 62, "2004"),             // 74: date that is too short
      dataset(2, 60, "102030+0100"),      // 83: time
      dataset(2, 99, "?"),                // 99: not in the table
      dataset(2, 131, "P"),               // 105: map of numbers
      dataset(2, 25, "dawn"),             // 111
      dataset(2, 90, "Oslo"),             // 120
      dataset(3, 60, Bytes{1, 255}),      // 129: bytes
      dataset(3, 102, Bytes{9}),          // 136: number that the map lacks
      dataset(3, 20, Bytes{7}),           // 142: number of one byte
      dataset(7, 20, Bytes{0, 1, 0, 2}),  // 148: number of four bytes
      dataset(2, 200, "77"),              // 157: text that the map lacks
      dataset(2, 150, ""),                // 164: nothing
  });
  ASSERT_EQ(datasets.size(), 143U);
  const Bytes payload = photoshop({
      resource(1028, "", datasets),                              // data at 26, pad at 169
      resource(1000, "odd", {1, 2, 3}),                          // at 170: 4+2+4+4, data at 184
      resource(1034, "", {1}),                                   // at 188: data at 200, and a pad
      resource(1035, "even", bytes_of("http://a")),              // at 202: 4+2+6+4, data at 218
      resource(1058, "", joined({bytes_of("Exif"), Bytes(20)}))  // at 226: data at 238
  });
  EXPECT_EQ(errors_of([&] { EXPECT_EQ(read_segment(payload), ErrorCode::ok); }), "");
  EXPECT_FALSE(store_->incomplete);
  EXPECT_EQ(stored(),
            "1028 1:0 ip1-version [4] 31+2 \n"
            "1028 2:5 ip-object [Boat] 38+4 \n"
            "1028 2:25 ip-keyword [harbour] 47+7 \n"
            "1028 2:42 ip-action-advised [Object Replace] 59+2 \n"
            "1028 2:55 ip-date [2004/05/01] 66+8 \n"
            "1028 2:62 ip-digi-date [2004] 79+4 \n"
            "1028 2:60 ip-time [102030+0100] 88+11 \n"
            "1028 2:99 Unknown [?] 104+1 \n"
            "1028 2:131 ip-image-orient [Portrait] 110+1 \n"
            "1028 2:25 ip-keyword [dawn] 116+4 \n"
            "1028 2:90 ip-city [Oslo] 125+4 \n"
            "1028 3:60 ip3-color-rep [1 255] 134+2 \n"
            "1028 3:102 ip3-rotation [9] 141+1 \n"
            "1028 3:20 ip3-width [7] 147+1 \n"
            "1028 7:20 ip7-max-subfile [65538] 153+4 \n"
            "1028 2:200 ip-preview-format [Unknown value] 162+2 \n"
            "1028 2:150 ip-audio-type [] 169+0 \n"
            "1000 0:0 Unknown [Opaque data] 184+3 odd\n"
            "1034 0:0 ip-copyrighted [Yes] 200+4 \n"
            "1035 0:0 ip-url [http://a] 218+8 even\n"
            "1058 0:0 ip-exif [Exif] 238+24 \n");
}

TEST_F(IptcReadTest, PassesOverWhatItDoesNotUnderstand) {
  const Bytes city = dataset(2, 90, "Oslo");
  const struct {
    const char* what;
    Bytes payload;
    ErrorCode code;
    const char* entries;
    const char* messages;
  } cases[] = {
      {"a second value of a dataset that may occur once",
       photoshop({resource(1028, "", joined({city, dataset(2, 90, "Rome")}))}), ErrorCode::ok,
       "1028 2:90 ip-city [Oslo] 31+4 \n", ""},
      {"an unknown mark before a dataset",
       photoshop({resource(1028, "", joined({{0x12, 0x34}, city}))}), ErrorCode::ok,
       "1028 2:90 ip-city [Oslo] 33+4 \n", "Warning: IPTC Caption field mark missing (1234)\n"},
      {"data behind a mark of zero", photoshop({resource(1028, "", joined({{0, 0}, city}))}),
       ErrorCode::ok, "", ""},
      {"an extended length",
       photoshop({resource(1028, "", {0x1C, 2, 90, 0x80, 4, 0, 0, 0, 1, 'A'})}), ErrorCode::ok,
       "1028 2:90 ip-city [",  // NULs follow
       "Warning: IPTC Field ip-city long than remaining data length, truncating\n"},
      {"a few bytes behind the last dataset",
       photoshop({resource(1028, "", joined({city, {0x1C, 2}}))}), ErrorCode::ok,
       "1028 2:90 ip-city [Oslo] 31+4 \n", ""},
      {"no block where one is due",
       photoshop({resource(1035, "", bytes_of("u:")), bytes_of("8BIX1234")}),
       ErrorCode::iptc_invalid, "1035 0:0 ip-url [u:] 26+2 \n", ""},
      {"a resource larger than its segment",
       photoshop({joined({bytes_of("8BIM"), big16(1000), {0, 0}, big32(900), bytes_of("ab")})}),
       ErrorCode::ok, "1000 0:0 Unknown [Opaque data] 26+2 \n", ""},
      {"datasets larger than their segment",
       photoshop({joined({bytes_of("8BIM"), big16(1028), {0, 0}, big32(900), city})}),
       ErrorCode::ok, "1028 2:90 ip-city [Oslo] 31+4 \n", ""},
      {"a size beyond 16 bits, of which the low half counts",
       photoshop({joined({bytes_of("8BIM"), big16(1000), {0, 0}, big32(0x10002), bytes_of("ab")})}),
       ErrorCode::ok, "1000 0:0 Unknown [Opaque data] 26+2 \n", ""},
      {"a flag longer than it is kept", photoshop({resource(1034, "", {0, 1, 2, 3, 4, 5})}),
       ErrorCode::ok, "1034 0:0 ip-copyrighted [Yes] 26+4 \n", ""},
      {"a block that ends in its number", photoshop({bytes_of("8BIM"), {4}}),
       ErrorCode::iptc_invalid, "", "Error: Attempt to read past end of buffer(505).\n"},
      {"a block that ends behind its number", photoshop({bytes_of("8BIM"), big16(1000)}),
       ErrorCode::iptc_invalid, "", ""},
      {"a block that ends in its size", photoshop({bytes_of("8BIM"), big16(1000), {0, 0, 0, 0}}),
       ErrorCode::iptc_invalid, "", "Error: Attempt to read past end of buffer(449).\n"},
  };
  for (const auto& damage : cases) {
    SCOPED_TRACE(damage.what);
    reset_iptc_store(*store_);
    EXPECT_EQ(errors_of([&] { EXPECT_EQ(read_segment(damage.payload), damage.code); }),
              damage.messages);
    EXPECT_STREQ(stored().c_str(), damage.entries);
    EXPECT_TRUE(store_->incomplete);
  }
}

TEST_F(IptcReadTest, CopyrightFlagsKeepToTheirSegment) {
  const auto flag = [](const Bytes& data) { return resource(1034, "", data); };
  const std::vector<std::pair<Bytes, std::string>> cases = {
      {photoshop({flag({1, 0}), resource(1000, "", {})}), "[Yes] 26+4"},
      {photoshop({flag({0, 0}), resource(1000, "", {})}), "[No] 26+4"},
      {photoshop({flag({0, 1})}), "[Yes] 26+2"},
      {photoshop({flag({1})}), "[Yes] 26+2"},
      {photoshop({bytes_of("8BIM"), big16(1034), {0, 0}, big32(1), {1}}), "[Yes] 26+1"},
      {photoshop({flag({}), resource(1000, "", {})}), "[No] 26+0"},
  };
  for (const auto& [payload, expected] : cases) {
    EXPECT_EQ(read_segment(payload), ErrorCode::ok);
    const std::string lines = stored();
    EXPECT_EQ(lines.substr(0, lines.find('\n')), "1034 0:0 ip-copyrighted " + expected + " ");
  }
}

TEST_F(IptcReadTest, OnlyPhotoshopSegmentsCountAndOfThoseTheLast) {
  const Bytes first = photoshop({resource(1035, "", bytes_of("u1"))});
  const Bytes other = bytes_of("Adobe_CM\0\0\0\0\0\0");
  EXPECT_EQ(read_segment(first), ErrorCode::ok);
  EXPECT_EQ(read_segment(other), ErrorCode::iptc_invalid);
  EXPECT_EQ(read_segment({}), ErrorCode::iptc_invalid);
  EXPECT_EQ(read_segment(bytes_of("Photoshop 2.5 8BIM")), ErrorCode::iptc_invalid);
  EXPECT_EQ(stored(), "1035 0:0 ip-url [u1] 26+2 \n");
  EXPECT_FALSE(store_->incomplete);

  EXPECT_EQ(read_segment(bytes_of("Photoshop 3.0")), ErrorCode::ok);
  EXPECT_EQ(store_->count, 0);
  EXPECT_TRUE(store_->incomplete) << "the first segment's content will go";

  reset_iptc_store(*store_);
  EXPECT_EQ(read_segment(first, 900), ErrorCode::iptc_invalid) << "the file ends early";
  EXPECT_EQ(store_->count, 0);
  EXPECT_TRUE(store_->incomplete);
}

TEST_F(IptcReadTest, TextsThatDoNotFitThePoolAreLostButNotTheirPlaces) {
  const Bytes payload =
      photoshop({resource(1028, "",
                          joined({dataset(2, 25, Bytes(19'990, 'a')), dataset(2, 25, Bytes(8, 'b')),
                                  dataset(2, 25, "c")}))});
  EXPECT_EQ(read_segment(payload), ErrorCode::ok);
  ASSERT_EQ(store_->count, 3);
  EXPECT_EQ(store_->entries[0].text.size(), 19'990U);
  EXPECT_EQ(store_->entries[1].text, "bbbbbbbb");
  EXPECT_EQ(store_->entries[2].text, "");
  EXPECT_EQ(store_->entries[2].length, 1);
  EXPECT_TRUE(store_->incomplete);

  reset_iptc_store(*store_);
  const Bytes cut = joined({dataset(2, 25, Bytes(19'990, 'a')), dataset(2, 25, Bytes(9, 'b'))});
  EXPECT_EQ(read_segment(photoshop({resource(1028, "", cut)})), ErrorCode::ok);
  EXPECT_EQ(store_->entries[1].text, "bbbbbbbb");
  EXPECT_TRUE(store_->incomplete);
}

TEST_F(IptcReadTest, AFieldOfMoreDatasetsThanTheStoreHolds) {
  const Bytes keyword = dataset(2, 25, "k");
  Bytes keywords = joined(std::vector<Bytes>(IptcStore::capacity, keyword));
  read_iptc_value(context_, cursor_over(keywords, 1000), keywords.size());
  EXPECT_FALSE(store_->incomplete);
  reset_iptc_store(*store_);
  keywords = joined({keywords, keyword});
  read_iptc_value(context_, cursor_over(keywords, 1000), keywords.size());
  EXPECT_EQ(store_->count, IptcStore::capacity);
  EXPECT_TRUE(store_->incomplete);
}

// Fields of a TIFF file: the cursor stands on the value, which a longer buffer holds.

TEST_F(IptcReadTest, DatasetsAreTakenFromTheFieldThatHasThem) {
  Bytes iptc = joined({dataset(2, 90, "Oslo"), {0, 0, 0}});
  Bytes same = joined({resource(1028, "Its", dataset(2, 90, "Oslo")), resource(1000, "", {7})});
  Bytes blocks = joined({resource(1028, "", dataset(2, 90, "Rome")), resource(1000, "", {7})});
  const std::string oslo = "1028 2:90 ip-city [Oslo] 1005+4 ";
  const std::string opaque = "1000 0:0 Unknown [Opaque data] 1034+1 \n";
  const std::string named_opaque = "Its\n1000 0:0 Unknown [Opaque data] 1036+1 \n";
  const struct {
    const char* what;
    std::vector<Bytes*> fields;
    std::string stored;
    bool incomplete;
  } cases[] = {
      {"both fields have the same", {&iptc, &same}, oslo + named_opaque, false},
      {"in the other order",
       {&same, &iptc},
       "1028 2:90 ip-city [Oslo] 1019+4 " + named_opaque,
       false},
      {"a field of another page is not read", {&iptc, &same, &blocks}, oslo + named_opaque, false},
      {"Rome will go", {&iptc, &blocks}, oslo + "\n" + opaque, true},
      {"Oslo will go", {&blocks, &iptc}, "1028 2:90 ip-city [Rome] 1017+4 \n" + opaque, true},
      {"one field", {&blocks}, "1028 2:90 ip-city [Rome] 1017+4 \n" + opaque, false},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    reset_iptc_store(*store_);
    for (Bytes* const field : row.fields) {
      const auto read = field == &iptc ? read_iptc_value : read_photoshop_value;
      read(context_, cursor_over(*field, 1000), field->size());
    }
    EXPECT_EQ(stored(), row.stored);
    EXPECT_EQ(store_->incomplete, row.incomplete);
  }

  reset_iptc_store(*store_);
  EXPECT_EQ(walk_resource_blocks(context_, cursor_over(blocks, 1000), false), ErrorCode::ok);
  EXPECT_EQ(stored(), opaque) << "EPS files keep no datasets";
}

TEST_F(IptcReadTest, AValueBeyondTheBufferIsReadFromTheFile) {
  const Bytes value = dataset(2, 90, "Oslo");
  Bytes content = joined({Bytes(1000), value});
  const MFileHandle file = memory_file(content);
  Bytes beginning = cut_at(value, 6);
  ByteCursor cursor = cursor_over(beginning, 1000);
  cursor.file = file.get();
  read_iptc_value(context_, cursor, value.size());
  EXPECT_EQ(stored(), "1028 2:90 ip-city [Oslo] 1005+4 \n");
  EXPECT_FALSE(store_->incomplete);

  reset_iptc_store(*store_);
  read_iptc_value(context_, cursor, 0xFFFFFFFF);
  EXPECT_EQ(stored(), "1028 2:90 ip-city [Oslo] 1005+4 \n");
  EXPECT_TRUE(store_->incomplete);
}

TEST_F(IptcReadTest, DatasetTextJoinsRepeatedValues) {
  const Bytes datasets = joined({dataset(2, 25, Bytes{'a', 0, 0}), dataset(2, 90, "Oslo"),
                                 dataset(2, 25, "b"), dataset(2, 25, "c")});
  EXPECT_EQ(read_segment(photoshop({resource(1028, "", datasets)})), ErrorCode::ok);
  std::string_view value;
  EXPECT_TRUE(iptc_dataset_text(store_.get(), "ip-keyword", value));
  EXPECT_EQ(value, "a; b; c");
  EXPECT_TRUE(iptc_dataset_text(store_.get(), "ip-ci*", value));
  EXPECT_EQ(value, "Oslo");
  EXPECT_FALSE(iptc_dataset_text(store_.get(), "IP-CITY", value));

  store_->pool.used = StringPool::capacity - 7;
  EXPECT_EQ(errors_of([&] { EXPECT_TRUE(iptc_dataset_text(store_.get(), "ip-keyword", value)); }),
            "Warning: String pool full, some values may be truncated\n");
  EXPECT_EQ(value, "");
}

}  // namespace
}  // namespace tagmend::test
