// Which program holds a serial device, as the system tells it.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace vk32 {

bool IsPseudoTerminal(const struct stat& device);

struct Holder {
  std::string program;  // "minicom"
  int process;          // its number
  bool isSelf;          // this program
};

/// A program other than this one that has a device open, by whatever path, among those that the user may look into.
/// Who has the other end of a pseudo-terminal belongs to the device and does not count. Takes some 3 us for each open
/// file of the user's processes, and asks no file system that could keep it waiting.
std::optional<Holder> OtherOpener(const struct stat& device);

/// Who has the device at that path: the program that has locked it with flock, whoever runs it and also if it is this
/// one, or else another opener. The device is not opened: that would raise its control lines.
std::optional<Holder> HolderOf(const std::string& path);

}  // namespace vk32
