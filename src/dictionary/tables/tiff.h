// Fields of TIFF 6.0 image IFDs: IFD0, the thumbnail (IFD1) and the TIFF data of an EPS file; with
// the private fields that image software keeps in IFD0.
#pragma once

#include <iterator>

#include "dictionary/tables/field_row.h"
#include "dictionary/tables/map_entry.h"

namespace tagmend::tables {

// clang-format off
constexpr ValueMapEntry compression_map[] = {
    {0, 1, "None",             "none", "n"},
    {0, 6, "JPEG Compression", "jpeg", "j"},
    map_end,
};

constexpr ValueMapEntry photometric_interpretation_map[] = {
    {0, 0, "Bi-Level/Grayscale - White is Zero", "gray-wz",    "gw"},
    {0, 1, "Bi-Level/Grayscale - Black is Zero", "gray-bz",    "gb"},
    {0, 2, "RGB",                                "rgb",        "r"},
    {0, 3, "Palette Colour",                     "palette",    "p"},
    {0, 4, "Transparency Mask",                  "trans-mask", "t"},
    map_end,
};

constexpr ValueMapEntry orientation_map[] = {
    {0, 1, "Upper Left",  "upper-left",  "1"},
    {0, 3, "Lower Right", "lower-right", "3"},
    {0, 6, "Upper Right", "upper-right", "6"},
    {0, 8, "Lower Left",  "lower-left",  "8"},
    {0, 2, "Flip Horiz",  "flip-horiz",  "2"},
    {0, 4, "Flip Vert",   "flip-vert",   "4"},
    {0, 5, "FH RL",       "fh-rl",       "5"},
    {0, 7, "FV RR",       "fh-rr",       "7"},
    {0, 9, "Undefined",   "undefined",   "u"},
    map_end,
};

constexpr ValueMapEntry planar_configuration_map[] = {
    {0, 1, "Chunky", "chunky", "c"},
    {0, 2, "Planar", "planar", "p"},
    map_end,
};

constexpr ValueMapEntry resolution_unit_map[] = {
    {0, 1, "No Unit",    "none", "n"},
    {0, 2, "Inch",       "inch", "i"},
    {0, 3, "Centimetre", "cm",   "c"},
    map_end,
};

constexpr ValueMapEntry ycbcr_positioning_map[] = {
    {0, 1, "Centre",      "center", "c"},
    {0, 2, "Datum Point", "datum",  "d"},
    map_end,
};

constexpr ValueMapEntry xp_rating_map[] = {
    {0, 0, "0", "0", "0"},
    {0, 1, "1", "1", "1"},
    {0, 2, "2", "2", "2"},
    {0, 3, "3", "3", "3"},
    {0, 4, "4", "4", "4"},
    {0, 5, "5", "5", "5"},
    map_end,
};
// clang-format on

// IFD0, the primary image.
constexpr FieldRow camera_fields[] = {
    {0x000B, str, any, rw, "acd-comment", "ACD Comment"},
    {0x00FE, slg, 1, rw, "image-type", "Image Type "},
    {0x0100, usl, 1, rw, "main-width", "Main Image Width"},
    {0x0101, usl, 1, rw, "main-len", "Main Image Length"},
    {0x0102, ush, any, rw, "main-bits-sam", "Main Image Bits/Sample"},
    {0x0103, ush, 1, rw, "main-comp", "Main Image Compression", compression_map},
    {0x0106, ush, 1, rw, "photo-int", "PhotometricInterpret.", photometric_interpretation_map},
    {0x010D, str, any, rw, "doc-name", "Document Name"},
    {0x010E, str, any, rw, "description", "Description"},
    {0x010F, str, any, rw, "make", "Make"},
    {0x0110, str, any, rw, "model", "Model"},
    {0x0111, usl, any, ro, "strip-off", "Strip Offsets"},
    {0x0112, ush, 1, rw, "orient", "Orientation (start point)", orientation_map},
    {0x0115, ush, 1, rw, "sample-pix", "Sample per Pixel"},
    {0x0116, usl, 1, ro, "row-strip", "Rows per Strip"},
    {0x0117, usl, any, ro, "strip-cnt", "Strip Byte Count"},
    {0x011A, urt, 1, rw, "x-res", "X Resolution"},
    {0x011B, urt, 1, rw, "y-res", "Y Resolution"},
    {0x011C, ush, 1, rw, "planar-conf", "Planar Configuration", planar_configuration_map},
    {0x011D, str, any, rw, "page-name", "Page Name"},
    {0x011E, urt, 1, rw, "page-x-pos", "Page X Position"},
    {0x011F, urt, 1, rw, "page-y-pos", "Page Y Position"},
    {0x0128, ush, 1, rw, "res-unit", "Resolution Unit", resolution_unit_map},
    {0x0129, ush, 2, rw, "page-num", "Page Number (X of Y)"},
    {0x012D, ush, 768, rw, "trans-func", "Transfer Function"},
    {0x0131, str, any, rw, "firm-ver", "Firmware Version"},
    {0x0132, str, 20, date, "date-mod", "Date/Time Modified"},
    {0x013B, str, any, rw, "artist", "Artist"},
    {0x013E, urt, 2, rw, "white-point", "White Point"},
    {0x013F, urt, 6, rw, "prim-chrom", "Primary Chromatic"},
    {0x014A, ulg, 1, rw_pointer, "sub-ifd", "Sub-IFD"},
    {0x0211, urt, 3, rw, "ycbcr-coeff", "YCbCr Coefficients"},
    {0x0213, ush, 1, rw, "ycbcr-posn", "YCbCr Positioning", ycbcr_positioning_map},
    {0x0214, urt, 6, rw, "ref-bw", "Reference Black&White"},
    {0x0320, str, any, rw, "xp-title-text", "XP Title Text"},
    {0x827D, str, any, rw, "camera-num", "Camera Number"},
    {0x8298, str, any, rw, "copyright", "Copyright"},
    {0x83BB, ulg, any, rw, "iptc-fields", "IPTC Fields"},
    {0x8649, uby, any, rw, "photoshop", "Photoshop Settings"},
    {0x8769, ulg, 1, ro_pointer, "exif-offset", "EXIF IFD Offset"},
    {0x8825, ulg, 1, ro_pointer, "gps-offset", "GPS IFD Offset"},
    {0x9286, str, any, rw, "comment-old", "User Comment (EXIF 2.0)"},
    {0x4746, ush, 1, rw, "xp-rating", "XP Rating (1-5,0=Unrated)", xp_rating_map},
    {0x4747, uby, any, rw, "xp-dip-tags", "Digital Image Pro Tags"},
    {0x9C9B, uby, any, rw, "xp-title", "XP Title"},
    {0x9C9C, uby, any, rw, "xp-comment", "XP Comment"},
    {0x9C9D, uby, any, rw, "xp-author", "XP Author"},
    {0x9C9E, uby, any, rw, "xp-keyword", "XP Keywords"},
    {0x9C9F, uby, any, rw, "xp-subject", "XP Subject"},
    {0xC4A5, und, any, rw, "print-im", "Print Image Matching"},
};
static_assert(std::size(camera_fields) == 50);

// IFD1, the thumbnail.
constexpr FieldRow thumbnail_fields[] = {
    {0x0100, usl, 1, rw, "th-width", "Thumb Image Width"},
    {0x0101, usl, 1, rw, "th-len", "Thumb Image Length"},
    {0x0102, ush, any, rw, "th-bits-sam", "Thumb Bits per Sample"},
    {0x0103, ush, 1, rw, "th-comp", "Thumb Compression", compression_map},
    {0x0106, ush, 1, rw, "th-photo-int", "Thumb PhotometricInterp.",
     photometric_interpretation_map},
    {0x010E, str, any, rw, "th-description", "Thumb Description"},
    {0x010F, str, any, rw, "th-make", "Thumb Make"},
    {0x0110, str, any, rw, "th-model", "Thumb Model"},
    {0x0111, usl, any, ro, "th-strip-off", "Thumb Strip Offsets"},
    {0x0112, ush, 1, rw, "th-orient", "Thumb Orientation", orientation_map},
    {0x0115, ush, 1, rw, "th-sample-pix", "Thumb Sample per Pixel"},
    {0x0116, usl, 1, ro, "th-row-strip", "Thumb Rows per Strip"},
    {0x0117, usl, any, ro, "th-strip-cnt", "Thumb Strip Byte Count(s)"},
    {0x011A, urt, 1, rw, "th-x-res", "Thumb X Resolution"},
    {0x011B, urt, 1, rw, "th-y-res", "Thumb Y Resolution"},
    {0x011C, ush, 1, rw, "th-plan-conf", "Thumb Planar Config", planar_configuration_map},
    {0x0128, ush, 1, rw, "th-res-unit", "Thumb Resolution Unit", resolution_unit_map},
    {0x0131, str, any, rw, "th-firm-ver", "Thumb Firmware Version"},
    {0x0132, str, 20, date, "th-date-mod", "Thumb Date/Time Modified"},
    {0x013B, str, any, rw, "th-artist", "Thumb Artist"},
    {0x013E, urt, 2, rw, "th-white-point", "Thumb White Point"},
    {0x013F, urt, 6, rw, "th-prim-chrom", "Thumb Primary Chromatic"},
    {0x0201, ulg, 1, rw, "th-if-offset", "Thumb Jpeg IF Offset"},
    {0x0202, ulg, 1, rw, "th-if-count", "Thumb Jpeg IF Byte Count"},
    {0x0211, urt, 3, rw, "th-ycbcr-coeff", "Thumb YCbCr Coefficients"},
    {0x0212, ush, 2, rw, "th-ycbcr-sub", "Thumb YCbCr Sub-Sampling"},
    {0x0213, ush, 1, rw, "th-ycbcr-posn", "Thumb YCbCr Positioning", ycbcr_positioning_map},
    {0x0214, urt, 6, rw, "th-ref-bw", "Thumb Reference Black/White"},
    {0x8298, str, any, rw, "th-copyright", "Thumb Copyright"},
};
static_assert(std::size(thumbnail_fields) == 29);

// The TIFF data of an EPS file; these rows also describe sub-images, which have none of their own.
constexpr FieldRow tiff_image_fields[] = {
    {0x00FE, slg, 1, rw, "tf-image-type", "TIFF Image Type "},
    {0x0100, usl, 1, rw, "tf-width", "TIFF Image Width"},
    {0x0101, usl, 1, rw, "tf-len", "TIFF Image Length"},
    {0x0102, ush, any, rw, "tf-bits-sam", "TIFF Image Bits/Sample"},
    {0x0103, ush, 1, rw, "tf-comp", "TIFF Image Compression", compression_map},
    {0x0106, ush, 1, rw, "tf-photo-int", "TIFF PhotometricInterp.", photometric_interpretation_map},
    {0x010E, str, any, rw, "tf-description", "TIFF Description"},
    {0x010F, str, any, rw, "tf-make", "TIFF Make"},
    {0x0110, str, any, rw, "tf-model", "TIFF Model"},
    {0x0111, usl, any, ro, "tf-strip-off", "TIFF Strip Offsets"},
    {0x0112, ush, 1, rw, "tf-orient", "TIFF Orientation", orientation_map},
    {0x0115, ush, 1, ro, "tf-sample-pix", "TIFF Sample per Pixel"},
    {0x0116, usl, 1, ro, "tf-row-strip", "TIFF Rows per Strip"},
    {0x0117, usl, any, ro, "tf-strip-cnt", "TIFF Strip Byte Count(s)"},
    {0x011A, urt, 1, rw, "tf-x-res", "TIFF X Resolution"},
    {0x011B, urt, 1, rw, "tf-y-res", "TIFF Y Resolution"},
    {0x011C, ush, 1, rw, "tf-plan-conf", "TIFF Planar Config", planar_configuration_map},
    {0x0128, ush, 1, rw, "tf-res-unit", "TIFF Resolution Unit", resolution_unit_map},
    {0x0131, str, any, rw, "tf-firm-ver", "TIFF Firmware Version"},
    {0x0132, str, 20, date, "tf-date-mod", "TIFF Date/Time Modified"},
    {0x013B, str, any, rw, "tf-artist", "TIFF Artist"},
    {0x013E, urt, 2, rw, "tf-white-point", "TIFF White Point"},
    {0x013F, urt, 6, rw, "tf-prim-chrom", "TIFF Primary Chromatic"},
    {0x0201, ulg, 1, rw, "tf-if-offset", "TIFF Jpeg IF Offset"},
    {0x0202, ulg, 1, rw, "tf-if-count", "TIFF Jpeg IF Byte Count"},
    {0x0211, urt, 3, rw, "tf-ycbcr-coeff", "TIFF YCbCr Coefficients"},
    {0x0212, ush, 2, rw, "tf-ycbcr-sub", "TIFF YCbCr Sub-Sampling"},
    {0x0213, ush, 1, rw, "tf-ycbcr-posn", "TIFF YCbCr Positioning", ycbcr_positioning_map},
    {0x0214, urt, 6, rw, "tf-ref-bw", "TIFF Reference Black/White"},
    {0x8298, str, any, rw, "tf-copyright", "TIFF Copyright"},
};
static_assert(std::size(tiff_image_fields) == 30);

}  // namespace tagmend::tables
