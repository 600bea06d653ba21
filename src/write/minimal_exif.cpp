#include "write/minimal_exif.h"

#include <algorithm>
#include <string_view>

#include "support/byte_text.h"
#include "support/text_buffer.h"
#include "write/writer_fields.h"

namespace tagmend {
namespace {

constexpr std::string_view program_name = "Orvale V2.7.0";

FieldEntry entry_for(std::uint16_t row, std::string_view text, const ImageFile& image) {
  const FieldDef& def = field_table_defs[row];
  FieldEntry entry;
  entry.kind = def.ifd_kind;
  entry.tag = def.tag;
  entry.def = row;
  entry.type = static_cast<std::uint16_t>(def.data_type);
  entry.count = static_cast<std::uint32_t>(text.size());
  entry.edited = true;
  entry.ifd.source_base = image.tiff_header_pos;
  entry.ifd.big_endian = image.big_endian;
  copy_text(entry.name, def.description);
  copy_text(entry.text.room, text);
  return entry;
}

}  // namespace

void init_minimal_exif(ImageFile& image) {
  // Fields of other metadata are only shown and may be there without EXIF data.
  const auto is_exif = [](const FieldEntry& entry) { return entry.tag <= 0xFFFF; };
  if (std::ranges::any_of(image.table(), is_exif)) {
    return;
  }
  FieldEntry firmware = entry_for(writer_fields().firm_ver, program_name, image);
  firmware.index = static_cast<std::uint16_t>(image.field_count);
  firmware.ifd.id = image.ifd_count;
  firmware.ifd.parent = root_main;
  firmware.data = bytes_of(program_name);

  FieldEntry version = entry_for(writer_fields().exif_ver, new_exif_version, image);
  version.level = 1;
  version.index = static_cast<std::uint16_t>(firmware.index + 1);
  version.ifd.id = static_cast<std::uint16_t>(firmware.ifd.id + 1);
  version.ifd.around[0] = firmware.ifd.id;
  version.ifd.parent = tag_exif_ifd;
  std::ranges::copy(bytes_of(new_exif_version), version.raw.begin());

  image.ifd_count += 2;
  static_cast<void>(append_field(image, firmware));
  static_cast<void>(append_field(image, version));
}

}  // namespace tagmend
