// What a command is about: a product and its model, a port, a file.
#pragma once

#include <string>
#include <string_view>

#include "cli/World.h"

namespace vk32 {

struct Target {
  std::string product;
  std::string model;  // of the VK-RTX alone
};

/// With its capital letters of ASCII made small.
std::string Lower(std::string_view text);

/// "RB2000", "VK-RTX-Modbus", or "VK-RTX" with a model "Modbus": a part of the model's name will do, in any case.
/// Failure if that names no product, or leaves its model open.
Target FindTarget(const std::string& text, const std::string& model = {});
/// Failure if a product stands where a file should, and there is no such file. `how`: how the product is named there.
void RefuseProduct(const std::string& file, const std::string& how);
/// Of the product and the model that a configuration file names. Failure if it is none.
Target TargetOfFile(const std::string& path);

/// The port name for "COM3", or for a device's path, which stands behind a free name from now on. Failure if it is
/// neither.
std::string FindPort(PortNames& names, const std::string& port);

}  // namespace vk32
