// The port through which a simulated device and its host meet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32::sim {

class HostPort {
 public:
  virtual ~HostPort() = default;

  /// For the user: "COM5, /dev/pts/3".
  virtual std::string Title() const = 0;
  /// Readable when the host has written.
  virtual int Fd() const = 0;
  /// What the host has written, up to `most` bytes; empty if nothing waits.
  virtual Bytes Read(std::size_t most = SIZE_MAX) = 0;
  /// Goes on with what was written before, too; to be called again at the end of Sending.
  virtual void Write(std::string_view bytes) = 0;
  /// Whether what the host writes from now on has to wait with the host, since the line carries enough already.
  virtual void HoldHost(bool) {}
  virtual WaitFor Sending() const { return {-1}; }
};

/// For the user: what a simulated gateway stands on, and what ends it and presses its Configure button.
std::string_view PortHelp();

/// A port that needs no hardware, under a port name if one is told. std::runtime_error, with words for the user, if the
/// name can't be had, or the system has no such ports.
std::unique_ptr<HostPort> VirtualPort(const std::string& portName);

}  // namespace vk32::sim
