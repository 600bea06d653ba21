// The Photoshop block of an EPS file, behind the signature.
#include "common/memory_readers.h"
#include "containers/eps.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  test::Bytes text(data, data + size);
  if (text.empty()) {
    return 0;
  }
  fuzz::run_input([&text] {
    const Session session = open_session();
    ReadContext context = test::context_of(session);
    reset_image_file(session.image);
    reset_iptc_store(session.iptc);
    session.image.file_type = FileType::eps;
    ByteCursor cursor = test::cursor_over(text);
    static_cast<void>(read_eps_photoshop(context, cursor));
  });
  return 0;
}
