#include "read/maker_note.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "reading.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

// The whole runs have a camera of every layout; these fit none, or another than it seems.
TEST(MakerNote, MakeAndModelChooseTheLayout) {
  const struct {
    std::optional<std::string_view> make;
    std::string_view model;
    std::uint32_t kind;
  } cases[] = {
      {"canon", "anything", 0},
      {"FUJIFILM", "", 2},
      {"PENTAX Corporation", "K10D", 4},
      {"OLYMPUS OPTICAL CO.,LTD", "E-10", 12},
      {"OLYMPUS OPTICAL CO.,LTD", "E-20", 12},
      {"OLYMPUS CORPORATION", "C8080WZ", 0},
      {"NIKON", "NIKON D1H", 27},
      {"NIKON CORPORATION", "NIKON D1", 28},
      {"Generic", "NeVer MaTcH", 0},
      {"SONY", "DSC", 0},
      {std::nullopt, "QV-3500EX", 15},
      {std::nullopt, "E5000", 23},
      {std::nullopt, "", 1},
      {std::nullopt, "no such model", 0},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(find_maker(test.make, test.model), test.kind) << test.model;
  }
}

Bytes photo(bool big_endian, std::string_view make, std::string_view model, const Entry& note) {
  const Ifd main = ifd_of({text(0x010F, make), text(0x0110, model), pointer(0x8769, {note})});
  return jpeg({source_exif(big_endian, {main})});
}

const std::string pentax_warning =
    "Warning: Unrecognised Pentax Maker Note format. Maker note will not be interpretted\n";
const std::string nikon_warning =
    "Warning: Unrecognised Nikon Maker Note format. Maker note will not be interpretted\n";

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

Ifd nikon_note(const Entry& entry) {
  Ifd note = ifd_of({entry});
  note.header = bytes_of("Nikon\0\2\0\0\0"s);
  note.base = Base::inner;
  return note;
}

// A note in front of a later model would be written by another layout than it is read by.
TEST(MakerNote, ALaterModelDoesNotChangeTheLayoutOfANoteThatWasRead) {
  const Ifd second = ifd_of({text(0x010F, "NIKON CORPORATION"), text(0x0110, "NIKON D70")});
  Ifd main = second;
  main.entries.push_back(pointer(0x8769, {maker_note(nikon_note(text(0xE000, "in the note")))}));
  const Reading reading = read_image(jpeg({source_exif(true, {main, second})}));
  EXPECT_EQ(reading.image->maker_note_kind, 30U);
  EXPECT_EQ(reading.image->field_count, 5U);
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
