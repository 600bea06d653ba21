// A whole file, of any type, through the reader.
#include "common/bytes.h"
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
    ReadContext context = test::context_of(session);
    static_cast<void>(read_image_file(context, "", "", file, true));
  });
  return 0;
}
