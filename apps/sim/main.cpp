// vk32-sim: a simulated gateway, or the device of a trace, on a pseudo-terminal or a real serial device.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "app/App.h"
#include "core/Convert.h"
#include "platform/Fault.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/PortNames.h"
#include "platform/ProgramStart.h"
#include "platform/SystemEventLoop.h"
#include "platform/UserSignals.h"
#include "sim/Replay.h"
#include "sim/SerialDevice.h"
#include "sim/SimulatedLine.h"
#include "trace/Trace.h"

namespace {

using namespace std::chrono_literals;
using vk32::MonotonicNow;
using vk32::Time;

enum ExitStatus { Ended = 0, Failed = 1, WrongUsage = 2, NotAsTraced = 3 };

struct Options {
  std::string product;
  std::string port, device, replay;
  bool pace = false;
  bool needsButton = false;
  std::string dump, firmwareDump, trace;
  int eraseTime = 3000, restartTime = 300;  // ms
  vk32::sim::InfoTexts infoTexts;
  vk32::sim::Misbehaviour misbehaviour;
};

/// Until the host has written, if it `listens` to it, or what was written to it can go on.
void Sleep(const vk32::sim::HostPort& port, bool listens, const vk32::UserSignals& signals, std::optional<Time> until) {
  const vk32::WaitFor whats[] = {
      {listens ? port.Fd() : -1, vk32::WaitFor::ToRead, until.value_or(vk32::Never)}, signals.Handle(), port.Sending()};
  vk32::WaitForAny(whats);
}

/// "RB2000, RB3000 or RBCard"
std::string NamesOfKinds() {
  const auto kinds = vk32::sim::GatewayKinds();
  std::string names;
  for (const auto& kind : kinds) {
    if (&kind != &kinds.front()) names += &kind == &kinds.back() ? " or " : ", ";
    names += kind.name;
  }
  return names;
}

/// The image as it is; of a product with blocks a line for each block, and one for its image if it has that too.
void DumpConfiguration(const vk32::sim::Gateway& gateway, const std::string& path) {
  std::ofstream file(vk32::PathOf(path), std::ios::binary);
  if (gateway.BlocksInForce().empty()) {
    file << gateway.Image();
    return;
  }
  for (const auto& [number, data] : gateway.BlocksInForce()) file << number << ": " << vk32::HexText(data) << "\n";
  if (!gateway.Image().empty()) file << "image: " << vk32::HexText(gateway.Image()) << "\n";
}

std::string TitleOf(const vk32::sim::GatewayKind& kind) {
  std::string title(kind.product);
  if (!kind.model.empty()) title.append(" (").append(kind.model).append(")");
  return title;
}

/// Where a device meets its host, and how the user is told of it.
class Meeting {
 public:
  Meeting(const Options& options, const vk32::sim::GatewayKind& kind)
      : title_(TitleOf(kind)),
        // Before the port name is taken: whatever ends the program has to give it back.
        signals_(true) {
    if (!options.device.empty()) {
      port_ = std::make_unique<vk32::sim::SerialDevice>(options.device, kind.baudRate);
    } else {
      port_ = vk32::sim::VirtualPort(options.port);
    }
    if (!options.trace.empty()) trace_.emplace(options.trace, MonotonicNow());
  }

  void Tell(const std::string& words) const { std::cout << title_ << " " << words << std::endl; }

  /// Carries bytes until the user ends the program or the device has gone.
  void Serve(vk32::sim::FarEnd& farEnd, const std::function<void()>& pressConfigure) {
    Tell("on " + port_->Title());
    Carry(farEnd, pressConfigure);
    if (trace_) trace_->Finish();
  }

 private:
  void Carry(vk32::sim::FarEnd& farEnd, const std::function<void()>& pressConfigure) {
    while (!farEnd.Gone()) {
      Sleep(*port_, farEnd.Room() > 0, signals_, farEnd.NextDue());
      if (const auto signal = signals_.Take()) {
        if (*signal == vk32::UserSignals::End) return;
        pressConfigure();
      }
      if (const std::size_t room = farEnd.Room(); room > 0) {
        const vk32::Bytes read = port_->Read(room);
        port_->HoldHost(read.size() == room);
        if (trace_) trace_->Passed(MonotonicNow(), '>', read);
        farEnd.FromHost(read, MonotonicNow());
      }
      const vk32::Bytes written = farEnd.ToHost(MonotonicNow());
      if (trace_) trace_->Passed(MonotonicNow(), '<', written);
      port_->Write(written);
    }
    Tell("has been unplugged");
  }

  std::string title_;
  vk32::UserSignals signals_;
  std::unique_ptr<vk32::sim::HostPort> port_;
  std::optional<vk32::TraceFile> trace_;
};

void Simulate(const Options& options, const vk32::sim::GatewayKind& kind) {
  vk32::sim::Gateway gateway(kind, options.misbehaviour);
  gateway.infoTexts = options.infoTexts;
  gateway.Flash().erase = std::chrono::milliseconds(options.eraseTime);
  gateway.restartTime = std::chrono::milliseconds(options.restartTime);
  if (options.needsButton) gateway.StartInOperation();
  const Time byteTime = options.pace ? vk32::sim::SimulatedLine::ByteTime(kind.baudRate) : Time{0};
  vk32::sim::SimulatedLine line(gateway, byteTime);
  Meeting meeting(options, kind);
  // Files first: who reads the line may read the file.
  gateway.OnStored = [&](const std::string& size) {
    if (!options.dump.empty()) DumpConfiguration(gateway, options.dump);
    meeting.Tell("has stored a configuration of " + size);
  };
  gateway.OnFirmware = [&] {
    if (!options.firmwareDump.empty()) {
      std::ofstream(vk32::PathOf(options.firmwareDump), std::ios::binary) << gateway.Firmware();
    }
    meeting.Tell("has received a firmware of " + std::to_string(gateway.Firmware().size()) + " bytes");
  };
  meeting.Serve(line, [&] { gateway.PressConfigure(); });
}

/// True if the program has asked what stands in the trace and nothing else.
bool PlayTrace(const Options& options, const vk32::sim::GatewayKind& kind) {
  const auto replay = [&] {
    try {
      vk32::InputFile file(options.replay);
      return vk32::sim::Replay(file.Read(file.Size()));
    } catch (const vk32::RuntimeFault& fault) {
      throw std::runtime_error("The trace " + options.replay + " can't be read (" + fault.Description() +
                               "). Name a file that exists and that you may read.");
    } catch (const std::runtime_error& fault) {
      throw std::runtime_error("The trace " + options.replay + " can't be played: " + fault.what());
    }
  };
  vk32::sim::Replay device = replay();
  Meeting meeting(options, kind);
  device.Tell = [](const std::string& words) { std::cout << words << std::endl; };
  meeting.Serve(device, [] {});
  if (!device.AsTraced()) std::cout << "Ended before " << device.Awaited() << std::endl;
  return device.AsTraced();
}

/// The options of the simulated gateway alone: a trace holds what its device did.
void AddGatewayOptions(CLI::App& parser, Options& options) {
  const auto add = [&](const std::string& name, auto& value, const std::string& help) {
    return parser.add_option(name, value, help)->excludes("--replay");
  };
  parser.add_flag("--pace", options.pace, "carry bytes at the rate of the true line, as a real device does by itself")
      ->excludes("--replay")
      ->excludes("--device");
  parser.add_flag("--needs-button", options.needsButton, "answer only after the Configure button was pressed")
      ->excludes("--replay");
  add("--info-model", options.infoTexts.model, "product model in the device information of the VK5300");
  add("--info-version", options.infoTexts.version, "firmware version in it");
  add("--info-date", options.infoTexts.date, "firmware date in it");
  add("--dump", options.dump,
      "file that takes each stored configuration: the image as it is, or blocks in hexadecimal, a line each; of the "
      "VK5300 the image too is a line")
      ->type_name("FILE");
  add("--firmware-dump", options.firmwareDump, "file that takes each firmware that was received")->type_name("FILE");
  add("--restart-time", options.restartTime, "how long the VK5300 is deaf when it restarts (300)")
      ->type_name("MS")
      ->check(CLI::NonNegativeNumber);
  add("--erase-time", options.eraseTime, "how long it takes to erase its firmware (3000)")
      ->type_name("MS")
      ->check(CLI::NonNegativeNumber);
}

void AddOptions(CLI::App& parser, Options& options, std::vector<std::string>& misbehaviours) {
  parser.add_option("PRODUCT", options.product, NamesOfKinds())->required();
  auto* const port = parser.add_option("--port", options.port, "port name to stand under, COM1 to COM32");
  port->type_name("COMn");
  parser
      .add_option("--device", options.device,
                  "serial device to answer on instead of a pseudo-terminal: the far end of a null modem cable")
      ->type_name("PATH")
      ->excludes(port);
  parser
      .add_option("--replay", options.replay,
                  "trace of VK32 whose device is played: it answers what was answered then, at its times, and says "
                  "where something else is asked")
      ->type_name("FILE");
  parser
      .add_option("--trace", options.trace,
                  "file that takes the time and the bytes of all that passes: > from VK32, < to it")
      ->type_name("FILE");
  AddGatewayOptions(parser, options);
  parser.add_option("--misbehave", misbehaviours, vk32::sim::MisbehaviourHelp)
      ->type_name("HOW")
      ->excludes("--replay")
      ->each([&](const std::string& text) {
        const std::string fault = vk32::sim::SetMisbehaviour(text, options.misbehaviour);
        if (!fault.empty()) throw CLI::ValidationError(fault);
      });
  parser.set_version_flag("--version", "vk32-sim " + vk32::ProgramVersion());
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments = vk32::TakeArguments(argc, argv);
  CLI::App parser(
      std::string(vk32::sim::PortHelp()) +
          " Exit status: 0, 1 when the port can't be used, 2 for wrong usage, 3 when something else than the replayed "
          "trace was asked.",
      arguments.front());
  parser.allow_windows_style_options(false);
  Options options;
  std::vector<std::string> misbehaviours;
  AddOptions(parser, options, misbehaviours);
  std::reverse(arguments.begin(), arguments.end());  // as the parser wants them
  arguments.pop_back();
  try {
    parser.parse(arguments);
  } catch (const CLI::ParseError& error) {
    return parser.exit(error) == 0 ? Ended : WrongUsage;
  }

  const auto* kind = vk32::sim::FindGatewayKind(options.product);
  if (!kind) {
    std::cerr << "There is no simulated " << options.product << ". Choose " << NamesOfKinds() << ".\n";
    return WrongUsage;
  }
  if (!options.port.empty() && vk32::PortNames::Number(options.port) == 0) {
    std::cerr << "--port takes COM1 to COM32, not " << options.port << ".\n";
    return WrongUsage;
  }
  try {
    if (!options.replay.empty()) return PlayTrace(options, *kind) ? Ended : NotAsTraced;
    Simulate(options, *kind);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return Failed;
  }
  return Ended;
}
