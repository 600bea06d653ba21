// Templates over a photograph. The first byte chooses the section, the second the room.
#include "encode/template.h"

#include "photograph.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  const SubstitutionContext context = fuzz::substitution();
  fuzz::Input input(data, size);
  const auto section = static_cast<TemplateSection>(fuzz::take_byte(input) % 3);
  std::string room(std::size_t{8} * fuzz::take_byte(input),
                   'x');  // without room: on the standard output
  const std::string text = fuzz::text_of(input);
  fuzz::run_input([&] {
    static_cast<void>(expand_template(text, section, room, context));
    fuzz::require(room.empty() || room.find('\0') != std::string::npos, "a text without end");
  });
  return 0;
}
