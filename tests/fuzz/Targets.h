// What comes from outside, as targets for random bytes: whatever they are, the program answers and comes to an end.
#pragma once

#include <span>
#include <string_view>

namespace vk32 {

struct FuzzTarget {
  std::string_view name;  // also the name of the folder of its seeds
  void (*run)(std::string_view data);
};

std::span<const FuzzTarget> FuzzTargets();

}  // namespace vk32
