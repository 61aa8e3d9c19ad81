// The simulated line of the measurements.
#include "Line.h"

#include <poll.h>

#include <algorithm>

#include "platform/PosixEventLoop.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr Time Quiet = 20ms;  // between two looks at whether the measurement is over

}  // namespace

PacedLine::PacedLine(std::string_view kind)
    : gateway_(*sim::FindGatewayKind(kind)),
      byteTime_(sim::SimulatedLine::ByteTime(sim::FindGatewayKind(kind)->baudRate)),
      line_(gateway_, byteTime_) {
  gateway_.OnStored = [this](const std::string&) { stored_ = true; };
  thread_ = std::thread([this] { Run(); });
}

PacedLine::~PacedLine() { Finish(); }

LineUse PacedLine::Finish() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  return use_;
}

void PacedLine::Run() {
  // What the host has written last still has to pass.
  while (!ending_ || line_.NextDue()) {
    const Time now = MonotonicNow();
    const Time wait = std::clamp(line_.NextDue().value_or(now + Quiet) - now, Time{0}, Quiet);
    const timespec left{0, static_cast<long>(wait.count())};
    pollfd descriptor{terminal_.Fd(), POLLIN, 0};
    ppoll(&descriptor, 1, &left, nullptr);
    FromHost(MonotonicNow());
    ToHost(MonotonicNow());
  }
}

void PacedLine::FromHost(Time now) {
  const Bytes bytes = terminal_.Read();
  if (bytes.empty()) return;
  const int count = static_cast<int>(bytes.size());
  if (use_.bytes == 0) use_.first = now;
  use_.bytes += count;
  use_.last = std::max(use_.last, now) + count * byteTime_;
  line_.FromHost(bytes, now);
}

void PacedLine::ToHost(Time now) {
  const Bytes bytes = line_.ToHost(now);
  if (bytes.empty()) return;
  terminal_.Write(bytes);
  use_.bytes += static_cast<int>(bytes.size());
  use_.last = std::max(use_.last, MonotonicNow());
}

}  // namespace vk32::bench
