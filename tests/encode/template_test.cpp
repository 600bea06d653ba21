#include "encode/template.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "common/field_rows.h"
#include "support/settings.h"
#include "support/text_buffer.h"

namespace tagmend::test {
namespace {

bool dataset_text(IptcStore*, std::string_view name, std::string_view& value) {
  value = name == "ip-caption" ? "Harbour at \"dawn\"" : "";
  return name == "ip-caption" || name == "ip-city";
}

class Template : public testing::Test {
 protected:
  Template() {
    image->file_size = 12345;
    copy_text(image->file_name, "archive.tar.gz");
    copy_text(image->directory, "photos/2005");
    copy_text(image->path, "photos/2005/archive.tar.gz");
    copy_text(image->modified, "2004:06:01 01:02:03");
    copy_text(image->changed, "2004:06:02 04:05:06");
    add_field("artist", "J. Doe");
    add_field("date-taken", "2004:05:01 10:20:30");
  }

  void add_field(const char* nickname, const char* text) {
    const FieldDef& def = field_named(nickname);
    FieldEntry& entry = image->fields[image->field_count++];
    entry.def = row_of(nickname);
    entry.tag = def.tag;
    entry.kind = def.ifd_kind;
    copy_text(entry.text.room, text);
  }

  /// The expanded text, with " [45]" behind it when no name was met.
  std::string expand(std::string_view text, TemplateSection section = TemplateSection::file,
                     std::size_t room = 2001) {
    std::string output(room, '#');
    const ErrorCode code = expand_template(text, section, output, context);
    const std::size_t length = output.find('\0');
    EXPECT_NE(length, std::string::npos);
    return output.substr(0, length) + (code == ErrorCode::ok ? "" : " [45]");
  }

  std::unique_ptr<ImageFile> image = std::make_unique<ImageFile>();
  SubstitutionContext context{image.get(), nullptr, dataset_text};
};

TEST_F(Template, Names) {
  const struct {
    const char* text;
    const char* result;
  } cases[] = {
      {"Taken [yyyy]-[mm]-[dd] by [artist]", "Taken 2004-05-01 by J. Doe"},
      {"[yy] [mmm] [hr].[min].[sec]", "04 May 10.20.30"},
      {"[date-taken]", "2004:05:01 10:20:30"},
      {"[file-base]-th.jpg", "archive.tar-th.jpg"},
      {"[file-name] [file-dir] [file-name-full]",
       "archive.tar.gz photos/2005 photos/2005/archive.tar.gz"},
      {"[file-ext] [file-size]", "gz 12345"},
      {"[file-date-mod],[file-date-created]", "2004:06:01 01:02:03,2004:06:02 04:05:06"},
      {"[file-name-thumb] [file-name-audio] [file-name-exi] [file-name-backup]",
       "archive.tar-th.jpg archive.tar.wav archive.tar.exi archive.tar-be.gz"},
      // In the file or not, known or not.
      {"a[copyright]b", "ab"},
      {"a[ip-city]b", "ab"},
      {"[nosuchname]", "[nosuchname] [45]"},
      {"[]", "[] [45]"},
      {"", " [45]"},
      {"plain", "plain [45]"},
      // Quote characters get a backslash.
      {"[ip-caption]", R"(Harbour at \"dawn\")"},
      // Names that are none.
      {"[file name][artist", "[file name][artist [45]"},
      {"[file\nname]", "[file\nname] [45]"},
      {"[art[artist]", "[artJ. Doe"},
      {"[[artist]]", "[J. Doe]"},
      {"a]b", "a]b [45]"},
      {R"([art\nist])", "[art\\nist] [45]"},
      {"[", "[ [45]"},
      // Backslashes.
      {R"(a\nb\rc\td)", "a\nb\rc\td [45]"},
      {R"(a\qb\\n\]\)", R"(a\qb\n\]\ [45])"},
      {"\\\n", "\\\n [45]"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(expand(row.text), row.result) << row.text;
  }
}

TEST_F(Template, Sections) {
  const char* const text =
      "head[Exif-Head]one[artist]\n[exif-file]\n\ntwo[EXIF-TAIL]\\n[yyyy][exif-file]";
  EXPECT_EQ(expand(text), "head\ntwo [45]");
  EXPECT_EQ(expand(text, TemplateSection::head), "oneJ. Doe\n");
  EXPECT_EQ(expand(text, TemplateSection::tail), "\n2004");
  EXPECT_EQ(expand("head[exif-head]one[exif-file]two[exif-tail]three"), "headtwo [45]");
  EXPECT_EQ(expand("[exif-file][artist][exif-head]\\[exif-file]x"), "J. Doex");
}

TEST_F(Template, FileNamesWithoutExtension) {
  for (const auto& [name, parts] : std::map<std::string, std::string>{
           {"photo", "photo|"}, {".jpg", "|jpg"}, {"photo.", "photo|"}, {"a.b.c", "a.b|c"}}) {
    copy_text(image->file_name, name);
    EXPECT_EQ(expand("[file-base]|[file-ext]"), parts) << name;
  }
}

TEST_F(Template, DateTakenIsThatOfTheLastEntryAndIsCutOnce) {
  add_field("date-taken", "1999:13:31");
  EXPECT_EQ(expand("[yyyy]-[mmm]-[dd]T[hr]"), "1999-xxx-31T");
  image->field_count = 0;
  EXPECT_EQ(expand("[yyyy]"), "1999");
  image->date_taken.computed = false;
  EXPECT_EQ(expand("[yyyy]-[mmm]-[dd]"), "--");
  add_field("date-taken", "2004: 5: 1  9: 0: 0");
  image->date_taken.computed = false;
  EXPECT_EQ(expand("[mm][mmm][dd]"), " 5May 1");
}

TEST_F(Template, WithoutAFileNamesAreKnownButEmpty) {
  context.image = nullptr;
  EXPECT_EQ(expand("a[artist][ip-city][yyyy][file-name-thumb]b"), "ab");
  EXPECT_EQ(expand("a[nosuchname]"), "a[nosuchname] [45]");
  context.dataset_text = nullptr;
  EXPECT_EQ(expand("[ip-caption]"), "[ip-caption] [45]");
}

TEST_F(Template, ATemplateThatNamesItselfEnds) {
  const LibrarySettings saved = library_settings;
  library_settings.thumbnail_template = "[file-base][file-name-thumb][file-name-audio].jpg";
  library_settings.thumbnail_template_length = 49;
  EXPECT_EQ(expand("[file-name-thumb]"), "archive.tar.jpg");
  library_settings = saved;
}

TEST_F(Template, OutputIsBounded) {
  const auto expand_into = [&](std::string_view text, std::size_t room) {
    return expand(text, TemplateSection::file, room);
  };
  EXPECT_EQ(expand_into("abcdef", 4), "abc [45]");
  EXPECT_EQ(expand_into("abcdef", 1), " [45]");
  EXPECT_EQ(expand_into("[artist]", 4), "J. ");
  EXPECT_EQ(expand_into("[nosuchname]", 4), "[no [45]");
  // "Harbour at \"": the quote character and its backslash are written together or not at all.
  EXPECT_EQ(expand_into("[ip-caption]", 13), "Harbour at ");
  EXPECT_EQ(expand_into("[ip-caption]", 14), "Harbour at \\\"");
  EXPECT_EQ(expand_into(std::string(3000, 'x'), 257), std::string(256, 'x') + " [45]");
}

TEST_F(Template, WithoutAnOutputTheTextIsPrinted) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(expand_template("[artist]: 100%\\n", TemplateSection::file, {}, context),
            ErrorCode::ok);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "J. Doe: 100%\n");
}

}  // namespace
}  // namespace tagmend::test
