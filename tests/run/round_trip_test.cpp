// Generated photographs of every sort. Whatever is edited: the rest stays as it was, the same edit
// once more changes no byte, and what is set back is there again. A failure names the seed of its
// photograph: TAGMEND_SEED tests that one alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/file_walk.h"
#include "common/image_builder.h"
#include "common/in_process.h"
#include "common/maker_cameras.h"

namespace tagmend::test {
namespace {

using Words = std::vector<std::string>;

constexpr std::uint32_t photographs = 150;

/// The same numbers from the same seed, everywhere.
struct Choices {
  std::uint32_t state;

  std::uint32_t below(std::uint32_t limit) {
    state = state * 1664525U + 1013904223U;
    return (state >> 8U) % limit;
  }
  bool one_in(std::uint32_t limit) { return below(limit) == 0; }
};

// ---- Photographs ----

struct Photo {
  std::string name;
  Bytes file;
  Camera camera;
  Note note = {};
  bool exif = true, gps = false, thumbnail = false, iptc = false;
};

/// An image in strips or tiles, or one JPEG stream.
Ifd sub_image(Choices& choices) {
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

Bytes datasets(Choices& choices) {
  Bytes all = choices.one_in(4) ? Bytes{} : dataset(2, 0, Bytes{0, 2});
  if (choices.one_in(2)) {
    all = joined({dataset(1, 0, Bytes{0, 4}), dataset(1, 90, "\x1B%G"), all});
  }
  all = joined({all, dataset(2, 25, "one"), dataset(2, 25, "two"), dataset(2, 120, "Before")});
  if (choices.one_in(2)) {
    all = joined({all, dataset(2, 99, noise(choices.below(40), 3)), dataset(3, 20, Bytes{2, 1}),
                  dataset(7, 10, Bytes{1}), dataset(9, 9, "?")});
  }
  return all;
}

/// Resource blocks in any order.
Bytes resources(Choices& choices, const Bytes& iptc) {
  std::vector<Bytes> blocks = {resource(1028, choices.one_in(3) ? "Its name" : "", iptc),
                               resource(1034, "", choices.one_in(2) ? Bytes{1} : Bytes{1, 0}),
                               resource(1035, "", bytes_of("http://before")),
                               resource(1005, "Odd", noise(choices.below(30), 4)),
                               resource(1061, "", noise(16, 5)),
                               resource(1006, "Even", noise(9, 6))};
  Bytes all;
  for (std::uint32_t left = 1 + choices.below(6); left > 0; --left) {
    const auto next = blocks.begin() +
                      (all.empty() ? 0 : choices.below(static_cast<std::uint32_t>(blocks.size())));
    all = joined({all, *next});
    blocks.erase(next);
  }
  return choices.one_in(2) ? joined({resource(2000, "", noise(7, 7)), all}) : all;
}

Chain metadata(Choices& choices, Photo& photo) {
  Chain chain = photo_of(photo.note);
  set(chain[0], text(0x010E, "Before"));
  set(chain[0], text(0x8298, "Mine"));
  set(exif(chain), rationals(0x829A, {1, 50}));
  if (choices.one_in(3)) {
    drop(exif(chain), 0xA005);
  }
  photo.gps = !choices.one_in(3);
  if (!photo.gps) {
    drop(chain[0], 0x8825);
  }
  return chain;
}

Bytes tiff_file(Choices& choices, Photo& photo, bool big) {
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

Bytes jpeg_file(Choices& choices, Photo& photo, bool big) {
  std::vector<Bytes> segments = {
      app1_xmp(),       app2_icc(),      app2_flashpix(1),
      app2_flashpix(2), app5_rmeta(big), segment(0xEC, noise(30, 1)),
      app14_adobe(),    comment("c"),    segment(0xED, bytes_of("Adobe_CM")),
      comment("d")};
  while (segments.size() > 4 + choices.below(7)) {
    segments.erase(segments.begin() + choices.below(static_cast<std::uint32_t>(segments.size())));
  }
  const auto add = [&](const Bytes& one) {
    segments.insert(
        segments.begin() + choices.below(static_cast<std::uint32_t>(segments.size() + 1)), one);
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

Photo photograph(std::uint32_t seed) {
  Choices choices{seed * 2654435761U};
  const std::vector<Camera> all = cameras();
  Photo photo;
  photo.camera = all[seed % all.size()];
  const bool big = choices.one_in(2);
  photo.note = note_of(photo.camera, big, choices.one_in(2));
  photo.note.fields.resize(std::min<std::size_t>(photo.note.fields.size(), 30));
  photo.name = choices.one_in(2) ? "p.jpg" : "p.tif";
  photo.file =
      photo.name == "p.jpg" ? jpeg_file(choices, photo, big) : tiff_file(choices, photo, big);
  return photo;
}

// ---- Edits ----

struct Edit {
  Words set;
  Words back = {};                     ///< sets the old value again, or nothing
  std::vector<std::string> touched;    ///< beginnings of the paths that `set` may change
  std::vector<std::string> left = {};  ///< and of those that `back` does not bring back
  bool acts = true;                    ///< the file holds something for it
};

void add_exif_edits(const Photo& photo, const Holdings& source, std::vector<Edit>& edits) {
  const std::string exif = "tiff/8769.0/", gps = "tiff/8825.0/";
  edits.push_back({{"-a", "description=Other words and more of them"},
                   {"-a", "description=Before"},
                   {"tiff/10e"}});
  edits.push_back({{"-a", "orient=lower-right"}, {"-a", "orient=upper-left"}, {"tiff/112"}});
  edits.push_back({{"-a", "artist=An artist"}, {"-r", "artist"}, {"tiff/13b"}});
  edits.push_back({{"-a", "date-taken=2010-02-03 04:05:06"},
                   {"-a", "date-taken=2004:05:01 10:20:30"},
                   {exif + "9003"}});
  edits.push_back({{"-a", "exp-time=1/125"}, {"-a", "exp-time=1/50"}, {exif + "829a"}});
  edits.push_back({{"-a", "comment=Another word"}, {"-a", "comment=a word"}, {exif + "9286"}});
  if (photo.gps) {
    edits.push_back({{"-a", "gps-latitude=1 2 3"}, {"-a", "gps-latitude=45 27 30"}, {gps + "02"}});
  } else {
    edits.push_back({{"-a", "gps-latitude=1 2 3"}, {"-r", "gps-latitude,gps-ver"}, {gps}});
  }
  if (source.contains(exif + "a005.0/01")) {
    edits.push_back({{"-a", "iop-index=THM"}, {"-a", "iop-index=R98"}, {exif + "a005.0/01"}});
  }
  if (photo.thumbnail) {
    edits.push_back({{"-a", "th-artist=x"}, {"-r", "th-artist"}, {"tiff/next/13b"}});
  }
  if (!photo.exif) {
    for (Edit& edit : edits) {
      edit.touched = edit.left = {"tiff/"};
    }
    return;
  }
  edits.push_back({{"-r", "copyright"}, {"-a", "copyright=Mine"}, {"tiff/8298"}});
  for (const NoteField& field : photo.note.fields) {
    const int row = find_field(field.def->nickname);
    if (field.def->data_type != DataType::string || field.def->has_map() || !field.def->editable ||
        &field_table_defs[static_cast<std::size_t>(row)] != field.def) {
      continue;
    }
    const std::string name = std::string(field.def->nickname) + "=";
    edits.push_back({{"-a", name + notes::text_for(*field.def, 'n')},
                     {"-a", name + field.shown},
                     {exif + "927c/" + walk::hex(field.def->tag)}});
    break;
  }
}

void add_iptc_edits(const Photo& photo, const Holdings& source, std::vector<Edit>& edits) {
  const std::string base = photo.name == "p.tif" ? "tiff/" : "";
  const std::string iptc = base + "iptc ", version = iptc + "2:0=";
  const auto edit = [&](const Words& set, const Words& back, const std::string& path) {
    Edit one{set, back, {path, version}, {version}};
    if (!photo.exif) {
      one.touched.emplace_back("tiff/");
    }
    edits.push_back(one);
  };
  if (photo.iptc) {
    edit({"-a", "ip-caption=After"}, {"-a", "ip-caption=Before"}, iptc + "2:120");
    edit({"-r", "ip-keyword", "-a", "ip-keyword=a;b;c"},
         {"-r", "ip-keyword", "-a", "ip-keyword=one;two"}, iptc + "2:25");
  }
  edit({"-a", "ip-city=Oslo"}, {"-r", "ip-city"}, iptc + "2:90");
  const std::string url = base + "resource 1035";
  const bool has_url = source.contains(url + " ");
  edits.push_back({{"-a", "ip-url=http://after"},
                   has_url ? Words{"-a", "ip-url=http://before"} : Words{"-r", "ip-url"},
                   {url, version},
                   {url, version}});
  edits.push_back({{"-a", "artist=x,ip-caption=After,ip-copyrighted=no", "-r", "date-mod"},
                   {},
                   {"tiff/13b", "tiff/132", iptc + "2:120", version, base + "resource 1034"}});
  if (!photo.exif) {
    edits.back().touched.emplace_back("tiff/");
  }
}

std::vector<Edit> edits_of(const Photo& photo, const Holdings& source) {
  std::vector<Edit> edits;
  add_exif_edits(photo, source, edits);
  add_iptc_edits(photo, source, edits);
  if (photo.name == "p.jpg") {
    edits.push_back({{"-s"}, {}, {"tiff/8769.0/a002", "tiff/8769.0/a003"}, {}, photo.exif});
    edits.push_back({{"-e", "e"}, {}, {"tiff/"}, {}, photo.exif});
    edits.push_back({{"-e", "i"}, {}, {"iptc ", "resource ", "segment edAdob"}, {}, photo.iptc});
    edits.push_back({{"-e", "f"}, {}, {"segment e2FPXR"}, {}, false});
  }
  return edits;
}

// ---- The properties ----

Holdings without(Holdings holdings, const std::vector<std::string>& beginnings) {
  std::erase_if(holdings, [&](const auto& holding) {
    return std::any_of(beginnings.begin(), beginnings.end(), [&](const std::string& beginning) {
      return holding.first.starts_with(beginning);
    });
  });
  return holdings;
}

/// The first path that the two do not hold alike; empty when there is none.
std::string difference(const Holdings& left, const Holdings& right) {
  const auto [first, second] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  if (first == left.end()) {
    return second == right.end() ? "" : second->first;
  }
  return second == right.end() ? first->first : std::min(first->first, second->first);
}

struct RoundTrip {
  const QuietRuns& runs;
  const Photo& photo;

  /// The file after a run, which must be alone: a backup would mean that something was not read.
  [[nodiscard]] Bytes edited(const Bytes& file, Words arguments) const {
    write_file(photo.name.c_str(), file);
    arguments.insert(arguments.begin(), "-b");
    arguments.push_back(photo.name);
    EXPECT_EQ(runs.run(arguments), 0);
    EXPECT_EQ(ScratchDirectory::names(), Words{photo.name});
    ScratchDirectory::names().size() > 1 ? ScratchDirectory::clear() : void();
    return file_content(photo.name.c_str());
  }

  void check(const Holdings& source, const Edit& edit) const {
    const Bytes once = edited(photo.file, edit.set);
    const Holdings after = holdings_of(once, photo.camera);
    EXPECT_EQ(difference(without(source, edit.touched), without(after, edit.touched)), "");
    EXPECT_TRUE(!edit.acts || source != after) << "nothing was edited";
    EXPECT_TRUE(edited(once, edit.set) == once) << "the same edit gives other bytes";
    if (!edit.back.empty()) {
      const Holdings restored = holdings_of(edited(once, edit.back), photo.camera);
      EXPECT_EQ(difference(without(source, edit.left), without(restored, edit.left)), "");
    }
  }
};

TEST(RoundTrip, EditsChangeWhatTheyNameAndCanBeUndone) {
  const char* const only = std::getenv("TAGMEND_SEED");
  const auto first = only != nullptr ? static_cast<std::uint32_t>(std::atoi(only)) : 1;
  const std::uint32_t last = only != nullptr ? first : photographs;
  const QuietRuns runs;
  const ScratchDirectory directory;
  for (std::uint32_t seed = first; seed <= last && !HasFailure(); ++seed) {
    const Photo photo = photograph(seed);
    const Holdings source = holdings_of(photo.file, photo.camera);
    for (const Edit& edit : edits_of(photo, source)) {
      std::string words;
      for (const std::string& word : edit.set) {
        words += " " + word;
      }
      SCOPED_TRACE("seed " + std::to_string(seed) + ", " + photo.camera.make + " " + photo.name +
                   words);
      RoundTrip{runs, photo}.check(source, edit);
    }
  }
}

}  // namespace
}  // namespace tagmend::test
