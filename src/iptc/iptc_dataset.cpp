#include "iptc/iptc_dataset.h"

#include <algorithm>
#include <functional>
#include <span>

#include "dictionary/tables/map_entry.h"

namespace tagmend {
namespace {

/// A map row for a value that is stored as two characters.
template <char first, char second>
constexpr ValueMapBytesEntry text2(const char* description, const char* nickname,
                                   const char* short_code) {
  return tables::bytes<std::uint8_t{first}, std::uint8_t{second}>(description, nickname,
                                                                  short_code);
}

// clang-format off
constexpr ValueMapEntry copyright_flag_map[] = {
    {0, 256, "Yes", "yes", "y"},
    {0,   0, "No",  "no",  "n"},
    tables::map_end,
};

constexpr ValueMapEntry excursion_tolerance_map[] = {
    {0, 0, "Not Allowed", "not-allowed", "no"},
    {0, 1, "Allowed",     "allowed",     "yes"},
    tables::map_end,
};

constexpr ValueMapEntry quantization_method_map[] = {
    {0, 0, "Linear Reflectance/Transmittance", "linear-rt",  "lr"},
    {0, 1, "Linear Density",                   "linear-d",   "ld"},
    {0, 2, "IPTC Ref B",                       "iptc-ref-b", "ip"},
    {0, 3, "Linear Dot Percent",               "linear-dot", "ld"},
    {0, 4, "AP Domestic Analogue",             "ap-dom",     "ap"},
    {0, 5, "Compression Method Specific",      "comp-spec",  "cm"},
    {0, 6, "Color Space Specific",             "color-spec", "cl"},
    {0, 7, "Gamma Compensated",                "gamma",      "gm"},
    tables::map_end,
};

constexpr ValueMapEntry rotation_map[] = {
    {0, 0, "0",   "0",   "0"},
    {0, 1, "90",  "90",  "90"},
    {0, 2, "180", "180", "180"},
    {0, 3, "270", "270", "270"},
    tables::map_end,
};

constexpr ValueMapEntry scanning_direction_map[] = {
    {0, 0, "Left to Right, Top to Bottom", "lrtb", "lrtb"},
    {0, 1, "Right to Left, Top to Bottom", "rltb", "rltb"},
    {0, 2, "Left to Right, Bottom to Top", "lrbt", "lrbt"},
    {0, 3, "Right to Left, Bottom to Top", "rlbt", "rlbt"},
    {0, 4, "Top to Bottom, Left to Right", "tblr", "tblr"},
    {0, 5, "Bottom to Top, Left to Right", "btlr", "btlr"},
    {0, 6, "Top to Bottom, Right to Left", "tbrl", "tbrl"},
    {0, 7, "Bottom to Top, Right to Left", "btrl", "btrl"},
    tables::map_end,
};

constexpr ValueMapEntry sample_structure_map[] = {
    {0, 0, "Orthogonal with same relative sample frequencies on each component", "orth-same", "o1"},
    {0, 1, "Orthogonal with sampling frequencies in the ration of 4:2:2:(4)",    "orth-4224", "o2"},
    {0, 2, "Defined within the compression process",                             "comp",      "c"},
    tables::map_end,
};

constexpr ValueMapEntry color_space_map[] = {
    {0, 1, "X,Y,Z CIE",                          "xyz",       "z"},
    {0, 2, "RGB SMPTE",                          "rgb-smpte", "r"},
    {0, 3, "Y,U,V (K) (default illuminant D65)", "yuv",       "yuv"},
    {0, 4, "RGB Device Dependent",               "rgb-dd",    "rd"},
    {0, 5, "CMY(K) Device Dependent",            "cmyk",      "c"},
    {0, 6, "L*a*b* (K) CIE",                     "lab",       "l"},
    {0, 7, "YCbCr",                              "ycbcr",     "ycbcr"},
    {0, 8, "sRGB",                               "srgb",      "s"},
    tables::map_end,
};

constexpr ValueMapEntry supplemental_type_map[] = {
    {0, 0, "Main Image",               "main",    "m"},
    {0, 1, "Reduced Redolution Image", "reduced", "r"},
    {0, 2, "Logo",                     "logo",    "l"},
    {0, 3, "Rasterized Caption",       "caption", "c"},
    tables::map_end,
};

constexpr ValueMapBytesEntry file_format_map[] = {
    text2<'0', '0'>("No ObjectData",                      "none",        "00"),
    text2<'0', '1'>("IPTC-NAA",                           "iptc-naa",    "01"),
    text2<'0', '2'>("IPTC7901",                           "iptc7901",    "02"),
    text2<'0', '3'>("Tagged Image File Format",           "tiff",        "03"),
    text2<'0', '4'>("Illustrator",                        "illustrator", "04"),
    text2<'0', '5'>("AppleSingle",                        "applesingle", "05"),
    text2<'0', '6'>("NAA 89-3 (ANPA 1312)",               "naa-89-3",    "06"),
    text2<'0', '7'>("MacBinary II",                       "mac-bin-ii",  "07"),
    text2<'0', '8'>("IPTC UCOFF",                         "iptc-ucoff",  "08"),
    text2<'0', '9'>("UPI ANPA 1312 variant",              "upi-1312",    "09"),
    text2<'1', '0'>("UPI Down-Load Message",              "upi-dlm",     "10"),
    text2<'1', '1'>("JPEG File Interchange (JFIF)",       "jpeg",        "11"),
    text2<'1', '2'>("Photo-CD Image-Pac",                 "photo-cd",    "12"),
    text2<'1', '3'>("Microsoft .BMP",                     "bmp",         "13"),
    text2<'1', '4'>("Digital Audio File .WAV",            "wav",         "14"),
    text2<'1', '5'>("Audio plus Moving Video .AVI",       "avi",         "15"),
    text2<'1', '6'>("Windows Executable Files .COM/.EXE", "exe-com",     "16"),
    text2<'1', '7'>("Compressed Binary File .ZIP",        "zip",         "17"),
    text2<'1', '8'>("Audio Interchange File Format AIFF", "aiff",        "18"),
    text2<'1', '9'>("RIFF Wave",                          "riff-wav",    "19"),
    text2<'2', '0'>("Freehand",                           "freehand",    "20"),
    text2<'2', '1'>("Hypertext Markup Language",          "html",        "21"),
    text2<'2', '2'>("MPEG 2 Audio Layer 2",               "mpeg2-2",     "22"),
    text2<'2', '3'>("MPEG 2 Audio Layer 3",               "mpeg2-3",     "23"),
    text2<'2', '4'>("Portable Document File .PDF",        "pdf",         "24"),
    text2<'2', '5'>("News Industry Text Format (NITF)",   "nitf",        "25"),
    text2<'2', '6'>("Tape Archive .TAR",                  "tar",         "26"),
    text2<'2', '7'>("Tidningarnas Telegrambyrà NITF ",    "tt-ntif",     "27"),
    text2<'2', '8'>("Ritzaus Bureau NITF",                "rb-ntif",     "28"),
    text2<'2', '9'>("Corel Draw .CDR",                    "cdr",         "29"),
    tables::bytes_map_end,
};

constexpr ValueMapBytesEntry audio_type_map[] = {
    text2<'0', 'T'>("Text only",                       "Text",            "t"),
    text2<'1', 'A'>("Actuality (mono)",                "actual-mono",     "am"),
    text2<'2', 'A'>("Actuality (stereo)",              "actual-stereo",   "as"),
    text2<'1', 'C'>("Q&A Session (mono)",              "qa-mono",         "qm"),
    text2<'2', 'C'>("Q&A Session (stereo)",            "qa-stereo",       "qs"),
    text2<'1', 'M'>("Music (mono)",                    "music-mono",      "mm"),
    text2<'2', 'M'>("Music (stereo)",                  "music-stereo",    "ms"),
    text2<'1', 'Q'>("Response to a Question (mono)",   "response-mono",   "rem"),
    text2<'2', 'Q'>("Response to a Question (stereo)", "response-stereo", "res"),
    text2<'1', 'R'>("Raw sound (mono)",                "raw-mono",        "ram"),
    text2<'2', 'R'>("Raw sound (stereo)",              "raw-stereo",      "ras"),
    text2<'1', 'S'>("Scener (mono)",                   "scener-mono",     "sm"),
    text2<'2', 'S'>("Scener (stereo)",                 "scener-stereo",   "ss"),
    text2<'1', 'V'>("Voicer (mono)",                   "voicer-mono",     "vm"),
    text2<'2', 'V'>("Voicer (stereo)",                 "voicer-stereo",   "vs"),
    text2<'1', 'W'>("Wrap (mono)",                     "wrap-mono",       "wm"),
    text2<'2', 'W'>("Wrap (stereo)",                   "wrap-stereo",     "ws"),
    tables::bytes_map_end,
};

constexpr ValueMapEntry image_orientation_map[] = {
    {0, 'P', "Portrait",  "portrait",  "p"},
    {0, 'L', "Landscape", "landscape", "l"},
    {0, 'S', "Square",    "square",    "s"},
    tables::map_end,
};

constexpr ValueMapBytesEntry action_advised_map[] = {
    text2<'0', '1'>("Object Kill",      "kill",      "k"),
    text2<'0', '2'>("Object Replace",   "replace",   "rep"),
    text2<'0', '3'>("Object Append",    "append",    "a"),
    text2<'0', '4'>("Object Reference", "reference", "ref"),
    tables::bytes_map_end,
};
// clang-format on

constexpr char version_help[] = "The only supported version number is 2";
constexpr char urgency_help[] =
    "One digit in the range 1-8.\n"
    "             1=Most Urgent, 5=Normal Urgency, 8=Least Urgent";
constexpr char sampling_rate_help[] = "Six numeric characters. eg: 011025 indicates 11025 Hz";
constexpr char sampling_resolution_help[] =
    "Two numeric characters with leading zeros. \n"
    "             eg: 08 indicates a sample size of 8 bits";
constexpr char duration_help[] =
    "Six numeric characters in the format HHMMSS, \n"
    "             eg: 000211 indicates a duration of 2 minutes 11 seconds";

/// Maximum count of datasets that may occur again and again.
constexpr std::uint16_t repeatable = 999;

struct Extras {
  std::uint16_t max_count = 1;
  tables::MapRef map{};
  const char* help = nullptr;
};

using enum DatasetType;

/// A row of resource 1028.
constexpr IptcDatasetDef dataset(std::uint16_t record, std::uint16_t number, const char* nickname,
                                 const char* description, DatasetType type,
                                 std::uint16_t max_length, const Extras& extras = {}) {
  return {.resource = resource_iptc,
          .record = record,
          .dataset = number,
          .nickname = nickname,
          .description = description,
          .type = type,
          .max_length = max_length,
          .max_count = extras.max_count,
          .editable = true,
          .value_map = extras.map.values,
          .value_map_bytes = extras.map.bytes,
          .help_text = extras.help};
}

/// A row of another resource, which holds one value.
constexpr IptcDatasetDef resource(std::uint16_t number, const char* nickname,
                                  const char* description, DatasetType type,
                                  std::uint16_t max_length, const Extras& extras = {}) {
  IptcDatasetDef def = dataset(0, 255, nickname, description, type, max_length, extras);
  def.resource = number;
  return def;
}

constexpr IptcDatasetDef read_only(IptcDatasetDef def) {
  def.editable = false;
  return def;
}

/// Describes every dataset that no other row describes, and every resource that is only kept.
constexpr IptcDatasetDef catch_all_row() {
  IptcDatasetDef def = dataset(0, 0, "Unknown", "Unknown", text, 1999, {.max_count = repeatable});
  def.resource = 0;
  return read_only(def);
}

constexpr IptcDatasetDef end_row = {.resource = end_resource,
                                    .record = 0,
                                    .dataset = 0,
                                    .nickname = "",
                                    .description = "",
                                    .type = DatasetType{},
                                    .max_length = 0,
                                    .max_count = 0,
                                    .editable = false,
                                    .value_map = nullptr,
                                    .value_map_bytes = nullptr,
                                    .help_text = nullptr};

}  // namespace

constexpr std::array<IptcDatasetDef, iptc_dataset_count + 1> iptc_datasets = {{
    catch_all_row(),

    // Record 1: the envelope.
    dataset(1, 0, "ip1-version", "Dataset 1 Record Version", number16, 1, {.help = version_help}),
    dataset(1, 5, "ip1-destination", "Destination", text, 1024),
    dataset(1, 20, "ip1-format", "File Format", number16, 1),
    dataset(1, 22, "ip1-format-ver", "File Format Version", number16, 1),
    dataset(1, 30, "ip1-service-id", "Service Identifier", text, 10),
    dataset(1, 40, "ip1-env-num", "Envelope Number", text, 8),
    dataset(1, 50, "ip1-product-id", "Product ID", text, 32),
    dataset(1, 60, "ip1-env-pri", "Envelope Priority", text, 1),
    dataset(1, 70, "ip1-date-sent", "Date Sent", date, 8),
    dataset(1, 80, "ip1-time-sent", "Time Sent", time, 11),
    dataset(1, 90, "ip1-char-set", "Coded Character Set", text, 32),
    dataset(1, 100, "ip1-uno", "Unique Name of Object", text, 80),
    dataset(1, 120, "ip1-arm-id", "ARM Identifier", number16, 1),
    dataset(1, 122, "ip1-arm-ver", "ARM Version", number16, 1),

    // Record 2: the application record.
    dataset(2, 0, "ip-version", "Dataset 2 Record Version", number16, 1, {.help = version_help}),
    dataset(2, 3, "ip-obj-type-ref", "Object Type Reference", text, 67),
    dataset(2, 4, "ip-obj-attr-ref", "Object Attribute Reference", text, 68),
    dataset(2, 5, "ip-object", "Object", text, 64),
    dataset(2, 7, "ip-edit-status", "Edit Status", text, 1999),
    dataset(2, 8, "ip-editor-update", "Editorial Update", text, 2),
    dataset(2, 10, "ip-urgency", "Urgency", text, 1, {.help = urgency_help}),
    dataset(2, 12, "ip-subj-ref", "Subject Reference", text, 236),
    dataset(2, 15, "ip-category", "Category", text, 3),
    dataset(2, 20, "ip-suppcat", "Supplemental-Categories", text, 32, {.max_count = repeatable}),
    dataset(2, 22, "ip-fixture", "Fixture", text, 1999),
    dataset(2, 25, "ip-keyword", "Keywords", text, 1999, {.max_count = repeatable}),
    dataset(2, 26, "ip-cont-loc-code", "Content Location Code", text, 3),
    dataset(2, 27, "ip-cont-loc-name", "Content Location Name", text, 64),
    dataset(2, 30, "ip-rel-date", "Release Date", date, 8),
    dataset(2, 35, "ip-rel-time", "Release Time", time, 11),
    dataset(2, 37, "ip-exp-date", "Expiration Date", date, 8),
    dataset(2, 38, "ip-exp-time", "Expiration Time", time, 11),
    dataset(2, 40, "ip-instructions", "Special Instructions", text, 255),
    dataset(2, 42, "ip-action-advised", "Action Advised", text, 2, {.map = action_advised_map}),
    dataset(2, 45, "ip-ref-service", "Reference Service Ident.", text, 10,
            {.max_count = repeatable}),
    dataset(2, 47, "ip-ref-date", "Reference Date", date, 8, {.max_count = repeatable}),
    dataset(2, 50, "ip-ref-env-num", "Reference Envelope Number", text, 8,
            {.max_count = repeatable}),
    dataset(2, 55, "ip-date", "Creation Date", date, 8),
    dataset(2, 60, "ip-time", "Creation Time", time, 11),
    dataset(2, 62, "ip-digi-date", "Digital Creation Date", date, 8),
    dataset(2, 63, "ip-digi-time", "Digital Creation Time", time, 11),
    dataset(2, 65, "ip-program", "Originating Program", text, 255),
    dataset(2, 70, "ip-prog-ver", "Program Version", text, 255),
    dataset(2, 75, "ip-obj-cycle", "Object Cycle", text, 1),
    dataset(2, 80, "ip-byline", "Byline", text, 32),
    dataset(2, 85, "ip-byline-title", "Byline Title", text, 32),
    dataset(2, 90, "ip-city", "City", text, 32),
    dataset(2, 92, "ip-subloc", "Sub Location", text, 1999),
    dataset(2, 95, "ip-state-prov", "State/Province", text, 32),
    dataset(2, 100, "ip-loc-code", "Location Code", text, 32),
    dataset(2, 101, "ip-country", "Country", text, 64),
    dataset(2, 103, "ip-orig-ref", "Original Xmit Reference", text, 32),
    dataset(2, 105, "ip-headline", "Headline", text, 255),
    dataset(2, 110, "ip-credit", "Credit", text, 32),
    dataset(2, 115, "ip-source", "Source", text, 32),
    dataset(2, 116, "ip-copyright", "Copyright Notice", text, 128),
    dataset(2, 118, "ip-contact", "Contact", text, 1999),
    dataset(2, 120, "ip-caption", "Caption", text, 1999),
    dataset(2, 121, "ip-local-caption", "Local Caption", text, 1999),
    dataset(2, 122, "ip-cap-writer", "Caption Writer", text, 32),
    dataset(2, 130, "ip-image-type", "Image Type", text, 2),
    dataset(2, 131, "ip-image-orient", "Image Orientation", text, 1,
            {.map = image_orientation_map}),
    dataset(2, 135, "ip-lang-id", "Language Id", text, 2),
    dataset(2, 150, "ip-audio-type", "Audio Type", text, 2, {.map = audio_type_map}),
    dataset(2, 151, "ip-audio-samp-rate", "Audio Sampling Rate (Hz)", text, 6,
            {.help = sampling_rate_help}),
    dataset(2, 152, "ip-audio-samp-res", "Audio Sampling Resolution", text, 2,
            {.help = sampling_resolution_help}),
    dataset(2, 153, "ip-audio-duration", "Audio Duration", text, 6, {.help = duration_help}),
    dataset(2, 154, "ip-audio-outcue", "Audio Outcue", text, 64),
    dataset(2, 184, "ip-job-id", "Job Id", text, 255),
    dataset(2, 185, "ip-master-doc-id", "Master Document Id", text, 255),
    dataset(2, 186, "ip-short-doc-id", "Short Document Id", text, 255),
    dataset(2, 187, "ip-unique-doc-id", "Unique Document Id", text, 255),
    dataset(2, 188, "ip-owner-id", "Owner Id", text, 255),
    dataset(2, 200, "ip-preview-format", "Preview File Format", text, 2, {.map = file_format_map}),
    dataset(2, 201, "ip-service-id", "Service Id", text, 255),
    dataset(2, 225, "ip-class-state", "Classification State", text, 255),
    dataset(2, 228, "ip-sim-index", "Similarity Index", text, 255),
    dataset(2, 230, "ip-doc-notes", "Document Notes", text, 255),
    dataset(2, 231, "ip-doc-history", "Document History", text, 255),
    dataset(2, 232, "ip-exif-info", "Camera EXIF Information", text, 1999),

    // Record 3: digital newsphoto parameters.
    dataset(3, 0, "ip3-version", "Dataset 3 Record Version", number16, 1, {.help = version_help}),
    dataset(3, 10, "ip3-picture-num", "Picture Number", text, 16),
    dataset(3, 20, "ip3-width", "Image Width", number16, 1),
    dataset(3, 30, "ip3-height", "Image Height", number16, 1),
    dataset(3, 40, "ip3-pix-size-scan", "Pixel Size - Scan Dirctn", number16, 1),
    dataset(3, 50, "ip3-pix-size-perp", "Pixel Size - Perpedicular", number16, 1),
    dataset(3, 55, "ip3-supp-type", "Supplemental Type", bytes, 1, {.map = supplemental_type_map}),
    dataset(3, 60, "ip3-color-rep", "Color Representation", bytes, 2),
    dataset(3, 64, "ip3-color-space", "Interchange Color Space", bytes, 1,
            {.map = color_space_map}),
    dataset(3, 65, "ip3-color-seq", "Color Sequence", bytes, 4),
    dataset(3, 84, "ip3-index-entries", "Number of Index Entries", number16, 1),
    dataset(3, 86, "ip3-bits-per-sample", "Bits per Sample", bytes, 1),
    dataset(3, 90, "ip3-sample-struct", "Sample Structure", bytes, 1,
            {.map = sample_structure_map}),
    dataset(3, 100, "ip3-scan-dir", "Scanning Direction", bytes, 1,
            {.map = scanning_direction_map}),
    dataset(3, 102, "ip3-rotation", "Image Rotation (degrees)", bytes, 1, {.map = rotation_map}),
    dataset(3, 110, "ip3-data-comp", "Data Compression Method", bytes, 4),
    dataset(3, 120, "ip3-quant-method", "Quantization Method", bytes, 1,
            {.map = quantization_method_map}),
    dataset(3, 125, "ip3-end-points", "End Points", bytes, 6),
    dataset(3, 130, "ip3-excursion", "Excursion Tolerance", bytes, 1,
            {.map = excursion_tolerance_map}),
    dataset(3, 135, "ip3-bits-per-comp", "Bits per Component", bytes, 3),

    // Record 7: the pre-object descriptor.
    dataset(7, 10, "ip7-size-mode", "Size Mode", bytes, 1),
    dataset(7, 20, "ip7-max-subfile", "Max Subfile Size", number32, 1),
    dataset(7, 90, "ip7-obj-size", "Object Size Announced", number32, 1),

    // Photoshop image resources of their own.
    resource(resource_copyright_flag, "ip-copyrighted", "Mark as Copyrighted", number16, 1,
             {.map = copyright_flag_map}),
    resource(resource_url, "ip-url", "Image URL", text, 255),
    read_only(resource(resource_exif, "ip-exif", "Embedded EXIF", bytes, 255)),

    end_row,
}};

namespace {

constexpr std::span<const IptcDatasetDef> rows() {
  return std::span(iptc_datasets).first(iptc_dataset_count);
}

/// Rows of maximum length 1 have maps of numbers, the others maps of two characters.
constexpr bool is_consistent(const IptcDatasetDef& def) {
  return def.resource != end_resource && (def.max_length == 1 || !def.value_map) &&
         (def.max_length != 1 || !def.value_map_bytes);
}

constexpr bool has_map(const IptcDatasetDef& def) { return def.value_map || def.value_map_bytes; }

constexpr bool has_number(const IptcDatasetDef& def) { return def.resource == resource_iptc; }

constexpr std::uint32_t number_of(const IptcDatasetDef& def) {
  return std::uint32_t{def.record} << 16 | def.dataset;
}

/// The datasets of resource 1028, which stand together behind the catch-all row.
constexpr std::span<const IptcDatasetDef> numbered_rows() {
  const auto count = static_cast<std::size_t>(std::ranges::count_if(rows(), has_number));
  return rows().subspan(1, count);
}

static_assert(iptc_datasets.back().resource == end_resource);
static_assert(std::ranges::all_of(rows(), is_consistent));
static_assert(std::ranges::count_if(rows(), has_map) == 12);
static_assert(std::ranges::all_of(numbered_rows(), has_number));
static_assert(std::ranges::adjacent_find(numbered_rows(), std::ranges::greater_equal{},
                                         number_of) == numbered_rows().end(),
              "numbers rise, no dataset twice");

/// Longer names are compared up to here.
constexpr std::size_t compared_length = 50;

}  // namespace

int find_dataset(std::string_view name, std::size_t start) {
  const bool by_prefix = name.ends_with('*');
  const std::size_t length = by_prefix ? name.size() - 1 : compared_length;
  const std::string_view wanted = name.substr(0, length);

  for (std::size_t row = start; row < rows().size(); ++row) {
    if (std::string_view(rows()[row].nickname).substr(0, length) == wanted) {
      return static_cast<int>(row);
    }
  }
  return not_found;
}

std::uint16_t find_dataset_by_number(std::uint16_t record, std::uint16_t dataset) {
  constexpr std::span<const IptcDatasetDef> candidates = numbered_rows();
  const std::uint32_t number = std::uint32_t{record} << 16 | dataset;
  const auto found = std::ranges::lower_bound(candidates, number, {}, number_of);
  return found != candidates.end() && number_of(*found) == number
             ? static_cast<std::uint16_t>(&*found - rows().data())
             : std::uint16_t{0};
}

std::uint16_t find_resource(std::uint16_t resource) {
  for (std::size_t row = 0; row < rows().size(); ++row) {
    if (rows()[row].resource == resource) {
      return static_cast<std::uint16_t>(row);
    }
  }
  return 0;
}

}  // namespace tagmend
