// One file of every type and with every kind of metadata that the reader knows: what damaged files
// are made of, and where the fuzz targets begin.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "common/camera.h"
#include "common/maker_photos.h"
#include "read/image_file.h"

namespace tagmend::test {

using namespace std::string_view_literals;

inline Bytes sample_resources() {
  return joined({resource(1028, "",
                          joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 25, "one"),
                                  dataset(2, 25, "two"), dataset(2, 55, "20040501"),
                                  dataset(2, 60, "102030+0100"), dataset(2, 120, "A caption")})),
                 resource(1034, "", {1, 0}), resource(1035, "", bytes_of("http://a")),
                 resource(1005, "Name", noise(16, 8))});
}

inline Bytes custom_fields(bool big) {
  Bytes records = bytes_of("RMETA\0"sv);
  records = joined({records, bytes_of(big ? "MM" : "II"), {9, 9, 9, 9}});
  std::uint32_t type = 1;
  for (const std::string_view texts : {"Who\0Where\0"sv, "Ann\0Oslo\0"sv}) {
    put(records, records.size(), type++, 2, big);
    put(records, records.size(), static_cast<std::uint32_t>(texts.size()) + 2, 2, big);
    put(records, records.size(), bytes_of(texts));
  }
  return segment(0xE5, records);
}

inline std::vector<Ifd> pages() {
  Ifd strips =
      ifd_of({longs(0x0100, {8}), image_locator(0x0111, kLong), image_locator(0x0117, kShort)});
  strips.images = {noise(31, 22), noise(32, 23)};
  std::vector<Ifd> chain = camera();
  set(chain[0], pointer(0x014A, {strips, strips}));
  set(chain[0], octets(0x83BB, kUndefined, dataset(2, 90, "Oslo")));
  set(chain[0], octets(0x8649, kByte, sample_resources()));
  chain.push_back(strips);
  return chain;
}

inline std::vector<Bytes> editable_files() {
  std::vector<Bytes> files;
  for (const bool big : {false, true}) {
    files.push_back(
        jpeg({app0_jfif(), source_exif(big, camera()), app1_xmp(), app2_icc(), app2_flashpix(1),
              custom_fields(big),
              segment(0xED, joined({bytes_of("Photoshop 3.0\0"sv), sample_resources()})),
              comment("c"), picture()}));
    files.push_back(scattered_tiff(big, pages()));
  }
  for (const MakerDef& maker : makers_with_ifd()) {
    const bool big = maker.kind % 2 == 0;
    files.push_back(jpeg({source_exif(big, maker_chain(maker, 25)), picture()}));
  }
  files.push_back(jpeg({picture()}));
  return files;
}

inline Bytes eps_lines(const Bytes& block) {
  std::string lines = "\n%%Title: a\n%BeginPhotoshop: " + std::to_string(block.size()) + "\n";
  for (std::size_t i = 0; i < block.size(); ++i) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%s%02X", i % 32 == 0 ? i == 0 ? "% " : "\n% " : "",
                  block[i]);
    lines += digits;
  }
  return bytes_of(lines + "\n%EndPhotoshop\n");
}

inline Bytes raw_camera_file(bool big) {
  constexpr std::uint32_t header = 14;
  Bytes block(0x600);
  Bytes file = bytes_of(big ? "MM" : "II");
  put(file, 2, header, 4, big);
  put(file, 6, bytes_of("HEAPCCDR"));
  put(file, header, block);
  const std::size_t end = file.size() + 22;
  put(file, end - 22, 100, 4, big);
  put(file, end - 18, 10, 4, big);
  put(file, end - 4, static_cast<std::uint32_t>(block.size()), 4, big);
  return file;
}

inline std::vector<Bytes> other_files() {
  std::vector<Bytes> files = {raw_camera_file(false), raw_camera_file(true)};
  const Bytes tiff = scattered_tiff(true, camera());
  files.push_back(joined({bytes_of("\0MRM"sv), big32(16 + static_cast<std::uint32_t>(tiff.size())),
                          bytes_of("\0PRD"sv), big32(8), Bytes(8), bytes_of("\0TTW"sv),
                          big32(static_cast<std::uint32_t>(tiff.size())), tiff}));
  Bytes raf = bytes_of("FUJIFILMCCD-RAW ");
  const std::uint32_t pointer_pos = file_type_info(FileType::fujifilm_raf).jpeg_pointer_pos;
  put(raf, pointer_pos, pointer_pos + 4, 2, true);
  put(raf, pointer_pos + 4, jpeg({source_exif(false, camera())}));
  files.push_back(raf);
  files.push_back(
      joined({bytes_of("%!PS-Adobe-3.0 EPSF-3.0"),
              eps_lines(joined({sample_resources(),
                                resource(1058, "", joined({bytes_of("Exif\0\0"sv), tiff}))}))}));
  Bytes dos = bytes_of("\xC5\xD0\xD3\xC6");
  put(dos, 20, 32, 4, false);
  put(dos, 24, static_cast<std::uint32_t>(tiff.size()), 4, false);
  put(dos, 32, tiff);
  files.push_back(dos);
  return files;
}

}  // namespace tagmend::test
