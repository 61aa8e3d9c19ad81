// What the desktop program costs: its start, its memory, its sleep.
#include "Desktop.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "Child.h"
#include "Display.h"
#include "Line.h"
#include "platform/SystemEventLoop.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr int Starts = 9, IdleLooks = 3;
constexpr const char* Other = "/usr/bin/cutecom";  // Debian's terminal program with a window
constexpr int TransferBytes = 800;                 // of the 914 of an upload

/// `pause`: between two looks, which leaves the processor to the program.
void Await(const std::string& failure, Time pause, const std::function<bool()>& isThere) {
  for (const Time end = MonotonicNow() + 30s; !isThere(); std::this_thread::sleep_for(pause)) {
    if (MonotonicNow() > end) throw std::runtime_error(failure);
  }
}

/// Looks at the display until it shows, or shows no longer, the picture that stood before.
void AwaitPicture(const Display& display, const std::string& before, bool shown, const Child* painter = nullptr) {
  Await("the display does not change as it should", 500us, [&] {
    if (painter && !painter->Runs()) throw std::runtime_error("a program ends without a window");
    return (display.Sample() == before) == shown;
  });
}

/// Until it has used no processor for longer than until a wizard's time-out timer ticks, which it does once.
void AwaitRest(const Child& child) {
  Time used{0};
  Await("a program does not come to rest", 4s,
        [&] { return std::exchange(used, child.ProcessorTime()) == child.ProcessorTime(); });
}

/// From the start to the first painted window.
Time Start(const Display& display, const std::string& empty, const std::string& program) {
  AwaitPicture(display, empty, true);
  const Time start = MonotonicNow();
  const Child child({program});
  AwaitPicture(display, empty, false, &child);
  return MonotonicNow() - start;
}

/// Presses keys, one after the other, in the window of this title, once it has come.
void Press(const Display& display, const std::string& title, const std::string& keys) {
  Await("the window \"" + title + "\" does not come", 20ms, [&] { return display.ActiveTitle() == title; });
  if (std::system(("xdotool key " + keys).c_str()) != 0) throw std::runtime_error("xdotool has failed");
}

void Idle(Table& table, const std::string& what, const Child& desktop) {
  Figures wakes;
  AwaitRest(desktop);
  for (int look = 0; look < IdleLooks; ++look) {
    const double before = desktop.Sleeps();
    std::this_thread::sleep_for(5s);
    wakes.Add(desktop.Sleeps() - before);
  }
  table.Row("vk32, idle " + what + ": wake-ups in 5 s", wakes, 0, "");
}

/// The memory in a transfer, in MB.
double Use(Table& table, const Display& display, const std::string& program) {
  const std::string mainMenu = "VK32 Confguration Software", menu = "VK-RTX Main Menu",
                    wizard = "Configure Online Parameters";
  PacedLine device("VK-RTX-DF1");
  const Child desktop({program, "--port", "COM1=" + device.Path()});
  Press(display, mainMenu, "alt+r alt+a");
  Press(display, menu, "Down Tab");
  Idle(table, "menu", desktop);
  Press(display, menu, "alt+c");
  Idle(table, "wizard", desktop);
  table.Row("vk32 with a wizard: resident memory", desktop.ResidentMegabytes(), NoLimit, "MB");
  Press(display, wizard, "alt+u");
  Press(display, "VK32", "Return");
  double most = 0;
  Await("the transfer of the desktop does not come about", 20ms, [&] {
    most = std::max(most, desktop.ResidentMegabytes());
    return device.Passed() > TransferBytes;
  });
  table.Row("vk32 in a transfer: resident memory", most, 38, "MB");
  Press(display, wizard, "alt+c");
  Press(display, menu, "alt+o");
  Idle(table, "terminal", desktop);
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
  const double memory = Use(table, display, program);
  if (!compared) return;
  const Child other({Other});
  AwaitPicture(display, empty, false, &other);
  AwaitRest(other);
  table.Row("vk32 in a transfer: resident memory / CuteCom's", memory / other.ResidentMegabytes(), 0.45, "");
}

}  // namespace vk32::bench
