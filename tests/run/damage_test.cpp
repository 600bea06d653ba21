// Damaged files of every maker-note layout and container: cut, with bytes changed, and with offsets
// and counts that lead nowhere, to themselves or in circles. However they are, a run ends in the
// usual way, quickly and in little memory, and no original is lost.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/jpeg_builder.h"
#include "common/maker_cameras.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

// ---- Running many files at once ----

constexpr double max_seconds = 2;  ///< of processor time, for one run

// A group that is edited keeps below the number of names that one run may create.
constexpr std::size_t group_size = 200;

// How a run may end early: a length in a resource block that reaches past the block.
constexpr int end_status = 255;
constexpr std::string_view end_message =
    "Error: Attempt to read past end of buffer in get_bytes()\n";

double seconds_of_children() {
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Edits the files in one run. A run that was ended early is made anew with half of them each.
void edit_group(std::span<const Bytes> files, const std::string& extension) {
  const Sandbox sandbox;
  Words arguments = {"-s", "-a", "artist=x,gps-latitude=1 2 3,comment=[make] [cn-owner] [rc-name1]",
                     "-r", "model"};
  for (std::size_t i = 0; i < files.size(); ++i) {
    arguments.push_back(std::to_string(i) + extension);
    sandbox.add(arguments.back(), files[i]);
  }
  const double before = seconds_of_children();
  const Outcome outcome = run(sandbox, arguments);
  EXPECT_LT(seconds_of_children() - before, max_seconds);
  for (std::size_t i = 0; i < files.size(); ++i) {
    const Bytes backup = sandbox.content(std::to_string(i) + "-be" + extension);
    const Bytes kept = backup.empty() ? sandbox.content(std::to_string(i) + extension) : backup;
    EXPECT_TRUE(kept == files[i]) << "an original was lost";
  }
  if (outcome.status == 0) {
    return;
  }
  if (outcome.status != end_status || !outcome.err.ends_with(end_message)) {
    ADD_FAILURE() << outcome.status << "\n" << outcome.err;
  }
  if (files.size() > 1) {
    edit_group(files.first(files.size() / 2), extension);
    edit_group(files.subspan(files.size() / 2), extension);
  }
}

void edit_all(const std::vector<Bytes>& files, const std::string& extension) {
  for (std::size_t first = 0; first < files.size(); first += group_size) {
    edit_group(std::span(files).subspan(first, std::min(files.size() - first, group_size)),
               extension);
  }
#ifndef TAGMEND_SANITIZED  // the sanitizers' own memory is many times as much
  constexpr long max_kilobytes = 65'536;
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  EXPECT_LT(usage.ru_maxrss, max_kilobytes);
#endif
}

// ---- What is damaged ----

using Wrap = std::function<Bytes(const Bytes&)>;

Bytes in_jpeg(const Bytes& tiff) { return jpeg({app1_exif(tiff), picture()}); }

Bytes in_mrw(const Bytes& tiff) {
  return mrw_file(joined({mrw_block("PRD", noise(8, 1)), mrw_block("TTW", tiff)}));
}

Bytes in_eps(const Bytes& tiff) {
  return eps_file(joined({exif_resource(tiff), resource(1035, "", bytes_of("http://a"))}), false);
}

/// A format: the bytes whose numbers are changed, and the file around them.
struct Specimen {
  std::string name, extension;
  Bytes core;
  bool big_endian;
  Wrap wrap;
};

/// TIFF data with a note of a few fields, among them all that lead elsewhere.
Chain chain_of(const Camera& camera, bool big_endian) {
  Note note = note_of(camera, big_endian, big_endian);
  if (note.fields.size() > 8) {
    note.fields.resize(8);
  }
  if (note.info.size() > 3) {
    note.info.resize(3);
  }
  return {ifd_of({text(0x010F, camera.make), text(0x0110, camera.model),
                  pointer(0x8769, {shorts(0x8827, {400}), maker_note(ifd_of_note(note)),
                                   shorts(0xA001, {1})})})};
}

std::vector<Specimen> specimens() {
  std::vector<Specimen> all;
  const std::vector<Camera> makers = cameras();
  // One layout for each decoder and structure.
  for (const std::uint32_t layout :
       {1U, 2U, 6U, 7U, 8U, 12U, 13U, 18U, 23U, 27U, 29U, 30U, 32U, 33U}) {
    const bool big = layout % 2 == 0;
    all.push_back({makers[layout].make, ".jpg", written_tiff(big, chain_of(makers[layout], big)),
                   big, in_jpeg});
  }
  const Bytes tiff = written_tiff(true, chain_of(makers[30], true));
  all.push_back({"TIFF", ".tif", tiff, true, [](const Bytes& t) { return t; }});
  all.push_back({"RAF", ".raf", tiff, true, [](const Bytes& t) { return raf_file(in_jpeg(t)); }});
  all.push_back({"MRW", ".mrw", tiff, true, in_mrw});
  all.push_back({"MRW blocks", ".mrw", in_mrw(tiff), true, [](const Bytes& file) { return file; }});
  all.push_back({"EPS", ".eps", tiff, true, in_eps});
  all.push_back({"DOS EPS", ".eps", tiff, true, dos_eps_file});
  all.push_back(
      {"CRW", ".crw", crw_file(noise(0x300, 4), false), false, [](const Bytes& f) { return f; }});
  const Bytes datasets = joined({dataset(2, 0, Bytes{0, 2}), dataset(2, 55, "20040501"),
                                 dataset(3, 60, Bytes{1, 2}), dataset(2, 131, "P")});
  all.push_back({"Photoshop", ".jpg",
                 joined({resource(1000, "odd", {1, 2, 3}), resource(1028, "", datasets),
                         resource(1034, "", {1}), resource(1035, "", bytes_of("http://a"))}),
                 true, [](const Bytes& blocks) {
                   return jpeg({app13_photoshop({blocks}), picture()});
                 }});
  all.push_back({"RMETA", ".jpg", app5_rmeta(false), false, [](const Bytes& app5) {
                   return jpeg({app5, picture()});
                 }});
  return all;
}

/// At most about `limit` numbers up to `end`, evenly spread and even.
std::vector<std::size_t> spread(std::size_t end, std::size_t limit) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < end; i += 2 * (end / limit / 2 + 1)) {
    numbers.push_back(i);
  }
  return numbers;
}

std::vector<Bytes> cut_and_flipped(const Bytes& whole, std::uint32_t seed) {
  std::vector<Bytes> files;
  for (const std::size_t size : spread(whole.size(), 100)) {
    files.push_back(cut_at(whole, size));
  }
  std::mt19937 random(seed);
  for (int i = 0; i < 100; ++i) {
    Bytes flipped = whole;
    flipped[random() % whole.size()] ^= static_cast<std::uint8_t>(1U + random() % 255U);
    files.push_back(flipped);
  }
  return files;
}

/// Numbers in place of others: an offset of its own field, that of IFD0, and the largest ones.
std::vector<Bytes> with_other_numbers(const Specimen& specimen) {
  std::vector<Bytes> files;
  std::size_t turn = 0;
  for (const std::size_t at : spread(specimen.core.size() - 4, 150)) {
    const std::uint32_t numbers[] = {
        0xFFFFFFFF, static_cast<std::uint32_t>(at), 0x7FFFFFFF, 8, 0xFFFFFFF0U, 0x80000001};
    for (int i = 0; i < 2; ++i) {
      Bytes core = specimen.core;
      put(core, at, numbers[turn++ % 6], 4, specimen.big_endian);
      files.push_back(specimen.wrap(core));
    }
    ++turn;
  }
  return files;
}

TEST(Damage, EveryFormat) {
  std::uint32_t seed = 1;
  for (const Specimen& specimen : specimens()) {
    SCOPED_TRACE(specimen.name);
    edit_all(cut_and_flipped(specimen.wrap(specimen.core), seed++), specimen.extension);
    edit_all(with_other_numbers(specimen), specimen.extension);
  }
}

// ---- IFDs in circles and in depth ----

/// Where an entry's tag, type and count stand in TIFF data.
std::size_t entry_position(const Bytes& tiff, const Entry& entry, std::uint32_t count,
                           bool big_endian) {
  Bytes head;
  layout::put_entry_head(head, 0, entry, count, big_endian);
  return position_of(tiff, head);
}

/// TIFF data with a note of nothing but pointers, a note of its own among them, all to one place:
/// each of those that could be reached again.
std::vector<Bytes> circles(const Camera& camera) {
  Note shape = note_of(camera, true, true);
  Ifd note = ifd_of_note(shape);
  note.entries.clear();
  for (const std::uint16_t tag :
       std::to_array<std::uint16_t>({0x0011, 0x014A, 0x2001, 0x8769, 0x8825, 0xA005})) {
    set(note, longs(tag, {0}));
  }
  const Entry inner = octets(0x927C, kUndefined, Bytes(5));
  set(note, inner);
  Bytes tiff =
      written_tiff(true, {ifd_of({text(0x010F, camera.make), text(0x0110, camera.model),
                                  pointer(0x8769, {shorts(0x8827, {400}), maker_note(note)})})});
  const bool big = shape.big_endian;
  const std::size_t first = entry_position(tiff, note.entries.front(), 1, big);
  const std::size_t last = entry_position(tiff, inner, 5, big);
  const auto ifd = static_cast<std::uint32_t>(first - 2);
  const auto header = static_cast<std::uint32_t>(camera.prefix.size());
  std::vector<Bytes> files;
  // IFD0, the note's IFD from either base, its own beginning, and the pointers themselves.
  for (const std::uint32_t target : {0U, 8U, ifd, ifd - header, header, ifd - 20, ifd + 10}) {
    for (std::size_t at = first; at <= last; at += 12) {
      put(tiff, at + 8, target, 4, big);
    }
    files.push_back(in_jpeg(tiff));
  }
  return files;
}

TEST(Damage, NotesThatPointInCircles) {
  for (const Camera& camera : cameras()) {
    if (!camera.has_ifd()) {
      continue;
    }
    SCOPED_TRACE(camera.layout);
    edit_all(circles(camera), ".jpg");
  }
}

Ifd nested_deep(std::uint16_t tag, int depth) {
  Ifd ifd = ifd_of({shorts(0xE000, {1})});
  for (int i = 0; i < depth; ++i) {
    ifd = ifd_of({shorts(0x0001, {1}), pointer(tag, {ifd})});
  }
  return ifd;
}

TEST(Damage, NotesThatNestDeeply) {
  const std::vector<Camera> makers = cameras();
  std::vector<Bytes> images, previews;
  for (const std::uint32_t layout : {1U, 2U, 30U, 32U, 33U}) {
    for (const std::uint16_t tag : std::to_array<std::uint16_t>({0x014A, 0x8769, 0x2001})) {
      Ifd note = ifd_of_note(note_of(makers[layout], false, false));
      drop(note, 0x2001);
      note.entries.push_back(pointer(tag, {nested_deep(tag, 250)}));
      const Bytes tiff = written_tiff(
          false, {ifd_of({text(0x010F, makers[layout].make), text(0x0110, makers[layout].model),
                          pointer(0x8769, {maker_note(note)})})});
      images.push_back(in_jpeg(tiff));
      images.push_back(raf_file(in_jpeg(tiff)));
      previews.push_back(dos_eps_file(tiff));
      previews.push_back(in_eps(tiff));
    }
  }
  edit_all(images, ".jpg");
  edit_all(previews, ".eps");
}

}  // namespace
}  // namespace tagmend::test
