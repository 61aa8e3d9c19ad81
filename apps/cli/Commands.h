// The commands of vk32-cli that talk to a device.
#pragma once

#include <string>

#include "cli/Program.h"

namespace vk32 {

// Each writes its result to the console's `out`, and ends with a Failure if its job is not done.

struct ReadOptions {
  std::string product, model, port;
  std::string output;  // empty: the file goes to `out`
};
void ReadConfiguration(World& world, const ReadOptions& options);

struct WriteOptions {
  std::string file, port;
  std::string name;     // of the file to the user
  std::string backup;   // folder that takes what the device had before; empty: none
  bool verify = false;  // reads it back
};
/// Failure Different if the device does not give back what was sent. What no page shows is not compared.
void WriteConfiguration(World& world, const WriteOptions& options);

void ShowDeviceInfo(World& world, const std::string& product, const std::string& port, bool json);
void InstallFirmware(World& world, const std::string& file, const std::string& port);
void ListPorts(World& world, bool json);

}  // namespace vk32
