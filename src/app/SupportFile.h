// What the maker needs to see what has happened in the field.
#pragma once

#include <string>

#include "app/App.h"

namespace vk32 {

/// In UTF-8: versions, system, the ports found, the configuration of each open wizard, and the trace of the last
/// exchanges, whose lines `vk32-sim --replay` takes out of the rest.
std::string SupportText(App& app);

}  // namespace vk32
