// A configuration as vk32-cli reads it, and the commands that only look at one.
#pragma once

#include <string>
#include <vector>

#include "cli/Target.h"
#include "listing/Listing.h"

namespace vk32 {

struct Configuration {
  Target target;
  std::string source;  // "COM3", or a file's path
  Listing listing;     // its controls are gone
};

Configuration LoadFile(World& world, const std::string& path);
Configuration LoadDevice(World& world, const Target& target, const std::string& port);
/// A file, or "VK-RTX-Modbus@COM3".
Configuration Load(World& world, const std::string& what);

enum class ShowAs { Text, Json, Html };
/// `output`: the file that takes it; empty: it goes to `out`.
void ShowConfiguration(World& world, const Configuration& configuration, ShowAs as, const std::string& output);
/// Failure Different if they are.
void ShowDifferences(World& world, const std::string& left, const std::string& right, bool json);
/// Finishes each file without sending. Failure of the first one that is refused, after all have had their turn.
void CheckFiles(World& world, const std::vector<std::string>& files);

/// One line each, with both sides below it.
std::string DifferenceLines(const std::vector<Difference>& differences);

}  // namespace vk32
