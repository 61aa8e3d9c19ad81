// The search for the device behind a port name.
#include "platform/PortNames.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <tuple>
#include <utility>

namespace vk32 {
namespace {

namespace fs = std::filesystem;

std::string FirstLine(const fs::path& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  return line;
}

/// The names in a folder; none if it can't be read.
std::vector<std::string> Names(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code fault;
  for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault)) {
    names.push_back(entry->path().filename());
  }
  return names;
}

/// The number behind `prefix` in a device name; -1 if the name is no such prefix and number.
int NumberBehind(std::string_view prefix, std::string_view name) {
  if (name.substr(0, prefix.size()) != prefix) return -1;
  name.remove_prefix(prefix.size());
  int number = -1;
  const auto [stopped, fault] = std::from_chars(name.data(), name.data() + name.size(), number);
  return fault == std::errc{} && stopped == name.data() + name.size() ? number : -1;
}

bool IsUsb(std::string_view name) { return NumberBehind("ttyUSB", name) >= 0 || NumberBehind("ttyACM", name) >= 0; }

/// Puts "ttyUSB10" behind "ttyUSB9".
bool InNameOrder(const std::string& a, const std::string& b) {
  const auto key = [](const std::string& name) {
    const auto digits = name.find_last_not_of("0123456789") + 1;
    return std::make_tuple(name.substr(0, digits), name.size(), name);
  };
  return key(a) < key(b);
}

}  // namespace

PortNames::PortNames(std::string runtimeFolder, std::string deviceFolder, std::string systemFolder)
    : runtimeFolder_(std::move(runtimeFolder)),
      deviceFolder_(std::move(deviceFolder)),
      systemFolder_(std::move(systemFolder)) {}

void PortNames::Assign(std::string_view portName, std::string path) {
  assigned_.insert_or_assign(std::string(portName), std::move(path));
}

std::optional<PortDevice> PortNames::Find(std::string_view portName) const {
  const int number = Number(portName);
  if (number == 0) return std::nullopt;
  if (const auto at = assigned_.find(portName); at != assigned_.end()) return Describe(at->second);
  const std::string link = "/" + std::string(portName);
  if (RuntimeFolderIsSafe()) {
    if (auto device = Behind(runtimeFolder_ + link)) return device;
  }
  if (auto device = Behind(deviceFolder_ + link)) return device;
  const std::vector<std::string> devices = RealDevices();
  const auto index = static_cast<std::size_t>(number - 1);
  if (index >= devices.size()) return std::nullopt;
  return Describe(deviceFolder_ + "/" + devices[index]);
}

std::string PortNames::RuntimeFolder() {
  if (const char* folder = std::getenv("XDG_RUNTIME_DIR"); folder != nullptr && folder[0] == '/') {
    return std::string(folder) + "/vk32";
  }
  const std::string user = std::to_string(geteuid());
  std::error_code fault;
  return fs::is_directory("/run/user/" + user, fault) ? "/run/user/" + user + "/vk32" : "/tmp/vk32-" + user;
}

int PortNames::Number(std::string_view portName) {
  const int number = NumberBehind("COM", portName);
  return number >= 1 && number <= MaxPorts && portName == "COM" + std::to_string(number) ? number : 0;
}

PortDevice PortNames::Describe(const std::string& path) const {
  std::error_code fault;
  const fs::path real = fs::canonical(path, fault);
  if (fault) return {path, path};
  const std::string name = real.filename();
  std::string description = real;
  if (NumberBehind("ttyS", name) >= 0) {
    description += ", on-board";
  } else if (IsUsb(name)) {
    // The product stands with the adapter, one or two folders above the interface that carries the port.
    fs::path device = fs::canonical(systemFolder_ + "/class/tty/" + name + "/device", fault);
    for (int up = 0; !fault && up < 3; ++up, device = device.parent_path()) {
      if (const std::string product = FirstLine(device / "product"); !product.empty()) {
        description += ", " + product;
        break;
      }
    }
  }
  return {real, description};
}

std::optional<PortDevice> PortNames::Behind(const std::string& link) const {
  std::error_code fault;
  if (!fs::exists(link, fault)) return std::nullopt;
  return Describe(link);
}

bool PortNames::RuntimeFolderIsSafe() const {
  struct stat folder {};
  return !runtimeFolder_.empty() && lstat(runtimeFolder_.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) &&
         folder.st_uid == geteuid() && (folder.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool PortNames::HasHardware(const std::string& deviceName) const {
  const fs::path port = systemFolder_ + "/class/tty/" + deviceName;
  // The system keeps names ready for ports that were never found; their type is 0.
  if (const std::string type = FirstLine(port / "type"); !type.empty()) return type != "0";
  std::error_code fault;
  const fs::path device = fs::canonical(port / "device", fault);
  return !fault && device.string().find("/serial8250") == std::string::npos;
}

std::vector<std::string> PortNames::RealDevices() const {
  std::vector<std::string> onBoard, others, adapters;
  for (const std::string& name : Names(systemFolder_ + "/class/tty")) {
    std::error_code fault;
    if (!fs::exists(deviceFolder_ + "/" + name, fault)) continue;
    if (IsUsb(name)) others.push_back(name);
    if (NumberBehind("ttyS", name) >= 0 && HasHardware(name)) onBoard.push_back(name);
  }
  std::sort(onBoard.begin(), onBoard.end(), InNameOrder);
  std::sort(others.begin(), others.end(), InNameOrder);
  std::vector<std::string> paths = Names(deviceFolder_ + "/serial/by-path");
  std::sort(paths.begin(), paths.end());
  for (const std::string& path : paths) {
    std::error_code fault;
    adapters.push_back(fs::canonical(deviceFolder_ + "/serial/by-path/" + path, fault).filename());
  }
  adapters.insert(adapters.end(), others.begin(), others.end());
  // One adapter may have several paths.
  std::vector<std::string> devices = std::move(onBoard);
  for (const std::string& name : adapters) {
    const bool known = std::find(devices.begin(), devices.end(), name) != devices.end();
    if (IsUsb(name) && !known) devices.push_back(name);
  }
  return devices;
}

}  // namespace vk32
