// Maker notes that are not as their layout says, or hold what no field tells of: nothing of them is
// lost.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/maker_cameras.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

struct PrefixCase {
  std::uint32_t layout;  ///< chosen by make and model
  std::string begins;    ///< instead of the layout's own prefix
  std::string out, err;
  bool is_read;  ///< whether the IFD behind it is still looked for
};

void check_prefix(const PrefixCase& wanted) {
  SCOPED_TRACE(wanted.begins);
  const std::vector<Camera> all = cameras();
  Note note = note_of(all[wanted.layout], true, false);
  note.fields.clear();
  Chain chain = photo_of(note);
  Ifd ifd = ifd_of_note(note);
  ifd.entries = {text(0x0002, "within"), text(0x0007, "the note")};
  ifd.header = bytes_of(wanted.begins);
  set(exif(chain), maker_note(ifd));
  const Bytes source = source_photo(true, chain);
  Chain changed = with_artist(chain, "x");
  if (!wanted.is_read) {
    // The bytes from the note's beginning to the end of its IFD, which lies at the end.
    const std::size_t size = ifd.header.size() + layout::table_size(ifd);
    const Bytes value = part_of(source, position_of(source, ifd.header), size);
    set(exif(changed), octets(0x927C, kUndefined, value));
  }
  const Bytes expected = written_photo(true, changed);
  for (const bool quiet : {false, true}) {
    const Sandbox sandbox({{"photo.jpg", source}});
    expect_outcome(run(sandbox, {quiet ? "-bq" : "-b", "-a", "artist=x", "photo.jpg"}), 0,
                   wanted.out, quiet ? "" : wanted.err);
    expect_files(sandbox, {{"photo.jpg", expected}});
  }
}

TEST(UnusualMakerNote, PrefixesThatDoNotFit) {
  const std::string pentax =
      "Warning: Unrecognised Pentax Maker Note format. Maker note will not be interpretted\n";
  const std::string nikon =
      "Warning: Unrecognised Nikon Maker Note format. Maker note will not be interpretted\n";
  const auto wrong = [](std::uint32_t layout, const std::string& begins, const std::string& shown) {
    return PrefixCase{layout, begins, "buf_p=0x" + shown + "\n",
                      "Warning: " + cameras()[layout].make + " Maker Note prefix is incorrect.\n",
                      true};
  };
  const PrefixCase cases[] = {
      {3, "AOC\0XX"s, "", pentax, false},
      {3, "PENTAX"s, "", pentax, false},
      {27, "Nikon\0\3\0\0\0"s, "", nikon, false},
      {28, "Nikon"s, "", nikon, false},
      wrong(2, "FujiFilm\x0C\0\0\0"s, "46 75 6a 69 46 69 6c 6d"),
      wrong(4, "AOC\0MM"s, "41 4f 43 00 4d 4d 00 02"),
      wrong(7, "EPSON\0\2\0"s, "45 50 53 4f 4e 00 02 00"),
      wrong(8, "OLYMP\0\2\0"s, "4f 4c 59 4d 50 00 02 00"),
      wrong(9, "OLYMPUS "s, "4f 4c 59 4d 50 55 53 20"),
      wrong(10, "OLYMP\0\2\0"s, "4f 4c 59 4d 50 00 02 00"),
      wrong(11, "OLYMP\0\1\0"s, "4f 4c 59 4d 50 00 01 00"),
      wrong(12, "OLYMP\0\2\0"s, "4f 4c 59 4d 50 00 02 00"),
      wrong(17, "QVC\0\0\1"s, "51 56 43 00 00 01 00 02"),
      wrong(32, "PANASONIC\0\0\0"s, "50 41 4e 41 53 4f 4e 49"),
      wrong(33, "Ricoh\0\0\0"s, "52 69 63 6f 68 00 00 00"),
  };
  for (const PrefixCase& wanted : cases) {
    check_prefix(wanted);
  }
}

// Only the first IFD of a note has the maker's header in front of it; what stands behind it is
// linked.
TEST(UnusualMakerNote, IfdsBehindItsFirst) {
  const auto words = [](const Numbers& numbers) {
    return layout::value_bytes(shorts(0, numbers), true);
  };
  const Bytes start = words({0x4D4D, 42, 0, 8});
  const Bytes make = bytes_of("OLYMPUS OPTICAL CO.,LTD\0"s);
  const auto exif_and_note = [&words](std::uint32_t note, std::uint32_t second) {
    return joined({words({1, 0x927C, 7, 0, 44, 0, note, 0, 0}), bytes_of("OLYMP\0\1\0"s),
                   words({1, 0x0207, 2, 0, 4, 0x6162, 0x6300, 0, second}),
                   words({1, 0xABCD, 3, 0, 1, 7, 0, 0, 0})});
  };
  const Bytes source = joined({start, words({3,      0x010F, 2,      0, 24, 0, 50, 0x0110, 2, 0, 4,
                                             0x432D, 0x3100, 0x8769, 4, 0,  1, 0,  74,     0, 0}),
                               make, exif_and_note(92, 118)});
  const Bytes edited = joined(
      {start, words({4, 0x010F, 2, 0,      24, 0,      62, 0x0110, 2, 0, 4,  0x432D, 0x3100, 0x013B,
                     2, 0,      2, 0x7800, 0,  0x8769, 4,  0,      1, 0, 86, 0,      0}),
       make, exif_and_note(104, 130)});
  check_edit({{"-b", "-a", "artist=x"}, source, edited}, "photo.tif");
}

// The notes of a file are written in one layout: one that differs from the first is a value.
TEST(UnusualMakerNote, ASecondNoteOfAnotherLayout) {
  const std::vector<Camera> all = cameras();
  const auto note = [&all](std::size_t layout, bool big) {
    Ifd ifd = ifd_of_note(note_of(all[layout], true, big));
    ifd.entries = {text(0x0002, layout == 30 ? "first" : "other")};
    return ifd;
  };
  for (const bool same : {true, false}) {
    const Ifd second = note(same ? 30 : 31, false);
    Chain chain = photo_of(note_of(all[30], true, true));
    set(exif(chain), maker_note(note(30, true)));
    set(chain[1], pointer(0x8769, {rationals(0x829A, {1, 9}), maker_note(second)}));
    const Bytes source = source_photo(true, chain);
    Chain changed = with_artist(chain, "x");
    Files after;
    if (!same) {
      // Its prefix, a TIFF header, the IFD and its text.
      const std::size_t size = second.header.size() + 8 + layout::table_size(second) + 6;
      const Bytes value = part_of(source, position_of(source, second.header), size);
      set(nested(changed[1], 0x8769), octets(0x927C, kUndefined, value));
      after["photo-be.jpg"] = source;
    }
    after["photo.jpg"] = written_photo(true, changed);
    const Sandbox sandbox({{"photo.jpg", source}});
    EXPECT_EQ(run(sandbox, {"-b", "-a", "artist=x", "photo.jpg"}).status, 0);
    expect_files(sandbox, after);
  }
}

TEST(UnusualMakerNote, ANoteThatLostItsOwnFieldsKeepsItsByteOrder) {
  const std::vector<Camera> all = cameras();
  for (const bool big_file : {false, true}) {
    for (const bool big_note : {false, true}) {
      const Note note = note_of(all[31], big_file, big_note);
      Ifd ifd = ifd_of_note(note);
      const Entry thumbnail = *find(ifd, 0x0011);
      ifd.entries = {text(0x0004, "FINE"), thumbnail};
      Chain chain = photo_of(note);
      set(exif(chain), maker_note(ifd));
      const Bytes source = source_photo(big_file, chain);
      drop(ifd, 0x0004);
      set(exif(chain), maker_note(ifd));
      check_edit({{"-b", "-r", "n3-quality"}, source, written_photo(big_file, chain)});
    }
  }
}

// A preview lies outside of all fields. Where one is, and how long.
TEST(UnusualMakerNote, PreviewsThatAreNotMovedStayInTheBackup) {
  struct {
    std::uint32_t layout;
    std::uint16_t offset_tag, length_tag;
  } const rows[] = {{3, 0x0004, 0x0003}, {21, 0x0088, 0x0089}, {22, 0x0088, 0x0089}};
  const std::vector<Camera> all = cameras();
  for (const auto& row : rows) {
    for (const std::uint32_t offset : {0U, 40U, 0x00FFFFFFU}) {  // none, in the file, behind it
      SCOPED_TRACE(std::to_string(row.layout) + " " + std::to_string(offset));
      const Note note = note_of(all[row.layout], true, false);
      Ifd ifd = ifd_of_note(note);
      ifd.entries = {};
      set(ifd, {longs(row.offset_tag, {offset}), longs(row.length_tag, {9})});
      Chain chain = photo_of(note);
      set(exif(chain), maker_note(ifd));
      check_edit({.arguments = {"-b", "-a", "artist=x"},
                  .source = source_photo(true, chain),
                  .expected = written_photo(true, with_artist(chain, "x")),
                  .kept = offset == 40});
    }
  }
}

// A note of no known layout is moved as it is; offsets from the TIFF header then miss its values.
TEST(UnusualMakerNote, AnUnknownNoteWithOffsetsFromOutsideStaysInTheBackup) {
  for (const bool from_header : {false, true}) {
    Bytes note = joined({bytes_of("SOMEONE \0\0\0\0"s), big16(1), big16(0x2000), big16(kAscii),
                         big32(6), big32(30), big32(0), bytes_of("inner\0"s)});
    Chain chain = camera();
    set(exif(chain), octets(0x927C, kUndefined, note));
    if (from_header) {
      const Bytes built = source_photo(true, chain);
      const std::size_t base = position_of(built, bytes_of("Exif\0\0"s)) + 6;
      put(note, 22, static_cast<std::uint32_t>(position_of(built, note) - base + 30), 4, true);
      set(exif(chain), octets(0x927C, kUndefined, note));
    }
    check_edit({.arguments = {"-b", "-a", "artist=x"},
                .source = source_photo(true, chain),
                .expected = written_photo(true, with_artist(chain, "x")),
                .kept = from_header});
  }
}

/// The note is carried over as it is, also once an edit has put other things around it.
void check_value(const Camera& camera, const Bytes& content) {
  SCOPED_TRACE(camera.layout);
  Chain chain = photo_of(note_of(camera, true, false));
  set(exif(chain), octets(0x927C, kUndefined, content));
  const Bytes source = source_photo(true, chain);
  const Bytes expected = written_photo(true, with_artist(chain, "x"));
  for (const Bytes& before : {source, expected}) {
    const Sandbox sandbox({{"photo.jpg", before}});
    EXPECT_EQ(run(sandbox, {"-b", "-a", "artist=x", "photo.jpg"}).status, 0);
    expect_files(sandbox, {{"photo.jpg", expected}});
  }
}

TEST(UnusualMakerNote, WhatIsNoNoteOfItsLayoutKeepsItsBytes) {
  const Bytes other_makers = joined({bytes_of("Another maker's note"), Bytes(40, 0xFF)});
  for (const Camera& camera : cameras()) {
    const std::uint32_t layout = camera.layout;
    if (!camera.prefix.empty() && layout != 5 && layout != 6 && (layout < 29 || layout > 31)) {
      check_value(camera, other_makers);
    }
    check_value(camera, {1, 2, 3, 4});                                     // in the entry
    check_value(camera, joined({bytes_of(camera.prefix), Bytes(40, 0)}));  // without entries
    // Nor a place, behind none, where the new file has its IFD0.
    check_value(camera, joined({bytes_of(camera.prefix), {0, 0, 0, 0, 0, 8, 0, 0, 0}}));
    check_value(camera, joined({bytes_of(camera.prefix), {0, 0, 8, 0, 0, 0, 7, 0, 0}}));
  }
  check_value(cameras()[1], {0, 5, 1, 2, 3, 4, 5, 6});  // of few entries
}

}  // namespace
}  // namespace tagmend::test
