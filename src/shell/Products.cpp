// The product family.
#include "shell/Products.h"

#include "platform/Fault.h"

namespace vk32 {

std::span<const Product> Products() {
  constexpr std::string_view rbPattern = "     CHA:  Red\r\n     CHB:  Green\r\n     CHC:  Red\r\n     Power:  Green";
  // clang-format off
  static const Product products[] = {
      // name     baud     LED pattern                                   blocks  wizard                upgrade info    offline
      {"VK5300", "19200",
       "     Net Status:  Off\r\n     DH Network:  Off\r\n     Mod Status:  Flashing Green",
                                                                         {1, 3}, "Configuration_VK5300", Hidden, 3600,   4200},
      {"VK-RTX", "19200",
       "     CHA:  Off\r\n     CHB:  Off\r\n     Diagnostic:  Flashing Green\r\n     Power:  Green",
                                                                         {},     "Configuration_VKRTX",  3600,   Hidden, 4800},
      {"RB3000", "19200", rbPattern,                                     {},     "Configuration_RB3000", Hidden, Hidden, 3600},
      {"RB2000", "9600",  rbPattern,                                     {},     "Configuration_RB2000", Hidden, Hidden, 3600},
      {"RBCard", "19200",
       "     Status:  Red\r\n     Net:      Off\r\n     Bus:      Green",
                                                                         {},     "Configuration_RBCard", Hidden, Hidden, 3600},
  };
  // clang-format on
  return products;
}

std::span<const Model> Models() {
  static const Model models[] = {
      {"AB Ethernet, ASCII, DF1", {12, 1, 2, 3, 4, 5, 10, 50, 51, 100, 101, 102, 103}},
      {"AB Ethernet, Modbus",
       {25, 1, 2, 3, 4, 20, 21, 22, 23, 24, 25, 26, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43}},
  };
  return models;
}

const Product& FindProduct(std::string_view name) {
  for (const Product& product : Products()) {
    if (product.name == name) return product;
  }
  throw RuntimeFault(RuntimeFault::InvalidCall);
}

void SelectProduct(Globals& globals, std::string_view name) {
  const Product& product = FindProduct(name);
  globals.CurrentProduct = product.name;
  globals.BaudRate = product.baudRate;
  globals.LEDPatternText = product.ledPattern;
  if (!product.blockList.empty()) globals.BlockList = product.blockList;
}

void SelectModel(Globals& globals, std::string_view name) {
  for (const Model& model : Models()) {
    if (model.name != name) continue;
    globals.CurrentModel = model.name;
    globals.BlockList = model.blockList;
  }
}

}  // namespace vk32
