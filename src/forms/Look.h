// The words in which a form tells the front end how it looks: places, colours, roles of texts and areas.
#pragma once

#include <cstdint>
#include <string>

namespace vk32 {

/// A place on a form or frame, in twips: 1440 to the inch, 15 to a pixel at scale 1.
struct Place {
  int left = 0, top = 0, width = 0, height = 0;
};

/// A colour in the platform's order, 0x00BBGGRR; with the top bit set it names a colour of the system.
using Color = std::int32_t;
constexpr Color SystemButtonText = static_cast<Color>(0x80000012);
constexpr Color SystemButtonFace = static_cast<Color>(0x8000000F);
constexpr Color StepCurrent = 0x2424AC;  // red 172, green 36, blue 36
constexpr Color StepOther = 0x838D86;    // red 134, green 141, blue 131
constexpr Color TextColor = 0x1D211E;    // of a small text that tells what goes on
constexpr Color MutedColor = 0x525B55;   // of what is not there
constexpr Color FailureColor = StepCurrent;

/// What a label's text is on its page; the front end picks size, weight and colour. A ForeColor set by code wins.
enum class TextRole {
  Body,
  Title,        // of a page
  Product,      // name of the product, head of a menu
  Heading,      // of a group of fields
  HeadingLink,  // a heading whose click opens an explanation
  BodyLink,     // a line of text whose click opens a web page
  Step,         // line of a side menu
  TableHead,    // above a column, bottom-aligned
  TableText,    // row of a dense table
  TablePath,    // the same, of which the end says most: what its place can't hold is left out at the start
  TableName,    // by which a row is called
  Muted,        // units and second lines
  MutedRight,   // the same, right-aligned
  Small,        // what is, in the lines beside a page: muted; wraps where it is two lines high
  SplashName,   // on the splash page
  SplashSubtitle,
  BandName,      // on the shell's dark band
  BandText,      // on the band, right-aligned
  BandSubtitle,  // on the band, below the name
  Link,          // on the band, right-aligned and underlined; opens a web page
};

/// What fills a frame. A table draws the lines between its rows, a list leaves them to the form.
enum class Fill { None, Side, Band, Hairline, Accent, Table, List, ChosenRow, ChosenMark };

/// What an image shows: the icon of the program, or the sign of a good or a bad end, which never stands without words.
enum class Symbol { Icon, Tick, Cross };
inline std::string PropertyText(Symbol symbol) {
  return symbol == Symbol::Tick ? "Tick" : symbol == Symbol::Cross ? "Cross" : "Icon";
}

}  // namespace vk32
