// Rows of the field dictionary that a test names.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>

#include "dictionary/field_def.h"

namespace tagmend::test {

/// The row that a nickname finds; there is one.
inline std::uint16_t row_of(const char* nickname) {
  const int row = find_field(nickname);
  EXPECT_NE(row, not_found) << nickname;
  return static_cast<std::uint16_t>(row);
}

inline const FieldDef& field_named(const char* nickname) {
  return field_table_defs[row_of(nickname)];
}

}  // namespace tagmend::test
