#include "support/file_names.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <fstream>

#include "common/bytes.h"
#include "common/temporary_directory.h"

namespace tagmend::test {
namespace {

std::string with_suffix(std::string_view name, std::string_view suffix, bool fits = true) {
  SiblingName result;
  EXPECT_EQ(name_with_suffix(name, suffix, result), fits) << name;
  return result.data();
}

std::string numbered(std::string_view name, unsigned number, bool fits = true) {
  SiblingName result;
  EXPECT_EQ(numbered_name(name, number, result), fits) << name;
  return result.data();
}

TEST(SiblingNames, GoInFrontOfTheExtension) {
  EXPECT_EQ(numbered(".profile", 3), ".profile(3)");
  EXPECT_EQ(numbered("..rc", 3), ".(3).rc");
  EXPECT_EQ(numbered("photo.jpg", 150), "photo(99).jpg");
}

TEST(SiblingNames, AreCutAt99Characters) {
  const std::string stem(92, 'n');
  EXPECT_EQ(with_suffix(stem + ".jpg", "-be"), stem + "-be.jpg") << "exactly 99";
  EXPECT_EQ(with_suffix("n" + stem + ".jpg", "-be", false), "n" + stem + "-be.jp");
  EXPECT_EQ(numbered(stem + ".jpg", 9), stem + "(9).jpg");
  EXPECT_EQ(numbered(stem + ".jpg", 10, false), stem + "(10).jp");
  EXPECT_EQ(numbered(std::string(300, 'n') + ".jpg", 1, false), std::string(99, 'n'));
}

class GiveFreeName : public InTemporaryDirectory {
 protected:
  GiveFreeName() { here_.add("new", bytes_of("new")); }

  static SiblingName wanted(std::string_view name) {
    SiblingName result;
    EXPECT_TRUE(name_with_suffix(name, "", result));
    return result;
  }
};

TEST_F(GiveFreeName, PassesOverWhatExists) {
  here_.add("a.jpg", bytes_of("0"));
  std::filesystem::create_directory("a(1).jpg");
  std::filesystem::create_symlink("nowhere", "a(2).jpg");
  SiblingName name = wanted("a.jpg");
  EXPECT_EQ(give_free_name("new", name, std::rename), 0);
  EXPECT_STREQ(name.data(), "a(3).jpg");
  EXPECT_EQ(here_.content("a(3).jpg"), bytes_of("new"));
  EXPECT_EQ(here_.content("a.jpg"), bytes_of("0"));
  EXPECT_TRUE(std::filesystem::is_symlink("a(2).jpg"));
}

TEST_F(GiveFreeName, PassesOverANameThatIsTakenMeanwhile) {
  SiblingName name = wanted("c");
  const auto racing_link = [](const char* from, const char* to) {
    if (std::string_view(to) == "c") {
      std::ofstream("c") << "somebody else's";
    }
    return link(from, to);
  };
  EXPECT_EQ(give_free_name("new", name, racing_link), 0);
  EXPECT_STREQ(name.data(), "c(1)");
  EXPECT_EQ(here_.content("c"), bytes_of("somebody else's"));
}

TEST_F(GiveFreeName, TellsWhyItFailed) {
  SiblingName name = wanted("d");
  EXPECT_EQ(give_free_name("missing", name, std::rename), -1);
  EXPECT_EQ(errno, ENOENT);

  const std::string longest(97, 'n');
  here_.add(longest, bytes_of("kept"));
  name = wanted(longest);
  EXPECT_EQ(give_free_name("new", name, std::rename), -1);
  EXPECT_EQ(errno, ENAMETOOLONG);
  EXPECT_EQ(here_.content(longest), bytes_of("kept"));
  EXPECT_EQ(here_.content("new"), bytes_of("new"));
}

TEST(CreatedFileList, HoldsNamesOfAHundredCharacters) {
  CreatedFileList* const list = created_list_new();
  ASSERT_NE(list, nullptr);
  const std::string longest(100, 'n');
  EXPECT_EXIT(created_list_add(*list, longest + "x"), testing::ExitedWithCode(1),
              "^Error: File name 'n{100}x' too long - exiting\n$");
  created_list_add(*list, "photo10");
  created_list_add(*list, longest);
  EXPECT_TRUE(created_list_contains(*list, longest));
  for (const char* const other : {"Photo10", "photo1", "photo100"}) {
    EXPECT_FALSE(created_list_contains(*list, other)) << other;
  }
  created_list_free(list);
}

}  // namespace
}  // namespace tagmend::test
