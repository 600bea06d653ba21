// Whole edits of JPEG files: where the EXIF segment goes, and what becomes of those around it.
#include <gtest/gtest.h>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

TEST(JpegEdit, FilesWithoutExifGetIt) {
  Chain with_gps = minimal();
  with_gps[0].entries.insert(
      with_gps[0].entries.begin() + 1,
      pointer(0x8825, {gps_version(), text(0x0001, "N"), rationals(0x0002, {1, 1, 2, 1, 3, 1})}));
  Chain with_thumbnail = minimal();
  with_thumbnail.push_back(ifd_of({text(0x010F, "x")}));
  const Bytes artist = written_exif(true, with_artist(minimal(), "x"));
  const Words add = {"-a", "artist=x"};
  const EditCase cases[] = {
      {add, jpeg({picture()}), jpeg({artist, picture()})},
      {add, jpeg({app0_jfif(), app0_jfif(), picture()}),
       jpeg({app0_jfif(), app0_jfif(), artist, picture()})},
      {add, jpeg({app0_jfif(), app1_xmp(), app2_icc(), picture()}),
       jpeg({app0_jfif(), app1_xmp(), artist, app2_icc(), picture()})},
      {add, jpeg({comment("before"), app0_jfif(), picture()}),
       jpeg({artist, comment("before"), app0_jfif(), picture()})},
      {{"-a", "gps-latitude=1 2 3,gps-lat-ref=n"},
       jpeg({picture()}),
       jpeg({written_exif(true, with_gps), picture()})},
      {{"-a", "th-make=x"},
       jpeg({picture()}),
       jpeg({written_exif(true, with_thumbnail), picture()})},
      {{"-a", "exp-bias=1"},
       jpeg({picture()}),
       jpeg({written_exif(true, minimal({{0x9204, kSignedRational, {1, 1}, {}}})), picture()})},
      // Without an addition there is nothing to make a segment for.
      {{"-qr", "artist"}, jpeg({app1_xmp(), picture()}), jpeg({app1_xmp(), picture()})},
      {{"-e", "a"}, jpeg({app1_xmp(), picture()}), jpeg({app1_xmp(), picture()})},
  };
  check_edits(cases);
}

TEST(JpegEdit, AFileThatEndsBeforeItsScanIsWrittenAsFarAsItGoes) {
  const Bytes start = joined({{0xFF, 0xD8}, app0_jfif()});
  const Bytes artist = written_exif(true, with_artist(minimal(), "x"));
  check_edit({{"-a", "artist=x"},
              joined({start, quantisation_table()}),
              joined({start, artist, quantisation_table()})});
}

/// An Exif segment with another byte behind the mark and its NUL.
Bytes with_padding(Bytes exif_segment, std::uint8_t padding) {
  exif_segment[9] = padding;
  return exif_segment;
}

TEST(JpegEdit, SegmentsAroundExifKeepTheirPlace) {
  const Words add = {"-a", "artist=x"};
  const Words remove = {"-r", "model"};
  Chain without_model = camera();
  drop(without_model[0], 0x0110);
  const Bytes foreign_app13 = segment(0xED, bytes_of("Adobe_CM and nothing else in it"));
  for (const bool big : {false, true}) {
    SCOPED_TRACE(big ? "MM" : "II");
    const Bytes old_exif = source_exif(big, camera());
    const Bytes second_exif = source_exif(!big, {ifd_of({text(0x010F, "Second")})});
    const Bytes added = written_exif(big, with_artist(camera(), "x"));
    const Bytes removed = written_exif(big, without_model);
    const Bytes tail =
        joined({app2_flashpix(0), app2_flashpix(1), segment(0xE5, noise(40, 6)),
                app13_photoshop({resource(1005, "", noise(16, 8))}), foreign_app13, app14_adobe(),
                segment(0xEF, noise(9, 1)), comment("a note"), picture(), comment("another")});
    const EditCase cases[] = {
        {add, jpeg({app0_jfif(), app1_xmp(), old_exif, app1_xmp(), tail}),
         jpeg({app0_jfif(), app1_xmp(), added, app1_xmp(), tail})},
        // The first Exif segment counts; a second is dropped once the first is written anew.
        {add, jpeg({old_exif, second_exif, tail}), jpeg({added, tail})},
        {remove, jpeg({old_exif, app1_xmp(), second_exif, tail}),
         jpeg({removed, app1_xmp(), tail})},
        {{"-e", "f"},
         jpeg({old_exif, second_exif, app2_flashpix(1), picture()}),
         jpeg({old_exif, second_exif, picture()})},
        // The byte behind the mark only fills it up.
        {add, jpeg({with_padding(old_exif, 0x20), tail}), jpeg({added, tail})},
        // An addition moves Exif before the first segment that is neither APP0 nor APP1; its
        // thumbnail is still found through its old place. A removal leaves it where it is.
        {add, jpeg({app2_icc(), old_exif, tail}), jpeg({added, app2_icc(), tail})},
        {remove, jpeg({app2_icc(), old_exif, tail}), jpeg({app2_icc(), removed, tail})},
        {add, jpeg({comment("first"), app0_jfif(), old_exif, tail}),
         jpeg({added, comment("first"), app0_jfif(), tail})},
        // Erasing leaves what stays as it was, Exif included.
        {{"-e", "e"}, jpeg({app0_jfif(), old_exif, second_exif, tail}), jpeg({app0_jfif(), tail})},
        {{"-e", "F"},
         jpeg({old_exif, app2_icc(), app2_flashpix(0), app2_icc(), app2_flashpix(1), picture()}),
         jpeg({old_exif, app2_icc(), app2_icc(), picture()})},
        {{"-e", "Iptc"},
         jpeg({old_exif, app13_photoshop({}), foreign_app13, app14_adobe(), picture()}),
         jpeg({old_exif, app14_adobe(), picture()})},
        {{"-b", "-e", "All"},
         jpeg({app0_jfif(), old_exif, app1_xmp(), app2_icc(), tail}),
         jpeg({app0_jfif(), app1_xmp(), app2_icc(), segment(0xE5, noise(40, 6)), app14_adobe(),
               segment(0xEF, noise(9, 1)), comment("a note"), picture(), comment("another")})},
        // An erase request beside a list gives way, but what it marked is still written anew.
        {{"-q", "-e", "a", "-a", "artist=x"},
         jpeg({app0_jfif(), old_exif, app2_flashpix(1), picture()}),
         jpeg({app0_jfif(), added, app2_flashpix(1), picture()})},
    };
    check_edits(cases);
  }
}

TEST(JpegEdit, SeveralFilesInOneRun) {
  const Bytes camera_file = jpeg({source_exif(false, camera()), picture()});
  const Bytes plain_file = jpeg({quantisation_table(), frame_header(20, 10)});
  const auto edited = [](const Chain& source, std::uint32_t width, std::uint32_t height) {
    Chain chain = with_artist(source, "x");
    set(exif(chain), {longs(0xA002, {width}), longs(0xA003, {height})});
    return chain;
  };
  const Sandbox sandbox(
      {{"1.jpg", camera_file}, {"sub/2.jpg", plain_file}, {"3.jpg", camera_file}});
  // What was made for one file (the sizes of -s, the minimal fields) is not carried to the next.
  expect_outcome(
      run(sandbox, {"-b", "-s", "-a", "artist=x", "1.jpg", "sub/2.jpg", "missing", "3.jpg"}), 0, "",
      "Error: file missing: can't determine file type: No such file or directory\n");
  const Bytes changed = jpeg({written_exif(false, edited(camera(), 1234, 567)), picture()});
  const Bytes made = written_exif(true, edited(minimal(), 20, 10));
  expect_files(sandbox, {{"1.jpg", changed},
                         {"sub/2.jpg", jpeg({made, quantisation_table(), frame_header(20, 10)})},
                         {"3.jpg", changed}});
}

}  // namespace
}  // namespace tagmend::test
