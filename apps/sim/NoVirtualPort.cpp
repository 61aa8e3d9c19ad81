// A system on which a port needs hardware.
#include <stdexcept>

#include "sim/HostPort.h"

namespace vk32::sim {

std::string_view PortHelp() {
  return "A simulated gateway on a serial device. Ends on Ctrl+C; Ctrl+Break presses its Configure button.";
}

std::unique_ptr<HostPort> VirtualPort(const std::string&) {
  throw std::runtime_error(
      "Windows has no serial ports without hardware. Give --device COMn: the far end of a null modem cable, or of a "
      "pair of virtual ports.");
}

}  // namespace vk32::sim
