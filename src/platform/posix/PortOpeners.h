// Who has a device open, by the device's own numbers.
#pragma once

#include <sys/stat.h>

#include <optional>

#include "platform/PortHolder.h"

namespace vk32 {

bool IsPseudoTerminal(const struct stat& device);

/// A program other than this one that has a device open, by whatever path, among those that the user may look into.
/// Who has the other end of a pseudo-terminal belongs to the device and does not count. Takes some 3 us for each open
/// file of the user's processes, and asks no file system that could keep it waiting.
std::optional<Holder> OtherOpener(const struct stat& device);

}  // namespace vk32
