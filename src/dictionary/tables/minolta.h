// Minolta maker notes.
#pragma once

#include <cstdint>
#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// A layout (row of the maker table) in which one value differs.
constexpr std::uint32_t dimage_5 = 18;

// clang-format off
constexpr ValueMapEntry minolta_settings_exposure_mode_map[] = {
    {0, 0, "Program",           "program",  "p"},
    {0, 1, "Aperture Priority", "aperture", "a"},
    {0, 2, "Shutter Priority",  "shutter",  "s"},
    {0, 3, "Manual",            "manual",   "m"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_flash_mode_map[] = {
    {0, 0, "Fill Flash",        "fill",      "f"},
    {0, 1, "Red-eye Reduction", "red-eye",   "re"},
    {0, 2, "Rear Flash Sync",   "rear-sync", "rs"},
    {0, 3, "Wireless",          "wireless",  "m"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_white_balance_map[] = {
    {0,          0, "Auto",                             "auto",           "a"},
    {0,          1, "Daylight",                         "daylight",       "d"},
    {0,          2, "Cloudy",                           "cloudy",         "c"},
    {0,          3, "Tungsten",                         "tungsten",       "t"},
    {0,          5, "Custom 1",                         "custom1",        "c1"},
    {0,          7, "Fluorescent",                      "fluor",          "f"},
    {0,          8, "Fluorescent 2",                    "fluor2",         "f2"},
    {0,         11, "Custom 2",                         "custom2",        "c2"},
    {0,         12, "Custom 3",                         "custom3",        "c3"},
    {0, 0x07800000, "A1 Manual",                        "a1-manual",      "a1-m"},
    {0, 0x00800000, "A1 Auto/Sunset",                   "a1-auto",        "a1-a"},
    {0, 0x01800000, "A1 Daylight",                      "a1-daylight",    "a1-d"},
    {0, 0x02800000, "A1 Cloudy",                        "a1-cloudy",      "a1-c"},
    {0, 0x06800000, "A1 Shade",                         "a1-shade",       "a1-s"},
    {0, 0x057E0000, "A1 3-band Warm White Flourescent", "a1-3-band-warm", "a1-3bw"},
    {0, 0x057F0000, "A1 3-band White Flourescent",      "a1-3-band",      "a1-3b"},
    {0, 0x05800000, "A1 White Flourescent",             "a1-white-fluor", "a1-wf"},
    {0, 0x05810000, "A1 Cool White Flourescent",        "a1-cool-fluor",  "a1-cwf"},
    {0, 0x05820000, "A1 3-band Cool White Flourescent", "a1-3-band-cool", "a1-3bcwl"},
    {0, 0x05830000, "A1 3-band Daylite Flourescent",    "a1-3-band-day",  "a1-3bdf"},
    {0, 0x05840000, "A1 Daylight flourescent",          "a1-day-fluor",   "a1-df"},
    {0, 0x03800000, "A1 Tundsten",                      "a1-tungsten",    "a1-t"},
    {0, 0x04800000, "A1 Flash",                         "a1-flash",       "a1-f"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_image_dimensions_map[] = {
    {dimage_5, 0, "2048x1536", "2048x1536", "2048"},
    {0,        0, "2560x1920", "2560x1920", "2560"},
    {0,        1, "1600x1200", "1600x1200", "1600"},
    {0,        2, "1280x960",  "1280x960",  "1280"},
    {0,        3, "640x480",   "640x480",   "640"},
    map_end,
};

constexpr ValueMapEntry minolta_image_quality_map[] = {
    {0, 0, "Raw",        "raw",        "r"},
    {0, 1, "Super Fine", "super-fine", "sf"},
    {0, 2, "Fine",       "fine",       "f"},
    {0, 3, "Standard",   "standard",   "st"},
    {0, 4, "Economy",    "economy",    "ec"},
    {0, 5, "Extra Fine", "extra-fine", "ef"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_drive_mode_map[] = {
    {0, 0, "Single",         "single",     "s"},
    {0, 1, "Continuous",     "continuous", "c"},
    {0, 2, "Self Timer",     "self-timer", "s"},
    {0, 4, "Bracketing",     "bracketing", "b"},
    {0, 5, "Interval",       "interval",   "i"},
    {0, 6, "UHS Continuous", "uhs",        "u"},
    {0, 7, "HS Continuous",  "hs",         "h"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_metering_mode_map[] = {
    {0, 0, "Multisegment",    "multi",  "m"},
    {0, 1, "Center-weighted", "center", "c"},
    {0, 2, "Spot",            "spot",   "s"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_macro_mode_map[] = {
    {0, 0, "Off", "off", "off"},
    {0, 1, "On",  "on",  "on"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_digital_zoom_map[] = {
    {0, 0, "Off",                      "off",      "off"},
    {0, 1, "Electronic Magnification", "elec-mag", "em"},
    {0, 2, "Digital Zoom x2",          "zoomx2",   "x2"},
    {0, 3, "Unknown(3)",               "unknown3", "u"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_bracket_step_map[] = {
    {0, 0, "0.33", "0-33", "0-33"},
    {0, 1, "0.66", "0-66", "0-66"},
    {0, 2, "1.00", "1-00", "1-00"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_flash_fired_map[] = {
    {0, 0, "No",  "no",  "no"},
    {0, 1, "Yes", "yes", "yes"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_file_number_memory_map[] = {
    {0, 0, "Off", "off", "off"},
    {0, 1, "On",  "on",  "on"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_sharpness_map[] = {
    {0, 0, "Hard",   "hard",   "h"},
    {0, 1, "Normal", "normal", "n"},
    {0, 2, "Soft",   "soft",   "s"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_subj_program_map[] = {
    {0, 0, "None",           "none",           "n"},
    {0, 1, "Portrait",       "portrait",       "p"},
    {0, 2, "Text",           "text",           "t"},
    {0, 3, "Night Portrait", "night-portrait", "np"},
    {0, 4, "Sunset",         "sunset",         "sun"},
    {0, 5, "Sports Action",  "sports",         "sp"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_iso_setting_map[] = {
    {0, 0, "100",  "100",  "1"},
    {0, 1, "200",  "200",  "2"},
    {0, 2, "400",  "400",  "4"},
    {0, 3, "800",  "800",  "8"},
    {0, 4, "Auto", "auto", "a"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_model_map[] = {
    {0, 0, "DiMAGE 7",    "dimage-7",    "7"},
    {0, 1, "DiMAGE 5",    "dimage-5",    "5"},
    {0, 2, "DiMAGE S304", "dimage-s304", "s304"},
    {0, 3, "DiMAGE S404", "dimage-s404", "s404"},
    {0, 4, "DiMAGE 7i",   "dimage-7i",   "7i"},
    {0, 5, "DiMAGE 7Hi",  "dimage-7hi",  "7hi"},
    {0, 6, "DiMAGE A1",   "dimage-a1",   "a1"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_interval_mode_map[] = {
    {0, 0, "Still Image",     "still", "s"},
    {0, 1, "Timelapse Movie", "movie", "m"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_folder_setting_map[] = {
    {0, 0, "Standard Form", "standard", "s"},
    {0, 1, "Date Form",     "date",     "d"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_color_mode_map[] = {
    {0, 0, "Natural Color", "natural",         "n"},
    {0, 1, "Black & White", "black-and-white", "b"},
    {0, 2, "Vivid Color",   "vivid",           "v"},
    {0, 3, "Solarization",  "solarization",    "s"},
    {0, 4, "Adobe RGB",     "adobe-rgb",       "a"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_internal_flash_map[] = {
    {0, 0, "Not Fired", "none",  "n"},
    {0, 1, "Fired",     "fired", "f"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_wide_focus_zone_map[] = {
    {0, 0, "No Zone",                  "none",         "n"},
    {0, 1, "Center Zone (Horizontal)", "center-horiz", "ch"},
    {0, 2, "Center Zone (Vertical)",   "center-vert",  "cv"},
    {0, 3, "Left Zone",                "left",         "l"},
    {0, 4, "Right Zone",               "right",        "r"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_focus_mode_map[] = {
    {0, 0, "AF", "af", "a"},
    {0, 1, "MF", "mf", "m"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_focus_area_map[] = {
    {0, 0, "Wide Focus", "wide", "w"},
    {0, 1, "Spot Focus", "spot", "s"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_dec_setting_map[] = {
    {0, 0, "Exposure",   "exposure",   "e"},
    {0, 1, "Contrast",   "contrast",   "c"},
    {0, 2, "Saturation", "saturation", "s"},
    {0, 3, "Filter",     "filter",     "f"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_embedded_profile_map[] = {
    {0, 0, "No",  "no",   "n"},
    {0, 1, "Yes", "yes ", "y"},
    map_end,
};

constexpr ValueMapEntry minolta_settings_data_imprint_map[] = {
    {0, 0, "None",         "none",         "n"},
    {0, 1, "yyy/mm/dd",    "yyy-mm-dd",    "y"},
    {0, 2, "mm/dd/hr:min", "mm-dd-hr-min", "m"},
    {0, 3, "Text",         "text",         "t"},
    {0, 4, "Text + Id#",   "text-id",      "ti"},
    map_end,
};

constexpr ValueMapEntry minolta_color_mode_map[] = {
    {0, 0, "Natural Colour",  "natural",         "n"},
    {0, 1, "Black and White", "black-and-white", "bw"},
    {0, 2, "Vivid Color",     "vivid",           "v"},
    {0, 3, "Solarization",    "solar",           "s"},
    {0, 4, "Adobe RGB",       "adobe",           "a"},
    map_end,
};
// clang-format on

// A tag above 0xFFFF is an element of a settings array: element << 16 | tag of the array.
constexpr FieldRow minolta_fields[] = {
    {0x0000, und, any, rw, "mn-version", "Version"},
    {0x0001, und, any, rw, "mn-settings1", "Camera Settings 1"},
    {0x00020001, ulg, 1, ro, "mns1-exp-mode", "Exposure Mode", minolta_settings_exposure_mode_map},
    {0x00030001, ulg, 1, ro, "mns1-flash-mode", "Flash Mode", minolta_settings_flash_mode_map},
    {0x00040001, ulg, 1, ro, "mns1-white-bal", "White Balance", minolta_settings_white_balance_map},
    {0x00050001, ulg, 1, ro, "mns1-image-dim", "Image Dimensions",
     minolta_settings_image_dimensions_map},
    {0x00060001, ulg, 1, ro, "mns1-image-qual", "Image Quality", minolta_image_quality_map},
    {0x00070001, ulg, 1, ro, "mns1-drive-mode", "Drive Mode", minolta_settings_drive_mode_map},
    {0x00080001, ulg, 1, ro, "mns1-meter-mode", "Meter Mode", minolta_settings_metering_mode_map},
    {0x00090001, ulg, 1, ro, "mns1-apex-film-speed", "APEX Film Speed Value"},
    {0x000A0001, ulg, 1, ro, "mns1-apex-time", "APEX Time Value"},
    {0x000B0001, ulg, 1, ro, "mns1-apex-aperture", "APEX Aperture Value"},
    {0x000C0001, ulg, 1, ro, "mns1-macro-mode", "Macro Mode", minolta_settings_macro_mode_map},
    {0x000D0001, ulg, 1, ro, "mns1-digital-zoom", "Digital Zoom",
     minolta_settings_digital_zoom_map},
    {0x000E0001, ulg, 1, ro, "mns1-exp-comp", "Exposure Compensation"},
    {0x000F0001, ulg, 1, ro, "mns1-bracket-step", "Bracket Step (EV)",
     minolta_settings_bracket_step_map},
    {0x00100001, ulg, 1, ro, "mns1-0003-10", "Field 0x0003-10"},
    {0x00110001, ulg, 1, ro, "mns1-interval-len", "Interval Length (min)"},
    {0x00120001, ulg, 1, ro, "mns1-interval-num", "Num Interval Frames"},
    {0x00130001, ulg, 1, ro, "mns1-focal-len", "Focal Length"},
    {0x00140001, ulg, 1, ro, "mns1-focus-dist", "Focus Distance (meters)"},
    {0x00150001, ulg, 1, ro, "mns1-flashFired", "Flash Fired", minolta_settings_flash_fired_map},
    {0x00160001, ulg, 1, ro, "mns1-date", "Date"},
    {0x00170001, ulg, 1, ro, "mns1-time", "Time"},
    {0x00180001, ulg, 1, ro, "mns1-max-aper", "Maximum Aperture"},
    {0x00190001, ulg, 1, ro, "mns1-0003-19", "Field 0x0003-19"},
    {0x001A0001, ulg, 1, ro, "mns1-0003-1a", "Field 0x0003-1a"},
    {0x001B0001, ulg, 1, ro, "mns1-file-num-mem", "File Number Memory",
     minolta_settings_file_number_memory_map},
    {0x001C0001, ulg, 1, ro, "mns1-last-file-num", "Last File Number"},
    {0x001D0001, ulg, 1, ro, "mns1-white-bal-red", "White Balance Red"},
    {0x001E0001, ulg, 1, ro, "mns1-white-bal-green", "White Balance Green"},
    {0x001F0001, ulg, 1, ro, "mns1-white-bal-blue", "White Balance Blue"},
    {0x00200001, ulg, 1, ro, "mns1-saturation", "Saturation"},
    {0x00210001, ulg, 1, ro, "mns1-Contrast", "Contrast"},
    {0x00220001, ulg, 1, ro, "mns1-sharpness", "Sharpness", minolta_settings_sharpness_map},
    {0x00230001, ulg, 1, ro, "mns1-subj-prog", "Subject Program",
     minolta_settings_subj_program_map},
    {0x00240001, ulg, 1, ro, "mns1-flash-comp", "Flash Compensation"},
    {0x00250001, ulg, 1, ro, "mns1-iso-setting", "ISO Setting", minolta_settings_iso_setting_map},
    {0x00260001, ulg, 1, ro, "mns1-model", "Camera Model", minolta_settings_model_map},
    {0x00270001, ulg, 1, ro, "mns1-interval-mode", "Interval Mode",
     minolta_settings_interval_mode_map},
    {0x00280001, ulg, 1, ro, "mns1-folder-setting", "Folder Name Setting",
     minolta_settings_folder_setting_map},
    {0x00290001, ulg, 1, ro, "mns1-color-mode", "Color Mode", minolta_settings_color_mode_map},
    {0x002A0001, ulg, 1, ro, "mns1-color-filter", "Color Filter"},
    {0x002B0001, ulg, 1, ro, "mns1-bw-filter", "Black and White Filter"},
    {0x002C0001, ulg, 1, ro, "mns1-internal-flash", "Internal Flash Fired",
     minolta_settings_internal_flash_map},
    {0x002D0001, ulg, 1, ro, "mns1-apex-bright", "APEX Brightness Value"},
    {0x002E0001, ulg, 1, ro, "mns1-spot-focus-x", "Spot Focus X Position"},
    {0x002F0001, ulg, 1, ro, "mns1-spot-focus-y", "Spot Focus Y Position"},
    {0x00300001, ulg, 1, ro, "mns1-wide-focus-zone", "AF Wide Focus Zone",
     minolta_settings_wide_focus_zone_map},
    {0x00310001, ulg, 1, ro, "mns1-focus-mode", "Focus Mode", minolta_settings_focus_mode_map},
    {0x00320001, ulg, 1, ro, "mns1-focus-area", "AF Focus Area", minolta_settings_focus_area_map},
    {0x00330001, ulg, 1, ro, "mns1-dec-setting", "DEC Setting", minolta_settings_dec_setting_map},
    {0x00340001, ulg, 1, ro, "mns1-embedded-profile", "Embedded Color Profile",
     minolta_settings_embedded_profile_map},
    {0x00350001, ulg, 1, ro, "mns1-data-imprint", "Data Imprint",
     minolta_settings_data_imprint_map},
    {0x00360001, ulg, 1, ro, "mns1-0003-36", "Field 0x0003-36"},
    {0x00370001, ulg, 1, ro, "mns1-0003-37", "Field 0x0003-37"},
    {0x00380001, ulg, 1, ro, "mns1-0003-38", "Field 0x0003-38"},
    {0x00390001, ulg, 1, ro, "mns1-0003-39", "Field 0x0003-39"},
    {0x0003, und, any, rw, "mn-settings2", "Camera Settings 2"},
    {0x00010003, ulg, 1, ro, "mns2-0003-1", "Field 0x0003-1"},
    {0x00020003, ulg, 1, ro, "mns2-exp-mode", "Exposure Mode", minolta_settings_exposure_mode_map},
    {0x00030003, ulg, 1, ro, "mns2-flash-mode", "Flash Mode", minolta_settings_flash_mode_map},
    {0x00040003, ulg, 1, ro, "mns2-white-bal", "White Balance", minolta_settings_white_balance_map},
    {0x00050003, ulg, 1, ro, "mns2-image-dim", "Image Dimensions",
     minolta_settings_image_dimensions_map},
    {0x00060003, ulg, 1, ro, "mns2-image-qual", "Image Quality", minolta_image_quality_map},
    {0x00070003, ulg, 1, ro, "mns2-drive-mode", "Drive Mode", minolta_settings_drive_mode_map},
    {0x00080003, ulg, 1, ro, "mns2-meter-mode", "Meter Mode", minolta_settings_metering_mode_map},
    {0x00090003, ulg, 1, ro, "mns2-apex-film-speed", "APEX Film Speed Value"},
    {0x000A0003, ulg, 1, ro, "mns2-apex-time", "APEX Time Value"},
    {0x000B0003, ulg, 1, ro, "mns2-apex-aperture", "APEX Aperture Value"},
    {0x000C0003, ulg, 1, ro, "mns2-macro-mode", "Macro Mode", minolta_settings_macro_mode_map},
    {0x000D0003, ulg, 1, ro, "mns2-digital-zoom", "Digital Zoom",
     minolta_settings_digital_zoom_map},
    {0x000E0003, ulg, 1, ro, "mns2-exp-comp", "Exposure Compensation"},
    {0x000F0003, ulg, 1, ro, "mns2-bracket-step", "Bracket Step (EV)",
     minolta_settings_bracket_step_map},
    {0x00100003, ulg, 1, ro, "mns2-0003-10", "Field 0x0003-10"},
    {0x00110003, ulg, 1, ro, "mns2-interval-len", "Interval Length (min)"},
    {0x00120003, ulg, 1, ro, "mns2-interval-num", "Num Interval Frames"},
    {0x00130003, ulg, 1, ro, "mns2-focal-len", "Focal Length"},
    {0x00140003, ulg, 1, ro, "mns2-focus-dist", "Focus Distance (meters)"},
    {0x00150003, ulg, 1, ro, "mns2-flashFired", "Flash Fired", minolta_settings_flash_fired_map},
    {0x00160003, ulg, 1, ro, "mns2-date", "Date"},
    {0x00170003, ulg, 1, ro, "mns2-time", "Time"},
    {0x00180003, ulg, 1, ro, "mns2-max-aper", "Maximum Aperture"},
    {0x00190003, ulg, 1, ro, "mns2-0003-19", "Field 0x0003-19"},
    {0x001A0003, ulg, 1, ro, "mns2-0003-1a", "Field 0x0003-1a"},
    {0x001B0003, ulg, 1, ro, "mns2-file-num-mem", "File Number Memory",
     minolta_settings_file_number_memory_map},
    {0x001C0003, ulg, 1, ro, "mns2-last-file-num", "Last File Number"},
    {0x001D0003, ulg, 1, ro, "mns2-white-bal-red", "White Balance Red"},
    {0x001E0003, ulg, 1, ro, "mns2-white-bal-green", "White Balance Green"},
    {0x001F0003, ulg, 1, ro, "mns2-white-bal-blue", "White Balance Blue"},
    {0x00200003, ulg, 1, ro, "mns2-saturation", "Saturation"},
    {0x00210003, ulg, 1, ro, "mns2-Contrast", "Contrast"},
    {0x00220003, ulg, 1, ro, "mns2-sharpness", "Sharpness", minolta_settings_sharpness_map},
    {0x00230003, ulg, 1, ro, "mns2-subj-prog", "Subject Program",
     minolta_settings_subj_program_map},
    {0x00240003, ulg, 1, ro, "mns2-flash-comp", "Flash Compensation"},
    {0x00250003, ulg, 1, ro, "mns2-iso-setting", "ISO Setting", minolta_settings_iso_setting_map},
    {0x00260003, ulg, 1, ro, "mns2-model", "Camera Model", minolta_settings_model_map},
    {0x00270003, ulg, 1, ro, "mns2-interval-mode", "Interval Mode",
     minolta_settings_interval_mode_map},
    {0x00280003, ulg, 1, ro, "mns2-folder-setting", "Folder Name Setting",
     minolta_settings_folder_setting_map},
    {0x00290003, ulg, 1, ro, "mns2-color-mode", "Color Mode", minolta_settings_color_mode_map},
    {0x002A0003, ulg, 1, ro, "mns2-color-filter", "Color Filter"},
    {0x002B0003, ulg, 1, ro, "mns2-bw-filter", "Black and White Filter"},
    {0x002C0003, ulg, 1, ro, "mns2-internal-flash", "Internal Flash Fired",
     minolta_settings_internal_flash_map},
    {0x002D0003, ulg, 1, ro, "mns2-apex-bright", "APEX Brightness Value"},
    {0x002E0003, ulg, 1, ro, "mns2-spot-focus-x", "Spot Focus X Position"},
    {0x002F0003, ulg, 1, ro, "mns2-spot-focus-y", "Spot Focus Y Position"},
    {0x00300003, ulg, 1, ro, "mns2-wide-focus-zone", "AF Wide Focus Zone",
     minolta_settings_wide_focus_zone_map},
    {0x00310003, ulg, 1, ro, "mns2-focus-mode", "Focus Mode", minolta_settings_focus_mode_map},
    {0x00320003, ulg, 1, ro, "mns2-focus-area", "AF Focus Area", minolta_settings_focus_area_map},
    {0x00330003, ulg, 1, ro, "mns2-dec-setting", "DEC Setting", minolta_settings_dec_setting_map},
    {0x00340003, ulg, 1, ro, "mns2-embedded-profile", "Embedded Color Profile",
     minolta_settings_embedded_profile_map},
    {0x00350003, ulg, 1, ro, "mns2-data-imprint", "Data Imprint",
     minolta_settings_data_imprint_map},
    {0x00360003, ulg, 1, ro, "mns2-0003-36", "Field 0x0003-36"},
    {0x00370003, ulg, 1, ro, "mns2-0003-37", "Field 0x0003-37"},
    {0x00380003, ulg, 1, ro, "mns2-0003-38", "Field 0x0003-38"},
    {0x00390003, ulg, 1, ro, "mns2-0003-39", "Field 0x0003-39"},
    {0x0010, und, any, rw, "mn-0010", "Field 0x0010"},
    {0x0018, und, any, rw, "mn-0018", "Field 0x0018"},
    {0x0020, und, any, rw, "mn-0020", "Field 0x0020"},
    {0x0040, ulg, 1, rw, "mn-image-size", "Compressed Image Size"},
    {0x0081, und, any, rw, "mn-thumbnail", "Thumbnail Image"},
    {0x0088, ulg, any, rw, "mn-thumb-offset", "Thumbnail Offset"},
    {0x0089, ulg, any, rw, "mn-thumb-len", "Thumbnail Length"},
    {0x00E0, und, any, rw, "mn-00e0", "Field 0x00e0"},
    {0x0100, ulg, 1, rw, "mn-0100", "Field 0x0100"},
    {0x0101, usl, 1, rw, "mn-color-mode", "Color Mode", minolta_color_mode_map},
    {0x0102, usl, 1, rw, "mn-quality", "Image Quality", minolta_image_quality_map},
    {0x0103, usl, 1, rw, "mn-quality2", "Image Quality 2", minolta_image_quality_map},
    {0x0106, usl, 1, rw, "mn-0006", "Field 0x0106"},
    {0x0211, ush, 1, rw, "mn-0211", "Field 0x0211"},
    {0x0212, ush, 1, rw, "mn-0212", "Field 0x0212"},
    {0x0213, ush, 1, rw, "mn-0213", "Field 0x0213"},
    {0x0214, ush, 1, rw, "mn-0214", "Field 0x0214"},
    {0x0E00, und, any, rw, "mn-pim", "PIM Information"},
    {0x0F00, und, any, rw, "mn-settings3", "Camera Settings 3"},
};
static_assert(std::size(minolta_fields) == 135);

}  // namespace tagmend::tables
