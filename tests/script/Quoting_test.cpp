// Texts as the text front end prints and reads them.
#include "script/Quoting.h"

#include <gtest/gtest.h>

namespace vk32 {
namespace {

using namespace std::string_literals;

TEST(Quoting, EscapesWhatCanNotBeSeenAndRefusesMalformedTexts) {
  for (const auto& [bytes, quoted] : std::initializer_list<std::pair<std::string, const char*>>{
           {"", R"("")"},
           {" plain 'text' ~", R"(" plain 'text' ~")"},
           {"a\"b\\c\r\n\t", R"("a\"b\\c\r\n\t")"},
           {"\0\x1F\x20\x7F\x80\xFF"s, R"("\x00\x1F \x7F\x80\xFF")"}}) {
    EXPECT_EQ(Quote(bytes), quoted);
    EXPECT_EQ(Unquote(quoted), bytes);
  }
  for (const std::string text : {"", " a b ", "a\"b\"", "\\n"}) EXPECT_EQ(Unquote(text), text);
  EXPECT_EQ(Unquote(R"("\x41\x0d\x61b)"
                    "\t\""),
            "A\rab\t");
  for (const char* text : {R"(")", R"("a)", R"("a\")", R"("a" )", R"("a"b")", R"("\a")", R"("\")", R"("\x")",
                           R"("\x4")", R"("\x4g")", R"("\xg4")", R"("\x-1")", R"("\X41")", R"("\x41)"}) {
    EXPECT_FALSE(Unquote(text)) << text;
  }
}

}  // namespace
}  // namespace vk32
