#include "dictionary/field_def.h"

#include "dictionary/field_runs.h"
#include "support/ascii.h"

namespace tagmend {
namespace {

/// Longer names are compared up to here.
constexpr std::size_t compared_length = 50;

FieldRun run_of(IfdKind kind) {
  const auto code = static_cast<std::size_t>(kind);
  return code < field_runs.size() ? field_runs[code] : FieldRun{};
}

}  // namespace

int find_field_from(std::string_view name, std::uint32_t start) {
  const bool by_prefix = name.ends_with('*');
  const std::size_t length = by_prefix ? name.size() - 1 : compared_length;
  const std::string_view wanted = name.substr(0, length);

  for (std::size_t row = start; row + 1 < field_table_defs.size(); ++row) {
    const FieldDef& def = field_table_defs[row];
    if (def.is_offset) {
      continue;
    }
    if (equal_ignoring_case(std::string_view(def.nickname).substr(0, length), wanted)) {
      return static_cast<int>(row);
    }
  }
  return not_found;
}

int find_field(std::string_view name) { return find_field_from(name, 0); }

std::uint16_t find_field_by_tag(IfdKind kind, std::uint32_t tag, bool strict) {
  const FieldRun run = run_of(kind);
  for (std::uint16_t row = run.first; row < run.end; ++row) {
    if (field_table_defs[row].tag == tag) {
      return row;
    }
  }
  if (strict) {
    return 0;
  }
  for (std::size_t row = field_table_defs.size() - 1; row-- > 0;) {
    if (field_table_defs[row].tag == tag) {
      return static_cast<std::uint16_t>(row);
    }
  }
  return 0;
}

int first_field_of_kind(IfdKind kind) {
  const FieldRun run = run_of(kind);
  return run.first < run.end ? run.first : not_found;
}

}  // namespace tagmend
