// How fast firmware files leave.
#include "Transfers.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "HeadlessProgram.h"
#include "firmware/FirmwareFile.h"
#include "firmware/Xmodem.h"
#include "link/Conversation.h"
#include "platform/PosixEventLoop.h"
#include "sim/PseudoTerminal.h"
#include "sim/SimulatedLine.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t StreamLength = 4 << 20, XmodemLength = 128 * 4096, PacedLength = 128 * 64;
constexpr std::size_t BlockLength = 132, PieceLength = 10240;
constexpr int PacedRate = 19200;

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

/// Takes so many bytes at the other end of a pseudo-terminal, in a thread; tells when the first and the last came.
class Receiver {
 public:
  /// `byteTime`: that each byte takes on the line. `answers`: an Xmodem receiver, which asks first and then answers
  /// blocks.
  Receiver(sim::PseudoTerminal& terminal, std::size_t length, Time byteTime, bool answers)
      : terminal_(terminal), length_(length), byteTime_(byteTime), answers_(answers), thread_([this] { Run(); }) {}

  /// The time from the first byte to the last.
  Time Finish() {
    thread_.join();
    return last_ - first_;
  }

 private:
  void Run() {
    if (answers_) terminal_.Write("\x15");
    std::size_t taken = 0;
    Time line{0};
    while (taken < length_) {
      pollfd waiting{terminal_.Fd(), POLLIN, 0};
      if (poll(&waiting, 1, 10000) <= 0) return;
      const std::size_t some = terminal_.Read().size();
      if (taken == 0) line = first_ = MonotonicNow();
      taken += some;
      line = std::max(line, MonotonicNow()) + byteTime_ * static_cast<int>(some);
      if (byteTime_ > 0ns && (!answers_ || taken % BlockLength == 0)) SleepUntil(line);
      if (answers_ && taken % BlockLength == 0) {
        line += byteTime_;  // of the answer
        SleepUntil(line);
        terminal_.Write("\x06");
      }
      if (byteTime_ == 0ns) line = MonotonicNow();
    }
    last_ = line;
    if (answers_) AnswerEnd();
  }

  void AnswerEnd() {
    pollfd waiting{terminal_.Fd(), POLLIN, 0};
    poll(&waiting, 1, 10000);
    terminal_.Read();
    terminal_.Write("\x06");
  }

  static void SleepUntil(Time moment) {
    if (const Time left = moment - MonotonicNow(); left > 0ns) std::this_thread::sleep_for(left);
  }

  sim::PseudoTerminal& terminal_;
  std::size_t length_;
  Time byteTime_;
  bool answers_;
  Time first_{0}, last_{0};
  std::thread thread_;
};

/// The program with a port that is open, as in the recovery terminal.
struct OpenPort : HeadlessProgram {
  explicit OpenPort(const std::string& device) {
    names.Assign("COM1", device);
    GoToProductMenu({"RB2000Cmd"});
    Do("select ProductMenu.COMCbo COM1");
    Do("click ProductMenu.OfflineCmd");
    form = app.forms.Find("OfflineMngr");
    form->Get<Timer>("tmrTime").Enabled = false;
  }
  Form* form;
};

/// Shows nothing.
struct Unseen : XmodemProgress {
  void StartOfflineProgressBar() override {}
  void UpdateOfflineProgressBar(std::size_t, std::size_t) override {}
  void FinishOfflineProgressBar() override {}
};

Time Stream(std::size_t length, Time byteTime) {
  const File file(length);
  sim::PseudoTerminal terminal;
  OpenPort program(terminal.Path());
  terminal.Read();
  auto& bar = program.form->Get<ProgressBar>("ProgressBar");
  bar.Max = FullBar;
  Receiver receiver(terminal, length, byteTime, false);
  const auto pieceSent = [&](std::uint64_t sent, std::uint64_t total) { bar.Value = BarValue(sent, total); };
  if (!StreamFile(*program.app.conversation, file.Path(), PieceLength, pieceSent))
    throw std::runtime_error("the stream has failed");
  return receiver.Finish();
}

Time SendByXmodem(std::size_t length, Time byteTime) {
  sim::PseudoTerminal terminal;
  OpenPort program(terminal.Path());
  terminal.Read();
  // The sender clears the port first, and must see the receiver's call behind that.
  std::optional<Receiver> receiver;
  program.app.forms.dispatcher.Loop().StartTimer(
      20ms, [&] { receiver.emplace(terminal, length / 128 * BlockLength, byteTime, true); });
  Unseen unseen;
  if (Xmodem(*program.app.conversation, unseen).XmodemSend(std::string(length, 'x')))
    throw std::runtime_error("Xmodem has failed");
  return receiver->Finish();
}

/// The time that a shell command needs to send to the terminal, which is its standard input and output.
Time Command(const std::string& command, std::size_t length, bool answers) {
  sim::PseudoTerminal terminal;
  Receiver receiver(terminal, length, 0ns, answers);
  const std::string line = command + " <" + terminal.Path() + " >" + terminal.Path() + " 2>/dev/null";
  if (std::system(line.c_str()) != 0) throw std::runtime_error(command + " has failed");
  return receiver.Finish();
}

double Ratio(Time time, Time other) { return static_cast<double>(time.count()) / static_cast<double>(other.count()); }

/// The median over some pairs, one run behind the other: a single pair swings with whatever else the machine does.
double MedianRatio(const std::function<Time()>& ours, const std::function<Time()>& theirs) {
  std::array<double, 5> ratios;
  for (double& ratio : ratios) ratio = Ratio(ours(), theirs());
  std::nth_element(ratios.begin(), ratios.begin() + 2, ratios.end());
  return ratios[2];
}

}  // namespace

double StreamAgainstCat() {
  return MedianRatio([] { return Stream(StreamLength, 0ns); },
                     [] {
                       const File file(StreamLength);
                       return Command("cat " + file.Path(), StreamLength, false);
                     });
}

std::optional<double> XmodemAgainstSx() {
  if (std::system("command -v sx >/dev/null") != 0) return std::nullopt;
  const File file(XmodemLength);
  return MedianRatio([] { return SendByXmodem(XmodemLength, 0ns); },
                     [&] { return Command("sx -q " + file.Path(), XmodemLength / 128 * BlockLength, true); });
}

double PacedStream() {
  const Time byteTime = sim::SimulatedLine::ByteTime(PacedRate);
  return Ratio(Stream(PacedLength, byteTime), byteTime * static_cast<int>(PacedLength));
}

double PacedXmodem() {
  const Time byteTime = sim::SimulatedLine::ByteTime(PacedRate);
  return Ratio(SendByXmodem(PacedLength, byteTime), byteTime * static_cast<int>(PacedLength / 128 * (BlockLength + 1)));
}

}  // namespace vk32::bench
