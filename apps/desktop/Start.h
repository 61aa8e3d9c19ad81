// What a start that fails tells, and where: the user has a terminal on one system and none on the other.
#pragma once

#include <string>

namespace vk32 {

/// Why no window can be opened here, and what to do.
std::string WhyNoDisplay();

/// On the terminal, or in a box where there is none. Needs no application object.
void TellAtStart(const std::string& text);

}  // namespace vk32
