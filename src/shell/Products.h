// The product family: what the rest of the system has to know of each product once it is chosen.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/Globals.h"

namespace vk32 {

/// A tool button of the product menu: its top in twips, or hidden.
constexpr int Hidden = -1;

struct Product {
  std::string_view name;
  std::string_view baudRate;
  std::string_view ledPattern;          // lines joined by CR LF, five blanks before each
  std::vector<std::int16_t> blockList;  // count, then block numbers; empty: the product sets none
  std::string_view wizard;              // form of the configuration
  int upgradeTop, deviceInfoTop, offlineTop;
};

struct Model {
  std::string_view name;
  std::vector<std::int16_t> blockList;
};

std::span<const Product> Products();
/// The models of the VK-RTX.
std::span<const Model> Models();
/// Fault 5 for a name that is no product.
const Product& FindProduct(std::string_view name);

/// Sets CurrentProduct, BaudRate, LEDPatternText, and BlockList where the product has one.
void SelectProduct(Globals& globals, std::string_view name);
/// Sets CurrentModel and BlockList. A name that is no model does nothing.
void SelectModel(Globals& globals, std::string_view name);

}  // namespace vk32
