// Whole edits of EXIF fields: their values, the lists that name them, and character sets.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
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
  std::string err = {};
};

/// Runs the edits on a camera's file in both byte orders.
void check_fields(const std::vector<FieldCase>& cases, const Files& beside = {}) {
  for (const FieldCase& wanted : cases) {
    for (const bool big : {false, true}) {
      SCOPED_TRACE(big ? "MM" : "II");
      Chain changed = camera();
      wanted.change(changed);
      check_edit({wanted.arguments,
                  source_photo(big, camera()),
                  written_photo(big, changed),
                  wanted.err,
                  {.input = wanted.input, .environment = wanted.environment},
                  beside});
    }
  }
}

TEST(ExifEdit, FieldsAreAddedAndReplaced) {
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
                      octets(0x0005, kByte, Bytes{0}), rationals(0x0006, {125000, 10000})});
       }},
      {{"-a", "th-x-res=300,th-width=160"},
       [](Chain& c) {
         set(c[1], {longs(0x0100, {160}), rationals(0x011A, {300, 1})});
       }},
      // A value that cannot be encoded leaves the one before it, also one of the same run.
      {{"-a", "orient=6,orient=lower-right,orient=[make],artist=x"},
       in_ifd0({shorts(0x0112, {3}), text(0x013B, "x")}),
       "",
       {},
       "Can't add EXIF field Orientation (start point) (value '[make]'): Invalid field value "
       "specified\n"},
      // The -s fields come last and so win over the list.
      {{"-s", "-a", "width=9"}, in_exif({longs(0xA002, {1234}), longs(0xA003, {567})})},
  });
}

TEST(ExifEdit, FieldsAreRemoved) {
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

TEST(ExifEdit, ListsComeFromFilesAndStandardInput) {
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

TEST(ExifEdit, ValuesAreTemplatesAndTexts) {
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

TEST(ExifEdit, CharacterSets) {
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

}  // namespace
}  // namespace tagmend::test
