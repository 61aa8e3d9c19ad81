// How far the sending of a file has come, in words.
#pragma once

#include <cstdint>
#include <string>

#include "platform/EventLoop.h"

namespace vk32 {

class SendProgress {
 public:
  SendProgress() = default;
  /// `total`: bytes in the file; `baud`: of the line, on which a byte takes ten bits.
  SendProgress(const std::string& path, std::uint64_t total, double baud);

  /// The first byte is about to go out.
  void Begin(Time now);
  void Sent(std::uint64_t sent, std::uint64_t total, Time now);

  bool IsWhole() const { return sent_ == total_; }
  /// "vk-rtx.rom: 10 of 45 KB sent"
  std::string Words() const;
  /// ", 19 s left"; empty before the begin and after the end.
  std::string Left(Time now) const;
  /// Whole seconds since the begin, 1 at least.
  int Seconds(Time now) const;

 private:
  std::string file_;
  std::uint64_t sent_ = 0, total_ = 0;
  double baud_ = 0;
  Time begun_ = Never, end_ = Never;  // as it looks now
};

}  // namespace vk32
