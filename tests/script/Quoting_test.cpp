// Texts as the text front end prints and reads them.
#include "script/Quoting.h"

#include <gtest/gtest.h>

namespace vk32 {
namespace {

using namespace std::string_literals;

TEST(Quoting, EscapesWhatCanNotBeSeen) {
  const struct {
    std::string bytes, quoted;
  } rows[] = {
      {"", R"("")"},
      {"plain text, 'single' ~", R"("plain text, 'single' ~")"},
      {" blanks ", R"(" blanks ")"},
      {"a\"b\\c", R"("a\"b\\c")"},
      {"\r\n\t", R"("\r\n\t")"},
      {"\0\x01\x1F\x20\x7E\x7F"s, R"("\x00\x01\x1F ~\x7F")"},
      {"\x80\xAB\xFF"s, R"("\x80\xAB\xFF")"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Quote(row.bytes), row.quoted);
    EXPECT_EQ(Unquote(row.quoted), row.bytes);
  }
}

TEST(Quoting, AllBytesComeBack) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  EXPECT_EQ(Unquote(Quote(all)), all);
}

TEST(Quoting, TextsWithoutQuotesStandAsTheyAre) {
  for (const std::string text : {"", "a", " a b ", "a\"b\"", "\\n", "it's"}) EXPECT_EQ(Unquote(text), text);
}

TEST(Quoting, EscapesMayBeWrittenEitherWay) {
  EXPECT_EQ(Unquote(R"("\x41\x0d\x0D\x61b")"), "A\r\rab");
  EXPECT_EQ(Unquote("\"raw \t tab\""), "raw \t tab");
}

TEST(Quoting, RefusesMalformedTexts) {
  for (const char* text : {R"(")", R"("a)", R"("a\")", R"("a" )", R"("a"b")", R"("\a")", R"("\")", R"("\x")",
                           R"("\x4")", R"("\x4g")", R"("\xg4")", R"("\x-1")", R"("\X41")", R"("\x41)"}) {
    EXPECT_FALSE(Unquote(text)) << text;
  }
}

}  // namespace
}  // namespace vk32
