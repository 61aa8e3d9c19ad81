// The words for the sending of a file.
#include "firmware/SendProgress.h"

#include <algorithm>

#include "platform/Paths.h"

namespace vk32 {
namespace {

constexpr std::uint64_t Kilobyte = 1024;
constexpr Time Second = std::chrono::seconds(1);

int WholeSeconds(Time span) { return static_cast<int>(std::max((span + Second / 2) / Second, Time::rep{1})); }

}  // namespace

SendProgress::SendProgress(const std::string& path, std::uint64_t total, double baud)
    : file_(FileNameOf(path)), total_(total), baud_(baud) {}

void SendProgress::Begin(Time now) {
  begun_ = now;
  Sent(0, total_, now);
}

void SendProgress::Sent(std::uint64_t sent, std::uint64_t total, Time now) {
  sent_ = sent;
  total_ = total;
  const auto left = static_cast<double>(total - sent);
  const double byRate = left * 10 / std::max(baud_, 1.0);
  // A device that burns meanwhile holds the line: what it has taken so far tells better than the rate.
  const std::chrono::duration<double> passed = now - begun_;
  const double byDevice = passed.count() * left / static_cast<double>(std::max<std::uint64_t>(sent, 1));
  end_ = now + std::chrono::duration_cast<Time>(std::chrono::duration<double>(std::max(byRate, byDevice)));
}

std::string SendProgress::Words() const {
  const bool small = total_ < Kilobyte;
  const std::uint64_t sent = small ? sent_ : sent_ / Kilobyte;
  const std::uint64_t total = small ? total_ : (IsWhole() ? sent : (total_ + Kilobyte - 1) / Kilobyte);
  return file_ + ": " + std::to_string(sent) + " of " + std::to_string(total) + (small ? " bytes" : " KB") + " sent";
}

std::string SendProgress::Left(Time now) const {
  if (begun_ == Never || IsWhole()) return "";
  return ", " + std::to_string(WholeSeconds(end_ - now)) + " s left";
}

int SendProgress::Seconds(Time now) const { return WholeSeconds(now - begun_); }

}  // namespace vk32
