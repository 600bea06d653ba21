// The dictionary of IPTC datasets (IPTC IIM 4) and of the Photoshop image resources that are
// treated like them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dictionary/field_def.h"
#include "dictionary/value_map.h"

namespace tagmend {

/// Types of dataset values; the numbers that the EXIF data types share mean the same.
enum class DatasetType : std::uint16_t {
  bytes = 1,
  text = 2,
  number16 = 3,
  number32 = 4,
  date = 14,  ///< CCYYMMDD
  time = 15,  ///< HHMMSS, a sign and HHMM
};

inline constexpr std::uint16_t resource_iptc = 1028;
inline constexpr std::uint16_t resource_copyright_flag = 1034;
inline constexpr std::uint16_t resource_url = 1035;
inline constexpr std::uint16_t resource_exif = 1058;

struct IptcDatasetDef {
  std::uint16_t resource;  ///< Photoshop image resource; 0 for the catch-all row
  std::uint16_t record;
  std::uint16_t dataset;
  const char* nickname;
  const char* description;
  DatasetType type;
  std::uint16_t max_length;  ///< bytes of a text; 1 for a number
  std::uint16_t max_count;   ///< 1, or 999 for datasets that may repeat
  bool editable;
  const ValueMapEntry* value_map;             ///< of rows of maximum length 1
  const ValueMapBytesEntry* value_map_bytes;  ///< of the others
  const char* help_text;
};

inline constexpr std::size_t iptc_dataset_count = 107;
inline constexpr std::uint16_t end_resource = 0xFFFF;

/// Row 0 is the catch-all row; an end row follows the last.
extern const std::array<IptcDatasetDef, iptc_dataset_count + 1> iptc_datasets;

/// Index of the first row from `start` on with this nickname (letter case counts, at most 50
/// characters compared; a name that ends in '*' matches by prefix); or not_found.
int find_dataset(std::string_view name, std::size_t start);

/// Index of the row of a dataset of resource 1028; 0 for none.
std::uint16_t find_dataset_by_number(std::uint16_t record, std::uint16_t dataset);

/// Index of the first row of a resource; 0 for none.
std::uint16_t find_resource(std::uint16_t resource);

}  // namespace tagmend
