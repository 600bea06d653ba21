// Canon: the maker note and the values read from Canon Raw (CRW) files.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry canon_macro_mode_map[] = {
    {0, 1, "Macro",  "macro",  "m"},
    {0, 2, "Normal", "normal", "n"},
    map_end,
};

constexpr ValueMapEntry canon_quality_map[] = {
    {0, 2, "Normal",    "normal",    "n"},
    {0, 3, "Fine",      "fine",      "f"},
    {0, 5, "Superfine", "superfine", "s"},
    map_end,
};

constexpr ValueMapEntry canon_flash_mode_map[] = {
    {0,  0, "Not Fired",   "none",        "n"},
    {0,  1, "Auto",        "auto",        "a"},
    {0,  2, "On",          "on",          "o"},
    {0,  3, "Redeye",      "redeye",      "r"},
    {0,  4, "Slow Synch",  "slow-synch",  "s"},
    {0,  5, "Auto+Redeye", "auto-redeye", "ar"},
    {0,  6, "On+Redeye",   "on-redeye",   "or"},
    {0, 16, "External",    "external",    "e"},
    map_end,
};

constexpr ValueMapEntry canon_drive_mode_map[] = {
    {0, 0, "Single/Timer", "single", "s"},
    {0, 1, "Continuous",   "contin", "c"},
    map_end,
};

constexpr ValueMapEntry canon_focus_mode_map[] = {
    {0, 0, "One Shot",   "single", "s"},
    {0, 1, "AI Servo",   "ai-s",   "ais"},
    {0, 2, "AI Focus",   "ai-f",   "aif"},
    {0, 3, "MF",         "mf",     "m"},
    {0, 4, "Single",     "single", "s"},
    {0, 5, "Continuous", "contin", "c"},
    {0, 6, "MF",         "mf2",    "m2"},
    map_end,
};

constexpr ValueMapEntry canon_image_size_map[] = {
    {0, 0, "Large",  "large",  "l"},
    {0, 1, "Medium", "medium", "m"},
    {0, 2, "Small",  "small",  "s"},
    map_end,
};

constexpr ValueMapEntry canon_easy_shooting_map[] = {
    {0,  0, "Full Auto",    "auto",         "a"},
    {0,  1, "Manual",       "manual",       "man"},
    {0,  2, "Landscape",    "landscape",    "l"},
    {0,  3, "Fast Shutter", "fast-shutter", "f"},
    {0,  4, "Slow Shutter", "slow-shutter", "sl"},
    {0,  5, "Night",        "night",        "n"},
    {0,  6, "B&W",          "bw",           "b"},
    {0,  7, "Sepia",        "sepia",        "se"},
    {0,  8, "Portrait",     "portrait",     "p"},
    {0,  9, "Sports",       "sports",       "sp"},
    {0, 10, "Macro",        "macro",        "mac"},
    {0, 11, "Pan Focus",    "pan-focus",    "p"},
    map_end,
};

constexpr ValueMapEntry canon_digital_zoom_map[] = {
    {0, 0, "None", "none", "n"},
    {0, 1, "2x",   "2x",   "2"},
    {0, 2, "4x",   "4x",   "4"},
    map_end,
};

constexpr ValueMapEntry canon_contrast_map[] = {
    {0, 65535, "Low",    "low",    "l"},
    {0,     0, "Normal", "normal", "n"},
    {0,     1, "High",   "high",   "h"},
    map_end,
};

constexpr ValueMapEntry canon_saturation_map[] = {
    {0, 65535, "Low",    "low",    "l"},
    {0,     0, "Normal", "normal", "n"},
    {0,     1, "High",   "high",   "h"},
    map_end,
};

constexpr ValueMapEntry canon_sharpness_map[] = {
    {0, 65535, "Low",    "low",    "l"},
    {0,     0, "Normal", "normal", "n"},
    {0,     1, "High",   "high",   "h"},
    map_end,
};

constexpr ValueMapEntry canon_iso_map[] = {
    {0,  0, "N/A",  "na",   "n"},
    {0, 15, "Auto", "auto", "a"},
    {0, 16, "50",   "50",   "50"},
    {0, 17, "100",  "100",  "100"},
    {0, 18, "200",  "200",  "200"},
    {0, 19, "400",  "400",  "400"},
    map_end,
};

constexpr ValueMapEntry canon_metering_mode_map[] = {
    {0, 0, "Unknown",         "",        ""},
    {0, 3, "Evaluative",      "eval",    "e"},
    {0, 4, "Partial",         "partial", "p"},
    {0, 5, "Center Weighted", "center",  "c"},
    map_end,
};

constexpr ValueMapEntry canon_focus_type_map[] = {
    {0, 0, "Manual",            "manual",   "m"},
    {0, 1, "Auto",              "auto",     "a"},
    {0, 3, "Close-up (Macro)",  "close-up", "c"},
    {0, 8, "Locked (Pan Mode)", "locked",   "l"},
    map_end,
};

constexpr ValueMapEntry canon_af_point_map[] = {
    {0,     0, "Right",  "right",  "r1"},
    {0,     1, "Center", "center", "c1"},
    {0,     2, "Left",   "left",   "l1"},
    {0, 12288, "None",   "none",   "n"},
    {0, 12289, "Auto",   "auto",   "a"},
    {0, 12290, "Right",  "right",  "r"},
    {0, 12291, "Center", "center", "c"},
    {0, 12292, "Left",   "left",   "l"},
    map_end,
};

constexpr ValueMapEntry canon_exposure_mode_map[] = {
    {0, 0, "Easy Shoot",  "easy",    "e"},
    {0, 1, "Program",     "program", "p"},
    {0, 2, "Tv Priority", "tv-pri",  "tv"},
    {0, 3, "Av Priority", "av-pri",  "av"},
    {0, 4, "Manual",      "manual",  "m"},
    {0, 5, "A-DEP",       "a-dep",   "a"},
    map_end,
};

constexpr ValueMapEntry canon_flash_activity_map[] = {
    {0,   0, "Not Fired", "not-fired", "n"},
    {0,   1, "Fired",     "fired",     "f"},
    {0, 255, "Unknown",   "unknown",   "u"},
    map_end,
};

constexpr ValueMapEntry canon_focus_map[] = {
    {0, 0, "Single",     "single", "s"},
    {0, 1, "Continuous", "contin", "c"},
    map_end,
};

constexpr ValueMapEntry canon_white_balance_map[] = {
    {0, 0, "Auto",        "auto",        "a"},
    {0, 1, "Sunny",       "sunny",       "s"},
    {0, 2, "Cloudy",      "cloudy",      "cl"},
    {0, 3, "Tungsten",    "tungsten",    "t"},
    {0, 4, "Fluorescent", "fluorescent", "flu"},
    {0, 5, "Flash",       "flash",       "fla"},
    {0, 6, "Custom",      "custom",      "cu"},
    map_end,
};

constexpr ValueMapEntry canon_af_point2_map[] = {
    {0,     0, "Right",  "right1",  "r1"},
    {0,     1, "Center", "center1", "c1"},
    {0,     2, "Left",   "left1",   "l1"},
    {0, 12288, "Right",  "right2",  "r2"},
    {0, 12289, "Center", "center3", "c2"},
    {0, 12290, "Left",   "left2",   "l2"},
    map_end,
};

constexpr ValueMapEntry canon_flash_bias_map[] = {
    {0, 65472, "-2.00", "-2.00", "-2.00"},
    {0, 65484, "-1.67", "-1.67", "-1.67"},
    {0, 65488, "-1.50", "-1.50", "-1.50"},
    {0, 65492, "-1.33", "-1.33", "-1.33"},
    {0, 65504, "-1.00", "-1.00", "-1.00"},
    {0, 65516, "-0.67", "-0.67", "-0.67"},
    {0, 65520, "-0.50", "-0.50", "-0.50"},
    {0, 65524, "-0.33", "-0.33", "-0.33"},
    {0,     0, "0.00",  "0.00",  "0.00"},
    {0,    12, "+0.33", "+0.33", "+0.33"},
    {0,    16, "+0.50", "+0.50", "+0.50"},
    {0,    20, "+0.67", "+0.67", "+0.67"},
    {0,    32, "+1.00", "+1.00", "+1.00"},
    {0,    44, "+1.33", "+1.33", "+1.33"},
    {0,    48, "+1.50", "+1.50", "+1.50"},
    {0,    52, "+1.67", "+1.67", "+1.67"},
    {0,    64, "+2.00", "+2.00", "+2.00"},
    map_end,
};

constexpr ValueMapEntry canon_noise_reduction_map[] = {
    {0, 0, "Off", "off", "off"},
    {0, 1, "On",  "on",  "on"},
    map_end,
};

constexpr ValueMapEntry canon_ae_lock_map[] = {
    {0, 0, "AF/AE Lock",       "ae-af-lock",       "l1"},
    {0, 1, "AE Lock/AF",       "ae-lock-af",       "l2"},
    {0, 2, "AF/AF Lock",       "af-af-lock",       "l3"},
    {0, 3, "AE+release/AE+AF", "ae-release-ae-af", "l4"},
    map_end,
};

constexpr ValueMapEntry canon_mirror_lockup_map[] = {
    {0, 0, "Disabled", "disabled", "d"},
    {0, 1, "Enabled",  "enabled",  "e"},
    map_end,
};

constexpr ValueMapEntry canon_tv_av_exposure_map[] = {
    {0, 0, "1/2 stop", "half-stop",  "2"},
    {0, 1, "1/3 stop", "third-stop", "3"},
    map_end,
};

constexpr ValueMapEntry canon_av_assist_map[] = {
    {0, 0, "On (Auto)", "on",  "on"},
    {0, 1, "Off",       "off", "off"},
    map_end,
};

constexpr ValueMapEntry canon_shutter_in_av_map[] = {
    {0, 0, "Auto",          "auto",  "a"},
    {0, 1, "Fixed (1/200)", "fixed", "f"},
    map_end,
};

constexpr ValueMapEntry canon_aeb_seq_map[] = {
    {0, 0, "0,-,+ / Enabled",  "aeb1", "1"},
    {0, 1, "0,-,+ / Disabled", "aeb2", "2"},
    {0, 2, "-,0,+ / Enabled",  "aeb3", "3"},
    {0, 3, "-,0,+ / Disabled", "aeb4", "4"},
    map_end,
};

constexpr ValueMapEntry canon_shutter_curtain_map[] = {
    {0, 0, "1st Curtain Sync", "1st", "1"},
    {0, 1, "2nd Curtain Sync", "2nd", "2"},
    map_end,
};

constexpr ValueMapEntry canon_lens_function_map[] = {
    {0, 0, "AF Stop",                 "ae-stop",    "s"},
    {0, 1, "Operate AF",              "operate-ae", "o"},
    {0, 2, "Lock AE and Start Timer", "lock-ae",    "l"},
    map_end,
};

constexpr ValueMapEntry canon_fill_flash_map[] = {
    {0, 0, "Enabled",  "enabled",  "e"},
    {0, 1, "Disabled", "disabled", "d"},
    map_end,
};

constexpr ValueMapEntry canon_menu_return_map[] = {
    {0, 0, "Top",                 "top",      "t"},
    {0, 1, "Previous (volatile)", "prev-vol", "pv"},
    {0, 2, "Previous",            "prev",     "p"},
    map_end,
};

constexpr ValueMapEntry canon_set_button_map[] = {
    {0, 0, "Not Assigned",      "none",        "n"},
    {0, 1, "Change Quality",    "change-qual", "cq"},
    {0, 2, "Change ISO Speed",  "change-iso",  "ci"},
    {0, 2, "Select Parameters", "select",      "s"},
    map_end,
};

constexpr ValueMapEntry canon_sensor_cleaning_map[] = {
    {0, 0, "Disabled", "disabled", "d"},
    {0, 1, "Enabled",  "enabled",  "e"},
    map_end,
};
// clang-format on

// A tag above 0xFFFF is an element of an array field: element << 16 | tag of the array.
constexpr FieldRow canon_fields[] = {
    {0x0000, usl, any, rw, "cn-0000", "Field 0x0000"},
    {0x0001, ush, any, ro, "cn-0001", "Settings 1"},
    {0x00010001, ush, 1, ro, "cn-macro-mode", "Macro Mode", canon_macro_mode_map},
    {0x00020001, ush, 1, ro, "cn-self-timer", "Self Timer"},
    {0x00030001, ush, 1, ro, "cn-quality", "Quality", canon_quality_map},
    {0x00040001, ush, 1, ro, "cn-flash-mode", "Flash Mode", canon_flash_mode_map},
    {0x00050001, ush, 1, ro, "cn-drive-mode", "Drive Mode", canon_drive_mode_map},
    {0x00070001, ush, 1, ro, "cn-focus-mode", "Focus Mode", canon_focus_mode_map},
    {0x000A0001, ush, 1, ro, "cn-image-size", "Image Size", canon_image_size_map},
    {0x000B0001, ush, 1, ro, "cn-easy-shoot", "Easy Shoot", canon_easy_shooting_map},
    {0x000C0001, ush, 1, ro, "cn-digi-zoom", "Digital Zoom", canon_digital_zoom_map},
    {0x000D0001, ush, 1, ro, "cn-contrast", "Contrast", canon_contrast_map},
    {0x000E0001, ush, 1, ro, "cn-saturation", "Saturation", canon_saturation_map},
    {0x000F0001, ush, 1, ro, "cn-sharpness", "Sharpness", canon_sharpness_map},
    {0x00100001, ush, 1, ro, "cn-iso", "ISO", canon_iso_map},
    {0x00110001, ush, 1, ro, "cn-meter-mode", "Meter Mode", canon_metering_mode_map},
    {0x00120001, ush, 1, ro, "cn-focus-type", "Focus Type", canon_focus_type_map},
    {0x00130001, ush, 1, ro, "cn-af-point", "AF Point", canon_af_point_map},
    {0x00140001, ush, 1, ro, "cn-exp-mode", "Exposure Moded", canon_exposure_mode_map},
    {0x00170001, ush, 1, ro, "cn-focal-len-long", "Focal Length Long"},
    {0x00180001, ush, 1, ro, "cn-focal-len-short", "Focal Length Short"},
    {0x00190001, ush, 1, ro, "cn-focal-units", "Focal Units per mm"},
    {0x001C0001, ush, 1, ro, "cn-flash-activity", "Flash Activity", canon_flash_activity_map},
    {0x001D0001, ush, 1, ro, "cn-flash", "Flash"},
    {0x00200001, ush, 1, ro, "cn-focus", "Focus", canon_focus_map},
    {0x0002, ush, any, rw, "cn-0002", "Field 0x0002"},
    {0x0003, ush, any, rw, "cn-0003", "Field 0x0003"},
    {0x0004, ush, any, ro, "cn-0004", "Settings 4"},
    {0x00070004, ush, 1, ro, "cn-white-bal", "White Balance", canon_white_balance_map},
    {0x00090004, ush, any, ro, "cn-burst-seq", "Continuous Burst Seq"},
    {0x000E0004, ush, 1, ro, "cn-af-point2", "AF Point (2)", canon_af_point2_map},
    {0x000F0004, ush, 1, ro, "cn-flash-bias", "Flash Bias (EV)", canon_flash_bias_map},
    {0x00130004, ush, any, ro, "cn-subj-dist", "Subject Distance"},
    {0x0005, ush, any, rw, "cn-0005", "Field 0x0005"},
    {0x0006, str, any, rw, "cn-image-type", "Image Type"},
    {0x0007, str, any, rw, "cn-firm-ver", "Firmware Version"},
    {0x0008, ulg, 1, rw, "cn-image-num", "Image Number"},
    {0x0009, str, any, rw, "cn-owner", "Owner Name"},
    {0x000A, ush, any, rw, "cn-000a", "Field 0x000a"},
    {0x000C, ulg, any, rw, "cn-body-num", "Camera Body Number"},
    {0x000D, ush, any, rw, "cn-000d", "Field 0x000d"},
    {0x000E, ulg, any, rw, "cn-000e", "Field 0x000e"},
    {0x000F, ush, any, rw, "cn-custfunc", "Custom Functions"},
    {0x0001000F, ush, 1, rw, "cn-noise-reduct", "Long Exp. Noise Reduct",
     canon_noise_reduction_map},
    {0x0002000F, ush, 1, rw, "cn-ae-lock", "AE Lock Button", canon_ae_lock_map},
    {0x0003000F, ush, 1, rw, "cn-mirror-lockup", "Mirror Lockup", canon_mirror_lockup_map},
    {0x0004000F, ush, 1, rw, "cn-tv-av-exp", "Tv/Av and Exposure Level", canon_tv_av_exposure_map},
    {0x0005000F, ush, 1, rw, "cn-av-assist", "Av Assist Light", canon_av_assist_map},
    {0x0006000F, ush, 1, rw, "cn-shutter-in-av", "Shutter in Av Mode", canon_shutter_in_av_map},
    {0x0007000F, ush, 1, rw, "cn-aeb-seq", "AEB Seq/Auto Cancellation", canon_aeb_seq_map},
    {0x0008000F, ush, 1, rw, "cn-shutter-curtain", "Shutter Curtain Sync",
     canon_shutter_curtain_map},
    {0x0009000F, ush, 1, rw, "cn-lens-func", "Lens AF Stop Button Func.", canon_lens_function_map},
    {0x000A000F, ush, 1, rw, "cn-fill-flash", "Auto Reduction Fill Flash", canon_fill_flash_map},
    {0x000B000F, ush, 1, rw, "cn-menu-return", "MENU Button Return Posn", canon_menu_return_map},
    {0x000C000F, ush, 1, rw, "cn-set-button", "SET Button Function", canon_set_button_map},
    {0x000D000F, ush, 1, rw, "cn-sensor-cleaning", "Sensor Cleaning", canon_sensor_cleaning_map},
    {0x0010, ulg, any, rw, "cn-0010", "Field 0x0010"},
    {0x0012, ush, any, rw, "cn-0012", "Field 0x0012"},
    {0x0013, ush, 4, rw, "cn-0013", "Field 0x0013"},
    {0x0015, ulg, any, rw, "cn-0015", "Field 0x0015"},
    {0x0081, ulg, any, rw, "cn-0081", "Field 0x0081"},
    {0x0082, ulg, any, rw, "cn-0082", "Field 0x0082"},
    {0x0083, ulg, any, rw, "cn-0083", "Field 0x0083"},
    {0x0090, ush, any, rw, "cn-0090", "Field 0x0090"},
    {0x0091, ush, any, rw, "cn-0091", "Field 0x0091"},
    {0x0092, ush, any, rw, "cn-0092", "Field 0x0092"},
    {0x0094, und, any, rw, "cn-0094", "Field 0x0094"},
};
static_assert(std::size(canon_fields) == 67);

// clang-format off
constexpr ValueMapEntry canon_raw_iso_map[] = {
    {0, 160, "100",  "100",  "100"},
    {0, 192, "200",  "200",  "200"},
    {0, 224, "400",  "400",  "400"},
    {0, 256, "800",  "800",  "800"},
    {0, 268, "1000", "1000", "1000"},
    {0, 288, "1600", "1600", "1600"},
    map_end,
};

constexpr ValueMapEntry canon_raw_aperture_map[] = {
    {0, 32768, "None", "none",  "n"},
    {0,     0, "1.0",  "1",     "1"},
    {0,    12, "1.1",  "1-1",   "1-1"},
    {0,    20, "1.2",  "1-2",   "1-2"},
    {0,    32, "1.4",  "1-4",   "1-4"},
    {0,    44, "1.6",  "1-6",   "1-6"},
    {0,    56, "1.8",  "1-8",   "1-8"},
    {0,    64, "2.0",  "2",     "2"},
    {0,    76, "2.2",  "2-2",   "2-2"},
    {0,    84, "2.5",  "2-5",   "2-5"},
    {0,    96, "2.8",  "2-8",   "2-8"},
    {0,   108, "3.2",  "3-2",   "3-2"},
    {0,   112, "3.5",  "3-5-1", "3-5-1"},
    {0,   116, "3.5",  "3-5-2", "3-5-2"},
    {0,   128, "4.0",  "4",     "4"},
    {0,   140, "4.5",  "4-5-1", "4-5-1"},
    {0,   144, "4.5",  "4-5-2", "4-5-2"},
    {0,   148, "5.0",  "5",     "5"},
    {0,   160, "5.6",  "5-6",   "5-6"},
    {0,   172, "6.3",  "6-3",   "6-3"},
    {0,   176, "6.7",  "6-7",   "6-7"},
    {0,   180, "7.1",  "7-1",   "7-1"},
    {0,   192, "8.0",  "8",     "8"},
    {0,   204, "9.0",  "9",     "9"},
    {0,   208, "9.5",  "9-5",   "9-5"},
    {0,   212, "10",   "10",    "10"},
    {0,   224, "11",   "11",    "11"},
    {0,   236, "13",   "13-1",  "13-1"},
    {0,   240, "13",   "13-2",  "13-2"},
    {0,   255, "14",   "14",    "14"},
    {0,   256, "16",   "16",    "16"},
    {0,   268, "18",   "18",    "18"},
    {0,   272, "19",   "19",    "19"},
    {0,   276, "20",   "20",    "20"},
    {0,   288, "22",   "22",    "22"},
    {0,   300, "25",   "25",    "25"},
    {0,   304, "27",   "27",    "27"},
    {0,   308, "29",   "29",    "29"},
    {0,   320, "32",   "32",    "32"},
    {0,   332, "36",   "36",    "36"},
    {0,   336, "38",   "38",    "38"},
    {0,   340, "40",   "40",    "40"},
    {0,   352, "45",   "45",    "45"},
    {0,   364, "51",   "51",    "51"},
    {0,   368, "54",   "54",    "54"},
    {0,   372, "57",   "57",    "57"},
    {0,   384, "64",   "64",    "64"},
    {0,   396, "72",   "72",    "72"},
    {0,   400, "76",   "76",    "76"},
    {0,   404, "81",   "81",    "81"},
    {0,   416, "91",   "91",    "91"},
    map_end,
};

constexpr ValueMapEntry canon_raw_creative_mode_map[] = {
    {0, 5, "A-DEP", "a-dep", "d"},
    {0, 4, "M",     "m",     "m"},
    {0, 3, "Av",    "av",    "a"},
    {0, 2, "Tv",    "tv",    "t"},
    {0, 1, "P",     "p",     "p"},
    {0, 0, "None",  "none",  "n"},
    map_end,
};

constexpr ValueMapEntry canon_raw_autofocus_mode_map[] = {
    {0, 0, "Single Shot", "single",   "s"},
    {0, 1, "AI Servo",    "ai-servo", "a"},
    {0, 3, "Manual",      "manual",   "m"},
    map_end,
};

constexpr ValueMapEntry canon_raw_metering_mode_map[] = {
    {0, 5, "Spot",            "spot",   "s"},
    {0, 4, "Center Weighted", "center", "c"},
    {0, 3, "Evaluative",      "eval",   "e"},
    {0, 0, "Evaluative",      "eval0",  "e0"},
    map_end,
};

constexpr ValueMapEntry canon_raw_drive_mode_map[] = {
    {0, 0, "Single Shot", "single", "s"},
    {0, 1, "Continuous",  "cont",   "c"},
    map_end,
};

constexpr ValueMapEntry canon_raw_white_point_map[] = {
    {0, 0, "Auto",        "auto",     "a"},
    {0, 1, "Sun",         "sun",      "s"},
    {0, 2, "Cloud",       "cloud",    "c"},
    {0, 3, "Tungsten",    "tungsten", "t"},
    {0, 4, "Fluorescent", "fluor",    "flu"},
    {0, 5, "Flash",       "flash",    "fla"},
    {0, 6, "Manual",      "manual",   "m"},
    map_end,
};

constexpr ValueMapEntry canon_raw_exposure_comp_map[] = {
    {0, 0xFFFFFFC0, "-2.0", "-2-0", "-2-0"},
    {0, 0xFFFFFFCC, "-1.6", "-1-6", "-1-6"},
    {0, 0xFFFFFFD0, "-1.5", "-1-5", "-1-5"},
    {0, 0xFFFFFFD4, "-1.3", "-1-3", "-1-3"},
    {0, 0xFFFFFFE0, "-1.0", "-1-0", "-1-0"},
    {0, 0xFFFFFFEC, "-0.6", "-0-6", "-0-6"},
    {0, 0xFFFFFFF0, "-0.5", "-0-5", "-0-5"},
    {0, 0xFFFFFFF4, "-0.3", "-0-3", "-0-3"},
    {0,          0, "0.0",  "0-0",  "0-0"},
    {0,         12, "0.3",  "0-3",  "0-3"},
    {0,         16, "0.5",  "0-5",  "0-5"},
    {0,         20, "0.6",  "0-6",  "0-6"},
    {0,         32, "1.0",  "1-0",  "1-0"},
    {0,         44, "1.3",  "1-3",  "1-3"},
    {0,         32, "1.5",  "1-5",  "1-5"},
    {0,         52, "1.6",  "1-6",  "1-6"},
    {0,         64, "2.0",  "2-0",  "2-0"},
    map_end,
};

constexpr ValueMapEntry canon_raw_flash_mode_map[] = {
    {0, 0, "None",    "none",    "nn"},
    {0, 2, "Normal",  "normal",  "nm"},
    {0, 6, "Red-eye", "red-eye", "r"},
    map_end,
};

constexpr ValueMapEntry canon_raw_orientation_map[] = {
    {0,  0, "Landscape", "land", "l"},
    {0, 28, "Portrait",  "port", "p"},
    map_end,
};

constexpr ValueMapEntry canon_raw_rotation_map[] = {
    {0, 3072, "0",   "0",   "0"},
    {0,   90, "90",  "90",  "90"},
    {0,  270, "270", "270", "270"},
    map_end,
};
// clang-format on

// Canon Raw: 0x000F0000 | byte position of the value in the meta data block.
constexpr FieldRow canon_raw_fields[] = {
    {0x000F0000, slg, 1, ro, "crw-date", "Date/Time Taken"},
    {0x000F0178, str, 32, ro, "crw-file-format", "File Format"},
    {0x000F01D2, str, 32, ro, "crw-owner", "Owner"},
    {0x000F01F2, str, 32, ro, "crw-vendor", "Vendor"},
    {0x000F01F8, str, 32, ro, "crw-model", "Camera Model"},
    {0x000F0212, str, 32, ro, "crw-firm-ver", "Firmware Version"},
    {0x000F0236, slg, 1, ro, "crw-serial-num", "Camera Serial Number"},
    {0x000F0288, ssh, 1, ro, "crw-iso", "ISO Setting", canon_raw_iso_map},
    {0x000F02B0, ssh, 1, ro, "crw-shutter", "Shutter Speed"},
    {0x000F02AE, ssh, 1, ro, "crw-aperture", "Aperture (F-stop)", canon_raw_aperture_map},
    {0x000F02E2, ssh, 1, ro, "crw-creative-mode", "Creative Mode", canon_raw_creative_mode_map},
    {0x000F02C8, ssh, 1, ro, "crw-autofocus-mode", "Autofocus Mode", canon_raw_autofocus_mode_map},
    {0x000F02DC, ssh, 1, ro, "crw-meter-mode", "Meter Mode", canon_raw_metering_mode_map},
    {0x000F0296, ssh, 1, ro, "crw-photo-in-seq", "Photo no. in Sequence"},
    {0x000F02B4, slg, 1, ro, "crw-bulb-duration", "Bulb Duration"},
    {0x000F02BE, ssh, 1, ro, "crw-shutter-delay", "Shutter Delay"},
    {0x000F02C4, ssh, 1, ro, "crw-drive-mode", "Drive Mode", canon_raw_drive_mode_map},
    {0x000F0292, ssh, 1, ro, "crw-white-point", "White Point", canon_raw_white_point_map},
    {0x000F0290, ssh, 1, ro, "crw-exp-comp", "Exposure Compensation", canon_raw_exposure_comp_map},
    {0x000F02AA, ssh, 1, ro, "crw-focus-lower", "Focus Distance Lower (m)"},
    {0x000F02AC, ssh, 1, ro, "crw-focus-upper", "Focus Distance Upper (m)"},
    {0x000F02E8, ssh, 1, ro, "crw-zoom-lower", "Zoom Range Lower (mm)"},
    {0x000F02EA, ssh, 1, ro, "crw-zoom-upper", "Zoom Range Upper (mm)"},
    {0x000F152E, ssh, 1, ro, "crw-focal-len-used", "Focal Length Used"},
    {0x000F02A2, ssh, 1, ro, "crw-flash-comp", "Flash Compensation (EV)",
     canon_raw_exposure_comp_map},
    {0x000F02D4, ssh, 1, ro, "crw-param-contrast", "Contrast (parameter)"},
    {0x000F02D6, ssh, 1, ro, "crw-param-saturation", "Saturation (parameter)"},
    {0x000F02D8, ssh, 1, ro, "crw-param-sharpness", "Sharpness (parameter)"},
    {0x000F030E, ssh, 1, ro, "crw-param-tone", "Color Tone (parameter)"},
    {0x000F02C2, ssh, 1, ro, "crw-flash-mode", "Flash Mode", canon_raw_flash_mode_map},
    {0x000F15F4, ssh, 1, ro, "crw-orient", "Orientation", canon_raw_orientation_map},
    {0x000F000C, ssh, 1, ro, "crw-rotation", "Rotation (degrees)", canon_raw_rotation_map},
    {0x000F02A4, ssh, 1, ro, "crw-aeb-seq", "AE Bracket Sequence"},
    {0x000F02A6, ssh, 1, ro, "crw-aeb-value", "AE Bracket Value (EV)", canon_raw_exposure_comp_map},
    {0x000F0F1C, ssh, 1, ro, "crw-custom-2", "Custom Field 2"},
    {0x000F0F1E, ssh, 1, ro, "crw-custom-3", "Custom Field 3"},
    {0x000F0F20, ssh, 1, ro, "crw-custom-4", "Custom Field 4"},
    {0x000F0F22, ssh, 1, ro, "crw-custom-5", "Custom Field 5"},
    {0x000F0F24, ssh, 1, ro, "crw-custom-6", "Custom Field 6"},
    {0x000F0F26, ssh, 1, ro, "crw-custom-7", "Custom Field 7"},
    {0x000F0F28, ssh, 1, ro, "crw-custom-8", "Custom Field 8"},
    {0x000F0F2A, ssh, 1, ro, "crw-custom-9", "Custom Field 9"},
    {0x000F0F2C, ssh, 1, ro, "crw-custom-10", "Custom Field 10"},
    {0x000F0F2E, ssh, 1, ro, "crw-custom-11", "Custom Field 11"},
    {0x000F0F30, ssh, 1, ro, "crw-custom-12", "Custom Field 12"},
    {0x000F0F32, ssh, 1, ro, "crw-custom-13", "Custom Field 13"},
    {0x000F0F34, ssh, 1, ro, "crw-custom-14", "Custom Field 14"},
    {0x000F0F36, ssh, 1, ro, "crw-custom-15", "Custom Field 15"},
};
static_assert(std::size(canon_raw_fields) == 48);

}  // namespace tagmend::tables
