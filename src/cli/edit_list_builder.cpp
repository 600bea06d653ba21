#include "cli/edit_list_builder.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "cli/paths.h"
#include "encode/encode_field.h"
#include "encode/field_list.h"
#include "iptc/iptc_dataset.h"
#include "iptc/iptc_encode.h"
#include "support/byte_text.h"
#include "support/message.h"
#include "support/tagged_memory.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

/// A list from the command line, or a block of memory with one from a file.
struct ListSource {
  std::array<char, list_limit + 1> argument_text{};
  TaggedBytes block;
  ListText list;
};

/// Reads the list of a file, or of the standard input ("-"), into a block; false after a message.
bool load_list_file(const char* file_name, const char* list_kind, ListSource& source) {
  const bool standard_input = file_name[0] == '-';
  const std::uint64_t size = (standard_input ? list_limit : file_size(file_name)) + 1;
  if (size <= std::numeric_limits<std::int32_t>::max()) {
    source.block = make_tagged_bytes(static_cast<std::uint32_t>(size), "EL", __LINE__);
  }
  if (source.block == nullptr) {
    print_error("Error: Can't allocate %lld bytes of memory for field %s list\n",
                static_cast<long long>(size), list_kind);
    return false;
  }
  const std::span<char> buffer =
      characters_of({source.block.get(), static_cast<std::size_t>(size)});
  source.list.text = buffer.first(read_list_file(file_name, buffer));
  return true;
}

/// `list_kind` ("add" or "remove") is for the message.
bool load_list(const char* argument, const char* list_kind, ListSource& source) {
  if (argument[0] == '@') {
    return load_list_file(argument + 1, list_kind, source);
  }
  copy_text(source.argument_text, argument);
  source.list.text =
      std::span(source.argument_text).first(std::string_view(source.argument_text.data()).size());
  return true;
}

/// Both lists share the entries of one.
bool has_room(const Session& session) {
  return session.exif_edits.count + session.iptc_edits.count < EditList::capacity;
}

/// A nickname's row in one of the two dictionaries. EXIF fields come first: a name that both know
/// means the field.
struct FieldName {
  bool is_exif;
  std::uint16_t row;
};

/// Nothing, after a message, for a name that neither knows.
std::optional<FieldName> look_up(const char* name) {
  const int field = find_field(name);
  const int row = field != not_found ? field : find_dataset(name, 0);
  if (row == not_found) {
    print_error("Unknown field '%s' ignored.\n", name);
    return std::nullopt;
  }
  return FieldName{.is_exif = field != not_found, .row = static_cast<std::uint16_t>(row)};
}

SubstitutionContext without_file() { return {.dataset_text = &iptc_dataset_text}; }

/// Whether the field takes the value, as far as that can be told without a file.
ErrorCode check_exif_value(std::uint16_t row, std::string_view value) {
  EncodedValue encoded;
  std::uint32_t value_count = 0;
  return exif_encode_field(row, {.big_endian = true, .layout = any_layout, .early_check = true},
                           value, encoded, value_count, without_file());
}

ErrorCode check_iptc_value(std::uint16_t row, std::string_view value, IptcStore& store) {
  std::string_view encoded;
  const ErrorCode code = iptc_encode_field(row, value, store, encoded, true, without_file());
  return code == ErrorCode::value_truncated ? ErrorCode::ok : code;  // cut when it is applied
}

/// The number of the DataType in which an edit's value is stored.
std::uint16_t stored_type(const FieldName& name) {
  if (!name.is_exif) {
    return static_cast<std::uint16_t>(iptc_datasets[name.row].type);
  }
  const DataType type = field_table_defs[name.row].data_type;
  return static_cast<std::uint16_t>(type == DataType::short_or_long ? DataType::unsigned_long
                                                                    : type);
}

void add_item(const char* name, std::string_view value, Session& session) {
  const std::optional<FieldName> found = look_up(name);
  if (!found) {
    return;
  }
  const auto [is_exif, row] = *found;
  const ErrorCode code =
      is_exif ? check_exif_value(row, value) : check_iptc_value(row, value, session.iptc);
  if (code != ErrorCode::ok) {
    print_error("Invalid value specified for %s: %s\n", name, error_text(code));
    return;
  }
  EditList& list = is_exif ? session.exif_edits : session.iptc_edits;
  if (append_edit(list, row, stored_type(*found), value)) {
    (is_exif ? session.options.exif_added : session.options.iptc_added) = true;
  }
}

void remove_item(const char* name, Session& session) {
  const std::optional<FieldName> found = look_up(name);
  if (!found) {
    return;
  }
  const auto [is_exif, row] = *found;
  if (append_removal(is_exif ? session.exif_edits : session.iptc_edits, row)) {
    (is_exif ? session.options.exif_removed : session.options.iptc_removed) = true;
  }
}

}  // namespace

void build_add_list(const char* argument, Session& session) {
  ListSource source;
  if (!load_list(argument, "add", source)) {
    return;
  }
  const char quote = session.options.quote_char;
  NameText name{};
  ValueText value{};
  while (next_add_item(source.list, quote, name, value) && name[0] != '\0') {
    if (!has_room(session)) {
      print_error("Max number of edit fields reached, %s and all fields following ignored.\n",
                  name.data());
      return;
    }
    add_item(name.data(), value.data(), session);
  }
}

void build_remove_list(const char* argument, Session& session) {
  ListSource source;
  if (!load_list(argument, "remove", source)) {
    return;
  }
  const char quote = session.options.quote_char;
  NameText name{};
  while (next_remove_item(source.list, quote, name) && name[0] != '\0') {
    if (!has_room(session)) {
      print_warning(
          "Warning: Max number of edit fields reached, %s and all fields following ignored.\n",
          name.data());
      return;
    }
    remove_item(name.data(), session);
  }
}

}  // namespace tagmend
