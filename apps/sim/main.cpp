// vk32-sim: a simulated gateway on a pseudo-terminal.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "app/App.h"
#include "core/Convert.h"
#include "platform/PortNames.h"
#include "platform/PosixEventLoop.h"
#include "sim/PseudoTerminal.h"
#include "sim/SimulatedLine.h"
#include "trace/Trace.h"

namespace {

using namespace std::chrono_literals;
using vk32::MonotonicNow;
using vk32::Time;

struct Options {
  std::string product;
  std::string port;
  bool pace = false;
  bool needsButton = false;
  std::string dump, firmwareDump, trace;
  int eraseTime = 3000, restartTime = 300;  // ms
  vk32::sim::InfoTexts infoTexts;
  vk32::sim::Misbehaviour misbehaviour;
};

constexpr const char* MisbehaviourHelp =
    "silent, late=MS, junk, bad-checksum, short=BYTES, deaf-block=N, info-pieces=N, hold=MS (XOFF), unplug=BYTES; of "
    "the recovery: banner=BYTES, no-ready, no-burn, hold-for-good, nak=N, cancel; repeatable";

struct MisbehaviourName {
  std::string_view name;
  bool numbered;
  void (*set)(vk32::sim::Misbehaviour& misbehaviour, int number);
};

constexpr MisbehaviourName MisbehaviourNames[] = {
    {"silent", false, [](auto& how, int) { how.silent = true; }},
    {"late", true, [](auto& how, int number) { how.late = std::chrono::milliseconds(number); }},
    {"junk", false, [](auto& how, int) { how.junk = true; }},
    {"bad-checksum", false, [](auto& how, int) { how.badChecksum = true; }},
    {"short", true, [](auto& how, int number) { how.shortBy = number; }},
    {"deaf-block", true, [](auto& how, int number) { how.deafBlock = number; }},
    {"info-pieces", true, [](auto& how, int number) { how.infoPieces = number; }},
    {"hold", true, [](auto& how, int number) { how.hold = std::chrono::milliseconds(number); }},
    {"unplug", true, [](auto& how, int number) { how.unplugAfter = number; }},
    {"banner", true, [](auto& how, int number) { how.bannerLength = number; }},
    {"no-ready", false, [](auto& how, int) { how.noReady = true; }},
    {"no-burn", false, [](auto& how, int) { how.noBurn = true; }},
    {"hold-for-good", false, [](auto& how, int) { how.holdForGood = true; }},
    {"nak", true, [](auto& how, int number) { how.naks = number; }},
    {"cancel", false, [](auto& how, int) { how.cancel = true; }},
};

/// Empty if the text names a misbehaviour.
std::string SetMisbehaviour(const std::string& text, vk32::sim::Misbehaviour& misbehaviour) {
  const std::size_t equals = text.find('=');
  int number = 0;
  const bool numbered = equals != std::string::npos;
  if (numbered) {
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data() + equals + 1, end, number).ptr != end || number < 0) return "not a number: " + text;
  }
  for (const MisbehaviourName& known : MisbehaviourNames) {
    if (known.name != text.substr(0, equals) || known.numbered != numbered) continue;
    known.set(misbehaviour, number);
    return {};
  }
  return std::string("not one of: ") + MisbehaviourHelp;
}

/// Readable when the user ends the program (SIGINT, SIGTERM, SIGHUP) or presses the Configure button (SIGUSR1).
int SignalDescriptor() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1}) sigaddset(&signals, number);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

/// A terminal of -1 is not listened to.
void Sleep(int terminal, int signals, std::optional<Time> until) {
  pollfd descriptors[] = {{terminal, POLLIN, 0}, {signals, POLLIN, 0}};
  timespec left{};
  if (until) {
    const Time span = std::max(*until - MonotonicNow(), Time{0});
    left = {span.count() / 1'000'000'000, span.count() % 1'000'000'000};
  }
  ppoll(descriptors, 2, until ? &left : nullptr, nullptr);
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
  std::ofstream file(path, std::ios::binary);
  if (gateway.BlocksInForce().empty()) {
    file << gateway.Image();
    return;
  }
  for (const auto& [number, data] : gateway.BlocksInForce()) file << number << ": " << vk32::HexText(data) << "\n";
  if (!gateway.Image().empty()) file << "image: " << vk32::HexText(gateway.Image()) << "\n";
}

void Simulate(const Options& options, const vk32::sim::GatewayKind& kind) {
  vk32::sim::Gateway gateway(kind, options.misbehaviour);
  gateway.infoTexts = options.infoTexts;
  gateway.Flash().erase = std::chrono::milliseconds(options.eraseTime);
  gateway.restartTime = std::chrono::milliseconds(options.restartTime);
  if (options.needsButton) gateway.StartInOperation();
  const Time byteTime = options.pace ? vk32::sim::SimulatedLine::ByteTime(kind.baudRate) : Time{0};
  vk32::sim::SimulatedLine line(gateway, byteTime);
  // Before the port name is taken: whatever ends the program has to give it back.
  const int signals = SignalDescriptor();
  vk32::sim::PseudoTerminal terminal;
  if (!options.port.empty()) terminal.RegisterAs(options.port);
  std::optional<vk32::Trace> trace;
  if (!options.trace.empty()) trace.emplace(options.trace);
  std::string title(kind.product);
  if (!kind.model.empty()) title.append(" (").append(kind.model).append(")");
  // Files first: who reads the line may read the file.
  gateway.OnStored = [&](const std::string& size) {
    if (!options.dump.empty()) DumpConfiguration(gateway, options.dump);
    std::cout << title << " has stored a configuration of " << size << std::endl;
  };
  gateway.OnFirmware = [&] {
    if (!options.firmwareDump.empty()) {
      std::ofstream(options.firmwareDump, std::ios::binary) << gateway.Firmware();
    }
    std::cout << title << " has received a firmware of " << gateway.Firmware().size() << " bytes" << std::endl;
  };
  std::cout << title << " on " << (options.port.empty() ? terminal.Path() : options.port + ", " + terminal.Path())
            << std::endl;
  while (!line.Unplugged()) {
    Sleep(line.Room() > 0 ? terminal.Fd() : -1, signals, line.NextDue());
    signalfd_siginfo signal{};
    if (read(signals, &signal, sizeof signal) == sizeof signal) {
      if (signal.ssi_signo != SIGUSR1) return;
      gateway.PressConfigure();
    }
    if (line.Room() > 0) {
      const vk32::Bytes read = terminal.Read(line.Room());
      if (trace) trace->Line('>', read);
      line.FromHost(read, MonotonicNow());
    }
    const vk32::Bytes written = line.ToHost(MonotonicNow());
    if (trace) trace->Line('<', written);
    terminal.Write(written);
  }
  std::cout << title << " has been unplugged" << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App parser("A simulated gateway on a pseudo-terminal. Ends on Ctrl-C; SIGUSR1 presses its Configure button.");
  Options options;
  std::vector<std::string> misbehaviours;
  parser.add_option("PRODUCT", options.product, NamesOfKinds())->required();
  parser.add_option("--port", options.port, "port name to stand under, COM1 to COM32")->type_name("COMn");
  parser.add_flag("--pace", options.pace, "carry bytes at the rate of the true line");
  parser.add_flag("--needs-button", options.needsButton, "answer only after the Configure button was pressed");
  parser.add_option("--info-model", options.infoTexts.model, "product model in the device information of the VK5300");
  parser.add_option("--info-version", options.infoTexts.version, "firmware version in it");
  parser.add_option("--info-date", options.infoTexts.date, "firmware date in it");
  parser
      .add_option(
          "--dump", options.dump,
          "file that takes each stored configuration: the image as it is, or blocks in hexadecimal, a line each; of "
          "the VK5300 the image too is a line")
      ->type_name("FILE");
  parser.add_option("--firmware-dump", options.firmwareDump, "file that takes each firmware that was received")
      ->type_name("FILE");
  parser
      .add_option("--trace", options.trace,
                  "file that takes the time and the bytes of all that passes: > from VK32, < to it")
      ->type_name("FILE");
  parser.add_option("--restart-time", options.restartTime, "how long the VK5300 is deaf when it restarts (300)")
      ->type_name("MS")
      ->check(CLI::NonNegativeNumber);
  parser.add_option("--erase-time", options.eraseTime, "how long it takes to erase its firmware (3000)")
      ->type_name("MS")
      ->check(CLI::NonNegativeNumber);
  parser.add_option("--misbehave", misbehaviours, MisbehaviourHelp)
      ->type_name("HOW")
      ->each([&](const std::string& text) {
        const std::string fault = SetMisbehaviour(text, options.misbehaviour);
        if (!fault.empty()) throw CLI::ValidationError(fault);
      });
  parser.set_version_flag("--version", vk32::ProgramVersion());
  try {
    parser.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return parser.exit(error) == 0 ? 0 : 2;
  }

  const auto* kind = vk32::sim::FindGatewayKind(options.product);
  if (!kind) {
    std::cerr << "There is no simulated " << options.product << ". Choose " << NamesOfKinds() << ".\n";
    return 2;
  }
  if (!options.port.empty() && vk32::PortNames::Number(options.port) == 0) {
    std::cerr << "--port takes COM1 to COM32, not " << options.port << ".\n";
    return 2;
  }
  try {
    Simulate(options, *kind);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
  return 0;
}
