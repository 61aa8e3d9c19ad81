// The lists of the VK5300 and the RBCard.
#include "models/highway/HighwayImage.h"

#include "core/Convert.h"

namespace vk32::HighwayImage {

ChoiceTable DhPlusNodes() {
  ChoiceTable nodes;
  for (int n = 0; n < 64; ++n) nodes.push_back(Code(Oct(n), n));
  return nodes;
}

}  // namespace vk32::HighwayImage
