// vk32-script: VK32 without a screen, for scripts and remote shells.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "app/App.h"
#include "platform/ProgramStart.h"
#include "platform/SystemEventLoop.h"
#include "platform/SystemName.h"
#include "script/LineReader.h"
#include "script/ScriptSession.h"
#include "trace/TracingDriver.h"

namespace {

enum ExitStatus { AllDone = 0, CommandFailed = 1, WrongUsage = 2, ProgramFault = 3 };

std::string Unreadable(const std::string& file, int code) {
  return "The script " + (file.empty() ? "on the standard input" : file) + " can't be read (" +
         vk32::SystemWords(code) + "). Name a file that exists and that you may read.";
}

/// std::runtime_error, with words for the user, if it can't be read.
std::unique_ptr<vk32::TextInput> InputOf(const std::string& file) {
  try {
    return file.empty() ? vk32::TextInput::StandardInput() : vk32::TextInput::File(file);
  } catch (const std::system_error& error) {
    throw std::runtime_error(Unreadable(file, error.code().value()));
  }
}

struct Options {
  std::vector<std::string> ports;
  std::string file, trace;
  bool keepGoing = false, strict = false;
};

/// Carries out the commands of a script; false if one failed.
bool RunLines(vk32::TextInput& input, vk32::EventLoop& loop, vk32::ScriptSession& session, bool keepGoing) {
  vk32::LineReader lines(input, loop);
  bool done = true;
  while (!session.Finished() && std::cout && (keepGoing || done)) {
    const auto line = lines.Next([&] { return session.Finished(); });
    if (!line) break;
    done = session.RunLine(*line) && done;
  }
  return done && session.RunEnd();
}

/// Carries out a script; std::exception, with words for the user, if it can't be read or the trace can't be written.
int Run(vk32::TextInput& input, vk32::PortNames& names, const Options& options) {
  vk32::SystemEventLoop loop;
  const auto driver = vk32::SystemSerialDriver(loop, names);
  vk32::ScriptScreen screen([](const std::string& line) { std::cout << line << std::endl; });
  std::optional<vk32::TraceFile> trace;
  std::optional<vk32::TracingDriver> tracing;
  if (!options.trace.empty()) tracing.emplace(*driver, trace.emplace(options.trace, loop.Now()), loop);
  vk32::App app(loop, screen, tracing ? static_cast<vk32::SerialDriver&>(*tracing) : *driver, names);
  vk32::ScriptSession session(app, screen);
  screen.strict = options.strict;
  vk32::Terminal terminal(loop);
  if (terminal.IsThere()) {
    screen.WaitForEnter = [&](const std::string& text) {
      return terminal.Ask(text, [&] { return session.Finished(); }).has_value();
    };
  }
  vk32::StartProgram(app);
  bool done = false;
  try {
    done = RunLines(input, loop, session, options.keepGoing);
  } catch (const std::system_error& error) {
    throw std::runtime_error(Unreadable(options.file, error.code().value()));
  }
  if (trace) trace->Finish();
  if (screen.Faulted()) return ProgramFault;
  return done && !session.AfterFailed() ? AllDone : CommandFailed;
}

/// Takes the arguments and runs; the exit status.
int Start(std::vector<std::string> arguments) {
  CLI::App parser("VK32 without a screen: runs commands, one a line, from FILE or the standard input.",
                  arguments.front());
  parser.allow_windows_style_options(false);
  Options options;
  parser.add_option("--port", options.ports, "COMn=PATH: which device stands behind a port name")
      ->type_name("COMn=PATH")
      ->allow_extra_args(false);
  parser.add_flag("--keep-going", options.keepGoing, "go on behind a command that failed");
  parser.add_flag("--strict", options.strict, "a critical box that the script does not expect fails the command");
  parser.add_option("--trace", options.trace, "file that takes each read and write")->type_name("FILE");
  parser.add_option("FILE", options.file, "the commands");
  parser.set_version_flag("--version", "vk32-script " + vk32::ProgramVersion());
  std::reverse(arguments.begin(), arguments.end());  // as the parser wants them
  arguments.pop_back();
  try {
    parser.parse(arguments);
  } catch (const CLI::ParseError& error) {
    return parser.exit(error) == 0 ? AllDone : WrongUsage;
  }

  vk32::PortNames names;
  for (const std::string& port : options.ports) {
    if (names.AssignBy(port)) continue;
    std::cerr << "--port takes COMn=PATH with n from 1 to 32, not " << port << "\n";
    return WrongUsage;
  }
  if (const std::string ignored = names.Ignored(); !ignored.empty()) std::cerr << ignored << ".\n";
  try {
    const auto input = InputOf(options.file);
    return Run(*input, names, options);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return WrongUsage;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int status = Start(vk32::TakeArguments(argc, argv));
  return vk32::FinishOutput() ? status : WrongUsage;
}
