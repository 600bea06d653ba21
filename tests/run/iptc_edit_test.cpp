// Whole edits of IPTC datasets (IPTC IIM 4) in the Photoshop block of JPEG files and in TIFF files:
// what is asked for changes, every other dataset and resource keeps its bytes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/container_files.h"
#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

constexpr const char* new_block_name = "Dataset 2 Record Version";

Bytes version(std::uint8_t record) { return dataset(record, 0, Bytes{0, 2}); }

/// Resource 1028 alone, with these datasets.
Bytes iptc(std::initializer_list<Bytes> datasets, const char* name = "") {
  return app13_photoshop({resource(1028, name, joined(datasets))});
}

/// The same as an edit makes it anew, behind the version of record 2.
Bytes new_iptc(std::initializer_list<Bytes> datasets) {
  return iptc({version(2), joined(datasets)}, new_block_name);
}

const Bytes old_caption = dataset(2, 120, "Old caption");
const Bytes old_title = dataset(2, 5, "Title");
const Bytes keyword_one = dataset(2, 25, "one");
const Bytes keyword_two = dataset(2, 25, "two");

struct IptcCase {
  Words arguments;
  Bytes source;    ///< the APP13 segment, or nothing
  Bytes expected;  ///< what stands for it afterwards
  std::string err = {};
  Words environment = {};
};

void check(const std::vector<IptcCase>& cases) {
  for (const IptcCase& wanted : cases) {
    check_edit({wanted.arguments,
                jpeg({app0_jfif(), app2_icc(), wanted.source, picture()}),
                jpeg({app0_jfif(), app2_icc(), wanted.expected, picture()}),
                wanted.err,
                {.environment = wanted.environment}});
  }
}

/// An edit with -b that keeps the original all the same.
void check_kept(const std::string& item, const Bytes& source, const Bytes& expected,
                const std::string& err = "") {
  check_edit({.arguments = {"-b", "-a", item},
              .source = source,
              .expected = expected,
              .err = err,
              .kept = true});
}

TEST(IptcEdit, DatasetsAreAddedReplacedAndRemoved) {
  const Bytes source = iptc({version(2), old_title, keyword_one, keyword_two, old_caption});
  check({
      {{"-a", "ip-caption=Hello"}, {}, new_iptc({dataset(2, 120, "Hello")})},
      {{"-a", "ip-caption=[ip-caption] ([ip-keyword])"},
       source,
       iptc({version(2), old_title, keyword_one, keyword_two,
             dataset(2, 120, "Old caption (one; two)")})},
      // A value that proves wrong leaves the one that is there.
      {{"-a", "ip-object=New,ip-date=[ip-keyword],ip-version=[ip-keyword]"},
       source,
       iptc({version(2), dataset(2, 5, "New"), keyword_one, keyword_two, old_caption}),
       "Can't add IPTC field ip-date: Date format invalid\n"
       "Can't add IPTC field ip-version: Invalid number specified\n"},
      {{"-a", "ip-caption=Hello,ip-caption=Last"},
       source,
       iptc({version(2), old_title, keyword_one, keyword_two, dataset(2, 120, "Last")})},
      {{"-a", "ip-keyword=three; four  ;five"},
       source,
       iptc({version(2), old_title, keyword_one, keyword_two, dataset(2, 25, "three"),
             dataset(2, 25, "four"), dataset(2, 25, "five"), old_caption})},
      {{"-j", "054", "-a", "ip-keyword=\"3,4;5\""},
       source,
       iptc({version(2), old_title, keyword_one, keyword_two, dataset(2, 25, "3"),
             dataset(2, 25, "4;5"), old_caption})},
      {{"-c", "'", "-a", "ip-keyword='\\'a;b\\';c'"},
       source,
       iptc({version(2), old_title, keyword_one, keyword_two, dataset(2, 25, "a;b"),
             dataset(2, 25, "c"), old_caption})},
      {{"-r", "ip-keyword", "-a", "ip-keyword=new"},
       source,
       iptc({version(2), old_title, dataset(2, 25, "new"), old_caption})},
      {{"-r", "ip-obj*"},
       source,
       source,
       "Warning: Could not delete field 'ip-obj-type-ref', field not found\n"},
      // The last dataset takes its resource with it.
      {{"-r", "ip-object,ip-keyword,ip-caption,ip-version"}, source, app13_photoshop({})},
      // A removal from nothing is nothing.
      {{"-r", "ip-caption"}, {}, {}},
      {{"-q", "-e", "i", "-r", "make"}, source, source},
  });
}

TEST(IptcEdit, ValuesByType) {
  const std::string long_name(40, 'x');
  check({
      {{"-a",
        "ip-date=2004-May-01,ip-time=10:20:30,ip-digi-date=20040502,ip-digi-time=10:20 +0130"},
       {},
       new_iptc({dataset(2, 55, "20040501"), dataset(2, 60, "102030+0000"),
                 dataset(2, 62, "20040502"), dataset(2, 63, "102000+0130")})},
      {{"-a", "ip-image-orient=portrait,ip-action-advised=Object Replace,ip-audio-type=am"},
       {},
       new_iptc({dataset(2, 42, "02"), dataset(2, 131, "P"), dataset(2, 150, "1A")})},
      {{"-a", "ip-city=" + long_name},
       {},
       new_iptc({dataset(2, 90, long_name.substr(0, 32))}),
       "Warning: Field ip-city longer than 32 bytes, truncating.\n"},
      {{"-qa", "ip-keyword=[file-base];[make],ip-caption=[file-name] \\n."},
       {},
       new_iptc({dataset(2, 25, "photo"), dataset(2, 120, "photo.jpg \n.")})},
      // Every record in use gets its version, except 7, which has none.
      {{"-a", "ip3-width=640,ip7-max-subfile=70000,ip1-env-pri=5,ip3-supp-type=logo"},
       {},
       iptc({version(1), dataset(1, 60, "5"), version(3), dataset(3, 20, Bytes{2, 128}),
             dataset(3, 55, Bytes{2}), dataset(7, 20, Bytes{0, 1, 17, 112})},
            "Dataset 1 Record Version")},
      // A version of the user's own stands, unless it is removed again.
      {{"-a", "ip1-version=4,ip1-env-pri=5,ip3-version=3", "-r", "ip3-version", "-a",
        "ip3-picture-num=7"},
       {},
       iptc({dataset(1, 0, Bytes{0, 4}), dataset(1, 60, "5"), version(3), dataset(3, 10, "7")},
            "Dataset 1 Record Version")},
      {{"-a", "ip-copyrighted=yes,ip-url=http://example.org/a"},
       {},
       app13_photoshop({resource(1034, "Mark as Copyrighted", {1, 0}),
                        resource(1035, "Image URL", bytes_of("http://example.org/a"))})},
  });
}

TEST(IptcEdit, WhatIsNotEditedKeepsItsBytes) {
  const Bytes odd = resource(1005, "", noise(15, 1));
  const Bytes named = resource(1006, "Alpha", noise(6, 2));
  const Bytes even_name = resource(1026, "Name", noise(9, 3));
  const Bytes flag = resource(1034, "", {1, 0, 0, 0});
  const Bytes url = resource(1035, "Its name", bytes_of("http://example.org"));
  const Bytes digest = resource(1061, "", noise(16, 4));
  const Bytes unknown = dataset(2, 99, noise(21, 5));
  const Bytes character_set = dataset(1, 90, Bytes{0x1B, 0x25, 0x47});
  const Bytes content =
      joined({version(1), character_set, version(2), old_title, old_caption, unknown, version(3),
              dataset(3, 20, Bytes{0, 9}), dataset(7, 10, Bytes{1}), dataset(8, 10, "")});
  const Bytes changed = joined({version(1), character_set, version(2), dataset(2, 5, "New"),
                                unknown, old_caption, version(3), dataset(3, 20, Bytes{0, 9}),
                                dataset(7, 10, Bytes{1}), dataset(8, 10, "")});
  check({
      {{"-a", "ip-object=New"},
       app13_photoshop({odd, named, even_name, resource(1028, "Mine", content), flag, url, digest}),
       app13_photoshop(
           {odd, named, even_name, resource(1028, "Mine", changed), flag, url, digest})},
      // Resources are put in ascending order.
      {{"-a", "ip-object=New"},
       app13_photoshop({digest, url, resource(1028, "", content), named, odd}),
       app13_photoshop({odd, named, resource(1028, "", changed), url, digest})},
      {{"-a", "ip-url=http://example.net,ip-copyrighted=no"},
       app13_photoshop({odd, flag, url}),
       app13_photoshop({odd, resource(1034, "Mark as Copyrighted", {0, 0}),
                        resource(1035, "Image URL", bytes_of("http://example.net"))})},
      {{"-r", "ip-url,ip-copyrighted"}, app13_photoshop({odd, flag, url}), app13_photoshop({odd})},
      // A flag of the user's has two bytes, one that is carried over four.
      {{"-r", "ip-url"},
       app13_photoshop({url, resource(1034, "", {1, 0})}),
       app13_photoshop({flag})},
      // A dataset of a record without a version brings it.
      {{"-r", "ip-object"}, iptc({old_title, old_caption}), new_iptc({old_caption})},
  });
}

TEST(IptcEdit, SegmentsOfAFile) {
  const Bytes foreign = segment(0xED, bytes_of("Adobe_CM and nothing else in it"));
  const Bytes first = iptc({version(2), old_title});
  const Bytes last = iptc({version(2), old_caption});
  const Bytes title_and_caption = iptc({version(2), dataset(2, 5, "New"), old_caption});
  const Bytes alone = new_iptc({dataset(2, 5, "New")});
  const Words add = {"-a", "ip-object=New"};
  const EditCase cases[] = {
      // The content of the last Photoshop segment takes the place of the first.
      {add, jpeg({app0_jfif(), first, app1_xmp(), last, picture()}),
       jpeg({app0_jfif(), title_and_caption, app1_xmp(), picture()})},
      {add, jpeg({foreign, last, foreign, picture()}),
       jpeg({foreign, title_and_caption, foreign, picture()})},
      {add, jpeg({foreign, picture()}), jpeg({foreign, alone, picture()})},
      {{"-r", "ip-object"}, jpeg({foreign, picture()}), jpeg({foreign, picture()})},
      // Without a segment, before the first that is not APP0 to APP13.
      {add,
       jpeg({app0_jfif(), app2_flashpix(1), segment(0xEC, noise(8, 1)), app14_adobe(), picture()}),
       jpeg({app0_jfif(), app2_flashpix(1), segment(0xEC, noise(8, 1)), alone, app14_adobe(),
             picture()})},
      {add, jpeg({comment("x"), last, picture()}),
       jpeg({title_and_caption, comment("x"), picture()})},
      {{"-e", "i"},
       jpeg({first, app2_icc(), foreign, last, picture()}),
       jpeg({app2_icc(), picture()})},
  };
  check_edits(cases);

  // With -b, a second Photoshop segment keeps the original; a segment of another kind does not.
  check_kept("ip-object=New", cases[0].source, cases[0].expected);
  check_edit({{"-b", "-a", "ip-object=New"}, cases[1].source, cases[1].expected});
}

TEST(IptcEdit, TogetherWithExif) {
  const Bytes old_block = iptc({version(2), old_title, keyword_one, keyword_two, old_caption});
  const Bytes new_block =
      iptc({version(2), old_title, keyword_one, keyword_two, dataset(2, 120, "New")});
  const Bytes shorter = iptc({version(2), old_title, old_caption});
  for (const bool big : {false, true}) {
    Chain no_model = camera();
    drop(no_model[0], 0x0110);
    Chain described = camera();
    set(described[0], text(0x010E, "Title: Old caption (one; two)[]"));
    const Bytes exif_segment = source_exif(big, camera());
    const EditCase cases[] = {
        {{"-a", "artist=x,ip-caption=New"},
         jpeg({exif_segment, app2_icc(), old_block, picture()}),
         jpeg({written_exif(big, with_artist(camera(), "x")), app2_icc(), new_block, picture()})},
        // The Photoshop block becomes shorter before the thumbnail is copied.
        {{"-r", "model,ip-keyword"},
         jpeg({app0_jfif(), old_block, exif_segment, picture()}),
         jpeg({app0_jfif(), shorter, written_exif(big, no_model), picture()})},
        {{"-a", "description=[ip-object]: [ip-caption] ([ip-keyword])[[ip-city]]"},
         jpeg({exif_segment, old_block, picture()}),
         jpeg({written_exif(big, described), old_block, picture()})},
    };
    check_edits(cases);
  }
}

TEST(IptcEdit, CharacterSets) {
  const auto caption = [](const std::string& value) { return new_iptc({dataset(2, 120, value)}); };
  check({
      {{"-p", "local=utf-8,iptc=iso-8859-1", "-a", "ip-caption=Jos\xC3\xA9"},
       {},
       caption("Jos\xE9")},
      {{"-a", "ip-caption=\xE9\x9B\xAA"},
       {},
       caption("\xB3\xB7"),
       "",
       {"ORVALE_CS_LOCAL=utf-8", "ORVALE_CS_IPTC=big5"}},
  });
  // Read in one set and stored in another; a dataset not edited keeps its bytes.
  Chain described = camera();
  set(described[0], text(0x010E, "Jos\xC3\xA9"));
  check_edit(
      {{"-p", "local=utf-8,iptc=iso-8859-1", "-a", "description=[ip-caption],ip-city=a"},
       jpeg({source_exif(true, camera()), iptc({version(2), dataset(2, 120, "Jos\xE9")}),
             picture()}),
       jpeg({written_exif(true, described),
             iptc({version(2), dataset(2, 90, "a"), dataset(2, 120, "Jos\xE9")}), picture()})});
}

TEST(IptcEdit, TiffFiles) {
  Ifd page = ifd_of({shorts(0x0100, {16}), image_locator(0x0111, kLong),
                     image_locator(0x0117, kLong), rationals(0x011A, {72, 1})});
  page.images = {noise(65, 1), noise(64, 2)};
  for (const bool big : {false, true}) {
    const auto with = [&page, big](const Bytes& content, const Bytes& area) {
      Chain chain = {page, page};
      chain[0].entries.push_back(iptc_field(content, big));
      chain[0].entries.push_back(octets(0x8649, kByte, area));
      return chain;
    };
    const Chain plain = {page, page};
    const Bytes old_content = joined({version(2), keyword_one, old_caption});
    const Bytes new_content = joined({version(2), keyword_one, dataset(2, 120, "New caption!")});
    const Bytes first_content = joined({version(2), dataset(2, 120, "New caption!")});
    const Bytes digest = resource(1061, "", noise(16, 4));
    const Bytes shape = resource(1005, "Name", noise(7, 5));
    // Of EPS files alone this would be read.
    const Bytes exif_data = exif_resource(written_tiff(big, {ifd_of({text(0x010F, "Maker")})}));
    const auto area = [&](const Bytes& content) {
      return joined({shape, resource(1028, "", content), exif_data, digest});
    };
    struct {
      Words arguments;
      Chain source;
      Chain expected;
    } const cases[] = {
        {{"-a", "ip-caption=New caption!"},
         plain,
         with(first_content, resource(1028, new_block_name, first_content))},
        {{"-a", "ip-caption=New caption!"},
         with(old_content, area(old_content)),
         with(new_content, area(new_content))},
        {{"-r", "ip-keyword,ip-caption,ip-version"},
         with(old_content, resource(1028, "", old_content)),
         plain},
        {{"-a", "x-res=72"},
         with(old_content, area(old_content)),
         with(old_content, area(old_content))},
    };
    for (const auto& wanted : cases) {
      check_edit({wanted.arguments, scattered_tiff(big, wanted.source),
                  written_tiff(big, wanted.expected)},
                 "photo.tif");
    }
  }
}

TEST(IptcEdit, DamagedBlocks) {
  const Bytes block = resource(1028, "", joined({version(2), old_caption}));
  const auto photoshop = [](const Bytes& resources) { return app13_photoshop({resources}); };
  const Bytes edited = photoshop(resource(1028, "", joined({version(2), dataset(2, 120, "New")})));
  Bytes overlong = joined({version(2), dataset(2, 25, "word")});
  overlong[overlong.size() - 5] = 200;  // the length of the last value
  const Bytes cut_word = joined({version(2), dataset(2, 25, "word"), dataset(2, 120, "New")});
  struct {
    Bytes source;
    Bytes expected;
    std::string err;
  } const partly[] = {
      {photoshop(joined({block, bytes_of("8BIX"), noise(20, 1)})), edited, ""},
      {photoshop(resource(1028, "", joined({version(2), {0x42, 0x42}, old_caption}))), edited,
       "Warning: IPTC Caption field mark missing (4242)\n"},
      {photoshop(resource(1028, "", overlong)), photoshop(resource(1028, "", cut_word)),
       "Warning: IPTC Field ip-keyword long than remaining data length, truncating\n"},
      {photoshop(
           resource(1028, "", joined({version(2), dataset(2, 90, "one"), dataset(2, 90, "two")}))),
       photoshop(
           resource(1028, "", joined({version(2), dataset(2, 90, "one"), dataset(2, 120, "New")}))),
       ""},
  };
  for (const auto& wanted : partly) {
    check_kept("ip-caption=New", jpeg({wanted.source, picture()}),
               jpeg({wanted.expected, picture()}), wanted.err);
  }

  const Bytes name_past_the_end =
      photoshop(joined({block, bytes_of("8BIM"), big16(1005), {200}, noise(30, 1)}));
  expect_untouched({{"photo.jpg", jpeg({name_past_the_end, picture()})}},
                   {"-a", "ip-caption=New", "photo.jpg"},
                   "Error: Attempt to read past end of buffer in get_bytes()\n", 255);
}

TEST(IptcEdit, Limits) {
  // Marker, length and mark take 18 bytes, the block 12 and its data, the datasets' block 36 and
  // 12 of the version and the caption's head: with 56 characters the segment has an even 65534
  // bytes, and one more would be padded past 65535.
  const Bytes block = resource(1005, "", noise(65400, 1));
  const std::string caption(56, 'x');
  const Bytes added =
      resource(1028, new_block_name, joined({version(2), dataset(2, 120, caption)}));
  check({{{"-a", "ip-caption=" + caption},
          app13_photoshop({block}),
          app13_photoshop({block, added})}});
  expect_untouched({{"photo.jpg", jpeg({app13_photoshop({block}), picture()})}},
                   {"-a", "ip-caption=x" + caption, "photo.jpg"},
                   "Error: File photo.jpg: EXIF data structure too long\n");

  // An edit list that is full has no place for the version.
  std::string cities;
  for (int i = 0; i < 199; ++i) {
    cities += "ip-city,";
  }
  const Bytes keywords = joined(std::vector(199, keyword_one));
  const Bytes small_caption = dataset(2, 120, "x");
  check({{{"-q", "-a", "ip-caption=x", "-r", cities},
          iptc({old_title}),
          iptc({old_title, small_caption}),
          "Warning: Can't add IPTC Dataset 2 version field - edit table full\n"},
         // The store holds 200: neither the city nor the version find room.
         {{"-a", "ip-caption=x,ip-city=y"},
          iptc({keywords}),
          iptc({keywords, small_caption}),
          "Warning: Field table full. Some edit actions may not have been performed.\n"}});

  // Of 300 resources the store holds 200: the block stays as it is.
  std::vector<Bytes> resources;
  for (std::uint16_t number = 2000; number < 2300; ++number) {
    resources.push_back(resource(number, "", {1, 2}));
  }
  const Bytes source = jpeg({app13_photoshop({joined(resources)}), picture()});
  check_kept("ip-caption=New", source, source,
             "Warning: Field table full. Some edit actions may not have been performed.\n");
}

}  // namespace
}  // namespace tagmend::test
