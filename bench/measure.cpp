// vk32-measure: holds what the program costs its user - time, memory, line - against the limits, in one table.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "Child.h"
#include "Desktop.h"
#include "Jobs.h"
#include "Line.h"
#include "Table.h"
#include "Transfers.h"
#include "platform/SystemEventLoop.h"

namespace vk32::bench {
namespace {

using namespace std::chrono_literals;

constexpr int ScriptStarts = 20, TransferRuns = 5;

struct Product {
  const char* kind;
  std::vector<std::string> buttons;
  std::string form;
  Figures upload, download, gap;
};

/// What the line takes, by the bytes' own time and the pauses between them: 1 is the best there is. What a program that
/// does nothing else takes beyond it, in the same moment, is the machine's.
double Share(std::string_view kind, const LineUse& use, Time byteTime) {
  Time own = byteTime * use.bytes;
  for (const Message& message : use.talk) own += message.pause;
  return 1 + Milliseconds(use.Taken() - SayAgain(kind, use.talk).Taken()) / Milliseconds(own);
}

/// Reads a configuration over one paced line and writes it over another.
void Transfer(Product& product) {
  PacedLine source(product.kind), target(product.kind);
  Script program({source.Path(), target.Path()});
  program.Do(ToProductMenu(product.buttons));
  program.Do({"click ProductMenu.ConfigureCmd", "click " + product.form + ".UploadCmd"});
  const LineUse up = source.Finish();
  program.Do("select ProductMenu.COMCbo COM2");
  while (program.Do("forms").find(product.form) != std::string::npos) program.Do("click " + product.form + ".NextCmd");
  const LineUse down = target.Finish();
  if (!target.HasStored()) throw std::runtime_error(std::string(product.kind) + ": the download has failed");
  product.upload.Add(Share(product.kind, up, source.ByteTime()));
  product.download.Add(Share(product.kind, down, target.ByteTime()));
  for (const Time gap : down.gaps) product.gap.Add(Milliseconds(gap));
}

void Transfers(Table& table) {
  Product products[] = {
      {"RB2000", {"RB2000Cmd"}, "Configuration_RB2000", {}, {}, {}},
      {"RB3000", {"RB3000Cmd"}, "Configuration_RB3000", {}, {}, {}},
      {"VK5300", {"VK5300Cmd"}, "Configuration_VK5300", {}, {}, {}},
      {"VK-RTX-DF1", {"VKRTXCmd", "ABEthAsciiDf1ModelCmd"}, "Configuration_VKRTX", {}, {}, {}},
      {"VK-RTX-Modbus", {"VKRTXCmd", "ABEthModbusModelCmd"}, "Configuration_VKRTX", {}, {}, {}},
      {"RBCard", {"RBCardCmd"}, "Configuration_RBCard", {}, {}, {}},
  };
  for (int run = 0; run < TransferRuns; ++run) {
    for (Product& product : products) Transfer(product);
  }
  for (const Product& product : products) {
    const std::string kind = product.kind;
    table.Row(kind + ", upload: line time / the bytes' own", product.upload, 1.02, "");
    table.Row(kind + ", download: line time / the bytes' own", product.download, 1.02, "");
    if (kind.starts_with("VK-RTX")) {
      table.Row(kind + ": an ACK's last byte to the next frame's first", product.gap, 0.5, "ms");
    }
  }
}

void ScriptStart(Table& table) {
  Figures times;
  for (int i = 0; i < ScriptStarts; ++i) {
    const Time start = MonotonicNow();
    Script(std::vector<std::string>{}).Do(std::string("click Splash"));
    times.Add(Milliseconds(MonotonicNow() - start));
  }
  table.Row("vk32-script: start to its first ok", times, NoLimit, "ms");
}

void SilentWait(Table& table) {
  const sim::PseudoTerminal silent;
  Script program(std::vector<std::string>{silent.Path()});
  program.Do(ToProductMenu({"VKRTXCmd", "ABEthAsciiDf1ModelCmd"}));
  // No other wait lasts so long: for a minute it awaits that it is asked for the file.
  program.Do({"click ProductMenu.OfflineCmd", "answer yes", "answer yes", "file " VK32_PROGRAMS "/vk32-script",
              "after 14000 click OfflineMngr.CloseCmd"});
  const std::jthread sending([&] { program.Do("click OfflineMngr.SendFirmwareCmd"); });
  Figures shares;
  for (int look = 0; look < 3; ++look) {
    std::this_thread::sleep_for(1s);
    const Time used = program.ProcessorTime();
    std::this_thread::sleep_for(3s);
    shares.Add(Milliseconds(program.ProcessorTime() - used) / 30);
  }
  table.Row("processor time of a wait for a silent device", shares, 0.3, "%");
}

bool Measure(const std::string& desktop) {
  Table table;
  Transfers(table);
  table.Row("file as text: time / that of cat", StreamAgainstCat(), 1.02, "");
  table.Row("file as text at 19200 bit/s: time / the bytes' own", PacedStream(), 1.02, "");
  if (const auto ratio = XmodemAgainstSx()) table.Row("Xmodem: time / that of sx", *ratio, 0.95, "");
  table.Row("Xmodem at 19200 bit/s: time / 132 + 1 bytes a block", PacedXmodem(), 1.02, "");
  SilentWait(table);
  ScriptStart(table);
  Jobs(table);
  if (!desktop.empty() && std::getenv("DISPLAY") != nullptr) Desktop(table, desktop);
  return !table.AnyOver();
}

}  // namespace
}  // namespace vk32::bench

int main(int argc, char** argv) {
  CLI::App options(
      "Measures VK32 against its limits. A row shows the median, and the least and the most. A median beyond the limit "
      "is \"too noisy\" as long as the least figure keeps to it. Exit status 1 if a limit is exceeded.");
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
