// The system tells nobody which program holds a serial device.
#include "platform/PortHolder.h"

namespace vk32 {

std::optional<Holder> HolderOf(const std::string&) { return std::nullopt; }

bool TellsHolders() { return false; }

}  // namespace vk32
