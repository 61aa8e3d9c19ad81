// What the desktop program costs: its start, its memory, its sleep.
#pragma once

#include <string>

#include "Table.h"

namespace vk32::bench {

/// On a display that is still otherwise, with a window manager, and by xdotool. `program`: its path.
void Desktop(Table& table, const std::string& program);

}  // namespace vk32::bench
