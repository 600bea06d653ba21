// The field dictionary: one row for every field that the program knows.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dictionary/data_type.h"
#include "dictionary/ifd_kind.h"
#include "dictionary/value_map.h"

namespace tagmend {

/// One field. A tag is a TIFF tag; or, for an element of a maker-note array, element << 16 | array
/// tag; or 0x000F0000 | byte position for Canon Raw values; or 0xF501nnnn / 0xF502nnnn for the name
/// and value of a Ricoh custom field.
struct FieldDef {
  std::uint32_t tag;
  IfdKind ifd_kind;
  DataType data_type;
  const char* nickname;     ///< name on the command line; letter case does not count
  const char* description;  ///< display name, at most 27 characters
  std::uint32_t count;      ///< number of values, 0 for any; for text the terminating NUL counts
  bool is_offset;           ///< points at another IFD: never found by nickname, never encoded
  bool is_date;             ///< entered through the date parser
  bool editable;            ///< may be set from the command line
  const ValueMapEntry* value_map;             ///< of rows that hold one value
  const ValueMapBytesEntry* value_map_bytes;  ///< of rows that hold several
  const char* help_text;                      ///< how to enter the value, or null

  [[nodiscard]] constexpr bool has_map() const { return value_map || value_map_bytes; }
};

inline constexpr std::size_t field_def_count = 834;
inline constexpr std::uint32_t end_tag = 0xFFFFFFFF;

/// Row 0 describes fields without definition; the last row has the tag end_tag. Order decides ties.
extern const std::array<FieldDef, field_def_count> field_table_defs;

inline constexpr int not_found = -1;

/// Index of the first row from `start` on with this nickname (ignoring ASCII case, at most 50
/// characters compared; a name that ends in '*' matches by prefix) that is no offset row; or
/// not_found.
int find_field_from(std::string_view name, std::uint32_t start);
int find_field(std::string_view name);

/// Index of the row with this tag and kind. Failing that: 0 when strict, else the last row with the
/// tag under another kind, else 0.
std::uint16_t find_field_by_tag(IfdKind kind, std::uint32_t tag, bool strict);

/// First row of a kind, or not_found. Rows of one kind stand together.
int first_field_of_kind(IfdKind kind);

}  // namespace tagmend
