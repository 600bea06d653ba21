// A whole file, read, edited, rewritten and read again. The last byte of an input chooses the edit;
// what stands before it is the file.
#include <algorithm>
#include <string>
#include <vector>

#include "common/file_content.h"
#include "contents.h"
#include "harness.h"

namespace tagmend::fuzz {
namespace {

using test::Bytes;
using test::Contents;
using Words = std::vector<std::string>;

constexpr char photo[] = "photo.jpg";
constexpr char backup[] = "photo-be.jpg";

/// Edits that leave the make and model alone: those say how maker notes are read.
const std::vector<Words>& edits() {
  static const std::vector<Words> table = {
      {"-a", "artist=x"},
      {"-a", "artist=Somebody with a name as long as this, gps-latitude=1 2 3, comment=[make]"},
      {"-r", "artist, th-comp, iso-speed"},
      {"-s", "-a", "date-taken=2004:01:02 03:04:05, f-number=2.8, exp-time=1/60"},
      {"-r", "ip-keyword", "-a", "ip-caption=[make], ip-keyword=one;two, ip-city=Oslo"},
      {"-r", "ip-caption, ip-keyword, ip-url"},
      {"-a", "ip-copyright=x, copyright=y", "-r", "artist"},
      {"-s"},
      {"-a", "th-comp=jpeg, orient=1, iop-index=R98, sub-type=1"},
      {"-r", "gps-*, date-*"},
      {"-e", "i"},
      {"-e", "f"},
      {"-e", "e"},
      {"-e", "a"},
  };
  return table;
}

/// The start of scan and all that follows; nothing when the markers do not lead there.
Input picture_of(Input file) {
  std::size_t at = 2;
  while (at + 4 <= file.size() && file[at] == 0xFF) {
    if (file[at + 1] == 0xDA) {
      return file.subspan(at);
    }
    at += 2U + static_cast<unsigned>(file[at + 2] << 8U | file[at + 3]);
  }
  return {};
}

bool stands_here(const char* name) {
  const std::vector<std::string> names = test::ScratchDirectory::names();
  return std::find(names.begin(), names.end(), name) != names.end();
}

void check_directory(const Bytes& original, bool backed_up) {
  for (const std::string& name : test::ScratchDirectory::names()) {
    require(name == photo || name == backup, "a temporary file was left behind");
  }
  require(!backed_up || test::file_content(backup) == original, "the backup is not the original");
}

/// What a file that was edited, with all of it read, must have kept. Returns whether the same edit
/// finds nothing more to change: only the first of several equal fields is replaced or removed.
bool check_kept(const Bytes& original, const Bytes& edited, const Words& edit) {
  const Session session = open_session();
  const Contents before = test::unedited_contents(session, original);
  const Contents after = test::unedited_contents(session, edited);
  if (edit[0] != "-e") {
    const std::string lost = test::lost_line(before, after);
    require(lost.empty(), ("lost: " + lost).c_str());
  }
  if (session.image.file_type == FileType::jpeg) {
    const Input picture = picture_of(original);
    require(picture.empty() || std::ranges::equal(picture, picture_of(edited)),
            "the picture was changed");
  }
  return !before.edited_twice;
}

void edit_photo(const Bytes& original, const Words& edit, bool keep_backup) {
  Words words = edit;
  if (!keep_backup) {
    words.insert(words.begin(), "-b");
  }
  words.push_back(photo);
  require(test::write_file(photo, original), "the photograph cannot be written");
  static_cast<void>(test::run_here(words));
  const bool backed_up = stands_here(backup);
  check_directory(original, backed_up);
  const Bytes edited = test::file_content(photo);
  if (backed_up || keep_backup) {
    require(backed_up || edited == original, "the original is lost");
    return;
  }
  if (edited == original) {
    return;
  }
  if (check_kept(original, edited, edit)) {
    static_cast<void>(test::run_here(words));
    require(test::file_content(photo) == edited, "the same edit again changed the file");
  }
}

}  // namespace
}  // namespace tagmend::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tagmend;
  static const test::ScratchDirectory directory;
  if (size == 0) {
    return 0;
  }
  const std::uint8_t choice = data[size - 1];
  const test::Bytes file(data, data + size - 1);
  fuzz::edit_photo(file, fuzz::edits()[choice / 2U % fuzz::edits().size()], choice % 2 == 0);
  test::ScratchDirectory::clear();
  return 0;
}
