#include "iptc/iptc_store.h"

#include <algorithm>
#include <tuple>

#include "support/charset.h"
#include "support/message.h"
#include "support/settings.h"

namespace tagmend {
namespace {

/// A conversion that leaves less room than a character may need can have been cut.
constexpr std::size_t longest_character = 8;

/// Whether `length` characters that were made of a text may be only a part of it.
bool may_be_cut(std::span<const std::uint8_t> text, std::size_t length, std::size_t room_left) {
  const bool converts = library_settings.iptc_charset[0] != '\0';
  return converts ? room_left < longest_character : length < text.size();
}

/// Converts a value into the pool; empty when there is no room at all.
std::string_view convert_into_pool(IptcStore& store, std::span<const std::uint8_t> text) {
  const std::span<char> room = store.pool.room();
  if (room.empty()) {
    store.incomplete |= !text.empty();
    return {};
  }
  const std::size_t taken = std::min(cs_iptc_to_local(text, room), room.size());
  const std::size_t length = taken == 0 ? 0 : taken - 1;
  room[length] = '\0';
  store.pool.used += length + 1;
  if (may_be_cut(text, length, store.pool.room().size())) {
    store.pool.used = StringPool::capacity;
    store.incomplete = true;
  }
  return {room.data(), length};
}

std::string_view without_trailing_nul(std::string_view text) {
  const std::size_t last = text.find_last_not_of('\0');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// Appends to a text that is being put together in the room of the pool.
bool extend(std::span<char> room, std::size_t& length, std::string_view text) {
  if (length + text.size() + 1 > room.size()) {
    return false;
  }
  std::copy(text.begin(), text.end(), room.begin() + static_cast<std::ptrdiff_t>(length));
  length += text.size();
  room[length] = '\0';
  return true;
}

/// Joins the values of a repeated dataset; false when the pool is full.
bool join_texts(IptcStore& store, std::uint16_t row, std::string_view& joined) {
  const std::span<char> room = store.pool.room();
  const std::array<char, 2> joint = {library_settings.separator, ' '};
  std::size_t length = 0;
  bool first = true;
  for (const IptcEntry& entry : store.list()) {
    if (entry.row != row || entry.has_new_value) {
      continue;
    }
    if (!first && !extend(room, length, {joint.data(), joint.size()})) {
      return false;
    }
    if (!extend(room, length, without_trailing_nul(entry.text))) {
      return false;
    }
    first = false;
  }
  joined = {room.data(), length};
  store.pool.used += length + 1;
  return true;
}

}  // namespace

bool append_to_pool(StringPool& pool, std::string_view bytes, std::string_view& stored) {
  const std::span<char> room = pool.room();
  std::size_t length = 0;
  stored = {};
  if (!extend(room, length, bytes)) {
    return false;
  }
  stored = {room.data(), length};
  pool.used += length + 1;
  return true;
}

void reset_iptc_store(IptcStore& store) {
  store.count = 0;
  store.present_count.fill(0);
  store.pool.used = 0;
  store.datasets_hash = 0;
  store.field_seen = false;
  store.segment_seen = false;
  store.incomplete = false;
  store.emptied = false;
}

ErrorCode add_iptc_entry(IptcStore& store, const IptcEntry& entry,
                         std::span<const std::uint8_t> text) {
  if (store.count >= IptcStore::capacity) {
    store.incomplete = true;
    return ErrorCode::too_many_iptc_fields;
  }
  std::uint16_t& present = store.present_count[entry.row];
  // A resource with the number that marks deleted entries would not come through a sort.
  if (present >= iptc_datasets[entry.row].max_count || entry.resource == deleted_resource) {
    store.incomplete = true;
    return ErrorCode::ok;
  }
  ++present;
  IptcEntry& added = store.entries[store.count];
  added = entry;
  added.index = store.count++;
  added.text = convert_into_pool(store, text);
  return ErrorCode::ok;
}

void set_resource_name(IptcEntry& entry, std::string_view name) {
  const std::string_view kept = name.substr(0, entry.resource_name.size() - 1);
  std::copy(kept.begin(), kept.end(), entry.resource_name.begin());
  entry.resource_name_length = static_cast<std::uint16_t>(kept.size());
}

void sort_iptc_store(IptcStore& store) {
  const auto place = [](const IptcEntry& entry) {
    return std::tuple(entry.resource, entry.record, entry.dataset, entry.index);
  };
  const std::span<IptcEntry> entries = store.list();
  std::sort(entries.begin(), entries.end(), [&](const IptcEntry& left, const IptcEntry& right) {
    return place(left) < place(right);
  });
  while (store.count > 0 && store.entries[store.count - 1U].resource == deleted_resource) {
    --store.count;
  }
}

bool iptc_dataset_text(IptcStore* store, std::string_view name, std::string_view& value) {
  value = {};
  const int found = find_dataset(name, 0);
  if (found == not_found) {
    return false;
  }
  if (store == nullptr) {
    return true;
  }
  // Replaced and removed entries still tell what the file held, so that a new value may be made
  // from the old one.
  const auto row = static_cast<std::uint16_t>(found);
  const auto is_read = [row](const IptcEntry& entry) {
    return entry.row == row && !entry.has_new_value;
  };
  const std::span<const IptcEntry> entries = store->list();
  const auto count = std::count_if(entries.begin(), entries.end(), is_read);
  if (count == 1) {
    value = without_trailing_nul(std::find_if(entries.begin(), entries.end(), is_read)->text);
  } else if (count > 1 && !join_texts(*store, row, value)) {
    print_warning("Warning: String pool full, some values may be truncated\n");
  }
  return true;
}

}  // namespace tagmend
