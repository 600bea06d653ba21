// Where the rows of each IFD kind stand in the field dictionary.
#pragma once

#include <array>
#include <cstdint>

#include "dictionary/ifd_kind.h"

namespace tagmend {

/// Rows [first, end) of field_table_defs; both 0 for a kind without rows.
struct FieldRun {
  std::uint16_t first = 0;
  std::uint16_t end = 0;
};

/// By kind code. The end row of the dictionary belongs to no run.
extern const std::array<FieldRun, ifd_kind_count> field_runs;

}  // namespace tagmend
