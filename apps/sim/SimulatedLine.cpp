// The line between a host and a simulated gateway.
#include "sim/SimulatedLine.h"

#include <algorithm>
#include <cstdint>

namespace vk32::sim {

void SimulatedLine::FromHost(std::string_view bytes, Time now) {
  for (const char byte : bytes) {
    deviceFree_ = std::max(deviceFree_, now) + byteTime_;
    toDevice_.push_back({deviceFree_, byte});
  }
}

Bytes SimulatedLine::ToHost(Time now) {
  Carry(now);
  Bytes bytes;
  while (!toHost_.empty() && toHost_.front().arrives <= now && Count()) {
    bytes += toHost_.front().byte;
    toHost_.pop_front();
  }
  return bytes;
}

std::optional<Time> SimulatedLine::NextDue() const {
  if (unplugged_) return std::nullopt;
  std::optional<Time> next = gateway_.NextDue();
  for (const auto* direction : {&toDevice_, &toHost_}) {
    if (!direction->empty()) next = std::min(next.value_or(Time::max()), direction->front().arrives);
  }
  return next;
}

void SimulatedLine::Carry(Time now) {
  // Byte by byte, each at its own moment: the gateway must see the times of the line and not those of its reader.
  while (!toDevice_.empty() && toDevice_.front().arrives <= now && Count()) {
    const Carried carried = toDevice_.front();
    toDevice_.pop_front();
    gateway_.Receive(std::string_view(&carried.byte, 1), carried.arrives);
  }
  if (!unplugged_) gateway_.RunDue(now);
  while (const auto piece = gateway_.NextPiece()) {
    hostFree_ = std::max(hostFree_, piece->from);
    for (const char byte : piece->bytes) {
      hostFree_ += byteTime_;
      toHost_.push_back({hostFree_, byte});
    }
  }
}

std::size_t SimulatedLine::Room() const {
  constexpr std::size_t ChipStore = 16;
  if (byteTime_ == Time{0}) return SIZE_MAX;
  return ChipStore - std::min(ChipStore, toDevice_.size());
}

/// One more byte passes, unless the device has gone.
bool SimulatedLine::Count() {
  const int limit = gateway_.Faults().unplugAfter;
  unplugged_ = limit >= 0 && carried_ >= limit;
  if (!unplugged_) ++carried_;
  return !unplugged_;
}

}  // namespace vk32::sim
