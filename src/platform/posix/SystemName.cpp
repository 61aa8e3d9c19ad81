// The system that the program runs on, as it describes itself.
#include "platform/SystemName.h"

#include <sys/utsname.h>

#include <cstring>
#include <fstream>

namespace vk32 {

std::string SystemName() {
  utsname kernel{};
  uname(&kernel);
  std::string kernelName = std::string(kernel.sysname) + " " + kernel.release + ", " + kernel.machine;
  const std::string key = "PRETTY_NAME=\"";
  std::ifstream release("/etc/os-release");
  for (std::string line; std::getline(release, line);) {
    if (!line.starts_with(key)) continue;
    return line.substr(key.size(), line.find('"', key.size()) - key.size()) + ", " + kernelName;
  }
  return kernelName;
}

std::string SystemWords(std::int32_t code) {
  const char* words = strerrordesc_np(code);
  return words != nullptr ? words : "Unknown error " + std::to_string(code);
}

}  // namespace vk32
