// Nikon maker notes, of three types.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry nikon1_quality_map[] = {
    {0, 1, "VGA Basic",   "vga-basic",   "vb"},
    {0, 2, "VGA Normal",  "vga-normal",  "vn"},
    {0, 3, "VGA Fine",    "vga-fine",    "vf"},
    {0, 4, "SXGA Basic",  "xsga-basic",  "xb"},
    {0, 5, "SXGA Normal", "xsga-normal", "xn"},
    {0, 6, "SXGA Fine",   "xsga-fine",   "xf"},
    map_end,
};

constexpr ValueMapEntry nikon1_colour_mode_map[] = {
    {0, 1, "Colour",     "colour", "c"},
    {0, 2, "Monochrome", "mono",   "m"},
    map_end,
};

constexpr ValueMapEntry nikon1_image_adjustment_map[] = {
    {0, 0, "Normal",    "normal",    "n"},
    {0, 1, "Bright+",   "bright+",   "b+"},
    {0, 2, "Bright-",   "bright-",   "b-"},
    {0, 3, "Contrast+", "contrast+", "c+"},
    {0, 4, "Contrast-", "contrast-", "c-"},
    map_end,
};

constexpr ValueMapEntry nikon1_ccd_sensitivity_map[] = {
    {0, 0, "ISO 80",  "80",  "80"},
    {0, 2, "ISO 160", "160", "160"},
    {0, 4, "ISO 320", "320", "320"},
    {0, 5, "ISO 100", "100", "100"},
    map_end,
};

constexpr ValueMapEntry nikon1_white_balance_map[] = {
    {0, 0, "Auto",         "auto",        "a"},
    {0, 1, "Preset",       "preset",      "p"},
    {0, 2, "Daylight",     "daylight",    "d"},
    {0, 3, "Incandescent", "incand",      "i"},
    {0, 4, "Fluorescent",  "fluor",       "f"},
    {0, 5, "Cloudy",       "cloudy",      "c"},
    {0, 6, "Speed Light",  "speed-light", "s"},
    map_end,
};

constexpr ValueMapEntry nikon1_converter_map[] = {
    {0, 0, "None",    "none",    "n"},
    {0, 1, "Fisheye", "fisheye", "f"},
    map_end,
};
// clang-format on

constexpr FieldRow nikon1_fields[] = {
    {0x0002, str, any, rw, "n1-0002", "Field 0x0002"},
    {0x0003, ush, 1, rw, "n1-quality", "Quality", nikon1_quality_map},
    {0x0004, ush, 1, rw, "n1-col-mode", "Colour Mode", nikon1_colour_mode_map},
    {0x0005, ush, 1, rw, "n1-image-adj", "Image Adjustment", nikon1_image_adjustment_map},
    {0x0006, ush, 1, rw, "n1-ccd-sens", "CCD Sensitivity", nikon1_ccd_sensitivity_map},
    {0x0007, ush, 1, rw, "n1-white-bal", "White Balance", nikon1_white_balance_map},
    {0x0008, urt, 1, rw, "n1-focus", "Focus"},
    {0x0009, str, 20, rw, "n1-0020", "Field 0x0020"},
    {0x000A, urt, 1, rw, "n1-digi-zoom", "Digital Zoom"},
    {0x000B, ush, 1, rw, "n1-converter", "Lens Converter", nikon1_converter_map},
    {0x0F00, ulg, any, rw, "n1-0f00", "Field 0x0f00"},
};
static_assert(std::size(nikon1_fields) == 11);

// clang-format off
constexpr ValueMapEntry nikon_saturation_map[] = {
    {0,     0, "None", "none", "0"},
    {0,     1, "+1",   "+1",   "+1"},
    {0,     2, "+2",   "+2",   "+2"},
    {0, 65535, "-1",   "-1",   "-1"},
    {0, 65534, "-2",   "-2",   "-2"},
    {0, 65533, "B&W",  "bw",   "bw"},
    map_end,
};
// clang-format on

constexpr FieldRow nikon2_fields[] = {
    {0x0001, und, 4, rw, "n2-version", "Version"},
    {0x0002, ush, 2, rw, "n2-iso", "ISO Setting"},
    {0x0003, str, any, rw, "n2-color-mode", "Colour Mode"},
    {0x0004, str, any, rw, "n2-quality", "Quality"},
    {0x0005, str, any, rw, "n2-white-bal", "White Balance"},
    {0x0006, str, any, rw, "n2-sharpen", "Image Sharpening"},
    {0x0007, str, any, rw, "n2-focus-mode", "Focus Mode"},
    {0x0008, str, any, rw, "n2-flash-set", "Flash Setting"},
    {0x000A, urt, 1, rw, "n2-000a", "Field 0x000a"},
    {0x000F, str, any, rw, "n2-iso-sel", "ISO Selection"},
    {0x0010, und, any, rw, "n2-data-dump", "Data Dump"},
    {0x0080, str, any, rw, "n2-image-adj", "Image Adjustment"},
    {0x0082, str, any, rw, "n2-adapter", "Lens Adapter"},
    {0x0085, urt, 1, rw, "n2-man-focus", "Manual Focus Distance"},
    {0x0086, urt, 1, rw, "n2-digi-zoom", "Digital Zoom"},
    {0x0088, und, 4, rw, "n2-focus-posn", "AF Focus Position"},
    {0x0094, ssh, 1, rw, "n2-saturation", "Saturation Adjustment", nikon_saturation_map},
    {0x0095, str, any, rw, "n2-noise", "Noise Reduction"},
};
static_assert(std::size(nikon2_fields) == 18);

// clang-format off
constexpr ValueMapBytesEntry nikon3_flash_comp_map[] = {
    bytes<0x00, 0x01, 0x06, 0x00>("0.00",  "0.00",  "0"),
    bytes<0x02, 0x01, 0x06, 0x00>("0.33",  "0.33",  "0.3"),
    bytes<0x04, 0x01, 0x06, 0x00>("0.67",  "0.67",  "0.6"),
    bytes<0x06, 0x01, 0x06, 0x00>("1.00",  "1.00",  "1"),
    bytes<0x08, 0x01, 0x06, 0x00>("1.33",  "1.33",  "1.3"),
    bytes<0x10, 0x01, 0x06, 0x00>("1.67",  "1.67",  "1.6"),
    bytes<0x12, 0x01, 0x06, 0x00>("2.00",  "2.00",  "2"),
    bytes<0x14, 0x01, 0x06, 0x00>("2.33",  "2.33",  "2.3"),
    bytes<0x16, 0x01, 0x06, 0x00>("2.66",  "2.66",  "2.6"),
    bytes<0x18, 0x01, 0x06, 0x00>("3.00",  "3.00",  "3"),
    bytes<0xFE, 0x01, 0x06, 0x00>("-0.33", "-0.33", "-0.3"),
    bytes<0xFC, 0x01, 0x06, 0x00>("-0.67", "-0.67", "-0.6"),
    bytes<0xFA, 0x01, 0x06, 0x00>("-1.00", "-1.00", "-1"),
    bytes<0xF8, 0x01, 0x06, 0x00>("-1.33", "-1.33", "-1.3"),
    bytes<0xF6, 0x01, 0x06, 0x00>("-1.67", "-1.67", "-1.6"),
    bytes<0xF4, 0x01, 0x06, 0x00>("-2.00", "-2.00", "-2"),
    bytes<0xF2, 0x01, 0x06, 0x00>("-2.33", "-2.33", "-2.3"),
    bytes<0xF0, 0x01, 0x06, 0x00>("-2.66", "-2.66", "-2.6"),
    bytes<0xEE, 0x01, 0x06, 0x00>("-3.00", "-3.00", "-3"),
    bytes_map_end,
};

constexpr ValueMapEntry nikon3_lens_type_map[] = {
    {0,  0, "AF",      "af",     "a"},
    {0,  1, "Manual",  "manual", "m"},
    {0,  2, "AF-D",    "afd",    "d"},
    {0,  6, "AF-D G",  "afd-g",  "g"},
    {0, 10, "AF-D VR", "afd-vr", "v"},
    map_end,
};

constexpr ValueMapEntry nikon3_flash_used_map[] = {
    {0, 0, "None",      "none",      "n"},
    {0, 7, "External",  "external",  "e"},
    {0, 9, "On Camera", "on-camera", "o"},
    map_end,
};

constexpr ValueMapBytesEntry nikon3_focus_position_map[] = {
    bytes<0x00, 0x00, 0x00, 0x00>("Manual",    "manual",    "m"),
    bytes<0x01, 0x00, 0x00, 0x00>("Manual",    "manual",    "m"),
    bytes<0x01, 0x00, 0x00, 0x01>("AF Center", "af-center", "afc"),
    bytes<0x01, 0x01, 0x00, 0x02>("AF Top",    "af-top",    "aft"),
    bytes<0x01, 0x02, 0x00, 0x04>("AF Bottom", "af-bottom", "afb"),
    bytes<0x01, 0x03, 0x00, 0x08>("AF Left",   "af-left",   "afl"),
    bytes<0x01, 0x04, 0x00, 0x10>("AF Right",  "af-right",  "afr"),
    bytes_map_end,
};

constexpr ValueMapEntry nikon3_bracket_map[] = {
    {0,  1, "None",          "none",      "n"},
    {0,  0, "None",          "none0",     "n0"},
    {0, 17, "Exposure",      "exposure",  "e"},
    {0, 81, "White Balance", "white-bal", "w"},
    map_end,
};
// clang-format on

constexpr FieldRow nikon3_fields[] = {
    {0x0001, und, 4, rw, "n3-version", "Version"},
    {0x0002, ush, 2, rw, "n3-iso", "ISO Setting"},
    {0x0003, str, any, rw, "n3-color-mode", "Colour Mode"},
    {0x0004, str, any, rw, "n3-quality", "Quality"},
    {0x0005, str, any, rw, "n3-white-bal", "White Balance"},
    {0x0006, str, any, rw, "n3-sharp", "Sharpening"},
    {0x0007, str, any, rw, "n3-focus", "Focus"},
    {0x0008, str, any, rw, "n3-flash-set", "Flash Setting"},
    {0x0009, str, any, rw, "n3-flash-mode", "Flash Mode"},
    {0x000A, urt, 1, rw, "n3-000a", "Field 0x000a"},
    {0x000B, ssh, 1, rw, "n3-white-bias", "White Balance Bias"},
    {0x000C, urt, 4, rw, "n3-000c", "Field 0x000c"},
    {0x000D, und, 4, rw, "n3-000d", "Field 0x000d"},
    {0x000E, und, 4, rw, "n3-exp-diff", "Exposure Difference"},
    {0x000F, str, any, rw, "n3-iso-sel", "ISO Selection"},
    {0x0010, und, any, rw, "n3-0010", "Field 0x0010"},
    {0x0011, ulg, 1, ro_pointer, "n3-thumb-offset", "Thumbnail IFD Offset"},
    {0x0012, und, 4, rw, "n3-flash-comp", "Flash Compensation", nikon3_flash_comp_map},
    {0x0013, ush, 2, rw, "n3-0013", "Field 0x0013"},
    {0x0017, und, any, rw, "n3-0017", "Field 0x0017"},
    {0x0018, und, any, rw, "n3-0018", "Field 0x0018"},
    {0x0019, srt, 1, rw, "n3-0019", "Field 0x0019"},
    {0x0080, str, any, rw, "n3-image-adj", "Image Adjustment"},
    {0x0081, str, any, rw, "n3-tone-comp", "Tone Compensation"},
    {0x0083, uby, 1, rw, "n3-lens-type", "Lens Type", nikon3_lens_type_map},
    {0x0084, urt, 4, rw, "n3-lens", "Lens"},
    {0x0085, urt, 1, rw, "n3-man-focus", "Manual Focus Distance"},
    {0x0086, urt, 1, rw, "n3-digi-zoom", "Digital Zoom"},
    {0x0087, uby, 1, rw, "n3-flash-used", "Flash Used", nikon3_flash_used_map},
    {0x0088, und, 4, rw, "n3-focus-posn", "AF Focus Position", nikon3_focus_position_map},
    {0x0089, uby, 1, rw, "n3-bracket", "Bracketing", nikon3_bracket_map},
    {0x008A, ush, 1, rw, "n3-008a", "Field 0x008a"},
    {0x008B, und, any, rw, "n3-008b", "Field 0x008b"},
    {0x008D, str, any, rw, "n3-color-mode2", "Color Mode"},
    {0x008E, srt, 4, rw, "n3-008e", "Field 0x008e"},
    {0x0090, str, any, rw, "n3-light-type", "Lighting Type"},
    {0x0091, und, any, rw, "n3-0091", "Field 0x0091"},
    {0x0092, ssh, 1, rw, "n3-hue-adj", "Hue Adjustment"},
    {0x0094, ssh, 1, rw, "n3-saturation", "Saturation Adjustment", nikon_saturation_map},
    {0x0095, str, any, rw, "n3-noise", "Noise Reduction"},
    {0x0097, und, any, rw, "n3-0091", "Field 0x0091"},
    {0x0098, und, any, rw, "n3-0098", "Field 0x0098"},
    {0x009A, urt, 2, rw, "n3-009a", "Field 0x009a"},
    {0x0103, ush, 1, rw, "n3-0103", "Field 0x0103"},
    {0x0E10, ulg, 1, rw, "n3-0e10", "Field 0x0e10"},
};
static_assert(std::size(nikon3_fields) == 45);

}  // namespace tagmend::tables
