// One file of every type and with every kind of metadata that the reader knows: where the targets
// that take whole files begin.
#pragma once

#include <algorithm>
#include <vector>

#include "common/camera.h"
#include "common/container_files.h"
#include "common/maker_cameras.h"

namespace tagmend::test {

inline Bytes sample_resources() {
  return joined({resource(1028, "",
                          joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 25, "one"),
                                  dataset(2, 25, "two"), dataset(2, 55, "20040501"),
                                  dataset(2, 60, "102030+0100"), dataset(2, 120, "A caption")})),
                 resource(1034, "", {1, 0}), resource(1035, "", bytes_of("http://a")),
                 resource(1005, "Name", noise(16, 8))});
}

inline Chain pages() {
  Ifd strips =
      ifd_of({longs(0x0100, {8}), image_locator(0x0111, kLong), image_locator(0x0117, kShort)});
  strips.images = {noise(31, 22), noise(32, 23)};
  Chain chain = camera();
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
              app5_rmeta(big), app13_photoshop({sample_resources()}), comment("c"), picture()}));
    files.push_back(scattered_tiff(big, pages()));
  }
  for (const Camera& camera : cameras()) {
    const bool big = camera.layout % 2 == 0;
    Note note = note_of(camera, big, big);
    note.fields.resize(std::min<std::size_t>(note.fields.size(), 25));
    files.push_back(jpeg({source_exif(big, photo_of(note)), picture()}));
  }
  files.push_back(jpeg({picture()}));
  return files;
}

/// Every format that is read only.
inline std::vector<Bytes> other_files() {
  const Bytes tiff = scattered_tiff(true, camera());
  return {crw_file(Bytes(0x600), false),
          crw_file(Bytes(0x600), true),
          mrw_file(joined({mrw_block("PRD", Bytes(8)), mrw_block("TTW", tiff)})),
          raf_file(jpeg({source_exif(false, camera())})),
          eps_file(joined({sample_resources(), exif_resource(tiff)}), true),
          dos_eps_file(tiff)};
}

}  // namespace tagmend::test
