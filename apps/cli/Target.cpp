// What a command is about: a product and its model, a port, a file.
#include "cli/Target.h"

#include <algorithm>
#include <set>

#include "app/Backstage.h"
#include "platform/Fault.h"
#include "platform/Paths.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

constexpr std::string_view ProductWithModels = "VK-RTX";

std::string FindModel(std::string_view part) {
  std::string found;
  for (const Model& model : Models()) {
    if (Lower(model.name).find(Lower(part)) == std::string::npos) continue;
    if (!found.empty()) return {};
    found = model.name;
  }
  return found;
}

/// The product of "RB2000", or of "VK-RTX-Modbus"; empty: the text names none.
std::string ProductNamed(const std::string& text) {
  const std::string wanted = Lower(text);
  for (const Product& product : Products()) {
    const bool models = product.name == ProductWithModels;
    const std::string name = Lower(product.name);
    if (wanted == name || (models && wanted.starts_with(name + "-"))) return std::string(product.name);
  }
  return {};
}

std::string ProductNames() {
  std::string names;
  for (const Product& product : Products()) names += (names.empty() ? "" : ", ") + std::string(product.name);
  return names;
}

std::string ModelNames() {
  std::string names;
  for (const Model& model : Models()) names += (names.empty() ? "\"" : " or \"") + std::string(model.name) + "\"";
  return names;
}

}  // namespace

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

Target FindTarget(const std::string& text, const std::string& model) {
  std::string name = ProductNamed(text);
  if (name.empty()) {
    throw Failure(ExitStatus::WrongUsage, "There is no product " + text + ". Choose one of " + ProductNames() + ".");
  }
  if (name != ProductWithModels) return {name, {}};
  const std::string found = FindModel(text.size() == name.size() ? model : text.substr(name.size() + 1));
  if (!found.empty()) return {name, found};
  throw Failure(ExitStatus::WrongUsage,
                "Which model of the " + name + "? Give it as --model " + ModelNames() + ", or a part of that.");
}

void RefuseProduct(const std::string& file, const std::string& how) {
  const std::string name = ProductNamed(file);
  if (name.empty() || IsThere(file)) return;
  throw Failure(ExitStatus::WrongUsage, "There is no file " + file + ". Name the product " + name + " " + how + ".");
}

Target TargetOfFile(const std::string& path) {
  FileKind kind;
  try {
    kind = KindOfFile(path);
  } catch (const RuntimeFault& fault) {
    const bool opened = fault.Code() == RuntimeFault::TypeMismatch || fault.Code() == RuntimeFault::InputPastEndOfFile;
    throw Failure(ExitStatus::FileRefused,
                  path + (opened ? " is no configuration file." : " can't be read: " + fault.Description() + "."));
  }
  const bool models = kind.product == ProductWithModels;
  const bool known = std::ranges::find(Products(), kind.product, &Product::name) != Products().end() &&
                     (!models || std::ranges::find(Models(), kind.model, &Model::name) != Models().end());
  if (known) return {kind.product, models ? kind.model : ""};
  throw Failure(ExitStatus::FileRefused, path + " names no product and model that VK32 knows.");
}

std::string FindPort(PortNames& names, const std::string& port) {
  if (PortNames::Number(port) != 0) return port;
  const std::string path = PortNames::DeviceAt(port);
  if (path.empty()) {
    throw Failure(ExitStatus::NoPort, "There is no port " + port +
                                          ". Give COM1 to COM32, or a device's path; `vk32-cli ports` lists them.");
  }
  std::set<std::string> taken;
  for (const auto& [name, device] : names.FindAll()) {
    if (device.path == path) return name;
    taken.insert(name);
  }
  int number = 1;
  while (number < MaxPorts && taken.contains("COM" + std::to_string(number))) ++number;
  std::string free = "COM" + std::to_string(number);
  names.Assign(free, path);
  return free;
}

}  // namespace vk32
