// Fields of the EXIF and Interoperability IFDs (Exif 2.2).
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"
#include "dictionary/tables/tiff.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry exposure_program_map[] = {
    {0, 1, "Manual",            "manual",        "m"},
    {0, 2, "Program Normal",    "prog-normal",   "pn"},
    {0, 3, "Aperture Priority", "aperture",      "a"},
    {0, 4, "Shutter Priority",  "shutter",       "s"},
    {0, 5, "Program Creative",  "prog-creative", "pc"},
    {0, 6, "Program Action",    "prog-action",   "pa"},
    {0, 7, "Portrait Mode",     "portrait",      "p"},
    {0, 8, "Landscape Mode",    "landscape",     "l"},
    map_end,
};

constexpr ValueMapEntry metering_mode_map[] = {
    {0,   1, "Average",                 "average",       "a"},
    {0,   2, "Centre Weighted Average", "centre",        "c"},
    {0,   3, "Spot",                    "spot",          "s"},
    {0,   4, "Multi-Spot",              "multi-spot   ", "msp"},
    {0,   5, "Multi-Segment",           "multi-segment", "mse"},
    {0,   6, "Partial",                 "partial",       "p"},
    {0, 255, "Other",                   "other",         "o"},
    map_end,
};

constexpr ValueMapEntry light_source_map[] = {
    {0,   0, "Auto",                   "auto",          "a"},
    {0,   1, "Daylight",               "daylight",      "d"},
    {0,   2, "Fluorescent",            "fluorescent",   "flu"},
    {0,   3, "Tungsten",               "tungsten",      "t"},
    {0,   4, "Flash",                  "flash",         "fla"},
    {0,   9, "Fine Weather",           "fine",          "fi"},
    {0,  10, "Cloudy Weather",         "cloudy",        "cl"},
    {0,  11, "Shade",                  "shade",         "sh"},
    {0,  12, "Daylight Fluorescent",   "day-fluor",     "dlf"},
    {0,  13, "Day White Fluorescent",  "day-white-fl",  "dwf"},
    {0,  14, "Cool White Fluorescent", "cool-white-fl", "cwf"},
    {0,  15, "White Fluorescent",      "white-fl",      "wf"},
    {0,  17, "Standard Light A",       "standard-a",    "sa"},
    {0,  18, "Standard Light B",       "standard-b",    "sb"},
    {0,  19, "Standard Light C",       "standard-c",    "sc"},
    {0,  20, "D55",                    "d55",           "d55"},
    {0,  21, "D65",                    "d65",           "d65"},
    {0,  22, "D75",                    "d75",           "d75"},
    {0,  23, "D50",                    "d50",           "d50"},
    {0,  24, "ISO Studio Tungsten",    "iso-tungsten",  "ist"},
    {0, 255, "Other Light Source",     "other",         "o"},
    map_end,
};

constexpr ValueMapEntry flash_map[] = {
    {0,  0, "Not Fired", "none", "n"},
    {0,  1, "Fired", "fired", "f"},
    {0,  5, "Strobe return not detected", "srn", "srn"},
    {0,  7, "Strobe return detected", "sr", "sr"},
    {0,  9, "Flash fired; Compulsory flash mode", "ff-cfm", "fc"},
    {0, 13, "Flash fired; Compulsory flash mode; Return light not detected", "ff-cfm-rlnd", "fcrn"},
    {0, 15, "Flash fired; Compulsory flash mode; Return light detected", "ff-cfm-rld", "fcrd"},
    {0, 16, "Flash not fired; Compulsory flash mode", "fnf-cfm", "nc"},
    {0, 24, "Flash not fired; Auto mode", "fnf-am", "na"},
    {0, 25, "Flash fired; Auto mode", "ff-am", "fa"},
    {0, 29, "Flash fired; Auto mode; Return light not detected", "ff-am-rlnd", "farn"},
    {0, 31, "Flash fired; Auto mode; Return light detected", "ff-am-rld", "fard"},
    {0, 32, "No flash function", "nff", "nff"},
    {0, 65, "Flash fired; Red-eye reduction mode", "ff-rrm", "fre"},
    {0, 69, "Flash fired; Red-eye reduction mode; Return light not detected",
     "ff-rrm-rlnd", "frrn"},
    {0, 71, "Flash fired; Red-eye reduction mode; Return light detected", "ff-rrm-rld", "frrd"},
    {0, 73, "Flash fired; Compulsory flash mode; Red-eye reduction mode", "ff-cfm-rrm", "fcr"},
    {0, 77, "Flash fired; Compulsory flash mode; Red-eye reduction mode; Return light not detected",
     "ff-cfm-rrm-rlnd", "fcrrn"},
    {0, 79, "Flash fired; Compulsory flash mode; Red-eye reduction mode; Return light detected",
     "ff-cfm-rrm-rld", "fcrrd"},
    {0, 89, "Flash fired; Auto mode; Red-eye reduction mode", "ff-am-rrm", "far"},
    {0, 93, "Flash fired; Auto mode; Red-eye reduction mode; Return light not detected",
     "ff-am-rrm-rlnd", "farrn"},
    {0, 95, "Flash fired; Auto mode; Red-eye reduction mode; Return light detected",
     "ff-am-rrm-rld", "farrd"},
    map_end,
};

constexpr ValueMapEntry colour_space_map[] = {
    {0,     1, "sRGB",         "srgb",         "s"},
    {0, 65535, "Uncalibrated", "uncalibrated", "u"},
    map_end,
};

constexpr ValueMapEntry sensing_method_map[] = {
    {0, 1, "Not defined",                     "not-def",      "n"},
    {0, 2, "One chip colour area sensor",     "one-chip",     "1"},
    {0, 3, "Two chip colour area sensor",     "two-chip",     "2"},
    {0, 4, "Three chip colour area sensor",   "three-chip",   "3"},
    {0, 5, "Colour sequential area sensor",   "col-seq-area", "csa"},
    {0, 7, "Trilinear sensor",                "trilinear",    "t"},
    {0, 8, "Colour sequential linear sensor", "col-seq-lin",  "csl"},
    map_end,
};

constexpr ValueMapEntry file_source_map[] = {
    {0, 3, "Digital Still Camera", "dsc", "d"},
    map_end,
};

constexpr ValueMapEntry scene_type_map[] = {
    {0, 1, "Directly Photographed Image", "direct", "d"},
    map_end,
};

constexpr ValueMapEntry custom_render_map[] = {
    {0, 0, "Normal Process", "normal", "n"},
    {0, 1, "Custom Process", "custom", "c"},
    map_end,
};

constexpr ValueMapEntry exposure_mode_map[] = {
    {0, 0, "Auto Exposure",   "auto",    "a"},
    {0, 1, "Manual Exposure", "manual",  "m"},
    {0, 2, "Auto Bracket",    "bracket", "b"},
    map_end,
};

constexpr ValueMapEntry white_balance_map[] = {
    {0, 0, "Auto",   "auto",   "a"},
    {0, 1, "Manual", "manual", "m"},
    map_end,
};

constexpr ValueMapEntry scene_mode_map[] = {
    {0, 0, "Standard",    "standard",  "s"},
    {0, 1, "Landscape",   "landscape", "l"},
    {0, 2, "Portrait",    "portrait",  "p"},
    {0, 3, "Night Scene", "night",     "n"},
    map_end,
};

constexpr ValueMapEntry gain_control_map[] = {
    {0, 0, "None",           "none",           "n"},
    {0, 1, "Low Gain Up",    "low-gain-up",    "lgu"},
    {0, 2, "High Gain Up",   "high-gain-up",   "hgu"},
    {0, 3, "Low Gain Down",  "low-gain-down",  "lgd"},
    {0, 4, "High Gain Down", "high-gain-down", "hgd"},
    map_end,
};

constexpr ValueMapEntry contrast_map[] = {
    {0, 0, "Normal", "normal", "n"},
    {0, 1, "Soft",   "soft",   "s"},
    {0, 2, "Hard",   "hard",   "h"},
    map_end,
};

constexpr ValueMapEntry saturation_map[] = {
    {0, 0, "Normal", "normal", "n"},
    {0, 1, "Low",    "low",    "l"},
    {0, 2, "High",   "high",   "h"},
    map_end,
};

constexpr ValueMapEntry sharpness_map[] = {
    {0, 0, "Normal", "normal", "n"},
    {0, 1, "Soft",   "soft",   "s"},
    {0, 2, "Hard",   "hard",   "h"},
    map_end,
};

constexpr ValueMapEntry subject_range_map[] = {
    {0, 0, "Unknown",      "unknown", "u"},
    {0, 1, "Macro",        "macro",   "m"},
    {0, 2, "Close View",   "close",   "c"},
    {0, 3, "Distant View", "distant", "d"},
    map_end,
};
// clang-format on

constexpr FieldRow exif_fields[] = {
    {0x829A, urt, 1, rw, "exp-time", "Exposure Time (sec)"},
    {0x829D, urt, 1, rw, "f-number", "F-Number"},
    {0x8822, ush, 1, rw, "exp-prog", "Exposure Program", exposure_program_map},
    {0x8824, str, any, rw, "spec-sens", "Spectral Sensitivity"},
    {0x8827, ush, 1, rw, "iso-speed", "ISO Speed"},
    {0x8828, und, any, rw, "oecf", "Optoelectric Conv. Factor"},
    {0x9000, und, 4, rw, "exif-ver", "EXIF Version"},
    {0x9003, str, 20, date, "date-taken", "Date/Time Taken"},
    {0x9004, str, 20, date, "date-digi", "Date/Time Digitised"},
    {0x9101, und, any, rw, "comp-conf", "Components Configuration"},
    {0x9102, urt, 1, rw, "ave-comp", "Average Compression Ratio"},
    {0x9201, srt, 1, rw, "shutter", "Shutter Speed (sec)"},
    {0x9202, urt, 1, rw, "aperture", "Aperture"},
    {0x9203, srt, 1, rw, "brightness", "Brightness"},
    {0x9204, srt, 1, rw, "exp-bias", "Exposure Bias (EV)"},
    {0x9205, urt, 1, rw, "max-aper", "Max Aperture"},
    {0x9206, urt, 1, rw, "subj-dist", "Subject Distance (metres)"},
    {0x9207, ush, 1, rw, "meter-mode", "Metering Mode", metering_mode_map},
    {0x9208, ush, 1, rw, "light-src", "Light Source", light_source_map},
    {0x9209, ush, 1, rw, "flash", "Flash", flash_map},
    {0x920A, urt, 1, rw, "focal-len", "Focal Length (mm)"},
    {0x9213, str, any, rw, "history", "Image History"},
    {0x9214, ush, any, rw, "subj-area", "Subject Area"},
    {0x927C, und, any, ro, "maker-note", "Maker Note"},
    {0x9286, und, any, rw, "comment", "User Comment"},
    {0x9290, str, any, rw, "sub-time", "Subsec Time"},
    {0x9291, str, any, rw, "sub-time-orig", "Subsec Time Original"},
    {0x9292, str, any, rw, "sub-time-digi", "Subsec Time Digitised"},
    {0xA000, und, 4, rw, "flashpix-ver", "FlashPix Version"},
    {0xA001, ush, 1, rw, "colour-space", "Colour Space", colour_space_map},
    {0xA002, usl, 1, rw, "width", "Image Width"},
    {0xA003, usl, 1, rw, "height", "Image Height"},
    {0xA004, str, 13, rw, "sound-file", "Related Sound File"},
    {0xA005, ulg, 1, ro_pointer, "inter-offset", "EXIF Inter. Offset"},
    {0xA20C, und, any, rw, "sfr", "Spatial Freq. Response"},
    {0xA20B, urt, 1, rw, "flash-energy", "Flash Energy (BCPS)"},
    {0xA20E, urt, 1, rw, "fp-x-res", "Focal Plane X Resolution"},
    {0xA20F, urt, 1, rw, "fp-y-res", "Focal Plane Y Resolution"},
    {0xA210, ush, 1, rw, "fp-res-unit", "Focal Plane Res. Unit", resolution_unit_map},
    {0xA214, ush, 2, rw, "subj-locn", "Subject Location"},
    {0xA215, urt, 1, rw, "exp-index", "Exposure Index"},
    {0xA217, ush, 1, rw, "sense-method", "Sensing Method", sensing_method_map},
    {0xA300, und, 1, rw, "file-src", "File Source", file_source_map},
    {0xA301, und, 1, rw, "scene-type", "Scene Type", scene_type_map},
    {0xA302, und, any, rw, "cfa-pattern", "CFA Pattern"},
    {0xA401, ush, 1, rw, "custom-render", "Custom Render", custom_render_map},
    {0xA402, ush, 1, rw, "exp-mode", "Exposure Mode", exposure_mode_map},
    {0xA403, ush, 1, rw, "white-bal", "White Balance", white_balance_map},
    {0xA404, urt, 1, rw, "digital-zoom", "Digital Zoom Ratio"},
    {0xA405, ush, 1, rw, "focal-len-35mm", "Focal Length (35mm equiv)"},
    {0xA406, ush, 1, rw, "scene-mode", "Scene Capture Mode", scene_mode_map},
    {0xA407, ush, 1, rw, "gain", "Gain Control", gain_control_map},
    {0xA408, ush, 1, rw, "contrast", "Contrast", contrast_map},
    {0xA409, ush, 1, rw, "saturation", "Saturation", saturation_map},
    {0xA40A, ush, 1, rw, "sharpness", "Sharpness", sharpness_map},
    {0xA40B, und, any, rw, "dev-setting", "Device Setting"},
    {0xA40C, ush, 1, rw, "subj-range", "Subject Distance Range", subject_range_map},
    {0xA420, str, 33, rw, "image-id", "Unique Image Id"},
};
static_assert(std::size(exif_fields) == 58);

constexpr FieldRow interop_fields[] = {
    {0x0001, str, 4, rw, "iop-index", "Interop. Index"},
    {0x0002, und, any, rw, "iop-ver", "Interop. Version"},
    {0x1000, str, any, rw, "iop-form", "Related File Format"},
    {0x1001, usl, 1, rw, "iop-width", "Related Image Width"},
    {0x1002, usl, 1, rw, "iop-length", "Related Image Length"},
};
static_assert(std::size(interop_fields) == 5);

}  // namespace tagmend::tables
