// Panasonic maker notes.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry panasonic_quality_map[] = {
    {0, 2, "High",     "high",     "h"},
    {0, 3, "Standard", "standard", "s"},
    map_end,
};

constexpr ValueMapEntry panasonic_white_balance_map[] = {
    {0, 1, "Auto",     "auto",     "a"},
    {0, 2, "Daylight", "daylight", "d"},
    {0, 3, "Cloudy",   "cloudy",   "c"},
    {0, 4, "Halogen",  "halogen",  "h"},
    {0, 5, "Manual",   "manual",   "m"},
    {0, 8, "Flash",    "flash",    "f"},
    map_end,
};

constexpr ValueMapEntry panasonic_focus_mode_map[] = {
    {0, 1, "Auto",   "auto",   "a"},
    {0, 2, "Manual", "manual", "m"},
    map_end,
};

constexpr ValueMapBytesEntry panasonic_spot_mode_map[] = {
    bytes<0x00, 0x10>("Off", "off",  "off"),
    bytes<0x00, 0x00>("Off", "off1", "off1"),
    bytes<0x10, 0x00>("Off", "off2", "off2"),
    bytes<0x10, 0x10>("Off", "off3", "off3"),
    bytes<0x10, 0x01>("On",  "on",   "on"),
    bytes<0x00, 0x01>("On",  "on1",  "on1"),
    bytes_map_end,
};

constexpr ValueMapEntry panasonic_stabiliser_mode_map[] = {
    {0, 2, "Mode 1", "on",  "on"},
    {0, 3, "Off",    "off", "off"},
    {0, 4, "Mode 2", "off", "off"},
    map_end,
};

constexpr ValueMapEntry panasonic_macro_mode_map[] = {
    {0, 1, "Macro",  "macro",  "m"},
    {0, 2, "Normal", "normal", "n"},
    map_end,
};

constexpr ValueMapEntry panasonic_shooting_mode_map[] = {
    {0,  2, "Portrait",          "portrait",     "pt"},
    {0,  3, "Scenery",           "scenery",      "sc"},
    {0,  4, "Sports",            "sports",       "sp"},
    {0,  5, "Night Portrait",    "night-port",   "np"},
    {0,  6, "Program",           "program",      "pr"},
    {0,  7, "Aperture Priority", "aperture-pri", "ap"},
    {0,  8, "Shutter Priority",  "shutter-pri",  "sp"},
    {0,  9, "Macro",             "macro",        "mc"},
    {0, 11, "Manual",            "manual",       "mn"},
    {0, 13, "Panning",           "panning",      "pn"},
    {0, 18, "Fireworks",         "fireworks",    "fw"},
    {0, 19, "Party",             "party",        "py"},
    {0, 20, "Snow",              "snow",         "sn"},
    {0, 21, "Night Scenery",     "night-scene",  "ns"},
    map_end,
};

constexpr ValueMapEntry panasonic_audio_map[] = {
    {0, 1, "Yes", "yes", "y"},
    {0, 2, "No",  "no",  "n"},
    map_end,
};

constexpr ValueMapEntry panasonic_color_effect_map[] = {
    {0, 1, "Off",             "off",   "o"},
    {0, 2, "Warm",            "warm",  "w"},
    {0, 3, "Cool",            "cool",  "c"},
    {0, 4, "Black and White", "bw",    "b"},
    {0, 5, "Sepia",           "sepia", "s"},
    map_end,
};

constexpr ValueMapEntry panasonic_level_map[] = {
    {0, 0, "Standard", "standard", "s"},
    {0, 1, "Low",      "low",      "l"},
    {0, 2, "High",     "high",     "h"},
    map_end,
};
// clang-format on

constexpr FieldRow panasonic_fields[] = {
    {0x0001, ush, 1, rw, "pn-quality", "Image Quality", panasonic_quality_map},
    {0x0002, und, 4, rw, "pn-0002", "Field 0x0002"},
    {0x0003, ush, 1, rw, "pn-white-bal", "White Balance", panasonic_white_balance_map},
    {0x0007, ush, 1, rw, "pn-focus-mode", "Focus Mode", panasonic_focus_mode_map},
    {0x000F, uby, 2, rw, "pn-spot-mode", "Spot Mode", panasonic_spot_mode_map},
    {0x001A, ush, 1, rw, "pn-stab-mode", "Image Stabiliser Mode", panasonic_stabiliser_mode_map},
    {0x001C, ush, 1, rw, "pn-macro-mode", "Macro Mode", panasonic_macro_mode_map},
    {0x001F, ush, 1, rw, "pn-shoot-mode", "Shooting Mode", panasonic_shooting_mode_map},
    {0x0020, ush, 1, rw, "pn-audio", "Audio Clip", panasonic_audio_map},
    {0x0021, und, any, rw, "pn-0021", "Field 0x0021"},
    {0x0022, ush, 1, rw, "pn-0022", "Field 0x0022"},
    {0x0023, ssh, 1, rw, "pn-white-adj", "White Balance Adjust"},
    {0x0024, ssh, 1, rw, "pn-flash-bias", "Flash Bias"},
    {0x0025, und, 16, rw, "pn-0025", "Field 0x0025"},
    {0x0026, und, 4, rw, "pn-0026", "Field 0x0026"},
    {0x0027, ush, 1, rw, "pn-0027", "Field 0x0027"},
    {0x0028, ush, 1, rw, "pn-color-effect", "Color Effect", panasonic_color_effect_map},
    {0x0029, ulg, 1, rw, "pn-0029", "Field 0x0029"},
    {0x002A, ush, 1, rw, "pn-002a", "Field 0x002a"},
    {0x002B, ulg, 1, rw, "pn-002b", "Field 0x002b"},
    {0x002C, ush, 1, rw, "pn-contrast", "Contrast", panasonic_level_map},
    {0x002D, ush, 1, rw, "pn-noise-reduct", "Noise Reduction", panasonic_level_map},
    {0x002E, ush, 1, rw, "pn-002e", "Field 0x002e"},
    {0x002F, ush, 1, rw, "pn-002f", "Field 0x002f"},
    {0x4449, und, any, rw, "pn-4449", "Field 0x4449"},
};
static_assert(std::size(panasonic_fields) == 25);

}  // namespace tagmend::tables
