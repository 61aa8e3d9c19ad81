// The simulated line of the measurements: a gateway on a pseudo-terminal, in a thread that notes when bytes pass.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <thread>

#include "sim/PseudoTerminal.h"
#include "sim/SimulatedLine.h"

namespace vk32::bench {

/// How the line was used, from the start of the first byte to the end of the last.
struct LineUse {
  int bytes = 0;  // both directions
  Time first{0}, last{0};

  /// The time taken, divided by the time that the bytes need: 1 is the best there is.
  double Ratio(Time byteTime) const {
    return static_cast<double>((last - first).count()) / static_cast<double>((byteTime * bytes).count());
  }
};

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
  /// After Finish: the gateway has stored a configuration.
  bool HasStored() const { return stored_; }

 private:
  void Run();
  void FromHost(Time now);
  void ToHost(Time now);

  sim::PseudoTerminal terminal_;
  sim::Gateway gateway_;
  Time byteTime_;
  sim::SimulatedLine line_;
  bool stored_ = false;
  LineUse use_;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

}  // namespace vk32::bench
