// The simulated line of the measurements.
#include "Line.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

#include "Child.h"
#include "platform/SystemEventLoop.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr Time Quiet = 20ms;  // between two looks at whether the measurement is over
constexpr Time Watchful = 150us, LongestGap = 3ms;
constexpr Time PauseUnit = 10ms;

/// Never comes back: writes what the host says, and waits for each answer.
[[noreturn]] void Say(const std::string& path, const std::vector<Message>& talk) {
  KeepToOneCore();
  const int fd = open(path.c_str(), O_RDWR | O_NOCTTY);
  alarm(60);  // seconds; it may never be answered
  for (const Message& message : talk) {
    if (message.fromHost) {
      std::this_thread::sleep_for(message.pause);
      if (write(fd, message.bytes.data(), message.bytes.size()) < 0) _exit(1);
    }
    char answer[512];
    for (std::size_t left = message.fromHost ? 0 : message.bytes.size(); left > 0;) {
      const ssize_t count = read(fd, answer, std::min(left, sizeof answer));
      if (count <= 0) _exit(1);
      left -= static_cast<std::size_t>(count);
    }
  }
  _exit(0);
}

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
    // Awake where a wake-up would be taken for the host's: just before a byte is due, and behind an answer.
    const bool awake = answered_ && now - *answered_ < LongestGap;
    const timespec left{0, awake ? 0 : std::max(wait - Watchful, Time{0}).count()};
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
  Note(true, bytes);
  if (answered_) {
    use_.gaps.push_back(now - *answered_);
    use_.late += late_;
  }
  answered_.reset();
  use_.bytes += count;
  use_.last = std::max(use_.last, now) + count * byteTime_;
  line_.FromHost(bytes, now);
}

void PacedLine::ToHost(Time now) {
  const auto due = line_.NextDue();
  const Bytes bytes = line_.ToHost(now);
  if (bytes.empty()) return;
  terminal_.Write(bytes);
  Note(false, bytes);
  answered_ = MonotonicNow();
  late_ = due ? now - std::min(now, *due) : Time{0};
  use_.bytes += static_cast<int>(bytes.size());
  use_.last = std::max(use_.last, MonotonicNow());
}

void PacedLine::Note(bool fromHost, const Bytes& bytes) {
  const Time now = MonotonicNow(), pause = use_.talk.empty() ? Time{0} : (now - noted_) / PauseUnit * PauseUnit;
  noted_ = now;
  passed_ += static_cast<int>(bytes.size());
  const bool goesOn = !use_.talk.empty() && use_.talk.back().fromHost == fromHost && pause == Time{0};
  if (!goesOn) use_.talk.push_back({fromHost, {}, pause});
  use_.talk.back().bytes += bytes;
}

LineUse SayAgain(std::string_view kind, const std::vector<Message>& talk) {
  PacedLine line(kind);
  const pid_t twin = fork();
  if (twin == 0) Say(line.Path(), talk);
  int status = 0;
  if (waitpid(twin, &status, 0) != twin || status != 0) throw std::runtime_error("a talk can't be said again");
  return line.Finish();
}

}  // namespace vk32::bench
