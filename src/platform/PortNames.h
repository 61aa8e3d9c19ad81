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
  std::string kind;         // "FT232R USB UART", "Serial port"; empty: the system does not tell
  std::string socket = {};  // where the device sits, if the path doesn't tell: "USB\VID_0403&PID_6001\A50285BI"

  /// "/dev/ttyUSB0, FT232R USB UART"
  std::string Description() const {
    return path + (kind.empty() ? "" : ", " + kind) + (socket.empty() ? "" : ", " + socket);
  }
};

struct FoundPort {
  std::string name;  // "COM3"
  PortDevice device;
};

/// Where ports come and go.
struct PortPlaces {
  std::vector<std::string> folders;
  std::vector<std::string> paths;
};

/// Looks a port name up, first hit wins:
/// 1. what was given by Assign;
/// 2. a link COMn in the user's runtime folder vk32/, if the folder is the user's own and nobody else can write to it;
/// 3. /dev/COMn, an administrator's link (a link that leads nowhere counts neither here nor there);
/// 4. the n-th serial device that really exists: on-board ports with hardware behind them by their number, then USB
///    adapters by their stable path, then the others by name.
/// Windows numbers its ports itself: there the name is the device, and 2 to 4 are that.
class PortNames {
 public:
  /// The folders can be others in tests. Empty `runtimeFolder`: there is none.
  explicit PortNames(std::string runtimeFolder = RuntimeFolder(), std::string deviceFolder = DeviceFolder(),
                     std::string systemFolder = "/sys");

  /// Puts a device behind a name for this run, ahead of the search.
  void Assign(std::string_view portName, std::string path);
  /// The same by an option of a command line, "COM3=/dev/ttyUSB0"; false if it is no such thing.
  bool AssignBy(std::string_view option);
  /// Searches anew, and from now on keeps to what it found behind this name, until the next call: the link that stood
  /// there, a USB adapter in its socket whatever its number, or the device. Nothing is kept if nothing was found.
  void Choose(std::string_view portName);
  /// Nothing if no device stands behind the name. A chosen or assigned device is given also while it is missing; its
  /// path then leads nowhere.
  std::optional<PortDevice> Find(std::string_view portName) const;
  /// The names behind which a device stands at this moment, in their order. The chosen name has the device that it
  /// keeps to, as long as that is there.
  std::vector<FoundPort> FindAll() const;
  /// What has changed when FindAll gives something else; some of it may not be there yet.
  PortPlaces Places() const;

  /// Why the search passes the runtime folder over, with what to do about it: "/tmp/vk32-1000 is a link and ...";
  /// empty if it is searched or there is none. With a port name: empty also if that name does not stand in it.
  std::string Ignored(std::string_view portName = {}) const;
  /// Why port names in a folder are not to be trusted: "is a link"; empty if they are, or if there is no such folder.
  static std::string WhyNotTrusted(const std::string& folder);
  /// "/run/user/1000/vk32", from XDG_RUNTIME_DIR; without that variable /run/user/UID/vk32, or /tmp/vk32-UID where the
  /// system keeps no runtime folders.
  static std::string RuntimeFolder();
  /// Where devices stand: "/dev".
  static std::string DeviceFolder();
  /// What lists devices on a command line: "ls /dev/tty*".
  static std::string ListCommand();
  /// A device stands at that path.
  static bool DeviceIsThere(const std::string& path);
  /// The path of a device as Find gives it, from any that leads to it; empty if none stands there.
  static std::string DeviceAt(const std::string& path);
  /// 1 to 32 for "COM1" to "COM32"; 0 for any other text.
  static int Number(std::string_view portName);

 private:
  enum class Kind { None, OnBoard, Usb, Other };
  struct Chosen {
    std::string portName;
    std::string place;  // leads to the device for as long as it is there
    PortDevice device;  // as it was found
  };

  /// The place of what the search finds: a link or a device; empty if nothing. `devices`: those of rule 4.
  std::string Search(std::string_view portName, const std::vector<std::string>& devices) const;
  std::string SearchSystem(std::string_view portName, const std::vector<std::string>& devices) const;
  PortDevice Describe(const std::string& path) const;
  Kind KindOf(const std::string& deviceName) const;
  /// The places of the devices of rule 4, in their order: "/dev/ttyS0", "/dev/serial/by-path/...".
  std::vector<std::string> RealDevices() const;

  std::string runtimeFolder_;
  std::string deviceFolder_;
  std::string systemFolder_;
  std::map<std::string, std::string, std::less<>> assigned_;
  std::optional<Chosen> chosen_;
};

}  // namespace vk32
