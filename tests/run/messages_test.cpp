// What the program says: usage and version texts, every message of the command line and of the
// edit lists, exit statuses, and which stream carries what.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/jpeg_builder.h"
#include "common/run_tagmend.h"

namespace tagmend::test {
namespace {

constexpr const char* usage_text =
    "\n"
    "NAME\n"
    "\n"
    "   tagmend - add or remove EXIF fields from one or more image files\n"
    "\n"
    "SYNOPSIS\n"
    "\n"
    "   tagmend [-biqsu] [-c x] [-j x] \\\n"
    "             [- field-value-list] [-r field-list] file...\n"
    "             file...\n"
    "   tagmend [-i] -e [e|f|i|a] file...\n"
    "   tagmend [-h|v]\n"
    "\n"
    "   -a [field-name=value,field-name=value,... | @file-name | @-] \n"
    "            Add the specified EXIF fields.\n"
    "   -b       Do not save a backup copy of the original file(s).\n"
    "   -c x     Specify alternative quote character\n"
    "   -e [e|f|i|a]\n"
    "            Erase meta data:\n"
    "              e = erase EXIF data\n"
    "              f = erase Flashpix data\n"
    "              i = erase IPTC data\n"
    "              a = erase EXIF, Flashpix, and IPTC data\n"
    "   -h       Display usage information.\n"
    "   -i       Include subdirectories.\n"
    "   -j x     Specify alternative separator character to be used for \n"
    "            repeating fields.\n"
    "   -q       Quiet mode. Do not display warning messages\n"
    "   -r [field-name,field-name,... | @file-name | @-] \n"
    "            Remove the specifed EXIF fields\n"
    "   -s       Set EXIF width/height fields to match actual image\n"
    "   -u       Store EXIF 'comment' field as UNICODE (default is ASCII)\n"
    "   -v       Display program version information\n"
    "\n";

constexpr const char* version_text =
    "\ntagmend V2.7.0 - 24-November-2005\n\n"
    "For usage information enter 'tagmend -h'\n\n"
    "Build Ref: M1.2 $B1.2 $U1.2 $L1.2 $\n\n";

const std::string no_action = "Error: No valid edit action specified\n";
const std::string thumbnail_ignored =
    "Warning: -t option ignored. Thumbnail operations not supported.\n";
const std::string erase_ignored =
    "Warning: Can't specify -e option with -a, -r, -t, or -s options.\n"
    "         -e option ignored.\n";

std::string repeated(const std::string& piece, int times) {
  return times == 0 ? "" : piece + repeated(piece, times - 1);
}

Bytes plain_jpeg() { return jpeg({app0_jfif(), picture()}); }

struct Case {
  Words arguments;
  int status = 0;
  std::string err = {};
  std::string out = {};
};

/// Runs every case in a directory with one photograph, which must stay as it is.
void check_without_edit(const std::vector<Case>& cases) {
  for (const Case& wanted : cases) {
    SCOPED_TRACE(::testing::PrintToString(wanted.arguments));
    const Sandbox sandbox({{"photo.jpg", plain_jpeg()}});
    expect_outcome(run(sandbox, wanted.arguments), wanted.status, wanted.out, wanted.err);
    expect_files(sandbox, {{"photo.jpg", plain_jpeg()}});
  }
}

TEST(Messages, CommandLine) {
  check_without_edit({
      {{}, 0, "", version_text},
      {{"-v"}, 0, "", version_text},
      {{"-h"}, 0, "", usage_text},
      {{"-hv"}, 0, "", usage_text},
      {{"-v", "-a", "artist=x", "photo.jpg"}, 0, "", version_text},
      {{"-h", "-t", "1"}, 0, thumbnail_ignored, usage_text},
      {{"-x"}, 1, "tagmend: invalid option -- 'x'\n"},
      {{"-a"}, 1, "tagmend: option requires an argument -- 'a'\n"},
      {{"-x", "-c", "A", "-s", "photo.jpg"}, 1, "tagmend: invalid option -- 'x'\n"},
      {{"-xh"}, 1, "tagmend: invalid option -- 'x'\n"},
      {{"photo.jpg"}, 1, no_action},
      {{"-b", "-d", "-i", "-q", "-u", "photo.jpg"}, 1, no_action},
      // Options end at the first operand.
      {{"photo.jpg", "-s"}, 1, no_action},
      {{"--", "-s"}, 1, no_action},
      {{"-t", "120"}, 1, thumbnail_ignored + no_action},
      {{"-t120", "-q"}, 1, thumbnail_ignored + no_action},
      {{"-q", "-t", "120"}, 1, no_action},
      {{"-e", "x"}, 1, no_action, "Error: Invalid erase option '-e x' specified.\n"},
      {{"-q", "-e", "xe"}, 1, no_action, "Error: Invalid erase option '-e xe' specified.\n"},
      {{"-p", "foo=UTF-8"}, 1, "Error: Invalid character set type 'FOO' on -p option.\n"},
      {{"-q", "-p", "local", "-s"},
       0,
       "Unexpected end of list where value expected. Field 'local' ignored\n"},
      {{"-p", "exif=NoSuchSet"},
       1,
       "Error: Unrecognised EXIF Character Set name 'NOSUCHSET' on -p option.\n"},
      {{"-p", "local=NoSuchSet,iptc=NoSuchSet"},
       1,
       "Error: Unrecognised LOCAL Character Set name 'NOSUCHSET' on -p option.\n"
       "Error: Unrecognised IPTC Character Set name 'NOSUCHSET' on -p option.\n"},
      {{"-p", "LOCAL=UTF-8,LOCAL=ASCII"},
       1,
       "Warning: Attempt to set LOCAL character set mutlple times on -p option, only first value "
       "used.\n" +
           no_action},
      {{"-q", "-p", "EXIF=UTF-8,EXIF=ASCII", "-p", "EXIF=ASCII"}, 1, no_action},
      // The list is read, so there is an action, but no file follows.
      {{"-s"}},
      {{"-e", "Exact"}},
      {{"-e", ""}, 1, no_action, "Error: Invalid erase option '-e ' specified.\n"},
      {{"-eF"}},
      {{"-a", "artist=x", "-e", "a"}, 0, erase_ignored},
      {{"-e", "i", "-r", "artist"}, 0, erase_ignored},
      {{"-q", "-e", "f", "-s"}},
      // An erase request that gives way to a list in which nothing is valid leaves no action.
      {{"-e", "e", "-a", "nosuch=1"},
       1,
       "Unknown field 'nosuch' ignored.\n" + erase_ignored + no_action},
  });
}

TEST(Messages, QuoteAndSeparatorAreCharactersOrNumbers) {
  std::vector<Case> cases = {{{"-j", ",", "-s"}},
                             {{"-j", "0x", "-s"}},
                             {{"-c", "09", "-a", "artist=\"a"}}};  // no character
  // One character is itself; numbers are decimal or octal, and their low 8 bits count.
  const std::pair<const char*, std::string> quotes[] = {
      {"!", "!"},  {"0", "0"},   {"7", "7"},   {"065", "5"}, {"42", "*"},  {"042", "\""},
      {"65", "A"}, {"65x", "A"}, {" 65", "A"}, {"321", "A"}, {"-191", "A"}};
  for (const auto& [argument, quote] : quotes) {
    cases.push_back({{"-c", argument, "-a", "artist=" + quote + "a, b" + quote}});
  }
  for (const std::string argument : {"ab", "", "x1", "--"}) {
    cases.push_back({{"-c", argument, "-j", argument, "-s"},
                     1,
                     "Error: Quote character (-c " + argument +
                         ") is invalid\nError: Separator character (-j " + argument +
                         ") is invalid\n"});
  }
  check_without_edit(cases);
}

TEST(Messages, ValuesAreCheckedBeforeAnyFileIsTouched) {
  const std::string text_1999(1999, 'x');
  const std::pair<const char*, const char*> refused[] = {
      {"aperture=0.95", "Formatting of this field not yet supported"},
      {"exif-ver=0230", "Invalid field value specified"},
      {"flashpix-ver=0100", "Not enough values supplied"},
      {"unknown=[make]", "Editing of this field is not permitted"},
      {"cn-macro-mode=macro", "Editing of this field is not permitted"},
      {"gps-latitude=45.5 27 30", "Fractional value not allowed in this value"},
      {"gps-altitude=-3", "Invalid number specified"},
      {"gps-date=2004:5:1", "Text string too short"},
      {"x-res=\"1,2\"", "Too many values supplied"},
      {"oecf=ABC", "Binary hexadecimal string must contain an even number of characters"},
      {"oecf=ZZ",
       "Binary hexadecimal string contains characters other than '0123456789AaBbCcDdEeFf'"},
      {"image-id=123456789012345678901234567890123", "Text string too long"},
      {"orient=sideways", "Invalid field value specified"},
      {"orient=[nosuchname]", "Invalid field value specified"},
      {"date-taken=2004:05:01 10:20:30 +1300", "Date format invalid"},
      {"date-taken=10:20", "Time specified where date was expected"},
      {"ip-exif=00", "Editing of this field is not permitted"},
      {"ip3-color-seq=1", "Formatting of this field not yet supported"},
      {"ip-copyrighted=maybe", "Invalid field value specified"},
      {"ip-date=[nonsense]", "Date format invalid"},
      {"ip-version=70000", "Invalid number specified"},
  };
  std::vector<Case> cases;
  for (const auto& [item, reason] : refused) {
    const std::string name = std::string(item).substr(0, std::string(item).find('='));
    cases.push_back({{"-q", "-a", item},
                     1,
                     "Invalid value specified for " + name + ": " + reason + "\n" + no_action});
  }
  for (const char* const accepted :
       {"ARTIST=x", "orient=upper-left", "main-width=-1", "iso-speed=65535", "shutter=1/125",
        "exp-time=2147.4", "gps-latitude=45 27.50", "gps-latitude=\"45,27,30\"",
        "orient=[date-taken]", "date-taken=01-May-04", "ip-keyword=a;b", "ip-time=10:20:30",
        "ip-city=a name that is far longer than thirty-two characters"}) {
    cases.push_back({{"-a", accepted}});
  }
  cases.push_back({{"-a", "oecf=\"\""},
                   1,
                   "Invalid value specified for oecf: Binary hexadecimal string must contain an "
                   "even number of characters\n" +
                       no_action});
  cases.push_back({{"-a", "description=" + text_1999}});
  cases.push_back({{"-a", "description=" + std::string(2030, 'x')},
                   1,
                   "Internal error - long string exif_encode_field('" + text_1999 + "x')\n"});
  cases.push_back({{"-a", "ip-exif=00,orient=x,artist=y,IP-CITY=z"},
                   0,
                   "Invalid value specified for ip-exif: Editing of this field is not permitted\n"
                   "Invalid value specified for orient: Invalid field value specified\n"
                   "Unknown field 'IP-CITY' ignored.\n"});
  check_without_edit(cases);
}

TEST(Messages, ListSyntax) {
  const std::string end_in_value =
      "Unexpected end of list where value expected. Field 'make' ignored\n";
  check_without_edit({
      {{"-a", "make="}, 1, "End of string reached after '='\n" + end_in_value + no_action},
      {{"-qa", "make="}, 1, end_in_value + no_action},
      {{"-a", std::string(60, 'n') + "=1"},
       1,
       "Unknown field '" + std::string(50, 'n') + "' ignored.\n" + no_action},
      {{"-a", ""}, 1, no_action},
      {{"-r", " make\tmodel\n,artist"}},
      {{"-r", "\"make model\""},
       0,
       "Unexpected quote character '\"' ignored\n"
       "Unexpected quote character '\"' ignored.\n"
       "Unknown field 'model\"' ignored.\n"},
      {{"-r", "nosuch,make"}, 0, "Unknown field 'nosuch' ignored.\n"},
      {{"-r", "=5,make"}, 0, "Unexpected value '5' ignored\n"},
      {{"-r", "exif-offset,end-table"},
       1,
       "Unknown field 'exif-offset' ignored.\nUnknown field 'end-table' ignored.\n" + no_action},
      {{"-a", "@missing.txt"},
       1,
       "Error: Can't open file list file missing.txt: No such file or directory\n" + no_action},
      {{"-r", "@missing.txt", "-s"},
       0,
       "Error: Can't open file list file missing.txt: No such file or directory\n"},
  });
}

TEST(Messages, ListsHoldTwoHundredItemsTogether) {
  const auto full = [](const std::string& prefix, const std::string& name) {
    return prefix + "Max number of edit fields reached, " + name +
           " and all fields following ignored.\n";
  };
  check_without_edit({
      {{"-a", repeated("make=a,", 200)}},
      {{"-qa", repeated("make=a,", 200) + "model=b,artist=c"}, 0, full("", "model")},
      {{"-a", repeated("make=a,", 200), "-a", "nosuch=b"}, 0, full("", "nosuch")},
      {{"-a", repeated("make=a,", 150), "-a", repeated("ip-city=a,", 60)}, 0, full("", "ip-city")},
      {{"-a", repeated("make=a,", 199), "-r", "model,artist"}, 0, full("Warning: ", "artist")},
      {{"-q", "-a", repeated("make=a,", 199), "-r", "model,artist"}},
  });
}

TEST(Messages, OperandsThatAreNotEdited) {
  const Files files = {
      {"empty.jpg", {}},
      {"notes.txt",
       bytes_of("Nothing but words, more than fifty bytes of them, one after another.")},
      {"plan.eps",
       bytes_of("%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 10 10\n%%EndComments\nshowpage\n")}};
  expect_untouched(
      files, {"-qs", "missing.jpg", "no/photo.jpg", "empty.jpg", "notes.txt", "plan.eps"},
      "Error: file missing.jpg: can't determine file type: No such file or directory\n"
      "Error: file no/photo.jpg: can't determine file type: No such file or directory\n"
      "Error: File empty.jpg: Editing of this file type not supported\n"
      "Error: File notes.txt: Editing of this file type not supported\n"
      "Error: File plan.eps: Editing of this file type not supported\n");
  const std::string in_a_walk =
      "Error: Can't extract EXIF fields: Editing of this file type not supported\n";
  expect_untouched(files, {"-qs", "."}, in_a_walk + in_a_walk + in_a_walk);
  const Files odd = {{"odd.jpg", joined({{0xFF, 0xD8}, noise(48, 1)})}};
  expect_untouched(odd, {"-a", "artist=x", "odd.jpg"},
                   "Error: File odd.jpg: File is not a valid JPEG file\n");
  expect_untouched(odd, {"-a", "artist=x", "."},
                   "Error: Can't extract EXIF fields: File is not a valid JPEG file\n");

  // No image fits in fewer than 50 bytes, whatever it begins with.
  const std::string refused =
      "Error openning file tiny: File is not a recognised image file type\n";
  for (const Bytes& start :
       {Bytes{0xFF, 0xD8}, written_tiff(false, {ifd_of({text(0x010F, "Me")})})}) {
    const Files tiny = {{"tiny", joined({start, Bytes(49 - start.size())})}};
    expect_untouched(tiny, {"-a", "artist=x", "tiny"},
                     refused + "Error: File tiny: File is not a recognised image file type\n");
    expect_untouched(tiny, {"-a", "artist=x", "."}, refused);
    expect_untouched(tiny, {"-a", "ip-city=x,artist=x", "."},
                     "Error: Can't open image file tiny: File is not a recognised image file "
                     "type\n");
  }
}

TEST(Messages, DirectoriesThatCannotBeEntered) {
  const Sandbox sandbox({{"closed/photo.jpg", plain_jpeg()}, {"unlisted/photo.jpg", plain_jpeg()}});
  ::chmod(sandbox.path("closed").c_str(), 0);
  ::chmod(sandbox.path("unlisted").c_str(), 0111);
  const Outcome outcome = run(sandbox, {"-r", "artist", "closed", "unlisted"}, {.as_nobody = true});
  const Outcome walk = run(sandbox, {"-ir", "artist", "."}, {.as_nobody = true});
  ::chmod(sandbox.path("closed").c_str(), 0755);
  ::chmod(sandbox.path("unlisted").c_str(), 0755);
  if (outcome.status == 127) {
    GTEST_SKIP() << "other users cannot reach the program";
  }
  expect_outcome(outcome, 0, "",
                 "Error: Can't open directory closed\n"
                 "Error: Can't open directory unlisted:Permission denied\n");
  expect_outcome(walk, 0, "",
                 "Error: Can't open directory closed:Permission denied\n"
                 "Error: Can't open directory unlisted:Permission denied\n");
}

TEST(Messages, EditsThatPartlyFail) {
  const auto photo = [](const Bytes& headers) {
    const Ifd ifd =
        ifd_of({text(0x010F, "Acme"), text(0x0110, "M"), pointer(0x8769, {exif_version()})});
    return jpeg({source_exif(true, {ifd}), headers});
  };
  const Bytes usual = photo(picture());
  const std::string unedited = "Error: File photo.jpg: ";
  const std::string wrong_value =
      "Can't add EXIF field Orientation (start point) (value '[file-base]'): Invalid field value "
      "specified\n";
  const struct {
    Words arguments;
    bool edited;
    std::string err = {};
    Bytes source = {};  ///< empty for the usual one
  } cases[] = {
      {{"-r", "artist"}, true, "Warning: Could not delete field 'artist', field not found\n"},
      {{"-qr", "artist"}, true},
      {{"-r", "make,model"},
       false,
       "Error: Attempt to delete all Camera IFD fields. This is not allowed.\n" + unedited +
           "Too many fields deleted\n"},
      {{"-a", "iop-index=R98"}, true, "Can't add field Interop. Index, required IFD not found\n"},
      {{"-a", "orient=[file-base]"},
       false,
       wrong_value + unedited + "Invalid field value specified\n"},
      {{"-a", "orient=[file-base],artist=x"}, true, wrong_value},
      {{"-s"},
       true,
       "Error: photo.jpg. Could not determine actual image dimensions.\n",
       photo(quantisation_table())},
      {{"-q", "-s", "-r", repeated("artist,", 198)},
       true,
       "Can't set EXIF data to actual image values, too many fields editted.\n"},
      {{"-q", "-s", "-r", repeated("artist,", 197)}, true},
      {{"-e", "a", "-r", "artist", "-q"}, true},
  };
  for (const auto& wanted : cases) {
    SCOPED_TRACE(::testing::PrintToString(wanted.arguments).substr(0, 60));
    const Bytes source = wanted.source.empty() ? usual : wanted.source;
    const Sandbox sandbox({{"photo.jpg", source}});
    Words arguments = wanted.arguments;
    arguments.emplace_back("photo.jpg");
    expect_outcome(run(sandbox, arguments), 0, "", wanted.err);
    const Files files = sandbox.files();
    EXPECT_EQ(files.size(), wanted.edited ? 2U : 1U);
    EXPECT_EQ(files.at(wanted.edited ? "photo-be.jpg" : "photo.jpg"), source);
  }
}

TEST(Messages, StreamsInProgramOrder) {
  const Sandbox sandbox({{"photo.jpg", plain_jpeg()}, {"walked/photo.jpg", plain_jpeg()}});
  const RunSettings merged = {.merged = true};
  EXPECT_EQ(run(sandbox, {"-c", "ab", "-e", "x", "-j", "yz"}, merged).out,
            "Error: Quote character (-c ab) is invalid\n"
            "Error: Invalid erase option '-e x' specified.\n"
            "Error: Separator character (-j yz) is invalid\n");
  EXPECT_EQ(run(sandbox, {"-r", "artist", "walked", "missing.jpg"}, merged).out,
            "Warning: Could not delete field 'artist', field not found\n"
            "photo.jpg: Edit successful.\n"
            "Error: file missing.jpg: can't determine file type: No such file or directory\n");
}

}  // namespace
}  // namespace tagmend::test
