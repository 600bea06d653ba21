// Photoshop image resources with IPTC datasets: the payload of a JPEG's APP13 segment, and the
// values of the two TIFF fields that hold them. The first byte chooses.
#include "cli/metadata_hooks.h"
#include "cli/session.h"
#include "harness.h"
#include "iptc/iptc_read.h"

namespace tagmend::fuzz {
namespace {

void read_block(std::uint8_t form, test::Bytes& block) {
  const Session session = open_session();
  ReadContext context{.image = session.image, .iptc = session.iptc, .hooks = metadata_hooks()};
  reset_image_file(session.image);
  reset_iptc_store(session.iptc);
  session.image.file_type = form % 4 == 0 ? FileType::jpeg : FileType::tiff;
  if ((form & 4U) != 0) {
    copy_text(library_settings.iptc_charset, "ISO-8859-1");
  }
  const auto size = static_cast<std::uint32_t>(block.size());
  if (form % 4 == 0) {
    const MFileHandle file(mfopen_memfile(block.data(), size, size));
    static_cast<void>(read_app13(context, *file, size));
    return;
  }
  ByteCursor cursor;
  cursor_init(cursor, nullptr, block, 0);
  cursor.big_endian = true;
  form % 4 == 1 ? read_iptc_value(context, cursor, size)
                : read_photoshop_value(context, cursor, size);
}

}  // namespace
}  // namespace tagmend::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  fuzz::Input input(data, size);
  const std::uint8_t form = fuzz::take_byte(input);
  test::Bytes block(input.begin(), input.end());
  if (block.empty()) {
    return 0;
  }
  fuzz::run_input([&] { fuzz::read_block(form, block); });
  return 0;
}
