// The text of a value into stored bytes, for EXIF fields and IPTC datasets. The first two bytes
// choose the row, the third how the value is stored.
#include "encode/encode_field.h"
#include "iptc/iptc_encode.h"
#include "photograph.h"

namespace tagmend::fuzz {
namespace {

void encode_exif(std::uint16_t row, std::uint8_t form, std::string_view text) {
  const EncodeTarget target{.big_endian = (form & 1U) != 0,
                            .layout = (form & 2U) != 0 ? any_layout : form >> 3,
                            .early_check = (form & 4U) != 0};
  // Exactly as large as asked for: a byte too many is found.
  std::vector<std::uint8_t> output(encoded_limit);
  std::uint32_t count = 0;
  static_cast<void>(exif_encode_field(row, target, text, output, count, substitution()));
}

void encode_iptc(std::uint16_t row, std::uint8_t form, std::string_view text) {
  static constinit IptcStore store;
  if (store.pool.used > StringPool::capacity / 2) {
    reset_iptc_store(store);
  }
  std::string_view encoded;
  static_cast<void>(iptc_encode_field(row, text, store, encoded, (form & 4U) != 0, substitution()));
}

}  // namespace
}  // namespace tagmend::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  static_cast<void>(fuzz::photograph());
  fuzz::Input input(data, size);
  const std::size_t row = fuzz::take_u16(input) % (field_def_count + iptc_dataset_count);
  const std::uint8_t form = fuzz::take_byte(input);
  const std::string text = fuzz::text_of(input);
  fuzz::run_input([&] {
    library_settings.unicode_comment = (form & 8U) != 0;
    if ((form & 16U) != 0) {
      copy_text(library_settings.exif_charset, "ISO-8859-1");
      copy_text(library_settings.iptc_charset, "ISO-8859-1");
    }
    if (row < field_def_count) {
      fuzz::encode_exif(static_cast<std::uint16_t>(row), form, text);
    } else {
      fuzz::encode_iptc(static_cast<std::uint16_t>(row - field_def_count), form, text);
    }
  });
  return 0;
}
