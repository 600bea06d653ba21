// Casio maker notes.
#pragma once

#include <cstdint>
#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// Layouts (rows of the maker table) in which some values differ.
constexpr std::uint32_t qv_2000ux = 13;
constexpr std::uint32_t qv_8000sx = 14;
constexpr std::uint32_t qv_3500ex = 15;

// clang-format off
constexpr ValueMapEntry casio_recording_mode_map[] = {
    {qv_2000ux,  2, "Panorama",       "pan",    "pa"},
    {qv_2000ux,  3, "Night Scene",    "night",  "n"},
    {qv_2000ux,  4, "Portrait",       "port",   "po"},
    {qv_2000ux,  5, "Landscape",      "land",   "l"},
    {qv_8000sx,  7, "Panorama",       "pan",    "pa"},
    {qv_8000sx, 10, "Night Scene",    "night",  "n"},
    {qv_8000sx, 15, "Portrait",       "port",   "po"},
    {qv_8000sx, 16, "Landscape",      "land",   "l"},
    {0,          1, "Single Shutter", "single", "s"},
    map_end,
};

constexpr ValueMapEntry casio_quality_map[] = {
    {0, 1, "Economy", "economy", "e"},
    {0, 2, "Normal",  "normal",  "n"},
    {0, 3, "Fine",    "fine",    "f"},
    map_end,
};

constexpr ValueMapEntry casio_focus_mode_map[] = {
    {0, 2, "Macro",        "macro",    "mac"},
    {0, 3, "Auto Focus",   "auto",     "a"},
    {0, 4, "Manual Focus", "manual",   "man"},
    {0, 5, "Infinity",     "infinity", "i"},
    map_end,
};

constexpr ValueMapEntry casio_flash_mode_map[] = {
    {qv_2000ux, 3, "Off",               "off",     "of"},
    {qv_2000ux, 4, "Red Eye Reduction", "red-eye", "r"},
    {qv_8000sx, 4, "Off",               "off",     "of"},
    {qv_8000sx, 5, "Red Eye Reduction", "red-eye", "r"},
    {qv_3500ex, 4, "Off",               "off",     "of"},
    {qv_3500ex, 5, "Red Eye Reduction", "red-eye", "r"},
    {0,         1, "Auto",              "auto",    "a"},
    {0,         2, "On",                "on",      "on"},
    map_end,
};

constexpr ValueMapEntry casio_flash_intensity_map[] = {
    {0, 11, "Weak",   "weak",   "w"},
    {0, 13, "Normal", "normal", "n"},
    {0, 14, "High",   "high",   "h"},
    {0, 15, "Strong", "strong", "s"},
    map_end,
};

constexpr ValueMapEntry casio_white_balance_map[] = {
    {0,   1, "Auto",        "auto",     "a"},
    {0,   2, "Tungsten",    "tungsten", "t"},
    {0,   3, "Daylight",    "daylight", "d"},
    {0,   4, "Fluorescent", "fluor",    "f"},
    {0,   5, "Shade",       "shade",    "s"},
    {0, 129, "Manual",      "manual",   "m"},
    map_end,
};

constexpr ValueMapEntry casio_digital_zoom_map[] = {
    {qv_2000ux, 0x00010001, "2X",  "2x",  "2"},
    {qv_8000sx, 0x00020000, "2X",  "2x",  "2"},
    {qv_8000sx, 0x00040000, "4X",  "4x",  "4"},
    {0,         0x00010000, "Off", "off", "o"},
    map_end,
};

constexpr ValueMapEntry casio_sharpness_map[] = {
    {0, 0, "Normal", "normal", "n"},
    {0, 1, "Soft",   "soft",   "s"},
    {0, 2, "Hard",   "hard",   "h"},
    map_end,
};

constexpr ValueMapEntry casio_level_map[] = {
    {0, 0, "Normal", "normal", "n"},
    {0, 1, "Low",    "low",    "l"},
    {0, 2, "High",   "high",   "h"},
    map_end,
};

constexpr ValueMapEntry casio_ccd_map[] = {
    {0,  80, "Normal", "normal", "n"},
    {0, 100, "High",   "high",   "h"},
    map_end,
};
// clang-format on

constexpr FieldRow casio_fields[] = {
    {0x0001, ush, 1, rw, "cs-rec-mode", "Recording Mode", casio_recording_mode_map},
    {0x0002, ush, 1, rw, "cs-quality", "Quality", casio_quality_map},
    {0x0003, usl, 1, rw, "cs-focus-mode", "Focusing Mode", casio_focus_mode_map},
    {0x0004, usl, 1, rw, "cs-flash-mode", "Flash Mode", casio_flash_mode_map},
    {0x0005, ush, 1, rw, "cs-flash-int", "Flash Intensity", casio_flash_intensity_map},
    {0x0006, ulg, 1, rw, "cs-obj-dist", "Object Distance"},
    {0x0007, ush, 1, rw, "cs-white-bal", "White Balance", casio_white_balance_map},
    {0x0008, ush, 1, rw, "cs-0008", "Field 0x0008"},
    {0x0009, ush, 1, rw, "cs-0009", "Field 0x0009"},
    {0x000A, ulg, 1, rw, "cs-digi-zoom", "Digital Zoom", casio_digital_zoom_map},
    {0x000B, ush, 1, rw, "cs-sharpness", "Sharpness", casio_sharpness_map},
    {0x000C, ush, 1, rw, "cs-contrast", "Contrast", casio_level_map},
    {0x000D, ush, 1, rw, "cs-saturation", "Saturation", casio_level_map},
    {0x000E, ush, 1, rw, "cs-000e", "Field 0x000e"},
    {0x000F, ush, 1, rw, "cs-000f", "Field 0x000f"},
    {0x0010, ush, 1, rw, "cs-0010", "Field 0x0010"},
    {0x0011, ulg, 1, rw, "cs-0011", "Field 0x0011"},
    {0x0012, ush, 1, rw, "cs-0012", "Field 0x0012"},
    {0x0013, ush, 1, rw, "cs-0013", "Field 0x0013"},
    {0x0014, ush, 1, rw, "cs-ccd", "CCD Sensitivity", casio_ccd_map},
    {0x0015, str, any, rw, "cs-0015", "Field 0x0015"},
    {0x0016, ush, 1, rw, "cs-0016", "Field 0x0016"},
    {0x0017, ush, 1, rw, "cs-0017", "Field 0x0017"},
    {0x0018, ush, 1, rw, "cs-0018", "Field 0x0018"},
    {0x0019, ush, 1, rw, "cs-0019", "Field 0x0019"},
    {0x001A, und, any, rw, "cs-001a", "Field 0x001a"},
    {0x001C, ush, any, rw, "cs-001c", "Field 0x001c"},
    {0x001D, ush, any, rw, "cs-001d", "Field 0x001d"},
    {0x0E00, und, any, rw, "cs-0e00", "Field 0x0e00"},
};
static_assert(std::size(casio_fields) == 29);

}  // namespace tagmend::tables
