// Lists of fields to add or remove, as arguments and from files, and values of several parts.
#include "encode/field_list.h"

#include "cli/edit_list_builder.h"
#include "cli/session.h"
#include "common/file_content.h"
#include "harness.h"

namespace tagmend::fuzz {
namespace {

void build_list(std::uint8_t form, const std::string& text) {
  Session session = open_session();
  reset_iptc_store(session.iptc);
  session.exif_edits.count = session.iptc_edits.count = 0;
  session.options.quote_char = (form & 4U) != 0 ? '/' : '"';
  std::string argument(text, 0, text.find('\0'));  // as the command line would end it
  if ((form & 2U) != 0) {
    require(test::write_file("list.txt", test::bytes_of(text)), "the list cannot be written");
    argument = "@list.txt";
  } else if (argument.starts_with('@')) {
    return;
  }
  (form & 1U) != 0 ? build_add_list(argument.c_str(), session)
                   : build_remove_list(argument.c_str(), session);
  require(session.exif_edits.count + session.iptc_edits.count <= EditList::capacity,
          "too many edits");
}

void split_value(std::uint8_t form, std::string text) {
  ListText list{text};
  ValueText item{};
  std::size_t items = 0;
  while (split_repeated_value(list, '"', (form & 1U) != 0 ? ';' : ' ', item)) {
    require(++items <= text.size() + 1, "a list without end");
  }
}

}  // namespace
}  // namespace tagmend::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  static const test::ScratchDirectory directory;
  fuzz::Input input(data, size);
  const std::uint8_t form = fuzz::take_byte(input);
  const std::string text = fuzz::text_of(input);
  fuzz::run_input(
      [&] { (form & 8U) != 0 ? fuzz::split_value(form, text) : fuzz::build_list(form, text); });
  return 0;
}
