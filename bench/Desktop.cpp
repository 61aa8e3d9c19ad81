// What the desktop program costs: its start, its memory, its sleep.
#include "Desktop.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "Child.h"
#include "Display.h"
#include "Line.h"
#include "platform/SystemEventLoop.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr int Starts = 9, IdleLooks = 3;
constexpr const char* Other = "/usr/bin/cutecom";  // Debian's terminal program with a window
constexpr Time Settled = 4s;                       // the splash page has gone, the menu has come

/// Looks at the display until it shows, or shows no longer, the picture that stood before.
void AwaitPicture(const Display& display, const std::string& before, bool shown, const Child* painter = nullptr) {
  const Time start = MonotonicNow();
  while ((display.Sample() == before) != shown) {
    if (painter && !painter->Runs()) throw std::runtime_error("a program ends without a window");
    if (MonotonicNow() - start > 20s) throw std::runtime_error("the display does not change as it should");
    std::this_thread::sleep_for(500us);  // leaves the processor to the program
  }
}

/// From the start to the first painted window.
Time Start(const Display& display, const std::string& empty, const std::string& program) {
  AwaitPicture(display, empty, true);
  const Time start = MonotonicNow();
  const Child child({program});
  AwaitPicture(display, empty, false, &child);
  return MonotonicNow() - start;
}

/// The user's hands.
void Do(const std::string& acts) {
  if (std::system(("xdotool " + acts + " sleep 0.7").c_str()) != 0) throw std::runtime_error("xdotool has failed");
}

void Idle(Table& table, const std::string& what, const Child& desktop) {
  Figures wakes;
  std::this_thread::sleep_for(1s);
  for (int look = 0; look < IdleLooks; ++look) {
    const double before = desktop.Sleeps();
    std::this_thread::sleep_for(5s);
    wakes.Add(desktop.Sleeps() - before);
  }
  table.Row("vk32, idle " + what + ": wake-ups in 5 s", wakes, 0, "");
}

double MostMemoryWithin(const Child& child, Time span) {
  double most = 0;
  for (const Time end = MonotonicNow() + span; MonotonicNow() < end;) {
    most = std::max(most, child.ResidentMegabytes());
    std::this_thread::sleep_for(20ms);
  }
  return most;
}

/// The memory in a transfer, in MB.
double Use(Table& table, const std::string& program) {
  PacedLine device("VK-RTX-DF1");
  const Child desktop({program, "--port", "COM1=" + device.Path()});
  std::this_thread::sleep_for(Settled);
  Do("key alt+r sleep 0.5 key alt+a sleep 0.7 type COM1");
  Do("key Tab");
  Idle(table, "menu", desktop);
  Do("key alt+c");
  Idle(table, "wizard", desktop);
  table.Row("vk32 with a wizard: resident memory", desktop.ResidentMegabytes(), NoLimit, "MB");
  Do("key alt+u");
  Do("key Return");
  const double most = MostMemoryWithin(desktop, 3s);
  table.Row("vk32 in a transfer: resident memory", most, 38, "MB");
  Do("key alt+c");
  Do("key alt+o");
  Idle(table, "terminal", desktop);
  if (device.Finish().bytes < 500) throw std::runtime_error("the transfer of the desktop has not come about");
  return most;
}

}  // namespace

void Desktop(Table& table, const std::string& program) {
  const Display display;
  const std::string empty = display.Sample();
  Figures starts;
  const auto ours = [&] {
    const Time time = Start(display, empty, program);
    starts.Add(Milliseconds(time));
    return time;
  };
  const bool compared = std::filesystem::exists(Other);
  if (compared) {
    const Figures ratio = Pairs(Starts, ours, [&] { return Start(display, empty, Other); });
    table.Row("vk32: start to its first painted window / CuteCom's", ratio, 0.4, "");
  } else {
    for (int i = 0; i < Starts; ++i) ours();
  }
  table.Row("vk32: start to its first painted window", starts, 75, "ms");
  AwaitPicture(display, empty, true);
  const double memory = Use(table, program);
  if (!compared) return;
  const Child other({Other});
  std::this_thread::sleep_for(Settled);
  table.Row("vk32 in a transfer: resident memory / CuteCom's", memory / other.ResidentMegabytes(), 0.45, "");
}

}  // namespace vk32::bench
