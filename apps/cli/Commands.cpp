// The commands of vk32-cli that talk to a device.
#include "cli/Commands.h"

#include <algorithm>
#include <ctime>

#include "cli/FileContent.h"
#include "cli/Json.h"
#include "forms/FieldNames.h"
#include "listing/Report.h"
#include "platform/Paths.h"
#include "platform/PortHolder.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

std::string DateAndTime(const EventLoop& loop) {
  const std::tm local = loop.LocalTime();
  char text[32];
  std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
  return text;
}

void ReadInto(World& world, const Target& target, const std::string& port, const std::string& path) {
  Program program(world, target);
  program.ChoosePort(port);
  program.OpenWizard();
  program.Upload();
  program.GoToApply();
  program.Save(path);
}

std::string BackUp(World& world, const Target& target, const std::string& port, const std::string& folder) {
  MakeFolder(folder);
  const std::string name = target.product + "-" + FileNameOf(port) + "-" + DateAndTime(world.loop);
  const std::string start = TextOf(PathOf(folder) / name);
  std::string path = start + ".cfg";
  // There can be more than one in a second, and an hour comes twice when the clock is changed.
  for (int number = 2; IsThere(path); ++number) path = start + "-" + std::to_string(number) + ".cfg";
  ReadInto(world, target, port, path);
  return path;
}

}  // namespace

void ReadConfiguration(World& world, const ReadOptions& options) {
  const Target target = FindTarget(options.product, options.model);
  if (!options.output.empty()) {
    ReadInto(world, target, options.port, options.output);
    world.console.err << "The " << target.product << " on " << options.port << " has been read into " << options.output
                      << ".\n";
    return;
  }
  const TemporaryFolder folder;
  const std::string path = folder.path + "/read.cfg";
  ReadInto(world, target, options.port, path);
  world.console.out << ContentOf(path);
}

void WriteConfiguration(World& world, const WriteOptions& options) {
  const Target target = TargetOfFile(options.file);
  if (!options.backup.empty()) {
    const std::string path = BackUp(world, target, options.port, options.backup);
    world.console.err << "What the " << target.product << " had is in " << path << ".\n";
  }
  Program program(world, target);
  program.ChoosePort(options.port);
  program.OpenWizard();
  program.Open(options.file);
  program.GoToApply();
  program.Download(options.verify);
  world.console.err << options.name << " has been written to the " << target.product << " on " << options.port
                    << (options.verify ? ", which holds what was sent: verified.\n" : ".\n");
}

void ShowDeviceInfo(World& world, const std::string& product, const std::string& port, bool json) {
  // Whether a product tells what it is does not depend on the model.
  const Target target = FindTarget(product, std::string(Models().front().name));
  if (FindProduct(target.product).deviceInfoTop == Hidden) {
    throw Failure(ExitStatus::WrongUsage, "The " + target.product + " does not tell what it is.");
  }
  Program program(world, target);
  program.ChoosePort(port);
  program.ReadDeviceInfo();
  Json values;
  for (const Control* control : program.FormOf("DeviceInfo").Controls()) {
    if (control->GetKind() != Control::Kind::TextBox) continue;
    const std::string name = NameOf(*control);
    values[name] = ToUtf8(control->Words());
    if (!json) world.console.out << name << ": " << Printable(control->Words()) << "\n";
  }
  if (json) world.console.out << Printed(values);
}

void InstallFirmware(World& world, const std::string& file, const std::string& port) {
  const auto upgradable = std::ranges::find_if(Products(), [](const Product& p) { return p.upgradeTop != Hidden; });
  // The firmware file does not depend on the model.
  Program program(world, {std::string(upgradable->name), std::string(Models().front().name)});
  program.ChoosePort(port);
  program.InstallFirmware(file);
  world.console.err << file << " has been installed in the " << upgradable->name << " on " << port << ".\n";
}

void ListPorts(World& world, bool json) {
  Json list = Json::array();
  for (const auto& [name, device] : world.names.FindAll()) {
    const auto holder = HolderOf(device.path);
    const std::string words = holder ? holder->program + " (process " + std::to_string(holder->process) + ")" : "";
    const bool known = holder || TellsHolders();
    list.push_back({{"name", name},
                    {"device", device.path},
                    {"description", device.kind},
                    {"heldBy", known ? Json(words) : Json(nullptr)}});
    if (json) continue;
    world.console.out << name << "  " << device.Description();
    if (known) world.console.out << "  " << (holder ? "held by " + words : "free");
    world.console.out << "\n";
  }
  if (json) world.console.out << Printed(list);
  if (list.empty()) world.console.err << "No serial device is plugged in.\n";
}

}  // namespace vk32
