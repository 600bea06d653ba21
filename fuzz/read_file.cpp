// A whole file, of any type, through the reader.
#include "cli/metadata_hooks.h"
#include "cli/session.h"
#include "harness.h"
#include "read/read_image_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  test::Bytes file(data, data + size);
  if (file.empty()) {
    return 0;
  }
  fuzz::run_input([&file] {
    const Session session = open_session();
    ReadContext context{.image = session.image, .iptc = session.iptc, .hooks = metadata_hooks()};
    static_cast<void>(read_image_file(context, "", "", file, true));
  });
  return 0;
}
