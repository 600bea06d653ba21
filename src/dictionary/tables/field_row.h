// The form in which the rows of the field dictionary are written down: a FieldDef without its IFD
// kind, which all rows of one table share. The tables have internal linkage: field_table.cpp, which
// joins them, is the only file that includes them.
#pragma once

#include <cstdint>

#include "dictionary/data_type.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

/// Data types by their three-letter names; `usl` is SHORT or LONG.
inline constexpr DataType uby = DataType::unsigned_byte;
inline constexpr DataType str = DataType::string;
inline constexpr DataType ush = DataType::unsigned_short;
inline constexpr DataType ulg = DataType::unsigned_long;
inline constexpr DataType urt = DataType::unsigned_rational;
inline constexpr DataType sby = DataType::signed_byte;
inline constexpr DataType und = DataType::undefined;
inline constexpr DataType ssh = DataType::signed_short;
inline constexpr DataType slg = DataType::signed_long;
inline constexpr DataType srt = DataType::signed_rational;
inline constexpr DataType usl = DataType::short_or_long;

/// The count of fields that hold any number of values.
inline constexpr std::uint32_t any = 0;

/// What may be done with a field from the command line.
struct Access {
  bool editable;
  bool is_date = false;
  bool is_offset = false;
};
inline constexpr Access rw{.editable = true};
inline constexpr Access ro{.editable = false};
inline constexpr Access date{.editable = true, .is_date = true};
inline constexpr Access rw_pointer{.editable = true, .is_offset = true};
inline constexpr Access ro_pointer{.editable = false, .is_offset = true};

struct FieldRow {
  std::uint32_t tag;
  DataType type;
  std::uint32_t count;
  Access access;
  const char* nickname;
  const char* description;
  MapRef map{};
  const char* help = nullptr;
};

}  // namespace tagmend::tables
