// vk32-measure: holds what the program costs its user - time, memory, line - against the limits, in one table.
#include <sys/resource.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <thread>

#include "Child.h"
#include "Display.h"
#include "HeadlessProgram.h"
#include "Line.h"
#include "Transfers.h"
#include "link/Conversation.h"
#include "link/VKComSubs.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr double NoLimit = 0;
constexpr int ScriptStarts = 20, DesktopStarts = 10;

class Table {
 public:
  Table() { std::printf("%-58s %10s %8s\n", "what", "measured", "limit"); }

  void Row(const std::string& what, double measured, double limit, const char* unit) {
    const bool over = limit != NoLimit && measured > limit;
    const std::string allowed = limit == NoLimit ? "-" : Number(limit);
    std::printf("%-58s %10s %8s %-4s %s\n", what.c_str(), Number(measured).c_str(), allowed.c_str(), unit,
                over ? "over" : "ok");
    std::fflush(stdout);
    anyOver_ = anyOver_ || over;
  }
  bool AnyOver() const { return anyOver_; }

 private:
  static std::string Number(double number) {
    char text[32];
    std::snprintf(text, sizeof text, number < 10 ? "%.3f" : "%.1f", number);
    return text;
  }

  bool anyOver_ = false;
};

/// What an upload and a download move alike, the request or the ACK included.

double Milliseconds(Time span) { return std::chrono::duration<double, std::milli>(span).count(); }

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// The processor time of this thread.
Time Used() {
  rusage usage{};
  getrusage(RUSAGE_THREAD, &usage);
  const auto span = [](const timeval& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
  };
  return span(usage.ru_utime) + span(usage.ru_stime);
}

/// A wizard with a device behind COM1.
struct Wizard : HeadlessProgram {
  Wizard(std::initializer_list<const char*> buttons, const std::string& device) {
    names.Assign("COM1", device);
    GoToProductMenu(buttons);
    Do("select ProductMenu.COMCbo COM1");
    Do("click ProductMenu.ConfigureCmd");
  }
};

void SilentWait(Table& table) {
  const sim::PseudoTerminal silent;
  Wizard wizard({"RB2000Cmd"}, silent.Path());
  Form& form = *wizard.app.forms.Find("Configuration_RB2000");  // its timer is set to 15 s
  const auto conversation = Conversation::Begin(wizard.app, form, {"The measurement", "Wait."});
  conversation->CommOpen();
  const Time start = MonotonicNow(), used = Used();
  if (WaitForAck(*conversation) == 0) throw std::runtime_error("a silent device has answered");
  const double share = Milliseconds(Used() - used) / Milliseconds(MonotonicNow() - start);
  table.Row("processor time of a silent wait of 15 s for ACK", share * 100, 0.3, "%");
}

/// Reads a configuration over one paced line and writes it over another.
void Transfers(Table& table, const std::string& words, std::string_view kind,
               std::initializer_list<const char*> buttons, const std::string& form) {
  PacedLine source(kind);
  Wizard wizard(buttons, source.Path());
  wizard.Do("click " + form + ".UploadCmd");
  if (wizard.printed.find("Error!") != std::string::npos) throw std::runtime_error(words + ": the upload has failed");
  table.Row(words + ", upload: line time / needed", source.Finish().Ratio(source.ByteTime()), 1.03, "");

  PacedLine target(kind);
  wizard.names.Assign("COM1", target.Path());
  wizard.Do("select ProductMenu.COMCbo COM1");
  while (wizard.app.forms.Find(form)) wizard.Do("click " + form + ".NextCmd");
  const LineUse use = target.Finish();
  if (!target.HasStored()) throw std::runtime_error(words + ": the download has failed");
  table.Row(words + ", download: line time / needed", use.Ratio(target.ByteTime()), 1.03, "");
}

void ScriptStart(Table& table) {
  std::vector<double> times;
  for (int i = 0; i < ScriptStarts; ++i) {
    const Time start = MonotonicNow();
    Child script({VK32_PROGRAMS "/vk32-script"});
    script.Write("click Splash\n");
    if (script.ReadLine() != "ok") throw std::runtime_error("vk32-script does not start");
    times.push_back(Milliseconds(MonotonicNow() - start));
  }
  table.Row("vk32-script: start to its first ok, median of 20", Median(times), NoLimit, "ms");
}

/// Looks at the display until it shows, or shows no longer, the picture that stood before.
void AwaitPicture(const Display& display, const std::string& before, bool shown, const Child* painter = nullptr) {
  const Time start = MonotonicNow();
  while ((display.Sample() == before) != shown) {
    if (painter && !painter->Runs()) throw std::runtime_error("the desktop program ends without a window");
    if (MonotonicNow() - start > 20s) throw std::runtime_error("the display does not change as it should");
    std::this_thread::sleep_for(500us);  // leaves the processor to the program
  }
}

/// On a display that is still otherwise.
void Desktop(Table& table, const std::string& program) {
  const Display display;
  const std::string empty = display.Sample();
  std::vector<double> times;
  for (int i = 0; i < DesktopStarts; ++i) {
    AwaitPicture(display, empty, true);
    const Time start = MonotonicNow();
    const Child desktop({program});
    AwaitPicture(display, empty, false, &desktop);
    times.push_back(Milliseconds(MonotonicNow() - start));
  }
  table.Row("vk32: start to its first painted window, median of 10", Median(times), 75, "ms");

  AwaitPicture(display, empty, true);
  const Child desktop({program});
  std::this_thread::sleep_for(4s);  // the splash page has gone, the menu has come
  const Time used = desktop.ProcessorTime();
  std::this_thread::sleep_for(5s);
  table.Row("vk32: processor time while it idles for 5 s", Milliseconds(desktop.ProcessorTime() - used) / 5000 * 100,
            NoLimit, "%");
  table.Row("vk32: resident memory", desktop.ResidentMegabytes(), 35, "MB");
}

bool Measure(const std::string& desktop) {
  Table table;
  Transfers(table, "RB2000 at 9600 bit/s", "RB2000", {"RB2000Cmd"}, "Configuration_RB2000");
  Transfers(table, "VK-RTX (25 blocks) at 19200", "VK-RTX-Modbus", {"VKRTXCmd", "ABEthModbusModelCmd"},
            "Configuration_VKRTX");
  table.Row("firmware stream, unpaced: time / that of cat", StreamAgainstCat(), 1.25, "");
  table.Row("firmware stream at 19200 bit/s: time / the bytes' own", PacedStream(), 1.02, "");
  if (const auto ratio = XmodemAgainstSx()) table.Row("Xmodem, unpaced: time / that of sx", *ratio, 1, "");
  table.Row("Xmodem at 19200 bit/s: time / 132 + 1 bytes a block", PacedXmodem(), 1.02, "");
  SilentWait(table);
  ScriptStart(table);
  if (!desktop.empty() && std::getenv("DISPLAY") != nullptr) Desktop(table, desktop);
  return !table.AnyOver();
}

}  // namespace
}  // namespace vk32::bench

int main(int argc, char** argv) {
  CLI::App options("Measures VK32 against its limits. Exit status 1 if one is exceeded.");
  std::string desktop;
  options.add_option("--desktop", desktop, "the desktop program, measured if there is a DISPLAY")->type_name("PATH");
  CLI11_PARSE(options, argc, argv);
  try {
    return vk32::bench::Measure(desktop) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
  }
}
