// Maker notes of every layout: read, shown, edited elsewhere, edited by name and read again. The
// bytes expected are those of the builders, so every offset in a new note is checked.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/maker_cameras.h"
#include "common/run_tagmend.h"
#include "common/tiff_builder.h"
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
          ? position_of(file, bytes_of(note.camera->prefix)) + note.camera->prefix.size()
          : position_of(file, bytes_of("Exif\0\0"s)) + 6;
  const Bytes thumbnail = nikon_thumbnail_ifd().thumbnail;
  return {last_nickname(0x0201) + "=" + std::to_string(position_of(file, thumbnail) - base),
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
    const Chain chain = photo_of(note);
    const Bytes source = source_photo(big_file, chain);
    EXPECT_EQ(shown_note(source), expected_lines(note, source));
    const Bytes written = written_photo(big_file, with_artist(chain, "x"));
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

}  // namespace
}  // namespace tagmend::test
