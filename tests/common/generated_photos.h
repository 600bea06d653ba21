// Photographs of every sort, made from a seed: JPEG and TIFF, both byte orders, every maker note,
// with and without each kind of metadata, pages, previews and segments of other programs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/image_builder.h"
#include "common/maker_cameras.h"

namespace tagmend::test {

/// The same numbers from the same seed, everywhere.
struct Choices {
  std::uint32_t state;

  std::uint32_t below(std::size_t limit) {
    state = state * 1664525U + 1013904223U;
    return static_cast<std::uint32_t>((state >> 8U) % limit);
  }
  bool one_in(std::uint32_t limit) { return below(limit) == 0; }
};

struct Photo {
  std::string name;
  Bytes file;
  Camera camera;
  Note note = {};
  bool exif = true, gps = false, thumbnail = false, iptc = false;
};

namespace generate {

/// An image in strips or tiles, or one JPEG stream.
inline Ifd sub_image(Choices& choices) {
  Ifd ifd = ifd_of({longs(0x0100, {choices.below(9000)}), shorts(0x0103, {1})});
  if (choices.one_in(3)) {
    set(ifd, image_locator(0x0201, kLong));
    set(ifd, image_locator(0x0202, kLong));
    ifd.thumbnail = noise(50 + choices.below(50), choices.below(999));
    return ifd;
  }
  const bool tiled = choices.one_in(3);
  set(ifd, image_locator(tiled ? 0x0144 : 0x0111, choices.one_in(2) ? kShort : kLong));
  set(ifd, image_locator(tiled ? 0x0145 : 0x0117, choices.one_in(2) ? kShort : kLong));
  for (std::uint32_t count = 1 + choices.below(4); count > 0; --count) {
    ifd.images.push_back(noise(20 + choices.below(60), choices.below(999)));
  }
  return ifd;
}

inline Bytes datasets(Choices& choices) {
  Bytes all = choices.one_in(4) ? Bytes{} : dataset(2, 0, Bytes{0, 2});
  if (choices.one_in(2)) {
    all = joined({dataset(1, 0, Bytes{0, 4}), dataset(1, 90, "\x1B%G"), all});
  }
  all = joined({all, dataset(2, 25, "one"), dataset(2, 25, "two"), dataset(2, 120, "Before")});
  if (choices.one_in(2)) {
    all = joined({all, dataset(2, 99, noise(choices.below(40), 3)), dataset(3, 0, Bytes{0, 2}),
                  dataset(3, 20, Bytes{2, 1}), dataset(7, 10, Bytes{1}), dataset(9, 9, "?")});
  }
  return all;
}

/// Resource blocks in any order.
inline Bytes resources(Choices& choices, const Bytes& iptc) {
  std::vector<Bytes> blocks = {resource(1028, choices.one_in(3) ? "Its name" : "", iptc),
                               resource(1034, "", choices.one_in(2) ? Bytes{1} : Bytes{1, 0}),
                               resource(1035, "", bytes_of("http://before")),
                               resource(1005, "Odd", noise(choices.below(30), 4)),
                               resource(1061, "", noise(16, 5)),
                               resource(1006, "Even", noise(9, 6))};
  Bytes all;
  for (std::uint32_t left = 1 + choices.below(6); left > 0; --left) {
    const auto next = blocks.begin() + (all.empty() ? 0 : choices.below(blocks.size()));
    all = joined({all, *next});
    blocks.erase(next);
  }
  return choices.one_in(2) ? joined({resource(2000, "", noise(7, 7)), all}) : all;
}

inline Chain metadata(Choices& choices, Photo& photo) {
  Chain chain = photo_of(photo.note);
  set(chain[0], text(0x010E, "Before"));
  set(chain[0], text(0x8298, "Mine"));
  set(exif(chain), rationals(0x829A, {1, 4}));
  if (choices.one_in(3)) {
    drop(exif(chain), 0xA005);
  }
  photo.gps = !choices.one_in(3);
  if (!photo.gps) {
    drop(chain[0], 0x8825);
  }
  return chain;
}

inline Bytes tiff_file(Choices& choices, Photo& photo, bool big) {
  Chain chain = metadata(choices, photo);
  chain.pop_back();
  for (std::uint32_t pages = choices.below(4); pages > 0; --pages) {
    chain.push_back(sub_image(choices));
  }
  const Ifd image = sub_image(choices);
  for (const Entry& entry : image.entries) {
    set(chain[0], entry);
  }
  chain[0].images = image.images;
  chain[0].thumbnail = image.thumbnail;
  if (choices.one_in(2)) {
    std::vector<Ifd> previews(1 + choices.below(3));
    std::generate(previews.begin(), previews.end(), [&] { return sub_image(choices); });
    set(chain[0], pointer(0x014A, previews));
  }
  photo.iptc = choices.one_in(2);
  if (photo.iptc) {
    const Bytes content = datasets(choices);
    set(chain[0], octets(0x83BB, kUndefined, content));
    for (Ifd& page : chain) {
      if (&page == &chain[0] || choices.one_in(2)) {
        set(page, octets(0x8649, kByte, resources(choices, content)));
      }
    }
  }
  return choices.one_in(2) ? written_tiff(big, chain) : scattered_tiff(big, chain);
}

inline Bytes jpeg_file(Choices& choices, Photo& photo, bool big) {
  std::vector<Bytes> segments = {
      app1_xmp(),       app2_icc(),      app2_flashpix(1),
      app2_flashpix(2), app5_rmeta(big), segment(0xEC, noise(30, 1)),
      app14_adobe(),    comment("c"),    segment(0xED, bytes_of("Adobe_CM")),
      comment("d")};
  while (segments.size() > 4 + choices.below(7)) {
    segments.erase(segments.begin() + choices.below(segments.size()));
  }
  const auto add = [&](const Bytes& one) {
    segments.insert(segments.begin() + choices.below(segments.size() + 1), one);
  };
  photo.exif = !choices.one_in(8);
  if (photo.exif) {
    Chain chain = metadata(choices, photo);
    photo.thumbnail = !choices.one_in(3);
    chain.resize(photo.thumbnail ? 2 : 1);
    add(choices.one_in(2) ? source_exif(big, chain) : written_exif(big, chain));
  }
  photo.iptc = choices.one_in(2);
  if (photo.iptc) {
    add(app13_photoshop({resources(choices, datasets(choices))}));
  }
  Bytes all = choices.one_in(2) ? Bytes{} : app0_jfif();
  for (const Bytes& one : segments) {
    all = joined({all, one});
  }
  return jpeg({all, picture()});
}

}  // namespace generate

/// Every seed gives another photograph; the cameras take turns.
inline Photo photograph(std::uint32_t seed) {
  Choices choices{seed * 2654435761U};
  const std::vector<Camera> all = cameras();
  Photo photo;
  photo.camera = all[seed % all.size()];
  const bool big = choices.one_in(2);
  photo.note = note_of(photo.camera, big, choices.one_in(2));
  photo.note.fields.resize(std::min<std::size_t>(photo.note.fields.size(), 30));
  photo.name = choices.one_in(2) ? "p.jpg" : "p.tif";
  photo.file = photo.name == "p.jpg" ? generate::jpeg_file(choices, photo, big)
                                     : generate::tiff_file(choices, photo, big);
  return photo;
}

}  // namespace tagmend::test
