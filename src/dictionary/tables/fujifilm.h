// FujiFilm maker notes.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry fujifilm_sharpness_map[] = {
    {0, 1, "Soft",   "soft",   "s"},
    {0, 3, "Normal", "normal", "n"},
    {0, 5, "Hard",   "hard",   "h"},
    map_end,
};

constexpr ValueMapEntry fujifilm_white_balance_map[] = {
    {0,    0, "Auto",                        "auto",           "a"},
    {0,  256, "Daylight",                    "daylight",       "d"},
    {0,  512, "Cloudy",                      "cloudy",         "cl"},
    {0,  768, "Daylight-colour Fluorescent", "daylight-fluor", "dlf"},
    {0,  769, "DayWhite-colour Fluorescent", "daywhite-fluor", "dwf"},
    {0,  770, "White Fluorescent",           "white-fluor",    "wf"},
    {0, 1024, "Incandescent",                "incandescent",   "i"},
    {0, 3840, "Custom",                      "custom    ",     "cu"},
    map_end,
};

constexpr ValueMapEntry fujifilm_flash_mode_map[] = {
    {0, 0, "Auto",             "auto",   "a"},
    {0, 1, "On",               "on",     "on"},
    {0, 2, "Off",              "off",    "of"},
    {0, 3, "Redeye Reduction", "redeye", "r"},
    map_end,
};

constexpr ValueMapEntry fujifilm_on_off_map[] = {
    {0, 0, "Off", "off", "of"},
    {0, 1, "On",  "on",  "on"},
    map_end,
};

constexpr ValueMapEntry fujifilm_focus_mode_map[] = {
    {0, 0, "Auto",   "auto",   "a"},
    {0, 1, "Manual", "manual", "m"},
    map_end,
};

constexpr ValueMapEntry fujifilm_picture_mode_map[] = {
    {0,   0, "Auto",                 "auto",        "a"},
    {0,   1, "Portrait",             "portrait",    "p"},
    {0,   2, "Landscape",            "landscape",   "l"},
    {0,   4, "Sports",               "sports",      "s"},
    {0,   5, "Night",                "night",       "n"},
    {0,   6, "Program AE",           "program-ae",  "pae"},
    {0, 256, "Aperture Priority AE", "aperture-ae", "aae"},
    {0, 512, "Shutter Priority AE",  "shutter-ae",  "sae"},
    {0, 768, "Manual",               "manual",      "m"},
    map_end,
};

constexpr ValueMapEntry fujifilm_blur_warning_map[] = {
    {0, 0, "No",  "no",  "n"},
    {0, 1, "Yes", "yes", "y"},
    map_end,
};

constexpr ValueMapEntry fujifilm_focus_warning_map[] = {
    {0, 0, "No",           "no",           "n"},
    {0, 1, "Out of Focus", "out-of-focus", "o"},
    map_end,
};

constexpr ValueMapEntry fujifilm_ae_warning_map[] = {
    {0, 0, "No",           "no",           "n"},
    {0, 1, "Over Exposed", "over-exposed", "o"},
    map_end,
};
// clang-format on

constexpr FieldRow fujifilm_fields[] = {
    {0x0000, und, 4, rw, "fu-version", "Version"},
    {0x1000, str, any, rw, "fu-quality", "Quality"},
    {0x1001, ush, 1, rw, "fu-sharpness", "Sharpness", fujifilm_sharpness_map},
    {0x1002, ush, 1, rw, "fu-white-bal", "White Balance", fujifilm_white_balance_map},
    {0x1003, ush, 1, rw, "fu-1003", "Field 0x1003"},
    {0x1010, ush, 1, rw, "fu-flash-mode", "Flash Mode", fujifilm_flash_mode_map},
    {0x1011, srt, 1, rw, "fu-flash-str", "Flash Strength Comp"},
    {0x1020, ush, 1, rw, "fu-macro", "Macro", fujifilm_on_off_map},
    {0x1021, ush, 1, rw, "fu-focus-mode", "Focus Mode", fujifilm_focus_mode_map},
    {0x1022, ush, 1, rw, "fu-1022", "Field 0x1022"},
    {0x1023, ush, 2, rw, "fu-1023", "Field 0x1023"},
    {0x1030, ush, 1, rw, "fu-slow-sync", "Slow Sync.", fujifilm_on_off_map},
    {0x1031, ush, 1, rw, "fu-picture-mode", "Picture Mode", fujifilm_picture_mode_map},
    {0x1100, ush, 1, rw, "fu-bracket", "Contin/Bracket Mode", fujifilm_on_off_map},
    {0x1200, ush, 1, rw, "fu-1200", "Field 0x1200"},
    {0x1300, ush, 1, rw, "fu-blur-warn", "Blur Warning", fujifilm_blur_warning_map},
    {0x1301, ush, 1, rw, "fu-focus-warn", "Focus Warning", fujifilm_focus_warning_map},
    {0x1302, ush, 1, rw, "fu-ae-warn", "AE Warning", fujifilm_ae_warning_map},
};
static_assert(std::size(fujifilm_fields) == 18);

}  // namespace tagmend::tables
