#include "read/maker_note.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "common/jpeg_builder.h"
#include "read/reading.h"

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

// A note in front of a later model would be written by another layout than it is read by.
TEST(MakerNote, ALaterModelDoesNotChangeTheLayoutOfANoteThatWasRead) {
  const Ifd second = ifd_of({text(0x010F, "NIKON CORPORATION"), text(0x0110, "NIKON D70")});
  Ifd main = second;
  Ifd note = ifd_of({text(0xE000, "in the note")});
  note.header = bytes_of("Nikon\0\2\0\0\0"s);
  note.base = Base::inner;
  main.entries.push_back(pointer(0x8769, {maker_note(note)}));
  const Reading reading = read_image(jpeg({source_exif(true, {main, second})}));
  EXPECT_EQ(reading.image->maker_note_kind, 30U);
  EXPECT_EQ(reading.image->field_count, 5U);
}

}  // namespace
}  // namespace tagmend::test
