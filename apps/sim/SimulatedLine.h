// The line between a host and a simulated gateway: carries bytes at the true rate, or at once.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string_view>

#include "sim/FarEnd.h"
#include "sim/Gateway.h"

namespace vk32::sim {

class SimulatedLine : public FarEnd {
 public:
  /// `byteTime`: 10 bits at the line's rate; 0 carries everything at once.
  SimulatedLine(Gateway& gateway, Time byteTime) : gateway_(gateway), byteTime_(byteTime) {}

  static Time ByteTime(int baudRate) { return Time(std::chrono::seconds(10)) / baudRate; }

  void FromHost(std::string_view bytes, Time now) override;
  /// As a serial port's chip would: what is written beyond it is no longer held back by XOFF.
  std::size_t Room() const override;
  Bytes ToHost(Time now) override;
  std::optional<Time> NextDue() const override;
  bool Gone() const override { return unplugged_; }

 private:
  struct Carried {
    Time arrives;
    char byte;
  };

  void Carry(Time now);
  bool Count();

  Gateway& gateway_;
  Time byteTime_;
  std::deque<Carried> toDevice_, toHost_;
  Time deviceFree_{0}, hostFree_{0};  // when each direction can carry the next byte
  int carried_ = 0;
  bool unplugged_ = false;
};

}  // namespace vk32::sim
