// Turns the rows of the two dictionaries and of the option table into what the documents say.
#include <array>
#include <set>

#include "cli/options.h"
#include "dictionary/field_def.h"
#include "dictionary/field_runs.h"
#include "encode/encode_special.h"
#include "iptc/iptc_dataset.h"
#include "reference.h"
#include "support/ascii.h"

namespace tagmend::reference {
namespace {

struct GroupRow {
  IfdKind kind;
  const char* heading;
  const char* note;
};

constexpr char maker_note_note[] =
    "Present only in files with a maker note of this kind: none is made for a file without one.";
constexpr char container_note[] =
    "Read and shown in templates; files that hold them are not edited.";

constexpr GroupRow group_rows[] = {
    {IfdKind::camera, "Image (IFD0)", "Every file has these; the IFD is never emptied."},
    {IfdKind::image, "EXIF", "How the picture was taken."},
    {IfdKind::gps, "GPS", "Where the picture was taken."},
    {IfdKind::thumbnail, "Thumbnail (IFD1)", "About the small picture inside the file."},
    {IfdKind::interop, "Interoperability", "Present only in files that have this IFD already."},
    {IfdKind::canon, "Canon maker note", maker_note_note},
    {IfdKind::casio, "Casio maker note", maker_note_note},
    {IfdKind::epson, "Epson maker note", maker_note_note},
    {IfdKind::fujifilm, "Fujifilm maker note", maker_note_note},
    {IfdKind::minolta, "Minolta maker note", maker_note_note},
    {IfdKind::nikon1, "Nikon maker note, type 1", maker_note_note},
    {IfdKind::nikon2, "Nikon maker note, type 2", maker_note_note},
    {IfdKind::nikon3, "Nikon maker note, type 3", maker_note_note},
    {IfdKind::olympus1, "Olympus maker note, type 1", maker_note_note},
    {IfdKind::olympus2, "Olympus maker note, type 2", maker_note_note},
    {IfdKind::olympus3, "Olympus maker note, type 3", maker_note_note},
    {IfdKind::panasonic, "Panasonic maker note", maker_note_note},
    {IfdKind::pentax, "Pentax maker note", maker_note_note},
    {IfdKind::ricoh, "Ricoh maker note", maker_note_note},
    {IfdKind::ricoh_info, "Ricoh camera information", maker_note_note},
    {IfdKind::ricoh_custom, "Ricoh custom fields",
     "Read and shown in templates; they stand in a JPEG segment of their own, which is kept as it "
     "is."},
    {IfdKind::tiff_image, "TIFF image of an EPS file", container_note},
    {IfdKind::canon_raw, "Canon Raw (CRW)", container_note},
};

/// How the values of fields with a form of their own are typed.
struct SpecialForm {
  std::uint32_t tag;
  const char* form;
};

constexpr char coordinate[] =
    "degrees, minutes, seconds (`54 11 30`) or with decimal minutes (`54 11.5`)";
constexpr char utf16_text[] = "text (stored as UTF-16)";

constexpr SpecialForm gps_forms[] = {
    {0x0000, "`2.0.0.0`"}, {0x0002, coordinate}, {0x0004, coordinate},
    {0x0014, coordinate},  {0x0016, coordinate},
};

constexpr SpecialForm other_forms[] = {
    {0x829A, "seconds (`0.5`) or a fraction (`1/125`)"},
    {0x9000, "`0220` or `0210`"},
    {0x9201, "seconds (`0.5`) or a fraction (`1/125`)"},
    {0x9202, "the F-number (`5.6`), from 1 on"},
    {0x9205, "the F-number (`5.6`), from 1 on"},
    {0x9286, "text, up to 1991 bytes"},
    {0x4747, utf16_text},
    {0x9C9B, utf16_text},
    {0x9C9C, utf16_text},
    {0x9C9D, utf16_text},
    {0x9C9E, utf16_text},
    {0x9C9F, utf16_text},
};

const char* special_form(const FieldDef& def) {
  const char* form = nullptr;
  const auto look_in = [&](const auto& table) {
    for (const SpecialForm& row : table) {
      if (row.tag == def.tag) {
        form = row.form;
      }
    }
  };
  def.ifd_kind == IfdKind::gps ? look_in(gps_forms) : look_in(other_forms);
  if ((form != nullptr) != (find_special_encoder(def) != nullptr)) {
    fail(std::string("the forms of special values lack ") + def.nickname);
  }
  return form;
}

std::string type_name(DataType type) {
  if (type == DataType::short_or_long) {
    return "unsigned short or long";
  }
  std::string name = type_names[static_cast<std::size_t>(type)];
  for (char& c : name) {
    c = to_lower(c);
  }
  return name;
}

std::string numbers(std::uint32_t count, const char* one, const char* several) {
  if (count == 1) {
    return one;
  }
  return (count == 0 ? "" : std::to_string(count) + " ") + several;
}

std::string form_by_type(DataType type, std::uint32_t count) {
  switch (type) {
    case DataType::string:
      return count == 0 ? "text" : "text of exactly " + std::to_string(count - 1) + " characters";
    case DataType::unsigned_byte:
    case DataType::signed_byte:
    case DataType::undefined:
      return count == 0 ? "hexadecimal digits, two a byte"
                        : std::to_string(2 * count) + " hexadecimal digits";
    case DataType::unsigned_short:
      return numbers(count, "a number, 0 to 65535", "numbers, 0 to 65535");
    case DataType::signed_short:
      return numbers(count, "a number, -32768 to 32767", "numbers, -32768 to 32767");
    case DataType::unsigned_long:
    case DataType::short_or_long:
      return numbers(count, "a number, 0 to 4294967295", "numbers, 0 to 4294967295");
    case DataType::signed_long:
      return numbers(count, "a number, -2147483648 to 2147483647",
                     "numbers, -2147483648 to 2147483647");
    case DataType::unsigned_rational:
      return numbers(count, "a number such as `72` or `2.8`, not negative",
                     "numbers such as `72` or `2.8`, not negative");
    case DataType::signed_rational:
      return numbers(count, "a number such as `-0.5`", "numbers such as `-0.5`");
    default:
      return "";
  }
}

template <class Entry>
std::vector<ValueName> value_names(const Entry* map) {
  std::vector<ValueName> names;
  for (const Entry* entry = map; entry != nullptr && entry->nickname != nullptr; ++entry) {
    names.push_back({entry->nickname, entry->short_code, entry->description});
  }
  return names;
}

template <class Def>
std::vector<ValueName> values_of(const Def& def) {
  return def.value_map ? value_names(def.value_map) : value_names(def.value_map_bytes);
}

/// Fields of TIFF files that are made of the IPTC datasets, never of a typed value.
bool is_made_from_datasets(const FieldDef& def) {
  return def.ifd_kind == IfdKind::camera && (def.tag == 0x83BB || def.tag == 0x8649);
}

/// Fields that the writer can put into a file or take out of it: those with an IFD entry of their
/// own in a file that may be edited, and a nickname that finds them. (Elements of maker-note arrays
/// live in the entry of their array.)
bool is_writable(const FieldDef& def, std::size_t row) {
  const bool has_entry = def.tag <= 0xFFFF && def.ifd_kind != IfdKind::tiff_image &&
                         def.ifd_kind != IfdKind::canon_raw;
  return has_entry && !def.is_offset && find_field(def.nickname) == static_cast<int>(row);
}

Field describe(const FieldDef& def, std::size_t row) {
  const bool writable = is_writable(def, row);
  Field field{.nickname = def.nickname,
              .description = def.description,
              .type = type_name(def.data_type),
              .count = def.count == 0 ? "any" : std::to_string(def.count),
              .form = {},
              .values = values_of(def),
              .settable = writable && def.editable && !is_made_from_datasets(def),
              .removable = writable};
  if (!field.settable || !field.values.empty()) {
    return field;
  }
  const char* const special = special_form(def);
  if (def.is_date) {
    field.form = "a date, or a date and time";
  } else {
    field.form = special != nullptr ? special : form_by_type(def.data_type, def.count);
  }
  return field;
}

const char* dataset_type_name(DatasetType type) {
  switch (type) {
    case DatasetType::bytes:
      return "bytes";
    case DatasetType::text:
      return "text";
    case DatasetType::number16:
      return "unsigned short";
    case DatasetType::number32:
      return "unsigned long";
    case DatasetType::date:
      return "date";
    case DatasetType::time:
      return "time";
  }
  return "";
}

std::string dataset_form(const IptcDatasetDef& def) {
  switch (def.type) {
    case DatasetType::text: {
      std::string form = "text, up to " + std::to_string(def.max_length) +
                         (def.max_length == 1 ? " byte" : " bytes");
      if (def.max_count > 1) {
        form += " each";
      }
      return form;
    }
    case DatasetType::number16:
      return "a number, 0 to 65535";
    case DatasetType::number32:
      return "a number, 0 to 4294967295";
    case DatasetType::date:
      return "a date";
    case DatasetType::time:
      return "a time";
    case DatasetType::bytes:
      break;
  }
  return "";
}

Field describe(const IptcDatasetDef& def) {
  Field field{.nickname = def.nickname,
              .description = def.description,
              .type = dataset_type_name(def.type),
              .count = def.max_count == 1 ? "1" : "any",
              .form = {},
              .values = values_of(def),
              .settable = false,
              .removable = true};
  const std::string form = dataset_form(def);
  field.settable = def.editable && (!field.values.empty() || !form.empty());
  if (field.settable && field.values.empty()) {
    field.form = form;
  }
  return field;
}

Group iptc_group() {
  Group group{.heading = "IPTC",
              .note =
                  "Captions, keywords and credits. A dataset of count \"any\" takes several "
                  "values, separated by `;` (or the character of `-j`).",
              .fields = {}};
  for (std::size_t row = 1; row < iptc_dataset_count; ++row) {  // row 0 describes unknown datasets
    group.fields.push_back(describe(iptc_datasets[row]));
  }
  return group;
}

struct OptionText {
  char letter;
  const char* description;
  const char* argument;
};

constexpr std::array<OptionText, option_count> option_texts = {{
    {'a', "add or change fields", "field=value list"},
    {'b', "keep no backup", nullptr},
    {'c', "quote character of the lists", "character"},
    {'d', "accepted, without effect", nullptr},
    {'e', "erase a whole block", "block"},
    {'h', "show the usage text", nullptr},
    {'i', "include subdirectories", nullptr},
    {'j', "separator of repeated IPTC values", "character"},
    {'p', "character sets", "character set list"},
    {'q', "no warnings", nullptr},
    {'r', "remove fields", "field list"},
    {'s', "set width and height to those of the image", nullptr},
    {'t', "accepted, ignored with a warning", "number"},
    {'u', "store the comment as UNICODE", nullptr},
    {'v', "show the version", nullptr},
}};

}  // namespace

std::vector<Group> collect_groups() {
  std::vector<Group> groups;
  std::set<IfdKind> described = {IfdKind::unknown};
  for (const GroupRow& row : group_rows) {
    Group group{.heading = row.heading, .note = row.note, .fields = {}};
    const FieldRun run = field_runs[static_cast<std::size_t>(row.kind)];
    for (std::size_t field = run.first; field < run.end; ++field) {
      group.fields.push_back(describe(field_table_defs[field], field));
    }
    groups.push_back(group);
    described.insert(row.kind);
    if (row.kind == IfdKind::interop) {
      groups.push_back(iptc_group());
    }
  }
  for (std::size_t kind = 0; kind < ifd_kind_count; ++kind) {
    const bool has_fields = field_runs[kind].first != field_runs[kind].end;
    if (has_fields && !described.contains(static_cast<IfdKind>(kind))) {
      fail(std::string("no group for ") + ifd_kind_names[kind]);
    }
  }
  return groups;
}

std::vector<Option> collect_options() {
  std::vector<Option> options;
  for (std::size_t i = 0; i < option_count; ++i) {
    const OptionRow& row = option_rows[i];
    const OptionText& text = option_texts[i];
    if (text.letter != row.letter || (text.argument != nullptr) != row.takes_argument) {
      fail(std::string("the option texts lack -") + row.letter);
    }
    options.push_back({row.letter, row.takes_argument, text.description, text.argument});
  }
  return options;
}

}  // namespace tagmend::reference
