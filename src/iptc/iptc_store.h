// The IPTC content of the file in work: its datasets and resources, and the pool of their texts.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "iptc/iptc_dataset.h"
#include "support/error_code.h"

namespace tagmend {

/// 20000 bytes of texts and encoded values, each behind the last, with a terminating NUL.
struct StringPool {
  static constexpr std::size_t capacity = 20000;
  std::size_t used = 0;
  std::array<char, capacity> bytes{};

  [[nodiscard]] std::span<char> room() { return std::span(bytes).subspan(used); }
};

/// Appends bytes and a NUL and lets `stored` refer to them; false (and an empty `stored`) when the
/// pool cannot take them whole.
[[nodiscard]] bool append_to_pool(StringPool& pool, std::string_view bytes,
                                  std::string_view& stored);

/// One dataset or resource, read from the file or set by an edit.
struct IptcEntry {
  std::uint16_t row = 0;       ///< of iptc_datasets; 0 for unknown ones and opaque resources
  std::uint16_t resource = 0;  ///< deleted_resource marks a deleted entry
  std::uint16_t record = 0;
  std::uint8_t dataset = 0;
  std::uint16_t index = 0;  ///< own place in the store
  std::array<char, 256> resource_name{};
  std::uint16_t resource_name_length = 0;
  std::string_view text;       ///< the value in the local character set, in the pool
  bool has_new_value = false;  ///< set by an edit
  std::string_view new_value;  ///< encoded bytes of that edit, in the pool
  std::uint32_t file_pos = 0;  ///< file offset of the value as read
  std::uint16_t length = 0;    ///< of the value as read, in bytes
  std::uint16_t padding = 0;   ///< zero bytes that are written behind it
};
inline constexpr std::uint16_t deleted_resource = 0xFFFF;

struct IptcStore {
  static constexpr std::size_t capacity = 200;
  std::uint16_t count = 0;
  std::array<IptcEntry, capacity> entries;
  std::array<std::uint16_t, iptc_dataset_count> present_count{};  ///< read, by row
  StringPool pool;
  std::size_t datasets_hash = 0;  ///< of the bytes that the datasets were read from
  bool field_seen = false;        ///< a Photoshop field of a TIFF file has been read
  bool segment_seen = false;      ///< a Photoshop segment of this file has been read
  bool incomplete = false;        ///< something in the block was not understood or did not fit
  bool emptied = false;           ///< edits have removed the last entry

  [[nodiscard]] std::span<IptcEntry> list() { return {entries.data(), count}; }
  [[nodiscard]] std::span<const IptcEntry> list() const { return {entries.data(), count}; }
};

/// Empties the store and its pool.
void reset_iptc_store(IptcStore& store);

/// Adds an entry as read. `entry` tells all but its index and its text, which `text` becomes in the
/// local character set. A dataset that may occur only once keeps its first occurrence (ok is
/// returned); too_many_iptc_fields when the store is full. Whatever is left out or cut marks the
/// store incomplete.
ErrorCode add_iptc_entry(IptcStore& store, const IptcEntry& entry,
                         std::span<const std::uint8_t> text);

/// Fills the name of the resource block that an entry belongs to; at most 255 bytes.
void set_resource_name(IptcEntry& entry, std::string_view name);

/// Orders by resource, record, dataset and own index, and cuts the deleted entries off.
void sort_iptc_store(IptcStore& store);

/// Dataset text for templates (the type of SubstitutionContext::dataset_text): what the file held
/// when it was read, repeated values joined by the separator and a blank. False for unknown names.
bool iptc_dataset_text(IptcStore* store, std::string_view name, std::string_view& value);

}  // namespace tagmend
