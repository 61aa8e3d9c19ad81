// The command line of vk32-cli.
#pragma once

#include <string>
#include <vector>

#include "cli/World.h"

namespace vk32 {

/// Parses the arguments behind the program's name and carries out the command that they name.
ExitStatus RunCommandLine(World& world, const std::vector<std::string>& arguments);

}  // namespace vk32
