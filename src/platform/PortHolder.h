// Which program holds a serial device, as the system tells it.
#pragma once

#include <optional>
#include <string>

namespace vk32 {

struct Holder {
  std::string program;  // "minicom"
  int process;          // its number
  bool isSelf;          // this program
};

/// Who has the device at that path: the program that has locked it, whoever runs it and also if it is this one, or else
/// another opener. The device is not opened: that would raise its control lines.
std::optional<Holder> HolderOf(const std::string& path);

/// False where the system tells of no holder at all, and HolderOf of nobody: a device is then not known to be free.
bool TellsHolders();

}  // namespace vk32
