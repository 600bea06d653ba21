// Whole edits of TIFF files: pages, strips, tiles and sub-images move with the IFDs that describe
// them, whatever the layout of the source.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/run_tagmend.h"
#include "common/tiff_builder.h"

namespace tagmend::test {
namespace {

/// An image of strips; the last strip has an even size.
Ifd page(std::uint32_t seed, std::uint32_t strips, Type offsets, Type counts) {
  Ifd ifd = ifd_of({shorts(0x0100, {16}), shorts(0x0101, {8 * strips}), shorts(0x0102, {8}),
                    shorts(0x0103, {1}), shorts(0x0106, {1}), image_locator(0x0111, offsets),
                    shorts(0x0115, {1}), longs(0x0116, {8}), image_locator(0x0117, counts),
                    rationals(0x011A, {72, 1})});
  for (std::uint32_t i = 0; i < strips; ++i) {
    ifd.images.push_back(noise(i + 1 < strips ? 127 + i : 128, seed + i));
  }
  return ifd;
}

Ifd tiled(std::uint32_t seed) {
  Ifd ifd = ifd_of({longs(0x0100, {32}), longs(0x0101, {16}), shorts(0x0102, {8, 8, 8}),
                    shorts(0x0142, {16}), shorts(0x0143, {16}), image_locator(0x0144, kLong),
                    image_locator(0x0145, kLong)});
  ifd.images = {noise(251, seed), noise(256, seed + 1)};
  return ifd;
}

Ifd jpeg_preview(std::uint32_t seed, std::size_t size = 97) {
  Ifd ifd = ifd_of({longs(0x0100, {160}), shorts(0x0103, {6}), image_locator(0x0201, kLong),
                    image_locator(0x0202, kLong)});
  ifd.thumbnail = noise(size, seed);
  return ifd;
}

/// The edit on scattered sources of both byte orders. The same edit of the result must give the
/// same bytes again.
void check_tiff(const Words& arguments, const Chain& source, const Chain& expected,
                const std::string& err = {}) {
  for (const bool big : {false, true}) {
    SCOPED_TRACE(big ? "MM" : "II");
    const Bytes written = written_tiff(big, expected);
    check_edit({arguments, scattered_tiff(big, source), written, err}, "photo.tif");
    check_edit({arguments, written, written, err}, "photo.tif");
  }
}

TEST(TiffEdit, EveryStructureIsCarriedOver) {
  Ifd with_metadata = page(1, 2, kLong, kLong);
  set(with_metadata, {pointer(0x8769, {rationals(0x829A, {1, 60}), exif_version(),
                                       pointer(0xA005, {text(0x0001, "R98")})}),
                      pointer(0x8825, {text(0x0001, "N"), rationals(0x0002, {1, 1, 2, 1, 3, 1})})});
  Ifd with_own_strips = page(12, 1, kLong, kLong);
  Ifd strips = page(22, 2, kLong, kLong);
  set(with_own_strips, pointer(0x8769, std::vector<Ifd>{strips}));
  Ifd with_sub_images = page(11, 1, kLong, kLong);
  set(with_sub_images, pointer(0x014A, {page(21, 3, kLong, kShort), tiled(31), jpeg_preview(41)}));
  Ifd with_one_sub_image = jpeg_preview(51, 98);
  set(with_one_sub_image, pointer(0x014A, std::vector<Ifd>{page(61, 2, kLong, kLong)}));
  Ifd inside_and_outside = page(71, 2, kLong, kLong);
  set(inside_and_outside, {image_locator(0x0201, kLong), image_locator(0x0202, kShort)});
  inside_and_outside.thumbnail = noise(20, 79);

  const std::vector<Chain> structures = {
      {page(1, 1, kLong, kLong)},
      {page(2, 1, kShort, kShort)},
      {page(3, 2, kShort, kShort)},  // two SHORTs stand in the entry itself
      {page(4, 3, kShort, kLong)},
      {page(5, 5, kLong, kShort)},
      {tiled(6)},
      {page(7, 1, kLong, kLong), page(17, 3, kLong, kLong)},
      {page(8, 2, kLong, kLong), jpeg_preview(18), tiled(28), jpeg_preview(38, 98)},
      {page(9, 2, kLong, kLong), page(19, 1, kLong, kLong), page(29, 2, kShort, kShort),
       page(39, 1, kLong, kLong), page(49, 3, kLong, kLong), tiled(59), page(69, 2, kLong, kLong)},
      {with_metadata},
      {with_own_strips},
      {with_sub_images, page(91, 1, kLong, kLong)},
      {with_one_sub_image},
  };
  for (std::size_t i = 0; i < structures.size(); ++i) {
    SCOPED_TRACE("structure " + std::to_string(i));
    check_tiff({"-a", "artist=J. Doe"}, structures[i], with_artist(structures[i], "J. Doe"));
  }
  // The pair is rewritten as LONGs.
  Chain added = {inside_and_outside};
  set(added[0], {image_locator(0x0202, kLong), text(0x013B, "x")});
  check_tiff({"-a", "artist=x"}, {inside_and_outside}, added);
}

Chain three_pages() {
  return {page(1, 2, kLong, kLong), page(5, 1, kLong, kLong), page(9, 2, kLong, kLong)};
}

TEST(TiffEdit, FieldsAreAddedReplacedAndRemoved) {
  const Chain source = three_pages();
  Chain described = source;
  set(described[0], {rationals(0x011A, {300, 1}), text(0x010E, "A \"page\"")});
  set(described[1], text(0x010E, "second"));
  check_tiff({"-a", "x-res=300,description=A \"page\",th-description=second"}, source, described,
             "Unexpected '\"' ignored\nUnexpected '\"' ignored\n");
  Chain without_resolution = source;
  drop(without_resolution[0], 0x011A);
  drop(without_resolution[1], 0x011A);
  check_tiff({"-q", "-r", "x-res,th-x-res"}, source, without_resolution);
  // Both new IFDs go behind the last entry of IFD0 that is below their pointers.
  Chain with_ifds = source;
  with_ifds[0].entries.push_back(pointer(0x8825, {gps_version(), octets(0x0005, kByte, Bytes{0})}));
  with_ifds[0].entries.push_back(
      pointer(0x8769, {rationals(0x829A, {250000, 1000000}), exif_version()}));
  check_tiff({"-a", "exp-time=1/4,gps-alt-ref=0"}, source, with_ifds);
}

TEST(TiffEdit, EveryPageKeepsItsOwnIfdsAndItsPlace) {
  const Chain pages = three_pages();
  // Each page has an EXIF IFD of its own: the edited value stays in the first one's.
  const auto page_with_exif = [](std::uint32_t time) {
    Ifd ifd = page(1, 2, kLong, kLong);
    ifd.entries.push_back(pointer(0x8769, {rationals(0x829A, {time, 1000000})}));
    return ifd;
  };
  check_tiff({"-a", "exp-time=1/500"}, {page_with_exif(10000), page_with_exif(5000)},
             {page_with_exif(2000), page_with_exif(5000)});
  // An EXIF IFD that is emptied and filled again stays that of its page, which stays in one piece.
  const auto page_with_interop = [](std::uint32_t time) {
    Ifd ifd = page(5, 1, kLong, kLong);
    ifd.entries.push_back(pointer(0x8769, {rationals(0x829A, {time, 1000000}), exif_version(),
                                           pointer(0xA005, {text(0x0001, "R98")})}));
    ifd.entries.push_back(octets(0x8773, kUndefined, "profile"));
    return ifd;
  };
  check_tiff({"-r", "exp-time,exif-ver", "-a", "exp-time=2"}, {pages[0], page_with_interop(10000)},
             {pages[0], page_with_interop(2000000)});
  // A page whose only field is replaced stays between the others.
  const auto second_made_by = [&pages](const char* make) {
    return Chain{pages[0], ifd_of({text(0x010F, make)}), pages[2]};
  };
  check_tiff({"-a", "th-make=new"}, second_made_by("old"), second_made_by("new"));
  const std::string all_of_the_second =
      "th-width,th-len,th-bits-sam,th-comp,th-photo-int,th-strip-off,th-sample-pix,th-row-strip,"
      "th-strip-cnt,th-x-res";
  const Chain first_and_third = {pages[0], pages[2]};
  check_edit({{"-q", "-r", all_of_the_second},
              scattered_tiff(true, pages),
              written_tiff(true, first_and_third)},
             "photo.tif");
}

TEST(TiffEdit, OptionsThatHaveNoTiffSide) {
  const Chain plain = {page(1, 2, kLong, kLong)};
  check_tiff({"-s"}, plain, plain,
             "Error: photo.tif. Could not determine actual image dimensions.\n");
  for (const char* const what : {"e", "f", "i", "a"}) {
    check_tiff({"-e", what}, plain, plain);
  }
}

TEST(TiffEdit, ARefusedFileLeavesTheNextOneEditable) {
  Chain refused = {page(1, 1, kLong, kLong)};
  find(refused[0], 0x0117)->type = 0;
  const Chain plain = {page(3, 2, kLong, kLong)};
  Files files = {{"a.tif", scattered_tiff(false, refused)},
                 {"b.tif", scattered_tiff(false, plain)}};
  const Sandbox sandbox(files);
  expect_outcome(run(sandbox, {"-b", "-a", "artist=x", "a.tif", "b.tif"}), 0, "",
                 "Error: File a.tif: Editing of this file type not supported\n");
  files["b.tif"] = written_tiff(false, with_artist(plain, "x"));
  expect_files(sandbox, files);
}

TEST(TiffEdit, OneHalfOfWhatLocatesAnImageIsNotRemoved) {
  const Files files = {{"photo.tif", scattered_tiff(true, {page(1, 2, kLong, kLong)})}};
  for (const char* const name : {"strip-off", "strip-cnt", "strip-*"}) {
    expect_untouched(files, {"-b", "-r", name, "photo.tif"},
                     "Error: File photo.tif: Editing of this file type not supported\n");
  }
}

void expect_refused(const Bytes& source) {
  const Files files = {{"photo.tif", source}};
  expect_untouched(files, {"-b", "-a", "artist=x", "photo.tif"},
                   "Error: File photo.tif: Editing of this file type not supported\n");
  expect_untouched(files, {"-b", "-a", "artist=x", "."},
                   "Error: Can't extract EXIF fields: Editing of this file type not supported\n");
}

/// A page that locates its strips by these entries, whatever they say.
Ifd located_by(const std::vector<Entry>& locators) {
  Ifd ifd = page(1, 1, kLong, kLong);
  ifd.images.clear();
  drop(ifd, 0x0111);
  drop(ifd, 0x0117);
  set(ifd, locators);
  return ifd;
}

TEST(TiffEdit, PagesThatCannotBeWrittenAgainAreRefused) {
  const Ifd whole = page(1, 2, kLong, kLong);
  const auto whole_with = [&whole](const Entry& entry) {
    Ifd ifd = whole;
    set(ifd, entry);
    return ifd;
  };
  Ifd no_counts = whole;
  drop(no_counts, 0x0117);
  Ifd twice = located_by({longs(0x0111, {64}), longs(0x0117, {8})});
  twice.entries.insert(twice.entries.begin(), longs(0x0111, {72}));
  Ifd tiles = tiled(3);
  drop(tiles, 0x0145);
  const struct {
    const char* what;
    Chain chain;
  } cases[] = {
      {"a thumbnail's length that is no whole number",
       {whole, ifd_of({longs(0x0201, {64}), rationals(0x0202, {9, 10})})}},
      {"counts that are no whole numbers", {whole_with(rationals(0x0117, {8, 1, 8, 1}))}},
      {"offsets of quantisation tables", {whole_with(longs(0x0207, {8, 8}))}},
      {"offsets of DC tables", {whole_with(longs(0x0208, {8}))}},
      {"offsets of AC tables", {whole_with(longs(0x0209, {8}))}},
      {"offsets of free bytes", {whole_with(longs(0x0120, {8}))}},
      {"no counts", {no_counts}},
      {"no offsets", {located_by({longs(0x0117, {8})})}},
      {"offsets twice", {twice}},
      {"offsets of no type", {located_by({{0x0111, 0, {64}, {}}, longs(0x0117, {8})})}},
      {"more counts than offsets",
       {located_by({longs(0x0111, {64, 128}), longs(0x0117, {8, 8, 8})})}},
      {"no counts on the second page", {whole, no_counts}},
      {"no counts in a sub-image", {whole_with(pointer(0x014A, std::vector<Ifd>{no_counts}))}},
      {"no counts of tiles", {tiles}},
      {"a page without fields", {whole, {}, page(5, 1, kLong, kLong)}},
  };
  for (const auto& refused : cases) {
    SCOPED_TRACE(refused.what);
    for (const bool big : {false, true}) {
      expect_refused(scattered_tiff(big, refused.chain));
    }
  }
}

// The picture is found by a header of its own behind the first.
TEST(TiffEdit, ACamerasRawFileIsRefused) {
  Bytes raw = scattered_tiff(false, {page(1, 2, kLong, kLong)});
  put(raw, 8, bytes_of(std::string_view("CR\2\0", 4)));
  expect_refused(raw);
}

TEST(TiffEdit, ASubImageThatIsLinkedToAnotherIsRefused) {
  Ifd array = page(1, 2, kLong, kLong);
  set(array, pointer(0x014A, {ifd_of({}), ifd_of({shorts(0x0100, {4321})})}));
  Bytes linked = written_tiff(true, {array});
  // The last sub-image; an empty one stands in the 6 bytes before it.
  const Bytes last = hex("0001 0100 0003 00000001 10E1 0000");
  const std::size_t at = position_of(linked, last);
  ASSERT_LT(at, linked.size());
  put(linked, at + last.size(), static_cast<std::uint32_t>(at) - 6, 4, true);
  expect_refused(linked);
}

}  // namespace
}  // namespace tagmend::test
