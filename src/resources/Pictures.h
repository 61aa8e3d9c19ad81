// The numbered button pictures of VK32: which pair belongs to which button, how large it is and what it says.
#pragma once

#include <span>
#include <string_view>

namespace vk32 {

// The style a picture is drawn in.
enum class PictureFace {
  Plain,    // white, words in the middle
  Primary,  // accent, words in the middle: the one way forward
  LeadsOn,  // white, words at the left and a chevron: opens another window
  Product,  // as LeadsOn, in the large size of the product list
  Model,    // as LeadsOn, in the size that lets a model's long name fit a product's place
};

struct PictureButtonRow {
  std::string_view name;  // of the control, on whatever form it stands
  int raised;
  int pressed;
  int width;  // pixels at scale 1
  int height;
  std::string_view words;
  PictureFace face;
};

// The sizes of the application icon group, in pixels.
inline constexpr int IconSizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

// All pairs in the order of their numbers. NextCmd has two rows, Next before Finish.
std::span<const PictureButtonRow> PictureTable();

// The row a picture belongs to, raised or pressed; null for a number that names no picture.
const PictureButtonRow* FindPicture(int number);

// The row whose raised picture the button shows at start; null for a name that has none.
const PictureButtonRow* FindPictureButton(std::string_view controlName);

// The raised and the pressed picture of the pair a number belongs to. A number that names no picture comes back as it
// is, so that a swap never turns one unknown picture into another.
int RaisedPicture(int number);
int PressedPicture(int number);

}  // namespace vk32
