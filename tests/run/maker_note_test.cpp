// Maker notes of every layout: read, shown, edited elsewhere, edited by name and read again. The
// bytes expected are those of the builders, so every offset in a new note is checked.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/image_builder.h"
#include "common/maker_cameras.h"
#include "common/run_tagmend.h"
#include "run/shown_fields.h"

namespace tagmend::test {
namespace {

using namespace std::string_literals;

// ---- The cameras of the table, in both byte orders ----

template <typename Check>
void for_every_note(Check check) {
  for (const Camera& camera : cameras()) {
    for (const bool big_file : {false, true}) {
      for (const bool big_header : {false, true}) {
        if (big_header && camera.order != NoteOrder::own_header) {
          continue;
        }
        SCOPED_TRACE("layout " + std::to_string(camera.layout) + " " + camera.make + "/" +
                     camera.model + (big_file ? " MM" : " II") + (big_header ? " MM" : ""));
        check(note_of(camera, big_file, big_header), big_file);
      }
    }
  }
}

// ---- Reading ----

/// What is shown of a file's maker note: the lines between its neighbours in the EXIF IFD.
Texts shown_note(const Bytes& file) {
  const Texts lines = shown(file, "photo.jpg");
  const auto first = std::ranges::find(lines, "date-taken=2004:05:01 10:20:30");
  const auto last = std::ranges::find(lines, "comment=a word");
  if (first == lines.end() || last == lines.end()) {
    ADD_FAILURE() << ::testing::PrintToString(lines);
    return {};
  }
  return {first + 1, last};
}

std::size_t position(const Bytes& file, const Bytes& wanted) {
  const auto place = std::search(file.begin(), file.end(), wanted.begin(), wanted.end());
  EXPECT_NE(place, file.end());
  return static_cast<std::size_t>(place - file.begin());
}

/// The nickname of the last row of a tag: it names a field whose own kind has no rows.
std::string last_nickname(std::uint32_t tag) {
  std::string name;
  for (const FieldDef& def : field_table_defs) {
    if (def.tag == tag) {
      name = def.nickname;
    }
  }
  return name;
}

/// The fields of the Nikon thumbnail IFD. Its offset counts from where those of the note do.
Texts thumbnail_lines(const Note& note, const Bytes& file) {
  const std::size_t base =
      note.camera->base == Base::inner
          ? position(file, bytes_of(note.camera->prefix)) + note.camera->prefix.size()
          : position(file, bytes_of("Exif\0\0"s)) + 6;
  const Bytes thumbnail = nikon_thumbnail_ifd().thumbnail;
  return {last_nickname(0x0201) + "=" + std::to_string(position(file, thumbnail) - base),
          last_nickname(0x0202) + "=" + std::to_string(thumbnail.size())};
}

Texts expected_lines(const Note& note, const Bytes& file) {
  Texts lines;
  if (!note.camera->has_ifd()) {
    return {"maker-note=" + digits_of(noise(37, 4), false)};
  }
  if (note.camera->kind == IfdKind::nikon3) {
    const auto behind = std::ranges::find_if(
        note.fields, [](const NoteField& field) { return field.def->tag > 0x0011; });
    append_lines(lines, {note.fields.begin(), behind});
    const Texts thumbnail = thumbnail_lines(note, file);
    lines.insert(lines.end(), thumbnail.begin(), thumbnail.end());
    append_lines(lines, {behind, note.fields.end()});
    return lines;
  }
  append_lines(lines, note.fields);
  append_lines(lines, note.info);
  return lines;
}

TEST(MakerNote, EditsElsewhereKeepEveryField) {
  for_every_note([](const Note& note, bool big_file) {
    Chain chain = photo_of(note);
    const Bytes source = source_photo(big_file, chain);
    EXPECT_EQ(shown_note(source), expected_lines(note, source));
    set(chain[0], text(0x013B, "x"));
    const Bytes written = written_photo(big_file, chain);
    check_edit({{"-a", "artist=x"}, source, written});
    EXPECT_EQ(shown_note(written), expected_lines(note, written));
  });
}

// ---- Editing by name ----

/// A new value: what is typed and how it is stored.
struct NewField {
  std::string typed;
  Entry entry;
};

/// Another value than the first, where the map has one with a name of its own.
template <typename Map>
Map other_value(const std::vector<Map>& entries) {
  const auto differs = [&](const Map& entry) {
    return std::string_view(entry.nickname) != entries.front().nickname;
  };
  const auto other = std::ranges::find_if(entries, differs);
  return other != entries.end() ? *other : entries.front();
}

NewField new_field(const FieldDef& def, std::uint32_t layout) {
  const bool either = def.data_type == DataType::short_or_long;
  const std::uint16_t type = either ? std::uint16_t{kLong} : notes::stored_type(def);
  NewField field{{}, {static_cast<std::uint16_t>(def.tag), type, {}, {}}};
  if (def.value_map != nullptr) {
    const auto entry = other_value(notes::holding(def.value_map, layout));
    return {entry.nickname, {field.entry.tag, field.entry.type, {entry.value}, {}}};
  }
  if (def.value_map_bytes != nullptr) {
    const auto entry = other_value(notes::holding(def.value_map_bytes, layout));
    field.entry.numbers = Numbers(entry.bytes, entry.bytes + entry.length);
    return {entry.nickname, field.entry};
  }
  if (def.data_type == DataType::string) {
    field.typed = notes::text_for(def, 'N');
    return {field.typed, text(field.entry.tag, field.typed)};
  }
  field.entry.numbers = notes::numbers_for(def, 0x51);
  if (layout::type_size(field.entry.type) == 8) {  // whole numbers over 1
    for (std::size_t i = 0; i < field.entry.numbers.size(); i += 2) {
      field.typed += std::to_string(field.entry.numbers[i]) + " ";
      field.entry.numbers[i + 1] = 1;
    }
    field.typed.pop_back();
  } else {
    field.typed = notes::shown_numbers(def, field.entry.numbers);
  }
  return field;
}

/// A field that is set comes behind the last entry of a smaller tag. Pointers that end the IFD do
/// not count.
void set_by_name(Ifd& ifd, const Entry& entry) {
  drop(ifd, entry.tag);
  auto place = ifd.entries.end();
  bool seen = false;
  for (; place != ifd.entries.begin(); --place) {
    const Entry& before = *(place - 1);
    const bool counts = before.nested.empty() || seen;
    if (counts && before.tag < entry.tag) {
      break;
    }
    seen |= before.nested.empty();
  }
  ifd.entries.insert(place, entry);
}

bool is_first_of_its_name(const FieldDef& def) {
  const auto first = std::ranges::find_if(field_table_defs, [&](const FieldDef& other) {
    return std::string_view(other.nickname) == def.nickname && !other.is_offset;
  });
  return &*first == &def;
}

/// One run that shows all fields of the note through templates in a field of IFD0, then sets all
/// that may be set.
struct EveryField {
  std::string names = {};  ///< "[name]|[name]"
  std::string texts = {};  ///< what they stand for
  Words arguments = {"-a", ""};

  void show(const std::string& name, const std::string& shown) {
    names += (names.empty() ? "[" : "|[") + name + "]";
    texts += (texts.empty() ? "" : "|") + shown;
  }
  void add(const std::string& name, const std::string& typed) {
    const std::string item = name + "=\"" + typed + "\"";
    std::string& list = arguments.back();
    if (list.size() + item.size() > 2000) {
      arguments.insert(arguments.end(), {"-a", item});
    } else {
      list += (list.empty() ? "" : ",") + item;
    }
  }
};

void edit_every_field(EveryField& edits, Ifd& ifd, const std::vector<NoteField>& fields,
                      std::uint32_t layout) {
  for (const NoteField& field : fields) {
    for (const std::string& element : field.elements) {
      const std::size_t end = element.find('=');
      if (element.ends_with("\\n")) {
        continue;
      }
      edits.show(element.substr(0, end), element.substr(end + 1));
    }
    if (!is_first_of_its_name(*field.def)) {
      continue;
    }
    edits.show(field.def->nickname, field.shown);
    if (!field.def->editable) {
      continue;
    }
    const NewField value = new_field(*field.def, layout);
    edits.add(field.def->nickname, value.typed);
    set_by_name(ifd, value.entry);
  }
}

TEST(MakerNote, FieldsAreShownAndSetByName) {
  for_every_note([](const Note& note, bool big_file) {
    if (!note.camera->has_ifd()) {
      return;
    }
    Chain chain = photo_of(note);
    const Bytes source = source_photo(big_file, chain);
    Ifd& ifd = nested(exif(chain), 0x927C);
    EveryField edits;
    edit_every_field(edits, ifd, note.fields, note.camera->layout);
    if (!note.info.empty()) {
      edit_every_field(edits, nested(ifd, 0x2001), note.info, note.camera->layout);
    }
    edits.arguments.insert(edits.arguments.begin(), {"-a", "description=\"" + edits.names + "\""});
    set(chain[0], text(0x010E, edits.texts));
    check_edit({edits.arguments, source, written_photo(big_file, chain)});
  });
}

// What is set is the array.
TEST(MakerNote, ElementsOfArraysAreNotWritten) {
  const Camera camera = cameras()[1];
  const Note note = note_of(camera, true, false);
  const Chain chain = photo_of(note);
  const Bytes source = source_photo(true, chain);
  check_edit({{"-a", "cn-noise-reduct=off"}, source, written_photo(true, chain)});
}

// ---- Values that only some cameras of a maker know ----

TEST(MakerNote, NamedValuesOfSomeLayouts) {
  const struct {
    const char* model;
    Entry stored;
    std::string name, shown, typed;
    Entry written;
  } cases[] = {
      {"QV-2000UX", shorts(1, {2}), "cs-rec-mode", "Panorama", "land", shorts(1, {5})},
      {"QV-8000SX", shorts(1, {7}), "cs-rec-mode", "Panorama", "land", shorts(1, {16})},
      {"QV-8000SX", shorts(1, {2}), "cs-rec-mode", "2", "pa", shorts(1, {7})},
      {"QV-3500EX", shorts(1, {7}), "cs-rec-mode", "7", "single", shorts(1, {1})},
      {"Other", shorts(1, {16}), "cs-rec-mode", "16", "Single Shutter", shorts(1, {1})},
      {"QV-2000UX", shorts(4, {4}), "cs-flash-mode", "Red Eye Reduction", "off", longs(4, {3})},
      {"QV-8000SX", longs(4, {4}), "cs-flash-mode", "Off", "red-eye", longs(4, {5})},
      {"QV-3500EX", shorts(4, {5}), "cs-flash-mode", "Red Eye Reduction", "OF", longs(4, {4})},
      {"Other", longs(4, {4}), "cs-flash-mode", "4", "on", longs(4, {2})},
      {"QV-2000UX", longs(10, {65537}), "cs-digi-zoom", "2X", "off", longs(10, {65536})},
      {"QV-8000SX", longs(10, {262144}), "cs-digi-zoom", "4X", "2", longs(10, {131072})},
  };
  for (const auto& row : cases) {
    for (const bool big : {false, true}) {
      const auto photo = [&](const Entry& field) {
        Chain chain = camera();
        set(chain[0], {text(0x010F, "CASIO"), text(0x0110, row.model)});
        set(exif(chain), maker_note(ifd_of({field, text(0x15, "beside")})));
        return chain;
      };
      Chain changed = photo(row.written);
      set(changed[0], text(0x010E, row.shown));
      check_edit({{"-a", "description=[" + row.name + "]," + row.name + "=" + row.typed},
                  source_photo(big, photo(row.stored)),
                  written_photo(big, changed)});
    }
  }
}

TEST(MakerNote, AValueThatTheLayoutLacksLeavesTheFile) {
  Chain chain = camera();
  set(chain[0], {text(0x010F, "CASIO"), text(0x0110, "QV-3500EX")});
  set(exif(chain), maker_note(ifd_of({longs(10, {65536}), text(0x15, "beside")})));
  expect_untouched({{"photo.jpg", source_photo(true, chain)}},
                   {"-a", "cs-digi-zoom=2x", "photo.jpg"},
                   "Can't add EXIF field Digital Zoom (value '2x'): Invalid field value specified\n"
                   "Error: File photo.jpg: Invalid field value specified\n");
}

TEST(MakerNote, ASizeThatOneMinoltaNamesOtherwise) {
  for (const Camera& camera : cameras()) {
    if (camera.kind != IfdKind::minolta) {
      continue;
    }
    Note note = note_of(camera, true, false);
    Bytes settings(20);
    for (NoteField& field : note.fields) {
      if (field.def->tag == 0x0001) {
        field.entry = octets(0x0001, kUndefined, settings);
      }
    }
    const Texts lines = shown_note(source_photo(true, photo_of(note)));
    const std::string size = camera.layout == 18 ? "2048x1536" : "2560x1920";
    EXPECT_TRUE(std::ranges::count(lines, "mns1-image-dim=" + size) == 1) << camera.layout;
  }
}

// ---- Notes that do not begin as their layout says ----

TEST(MakerNote, PrefixesThatDoNotFit) {
  const std::string pentax =
      "Warning: Unrecognised Pentax Maker Note format. Maker note will not be interpretted\n";
  const std::string nikon =
      "Warning: Unrecognised Nikon Maker Note format. Maker note will not be interpretted\n";
  struct Case {
    std::uint32_t layout;  ///< chosen by make and model
    std::string begins;    ///< instead of the layout's own prefix
    std::string out, err;
    bool is_read;  ///< whether the IFD behind it is still looked for
  };
  const auto wrong = [](std::uint32_t layout, const std::string& begins, const std::string& shown) {
    return Case{layout, begins, "buf_p=0x" + shown + "\n",
                "Warning: " + cameras()[layout].make + " Maker Note prefix is incorrect.\n", true};
  };
  const Case cases[] = {
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
  const std::vector<Camera> all = cameras();
  for (const Case& row : cases) {
    SCOPED_TRACE(row.begins);
    Note note = note_of(all[row.layout], true, false);
    note.fields.clear();
    Chain chain = photo_of(note);
    Ifd ifd = ifd_of_note(note);
    ifd.entries = {text(0x0002, "within"), text(0x0007, "the note")};
    ifd.header = bytes_of(row.begins);
    set(exif(chain), maker_note(ifd));
    const Bytes source = source_photo(true, chain);
    Chain changed = chain;
    set(changed[0], text(0x013B, "x"));
    if (!row.is_read) {
      // The bytes from the note's beginning to the end of its IFD, which lies at the end.
      const auto at =
          source.begin() + static_cast<std::ptrdiff_t>(position(source, bytes_of(row.begins)));
      const auto end =
          at + static_cast<std::ptrdiff_t>(row.begins.size() + layout::table_size(ifd));
      set(exif(changed), octets(0x927C, kUndefined, Bytes(at, end)));
    }
    const Bytes expected = written_photo(true, changed);
    for (const bool quiet : {false, true}) {
      const Sandbox sandbox({{"photo.jpg", source}});
      expect_outcome(run(sandbox, {quiet ? "-bq" : "-b", "-a", "artist=x", "photo.jpg"}), 0,
                     row.out, quiet ? "" : row.err);
      expect_files(sandbox, {{"photo.jpg", expected}});
    }
  }
}

// Only the first IFD of a note has the maker's header in front of it; what stands behind it is
// linked.
TEST(MakerNote, IfdsBehindItsFirst) {
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
TEST(MakerNote, ASecondNoteOfAnotherLayout) {
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
    Chain changed = chain;
    set(changed[0], text(0x013B, "x"));
    Files after;
    if (!same) {
      const auto at =
          source.begin() + static_cast<std::ptrdiff_t>(position(source, bytes_of(all[31].prefix)));
      const auto length = all[31].prefix.size() + 8 + layout::table_size(second) + 6;
      set(nested(changed[1], 0x8769),
          octets(0x927C, kUndefined, Bytes(at, at + static_cast<std::ptrdiff_t>(length))));
      after["photo-be.jpg"] = source;
    }
    after["photo.jpg"] = written_photo(true, changed);
    const Sandbox sandbox({{"photo.jpg", source}});
    EXPECT_EQ(run(sandbox, {"-b", "-a", "artist=x", "photo.jpg"}).status, 0);
    expect_files(sandbox, after);
  }
}

/// The note is carried over as it is, also once an edit has put other things around it.
void check_value(const Camera& camera, const Bytes& content) {
  SCOPED_TRACE(camera.layout);
  Chain chain = photo_of(note_of(camera, true, false));
  set(exif(chain), octets(0x927C, kUndefined, content));
  const Bytes source = source_photo(true, chain);
  set(chain[0], text(0x013B, "x"));
  const Bytes expected = written_photo(true, chain);
  for (const Bytes& before : {source, expected}) {
    const Sandbox sandbox({{"photo.jpg", before}});
    EXPECT_EQ(run(sandbox, {"-b", "-a", "artist=x", "photo.jpg"}).status, 0);
    expect_files(sandbox, {{"photo.jpg", expected}});
  }
}

TEST(MakerNote, ANoteThatLostItsOwnFieldsKeepsItsByteOrder) {
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
TEST(MakerNote, PreviewsThatAreNotMovedStayInTheBackup) {
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
      const Bytes source = source_photo(true, chain);
      set(chain[0], text(0x013B, "x"));
      EditCase edit{{"-b", "-a", "artist=x"}, source, written_photo(true, chain)};
      edit.kept = offset == 40;
      check_edit(edit);
    }
  }
}

// A note of no known layout is moved as it is; offsets from the TIFF header then miss its values.
TEST(MakerNote, AnUnknownNoteWithOffsetsFromOutsideStaysInTheBackup) {
  for (const bool from_header : {false, true}) {
    Bytes note = joined({bytes_of("SOMEONE \0\0\0\0"s), big16(1), big16(0x2000), big16(kAscii),
                         big32(6), big32(30), big32(0), bytes_of("inner\0"s)});
    Chain chain = camera();
    set(exif(chain), octets(0x927C, kUndefined, note));
    if (from_header) {
      const Bytes built = source_photo(true, chain);
      const std::size_t base = position(built, bytes_of("Exif\0\0"s)) + 6;
      put(note, 22, static_cast<std::uint32_t>(position(built, note) - base + 30), 4, true);
      set(exif(chain), octets(0x927C, kUndefined, note));
    }
    const Bytes source = source_photo(true, chain);
    set(chain[0], text(0x013B, "x"));
    EditCase edit{{"-b", "-a", "artist=x"}, source, written_photo(true, chain)};
    edit.kept = from_header;
    check_edit(edit);
  }
}

TEST(MakerNote, WhatIsNoNoteOfItsLayoutKeepsItsBytes) {
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
