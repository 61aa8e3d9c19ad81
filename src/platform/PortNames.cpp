// The names of ports, and what the user has put behind them.
#include "platform/PortNames.h"

#include <utility>

namespace vk32 {

PortNames::PortNames(std::string runtimeFolder, std::string deviceFolder, std::string systemFolder)
    : runtimeFolder_(std::move(runtimeFolder)),
      deviceFolder_(std::move(deviceFolder)),
      systemFolder_(std::move(systemFolder)) {}

void PortNames::Assign(std::string_view portName, std::string path) {
  assigned_.insert_or_assign(std::string(portName), std::move(path));
}

bool PortNames::AssignBy(std::string_view option) {
  const std::size_t sign = std::min(option.find('='), option.size());
  const std::string_view name = option.substr(0, sign), path = option.substr(std::min(sign + 1, option.size()));
  if (Number(name) == 0 || path.empty()) return false;
  Assign(name, std::string(path));
  return true;
}

void PortNames::Choose(std::string_view portName) {
  chosen_.reset();
  if (const std::string place = Search(portName, RealDevices()); !place.empty()) {
    chosen_ = {std::string(portName), place, Describe(place)};
  }
}

std::optional<PortDevice> PortNames::Find(std::string_view portName) const {
  if (chosen_ && chosen_->portName == portName) {
    // A device of the same name may be another one by now: only the place tells.
    return DeviceIsThere(chosen_->place) ? Describe(chosen_->place) : PortDevice{chosen_->place, chosen_->device.kind};
  }
  const std::string place = Search(portName, RealDevices());
  if (place.empty()) return std::nullopt;
  return Describe(place);
}

std::vector<FoundPort> PortNames::FindAll() const {
  const std::vector<std::string> devices = RealDevices();
  std::vector<FoundPort> found;
  for (int number = 1; number <= MaxPorts; ++number) {
    const std::string name = "COM" + std::to_string(number);
    const bool kept = chosen_ && chosen_->portName == name && DeviceIsThere(chosen_->place);
    const std::string place = kept ? chosen_->place : Search(name, devices);
    if (DeviceIsThere(place)) found.push_back({name, Describe(place)});
  }
  return found;
}

std::string PortNames::Search(std::string_view portName, const std::vector<std::string>& devices) const {
  if (Number(portName) == 0) return "";
  const auto at = assigned_.find(portName);
  return at != assigned_.end() ? at->second : SearchSystem(portName, devices);
}

int PortNames::Number(std::string_view portName) {
  for (int number = 1; number <= MaxPorts; ++number) {
    if (portName == "COM" + std::to_string(number)) return number;
  }
  return 0;
}

}  // namespace vk32
