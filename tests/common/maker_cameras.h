// Cameras of every layout of maker note, and what their notes hold: each field of the layout's kind
// with a value of its type, the text by which the program shows it, and a new value to type.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "common/camera.h"
#include "common/jpeg_builder.h"
#include "dictionary/field_def.h"

namespace tagmend::test {

enum class NoteOrder { file, big, little, own_header };

struct Camera {
  std::uint32_t layout;  ///< row of the maker table
  std::string make, model;
  IfdKind kind = IfdKind::unknown;  ///< of the note's IFD; unknown when it is a value
  std::string prefix = {};
  Base base = Base::parent;
  NoteOrder order = NoteOrder::file;

  [[nodiscard]] bool has_ifd() const { return kind != IfdKind::unknown; }
};

/// A camera for each of the 36 rows, in their order. Rows that an earlier one hides from the choice
/// by make and model are reached by the bytes that the note begins with.
inline std::vector<Camera> cameras() {
  using namespace std::string_literals;
  using enum IfdKind;
  const std::string pentax_make = "PENTAX Corporation", olympus_make = "OLYMPUS OPTICAL CO.,LTD";
  const std::string minolta_make = "Minolta Co., Ltd.", nikon_make = "NIKON CORPORATION";
  const std::string olympus_1 = "OLYMP\0\1\0"s, any = "Any";
  return {
      {0, "Generic", "NeVer MaTcH"},
      {1, "Canon", any, canon},
      {2, "FUJIFILM", any, fujifilm, "FUJIFILM\x0C\0\0\0"s, Base::start, NoteOrder::little},
      {3, pentax_make + " ", any, pentax, "AOC\0\0\0"s},
      {4, pentax_make, any, pentax, "AOC\0\0\0"s},
      {5, pentax_make + " ", any, pentax, "AOC\0II"s, Base::parent, NoteOrder::little},
      {6, pentax_make + " ", any, pentax, "AOC\0MM"s, Base::parent, NoteOrder::big},
      {7, "SEIKO EPSON CORP.", any, epson, "EPSON\0\1\0"s},
      {8, olympus_make, "C920Z,D450Z", olympus1, olympus_1},
      {9, olympus_make, "E-20,E-20N,E-20P", olympus2, olympus_1},
      {10, olympus_make, "E-10        ", olympus2, olympus_1},
      {11, "OLYMPUS CORPORATION    ", any, olympus2, "OLYMP\0\2\0"s},
      {12, olympus_make, any, olympus3, olympus_1},
      {13, "CASIO", "QV-2000UX", casio},
      {14, "CASIO", "QV-8000SX", casio},
      {15, "CASIO", "QV-3500EX", casio},
      {16, "CASIO", any, casio},
      {17, "CASIO COMPUTER CO.,LTD ", any, casio, "QVC\0\0\0"s},
      {18, minolta_make, "DiMAGE 5", minolta},
      {19, minolta_make, "DiMAGE 7Hi", minolta},
      {20, minolta_make, "DiMAGE G500"},
      {21, "KONICA MINOLTA ", any, minolta},
      {22, minolta_make, any, minolta},
      {23, "NIKON", "E5000", nikon3},
      {24, nikon_make, "NIKON D1 ", nikon3},
      {25, nikon_make, "NIKON D1H", nikon3},
      {26, nikon_make, "NIKON D1X", nikon3},
      {27, "NIKON", any, nikon2},
      {28, nikon_make, any, nikon2},
      {29, "NIKON", any, nikon1, "Nikon\0\1\0"s},
      {30, nikon_make, any, nikon3, "Nikon\0\2\0\0\0"s, Base::inner, NoteOrder::own_header},
      {31, nikon_make, any, nikon3, "Nikon\0\2\x10\0\0"s, Base::inner, NoteOrder::own_header},
      {32, "Panasonic", any, panasonic, "Panasonic\0\0\0"s},
      {33, "RICOH      ", any, ricoh, "Ricoh\xAA\0\0"s},
      {34, "Not YeT Determined", "Not YeT Determined"},
      {0, "End of Table Mark", any},
  };
}

// ---- Values ----

using Texts = std::vector<std::string>;

struct NoteField {
  const FieldDef* def;
  Entry entry;
  std::string shown;    ///< display text
  Texts elements = {};  ///< "nickname=text" of the fields made of an array's elements
};

/// A value whose text the type alone does not give. Numbers are those of the entry, or, of a field
/// of bytes, 32-bit numbers that it holds.
struct SpecialValue {
  IfdKind kind;
  std::uint32_t tag;
  Numbers numbers;
  std::string shown = {};  ///< empty for the text of the type
  Texts elements = {};
};

inline std::vector<SpecialValue> special_values() {
  using enum IfdKind;
  const Numbers olymp = {'O', 'L', 'Y', 'M', 'P'};
  return {
      {canon,
       0x01,
       {10, 2, 100, 5},
       "",
       {"cn-macro-mode=Normal", "cn-self-timer=10.0sec\\n", "cn-quality=Superfine"}},
      {canon, 0x04, {20, 0, 0, 0, 0, 0, 0, 2, 0, 3}, "", {"cn-white-bal=Cloudy", "cn-burst-seq=3"}},
      {canon, 0x08, {1234567}, "123-4567"},
      {canon, 0x0C, {0x00AB0007}, "00AB00007"},
      {canon, 0x0F, {6, 0x0101, 0x0203}, "", {"cn-noise-reduct=On", "cn-ae-lock=AE+release/AE+AF"}},
      {casio, 0x11, {0x01020102}, "258 (0x102)"},
      {epson, 0x0209, olymp, "OLYMP"},
      {minolta,
       0x01,
       {9, 1, 2},
       "",
       {"mns1-exp-mode=Aperture Priority", "mns1-flash-mode=Rear Flash Sync"}},
      {minolta, 0x03, {9, 3}, "", {"mns2-0003-1=9", "mns2-exp-mode=Manual"}},
      {nikon1, 0x0A, {25, 10}, "2.5x"},
      {nikon2, 0x02, {0, 200}, "200"},
      {nikon2, 0x85, {25, 10}, "2.5"},
      {nikon2, 0x86, {25, 10}, "2.5x"},
      // Four 16-bit numbers are read where four bytes are stored; the rest is the next entry's
      // head.
      {nikon2, 0x88, {0, 0, 0, 0}, "0,0,148,8"},
      {nikon3, 0x0E, {6, 1, 12, 0}, "0.50"},
      {olympus1, 0x0200, {3, 2, 1}, "Panorama, 2, Left to Right"},
      {olympus1, 0x0209, olymp, "OLYMP"},
      {olympus3, 0x0200, {3, 2, 1}, "Panorama, 2, Left to Right"},
      {olympus3, 0x0209, olymp, "OLYMP"},
      {panasonic, 0x23, {0xFFFD}, "-1.00"},
      {panasonic, 0x24, {2}, "0.67"},
  };
}

namespace notes {

inline bool is_bytes(DataType type) {
  return type == DataType::unsigned_byte || type == DataType::signed_byte ||
         type == DataType::undefined;
}

/// How many values a field gets that may have any number: more than fit into its entry.
inline std::uint32_t some(const FieldDef& def) {
  if (def.count != 0) {
    return def.count;
  }
  return is_bytes(def.data_type) || def.data_type == DataType::string ? 7 : 3;
}

/// Numbers whose bytes all differ, so that a byte order that was missed shows.
inline Numbers numbers_for(const FieldDef& def, std::uint32_t seed) {
  Numbers numbers;
  for (std::uint32_t i = 0; i < some(def); ++i) {
    const std::uint32_t small = 0x0102 + 0x1D * def.tag + 0x0301 * i + seed;
    const std::uint32_t large = 0x01020304 + 0x010D * def.tag + 0x030201 * i + seed;
    switch (def.data_type) {
      case DataType::unsigned_short:
        numbers.push_back(small & 0xFFFF);
        break;
      case DataType::signed_short:
        numbers.push_back(0xFFFF - (small & 0x0FFF));
        break;
      case DataType::unsigned_rational:
      case DataType::signed_rational:
        numbers.insert(numbers.end(), {large & 0xFFFF, 4});
        break;
      case DataType::short_or_long:
        numbers.push_back(small & 0x7FFF);
        break;
      default:
        numbers.push_back(is_bytes(def.data_type) ? small & 0xFF : large);
    }
  }
  return numbers;
}

inline std::string text_for(const FieldDef& def, char letter) {
  std::string text(some(def) - 1, letter);
  return text;
}

/// The type in which a field is stored; SHORT or LONG by turns where both are allowed.
inline std::uint16_t stored_type(const FieldDef& def) {
  if (def.data_type != DataType::short_or_long) {
    return static_cast<std::uint16_t>(def.data_type);
  }
  return def.tag % 2 == 0 ? kShort : kLong;
}

/// Numbers as the type alone shows them.
inline std::string shown_numbers(const FieldDef& def, const Numbers& numbers) {
  std::string all;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    char text[32];
    if (is_bytes(def.data_type)) {
      std::snprintf(text, sizeof text, "%02x", numbers[i]);
    } else if (def.data_type == DataType::signed_short) {
      std::snprintf(text, sizeof text, "%d", static_cast<std::int16_t>(numbers[i]));
    } else if (layout::type_size(stored_type(def)) == 8) {
      std::snprintf(text, sizeof text, "%.2f", numbers[i] / 1.0 / numbers[i + 1]);
      ++i;
    } else {
      std::snprintf(text, sizeof text, "%d", static_cast<std::int32_t>(numbers[i]));
    }
    if (!all.empty() && !is_bytes(def.data_type)) {
      all += ' ';
    }
    all += text;
  }
  return all;
}

/// The entries of a value map that hold in a layout.
template <typename Map>
std::vector<Map> holding(const Map* map, std::uint32_t layout) {
  std::vector<Map> entries;
  for (; map->nickname != nullptr; ++map) {
    if (map->layout == 0 || map->layout == layout) {
      entries.push_back(*map);
    }
  }
  return entries;
}

inline NoteField plain_field(const FieldDef& def, std::uint32_t layout) {
  NoteField field{&def, {static_cast<std::uint16_t>(def.tag), stored_type(def), {}, {}}, {}};
  if (def.value_map != nullptr) {
    const auto entry = holding(def.value_map, layout).front();
    field.entry.numbers = {entry.value};
    field.shown = entry.description;
  } else if (def.value_map_bytes != nullptr) {
    const auto entry = holding(def.value_map_bytes, layout).front();
    field.entry.numbers = Numbers(entry.bytes, entry.bytes + entry.length);
    field.shown = entry.description;
  } else if (def.data_type == DataType::string) {
    field.shown = text_for(def, 'o');
    field.entry = text(field.entry.tag, field.shown);
  } else {
    field.entry.numbers = numbers_for(def, 0);
    field.shown = shown_numbers(def, field.entry.numbers);
  }
  return field;
}

inline NoteField field_of(const FieldDef& def, std::uint32_t layout, bool big_endian) {
  NoteField field = plain_field(def, layout);
  for (const SpecialValue& value : special_values()) {
    if (value.kind != def.ifd_kind || value.tag != def.tag) {
      continue;
    }
    field.entry.numbers = value.numbers;
    if (is_bytes(def.data_type) && !value.elements.empty()) {
      const Bytes bytes = layout::value_bytes(longs(0, value.numbers), big_endian);
      field.entry.numbers = Numbers(bytes.begin(), bytes.end());
    }
    field.elements = value.elements;
    field.shown = value.shown.empty() ? shown_numbers(def, field.entry.numbers) : value.shown;
  }
  return field;
}

}  // namespace notes

/// Every field of a kind that stands in an IFD, each tag once, in their order there.
inline std::vector<NoteField> fields_of_kind(IfdKind kind, std::uint32_t layout, bool big_endian) {
  std::vector<NoteField> fields;
  for (const FieldDef& def : field_table_defs) {
    const bool is_known =
        std::ranges::any_of(fields, [&](const auto& f) { return f.def->tag == def.tag; });
    if (def.ifd_kind == kind && def.tag <= 0xFFFF && !def.is_offset && !is_known) {
      fields.push_back(notes::field_of(def, layout, big_endian));
    }
  }
  std::ranges::sort(fields, {}, [](const NoteField& field) { return field.def->tag; });
  return fields;
}

// ---- Files ----

/// A camera's note as it stands in one file.
struct Note {
  const Camera* camera;
  bool big_endian;  ///< byte order of the note
  std::vector<NoteField> fields;
  std::vector<NoteField> info;  ///< of the Ricoh camera information
};

inline Note note_of(const Camera& camera, bool big_file, bool big_header) {
  const bool big = camera.order == NoteOrder::file         ? big_file
                   : camera.order == NoteOrder::own_header ? big_header
                                                           : camera.order == NoteOrder::big;
  Note note{&camera, big, {}, {}};
  if (camera.has_ifd()) {
    note.fields = fields_of_kind(camera.kind, camera.layout, big);
  }
  if (camera.kind == IfdKind::ricoh) {
    note.info = fields_of_kind(IfdKind::ricoh_info, camera.layout, big);
  }
  return note;
}

/// Its thumbnail is that of the Nikon notes.
inline Ifd nikon_thumbnail_ifd() {
  Ifd ifd = ifd_of({image_locator(0x0201, kLong), image_locator(0x0202, kLong)});
  ifd.thumbnail = noise(95, 21);
  return ifd;
}

inline Ifd ifd_of_fields(const std::vector<NoteField>& fields) {
  Ifd ifd;
  for (const NoteField& field : fields) {
    ifd.entries.push_back(field.entry);
  }
  return ifd;
}

inline Ifd ifd_of_note(const Note& note) {
  Ifd ifd = ifd_of_fields(note.fields);
  if (note.camera->kind == IfdKind::nikon3) {
    set(ifd, pointer(0x0011, std::vector<Ifd>{nikon_thumbnail_ifd()}));
  }
  if (!note.info.empty()) {
    Ifd info = ifd_of_fields(note.info);
    info.header = bytes_of(std::string_view("[Ricoh Camera Info]\0", 20));
    set(ifd, pointer(0x2001, std::vector<Ifd>{info}));
  }
  ifd.header = bytes_of(note.camera->prefix);
  ifd.base = note.camera->base;
  ifd.own_order = note.camera->order != NoteOrder::file;
  ifd.big_endian = note.big_endian;
  return ifd;
}

/// The camera's metadata, with the note in the EXIF IFD; a note that is no IFD is 37 bytes of its
/// own.
inline Chain photo_of(const Note& note) {
  Chain chain = camera();
  set(chain[0], {text(0x010F, note.camera->make), text(0x0110, note.camera->model)});
  if (note.camera->has_ifd()) {
    set(exif(chain), maker_note(ifd_of_note(note)));
  }
  return chain;
}

}  // namespace tagmend::test
