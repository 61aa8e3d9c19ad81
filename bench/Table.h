// The table of the measurements.
#pragma once

#include <string>

#include "Figures.h"
#include "platform/EventLoop.h"

namespace vk32::bench {

constexpr double NoLimit = -1;

inline double Milliseconds(Time span) { return std::chrono::duration<double, std::milli>(span).count(); }

class Table {
 public:
  Table();

  /// What was measured several times, to see what else the machine does: it is over a limit if the least figure is.
  void Row(const std::string& what, const Figures& figures, double limit, const std::string& unit);
  bool AnyOver() const { return anyOver_; }

 private:
  bool anyOver_ = false;
};

}  // namespace vk32::bench
