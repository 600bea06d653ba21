// Generated photographs of every sort. Whatever is edited: the rest stays as it was, the same edit
// once more changes no byte, and what is set back is there again. A failure names the seed of its
// photograph: TAGMEND_SEED tests that one alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/file_walk.h"
#include "common/generated_photos.h"
#include "common/in_process.h"

namespace tagmend::test {
namespace {

using Words = std::vector<std::string>;

/// Every camera twice.
constexpr std::uint32_t photographs = 72;

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
  edits.push_back({{"-a", "exp-time=1/8"}, {"-a", "exp-time=1/4"}, {exif + "829a"}});
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
    const Words size = {"tiff/8769.0/a002", "tiff/8769.0/a003"};
    edits.push_back({{"-s"}, {}, photo.exif ? size : Words{"tiff/"}});
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
    ScratchDirectory::clear();
    write_file(photo.name.c_str(), file);
    arguments.insert(arguments.begin(), "-b");
    arguments.push_back(photo.name);
    EXPECT_EQ(runs.run(arguments), 0);
    EXPECT_EQ(ScratchDirectory::names(), Words{photo.name});
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
