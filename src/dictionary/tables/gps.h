// Fields of the GPS IFD (Exif 2.2). The letters of references are stored with a terminating NUL.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapBytesEntry gps_latitude_ref_map[] = {
    bytes<'N', 0>("North", "north", "n"),
    bytes<'S', 0>("South", "south", "s"),
    bytes_map_end,
};

constexpr ValueMapBytesEntry gps_longitude_ref_map[] = {
    bytes<'E', 0>("East", "east", "e"),
    bytes<'W', 0>("West", "west", "w"),
    bytes_map_end,
};

constexpr ValueMapEntry gps_altitude_ref_map[] = {
    {0, 0, "Sea Level      ", "sea-level",       "0"},
    {0, 1, "Below sea level", "below-sea-level", "b"},
    map_end,
};

constexpr ValueMapBytesEntry gps_receive_status_map[] = {
    bytes<'A', 0>("Measurement in Progress",      "in-progress", "a"),
    bytes<'V', 0>("Measurement Interoperability", "interop",     "v"),
    bytes_map_end,
};

constexpr ValueMapBytesEntry gps_mode_map[] = {
    bytes<'2', 0>("Two-dimensional",   "2d", "2"),
    bytes<'3', 0>("Three-dimensional", "3d", "3"),
    bytes_map_end,
};

constexpr ValueMapBytesEntry gps_speed_unit_map[] = {
    bytes<'K', 0>("Kilometers per Hour", "kph",   "k"),
    bytes<'M', 0>("Miles per Hour",      "mph",   "m"),
    bytes<'N', 0>("Knots",               "knots", "n"),
    bytes_map_end,
};

constexpr ValueMapBytesEntry gps_direction_ref_map[] = {
    bytes<'T', 0>("True Direction",     "true",     "t"),
    bytes<'M', 0>("Magnetic Direction", "magnetic", "m"),
    bytes_map_end,
};

constexpr ValueMapBytesEntry gps_distance_unit_map[] = {
    bytes<'K', 0>("Kilometers", "kilometers", "k"),
    bytes<'M', 0>("Miles",      "miles",      "m"),
    bytes<'N', 0>("Knots",      "knots",      "n"),
    bytes_map_end,
};
// clang-format on

constexpr char latitude_help[] =
    "Latitude specified as either 'dd mm.mm' (eg. 45 27.50)\n"
    "             or as 'dd mm ss' (eg. 45 27 30)";

constexpr FieldRow gps_fields[] = {
    {0x0000, uby, 4, rw, "gps-ver", "Version"},
    {0x0001, str, 2, rw, "gps-lat-ref", "Latitude Reference", gps_latitude_ref_map},
    {0x0002, urt, 3, rw, "gps-latitude", "Latitude", {}, latitude_help},
    {0x0003, str, 2, rw, "gps-long-ref", "Longitude Reference", gps_longitude_ref_map},
    {0x0004, urt, 3, rw, "gps-longitude", "Longitude"},
    {0x0005, uby, 1, rw, "gps-alt-ref", "Altitude Reference", gps_altitude_ref_map},
    {0x0006, urt, 1, rw, "gps-altitude", "Altitude"},
    {0x0007, urt, 3, rw, "gps-time", "Time"},
    {0x0008, str, any, rw, "gps-satellite", "Satellite"},
    {0x0009, str, 2, rw, "gps-recv-stat", "Receive Status", gps_receive_status_map},
    {0x000A, str, 2, rw, "gps-mode", "Measurement Mode", gps_mode_map},
    {0x000B, urt, 1, rw, "gps-precision", "Measurement Precision"},
    {0x000C, str, 2, rw, "gps-speed-unit", "Speed Unit", gps_speed_unit_map},
    {0x000D, urt, 1, rw, "gps-recv-speed", "Receiver Speed"},
    {0x000E, str, 2, rw, "gps-mov-dir-ref", "Movement Direction Ref", gps_direction_ref_map},
    {0x000F, urt, 1, rw, "gps-mov-dir", "Movement Direction"},
    {0x0010, str, 2, rw, "gps-img-dir-ref", "Image Direction Ref", gps_direction_ref_map},
    {0x0011, urt, 1, rw, "gps-img-dir", "Image Direction"},
    {0x0012, str, any, rw, "gps-geodetic", "Geodetic Survey Data"},
    {0x0013, str, 2, rw, "gps-dest-lat-ref", "Dest. Latitude Ref", gps_latitude_ref_map},
    {0x0014, urt, 3, rw, "gps-dest-lat", "Destination Latitude"},
    {0x0015, str, 2, rw, "gps-dest-long-ref", "Dest. Longitude Ref", gps_longitude_ref_map},
    {0x0016, urt, 3, rw, "gps-dest-long", "Destination Longitude"},
    {0x0017, str, 2, rw, "gps-dest-bear-ref", "Dest. Bearing Ref", gps_direction_ref_map},
    {0x0018, urt, 1, rw, "gps-dest-bear", "Destination Bearing"},
    {0x0019, str, 2, rw, "gps-dest-dist-ref", "Dest. Distance Ref", gps_distance_unit_map},
    {0x001A, urt, 1, rw, "gps-dest-dist", "Destination Distance"},
    {0x001B, und, any, rw, "gps-proc-method", "Processing Method"},
    {0x001C, und, any, rw, "gps-area", "Area Information"},
    {0x001D, str, 11, rw, "gps-date", "Datestamp"},
    {0x001E, ush, 1, rw, "gps-diff-corr", "Differential Correction"},
};
static_assert(std::size(gps_fields) == 31);

}  // namespace tagmend::tables
