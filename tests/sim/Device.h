// A simulated gateway without a line.
#pragma once

#include <string>
#include <string_view>

#include "sim/Gateway.h"

namespace vk32::sim {

/// A gateway, and all that it has said.
struct Device {
  explicit Device(Misbehaviour misbehaviour = {}, std::string_view name = "RB2000")
      : kind(*FindGatewayKind(name)), gateway(kind, misbehaviour) {
    gateway.OnStored = [this](const std::string& size) { stored += size + "\n"; };
  }
  Bytes Hear(const Bytes& bytes, Time now = {}) {
    gateway.Receive(bytes, now);
    Bytes said;
    while (const auto piece = gateway.NextPiece()) said += piece->bytes;
    return said;
  }

  const GatewayKind& kind;
  Gateway gateway;
  std::string stored;  // a line each time
};

}  // namespace vk32::sim
