// Photographs of every sort, made from a seed: JPEG and TIFF, both byte orders, every maker note,
// with and without each kind of metadata, pages, previews and segments of other programs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/jpeg_builder.h"
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
  bool big_endian = false, scattered = false, gps = false, iptc = false;
  Chain chain = {};
  std::vector<Bytes> segments = {};   ///< of a JPEG file, without that of `chain`
  std::size_t exif_place = 0;         ///< which of the segments it precedes
  std::vector<Bytes> resources = {};  ///< those that no edit of a dataset may change
};

namespace generate {

/// An image in strips or tiles, or one JPEG stream. The last part has an even size: behind the last
/// byte of a file there is no padding.
inline Ifd sub_image(Choices& choices) {
  Ifd ifd = ifd_of({longs(0x0100, {choices.below(9000)}), shorts(0x0103, {1})});
  if (choices.one_in(3)) {
    set(ifd, {image_locator(0x0201, kLong), image_locator(0x0202, kLong)});
    ifd.thumbnail = noise(50 + 2 * choices.below(25), choices.below(999));
    return ifd;
  }
  const bool tiled = choices.one_in(3);
  set(ifd, {image_locator(tiled ? 0x0144 : 0x0111, choices.one_in(2) ? kShort : kLong),
            image_locator(tiled ? 0x0145 : 0x0117, choices.one_in(2) ? kShort : kLong)});
  for (std::uint32_t count = 1 + choices.below(4); count > 0; --count) {
    const std::size_t size = 20 + choices.below(60);
    ifd.images.push_back(noise(count > 1 ? size : layout::even(size), choices.below(999)));
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
inline Bytes resources(Choices& choices, Photo& photo, const Bytes& iptc) {
  std::vector<Bytes> blocks = {resource(1028, choices.one_in(3) ? "Its name" : "", iptc),
                               resource(1034, "", choices.one_in(2) ? Bytes{1} : Bytes{1, 0}),
                               resource(1035, "", bytes_of("http://before")),
                               resource(1005, "Odd", noise(choices.below(30), 4)),
                               resource(1061, "", noise(16, 5)),
                               resource(1006, "Even", noise(9, 6))};
  Bytes all = choices.one_in(2) ? resource(2000, "", noise(7, 7)) : Bytes{};
  for (std::uint32_t count = 1 + choices.below(6), i = 0; i < count; ++i) {
    const auto next = blocks.begin() + (i == 0 ? 0 : choices.below(blocks.size()));
    if (i != 0 && next->at(5) != (1034 & 0xFF)) {  // a flag is made anew
      photo.resources.push_back(*next);
    }
    all = joined({all, *next});
    blocks.erase(next);
  }
  return all;
}

inline void add_metadata(Choices& choices, Photo& photo, const Note& note) {
  photo.chain = photo_of(note);
  set(photo.chain[0], text(0x8298, "Mine"));
  if (choices.one_in(3)) {
    drop(exif(photo.chain), 0xA005);
  }
  photo.gps = !choices.one_in(3);
  if (!photo.gps) {
    drop(photo.chain[0], 0x8825);
  }
  if (choices.one_in(2)) {
    std::vector<Ifd> previews(1 + choices.below(3));
    std::generate(previews.begin(), previews.end(), [&] { return sub_image(choices); });
    set(photo.chain[0], pointer(0x014A, previews));
  }
}

inline void make_tiff(Choices& choices, Photo& photo) {
  Chain& chain = photo.chain;
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
  if (photo.iptc) {
    const Bytes content = datasets(choices);
    set(chain[0], octets(0x83BB, kUndefined, content));
    for (Ifd& page : chain) {
      if (&page == &chain[0] || choices.one_in(2)) {
        set(page, octets(0x8649, kByte, resources(choices, photo, content)));
      }
    }
  }
}

inline void make_jpeg(Choices& choices, Photo& photo) {
  std::vector<Bytes>& segments = photo.segments;
  segments = {app1_xmp(),       app2_icc(),
              app2_flashpix(1), app2_flashpix(2),
              app14_adobe(),    app5_rmeta(photo.big_endian),
              comment("c"),     segment(0xEC, noise(30, 1)),
              comment("d"),     segment(0xED, bytes_of("Adobe_CM"))};
  while (segments.size() > 4 + choices.below(7)) {
    segments.erase(segments.begin() + choices.below(segments.size()));
  }
  photo.chain.resize(choices.one_in(3) ? 1 : 2);
  if (photo.iptc) {
    segments.insert(segments.begin() + choices.below(segments.size() + 1),
                    app13_photoshop({resources(choices, photo, datasets(choices))}));
  }
  if (choices.one_in(2)) {
    segments.insert(segments.begin(), app0_jfif());
  }
  photo.exif_place = choices.below(segments.size() + 1);
}

inline Bytes jpeg_file(const Photo& photo, std::size_t exif_place, const Bytes& exif_segment) {
  std::vector<Bytes> segments = photo.segments;
  segments.insert(segments.begin() + static_cast<std::ptrdiff_t>(exif_place), exif_segment);
  return jpeg({joined(segments), picture()});
}

}  // namespace generate

/// Every seed gives another photograph; the cameras take turns.
inline Photo photograph(std::uint32_t seed) {
  Choices choices{seed * 2654435761U};
  const std::vector<Camera> all = cameras();
  Photo photo{choices.one_in(2) ? "p.jpg" : "p.tif", choices.one_in(2), choices.one_in(2)};
  photo.iptc = choices.one_in(2);
  Note note = note_of(all[seed % all.size()], photo.big_endian, choices.one_in(2));
  note.fields.resize(std::min<std::size_t>(note.fields.size(), 30));
  generate::add_metadata(choices, photo, note);
  photo.name == "p.jpg" ? generate::make_jpeg(choices, photo) : generate::make_tiff(choices, photo);
  return photo;
}

inline Bytes source_file(const Photo& photo) {
  const auto tiff = photo.scattered ? scattered_tiff : written_tiff;
  if (photo.segments.empty()) {
    return tiff(photo.big_endian, photo.chain);
  }
  const auto exif_segment = photo.scattered ? source_exif : written_exif;
  return generate::jpeg_file(photo, photo.exif_place, exif_segment(photo.big_endian, photo.chain));
}

/// The photograph with other metadata, as the writer lays it out. An addition to a JPEG file moves
/// the metadata in front of the first segment that is neither APP0 nor APP1.
inline Bytes written_file(const Photo& photo, const Chain& chain, bool is_addition) {
  if (photo.segments.empty()) {
    return written_tiff(photo.big_endian, chain);
  }
  std::size_t place = photo.exif_place;
  for (std::size_t i = 0; is_addition && i < place; ++i) {
    place = photo.segments[i][1] > 0xE1 ? i : place;
  }
  return generate::jpeg_file(photo, place, written_exif(photo.big_endian, chain));
}

}  // namespace tagmend::test
