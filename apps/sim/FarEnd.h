// What stands at the other end of a host's line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32::sim {

/// A message that stands still for so long is given up, so that a broken one does not eat the next.
constexpr Time MessageGap = std::chrono::milliseconds(500);

/// Eats bytes, yields bytes, with time as an argument.
class FarEnd {
 public:
  virtual ~FarEnd() = default;

  /// The host has written.
  virtual void FromHost(std::string_view bytes, Time now) = 0;
  /// How many bytes it would take now.
  virtual std::size_t Room() const { return SIZE_MAX; }
  /// What has reached the host by `now`.
  virtual Bytes ToHost(Time now) = 0;
  /// When something happens next of its own; nothing if it only waits.
  virtual std::optional<Time> NextDue() const = 0;
  /// It has been pulled off the line.
  virtual bool Gone() const { return false; }
};

}  // namespace vk32::sim
