// The codes that every operation which can fail returns, and their texts.
#pragma once

#include <cstdint>

namespace tagmend {

/// The result of an operation: ok, or why it failed. Any 32-bit number may be held; the numbers are
/// fixed, gaps included, because messages print them.
// clang-format off
enum class [[nodiscard]] ErrorCode : std::uint32_t {
  ok = 0,
  cannot_open_file = 1,
  not_a_jpeg = 2,
  no_exif_data = 3,
  unknown_byte_order = 4,
  unsupported_byte_order = 5,
  exif_header_missing = 6,
  tiff_tag_missing = 7,
  end_of_buffer = 8,
  too_many_fields = 9,
  seek_failed = 10,
  read_failed = 11,
  write_failed = 12,
  destination_has_exif = 13,
  rename_failed = 14,
  not_recognised_or_no_exif = 15,
  format_not_supported = 16,
  value_too_long = 17,
  date_invalid = 18,
  no_thumbnail = 19,
  invalid_number = 20,
  edit_not_permitted = 21,
  too_few_values = 22,
  too_many_values = 23,
  no_frame_header = 24,
  invalid_value = 25,
  text_too_short = 26,
  text_too_long = 27,
  copy_failed = 30,
  too_many_deleted = 32,
  fraction_not_allowed = 37,
  no_memory = 39,
  cannot_create_file = 40,
  no_audio = 41,
  iptc_invalid = 42,
  too_many_iptc_fields = 43,
  string_pool_full = 44,
  no_names_in_template = 45,
  field_not_present = 46,
  exif_too_long = 47,
  unknown_field = 48,
  unknown_file_type = 49,
  file_type_not_editable = 50,
  time_where_date_expected = 51,
  date_ambiguous = 52,
  value_truncated = 54,
  invalid_offset = 55,
  no_metadata = 56,
  odd_hex_length = 57,
  fatal_internal = 58,
  invalid_hex_digit = 59,
};
// clang-format on

/// The text of a code. For codes without a text of their own it is formatted into one static buffer
/// that the next such call overwrites: print it at once.
const char* error_text(ErrorCode code);

}  // namespace tagmend
