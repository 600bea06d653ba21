// The field dictionary: the rows of all tables, joined in the order that lookups rely on.
#include <algorithm>
#include <span>

#include "dictionary/field_def.h"
#include "dictionary/field_runs.h"
#include "dictionary/tables/canon.h"
#include "dictionary/tables/casio.h"
#include "dictionary/tables/epson.h"
#include "dictionary/tables/exif.h"
#include "dictionary/tables/fujifilm.h"
#include "dictionary/tables/gps.h"
#include "dictionary/tables/minolta.h"
#include "dictionary/tables/nikon.h"
#include "dictionary/tables/olympus.h"
#include "dictionary/tables/panasonic.h"
#include "dictionary/tables/pentax.h"
#include "dictionary/tables/ricoh.h"
#include "dictionary/tables/tiff.h"

namespace tagmend {
namespace {

using tables::FieldRow;

/// What a lookup by tag answers when it finds nothing.
constexpr FieldRow unknown_fields[] = {
    {0xFFFF, tables::und, tables::any, tables::ro, "unknown", "Unknown Field Tag"},
};

struct Table {
  IfdKind kind;
  std::span<const FieldRow> rows;
};

/// The order decides which row a nickname with '*' finds, and which row describes a tag in a kind
/// without rows of its own: the TIFF image rows come late for that reason.
constexpr Table joined_tables[] = {
    {IfdKind::unknown, unknown_fields},
    {IfdKind::interop, tables::interop_fields},
    {IfdKind::camera, tables::camera_fields},
    {IfdKind::image, tables::exif_fields},
    {IfdKind::thumbnail, tables::thumbnail_fields},
    {IfdKind::gps, tables::gps_fields},
    {IfdKind::canon, tables::canon_fields},
    {IfdKind::casio, tables::casio_fields},
    {IfdKind::epson, tables::epson_fields},
    {IfdKind::fujifilm, tables::fujifilm_fields},
    {IfdKind::minolta, tables::minolta_fields},
    {IfdKind::nikon1, tables::nikon1_fields},
    {IfdKind::nikon2, tables::nikon2_fields},
    {IfdKind::nikon3, tables::nikon3_fields},
    {IfdKind::olympus1, tables::olympus1_fields},
    {IfdKind::olympus3, tables::olympus3_fields},
    {IfdKind::olympus2, tables::olympus2_fields},
    {IfdKind::panasonic, tables::panasonic_fields},
    {IfdKind::pentax, tables::pentax_fields},
    {IfdKind::ricoh, tables::ricoh_fields},
    {IfdKind::ricoh_info, tables::ricoh_info_fields},
    {IfdKind::tiff_image, tables::tiff_image_fields},
    {IfdKind::canon_raw, tables::canon_raw_fields},
    {IfdKind::ricoh_custom, tables::ricoh_custom_fields},
};

constexpr FieldDef make_field(IfdKind kind, const FieldRow& row) {
  return {.tag = row.tag,
          .ifd_kind = kind,
          .data_type = row.type,
          .nickname = row.nickname,
          .description = row.description,
          .count = row.count,
          .is_offset = row.access.is_offset,
          .is_date = row.access.is_date,
          .editable = row.access.editable,
          .value_map = row.map.values,
          .value_map_bytes = row.map.bytes,
          .help_text = row.help};
}

constexpr FieldRow end_row = {end_tag,    DataType::zero, 0,
                              tables::ro, "end-table",    "**** End of of Table ****"};

constexpr std::array<FieldDef, field_def_count> join_tables() {
  std::array<FieldDef, field_def_count> joined{};
  std::size_t next = 0;
  for (const Table& table : joined_tables) {
    for (const FieldRow& row : table.rows) {
      joined[next++] = make_field(table.kind, row);
    }
  }
  joined[next] = make_field(IfdKind::camera, end_row);
  return joined;
}

constexpr std::array<FieldRun, ifd_kind_count> find_runs() {
  std::array<FieldRun, ifd_kind_count> runs{};
  std::size_t next = 0;
  for (const Table& table : joined_tables) {
    const std::size_t end = next + table.rows.size();
    runs[static_cast<std::size_t>(table.kind)] = {static_cast<std::uint16_t>(next),
                                                  static_cast<std::uint16_t>(end)};
    next = end;
  }
  return runs;
}

}  // namespace

constexpr std::array<FieldDef, field_def_count> field_table_defs = join_tables();
constexpr std::array<FieldRun, ifd_kind_count> field_runs = find_runs();

// What lookups, readers and the encoder rely on.
namespace {

/// Rows before the end row.
constexpr std::span<const FieldDef> rows() {
  return std::span(field_table_defs).first(field_def_count - 1);
}

template <class Condition>
constexpr std::size_t rows_with(Condition condition) {
  return static_cast<std::size_t>(std::ranges::count_if(rows(), condition));
}

template <class Entry>
constexpr std::size_t entry_count(const Entry* map) {
  std::size_t count = 0;
  while (map[count].nickname) {
    ++count;
  }
  return count;
}

constexpr bool is_standard(const FieldDef& def) {
  switch (def.ifd_kind) {
    case IfdKind::camera:
    case IfdKind::image:
    case IfdKind::thumbnail:
    case IfdKind::interop:
    case IfdKind::gps:
    case IfdKind::tiff_image:
      return true;
    default:
      return false;
  }
}

struct MapCounts {
  std::size_t maps = 0;
  std::size_t entries = 0;
  constexpr bool operator==(const MapCounts&) const = default;
};

/// The different maps of the standard rows or of the others; rows may share one.
constexpr MapCounts count_maps(bool standard) {
  std::array<const void*, field_def_count> seen{};
  MapCounts counts;
  for (const FieldDef& def : rows()) {
    if (!def.has_map() || is_standard(def) != standard) {
      continue;
    }
    const void* map = def.value_map;
    if (!map) {
      map = def.value_map_bytes;
    }
    bool known = false;
    for (std::size_t i = 0; i < counts.maps && !known; ++i) {
      known = seen[i] == map;
    }
    if (known) {
      continue;
    }
    seen[counts.maps++] = map;
    counts.entries += def.value_map ? entry_count(def.value_map) : entry_count(def.value_map_bytes);
  }
  return counts;
}

constexpr bool tags_are_unique_in_their_kind() {
  for (const FieldRun run : field_runs) {
    for (std::size_t i = run.first; i < run.end; ++i) {
      for (std::size_t j = i + 1; j < run.end; ++j) {
        if (field_table_defs[i].tag == field_table_defs[j].tag) {
          return false;
        }
      }
    }
  }
  return true;
}

/// Every row lies in the run of its kind: the rows of one kind stand together.
constexpr bool runs_hold_their_rows() {
  for (std::size_t i = 0; i < rows().size(); ++i) {
    const FieldRun run = field_runs[static_cast<std::size_t>(rows()[i].ifd_kind)];
    if (i < run.first || i >= run.end) {
      return false;
    }
  }
  return true;
}

constexpr std::size_t longest_nickname = 21;
constexpr std::size_t longest_description = 27;

constexpr bool texts_fit(const FieldDef& def) {
  return std::string_view(def.nickname).size() <= longest_nickname &&
         std::string_view(def.description).size() <= longest_description;
}

/// One value: a map of numbers; several: a map of byte strings. Dates are texts of 19 characters.
constexpr bool is_consistent(const FieldDef& def) {
  if (def.value_map && (def.count != 1 || def.value_map_bytes)) {
    return false;
  }
  if (def.value_map_bytes && def.count == 1) {
    return false;
  }
  if (def.is_date && (def.data_type != DataType::string || def.count != 20)) {
    return false;
  }
  return def.tag != end_tag && def.data_type != DataType::zero;
}

static_assert(field_table_defs.front().tag == 0xFFFF);
static_assert(field_table_defs.back().tag == end_tag);
static_assert(runs_hold_their_rows());
static_assert(tags_are_unique_in_their_kind());
static_assert(std::ranges::all_of(rows(), texts_fit));
static_assert(std::ranges::all_of(rows(), is_consistent));
static_assert(rows_with(is_standard) == 203);
static_assert(rows_with([](const FieldDef& def) { return def.is_date; }) == 5);
static_assert(rows_with([](const FieldDef& def) { return def.is_offset; }) == 6);
static_assert(rows_with([](const FieldDef& def) { return def.has_map(); }) == 212);
static_assert(rows_with([](const FieldDef& def) { return def.data_type == tables::usl; }) == 26);
static_assert(count_maps(true) == MapCounts{.maps = 32, .entries = 145});
static_assert(count_maps(false) == MapCounts{.maps = 124, .entries = 710});

}  // namespace
}  // namespace tagmend
