#include "iptc/apply_iptc_edits.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "encode/field_list.h"
#include "iptc/iptc_encode.h"
#include "support/message.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// What an application of the list works with.
struct Application {
  IptcStore& store;
  char quote;
  const SubstitutionContext& context;
  std::uint16_t next_index;  ///< of the next entry that an edit appends
};

constexpr bool is_repeatable(const IptcDatasetDef& def) { return def.max_count > 1; }

bool uses_record(const EditList& edits, std::uint16_t record) {
  const std::span<const EditEntry> list = edits.list();
  return std::any_of(list.begin(), list.end(), [record](const EditEntry& edit) {
    const IptcDatasetDef& def = iptc_datasets[edit.field];
    return edit.op == EditOp::add && def.resource == resource_iptc && def.record == record;
  });
}

bool uses_record(const IptcStore& store, std::uint16_t record) {
  const std::span<const IptcEntry> entries = store.list();
  return std::any_of(entries.begin(), entries.end(), [record](const IptcEntry& entry) {
    return entry.resource == resource_iptc && entry.record == record;
  });
}

bool has_version(const IptcStore& store, std::uint16_t record) {
  const std::span<const IptcEntry> entries = store.list();
  return std::any_of(entries.begin(), entries.end(), [record](const IptcEntry& entry) {
    return entry.resource == resource_iptc && entry.record == record && entry.dataset == 0;
  });
}

/// Whether the user gives a dataset a value that no later edit removes.
bool sets_dataset(const EditList& edits, std::uint16_t row) {
  bool sets = false;
  for (const EditEntry& edit : edits.list()) {
    if (edit.field == row) {
      sets = edit.op == EditOp::add;
    }
  }
  return sets;
}

/// The value must be valid: a table that refuses it is at fault.
void check_version(std::uint16_t row, std::uint16_t record, std::string_view version,
                   IptcStore& store) {
  std::string_view encoded;
  const ErrorCode result = iptc_encode_field(row, version, store, encoded, true, {});
  if (result == ErrorCode::ok) {
    return;
  }
  const char* name = iptc_datasets[row].nickname;
  if (record == 3) {
    print_error("Internal Error: Invalid value specified for %s: %s\n", name, error_text(result));
  } else {
    print_error("Internal Error: Can't add mandatory IPTC field %s: %s\n", name,
                error_text(result));
  }
  end_program(exit_internal);
}

/// Marks the entries of a dataset as deleted; false when there are none.
bool delete_entries(IptcStore& store, std::uint16_t row) {
  bool found = false;
  for (IptcEntry& entry : store.list()) {
    if (entry.row == row && entry.resource != deleted_resource) {
      entry.resource = deleted_resource;
      found = true;
    }
  }
  return found;
}

void append_value(Application& application, std::uint16_t row, std::string_view value) {
  const IptcDatasetDef& def = iptc_datasets[row];
  IptcEntry entry;
  entry.row = row;
  entry.resource = def.resource;
  entry.record = def.record;
  entry.dataset = static_cast<std::uint8_t>(def.dataset);
  entry.index = application.next_index++;
  set_resource_name(entry, def.description);
  entry.has_new_value = true;
  entry.new_value = value;
  application.store.entries[application.store.count++] = entry;
}

/// Encodes one value and appends its entry, in place of those that it replaces: a value that cannot
/// be encoded must not cost the file the one that it had.
void add_value(Application& application, std::uint16_t row, std::string_view text) {
  const IptcDatasetDef& def = iptc_datasets[row];
  std::string_view encoded;
  const ErrorCode result =
      iptc_encode_field(row, text, application.store, encoded, false, application.context);
  if (result == ErrorCode::value_truncated) {
    print_warning("Warning: Field %s longer than %d bytes, truncating.\n", def.nickname,
                  def.max_length);
  } else if (result != ErrorCode::ok) {
    print_error("Can't add IPTC field %s: %s\n", def.nickname, error_text(result));
    return;
  }
  if (!is_repeatable(def)) {
    delete_entries(application.store, row);
  }
  append_value(application, row, encoded);
}

void add_values(Application& application, const EditEntry& edit) {
  ValueText expanded;
  static_cast<void>(
      expand_template(edit.value.data(), TemplateSection::file, expanded, application.context));
  const std::size_t length = std::strlen(expanded.data());
  if (!is_repeatable(iptc_datasets[edit.field])) {
    add_value(application, edit.field, {expanded.data(), length});
    return;
  }
  ListText list{.text = std::span(expanded).first(length)};
  ValueText item;
  while (application.store.count < IptcStore::capacity &&
         split_repeated_value(list, application.quote, library_settings.separator, item)) {
    add_value(application, edit.field, item.data());
  }
}

void apply_edit(Application& application, const EditEntry& edit) {
  const IptcDatasetDef& def = iptc_datasets[edit.field];
  if (edit.op == EditOp::remove) {
    if (!delete_entries(application.store, edit.field)) {
      print_warning("Warning: Could not delete field '%s', field not found\n", def.nickname);
    }
    return;
  }
  if (is_repeatable(def)) {
    sort_iptc_store(application.store);
  }
  add_values(application, edit);
}

void warn_of_full_table() {
  print_warning("Warning: Field table full. Some edit actions may not have been performed.\n");
}

}  // namespace

void add_mandatory_versions(EditList& edits, IptcStore& store) {
  constexpr std::string_view version = "2";
  constexpr std::array<std::uint16_t, 3> records = {1, 2, 3};
  for (const std::uint16_t record : records) {
    if (has_version(store, record) || !(uses_record(store, record) || uses_record(edits, record))) {
      continue;
    }
    const std::uint16_t row = find_dataset_by_number(record, 0);
    if (sets_dataset(edits, row)) {
      continue;
    }
    check_version(row, record, version, store);
    const auto type = static_cast<std::uint16_t>(iptc_datasets[row].type);
    if (!append_edit(edits, row, type, version)) {
      print_error("Warning: Can't add IPTC Dataset %d version field - edit table full\n", record);
    }
  }
}

bool apply_iptc_edits(IptcStore& store, EditList& edits, char quote,
                      const SubstitutionContext& context) {
  const bool had_entries = store.count > 0;
  add_mandatory_versions(edits, store);
  // The file may hold more than a full store shows, so its block must not be written anew.
  if (store.count >= IptcStore::capacity) {
    warn_of_full_table();
    return false;
  }
  Application application{
      .store = store, .quote = quote, .context = context, .next_index = store.count};
  bool full = false;
  for (const EditEntry& edit : edits.list()) {
    full = store.count >= IptcStore::capacity;
    if (full) {
      break;
    }
    apply_edit(application, edit);
  }
  sort_iptc_store(store);
  store.emptied = had_entries && store.count == 0;
  if (full || store.count >= IptcStore::capacity) {
    warn_of_full_table();
  }
  return true;
}

}  // namespace tagmend
