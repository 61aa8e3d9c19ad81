// The ports that the system has numbered, and what its device list tells of them.
#include "platform/PortNames.h"

#include "platform/win32/Win32.h"
// Behind the header of the system.
#include <setupapi.h>

#include <algorithm>
#include <cctype>
#include <vector>

namespace vk32 {
namespace {

constexpr std::string_view DevicePrefix = R"(\\.\)";
constexpr GUID PortsClass = {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

/// "COM12" of "\\.\com12" as well; a name of another kind as it stands.
std::string NameIn(std::string_view path) {
  if (path.starts_with(DevicePrefix)) path.remove_prefix(DevicePrefix.size());
  std::string name(path);
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
  return name.starts_with("COM") ? name : std::string(path);
}

/// The devices of the system's class of ports, those that are not plugged in aside.
class DeviceList {
 public:
  DeviceList() : list_(SetupDiGetClassDevsW(&PortsClass, nullptr, nullptr, DIGCF_PRESENT)) {}
  ~DeviceList() {
    if (list_ != INVALID_HANDLE_VALUE) SetupDiDestroyDeviceInfoList(list_);
  }
  DeviceList(const DeviceList&) = delete;
  DeviceList& operator=(const DeviceList&) = delete;

  /// The device that has the port name; its path is that name.
  PortDevice Find(const std::string& portName) const {
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD i = 0; list_ != INVALID_HANDLE_VALUE && SetupDiEnumDeviceInfo(list_, i, &device) != 0; ++i) {
      if (PortName(device) == portName) return {portName, Kind(device, portName), Socket(device)};
    }
    return {portName, "Serial port"};
  }

 private:
  std::string PortName(SP_DEVINFO_DATA& device) const {
    const HKEY key = SetupDiOpenDevRegKey(list_, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return "";
    wchar_t name[64];
    DWORD size = sizeof name;
    const bool told = RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, name, &size) == ERROR_SUCCESS;
    RegCloseKey(key);
    return told ? NarrowOf(name) : "";
  }

  /// "USB Serial Port", of "USB Serial Port (COM5)".
  std::string Kind(SP_DEVINFO_DATA& device, const std::string& portName) const {
    wchar_t words[256] = {};
    for (const DWORD property : {SPDRP_FRIENDLYNAME, SPDRP_DEVICEDESC}) {
      if (SetupDiGetDeviceRegistryPropertyW(list_, &device, property, nullptr, reinterpret_cast<BYTE*>(words),
                                            sizeof words - sizeof *words, nullptr) != 0) {
        break;
      }
    }
    std::string kind = NarrowOf(words);
    const std::string number = " (" + portName + ")";
    if (kind.ends_with(number)) kind.resize(kind.size() - number.size());
    return kind.empty() ? "Serial port" : kind;
  }

  std::string Socket(SP_DEVINFO_DATA& device) const {
    wchar_t path[256] = {};
    SetupDiGetDeviceInstanceIdW(list_, &device, path, static_cast<DWORD>(std::size(path)), nullptr);
    return NarrowOf(path);
  }

  HDEVINFO list_;
};

}  // namespace

std::string PortNames::DeviceFolder() { return std::string(DevicePrefix); }

std::string PortNames::ListCommand() { return "vk32-cli ports"; }

bool PortNames::DeviceIsThere(const std::string& path) {
  wchar_t target[512];
  return !path.empty() && QueryDosDeviceW(WideOf(NameIn(path)).c_str(), target, std::size(target)) != 0;
}

std::string PortNames::DeviceAt(const std::string& path) { return DeviceIsThere(path) ? NameIn(path) : ""; }

PortPlaces PortNames::Places() const { return {}; }

std::string PortNames::SearchSystem(std::string_view portName, const std::vector<std::string>&) const {
  const std::string name(portName);
  return deviceFolder_ == DevicePrefix && DeviceIsThere(name) ? name : "";
}

std::string PortNames::Ignored(std::string_view) const { return ""; }

std::string PortNames::WhyNotTrusted(const std::string&) { return ""; }

std::string PortNames::RuntimeFolder() { return ""; }

PortDevice PortNames::Describe(const std::string& path) const {
  return DeviceIsThere(path) ? DeviceList().Find(NameIn(path)) : PortDevice{path, ""};
}

std::vector<std::string> PortNames::RealDevices() const { return {}; }

}  // namespace vk32
