// Whole edits that change what IFDs hold: each keeps its place in the chain, its fields and what is
// nested in it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

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
TEST(IfdEdit, IfdsBehindAnEmptyOneKeepTheirPlace) {
  Chain three = camera();
  three.push_back(ifd_of({text(0x010E, "third")}));
  Chain second_empty = three;
  second_empty[1] = {};
  Chain array = camera();
  set(array[0], pointer(0x014A, {ifd_of({}), ifd_of({text(0x010E, "second")})}));
  check_chain({"-r", "th-comp,th-x-res,th-if-offset,th-if-count"}, three, second_empty);
  check_chain({"-a", "artist=x"}, second_empty, with_artist(second_empty, "x"));
  check_chain({"-a", "artist=x"}, array, with_artist(array, "x"));
  // A new IFD1 takes its place in front of those behind it.
  Chain second_made = three;
  second_made[1] = ifd_of({text(0x010F, "new")});
  Chain second_small = three;
  second_small[1] = ifd_of({text(0x010F, "old")});
  check_chain({"-a", "th-make=new"}, second_empty, second_made);
  check_chain({"-a", "th-make=new"}, second_small, second_made);
}

// Pointers that end an IFD, what they lead to, and the fields around them.
const Entry interop = pointer(0xA005, {text(0x0001, "R98")});
const Entry make = text(0x010F, "Acme");
const Entry title = octets(0x9C9B, kByte, std::string_view("t\0", 2));
const Entry seconds = rationals(0x829A, {2000000, 1000000});
const Entry file_source = shorts(0xA217, {2});
const Entry srgb = shorts(0xA001, {1});

struct ChainCase {
  Words arguments;
  Chain source;
  Chain expected;
};

void check_chains(const std::vector<ChainCase>& cases) {
  for (const ChainCase& wanted : cases) {
    check_chain(wanted.arguments, wanted.source, wanted.expected);
  }
}

TEST(IfdEdit, NewFieldsNeverSplitAnIfdFromWhatIsNestedBehindIt) {
  const Entry exif_ifd = pointer(0x8769, {exif_version(), interop});
  const Chain source = {ifd_of({make, exif_ifd, title})};
  check_chains({
      {{"-a", "gps-lat-ref=n"},
       source,
       {ifd_of({make, exif_ifd, pointer(0x8825, {gps_version(), text(0x0001, "N")}), title})}},
      {{"-a", "comment-old=x"},
       source,
       {ifd_of({make, exif_ifd, octets(0x9286, kAscii, user_comment("ASCII", "x")), title})}},
      {{"-a", "exp-time=2"},
       {ifd_of({make, title})},
       {ifd_of({make, pointer(0x8769, {seconds, exif_version()}), title})}},
      {{"-a", "exp-time=2"},
       {ifd_of({title})},
       {ifd_of({title, pointer(0x8769, {seconds, exif_version()})})}},
      // An entry of the EXIF IFD above the Interoperability pointer stays behind that IFD.
      {{"-a", "sfr=00"},
       {ifd_of({make, pointer(0x8769, {exif_version(), interop, file_source})})},
       {ifd_of({make, pointer(0x8769, {exif_version(), interop,
                                       octets(0xA20C, kUndefined, Bytes{0}), file_source})})}},
  });
}

TEST(IfdEdit, AMakerNoteAndTheIfdNestedInItStayTogether) {
  const Entry nikon = text(0x010F, "NIKON"), model = text(0x0110, "E5000");
  const Entry note = maker_note(ifd_of(
      {text(0x0004, "FINE"), pointer(0x0011, std::vector<Ifd>{ifd_of({shorts(0x0103, {6})})})}));
  check_chains({
      {{"-a", "date-taken=2004:05:01,comment=ab,main-width=8,th-width=9"},
       {ifd_of({nikon, model, pointer(0x8769, {exif_version(), note, srgb, interop})}),
        ifd_of({make})},
       {ifd_of({longs(0x0100, {8}), nikon, model,
                pointer(0x8769,
                        {exif_version(), text(0x9003, "2004:05:01 00:00:00"), note,
                         octets(0x9286, kUndefined, user_comment("ASCII", "ab")), srgb, interop})}),
        ifd_of({longs(0x0100, {9}), make})}},
      {{"-a", "exp-time=2"},
       {ifd_of({nikon, model, pointer(0x8769, {note, srgb})})},
       {ifd_of({nikon, model, pointer(0x8769, {seconds, note, srgb})})}},
  });
}

TEST(IfdEdit, AnIfdThatLosesItsOwnFieldsKeepsTheOneNestedInIt) {
  const Entry exif_ifd = pointer(0x8769, {exif_version(), interop});
  const Entry gps_ifd = pointer(0x8825, {gps_version()});
  check_chains({
      {{"-r", "exif-ver"},
       {ifd_of({make, exif_ifd, gps_ifd})},
       {ifd_of({make, pointer(0x8769, {interop}), gps_ifd})}},
      {{"-r", "exif-ver"},
       {ifd_of({make, gps_ifd, exif_ifd})},
       {ifd_of({make, gps_ifd, pointer(0x8769, {interop})})}},
      {{"-r", "exif-ver", "-a", "exp-time=2"},
       {ifd_of({make, gps_ifd, exif_ifd})},
       {ifd_of({make, gps_ifd, pointer(0x8769, {seconds, exif_version(), interop})})}},
  });
}

TEST(IfdEdit, AnIfdThatBeginsWithPointersOneInTheOtherKeepsBoth) {
  const Entry pointers = pointer(0x8769, {interop, file_source});
  const Entry artist = text(0x013B, "x");
  const Entry sub_images = pointer(0x014A, {ifd_of({make}), ifd_of({pointers, title})});
  check_chains({
      {{"-a", "artist=x"},
       {ifd_of({make}), ifd_of({pointers, title})},
       {ifd_of({make, artist}), ifd_of({pointers, title})}},
      {{"-a", "artist=x"}, {ifd_of({make, sub_images})}, {ifd_of({make, artist, sub_images})}},
  });
}

Chain many_fields(std::uint16_t count) {
  Ifd ifd;
  for (std::uint16_t i = 0; i < count; ++i) {
    ifd.entries.push_back(
        text(static_cast<std::uint16_t>(0xC000 + i), "value " + std::to_string(i)));
  }
  return {ifd};
}

// An IFD may hold far more entries than the usual hundred; the table of fields holds 200.
TEST(IfdEdit, TheFieldTableHoldsTwoHundred) {
  check_chain({"-a", "artist=x"}, many_fields(150), with_artist(many_fields(150), "x"));
  check_chain({"-a", "artist=x,make=y"}, many_fields(199), with_artist(many_fields(199), "x"),
              "Warning: Field table full. Some edit actions may not have been performed.\n");
}

// 38 bytes of structure and 6 of text beside the large field: at data end + 10 = 65,534 the segment
// is full.
TEST(IfdEdit, ASegmentThatWouldBeTooLongIsNotWritten) {
  const auto large = [](std::size_t size) {
    return Chain{ifd_of({octets(0xEA1C, kUndefined, noise(size, 7))})};
  };
  const std::size_t largest = 65524 - 38 - 6;
  check_chain({"-a", "artist=12345"}, large(largest), with_artist(large(largest), "12345"));
  expect_untouched({{"photo.jpg", jpeg({source_exif(true, large(largest + 1)), picture()})}},
                   {"-a", "artist=12345", "photo.jpg"},
                   "Error: File photo.jpg: Generated EXIF data too long. File not changed.\n"
                   "Error: File photo.jpg: EXIF data structure too long\n");
}

}  // namespace
}  // namespace tagmend::test
