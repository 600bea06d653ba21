#include "read/ifd_parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/jpeg_builder.h"
#include "read/reading.h"

namespace tagmend::test {
namespace {

// An IFD as raw entries, for what no sound file holds.
struct RawEntry {
  std::uint32_t tag, type, count, value;
};

Bytes raw_ifd(const std::vector<RawEntry>& entries, std::uint32_t next = 0) {
  Bytes ifd = big16(static_cast<std::uint32_t>(entries.size()));
  for (const RawEntry& entry : entries) {
    ifd =
        joined({ifd, big16(entry.tag), big16(entry.type), big32(entry.count), big32(entry.value)});
  }
  return joined({ifd, big32(next)});
}

// A TIFF file with its first IFD at offset 8.
Bytes raw_tiff(const std::vector<RawEntry>& entries, std::uint32_t next = 0) {
  return joined({bytes_of("MM"), {0, 42, 0, 0, 0, 8}, raw_ifd(entries, next), Bytes(64)});
}

// Text fields of one letter, all without a definition in IFD0.
std::vector<RawEntry> undefined_fields(std::uint32_t count) {
  std::vector<RawEntry> entries;
  for (std::uint32_t i = 0; i < count; ++i) {
    entries.push_back({0xE000 + i, 2, 2, 0x41000000});
  }
  return entries;
}

TEST(IfdParser, EveryIfdGetsItsKindLevelAndSequence) {
  const Ifd thumbnail = ifd_of({text(0x010E, "small")});
  const Ifd page2 = ifd_of({text(0x010E, "page 2")});
  const Ifd page3 = ifd_of({text(0x010E, "page 3")});
  const Ifd page4 = ifd_of({text(0x010E, "page 4")});
  const Ifd sub = ifd_of({shorts(0x0100, {640})});
  const Entry interop = pointer(0xA005, {text(0x0001, "R98")});
  const Ifd main =
      ifd_of({text(0x010E, "big"), pointer(0x014A, std::vector<Ifd>(10, sub)),
              pointer(0x8769, {octets(0x9000, kUndefined, "0220"), interop, shorts(0xA002, {640})}),
              pointer(0x8825, {octets(0x0000, kByte, Bytes{2, 2, 0, 0})}), text(0xE123, "?")});
  const Lines expected = {
      "0/0/0 010e big",      "23/1/a0000 0100 640", "24/1/a0001 0100 640", "25/1/a0002 0100 640",
      "26/1/a0003 0100 640", "27/1/a0004 0100 640", "32/1/a0005 0100 640", "33/1/a0006 0100 640",
      "37/1/a0007 0100 640", "38/1/a0008 0100 640", "40/1/a0009 0100 640", "2/1/0 9000 0220",
      "5/2/0 0001 R98",      "2/1/0 a002 640",      "16/1/0 0000 2.2.0.0", "0/0/0 e123 ?",
      "3/0/1 010e small",    "21/0/2 010e page 2",  "22/0/3 010e page 3",  "40/0/4 010e page 4"};
  for (const bool big_endian : {true, false}) {
    const Reading reading =
        read_image(scattered_tiff(big_endian, {main, thumbnail, page2, page3, page4}));
    EXPECT_EQ(reading.result, ErrorCode::ok);
    EXPECT_EQ(fields_of(reading), expected);
    EXPECT_EQ(reading.errors, "");
    EXPECT_FALSE(reading.image->incomplete);
    EXPECT_EQ(reading.image->big_endian, big_endian);
    for (std::uint32_t i = 0; i < reading.image->field_count; ++i) {
      const FieldEntry& entry = reading.image->fields[i];
      EXPECT_EQ(entry.index, i);
      EXPECT_EQ(entry.ifd.big_endian, big_endian);
      EXPECT_EQ(entry.ifd.source_base, 0);
    }
  }
}

TEST(IfdParser, SortedTablesAreInOrderOfKindLevelSequenceAndTag) {
  const Ifd main = ifd_of({text(0xE200, "b"), pointer(0x8825, {text(0x0001, "N")}),
                           pointer(0x8769, {text(0xA004, "c.wav")}), text(0xE100, "a")});
  const Reading reading =
      read_image(scattered_tiff(true, {main, ifd_of({text(0x010E, "t")})}), {}, true);
  EXPECT_EQ(fields_of(reading), (Lines{"0/0/0 e100 a", "0/0/0 e200 b", "2/1/0 a004 c.wav",
                                       "3/0/1 010e t", "16/1/0 0001 North"}));
}

TEST(IfdParser, PointerTagsOfMakerNotesAreValuesElsewhere) {
  const Reading reading = read_image(raw_tiff({{0x0011, 4, 1, 8}, {0x2001, 4, 1, 8}}));
  EXPECT_EQ(fields_of(reading), (Lines{"0/0/0 0011 8", "0/0/0 2001 8"}));
  EXPECT_EQ(reading.image->fields[0].def + reading.image->fields[1].def, 0U);
  EXPECT_STREQ(reading.image->fields[1].name.data(), "Unknown Field 0x2001     ");
  EXPECT_FALSE(reading.image->incomplete);
}

TEST(IfdParser, StoredTypesThatStandForTheDefinedOne) {
  // Eleven misfits end the read, so an accepted pair lets the twelfth field be read.
  const struct {
    const char* name;
    RawEntry entry;
    bool fits;
  } cases[] = {
      {"SHORT or LONG as SHORT", {0xA002, 3, 1, 0x02800000}, true},
      {"SHORT or LONG as LONG", {0xA002, 4, 1, 640}, true},
      {"SHORT or LONG as BYTE", {0xA002, 1, 1, 0}, false},
      {"ASCII as BYTE", {0x9003, 1, 20, 8}, true},
      {"ASCII as UNDEFINED", {0x9003, 7, 20, 8}, false},
      {"signed rational as rational", {0x9204, 5, 1, 8}, true},
      {"rational as signed rational", {0x829A, 10, 1, 8}, false},
      {"SHORT as LONG", {0x8827, 4, 1, 100}, false},
      {"count differs", {0x9003, 2, 19, 8}, false},
      {"without definition", {0xE000, 9, 77, 8}, true},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    std::vector<RawEntry> exif(10, {0x829A, 3, 1, 0});
    exif.push_back(test.entry);
    exif.push_back({0xE0FF, 2, 2, 0x41000000});
    Bytes tiff = raw_tiff({{0x8769, 4, 1, 100}});
    tiff.resize(100);
    const Reading reading = read_image(joined({tiff, raw_ifd(exif), Bytes(200)}));
    EXPECT_EQ(reading.result, ErrorCode::ok);
    EXPECT_EQ(reading.image->field_count, test.fits ? 12U : 11U);
    EXPECT_EQ(reading.image->incomplete, !test.fits);
    EXPECT_EQ(reading.errors,
              test.fits ? ""
                        : "Error: (FILE) Too many format errors detected, EXIF data may be "
                          "incomplete\n");
  }
}

TEST(IfdParser, LimitsAndDamage) {
  const auto fields_and = [](std::vector<RawEntry> entries, const RawEntry& last) {
    entries.push_back(last);
    return entries;
  };
  Bytes second_ifd = raw_tiff(undefined_fields(199), 3000);
  second_ifd.resize(3000);
  const struct {
    const char* name;
    Bytes bytes;
    ErrorCode result;
    std::uint32_t fields;
    bool incomplete;
  } cases[] = {
      {"no entries", raw_tiff({}), ErrorCode::ok, 0, false},
      {"200 entries", raw_tiff(undefined_fields(200)), ErrorCode::ok, 200, false},
      {"201 entries", raw_tiff(undefined_fields(201)), ErrorCode::ok, 0, true},
      {"200 fields in two IFDs", joined({second_ifd, raw_ifd(undefined_fields(1))}), ErrorCode::ok,
       200, false},
      {"201 fields in two IFDs", joined({second_ifd, raw_ifd(undefined_fields(2))}),
       ErrorCode::too_many_fields, 200, true},
      {"type 0", raw_tiff({{0xE000, 0, 1, 0}, {0xE001, 3, 1, 0}}), ErrorCode::ok, 1, true},
      {"type 16", raw_tiff({{0xE000, 16, 1, 0}, {0xE001, 3, 1, 0}}), ErrorCode::ok, 1, true},
      {"type 15", raw_tiff({{0xE000, 15, 1, 0}, {0xE001, 3, 1, 0}}), ErrorCode::ok, 2, false},
      {"an IFD of unknown fields", raw_tiff({{0xE000, 13, 1, 8}}), ErrorCode::ok, 1, true},
      {"an IFD in no place", raw_tiff({{0xE000, 13, 0, 0}}), ErrorCode::ok, 1, false},
      {"fax profile", raw_tiff({{0x0190, 4, 1, 8}}), ErrorCode::ok, 1, true},
      {"camera profiles", raw_tiff({{0xC6F5, 4, 1, 8}}), ErrorCode::ok, 1, true},
      {"private data elsewhere", raw_tiff({{0xC634, 1, 4, 8}}), ErrorCode::ok, 1, true},
      {"private data here", raw_tiff({{0xC634, 1, 5, 8}}), ErrorCode::ok, 1, false},
      {"eleven bad types",
       raw_tiff(fields_and(std::vector<RawEntry>(11, {1, 0, 0, 0}), {0xE000, 3, 1, 0})),
       ErrorCode::ok, 0, true},
      {"first IFD out of reach", joined({bytes_of("MM"), {0, 42, 0, 1, 0, 0}, Bytes(50)}),
       ErrorCode::ok, 0, true},
      {"next IFD out of reach", raw_tiff({{0xE000, 3, 1, 0}}, 0x7FFFFFFF), ErrorCode::ok, 1, true},
      {"next IFD is this IFD", raw_tiff({{0xE000, 3, 1, 0}}, 8), ErrorCode::too_many_fields, 200,
       true},
      {"empty IFD after itself", raw_tiff({}, 8), ErrorCode::ok, 0, true},
      {"pointer to its own IFD", raw_tiff({{0xE000, 3, 1, 0}, {0x8769, 4, 1, 8}}), ErrorCode::ok,
       max_ifd_level + 1, true},
      {"value out of reach", raw_tiff({{0xE000, 3, 1, 0}, {0xE001, 2, 5, 0x7FFFFFFF}}),
       ErrorCode::read_failed, 1, true},
      {"value longer than the file", raw_tiff({{0xE000, 7, 0xFFFFFFFF, 8}}), ErrorCode::ok, 1,
       true},
      {"size past 32 bits", raw_tiff({{0xE000, 12, 0x20000000, 8}}), ErrorCode::ok, 1, true},
      {"array without offsets", raw_tiff({{0x014A, 4, 0, 8}}), ErrorCode::ok, 0, true},
      {"array of 4 billion", raw_tiff({{0x014A, 4, 0xFFFFFFFF, 8}}), ErrorCode::ok, 0, true},
      {"array out of reach", raw_tiff({{0x014A, 4, 2, 0x7FFFFFFF}}), ErrorCode::read_failed, 0,
       true},
      {"arrays of their own IFD",
       raw_tiff(
           fields_and(std::vector<RawEntry>(150, {0x014A, 4, 0x10000000, 8}), {0xE000, 3, 1, 0})),
       ErrorCode::ok, 1, true},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(test.bytes);
    EXPECT_EQ(reading.result, test.result);
    EXPECT_EQ(reading.image->field_count, test.fields);
    EXPECT_EQ(reading.image->incomplete, test.incomplete);
    EXPECT_LE(reading.image->ifd_count, max_ifds);
  }
}

TEST(IfdParser, OffsetsInAnExifSegmentEndAtItsLongestLength) {
  // The field lies behind the segment; only where Exif comes first its offset is out of bounds.
  const Bytes tiff = raw_tiff({{0xE000, 2, 5, 65535}});
  const Bytes rest = Bytes(70'000, 'x');
  EXPECT_EQ(read_image(joined({jpeg({app1_exif(tiff), picture()}), rest})).result,
            ErrorCode::invalid_offset);
  const Reading second = read_image(joined({jpeg({app0_jfif(), app1_exif(tiff)}), rest}));
  EXPECT_EQ(fields_of(second), Lines{"0/0/0 e000 xxxxx"});
  const Reading below =
      read_image(joined({jpeg({app1_exif(raw_tiff({{0xE000, 2, 5, 65534}}))}), rest}));
  EXPECT_EQ(fields_of(below), Lines{"0/0/0 e000 xxxxx"});
}

TEST(IfdParser, WhatStraddlesTheBufferIsReadWhole) {
  // An IFD that begins a few bytes before the end of the first 256 KiB, and so does its value.
  for (const std::uint32_t before : {1U, 2U, 3U, 20U}) {
    Bytes file = layout::tiff_header(true);
    const std::uint32_t ifd_pos = work_buffer_size - before;
    const std::uint32_t value_pos = 2 * work_buffer_size - before;
    put(file, 4, ifd_pos, 4, true);
    put(file, ifd_pos, raw_ifd({{0x010E, 2, 40, value_pos}, {0x0112, 3, 1, 0x00010000}}));
    put(file, value_pos, Bytes(39, 'v'));
    file.resize(file.size() + 9);
    const Reading reading = read_image(file);
    EXPECT_EQ(fields_of(reading),
              (Lines{"0/0/0 010e " + std::string(39, 'v'), "0/0/0 0112 Upper Left"}));
    EXPECT_EQ(reading.errors, "");
  }
}

TEST(IfdParser, FilesCutAtAnyLengthGiveTheirFirstFields) {
  const Ifd main =
      ifd_of({text(0x010E, "description"), text(0x010F, "Canon"), text(0x0110, "X"),
              pointer(0x014A, std::vector<Ifd>{ifd_of({shorts(0x0100, {1})}),
                                               ifd_of({shorts(0x0100, {2})})}),
              pointer(0x8769, {rationals(0x829A, {1, 125}), text(0xA004, "long.wav")})});
  for (const Bytes& whole :
       {written_tiff(true, {main, main}), jpeg({app0_jfif(), written_exif(false, {main, main})})}) {
    const Reading all = read_image(whole);
    ASSERT_EQ(all.image->field_count, 14U);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const Reading cut = read_image(cut_at(whole, size));
      ASSERT_LE(cut.image->field_count, 14U);
      for (std::size_t i = 0; i < cut.image->field_count; ++i) {
        EXPECT_EQ(cut.image->fields[i].tag, all.image->fields[i].tag);
      }
      EXPECT_TRUE(cut.image->incomplete || cut.result != ErrorCode::ok ||
                  cut.image->field_count == 14U);
    }
  }
}

}  // namespace
}  // namespace tagmend::test
