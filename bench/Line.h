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

  /// The time taken, divided by the time that the bytes need at that rate: 1 is the best there is.
  double Ratio(int baudRate) const {
    return static_cast<double>((last - first).count()) * baudRate / (1e10 * bytes);  // 10 bits a byte, in ns
  }
};

/// An RB2000 behind a line that is paced at its true rate.
class PacedLine {
 public:
  PacedLine();
  ~PacedLine();
  PacedLine(const PacedLine&) = delete;
  PacedLine& operator=(const PacedLine&) = delete;

  const std::string& Path() const { return terminal_.Path(); }
  /// Ends the thread and gives what it has noted.
  LineUse Finish();

  static constexpr int BaudRate = 9600;

 private:
  void Run();
  void FromHost(Time now);
  void ToHost(Time now);

  sim::PseudoTerminal terminal_;
  sim::Gateway gateway_;
  sim::SimulatedLine line_;
  LineUse use_;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

}  // namespace vk32::bench
