// Texts as the text front end prints and reads them.
#include "script/Quoting.h"

#include <gtest/gtest.h>

namespace vk32 {
namespace {

using namespace std::string_literals;

TEST(Quoting, BytesComeBackFromTheirQuotedFormAndMalformedOnesAreRefused) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const std::pair<std::string, std::string> quotes[] = {
      {"", R"("")"},
      {" plain, 'single' ~", R"(" plain, 'single' ~")"},
      {"a\"b\\c\r\n\t", R"("a\"b\\c\r\n\t")"},
      {"\0\x01\x1F\x20\x7E\x7F\x80\xAB\xFF"s, R"("\x00\x01\x1F ~\x7F\x80\xAB\xFF")"},
      {all, Quote(all)}};
  for (const auto& [bytes, quoted] : quotes) {
    EXPECT_EQ(Quote(bytes), quoted);
    EXPECT_EQ(Unquote(quoted), bytes);
  }
  for (const std::string text : {"", "a", " a b ", "a\"b\"", "\\n", "it's"}) EXPECT_EQ(Unquote(text), text);
  EXPECT_EQ(Unquote("\"\\x41\\x0d\\x0D\\x61b raw \t tab\""), "A\r\rab raw \t tab");
  for (const char* text : {R"(")", R"("a)", R"("a\")", R"("a" )", R"("a"b")", R"("\a")", R"("\")", R"("\x")",
                           R"("\x4")", R"("\x4g")", R"("\xg4")", R"("\x-1")", R"("\X41")", R"("\x41)"}) {
    EXPECT_FALSE(Unquote(text)) << text;
  }
}

}  // namespace
}  // namespace vk32
