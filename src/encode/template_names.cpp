#include "encode/template_names.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "dictionary/field_def.h"
#include "encode/date_time.h"
#include "support/ascii.h"
#include "support/file_names.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// The characters of a fixed array up to its NUL.
template <std::size_t size>
std::string_view text_of(const std::array<char, size>& text) {
  return {text.data(), static_cast<std::size_t>(std::ranges::find(text, '\0') - text.begin())};
}

// The date taken

/// Row of the field that the date taken is read from.
std::uint32_t date_taken_row() {
  for (std::uint32_t row = 0; row < field_table_defs.size(); ++row) {
    const FieldDef& def = field_table_defs[row];
    if (def.is_date && equal_ignoring_case(def.nickname, "date-taken")) {
      return row;
    }
  }
  return 0;
}

/// The text of the last entry of a field; false when the file has none.
bool last_entry_text(const ImageFile& image, std::uint32_t row, std::string_view& text) {
  bool found = false;
  for (const FieldEntry& entry : image.table()) {
    if (entry.def != row) {
      continue;
    }
    text = entry.text.view();
    found = true;
  }
  return found;
}

/// Characters `first` to first + length - 1 of a text, as far as it has them.
std::string_view part_of(std::string_view text, std::size_t first, std::size_t length) {
  return text.substr(std::min(first, text.size()), length);
}

/// Cuts "YYYY:MM:DD HH:MM:SS".
void split_date_text(std::string_view text, DateTakenParts& parts) {
  copy_text(parts.yyyy, part_of(text, 0, 4));
  copy_text(parts.yy, part_of(text, 2, 2));
  copy_text(parts.mm, part_of(text, 5, 2));
  copy_text(parts.dd, part_of(text, 8, 2));
  copy_text(parts.hr, part_of(text, 11, 2));
  copy_text(parts.min, part_of(text, 14, 2));
  copy_text(parts.sec, part_of(text, 17, 2));

  std::string_view digits = text_of(parts.mm);
  digits.remove_prefix(digits.starts_with(' ') ? 1 : 0);  // some cameras write " 5"
  int month = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), month);
  copy_text(parts.mmm, month_name_of(month));
}

/// The parts of the date taken, which are cut when the first of them is asked for.
const DateTakenParts& split_date_taken(ImageFile& image) {
  DateTakenParts& parts = image.date_taken;
  if (parts.computed) {
    return parts;
  }
  parts = {};
  parts.computed = true;
  std::string_view text;
  if (last_entry_text(image, date_taken_row(), text)) {
    split_date_text(text, parts);
  }
  return parts;
}

// File variables

/// Files that stand beside the image: at most 256 characters.
constexpr std::size_t sibling_room = 257;

std::string_view expand_setting(const char* text, std::uint32_t length, NameValue& value,
                                const SubstitutionContext& context) {
  if (context.nested) {
    return {};
  }
  SubstitutionContext inner = context;
  inner.nested = true;
  const std::span<char> room = std::span(value.scratch).first(sibling_room);
  // A template without names is a name too.
  static_cast<void>(expand_template({text, length}, TemplateSection::file, room, inner));
  return text_of(value.scratch);
}

/// A variable: its name, and how its text comes from the file in work.
struct FileVariable {
  const char* name;
  std::string_view (*text)(const SubstitutionContext& context, NameValue& value);
};

std::string_view size_text(const SubstitutionContext& context, NameValue& value) {
  TextBuffer text(value.scratch);
  append_format(text, "%d", static_cast<std::int32_t>(context.image->file_size));
  return text.text();
}

std::string_view thumbnail_name(const SubstitutionContext& context, NameValue& value) {
  return expand_setting(library_settings.thumbnail_template,
                        library_settings.thumbnail_template_length, value, context);
}

std::string_view audio_name(const SubstitutionContext& context, NameValue& value) {
  return expand_setting(library_settings.audio_template, library_settings.audio_template_length,
                        value, context);
}

std::string_view exif_name(const SubstitutionContext& context, NameValue& value) {
  return expand_setting(library_settings.exif_template, library_settings.exif_template_length,
                        value, context);
}

std::string_view backup_name(const SubstitutionContext& context, NameValue& value) {
  SiblingName name{};
  // A name that does not fit is cut: it is only shown here.
  static_cast<void>(name_with_suffix(text_of(context.image->file_name), "-be", name));
  copy_text(value.scratch, text_of(name));
  return text_of(value.scratch);
}

/// A text that the ImageFile holds.
template <auto member>
std::string_view image_text(const SubstitutionContext& context, NameValue&) {
  return text_of(context.image->*member);
}

template <auto part>
std::string_view date_taken_part(const SubstitutionContext& context, NameValue&) {
  return text_of(split_date_taken(*context.image).*part);
}

std::string_view base_name(const SubstitutionContext& context, NameValue&) {
  return file_base_name(text_of(context.image->file_name));
}

std::string_view extension(const SubstitutionContext& context, NameValue&) {
  return file_extension(text_of(context.image->file_name));
}

constexpr FileVariable file_variables[] = {
    {"file-name-full", image_text<&ImageFile::path>},
    {"file-dir", image_text<&ImageFile::directory>},
    {"file-name", image_text<&ImageFile::file_name>},
    {"file-size", size_text},
    {"file-date-mod", image_text<&ImageFile::modified>},
    {"yyyy", date_taken_part<&DateTakenParts::yyyy>},
    {"yy", date_taken_part<&DateTakenParts::yy>},
    {"mm", date_taken_part<&DateTakenParts::mm>},
    {"mmm", date_taken_part<&DateTakenParts::mmm>},
    {"dd", date_taken_part<&DateTakenParts::dd>},
    {"hr", date_taken_part<&DateTakenParts::hr>},
    {"min", date_taken_part<&DateTakenParts::min>},
    {"sec", date_taken_part<&DateTakenParts::sec>},
    {"file-date-created", image_text<&ImageFile::changed>},
    {"file-name-thumb", thumbnail_name},
    {"file-name-audio", audio_name},
    {"file-name-exi", exif_name},
    {"file-name-backup", backup_name},
    {"file-base", base_name},
    {"file-ext", extension},
};

ErrorCode variable_value(std::string_view name, NameValue& value,
                         const SubstitutionContext& context) {
  for (const FileVariable& variable : file_variables) {
    if (!equal_ignoring_case(name, variable.name)) {
      continue;
    }
    if (!context.image) {
      return ErrorCode::field_not_present;
    }
    value.text = variable.text(context, value);
    return ErrorCode::ok;
  }
  return ErrorCode::unknown_field;
}

ErrorCode field_value(const FieldDef& def, NameValue& value, const SubstitutionContext& context) {
  if (!context.image) {
    return ErrorCode::field_not_present;
  }
  for (const FieldEntry& entry : context.image->table()) {
    if (entry.tag != def.tag || entry.kind != def.ifd_kind) {
      continue;
    }
    value.text = entry.text.view();
    return ErrorCode::ok;
  }
  return ErrorCode::field_not_present;
}

}  // namespace

ErrorCode substitute_name(std::string_view name, NameValue& value,
                          const SubstitutionContext& context) {
  value.text = {};
  if (const int row = find_field(name); row != not_found) {
    return field_value(field_table_defs[static_cast<std::size_t>(row)], value, context);
  }
  if (context.dataset_text && context.dataset_text(context.iptc, name, value.text)) {
    return value.text.empty() ? ErrorCode::field_not_present : ErrorCode::ok;
  }
  return variable_value(name, value, context);
}

std::string_view file_base_name(std::string_view name) { return name.substr(0, name.rfind('.')); }

std::string_view file_extension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view{} : name.substr(dot + 1);
}

}  // namespace tagmend
