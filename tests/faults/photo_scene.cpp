#include "faults/photo_scene.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"

namespace tagmend::test {

Bytes photo_by(const std::string& artist) {
  return jpeg({app0_jfif(), written_exif(true, with_artist(camera(), artist)), picture()});
}

bool all_scenes_wanted() {
  const char* const wanted = std::getenv("TAGMEND_FAULTS");
  return wanted != nullptr && std::string_view(wanted) == "all";
}

namespace {

// Long enough for the kernel to copy the image from file to file.
constexpr std::size_t image_size = 70'000;

// Longer than what is read at once, so that every segment behind is fetched by a read of its own.
constexpr std::size_t profile_size = 9'000;

constexpr std::string_view old_caption = "Caption";
constexpr std::string_view new_caption = "Another";

// The photographs are private; nothing that comes of them may be less so.
constexpr mode_t photo_mode = 0640;

struct Pair {
  Bytes before;
  Bytes after;
};

// A whole number of LONGs, as a TIFF file holds them.
Bytes iptc_data(std::string_view caption) {
  return joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 25, "word"), dataset(2, 120, caption)});
}

Bytes resources(std::string_view caption) {
  return joined({resource(1005, "", noise(16, 8)), resource(1028, "", iptc_data(caption))});
}

Bytes long_jpeg(const Bytes& exif_segment, const Bytes& app13, std::uint32_t seed) {
  const Bytes profile = segment(0xE2, noise(profile_size, 2));
  return joined({jpeg({app0_jfif(), exif_segment, profile, app13, profile, picture()}),
                 noise(image_size, seed)});
}

Pair jpeg_pair(bool iptc, bool big_endian, std::uint32_t seed) {
  const Bytes source = source_exif(big_endian, camera());
  const Bytes before = long_jpeg(source, app13_photoshop({resources(old_caption)}), seed);
  return iptc ? Pair{before, long_jpeg(source, app13_photoshop({resources(new_caption)}), seed)}
              : Pair{before, long_jpeg(written_exif(big_endian, with_artist(camera(), "x")),
                                       app13_photoshop({resources(old_caption)}), seed)};
}

/// The camera's fields with strips and with IPTC data in IFD0.
Bytes tiff(Bytes (*lay_out)(bool, const Chain&), bool big_endian, Chain chain,
           std::string_view caption, std::uint32_t seed) {
  set(chain[0],
      {image_locator(0x0111, kLong), image_locator(0x0117, kLong),
       iptc_field(iptc_data(caption), big_endian), octets(0x8649, kByte, resources(caption))});
  chain[0].images = {noise(image_size, seed), noise(128, seed + 1)};
  chain[1].thumbnail = noise(332, seed + 2);  // no padding byte behind the last data
  return lay_out(big_endian, chain);
}

Pair tiff_pair(bool iptc, bool big_endian, std::uint32_t seed) {
  return {tiff(scattered_tiff, big_endian, camera(), old_caption, seed),
          iptc ? tiff(written_tiff, big_endian, camera(), new_caption, seed)
               : tiff(written_tiff, big_endian, with_artist(camera(), "x"), old_caption, seed)};
}

Scene make_scene(bool tiff, bool iptc, bool keep_backup) {
  const auto pair = tiff ? tiff_pair : jpeg_pair;
  const std::string extension = tiff ? ".tif" : ".jpg";
  Scene scene;
  scene.title = std::string(tiff ? "Tiff" : "Jpeg") + (iptc ? "Iptc" : "Exif") +
                (keep_backup ? "" : "WithoutBackup");
  if (!keep_backup) {
    scene.options = {"-b"};
  }
  scene.options.insert(scene.options.end(),
                       {"-a", iptc ? "ip-caption=" + std::string(new_caption) : "artist=x"});
  for (const auto& [path, seed] : {std::pair{"a/photo", 1U}, std::pair{"b/other", 2U}}) {
    Pair bytes = pair(iptc, seed == 1, seed);
    scene.photos.push_back({path + extension, std::move(bytes.before), std::move(bytes.after)});
    scene.operands.push_back(path + extension);
  }
  return scene;
}

std::vector<Scene> make_scenes() {
  std::vector<Scene> all;
  for (const bool tiff : {false, true}) {
    for (const bool iptc : {false, true}) {
      for (const bool keep_backup : {true, false}) {
        all.push_back(make_scene(tiff, iptc, keep_backup));
      }
    }
  }
  Scene walk = make_scene(false, false, false);
  walk.title = "Directories";
  walk.options.insert(walk.options.begin() + 1, "-i");
  walk.operands = {"."};
  all.push_back(walk);
  Scene attribute = make_scene(false, false, true);
  attribute.title = "LargeAttribute";
  attribute.has_large_attribute = true;
  // Every allocation that the heap has no room for asks the kernel for as little as possible.
  attribute.environment = {"GLIBC_TUNABLES=glibc.malloc.top_pad=0:glibc.malloc.tcache_count=0"};
  all.push_back(attribute);
  Scene without_links = make_scene(false, false, true);
  without_links.title = "WithoutLinks";
  without_links.without_links = true;
  all.push_back(without_links);
  return all;
}

/// Whether a file is the backup of the photograph, numbered or not, by its name.
bool is_backup_name(const Photo& photo, const std::string& path) {
  const std::size_t dot = photo.path.rfind('.');
  const std::string start = photo.path.substr(0, dot) + "-be";
  const std::string extension = photo.path.substr(dot);
  return path.starts_with(start + "(") ? path.ends_with(")" + extension)
                                       : path == start + extension;
}

struct PhotoState {
  bool is_old = false;
  bool is_new = false;
  bool has_original = false;  ///< under whatever name
};

/// Whether a message tells that the file is what is left of a photograph.
bool is_told(const std::string& path, const Outcome& outcome) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return outcome.err.find("Original file backed up as '" + name + "'") != std::string::npos;
}

PhotoState find_state(const Photo& photo, const Files& files) {
  PhotoState state;
  for (const auto& [path, content] : files) {
    const bool old = content == photo.before;
    if (path == photo.path) {
      state.is_old = old;
      state.is_new = content == photo.after;
      if (!old && !state.is_new) {
        ADD_FAILURE() << path << " is neither the old nor the new file: "
                      << difference(photo.after, content);
      }
    } else if (is_backup_name(photo, path)) {
      EXPECT_TRUE(old) << path << " is not the original: " << difference(photo.before, content);
    }
    state.has_original |= old;
  }
  return state;
}

/// Files that are neither a photograph nor a backup.
void check_leftovers(const Scene& scene, const Sandbox& sandbox, const Files& files,
                     const Outcome& outcome, const Disturbance& disturbance) {
  std::size_t temps = 0;
  for (const auto& [path, content] : files) {
    struct stat status {};
    EXPECT_EQ(::stat(sandbox.path(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777 & ~photo_mode, 0U) << path << " can be read by others";
    const bool is_known = std::ranges::any_of(scene.photos, [&, &path = path](const Photo& photo) {
      return path == photo.path || is_backup_name(photo, path);
    });
    if (is_known || is_told(path, outcome)) {
      continue;
    }
    const bool is_temp = path.find("/orvale_") != std::string::npos;
    EXPECT_TRUE(is_temp && ++temps <= disturbance.temps) << path << " was left behind";
  }
}

void check_status(const Outcome& outcome, const Disturbance& disturbance) {
  if (disturbance.ended_early) {  // the caller knows by which signal
    return;
  }
  // The one failure that ends a run: without its list the run could edit its own files again.
  const bool no_list =
      outcome.status == 255 &&
      outcome.err.find("Can't allocate memory for created file list\n") != std::string::npos;
  EXPECT_TRUE(outcome.status == 0 || no_list) << "status " << outcome.status;
}

/// A walk passes over a directory that can't be read, which its message names instead of the files.
bool directory_failed(const Outcome& outcome) {
  return outcome.err.find("Error: Can't open directory ") != std::string::npos ||
         outcome.err.find(": can't determine file type: ") != std::string::npos;
}

void check_messages(const Scene& scene, const Photo& photo, const PhotoState& state,
                    const Outcome& outcome, const Disturbance& disturbance) {
  if (disturbance.ended_early || disturbance.is_silent || outcome.status != 0) {
    return;
  }
  if (state.is_new) {
    EXPECT_EQ(outcome.err.find("Error: File " + photo.path), std::string::npos)
        << "an edit that was done is called a failure";
  } else if (scene.is_walk()) {
    EXPECT_NE(outcome.err, "");
  } else {
    EXPECT_NE(outcome.err.find(photo.name()), std::string::npos)
        << "no message names " << photo.name();
  }
}

}  // namespace

Words Scene::arguments() const {
  Words all = options;
  all.insert(all.end(), operands.begin(), operands.end());
  return all;
}

const std::vector<Scene>& scenes() {
  static const std::vector<Scene> all = make_scenes();
  return all;
}

void use_memory_file_system() {
  if (::access("/dev/shm", W_OK | X_OK) == 0) {
    ::setenv("TMPDIR", "/dev/shm", 0);
  }
}

SceneSandbox::SceneSandbox(const Scene& scene) {
  for (const Photo& photo : scene.photos) {
    directory.add(photo.path, photo.before);
    const std::string path = directory.path(photo.path);
    // Where that is allowed, the new file must be given to the owner of the old one.
    [[maybe_unused]] const int given = ::chown(path.c_str(), 1234, 2345);
    EXPECT_EQ(::chmod(path.c_str(), photo_mode), 0);
    if (scene.has_large_attribute) {
      const std::string value(2000, 'v');
      ::setxattr(path.c_str(), "user.note", value.data(), value.size(), 0);
    }
  }
}

void check_scene(const Scene& scene, const SceneSandbox& sandbox, const Outcome& outcome,
                 const Disturbance& disturbance) {
  SCOPED_TRACE(scene.title + ": " + disturbance.text + "\n" + outcome.err);
  const Files files = sandbox.directory.files();
  check_status(outcome, disturbance);
  check_leftovers(scene, sandbox.directory, files, outcome, disturbance);
  bool one_failed = false;
  for (std::size_t i = 0; i < scene.photos.size(); ++i) {
    const Photo& photo = scene.photos[i];
    const PhotoState state = find_state(photo, files);
    EXPECT_TRUE(files.contains(photo.path)) << photo.path << " is gone";
    EXPECT_TRUE(state.has_original || (!scene.keeps_backup() && state.is_new))
        << "the original of " << photo.path << " is lost";
    check_messages(scene, photo, state, outcome, disturbance);
    if (state.is_new || disturbance.ended_early || outcome.status != 0) {
      continue;
    }
    EXPECT_FALSE(disturbance.must_succeed) << photo.path << " was not edited";
    if (disturbance.is_permanent || (scene.is_walk() && directory_failed(outcome))) {
      continue;
    }
    EXPECT_TRUE(i == disturbance.in_work || disturbance.in_work >= scene.photos.size())
        << photo.path << " was not edited, though nothing was wrong with it";
    EXPECT_FALSE(one_failed) << "neither photograph was edited";
    one_failed = true;
  }
}

}  // namespace tagmend::test
