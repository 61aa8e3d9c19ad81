// The simulated line of the measurements: a gateway on a pseudo-terminal, in a thread that notes when bytes pass.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "sim/PseudoTerminal.h"
#include "sim/SimulatedLine.h"

namespace vk32::bench {

/// Bytes of one side, up to a pause or those of the other. `pause`: before them, where the exchange has one.
struct Message {
  bool fromHost;
  Bytes bytes;
  Time pause;
};

/// How the line was used, from the start of the first byte to the end of the last.
struct LineUse {
  int bytes = 0;  // both directions
  Time first{0}, last{0};
  Time late{0};            // by which the gateway's answers have ended too late: the measurement's own fault
  std::vector<Time> gaps;  // from a last byte of the gateway to the next first one of the host
  std::vector<Message> talk;

  Time Taken() const { return last - first - late; }
};

/// Has a program of a few lines say again, on one core, what the host has said; its use of the line is the best that
/// the machine gives just then, with the pauses that the messages ask for.
LineUse SayAgain(std::string_view kind, const std::vector<Message>& talk);

/// A simulated gateway behind a line that is paced at its true rate.
class PacedLine {
 public:
  explicit PacedLine(std::string_view kind);
  ~PacedLine();
  PacedLine(const PacedLine&) = delete;
  PacedLine& operator=(const PacedLine&) = delete;

  const std::string& Path() const { return terminal_.Path(); }
  /// Ends the thread and gives what it has noted.
  LineUse Finish();

  Time ByteTime() const { return byteTime_; }
  /// How many bytes have passed so far, in both directions.
  int Passed() const { return passed_; }
  /// After Finish: the gateway has stored a configuration.
  bool HasStored() const { return stored_; }

 private:
  void Run();
  void FromHost(Time now);
  void ToHost(Time now);
  void Note(bool fromHost, const Bytes& bytes);

  sim::PseudoTerminal terminal_;
  sim::Gateway gateway_;
  Time byteTime_;
  sim::SimulatedLine line_;
  bool stored_ = false;
  LineUse use_;
  Time noted_{0};                 // when the last bytes have passed
  Time late_{0};                  // by which the gateway's last byte has come too late
  std::optional<Time> answered_;  // its moment, as long as nothing has come behind it
  std::atomic<bool> ending_ = false;
  std::atomic<int> passed_ = 0;
  std::thread thread_;
};

}  // namespace vk32::bench
