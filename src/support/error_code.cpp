#include "support/error_code.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tagmend {
namespace {

struct ErrorText {
  ErrorCode code;
  const char* text;
};

constexpr ErrorText error_texts[] = {
    {ErrorCode::ok, "Unspecified"},
    {ErrorCode::cannot_open_file, "Can't open file"},
    {ErrorCode::not_a_jpeg, "File is not a valid JPEG file"},
    {ErrorCode::no_exif_data, "Image file does not contain EXIF data"},
    {ErrorCode::unknown_byte_order, "EXIF data uses unknown byte ordering"},
    {ErrorCode::unsupported_byte_order, "EXIF byte ordering not supported"},
    {ErrorCode::exif_header_missing, "EXIF header string missing"},
    {ErrorCode::tiff_tag_missing, "TIFF tag missing"},
    {ErrorCode::end_of_buffer, "End of buffer reached while processing EXIF data"},
    {ErrorCode::seek_failed, "Seek failed while searching for EXIF Marker"},
    {ErrorCode::read_failed, "Error while reading image file"},
    {ErrorCode::write_failed, "Error while writing image file"},
    {ErrorCode::destination_has_exif, "Destination file already contains EXIF data"},
    {ErrorCode::rename_failed, "File rename failed"},
    {ErrorCode::not_recognised_or_no_exif,
     "File is not a recognised file type or does not contain EXIF data"},
    {ErrorCode::format_not_supported, "Formatting of this field not yet supported"},
    {ErrorCode::value_too_long, "Field value too long"},
    {ErrorCode::date_invalid, "Date format invalid"},
    {ErrorCode::no_thumbnail, "JPEG file does not contain a thumbnail image"},
    {ErrorCode::invalid_number, "Invalid number specified"},
    {ErrorCode::edit_not_permitted, "Editing of this field is not permitted"},
    {ErrorCode::too_few_values, "Not enough values supplied"},
    {ErrorCode::too_many_values, "Too many values supplied"},
    {ErrorCode::no_frame_header, "Start of Frame (SOF) application block not found"},
    {ErrorCode::invalid_value, "Invalid field value specified"},
    {ErrorCode::text_too_short, "Text string too short"},
    {ErrorCode::text_too_long, "Text string too long"},
    {ErrorCode::copy_failed, "Copying of selected fields failed due to system error"},
    {ErrorCode::too_many_deleted, "Too many fields deleted"},
    {ErrorCode::fraction_not_allowed, "Fractional value not allowed in this value"},
    {ErrorCode::no_memory, "Can't allocate memory"},
    {ErrorCode::cannot_create_file, "Can't create file"},
    {ErrorCode::no_audio, "Image file does not contain audio data"},
    {ErrorCode::iptc_invalid, "Format of IPTC data invalid"},
    {ErrorCode::too_many_iptc_fields, "Too many IPTC fields"},
    {ErrorCode::string_pool_full, "String pool full"},
    {ErrorCode::no_names_in_template, "No valid nicknames found in template string"},
    {ErrorCode::field_not_present, "Field not present in this file"},
    {ErrorCode::exif_too_long, "EXIF data structure too long"},
    {ErrorCode::unknown_field, "Unknown field name"},
    {ErrorCode::unknown_file_type, "File is not a recognised image file type"},
    {ErrorCode::file_type_not_editable, "Editing of this file type not supported"},
    {ErrorCode::time_where_date_expected, "Time specified where date was expected"},
    {ErrorCode::date_ambiguous, "Specified Date and/or time is ambiguous"},
    {ErrorCode::value_truncated, "Field value too long - truncating"},
    {ErrorCode::invalid_offset, "Invalid EXIF offset detected"},
    {ErrorCode::no_metadata, "No Meta data in file"},
    {ErrorCode::odd_hex_length,
     "Binary hexadecimal string must contain an even number of characters"},
    {ErrorCode::fatal_internal, "Fatal Internal Error"},
    {ErrorCode::invalid_hex_digit,
     "Binary hexadecimal string contains characters other than '0123456789AaBbCcDdEeFf'"},
};
static_assert(std::ranges::adjacent_find(error_texts, std::ranges::greater_equal{},
                                         &ErrorText::code) == std::ranges::end(error_texts),
              "the codes ascend, none occurs twice");

/// What the text of too_many_fields names: the most fields of one file.
constexpr int field_limit = 200;

/// "Unknown EXIF error code -2147483648" and more.
std::array<char, 64> formatted_text;

}  // namespace

const char* error_text(ErrorCode code) {
  if (code == ErrorCode::too_many_fields) {
    std::snprintf(formatted_text.data(), formatted_text.size(), "Too many EXIF fields (>%d)",
                  field_limit);
    return formatted_text.data();
  }
  const auto* row = std::ranges::find(error_texts, code, &ErrorText::code);
  if (row != std::ranges::end(error_texts)) {
    return row->text;
  }
  std::snprintf(formatted_text.data(), formatted_text.size(), "Unknown EXIF error code %d",
                static_cast<int>(code));
  return formatted_text.data();
}

}  // namespace tagmend
