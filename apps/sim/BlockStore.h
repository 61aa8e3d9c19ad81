// The numbered parameter blocks of a simulated gateway.
#pragma once

#include <map>

#include "platform/SerialDriver.h"

namespace vk32::sim {

/// By their numbers.
using Blocks = std::map<int, Bytes>;

/// What an exchange writes comes into force as one, at the end of the exchange.
class BlockStore {
 public:
  /// It has the blocks of this configuration, no more and no fewer.
  explicit BlockStore(Blocks factory) : inForce_(std::move(factory)) {}

  const Blocks& InForce() const { return inForce_; }
  /// Keeps the data for the end of the exchange. False if it has no such block, or no room in it for so much.
  bool Stage(int number, const Bytes& data);
  /// What is kept comes into force. Returns how many blocks that are.
  int Commit();
  /// What is kept is forgotten.
  void Abandon() { staged_.clear(); }

 private:
  Blocks inForce_, staged_;
};

}  // namespace vk32::sim
