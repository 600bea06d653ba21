// Olympus maker notes, of three types.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry olympus_jpeg_quality_map[] = {
    {0, 1, "SQ",  "sq",  "s"},
    {0, 2, "HQ",  "hq",  "h"},
    {0, 3, "SHQ", "shq", "sh"},
    map_end,
};

constexpr ValueMapEntry olympus_macro_map[] = {
    {0, 0, "Normal",      "normal", "n"},
    {0, 1, "Macro",       "macro",  "m"},
    {0, 2, "Super Macro", "super",  "s"},
    map_end,
};
// clang-format on

constexpr FieldRow olympus1_fields[] = {
    {0x0200, ulg, 3, rw, "ol-spec-mode", "Special Mode"},
    {0x0201, ush, 1, rw, "ol-jpg-qual", "JPEG Quality", olympus_jpeg_quality_map},
    {0x0202, ush, 1, rw, "ol-macro", "Macro", olympus_macro_map},
    {0x0203, ush, 1, rw, "ol-0203", "Field 0x0203"},
    {0x0204, urt, 1, rw, "ol-digi-zoom", "Digital Zoom"},
    {0x0205, urt, 1, rw, "ol-0205", "Field 0x0205"},
    {0x0206, ssh, 6, rw, "ol-0206", "Field 0x0206"},
    {0x0207, str, any, rw, "ol-sw-rel", "Software Release"},
    {0x0208, str, any, rw, "ol-pic-info", "Picture Information"},
    {0x0209, und, any, rw, "ol-camera-id", "Camera Id"},
    {0x0F00, ulg, 30, rw, "ol-data-dump", "Data Dump"},
};
static_assert(std::size(olympus1_fields) == 11);

constexpr FieldRow olympus3_fields[] = {
    {0x0200, ulg, 3, rw, "olc2500l-spec-mode", "Special Mode"},
    {0x0201, ush, 1, rw, "olc2500l-jpg-qual", "JPEG Quality", olympus_jpeg_quality_map},
    {0x0202, ush, 1, rw, "olc2500l-macro", "Macro", olympus_macro_map},
    {0x0203, ush, 1, rw, "olc2500l-0203", "Field 0x0203"},
    {0x0204, urt, 1, rw, "olc2500l-digi-zoom", "Digital Zoom"},
    {0x0205, urt, 1, rw, "olc2500l-0205", "Field 0x0205"},
    {0x0206, ssh, 6, rw, "olc2500l-0206", "Field 0x0206"},
    {0x0207, str, any, rw, "olc2500l-sw-rel", "Software Release"},
    {0x0208, str, any, rw, "olc2500l-pic-info", "Picture Information"},
    {0x0209, und, any, rw, "olc2500l-camera-id", "Camera Id"},
    {0x0F00, und, any, rw, "olc2500l-data-dump", "Data Dump"},
    {0x1000, srt, 1, rw, "olc2500l-1000", "Field 0x1000"},
    {0x1001, srt, 1, rw, "olc2500l-1001", "Field 0x1001"},
    {0x1002, srt, 1, rw, "olc2500l-1002", "Field 0x1002"},
    {0x1003, srt, 1, rw, "olc2500l-1003", "Field 0x1003"},
    {0x1004, ush, 1, rw, "olc2500l-1004", "Field 0x1004"},
    {0x1005, ush, 2, rw, "olc2500l-1005", "Field 0x1005"},
    {0x1006, srt, 1, rw, "olc2500l-1006", "Field 0x1006"},
    {0x1007, ssh, 1, rw, "olc2500l-1007", "Field 0x1007"},
    {0x1008, ssh, 1, rw, "olc2500l-1008", "Field 0x1008"},
    {0x1009, ush, 1, rw, "olc2500l-1009", "Field 0x1009"},
    {0x100A, ush, 1, rw, "olc2500l-100a", "Field 0x100a"},
    {0x100B, ush, 1, rw, "olc2500l-100b", "Field 0x100b"},
    {0x100C, urt, 1, rw, "olc2500l-100c", "Field 0x100c"},
    {0x100D, ush, 1, rw, "olc2500l-100d", "Field 0x100d"},
    {0x100E, ush, 1, rw, "olc2500l-100e", "Field 0x100e"},
    {0x100F, ush, 1, rw, "olc2500l-100f", "Field 0x100f"},
    {0x1010, ush, 1, rw, "olc2500l-1010", "Field 0x1010"},
    {0x1011, ush, any, rw, "olc2500l-1011", "Field 0x1011"},
    {0x1012, ush, any, rw, "olc2500l-1012", "Field 0x1012"},
    {0x1013, ush, 1, rw, "olc2500l-1013", "Field 0x1013"},
    {0x1014, ush, 1, rw, "olc2500l-1014", "Field 0x1014"},
    {0x1015, ush, 2, rw, "olc2500l-1015", "Field 0x1015"},
    {0x1016, ush, 1, rw, "olc2500l-1016", "Field 0x1016"},
    {0x1017, ush, 2, rw, "olc2500l-1017", "Field 0x1017"},
    {0x1018, ush, 2, rw, "olc2500l-1018", "Field 0x1018"},
    {0x1019, ush, any, rw, "olc2500l-1019", "Field 0x1019"},
    {0x101A, str, any, rw, "olc2500l-101a", "Field 0x101a"},
    {0x101B, ulg, 1, rw, "olc2500l-101b", "Field 0x101b"},
    {0x101C, ulg, 1, rw, "olc2500l-101c", "Field 0x101c"},
    {0x101D, ulg, 1, rw, "olc2500l-101d", "Field 0x101d"},
    {0x101E, ulg, 1, rw, "olc2500l-101e", "Field 0x101e"},
    {0x101F, ulg, 1, rw, "olc2500l-101f", "Field 0x101f"},
    {0x1020, ulg, 1, rw, "olc2500l-1020", "Field 0x1020"},
    {0x1021, ulg, 1, rw, "olc2500l-1021", "Field 0x1021"},
    {0x1022, ulg, 1, rw, "olc2500l-1022", "Field 0x1022"},
    {0x1023, srt, 1, rw, "olc2500l-1023", "Field 0x1023"},
    {0x1024, ush, 1, rw, "olc2500l-1024", "Field 0x1024"},
    {0x1025, srt, 1, rw, "olc2500l-1025", "Field 0x1025"},
    {0x1026, ush, 1, rw, "olc2500l-1026", "Field 0x1026"},
    {0x1027, ush, 1, rw, "olc2500l-1027", "Field 0x1027"},
    {0x1028, ush, 1, rw, "olc2500l-1028", "Field 0x1028"},
};
static_assert(std::size(olympus3_fields) == 52);

constexpr FieldRow olympus2_fields[] = {
    {0x0200, ulg, 3, rw, "ole-0200", "Field 0x0200"},
    {0x0201, ush, 1, rw, "ole-0201", "Field 0x0201"},
    {0x0202, ush, 1, rw, "ole-0202", "Field 0x0202"},
    {0x0203, ush, 1, rw, "ole-0203", "Field 0x0203"},
    {0x0204, urt, 1, rw, "ole-0204", "Field 0x0204"},
    {0x0205, urt, 1, rw, "ole-0205", "Field 0x0205"},
    {0x0206, ssh, 6, rw, "ole-0206", "Field 0x0206"},
    {0x0207, str, any, rw, "ole-0207", "Field 0x0207"},
    {0x0208, str, any, rw, "ole-0208", "Field 0x0208"},
    {0x0209, und, any, rw, "ole-0209", "Field 0x0209"},
    {0x0F00, ulg, 30, rw, "ole-0f00", "Field 0x0f00"},
    {0x1000, srt, 1, rw, "ole-1000", "Field 0x1000"},
    {0x1001, srt, 1, rw, "ole-1001", "Field 0x1001"},
    {0x1002, srt, 1, rw, "ole-1002", "Field 0x1002"},
    {0x1003, srt, 1, rw, "ole-1003", "Field 0x1003"},
    {0x1004, ush, 1, rw, "ole-1004", "Field 0x1004"},
    {0x1005, ush, 2, rw, "ole-1005", "Field 0x1005"},
    {0x1006, srt, 1, rw, "ole-1006", "Field 0x1006"},
    {0x1007, ssh, 1, rw, "ole-1007", "Field 0x1007"},
    {0x1008, ssh, 1, rw, "ole-1008", "Field 0x1008"},
    {0x1009, ush, 1, rw, "ole-1009", "Field 0x1009"},
    {0x100A, ush, 1, rw, "ole-100a", "Field 0x100a"},
    {0x100B, ush, 1, rw, "ole-100b", "Field 0x100b"},
    {0x100C, urt, 1, rw, "ole-100c", "Field 0x100c"},
    {0x100D, ush, 1, rw, "ole-100d", "Field 0x100d"},
    {0x100E, ush, 1, rw, "ole-100e", "Field 0x100e"},
    {0x100F, ush, 1, rw, "ole-100f", "Field 0x100f"},
    {0x1010, ush, 1, rw, "ole-1010", "Field 0x1010"},
    {0x1011, ush, 9, rw, "ole-1011", "Field 0x1011"},
    {0x1012, ush, 4, rw, "ole-1012", "Field 0x1012"},
    {0x1013, ush, 1, rw, "ole-1013", "Field 0x1013"},
    {0x1014, ush, 1, rw, "ole-1014", "Field 0x1014"},
    {0x1015, ush, 2, rw, "ole-1015", "Field 0x1015"},
    {0x1016, ush, 1, rw, "ole-1016", "Field 0x1016"},
    {0x1017, ush, 2, rw, "ole-1017", "Field 0x1017"},
    {0x1018, ush, 2, rw, "ole-1018", "Field 0x1018"},
    {0x1019, ush, any, rw, "ole-1019", "Field 0x1019"},
    {0x101A, str, any, rw, "ole-101a", "Field 0x101a"},
    {0x101B, ulg, 1, rw, "ole-101b", "Field 0x101b"},
    {0x101C, ulg, 1, rw, "ole-101c", "Field 0x101c"},
    {0x101D, ulg, 1, rw, "ole-101d", "Field 0x101d"},
    {0x101E, ulg, 1, rw, "ole-101e", "Field 0x101e"},
    {0x101F, ulg, 1, rw, "ole-101f", "Field 0x101f"},
    {0x1020, ulg, 1, rw, "ole-1020", "Field 0x1020"},
    {0x1021, ulg, 1, rw, "ole-1021", "Field 0x1021"},
    {0x1022, ulg, 1, rw, "ole-1022", "Field 0x1022"},
    {0x1023, srt, 1, rw, "ole-1023", "Field 0x1023"},
    {0x1024, ush, 1, rw, "ole-1024", "Field 0x1024"},
    {0x1025, srt, 1, rw, "ole-1025", "Field 0x1025"},
    {0x1026, ush, 1, rw, "ole-1026", "Field 0x1026"},
    {0x1027, ush, 1, rw, "ole-1027", "Field 0x1027"},
    {0x1028, ush, 1, rw, "ole-1028", "Field 0x1028"},
    {0x1031, ulg, 8, rw, "ole-1031", "Field 0x1031"},
};
static_assert(std::size(olympus2_fields) == 53);

}  // namespace tagmend::tables
