// The numeric lists of the RB2000 and RB3000.
#include "models/serial/SerialImage.h"

#include "core/Convert.h"

namespace vk32::SerialImage {

ChoiceTable SpecificAddresses() {
  ChoiceTable choices = Numbers(1, 247);
  choices[0] = {"1", 254, 0, 255, 1};
  return choices;
}

ChoiceTable BroadcastAddresses() {
  ChoiceTable choices;
  for (int n = 0; n < 64; ++n) {
    const std::string text = Oct(n);
    choices.emplace_back(text, 255, n, 255, CLng(Val(text)));
  }
  return choices;
}

}  // namespace vk32::SerialImage
