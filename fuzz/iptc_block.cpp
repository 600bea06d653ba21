// Photoshop image resources with IPTC datasets: the payload of a JPEG's APP13 segment, and the
// values of the two TIFF fields that hold them. The first byte chooses.
#include "common/memory_readers.h"
#include "harness.h"
#include "iptc/iptc_read.h"

namespace tagmend::fuzz {
namespace {

void read_block(std::uint8_t form, test::Bytes& block) {
  const Session session = open_session();
  ReadContext context = test::context_of(session);
  reset_image_file(session.image);
  reset_iptc_store(session.iptc);
  session.image.file_type = form % 4 == 0 ? FileType::jpeg : FileType::tiff;
  if ((form & 4U) != 0) {
    copy_text(library_settings.iptc_charset, "ISO-8859-1");
  }
  const std::uint32_t size = test::size_of(block);
  if (form % 4 == 0) {
    const MFileHandle file = test::memory_file(block);
    static_cast<void>(read_app13(context, *file, size));
    return;
  }
  const ByteCursor cursor = test::cursor_over(block, 0, true);
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
