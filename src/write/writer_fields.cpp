#include "write/writer_fields.h"

#include "dictionary/field_def.h"
#include "support/message.h"

namespace tagmend {
namespace {

constexpr std::uint32_t tag_width = 0xA002;
constexpr std::uint32_t tag_height = 0xA003;

/// The line that is reported for the first field of the list below; the others follow it.
constexpr int first_line = 4834;

constexpr const char* required_names[] = {
    "th-comp",     "th-orient",   "th-width",     "th-len",      "th-x-res",
    "th-y-res",    "th-res-unit", "th-if-offset", "th-if-count", "firm-ver",
    "iptc-fields", "photoshop",   "description",  "exif-ver",
};

WriterFields look_up() {
  int line = first_line;
  for (const char* name : required_names) {
    check_consistency(find_field(name) != not_found, line++, module_writer);
  }
  WriterFields fields{};
  fields.width = find_field_by_tag(IfdKind::camera, tag_width, false);
  fields.height = find_field_by_tag(IfdKind::camera, tag_height, false);
  check_consistency(fields.width != 0, line++, module_writer);
  check_consistency(fields.height != 0, line, module_writer);
  fields.firm_ver = static_cast<std::uint16_t>(find_field("firm-ver"));
  fields.iptc_fields = static_cast<std::uint16_t>(find_field("iptc-fields"));
  fields.photoshop = static_cast<std::uint16_t>(find_field("photoshop"));
  fields.exif_ver = static_cast<std::uint16_t>(find_field("exif-ver"));
  fields.gps_ver = find_field_by_tag(IfdKind::gps, 0, true);
  return fields;
}

}  // namespace

const WriterFields& writer_fields() {
  static const WriterFields fields = look_up();
  return fields;
}

void init_writer_indexes() { static_cast<void>(writer_fields()); }

}  // namespace tagmend
