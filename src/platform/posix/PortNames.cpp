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

#include "platform/Paths.h"
#include "platform/posix/PortOpeners.h"

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

/// A device hangs on a USB bus if one is among the folders above it: "/sys/devices/.../usb1/1-2/1-2:1.0/ttyUSB0".
bool OnUsb(const fs::path& device) {
  return std::any_of(device.begin(), device.end(),
                     [](const fs::path& folder) { return NumberBehind("usb", folder.string()) >= 0; });
}

/// Where a path leads, links followed; empty if nowhere.
std::string Real(const std::string& path) {
  std::error_code fault;
  return fs::canonical(path, fault);
}

/// Puts "ttyUSB10" behind "ttyUSB9".
bool InNameOrder(const std::string& a, const std::string& b) {
  const auto key = [](const std::string& name) {
    const auto digits = name.find_last_not_of("0123456789") + 1;
    return std::make_tuple(name.substr(0, digits), name.size(), name);
  };
  return key(a) < key(b);
}

}  // namespace

bool PortNames::DeviceIsThere(const std::string& path) { return IsThere(path); }

std::string PortNames::DeviceAt(const std::string& path) { return Real(path); }

PortPlaces PortNames::Places() const {
  const std::string serial = deviceFolder_ + "/serial";
  PortPlaces places{{deviceFolder_, serial, serial + "/by-path"}, {}};
  if (!runtimeFolder_.empty()) places.folders.push_back(runtimeFolder_);
  for (const auto& [name, path] : assigned_) places.paths.push_back(path);
  for (const std::string& folder : {runtimeFolder_, deviceFolder_}) {
    for (const std::string& name : Names(folder)) {
      if (Number(name) != 0) places.paths.push_back(fs::path(folder) / name);
    }
  }
  return places;
}

std::string PortNames::SearchSystem(std::string_view portName, const std::vector<std::string>& devices) const {
  const std::string link = "/" + std::string(portName);
  const bool trusted = !runtimeFolder_.empty() && WhyNotTrusted(runtimeFolder_).empty();
  if (trusted && IsThere(runtimeFolder_ + link)) return runtimeFolder_ + link;
  if (IsThere(deviceFolder_ + link)) return deviceFolder_ + link;
  const auto index = static_cast<std::size_t>(Number(portName) - 1);
  return index < devices.size() ? devices[index] : "";
}

std::string PortNames::Ignored(std::string_view portName) const {
  if (runtimeFolder_.empty()) return "";
  const std::string why = WhyNotTrusted(runtimeFolder_);
  std::error_code fault;
  if (why.empty() || !fs::exists(fs::symlink_status(fs::path(runtimeFolder_) / portName, fault))) return "";
  return runtimeFolder_ + " " + why + " and is passed over: remove it, or set XDG_RUNTIME_DIR to a folder of your own";
}

std::string PortNames::WhyNotTrusted(const std::string& folder) {
  struct stat found {};
  if (lstat(folder.c_str(), &found) != 0) return "";
  if (S_ISLNK(found.st_mode)) return "is a link";
  if (!S_ISDIR(found.st_mode)) return "is no folder";
  if (found.st_uid != geteuid()) return "belongs to another user";
  return (found.st_mode & (S_IWGRP | S_IWOTH)) != 0 ? "can be written to by others" : "";
}

std::string PortNames::RuntimeFolder() {
  if (const char* folder = std::getenv("XDG_RUNTIME_DIR"); folder != nullptr && folder[0] == '/') {
    return std::string(folder) + "/vk32";
  }
  const std::string user = std::to_string(geteuid());
  std::error_code fault;
  return fs::is_directory("/run/user/" + user, fault) ? "/run/user/" + user + "/vk32" : "/tmp/vk32-" + user;
}

std::string PortNames::DeviceFolder() { return "/dev"; }

std::string PortNames::ListCommand() { return "ls /dev/tty*"; }

PortDevice PortNames::Describe(const std::string& path) const {
  const std::string real = Real(path);
  if (real.empty()) return {path, ""};
  const std::string name = fs::path(real).filename();
  struct stat device {};
  switch (KindOf(name)) {
    case Kind::None: return {real, stat(real.c_str(), &device) == 0 && IsPseudoTerminal(device) ? "Virtual port" : ""};
    case Kind::OnBoard: return {real, "Serial port"};
    case Kind::Other: return {real, name.starts_with("rfcomm") ? "Bluetooth" : "USB gadget"};
    case Kind::Usb: break;
  }
  // The product stands with the adapter, one or two folders above the interface that carries the port.
  fs::path adapter = Real(systemFolder_ + "/class/tty/" + name + "/device");
  for (int up = 0; up < 3; ++up, adapter = adapter.parent_path()) {
    if (const std::string product = FirstLine(adapter / "product"); !product.empty()) return {real, product};
  }
  return {real, "USB serial port"};
}

PortNames::Kind PortNames::KindOf(const std::string& deviceName) const {
  // These exist once someone has set them up, and hang on no device before a partner is connected, if ever.
  if (NumberBehind("rfcomm", deviceName) >= 0 || NumberBehind("ttyGS", deviceName) >= 0) return Kind::Other;
  const std::string port = systemFolder_ + "/class/tty/" + deviceName;
  // Consoles, pseudo-terminals and the kernel's own have no device.
  if (!IsThere(port + "/device")) return Kind::None;
  const std::string device = Real(port + "/device");
  // The system keeps names ready for ports that were never found; their type is 0.
  const std::string type = FirstLine(port + "/type");
  if (type.empty() ? device.find("/serial8250") != std::string::npos : type == "0") return Kind::None;
  return OnUsb(device) ? Kind::Usb : Kind::OnBoard;
}

std::vector<std::string> PortNames::RealDevices() const {
  std::map<Kind, std::vector<std::string>> names;
  std::vector<std::string> all = Names(systemFolder_ + "/class/tty");
  std::sort(all.begin(), all.end(), InNameOrder);
  for (const std::string& name : all) {
    const Kind kind = KindOf(name);
    if (kind != Kind::None && IsThere(deviceFolder_ + "/" + name)) names[kind].push_back(name);
  }
  std::vector<std::string> paths = Names(deviceFolder_ + "/serial/by-path");
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> places;
  for (const std::string& name : names[Kind::OnBoard]) places.push_back(deviceFolder_ + "/" + name);
  for (const std::string& path : paths) {
    const std::string place = deviceFolder_ + "/serial/by-path/" + path;
    // One adapter may have several paths, and an on-board port may have one.
    auto& adapters = names[Kind::Usb];
    const auto at = std::find(adapters.begin(), adapters.end(), fs::path(Real(place)).filename());
    if (at == adapters.end()) continue;
    places.push_back(place);
    adapters.erase(at);
  }
  std::vector<std::string> rest = names[Kind::Usb];
  rest.insert(rest.end(), names[Kind::Other].begin(), names[Kind::Other].end());
  std::sort(rest.begin(), rest.end(), InNameOrder);
  for (const std::string& name : rest) places.push_back(deviceFolder_ + "/" + name);
  return places;
}

}  // namespace vk32
