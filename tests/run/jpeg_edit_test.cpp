// Whole edits of JPEG files: what is asked for changes, everything else keeps every byte.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/image_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

using Change = std::function<void(Chain&)>;

Change in_ifd0(const std::vector<Entry>& entries) {
  return [entries](Chain& c) { set(c[0], entries); };
}
Change in_exif(const std::vector<Entry>& entries) {
  return [entries](Chain& c) { set(exif(c), entries); };
}
/// Behind the last entry of IFD0 that is below it, which stands before the pointers.
Change xp_title(const std::string& wide) {
  return [wide](Chain& c) {
    c[0].entries.insert(c[0].entries.begin() + 7, octets(0x9C9B, kByte, wide));
  };
}

struct FieldCase {
  Words arguments;
  Change change;
  std::string input = {};
  Words environment = {};
};

/// Runs the edits on a camera's file in both byte orders.
void check_fields(const std::vector<FieldCase>& cases, const Files& beside = {}) {
  for (const FieldCase& wanted : cases) {
    for (const bool big : {false, true}) {
      SCOPED_TRACE(big ? "MM" : "II");
      Chain changed = camera();
      wanted.change(changed);
      EditCase edit{wanted.arguments,
                    jpeg({app0_jfif(), source_exif(big, camera()), app2_icc(), picture()}),
                    jpeg({app0_jfif(), written_exif(big, changed), app2_icc(), picture()})};
      edit.settings.input = wanted.input;
      edit.settings.environment = wanted.environment;
      edit.beside = beside;
      check_edit(edit);
    }
  }
}

std::string user_comment(const std::string& code, const std::string& value) {
  return code + std::string(8 - code.size(), '\0') + value;
}

TEST(JpegEdit, FieldsAreAddedAndReplaced) {
  check_fields({
      {{"-a", "artist=J. Doe"}, in_ifd0({text(0x013B, "J. Doe")})},
      {{"-a", "make=abcd,artist=x,model=y z"},
       in_ifd0({text(0x010F, "abcd"), text(0x0110, "y z"), text(0x013B, "x")})},
      {{"-a", "orient=lower-right"}, in_ifd0({shorts(0x0112, {3})})},
      {{"-a", "page-num=1 2,x-res=72.5,y-res=300"},
       in_ifd0({shorts(0x0129, {1, 2}), rationals(0x011A, {725000, 10000}),
                rationals(0x011B, {300, 1})})},
      {{"-a", "main-width=-1"}, in_ifd0({longs(0x0100, {0xFFFFFFFF})})},
      {{"-a", "exp-time=1/125,shutter=2,aperture=2.8,exp-bias=-0.5"},
       in_exif({rationals(0x829A, {8000, 1000000}),
                {0x9201, kSignedRational, {0xFFF0BDC0, 1000000}, {}},
                rationals(0x9202, {29708, 10000}),
                {0x9204, kSignedRational, {0xFFFFEC78, 10000}, {}}})},
      // 0xA420 goes before the Interoperability pointer.
      {{"-a", "iso-speed=400,image-id=0123456789abcdef0123456789ABCDEF"},
       [](Chain& c) {
         set(exif(c), shorts(0x8827, {400}));
         exif(c).entries.insert(exif(c).entries.end() - 1,
                                text(0xA420, "0123456789abcdef0123456789ABCDEF"));
       }},
      {{"-a", "exif-ver=0210,flashpix-ver=30313030,oecf=00fF7a"},
       in_exif({octets(0x8828, kUndefined, Bytes{0x00, 0xFF, 0x7A}),
                octets(0x9000, kUndefined, "0210")})},
      {{"-a", "date-taken=2004-may-03 10:20,date-digi=25122004,comment=hello"},
       in_exif({text(0x9003, "2004:05:03 10:20:00"), text(0x9004, "2004:12:25 00:00:00"),
                octets(0x9286, kUndefined, user_comment("ASCII", "hello"))})},
      {{"-u", "-a", "comment=a\xE9"},
       in_exif({octets(0x9286, kUndefined, user_comment("UNICODE", std::string("a\0\xE9\0", 4)))})},
      {{"-a", "iop-width=4294967295"},
       [](Chain& c) { set(nested(exif(c), 0xA005), longs(0x1001, {4294967295U})); }},
      {{"-a",
        "gps-latitude=45 27.50,gps-lat-ref=south,gps-altitude=12.5,gps-alt-ref=sea-level,"
        "gps-longitude=\"8, 30, 15.25\""},
       [](Chain& c) {
         set(gps(c), {rationals(0x0004, {8, 1, 30, 1, 152500, 10000}), text(0x0001, "S"),
                      rationals(0x0002, {45, 1, 275000, 10000, 0, 1}),
                      octets(0x0005, kByte, std::string_view("\0", 1)),
                      rationals(0x0006, {125000, 10000})});
       }},
      {{"-a", "th-x-res=300,th-width=160"},
       [](Chain& c) {
         set(c[1], {longs(0x0100, {160}), rationals(0x011A, {300, 1})});
       }},
      // The -s fields come last and so win over the list.
      {{"-s", "-a", "width=9"}, in_exif({longs(0xA002, {1234}), longs(0xA003, {567})})},
  });
}

TEST(JpegEdit, FieldsAreRemoved) {
  check_fields({
      {{"-r", "model"}, [](Chain& c) { drop(c[0], 0x0110); }},
      {{"-r", "date-taken,comment,make,iop-ver"},
       [](Chain& c) {
         drop(c[0], 0x010F);
         drop(exif(c), 0x9003);
         drop(exif(c), 0x9286);
         drop(nested(exif(c), 0xA005), 0x0002);
       }},
      {{"-a", "artist=x,make=y", "-r", "artist"}, [](Chain& c) { set(c[0], text(0x010F, "y")); }},
      {{"-r", "make", "-a", "make=z"}, [](Chain& c) { set(c[0], text(0x010F, "z")); }},
      // A name with an asterisk is the first field of that beginning.
      {{"-r", "gps-*"}, [](Chain& c) { drop(gps(c), 0x0000); }},
      // IFDs that lose their last field go, with their pointers and images.
      {{"-r", "gps-ver,gps-lat-ref,gps-latitude"}, [](Chain& c) { drop(c[0], 0x8825); }},
      {{"-r", "iop-index,iop-ver"}, [](Chain& c) { drop(exif(c), 0xA005); }},
      {{"-r", "th-comp,th-x-res,th-if-offset,th-if-count"}, [](Chain& c) { c.pop_back(); }},
      {{"-r", "th-if-offset,th-if-count"},
       [](Chain& c) {
         drop(c[1], 0x0201);
         drop(c[1], 0x0202);
         c[1].thumbnail.clear();
       }},
  });
}

TEST(JpegEdit, ListsComeFromFilesAndStandardInput) {
  const Files lists = {{"list.txt", bytes_of("artist=A B \nmodel=\"x, y\"\n\ncopyright=me")},
                       {"names.txt", bytes_of("model\nmake, date-mod\n")},
                       {"empty.txt", bytes_of("\n")},
                       {"zero.txt", joined({bytes_of("artist=x\n"), {0}, bytes_of("=2\n")})},
                       {"long.txt", bytes_of("artist=" + std::string(5000, ' ') + "x")}};
  const Change added = in_ifd0({text(0x0110, "x, y"), text(0x013B, "A B"), text(0x8298, "me")});
  const Change artist_x = in_ifd0({text(0x013B, "x")});
  check_fields(
      {{{"-qr", "@names.txt"},
        [](Chain& c) {
          drop(c[0], 0x010F);
          drop(c[0], 0x0110);
          drop(c[0], 0x0132);
        }},
       {{"-r", "@-"}, [](Chain& c) { drop(c[0], 0x010F); }, "make"},
       {{"-a", "@empty.txt", "-a", "@list.txt"}, added},
       {{"-a", "@zero.txt"}, artist_x},
       {{"-a", "@long.txt"}, artist_x},
       {{"-a", "@-"}, added, "artist=A B\nmodel=\"x, y\"\ncopyright=me\n"},
       // Of the standard input, 2048 characters are read; what is left is for the next list.
       {{"-a", "@-", "-a", "@-"},
        in_ifd0({text(0x010F, "y"), text(0x013B, "x")}),
        "artist=x\n" + std::string(2048 - 9, ' ') + "make=y"},
       {{"-a", "@-"},
        in_ifd0({text(0x013B, std::string(2048 - 7 - 1900, 'x'))}),
        "artist=" + std::string(1900, ' ') + std::string(2000, 'x')}},
      lists);
}

TEST(JpegEdit, ValuesAreTemplatesAndTexts) {
  const auto description = [](const std::string& value) { return in_ifd0({text(0x010E, value)}); };
  check_fields({
      {{"-a", "description=[date-taken] [FILE-NAME-BACKUP] [orient]"},
       description("2004:05:01 10:20:30 photo-be.jpg Upper Left")},
      {{"-a", R"(description=a\nb\tc\\d\qe)"}, description("a\nb\tc\\d\\qe")},
      {{"-c", "'", "-a", R"(description='a, b = \'c\' "d"')"}, description("a, b = 'c' \"d\"")},
      {{"-a", "description=a  b  ,model=Model 1"}, description("a  b")},
      // A field edited in this run has no text yet.
      {{"-a", "make=New,description=[make]"}, in_ifd0({text(0x010F, "New"), text(0x010E, "")})},
      // An argument is cut after 2048 characters.
      {{"-a", "artist=" + std::string(1990, ' ') + std::string(100, 'x')},
       in_ifd0({text(0x013B, std::string(2048 - 7 - 1990, 'x'))})},
  });
}

TEST(JpegEdit, CharacterSets) {
  const auto artist = [](const std::string& value) { return in_ifd0({text(0x013B, value)}); };
  const std::string e_acute("\xE9\0", 2);
  const std::string snow("\xEA\x96", 2);  // U+96EA
  check_fields({
      {{"-p", "LOCAL=utf-8,EXIF=iso-8859-1", "-a", "artist=Jos\xC3\xA9"}, artist("Jos\xE9")},
      // Of two names for one set the first counts.
      {{"-q", "-p", "Local=\"utf-8\",exif=iso-8859-1,exif=utf-8", "-a", "artist=\xC3\xA9"},
       artist("\xE9")},
      {{"-a", "artist=Jos\xC3\xA9"},
       artist("Jos\xE9"),
       "",
       {"ORVALE_CS_LOCAL=utf-8", "ORVALE_CS_EXIF=ISO-8859-1"}},
      {{"-a", "xp-title=\xE9"}, xp_title(e_acute)},
      {{"-a", "xp-title=\xC3\xA9\xE9\x9B\xAA"},
       xp_title(e_acute + snow),
       "",
       {"ORVALE_CS_LOCAL=UTF-8"}},
      {{"-a", "xp-title=\xC3\xA9"},
       xp_title(e_acute),
       "",
       {"ORVALE_CS_LOCAL=default", "LC_ALL=C.UTF-8"}},
      {{"-a", "comment=a"},
       in_exif({octets(0x9286, kUndefined, user_comment("UNICODE", std::string("a\0", 2)))}),
       "",
       {"ORVALE_UNICODE_COMMENT=Yes"}},
  });
}

Chain minimal(std::vector<Entry> exif_fields = {}) {
  exif_fields.insert(exif_fields.begin(), octets(0x9000, kUndefined, "0220"));
  return {ifd_of({octets(0x0131, kAscii, "Orvale V2.7.0"), pointer(0x8769, exif_fields)})};
}

Chain with_artist(Chain chain) {
  set(chain[0], text(0x013B, "x"));
  return chain;
}

TEST(JpegEdit, FilesWithoutExifGetIt) {
  Chain with_gps = minimal();
  with_gps[0].entries.insert(
      with_gps[0].entries.begin() + 1,
      pointer(0x8825, {octets(0x0000, kByte, std::string_view("\2\0\0\0", 4)), text(0x0001, "N"),
                       rationals(0x0002, {1, 1, 2, 1, 3, 1})}));
  Chain with_thumbnail = minimal();
  with_thumbnail.push_back(ifd_of({text(0x010F, "x")}));
  const Bytes artist = written_exif(true, with_artist(minimal()));
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

  // A file that ends before its scan is written as far as it goes.
  const Bytes stump = joined({{0xFF, 0xD8}, app0_jfif(), quantisation_table()});
  check_edit({add, stump, joined({{0xFF, 0xD8}, app0_jfif(), artist, quantisation_table()})});
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
    const Bytes added = written_exif(big, camera_of("x"));
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

/// The edit of a file with nothing but this metadata, in both byte orders.
void check_chain(const Words& arguments, const Chain& source, const Chain& expected,
                 const std::string& err = "") {
  for (const bool big : {false, true}) {
    SCOPED_TRACE(big ? "MM" : "II");
    check_edit({arguments, jpeg({source_exif(big, source), picture()}),
                jpeg({written_exif(big, expected), picture()}), err});
  }
}

// What an IFD is hangs on its place: one without fields stays in front of those behind it.
TEST(JpegEdit, IfdsBehindAnEmptyOneKeepTheirPlace) {
  Chain three = camera();
  three.push_back(ifd_of({text(0x010E, "third")}));
  Chain second_empty = three;
  second_empty[1] = {};
  Chain array = camera();
  set(array[0], pointer(0x014A, {ifd_of({}), ifd_of({text(0x010E, "second")})}));
  check_chain({"-r", "th-comp,th-x-res,th-if-offset,th-if-count"}, three, second_empty);
  check_chain({"-a", "artist=x"}, second_empty, with_artist(second_empty));
  check_chain({"-a", "artist=x"}, array, with_artist(array));
  // A new IFD1 takes its place in front of those behind it.
  Chain second_made = three;
  second_made[1] = ifd_of({text(0x010F, "new")});
  Chain second_small = three;
  second_small[1] = ifd_of({text(0x010F, "old")});
  check_chain({"-a", "th-make=new"}, second_empty, second_made);
  check_chain({"-a", "th-make=new"}, second_small, second_made);
}

// A value that cannot be encoded leaves the one before it, also one of the same run.
TEST(JpegEdit, AFailedValueLeavesTheOneBefore) {
  const Chain source = {ifd_of({text(0x010F, "Acme"), shorts(0x0112, {8})})};
  const Chain edited = {ifd_of({text(0x010F, "Acme"), shorts(0x0112, {3}), text(0x013B, "x")})};
  check_chain(
      {"-a", "orient=1,orient=lower-right,orient=[make],artist=x"}, source, edited,
      "Can't add EXIF field Orientation (start point) (value '[make]'): Invalid field value "
      "specified\n");
}

TEST(JpegEdit, NewFieldsNeverSplitAnIfdFromWhatIsNestedBehindIt) {
  const Entry interop = pointer(0xA005, {text(0x0001, "R98")});
  const Entry exif_version = octets(0x9000, kUndefined, "0220");
  const Entry title = octets(0x9C9B, kByte, std::string_view("t\0", 2));
  const Entry seconds = rationals(0x829A, {2000000, 1000000});
  const Entry make = text(0x010F, "Acme");
  const Entry gps_version = octets(0x0000, kByte, std::string_view("\2\0\0\0", 4));
  const Entry north = text(0x0001, "N");
  const Entry nikon = text(0x010F, "NIKON"), model = text(0x0110, "E5000");
  const Entry srgb = shorts(0xA001, {1});
  const Entry note = maker_note(ifd_of(
      {text(0x0004, "FINE"), pointer(0x0011, std::vector<Ifd>{ifd_of({shorts(0x0103, {6})})})}));
  const Chain source = {ifd_of({make, pointer(0x8769, {exif_version, interop}), title})};
  struct {
    Words arguments;
    Chain source;
    Chain expected;
  } const cases[] = {
      {{"-a", "gps-lat-ref=n"},
       source,
       {ifd_of({make, pointer(0x8769, {exif_version, interop}),
                pointer(0x8825, {gps_version, north}), title})}},
      {{"-a", "comment-old=x"},
       source,
       {ifd_of({make, pointer(0x8769, {exif_version, interop}),
                octets(0x9286, kAscii, user_comment("ASCII", "x")), title})}},
      {{"-a", "exp-time=2"},
       {ifd_of({make, title})},
       {ifd_of({make, pointer(0x8769, {seconds, exif_version}), title})}},
      {{"-a", "exp-time=2"},
       {ifd_of({title})},
       {ifd_of({title, pointer(0x8769, {seconds, exif_version})})}},
      // An entry of the EXIF IFD above the Interoperability pointer stays behind that IFD.
      {{"-a", "sfr=00"},
       {ifd_of({make, pointer(0x8769, {exif_version, interop, shorts(0xA217, {2})})})},
       {ifd_of({make, pointer(0x8769, {exif_version, interop, octets(0xA20C, kUndefined, Bytes{0}),
                                       shorts(0xA217, {2})})})}},
      // A maker note and the IFD nested in it stay together, whatever comes around them.
      {{"-a", "date-taken=2004:05:01,comment=ab,main-width=8,th-width=9"},
       {ifd_of({nikon, model, pointer(0x8769, {exif_version, note, srgb, interop})}),
        ifd_of({make})},
       {ifd_of({longs(0x0100, {8}), nikon, model,
                pointer(0x8769,
                        {exif_version, text(0x9003, "2004:05:01 00:00:00"), note,
                         octets(0x9286, kUndefined, user_comment("ASCII", "ab")), srgb, interop})}),
        ifd_of({longs(0x0100, {9}), make})}},
      {{"-a", "exp-time=2"},
       {ifd_of({nikon, model, pointer(0x8769, {note, srgb})})},
       {ifd_of({nikon, model, pointer(0x8769, {seconds, note, srgb})})}},
      // An IFD that loses its own fields keeps the one nested in it, and takes it back.
      {{"-r", "exif-ver"},
       {ifd_of({make, pointer(0x8769, {exif_version, interop}), pointer(0x8825, {gps_version})})},
       {ifd_of({make, pointer(0x8769, {interop}), pointer(0x8825, {gps_version})})}},
      {{"-r", "exif-ver"},
       {ifd_of({make, pointer(0x8825, {gps_version}), pointer(0x8769, {exif_version, interop})})},
       {ifd_of({make, pointer(0x8825, {gps_version}), pointer(0x8769, {interop})})}},
      {{"-r", "exif-ver", "-a", "exp-time=2"},
       {ifd_of({make, pointer(0x8825, {gps_version}), pointer(0x8769, {exif_version, interop})})},
       {ifd_of({make, pointer(0x8825, {gps_version}),
                pointer(0x8769, {seconds, exif_version, interop})})}},
      // An IFD that begins with a pointer to one that begins with a pointer keeps both.
      {{"-a", "artist=x"},
       {ifd_of({make}), ifd_of({pointer(0x8769, {interop, shorts(0xA217, {2})}), title})},
       {ifd_of({make, text(0x013B, "x")}),
        ifd_of({pointer(0x8769, {interop, shorts(0xA217, {2})}), title})}},
      {{"-a", "artist=x"},
       {ifd_of({make, pointer(0x014A, {ifd_of({make}),
                                       ifd_of({pointer(0x8769, {interop, shorts(0xA217, {2})}),
                                               title})})})},
       {ifd_of(
           {make, text(0x013B, "x"),
            pointer(0x014A, {ifd_of({make}),
                             ifd_of({pointer(0x8769, {interop, shorts(0xA217, {2})}), title})})})}},
  };
  for (const auto& wanted : cases) {
    check_chain(wanted.arguments, wanted.source, wanted.expected);
  }
}

Chain many_fields(std::uint16_t count) {
  Ifd ifd;
  for (std::uint16_t i = 0; i < count; ++i) {
    ifd.entries.push_back(
        text(static_cast<std::uint16_t>(0xC000 + i), "value " + std::to_string(i)));
  }
  return {ifd};
}

TEST(JpegEdit, Limits) {
  // An IFD may hold far more entries than the usual hundred; the table of fields holds 200.
  check_chain({"-a", "artist=x"}, many_fields(150), with_artist(many_fields(150)));
  check_chain({"-a", "artist=x,make=y"}, many_fields(199), with_artist(many_fields(199)),
              "Warning: Field table full. Some edit actions may not have been performed.\n");

  // 38 bytes of structure and 6 of text beside the large field: at data end + 10 = 65,534 the
  // segment is full.
  const auto large = [](std::size_t size) {
    return Chain{ifd_of({octets(0xEA1C, kUndefined, noise(size, 7))})};
  };
  const std::size_t largest = 65524 - 38 - 6;
  Chain signed_chain = large(largest);
  set(signed_chain[0], text(0x013B, "12345"));
  check_chain({"-a", "artist=12345"}, large(largest), signed_chain);
  expect_untouched({{"photo.jpg", jpeg({source_exif(true, large(largest + 1)), picture()})}},
                   {"-a", "artist=12345", "photo.jpg"},
                   "Error: File photo.jpg: Generated EXIF data too long. File not changed.\n"
                   "Error: File photo.jpg: EXIF data structure too long\n");
}

TEST(JpegEdit, BackupsAreNumberedAndNeverOverwritten) {
  const Bytes before = jpeg({source_exif(true, camera()), picture()});
  const Bytes after = jpeg({written_exif(true, camera_of("x")), picture()});
  const Bytes other = bytes_of("somebody's file");
  struct {
    const char* name;
    const char* backup;
    const char* second;
  } const cases[] = {
      {"photo.jpg", "photo-be.jpg", "photo-be(1).jpg"},
      {"a.b.jpeg", "a.b-be.jpeg", "a.b-be(1).jpeg"},
      {"archive", "archive-be", "archive-be(1)"},
      {".hidden", "-be.hidden", "-be(1).hidden"},
      {"dot.", "dot-be.", "dot-be(1)."},
      {"in/a folder/photo.jpg", "in/a folder/photo-be.jpg", "in/a folder/photo-be(1).jpg"},
  };
  for (const auto& names : cases) {
    SCOPED_TRACE(names.name);
    const Sandbox sandbox({{names.name, before}});
    // An operand given twice is edited twice.
    expect_outcome(run(sandbox, {"-a", "artist=x", "--", names.name, names.name}), 0, "", "");
    expect_files(sandbox, {{names.name, after}, {names.backup, before}, {names.second, after}});
  }

  Files files = {{"photo.jpg", before}, {"photo-be.jpg", other}};
  for (int i = 1; i < 99; ++i) {
    files["photo-be(" + std::to_string(i) + ").jpg"] = other;
  }
  const Sandbox sandbox(files);
  files["photo-be(99).jpg"] = before;
  files["photo.jpg"] = after;
  expect_outcome(run(sandbox, {"-a", "artist=x", "photo.jpg"}), 0, "", "");
  expect_files(sandbox, files);
  expect_outcome(run(sandbox, {"-a", "artist=y", "photo.jpg"}), 0, "",
                 "Error: Can't rename 'photo.jpg' to 'photo-be.jpg': File exists\n"
                 "Error: File photo.jpg: File rename failed\n");
  expect_files(sandbox, files);
}

TEST(JpegEdit, SeveralFilesInOneRun) {
  const Bytes camera_file = jpeg({source_exif(false, camera()), picture()});
  const Bytes plain_file = jpeg({quantisation_table(), frame_header(20, 10)});
  const auto sized = [](Chain chain, std::uint32_t width, std::uint32_t height) {
    set(chain[0], text(0x013B, "x"));
    set(exif(chain), {longs(0xA002, {width}), longs(0xA003, {height})});
    return chain;
  };
  const Sandbox sandbox(
      {{"1.jpg", camera_file}, {"sub/2.jpg", plain_file}, {"3.jpg", camera_file}});
  // What was made for one file (the sizes of -s, the minimal fields) is not carried to the next.
  expect_outcome(
      run(sandbox, {"-b", "-s", "-a", "artist=x", "1.jpg", "sub/2.jpg", "missing", "3.jpg"}), 0, "",
      "Error: file missing: can't determine file type: No such file or directory\n");
  const Bytes edited = jpeg({written_exif(false, sized(camera(), 1234, 567)), picture()});
  const Bytes made = written_exif(true, sized(minimal(), 20, 10));
  expect_files(sandbox, {{"1.jpg", edited},
                         {"sub/2.jpg", jpeg({made, quantisation_table(), frame_header(20, 10)})},
                         {"3.jpg", edited}});
}

}  // namespace
}  // namespace tagmend::test
