// Prints what the reader sees in image files: one "nickname=text" a line, EXIF fields in the order
// of the file, then IPTC datasets. Fields without a nickname are shown as "0xTTTT@kind=text". The
// exit status is 1 when a file cannot be read.
#include <cstdio>
#include <span>
#include <string_view>

#include "cli/metadata_hooks.h"
#include "iptc/iptc_store.h"
#include "read/read_image_file.h"
#include "support/charset.h"

namespace tagmend {
namespace {

/// Too large for the stack.
constinit ImageFile image;
constinit IptcStore iptc;

/// Line breaks are escaped, so that a field stays one line.
void print_text(std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\n':
        std::fputs("\\n", stdout);
        break;
      case '\r':
        std::fputs("\\r", stdout);
        break;
      default:
        std::putchar(c);
    }
  }
  std::putchar('\n');
}

void print_fields() {
  for (const FieldEntry& entry : image.table()) {
    if (entry.def != 0) {
      std::printf("%s=", field_table_defs[entry.def].nickname);
    } else {
      std::printf("0x%04x@%u=", entry.tag, static_cast<unsigned>(entry.kind));
    }
    print_text(entry.text.view());
  }
}

/// Datasets and resources without a row of their own have no name to show.
void print_datasets() {
  for (const IptcEntry& entry : iptc.list()) {
    if (entry.row != 0) {
      std::printf("%s=", iptc_datasets[entry.row].nickname);
      print_text(entry.text);
    }
  }
}

bool dump(const char* file_name) {
  ReadContext context{.image = image, .iptc = iptc, .hooks = metadata_hooks()};
  const ErrorCode result = read_image_file(context, "", file_name, {}, false);
  print_fields();
  print_datasets();
  const bool readable = result == ErrorCode::ok || result == ErrorCode::no_exif_data;
  if (!readable) {
    std::fflush(stdout);
    std::fprintf(stderr, "tagdump: %s: %s\n", file_name, error_text(result));
  }
  return readable;
}

}  // namespace
}  // namespace tagmend

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: tagdump FILE...\n", stderr);
    return 1;
  }
  tagmend::cs_init();
  bool all_readable = true;
  for (const char* const file_name : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
    all_readable = tagmend::dump(file_name) && all_readable;
  }
  return all_readable ? 0 : 1;
}
