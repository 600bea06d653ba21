#include "encode/field_list.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "common/bytes.h"
#include "common/printed_errors.h"
#include "common/temporary_directory.h"

namespace tagmend::test {
namespace {

using Items = std::vector<std::pair<std::string, std::string>>;
using Names = std::vector<std::string>;

Items add_items(std::string text, char quote) {
  ListText list{text};
  NameText name;
  ValueText value;
  Items items;
  while (next_add_item(list, quote, name, value)) {
    items.emplace_back(name.data(), value.data());
  }
  return items;
}

Names split_items(std::string text, char quote, char separator) {
  ListText list{text};
  ValueText item;
  Names items;
  while (split_repeated_value(list, quote, separator, item)) {
    items.emplace_back(item.data());
  }
  return items;
}

std::string end_of_list(const std::string& name) {
  return "Unexpected end of list where value expected. Field '" + name + "' ignored\n";
}

std::string no_value(const std::string& name) {
  return "No value following field '" + name + "', field ignored\n";
}

TEST(FieldList, AddList) {
  const std::string after_comma = "Unexpected '=' after ',' ignored\n";
  const std::string in_value = "Unexpected '=' ignored\n";
  const std::string no_value_yet =
      "Unexpected ',' where value expected. Previous field name ignored\n";
  const std::string open_quote = "End of string reached inside quoted string\n";
  const std::string after_equals = "End of string reached after '='\n";
  const struct {
    const char* text;
    Items items;
    std::string messages;
  } cases[] = {
      {"", {}, ""},
      {" ,\t\n,, ", {}, ""},
      {"a=1,b=2", {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1,,b=2", {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1\nb=2\n", {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1\r\nb=2", {{"a", "1\r"}, {"b", "2"}}, ""},
      {"a=", {}, after_equals + end_of_list("a")},
      {"a=,b=2", {{"b", "2"}}, no_value_yet + no_value("a")},
      {"a b=1", {{"b", "1"}}, no_value("a")},
      {"a = 1", {}, after_comma + no_value("a") + end_of_list("1")},
      {"a= \t\n1", {{"a", "1"}}, ""},
      {"a==1", {{"a", "1"}}, "Unexpected duplicate '=' ignored\n"},
      {"a", {}, end_of_list("a")},
      {"a=x=y", {{"a", "x"}}, in_value + end_of_list("y")},
      {"a=x=y=z", {{"a", "x"}, {"y", "z"}}, in_value},
      {"=5", {}, "Unexpected value '5', field ignored\n"},
      {"=5,a=1", {{"a", "1"}}, "Unexpected value '5', field ignored\n"},
      // Blanks at the end of a value, inside it, and at the end of the list.
      {"a=1  ,b=2", {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1 2,b=2  ", {{"a", "1 2"}, {"b", "2  "}}, ""},
      {"a=1 \t \nb=2", {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1 =", {{"a", "1"}}, in_value},
      // A quote character in an unquoted value stays in it, but does not make blanks part of it.
      {"a=1 ',b=2", {{"a", "1"}, {"b", "2"}}, "Unexpected '\"' ignored\n"},
      {"a=1 'x,b=2", {{"a", "1 'x"}, {"b", "2"}}, "Unexpected '\"' ignored\n"},
      // Quoted values.
      {"a='x, y=z'", {{"a", "x, y=z"}}, ""},
      {"a=''", {{"a", " "}}, ""},
      {"a= 'x\ny' b=1", {{"a", "x\ny"}, {"b", "1"}}, ""},
      {"a='x'b=1", {{"a", "x"}, {"b", "1"}}, ""},
      {R"(a='it\'s')", {{"a", "it's"}}, ""},
      {R"(a='\'\'')", {{"a", "''"}}, ""},
      {R"(a='x\y\\')", {{"a", R"(x\y\\)"}}, ""},
      // Each backslash removed leaves a blank at the end of the list.
      {R"(a='\'',b=2)", {{"a", "'"}, {"b", "2 "}}, ""},
      {R"(a='x\'y',b='\'z',c=1)", {{"a", "x'y"}, {"b", "'z"}, {"c", "1  "}}, ""},
      {R"(a='\q\'\\',b=2)", {{"a", R"(\q'\\)"}, {"b", "2 "}}, ""},
      {"a='open", {}, open_quote + end_of_list("a")},
      {R"(a='x\')", {}, open_quote + end_of_list("a")},
      {R"(a='x\)", {}, open_quote + end_of_list("a")},
      {"a=1,b='", {{"a", "1"}}, open_quote + end_of_list("b")},
      // Quote characters outside values.
      {"'a=1", {{"a", "1"}}, "Unexpected quote character ''' ignored\n"},
      {"a'b=1", {{"a'b", "1"}}, "Unexpected quote character ''' ignored.\n"},
      {",'a=1", {{"a", "1"}}, "Unexpected quote character ''' ignored\n"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(errors_of([&] { EXPECT_EQ(add_items(row.text, '\''), row.items); }), row.messages);
  }
}

TEST(FieldList, RepeatedValues) {
  const char* const open_quote = "End of string reached inside quoted string\n";
  const struct {
    const char* text;
    char separator;
    Names items;
    const char* messages;
  } cases[] = {
      {"", ';', {}, ""},
      {"a;b;c", ';', {"a", "b", "c"}, ""},
      {" a b ; c ", ';', {"a b", "c "}, ""},
      {";;a;;b;", ';', {"a", "b"}, ""},
      {"a\nb", ';', {"a", "b"}, ""},
      {"a;b,c=d", ';', {"a", "b,c=d"}, ""},
      {"a|b", '|', {"a", "b"}, ""},
      {"'a;b';''c", ';', {"a;b", " ", "c"}, ""},
      {R"('it\'s';b)", ';', {"it's", "b "}, ""},
      {"a ';b", ';', {"a", "b"}, "Unexpected ''' ignored\n"},
      {"a'b", ';', {"a'b"}, "Unexpected ''' ignored\n"},
      {"a;'b", ';', {"a"}, open_quote},
      {R"('\)", ';', {}, open_quote},
      // A blank is white space before it is a separator.
      {"a b", ' ', {"a b"}, ""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(errors_of([&] { EXPECT_EQ(split_items(row.text, '\'', row.separator), row.items); }),
              row.messages);
  }
}

TEST(FieldList, EscapedQuotesTakeLinearTime) {
  constexpr std::size_t quotes = 500000;  // half a minute, if each moved the rest of the list
  std::string list = "a='";
  for (std::size_t i = 0; i < quotes; ++i) {
    list += "\\'";
  }
  const Items expected = {{"a", std::string(value_limit, '\'')},
                          {"b", "1" + std::string(value_limit - 1, ' ')}};
  EXPECT_EQ(add_items(list + "',b=1", '\''), expected);
}

TEST(FieldList, ABackslashAsQuoteCharacterEscapesFirst) {
  EXPECT_EQ(errors_of([] { EXPECT_EQ(split_items(R"(\a\;b)", '\\', ';'), Names{}); }),
            "End of string reached inside quoted string\n");
}

TEST(FieldListDeathTest, AnImpossibleStateEndsTheProgram) {
  std::string text = "a";
  ListText list{text};
  ListLexer lexer{ListState::invalid, '"'};
  ValueText token;
  EXPECT_EXIT(next_list_token(lexer, list, token), testing::ExitedWithCode(1),
              "^Error: Unreachable 'default' statement reached.\n"
              "Error: Unreachable 'default' statement reached: utility.cpp, line 2314\n$");
}

TEST(ListFile, IsReadUpToTheSizeOfTheBuffer) {
  const TemporaryFile file(bytes_of("a=1\nb=2\n"));
  std::array<char, 20> buffer;
  buffer.fill('#');
  EXPECT_EQ(read_list_file(file.name.c_str(), buffer), 8u);
  EXPECT_STREQ(buffer.data(), "a=1\nb=2\n");
  EXPECT_EQ(read_list_file(file.name.c_str(), std::span(buffer).first(4)), 3u);
  EXPECT_STREQ(buffer.data(), "a=1");

  EXPECT_EQ(errors_of([&] { EXPECT_EQ(read_list_file("/", buffer), 0u); }),
            "Error: Can't open file list file /: Is a directory\n");
  EXPECT_STREQ(buffer.data(), "");
}

}  // namespace
}  // namespace tagmend::test
