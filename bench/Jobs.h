// What jobs on the command line take.
#pragma once

#include "Table.h"

namespace vk32::bench {

/// Each from the start of vk32-cli to its end.
void Jobs(Table& table);

}  // namespace vk32::bench
