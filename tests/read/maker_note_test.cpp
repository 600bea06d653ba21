#include "read/maker_note.h"

#include <gtest/gtest.h>

#include <string>

#include "reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

TEST(MakerNote, MakeAndModelChooseTheLayout) {
  const struct {
    std::optional<std::string_view> make;
    std::string_view model;
    std::uint32_t kind;
  } cases[] = {
      {"Canon", "anything", 1},
      {"canon", "anything", 0},
      {"FUJIFILM", "", 2},
      {"PENTAX Corporation ", "K10D", 3},
      {"PENTAX Corporation", "K10D", 4},
      {"OLYMPUS OPTICAL CO.,LTD", "C920Z,D450Z", 8},
      {"OLYMPUS OPTICAL CO.,LTD", "E-20,E-20N,E-20P", 9},
      {"OLYMPUS OPTICAL CO.,LTD", "E-10        ", 10},
      {"OLYMPUS OPTICAL CO.,LTD", "E-10", 12},
      {"OLYMPUS OPTICAL CO.,LTD", "E-20", 12},
      {"OLYMPUS CORPORATION    ", "C8080WZ", 11},
      {"CASIO", "QV-3500EX", 15},
      {"CASIO", "other", 16},
      {"Minolta Co., Ltd.", "DiMAGE G500", 20},
      {"Minolta Co., Ltd.", "other", 22},
      {"NIKON", "E5000", 23},
      {"NIKON", "E950", 27},
      {"NIKON CORPORATION", "NIKON D1 ", 24},
      {"NIKON CORPORATION", "NIKON D1", 28},
      {"NIKON CORPORATION", "NIKON D70", 28},
      {"RICOH      ", "Caplio", 33},
      {"Generic", "NeVer MaTcH", 0},
      {"SONY", "DSC", 0},
      {std::nullopt, "QV-3500EX", 15},
      {std::nullopt, "E5000", 23},
      {std::nullopt, "no such model", 0},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(find_maker(test.make, test.model), test.kind) << test.model;
  }
}

// A maker note of one text field without definition, so that every layout shows it alike.
Ifd note_of(const Bytes& header, Base base = Base::parent) {
  Ifd ifd = ifd_of({text(0xE000, "in the note")});
  ifd.header = header;
  ifd.base = base;
  return ifd;
}

Ifd in_order(Ifd ifd, bool big_endian) {
  ifd.own_order = true;
  ifd.big_endian = big_endian;
  return ifd;
}

Bytes photo(bool big_endian, std::string_view make, std::string_view model, const Entry& note) {
  const Ifd main = ifd_of({text(0x010F, make), text(0x0110, model), pointer(0x8769, {note})});
  return jpeg({source_exif(big_endian, {main})});
}

const std::string pentax_warning =
    "Warning: Unrecognised Pentax Maker Note format. Maker note will not be interpretted\n";
const std::string nikon_warning =
    "Warning: Unrecognised Nikon Maker Note format. Maker note will not be interpretted\n";

TEST(MakerNote, NotesOfEveryStructureAreReadInBothOrders) {
  const Bytes nikon2 = bytes_of("Nikon\0\2\0\0\0"s);
  const Bytes nikon2_16 = bytes_of("Nikon\0\2\x10\0\0"s);
  Ifd canon = note_of({});
  for (std::uint16_t i = 1; i < 6; ++i) {
    canon.entries.push_back(shorts(0xE000 + i, {i}));
  }
  const struct {
    const char* name;
    std::string_view make, model;
    Ifd note;
    std::uint32_t kind;
    unsigned ifd_kind;
    int order;  // -1 that of the file, else 1 big-endian, 0 little-endian
  } cases[] = {
      {"Canon", "Canon", "X", canon, 1, 11, -1},
      {"Fujifilm", "FUJIFILM", "X",
       in_order(note_of(bytes_of("FUJIFILM\x0C\0\0\0"s), Base::start), false), 2, 15, 0},
      {"Pentax", "PENTAX Corporation ", "X", note_of(bytes_of("AOC\0\0\0"s)), 3, 29, -1},
      {"Pentax II", "PENTAX Corporation ", "X", in_order(note_of(bytes_of("AOC\0II"s)), false), 5,
       29, 0},
      {"Pentax MM", "PENTAX Corporation ", "X", in_order(note_of(bytes_of("AOC\0MM"s)), true), 6,
       29, 1},
      {"Nikon plain", "NIKON", "E950", note_of({}), 27, 9, -1},
      {"Nikon 1", "NIKON", "E950", note_of(bytes_of("Nikon\0\1\0"s)), 29, 8, -1},
      {"Nikon 2 MM", "NIKON CORPORATION", "NIKON D70", in_order(note_of(nikon2, Base::inner), true),
       30, 18, 1},
      {"Nikon 2 II", "NIKON CORPORATION", "NIKON D70",
       in_order(note_of(nikon2_16, Base::inner), false), 31, 18, 0},
      {"Panasonic", "Panasonic", "X", note_of(bytes_of("Panasonic\0\0\0"s)), 32, 31, -1},
  };
  for (const auto& test : cases) {
    for (const bool big_endian : {true, false}) {
      SCOPED_TRACE(test.name);
      const Reading reading =
          read_image(photo(big_endian, test.make, test.model, maker_note(test.note)));
      EXPECT_EQ(reading.result, ErrorCode::ok);
      EXPECT_EQ(reading.errors + reading.output, "");
      EXPECT_FALSE(reading.image->incomplete);
      EXPECT_EQ(reading.image->maker_note_kind, test.kind);
      ASSERT_GE(reading.image->field_count, 3U);
      const FieldEntry& field = reading.image->fields[2];
      EXPECT_STREQ(field.text.data(), "in the note");
      EXPECT_EQ(static_cast<unsigned>(field.kind), test.ifd_kind);
      EXPECT_EQ(field.level, 2);
      const bool order = test.order < 0 ? big_endian : test.order == 1;
      EXPECT_EQ(field.ifd.parent, tag_maker_note);
      EXPECT_EQ(field.ifd.big_endian, order);
      EXPECT_EQ(reading.image->maker_note_big_endian, order);
      EXPECT_EQ(field.ifd.source_base == 12, test.note.base == Base::parent);
    }
  }
}

TEST(MakerNote, NotesThatAreNoIfdAreValues) {
  const struct {
    const char* name;
    std::string_view make, model;
    Bytes note;
    std::string errors;
  } cases[] = {
      {"no layout", "SONY", "X", bytes_of("SONY DSC"), ""},
      {"opaque layout", "Minolta Co., Ltd.", "DiMAGE G500", noise(30, 1), ""},
      {"Canon with few entries", "Canon", "X", {0, 5, 1, 2, 3, 4, 5, 6}, ""},
      {"Pentax", "PENTAX Corporation ", "X", bytes_of("PENTAX II"), pentax_warning},
      {"Nikon 3", "NIKON CORPORATION", "D9", bytes_of("Nikon\0\3\0\0\0"s), nikon_warning},
      {"in the entry", "Panasonic", "X", {1, 2, 3, 4}, ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const Reading reading = read_image(
        photo(true, test.make, test.model, octets(tag_maker_note, kUndefined, test.note)));
    EXPECT_EQ(reading.result, ErrorCode::ok);
    EXPECT_EQ(reading.errors, test.errors);
    ASSERT_EQ(reading.image->field_count, 3U);
    EXPECT_EQ(reading.image->fields[2].tag, tag_maker_note);
    EXPECT_EQ(reading.image->fields[2].count, test.note.size());
    EXPECT_FALSE(reading.image->incomplete);
  }
}

TEST(MakerNote, AWrongPrefixIsReportedAndTheLayoutKept) {
  const Bytes note = joined({bytes_of("PANASONIC"), {0, 0, 0, 255, 255, 255}});
  const Reading reading =
      read_image(photo(true, "Panasonic", "X", octets(tag_maker_note, kUndefined, note)));
  EXPECT_EQ(reading.errors, "Warning: Panasonic Maker Note prefix is incorrect.\n");
  EXPECT_EQ(reading.output, "buf_p=0x50 41 4e 41 53 4f 4e 49\n");
  EXPECT_EQ(reading.image->maker_note_kind, 32U);
  // What stands there is no IFD: the note is kept as a value.
  ASSERT_EQ(reading.image->field_count, 3U);
  EXPECT_EQ(reading.image->fields[2].tag, tag_maker_note);
  EXPECT_FALSE(reading.image->incomplete);
}

TEST(MakerNote, ALaterModelDoesNotChangeTheLayoutOfANoteThatWasRead) {
  const Ifd main =
      ifd_of({text(0x010F, "NIKON CORPORATION"), text(0x0110, "NIKON D70"),
              pointer(0x8769, {maker_note(note_of(bytes_of("Nikon\0\2\0\0\0"s), Base::inner))})});
  const Ifd second = ifd_of({text(0x010F, "NIKON CORPORATION"), text(0x0110, "NIKON D70")});
  const Reading reading = read_image(jpeg({source_exif(true, {main, second})}));
  EXPECT_EQ(reading.image->maker_note_kind, 30U);
  EXPECT_EQ(reading.image->field_count, 5U);
}

TEST(MakerNote, TheThumbnailIfdOfANikonNoteCountsFromTheNotesBase) {
  Ifd thumbnail = ifd_of({longs(0x0201, {0}), longs(0x0202, {0})});
  thumbnail.thumbnail = noise(40, 6);
  Ifd note = note_of(bytes_of("Nikon\0\2\0\0\0"s), Base::inner);
  note.entries.insert(note.entries.begin(), pointer(0x0011, std::vector<Ifd>{thumbnail}));
  const Bytes file = photo(false, "NIKON CORPORATION", "NIKON D70", maker_note(note));
  const Reading reading = read_image(file);
  const auto at =
      std::search(file.begin(), file.end(), thumbnail.thumbnail.begin(), thumbnail.thumbnail.end());
  EXPECT_EQ(reading.image->thumbnail_offset, static_cast<std::uint32_t>(at - file.begin()));
  EXPECT_EQ(reading.image->thumbnail_length, 40U);
  ASSERT_EQ(reading.image->field_count, 5U);
  EXPECT_EQ(reading.image->fields[2].kind, IfdKind::nikon_thumbnail);
}

TEST(MakerNote, RicohCameraInformationStandsBehindItsHeader) {
  Ifd info = ifd_of({text(0xE001, "camera information")});
  info.header = bytes_of("[Ricoh Camera Info]\0"s);
  Ifd note = note_of(bytes_of("Ricoh\xAA\0\0"s));
  note.entries.insert(note.entries.begin(), {0x2001, kUndefined, {}, {info}});
  const Reading reading = read_image(photo(true, "RICOH      ", "Caplio", maker_note(note)));
  EXPECT_EQ(fields_of(reading),
            (Lines{"0/0/0 010f RICOH      ", "0/0/0 0110 Caplio", "36/3/0 e001 camera information",
                   "35/2/0 e000 in the note"}));
}

TEST(MakerNote, OffsetsOutOfReachLeaveTheRestOfTheFile) {
  for (const char* const make : {"Canon", "FUJIFILM", "PENTAX Corporation ", "NIKON CORPORATION",
                                 "Panasonic", "RICOH      "}) {
    for (const std::uint32_t offset :
         {0U, 8U, 60'000U, 65'535U, 0x7FFFFFFFU, 0xFFFFFFF8U, 0xFFFFFFFFU}) {
      SCOPED_TRACE(make);
      Bytes tiff = scattered_tiff(
          true, {ifd_of({text(0x010F, make), text(0x0110, "X"),
                         pointer(0x8769, {octets(tag_maker_note, kUndefined, noise(90, 1)),
                                          text(0xA004, "sound.wav")}),
                         text(0xE000, "last")})});
      // The entry's offset field follows its tag, type (7) and count (90).
      const Bytes head = {0x92, 0x7C, 0, 7, 0, 0, 0, 90};
      const auto at = std::search(tiff.begin(), tiff.end(), head.begin(), head.end());
      ASSERT_NE(at, tiff.end());
      put(tiff, static_cast<std::size_t>(at - tiff.begin()) + 8, offset, 4, true);
      const Reading reading = read_image(jpeg({app1_exif(tiff), picture()}));
      EXPECT_GE(reading.image->field_count, 2U);
      EXPECT_TRUE(reading.image->incomplete || reading.image->field_count >= 5U);
      EXPECT_LE(reading.image->ifd_count, 250);
    }
  }
}

}  // namespace
}  // namespace tagmend::test
