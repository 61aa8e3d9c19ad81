// How fast files leave whole programs, against plain programs and against the line.
#include "Transfers.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "Child.h"
#include "platform/SystemEventLoop.h"
#include "sim/PseudoTerminal.h"
#include "sim/SimulatedLine.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t StreamLength = 8 << 20, XmodemLength = 128 * 4096;
constexpr std::size_t PacedStreamLength = 32768, PacedXmodemLength = 128 * 64;
constexpr std::size_t BlockLength = 132, LineStore = 256;
constexpr int PacedRate = 19200, PairCount = 21;

/// A file that goes with this object.
class File {
 public:
  explicit File(std::size_t length)
      : path_(std::filesystem::temp_directory_path() / ("vk32-bench-" + std::to_string(getpid()))) {
    std::ofstream(path_, std::ios::binary) << std::string(length, ':');
  }
  ~File() { std::filesystem::remove(path_); }
  std::string Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

enum class As { Text, Xmodem };

/// Takes a file at the other end of a pseudo-terminal, in a thread.
class Receiver {
 public:
  /// `length`: of the file. `byteTime`: that each byte takes on the line; 0: the line is not paced.
  Receiver(As as, std::size_t length, Time byteTime)
      : length_(as == As::Text ? length : length / 128 * BlockLength),
        byteTime_(byteTime),
        answers_(as == As::Xmodem),
        thread_([this] { Run(); }) {}
  ~Receiver() {
    if (thread_.joinable()) thread_.join();
  }

  const std::string& Path() const { return terminal_.Path(); }

  /// The time from the first byte to the last; of Xmodem to the end.
  Time Finish() {
    thread_.join();
    if (taken_ < length_) throw std::runtime_error("a file has not come whole");
    return last_ - first_ - late_;
  }

 private:
  void Run() {
    // Where they take turns: to wake another core takes longer than what is measured.
    if (answers_) KeepToOneCore();
    while (!ended_) {
      const bool begun = taken_ > 0;
      if (answers_ && !begun) terminal_.Write("\x15");
      if (!Await(answers_ && !begun ? 5ms : 10s)) {
        if (begun || ++silence_ > 2000) return;
        continue;
      }
      Take();
      if (answers_ && taken_ > 0 && taken_ % BlockLength == 0) Acknowledge();
      ended_ = ended_ || (!answers_ && taken_ >= length_);
    }
    last_ = byteTime_ == 0ns ? MonotonicNow() : line_;
  }

  bool Await(Time limit) {
    pollfd waiting{terminal_.Fd(), POLLIN, 0};
    if (poll(&waiting, 1, 0) == 0) terminal_.HoldHost(false);
    return poll(&waiting, 1, static_cast<int>(limit / 1ms)) > 0;
  }

  void Take() {
    const std::size_t room = byteTime_ == 0ns ? SIZE_MAX : LineStore;
    const Bytes bytes = terminal_.Read(room);
    terminal_.HoldHost(bytes.size() == room);
    // A block may come twice, for a NAK that was one too many: the end is what the sender calls so.
    ended_ = answers_ && taken_ % BlockLength == 0 && bytes == "\x04";
    if (ended_) return;
    // The terminal greets its device before the file.
    const std::size_t begin = taken_ > 0 ? 0 : std::min(bytes.find(answers_ ? '\x01' : ':'), bytes.size());
    const std::size_t some = bytes.size() - begin;
    if (some == 0) return;
    if (taken_ == 0) line_ = first_ = MonotonicNow();
    taken_ += some;
    line_ = std::max(line_, MonotonicNow()) + byteTime_ * static_cast<int>(some);
    if (!answers_) SleepUntil(line_ - byteTime_ * static_cast<int>(LineStore));
  }

  void Acknowledge() {
    line_ += byteTime_;
    if (byteTime_ > 0ns) SleepUntil(line_);
    terminal_.Write("\x06");
    if (byteTime_ > 0ns) late_ += std::max(MonotonicNow() - line_, 0ns);
  }

  static void SleepUntil(Time moment) {
    if (const Time left = moment - MonotonicNow(); left > 0ns) std::this_thread::sleep_for(left);
  }

  sim::PseudoTerminal terminal_;
  std::size_t length_, taken_ = 0;
  Time byteTime_;
  bool answers_, ended_ = false;
  int silence_ = 0;
  Time line_{0};  // when it has carried all
  Time first_{0}, last_{0};
  Time late_{0};  // by which answers have come too late: the measurement's own fault
  std::thread thread_;
};

/// From the recovery terminal.
Time Send(As as, std::size_t length, Time byteTime) {
  const File file(length);
  Receiver receiver(as, length, byteTime);
  Script script(std::vector<std::string>{receiver.Path()});
  script.Do(ToProductMenu({"VKRTXCmd", "ABEthAsciiDf1ModelCmd"}));
  script.Do({"click ProductMenu.OfflineCmd", "answer yes", as == As::Xmodem ? "answer yes" : "answer no",
             "file " + file.Path(), "click OfflineMngr.SendFirmwareCmd"});
  return receiver.Finish();
}

/// A plain program, whose standard input and output are the terminal.
Time Command(const std::string& command, As as, std::size_t length) {
  const File file(length);
  Receiver receiver(as, length, 0ns);
  Child({"/bin/sh", "-c",
         "exec " + command + " " + file.Path() + " <" + receiver.Path() + " >" + receiver.Path() + " 2>/dev/null"})
      .Await();
  return receiver.Finish();
}

Figures Paced(As as, std::size_t length, std::size_t bytes) {
  const Time byteTime = sim::SimulatedLine::ByteTime(PacedRate);
  return static_cast<double>(Send(as, length, byteTime).count()) /
         static_cast<double>((byteTime * static_cast<int>(bytes)).count());
}

}  // namespace

Figures StreamAgainstCat() {
  return Pairs(
      PairCount, [] { return Send(As::Text, StreamLength, 0ns); },
      [] { return Command("cat", As::Text, StreamLength); });
}

std::optional<Figures> XmodemAgainstSx() {
  if (std::system("command -v sx >/dev/null") != 0) return std::nullopt;
  return Pairs(
      PairCount, [] { return Send(As::Xmodem, XmodemLength, 0ns); },
      [] { return Command("sx -q", As::Xmodem, XmodemLength); });
}

Figures PacedStream() { return Paced(As::Text, PacedStreamLength, PacedStreamLength); }

Figures PacedXmodem() { return Paced(As::Xmodem, PacedXmodemLength, PacedXmodemLength / 128 * (BlockLength + 1) + 2); }

}  // namespace vk32::bench
