// The edits that the command line asks for: one list for EXIF fields, one for IPTC datasets.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "encode/field_list.h"

namespace tagmend {

enum class EditOp : std::uint32_t { add = 0, remove = 1 };

/// Encoded bytes of one value.
using EncodedValue = std::array<std::uint8_t, 2001>;

struct EditEntry {
  EditOp op = EditOp::add;
  std::uint16_t field = 0;  ///< row of the field dictionary, or of the IPTC dataset table
  std::uint16_t type = 0;   ///< DataType in which the value is stored; not set for removals
  EncodedValue encoded{};   ///< the value as stored, filled when the edit is applied to a file
  ValueText value{};        ///< the value as typed
};

struct EditList {
  static constexpr std::size_t capacity = 200;
  std::size_t count = 0;        ///< entries in use
  std::size_t saved_count = 0;  ///< entries of the command line; edits of a file may append more
  std::array<EditEntry, capacity> entries{};

  [[nodiscard]] std::span<const EditEntry> list() const { return {entries.data(), count}; }
};

/// Appends an add entry; false when the list is full.
[[nodiscard]] bool append_edit(EditList& list, std::uint16_t field, std::uint16_t type,
                               std::string_view value);

/// Appends a remove entry; false when the list is full.
[[nodiscard]] bool append_removal(EditList& list, std::uint16_t field);

}  // namespace tagmend
