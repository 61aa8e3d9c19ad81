// Which device stands behind the port names "COM1" to "COM32".
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vk32 {

constexpr int MaxPorts = 32;

struct PortDevice {
  std::string path;         // the device to open, links followed
  std::string description;  // for a tool tip: "/dev/ttyUSB0, FT232R USB UART"
};

/// Looks a port name up, first hit wins:
/// 1. what was given by Assign;
/// 2. a link COMn in the user's runtime folder vk32/, if the folder is the user's own and nobody else can write to it;
/// 3. /dev/COMn, an administrator's link (a link that leads nowhere counts neither here nor there);
/// 4. the n-th serial device that really exists: on-board ports with hardware behind them by their number, then USB
///    adapters by their stable path.
class PortNames {
 public:
  /// The folders can be others in tests. Empty `runtimeFolder`: there is none.
  explicit PortNames(std::string runtimeFolder = RuntimeFolder(), std::string deviceFolder = "/dev",
                     std::string systemFolder = "/sys");

  /// Puts a device behind a name for this run, ahead of the search.
  void Assign(std::string_view portName, std::string path);
  /// Nothing if no device stands behind the name.
  std::optional<PortDevice> Find(std::string_view portName) const;

  /// "/run/user/1000/vk32", from XDG_RUNTIME_DIR; without that variable /run/user/UID/vk32, or /tmp/vk32-UID where the
  /// system keeps no runtime folders.
  static std::string RuntimeFolder();
  /// 1 to 32 for "COM1" to "COM32"; 0 for any other text.
  static int Number(std::string_view portName);

 private:
  PortDevice Describe(const std::string& path) const;
  /// What a link, or a device itself, leads to, if that exists.
  std::optional<PortDevice> Behind(const std::string& link) const;
  bool RuntimeFolderIsSafe() const;
  bool HasHardware(const std::string& deviceName) const;
  /// The names of the devices of rule 4, in their order: "ttyS0", "ttyUSB1".
  std::vector<std::string> RealDevices() const;

  std::string runtimeFolder_;
  std::string deviceFolder_;
  std::string systemFolder_;
  std::map<std::string, std::string, std::less<>> assigned_;
};

}  // namespace vk32
