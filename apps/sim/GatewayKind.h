// The products that can be simulated.
#pragma once

#include <span>
#include <string_view>

#include "platform/SerialDriver.h"
#include "sim/BlockStore.h"

namespace vk32::sim {

/// How a product tells its device information.
enum class InfoStyle { None, OneRecord, Pieces };

/// What is particular to a product, or to one model of it.
struct GatewayKind {
  std::string_view name;  // on the command line
  std::string_view product;
  std::string_view model;  // empty: the product has but one
  int baudRate;            // bit/s
  int headerLength;        // bytes before the image in an upload
  Bytes factoryImage;      // empty: it has none
  Blocks factoryBlocks;    // empty: it has none
  InfoStyle info;
  bool takesXmodem;  // in its recovery menu
  bool restarts;     // when it is told to
};

std::span<const GatewayKind> GatewayKinds();
/// nullptr for a name that none of them has.
const GatewayKind* FindGatewayKind(std::string_view name);

}  // namespace vk32::sim
