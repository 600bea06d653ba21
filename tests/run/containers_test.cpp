// Files that hold metadata in other ways than JPEG and TIFF files do: they are recognised and read,
// never changed. And the custom fields of a JPEG file's RMETA segment, which an edit carries over.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/maker_cameras.h"
#include "common/run_tagmend.h"
#include "run/shown_fields.h"

namespace tagmend::test {
namespace {

/// Shown as the lines tell, refused as an operand and in a walk, and left as it is.
void expect_shown_only(const std::string& name, const Bytes& file, const Texts& lines) {
  EXPECT_EQ(shown(file, name), lines);
  const std::string refused = "Editing of this file type not supported\n";
  const Files files = {{name, file}};
  const Sandbox sandbox(files);
  for (const Words& edit :
       {Words{"-s", "-a", "artist=x,ip-city=Oslo"}, Words{"-r", "make"}, Words{"-b", "-e", "a"}}) {
    Words words = edit;
    words.push_back(name);
    expect_outcome(run(sandbox, words), 0, "", "Error: File " + name + ": " + refused);
    words.back() = ".";
    expect_outcome(run(sandbox, words), 0, "", "Error: Can't extract EXIF fields: " + refused);
  }
  expect_files(sandbox, files);
}

/// EXIF data with the note of a camera, and the lines for it; `prefix` is that of IFD0's fields.
Chain exif_of(const Note& note) {
  Ifd ifd = ifd_of_note(note);
  drop(ifd, 0x0011);  // the Nikon thumbnail
  return {ifd_of(
      {text(0x010F, note.camera->make), text(0x0110, note.camera->model),
       pointer(0x8769, {rationals(0x829A, {1, 60}), maker_note(ifd), shorts(0xA001, {1})})})};
}

Texts lines_of_exif(const Note& note, const std::string& prefix = "") {
  Texts lines = {prefix + "make=" + note.camera->make, prefix + "model=" + note.camera->model,
                 "exp-time=1/60"};
  append_lines(lines, note.fields);
  lines.emplace_back("colour-space=sRGB");
  return lines;
}

Note note_of_layout(std::uint32_t layout, bool big_endian) {
  static const std::vector<Camera> all = cameras();
  return note_of(all[layout], big_endian, big_endian);
}

// ---- Raw files ----

TEST(Containers, FujifilmRaf) {
  for (const bool big : {false, true}) {
    const Note note = note_of_layout(2, big);
    const Bytes file = raf_file(jpeg({source_exif(big, exif_of(note)), picture()}));
    expect_shown_only("photo.raf", file, lines_of_exif(note));
  }
}

TEST(Containers, MinoltaMrw) {
  for (const bool big : {false, true}) {
    const Note note = note_of_layout(19, big);
    const Bytes blocks = joined({mrw_block("PRD", noise(24, 1)),
                                 mrw_block("TTW", scattered_tiff(big, exif_of(note))),
                                 mrw_block("WBG", noise(12, 2))});
    expect_shown_only("photo.mrw", mrw_file(blocks), lines_of_exif(note));
    // Without that block there is nothing to show.
    expect_shown_only("bare.mrw", mrw_file(mrw_block("PRD", noise(24, 1))), {});
  }
}

/// The values of a CRW file's meta data block that their type does not tell.
struct CrwValue {
  std::string name;
  Numbers numbers;  ///< empty for a text
  std::string shown;
};

TEST(Containers, CanonCrw) {
  const CrwValue values[] = {
      {"crw-date", {0x4093E980}, "2004:05:01 18:16:32"},
      {"crw-file-format", {}, "CRW:standard"},
      {"crw-owner", {}, "Ann"},
      {"crw-vendor", {}, "Canon"},
      {"crw-model", {}, "Canon EOS D60"},
      {"crw-firm-ver", {}, "Firmware 1.0"},
      {"crw-shutter", {160}, "1/32"},
      {"crw-shutter-delay", {100}, "10.00"},
      {"crw-focus-lower", {123}, "1.230"},
      {"crw-focus-upper", {0xFFFF}, "Infinity"},
      {"crw-exp-comp", {20}, "0.6"},
      {"crw-flash-comp", {12}, "0.3"},
      {"crw-aeb-value", {64}, "2.0"},
      {"crw-custom-2", {0x0203}, "3"},
      {"crw-custom-15", {0x0FFF}, "255"},
  };
  for (const bool big : {false, true}) {
    Bytes block(0x1600);
    Texts lines;
    for (const FieldDef& def : field_table_defs) {
      if (def.ifd_kind != IfdKind::canon_raw) {
        continue;
      }
      const std::string name = def.nickname;
      const auto value = std::ranges::find(values, name, &CrwValue::name);
      NoteField field{&def, {0, static_cast<std::uint16_t>(def.data_type), {}, {}}, ""};
      if (value != std::end(values)) {
        field.shown = value->shown;
        field.entry.numbers = value->numbers;
      } else if (name.starts_with("crw-custom-")) {
        field.shown = "0";
        field.entry.numbers = {0x0100};
      } else {
        field = notes::field_of(def, 0, big);
      }
      const std::uint32_t at = def.tag & 0xFFFF;
      put(block, at,
          field.entry.numbers.empty() ? bytes_of(field.shown)
                                      : layout::value_bytes(field.entry, big));
      lines.push_back(name + "=" + field.shown);
    }
    EXPECT_EQ(lines.size(), 48U);
    // Once behind everything that is read from the start of the file.
    expect_shown_only("photo.crw", crw_file(block, big, big ? 0x00100000 : 0x1A), lines);
  }
}

// ---- PostScript ----

TEST(Containers, EncapsulatedPostScript) {
  for (const bool big : {false, true}) {
    const Note note = note_of_layout(1, big);
    const Bytes resources =
        joined({resource(1028, "", dataset(2, 90, "Oslo")), resource(1034, "", {0, 1}),
                exif_resource(written_tiff(big, exif_of(note))),
                resource(1035, "", bytes_of("http://a"))});
    Texts lines = lines_of_exif(note);
    for (const char* const line : {"ip-copyrighted=Yes", "ip-exif=Exif", "ip-url=http://a"}) {
      lines.emplace_back(line);
    }
    expect_shown_only("plan.eps", eps_file(resources, big), lines);
  }
  expect_shown_only("bare.eps", bytes_of("%!PS-Adobe-3.0 EPSF-3.0\n%%EndComments\nshowpage\n"), {});
}

TEST(Containers, PostScriptWithATiffPreview) {
  for (const bool big : {false, true}) {
    const Note note = note_of_layout(30, big);
    const Bytes file = dos_eps_file(scattered_tiff(big, exif_of(note)));
    expect_shown_only("plan.eps", file, lines_of_exif(note, "tf-"));
  }
}

// ---- RMETA ----

TEST(Containers, CustomFieldsOfAnRmetaSegment) {
  for (const bool big : {false, true}) {
    const Bytes rmeta = app5_rmeta(big);
    const Texts lines = shown(jpeg({rmeta, picture()}), "photo.jpg");
    EXPECT_EQ(lines, (Texts{"rc-name1=Who", "rc-name2=Where", "rc-name3=Why", "rc-value1=Ann",
                            "rc-value2=Oslo", "rc-value3=?"}));
    Chain chain = camera();
    set(chain[0], text(0x010E, "Who: Ann, Where: Oslo []"));
    const Words arguments = {
        "-a", "description=\"[rc-name1]: [rc-value1], [rc-name2]: [rc-value2] [[rc-value4]]\""};
    check_edit({arguments, jpeg({source_exif(big, camera()), rmeta, picture()}),
                jpeg({written_exif(big, chain), rmeta, picture()})});
  }
}

}  // namespace
}  // namespace tagmend::test
