// Which decoder shows the values of which kind of IFD.
#include <iterator>

#include "read/decode.h"
#include "read/decode_makers.h"

namespace tagmend {
namespace {

void generic(const StoredValue& value, const FieldEntry&, TextBuffer& text, ReadContext&) {
  decode_generic(value, text);
}

void standard(const StoredValue& value, const FieldEntry&, TextBuffer& text, ReadContext& context) {
  decode_standard(value, text, context);
}

void gps(const StoredValue& value, const FieldEntry&, TextBuffer& text, ReadContext&) {
  decode_gps(value, text);
}

/// By kind, in the order of IfdKind.
constexpr KindDecoder kind_decoders[] = {
    standard,            // camera
    generic,             // camera_embedded
    standard,            // image
    standard,            // thumbnail
    generic,             // thumbnail_embedded
    standard,            // interop
    decode_olympus,      // olympus1
    generic,             // olympus2
    decode_by_tag_rule,  // nikon1
    decode_nikon2,       // nikon2
    decode_by_tag_rule,  // casio
    decode_canon,        // canon
    decode_canon,        // canon_s100
    decode_canon,        // canon_d30
    decode_olympus,      // olympus3
    generic,             // fujifilm
    gps,                 // gps
    decode_minolta,      // minolta
    decode_by_tag_rule,  // nikon3
    standard,            // tiff_image
    standard,            // tiff_image_1
    standard,            // tiff_image_2
    standard,            // tiff_image_3
    standard,            // sub_image_0
    standard,            // sub_image_1
    standard,            // sub_image_2
    standard,            // sub_image_3
    standard,            // sub_image_4
    decode_by_tag_rule,  // epson
    generic,             // pentax
    generic,             // canon_raw
    decode_by_tag_rule,  // panasonic
    standard,            // sub_image_5
    standard,            // sub_image_6
    generic,             // nikon_thumbnail
    generic,             // ricoh
    generic,             // ricoh_info
    standard,            // sub_image_7
    generic,             // sub_image_8
    generic,             // ricoh_custom
    standard,            // unknown
};

static_assert(std::size(kind_decoders) == ifd_kind_count, "every kind has a decoder");

}  // namespace

void decode_by_kind(const StoredValue& value, const FieldEntry& entry, TextBuffer& text,
                    ReadContext& context) {
  const auto kind = static_cast<std::size_t>(entry.kind);
  const auto unknown = static_cast<std::size_t>(IfdKind::unknown);
  kind_decoders[kind < std::size(kind_decoders) ? kind : unknown](value, entry, text, context);
}

}  // namespace tagmend
