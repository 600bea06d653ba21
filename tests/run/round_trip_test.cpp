// Generated photographs of every sort. An edit gives the file that the writer's layout demands,
// byte for byte; the same edit once more changes nothing, and datasets that are set back are there
// again. A failure names the seed of its photograph: TAGMEND_SEED tests that one alone.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "common/edit_case.h"
#include "common/generated_photos.h"
#include "common/tiff_builder.h"

namespace tagmend::test {
namespace {

/// Every camera twice.
constexpr std::uint32_t photographs = 72;

struct Edit {
  Words arguments;
  std::function<void(Chain&)> change;
};

std::vector<Edit> edits_of(const Photo& photo) {
  std::vector<Edit> edits = {
      {{"-r", "copyright"}, [](Chain& c) { drop(c[0], 0x8298); }},
      {{"-a", "description=Other words and more of them"},
       [](Chain& c) { set(c[0], text(0x010E, "Other words and more of them")); }},
      {{"-a", "artist=x,date-taken=2010-02-03 04:05:06,exp-time=1/8", "-r", "date-mod"},
       [](Chain& c) {
         set(c[0], text(0x013B, "x"));
         drop(c[0], 0x0132);
         set(exif(c), {text(0x9003, "2010:02:03 04:05:06"), rationals(0x829A, {125000, 1000000})});
       }},
  };
  if (photo.gps) {
    edits.push_back({{"-a", "gps-latitude=1 2 3"}, [](Chain& c) {
                       set(gps(c), rationals(0x0002, {1, 1, 2, 1, 3, 1}));
                     }});
  }
  return edits;
}

Bytes edited(const std::string& name, const Bytes& file, Words arguments) {
  const Sandbox sandbox({{name, file}});
  arguments.push_back(name);
  expect_outcome(run(sandbox, arguments), 0, "", "");
  return sandbox.content(name);
}

void check(const Photo& photo) {
  const Bytes source = source_file(photo);
  for (const Edit& edit : edits_of(photo)) {
    Chain changed = photo.chain;
    edit.change(changed);
    const Bytes expected = written_file(photo, changed, edit.arguments[0] == "-a");
    Words arguments = {"-b", "-q"};
    arguments.insert(arguments.end(), edit.arguments.begin(), edit.arguments.end());
    check_edit({arguments, source, expected}, photo.name);
    check_edit({arguments, expected, expected}, photo.name);
  }
  if (photo.iptc) {
    const Words set = {"-b", "-r", "ip-keyword", "-a",
                       "ip-keyword=a;b;c,ip-caption=After,ip-city=Oslo"};
    const Words back = {"-bq", "-r", "ip-keyword,ip-city", "-a",
                        "ip-keyword=one;two,ip-caption=Before"};
    const Bytes once = edited(photo.name, source, set);
    check_edit({set, once, once}, photo.name);
    for (const Bytes& kept : photo.resources) {
      EXPECT_LT(position_of(once, kept), once.size());
    }
    EXPECT_EQ(difference(edited(photo.name, source, back), edited(photo.name, once, back)), "");
  }
}

TEST(RoundTrip, EditsGiveTheWritersLayoutAndCanBeUndone) {
  const char* const only = std::getenv("TAGMEND_SEED");
  const auto first = only != nullptr ? static_cast<std::uint32_t>(std::atoi(only)) : 1;
  const std::uint32_t last = only != nullptr ? first : photographs;
  for (std::uint32_t seed = first; seed <= last && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    check(photograph(seed));
  }
}

}  // namespace
}  // namespace tagmend::test
