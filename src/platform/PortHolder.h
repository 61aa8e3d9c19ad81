// Which program holds a serial device, as the system tells it.
#pragma once

#include <sys/stat.h>

#include <string>

namespace vk32 {

bool IsPseudoTerminal(const struct stat& device);

/// The program that has locked a device with flock, whoever runs it: "vk32 (process 4711)"; empty if none has.
std::string LockHolder(const struct stat& device);

/// A program other than this one that has a device open, by whatever path, among those that the user may look into;
/// empty if there is none. Who has the other end of a pseudo-terminal belongs to the device and does not count. Takes
/// some 3 us for each open file of the user's processes, and asks no file system that could keep it waiting.
std::string OtherOpener(const struct stat& device);

}  // namespace vk32
