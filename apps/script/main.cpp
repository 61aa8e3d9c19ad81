// vk32-script: VK32 without a screen, for scripts and remote shells.
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "app/App.h"
#include "platform/PosixEventLoop.h"
#include "platform/PosixSerialDriver.h"
#include "script/ScriptSession.h"
#include "trace/TracingDriver.h"

namespace {

enum ExitStatus { AllDone = 0, CommandFailed = 1, WrongUsage = 2, ProgramFault = 3 };

/// Lines from a descriptor; while none has come, events run.
class LineReader {
 public:
  LineReader(int fd, vk32::EventLoop& loop) : fd_(fd), loop_(loop) {}

  /// Nothing at the end of the input, or when `stop` says so.
  template <class Stop>
  std::optional<std::string> Next(Stop stop) {
    for (;;) {
      if (const std::size_t end = text_.find('\n'); end != std::string::npos) {
        std::string line = text_.substr(0, end);
        text_.erase(0, end + 1);
        return line;
      }
      if (ended_ && text_.empty()) return std::nullopt;
      if (ended_ || text_.size() > LongestLine) return std::exchange(text_, {});
      loop_.RunDue();
      if (stop()) return std::nullopt;
      loop_.Wait(fd_);
      ReadWhatWaits();
    }
  }

 private:
  static constexpr std::size_t LongestLine = 1 << 20;

  void ReadWhatWaits() {
    pollfd waiting{fd_, POLLIN, 0};
    if (poll(&waiting, 1, 0) <= 0) return;
    char buffer[4096];
    const ssize_t count = read(fd_, buffer, sizeof buffer);
    if (count > 0) {
      text_.append(buffer, static_cast<std::size_t>(count));
    } else {
      ended_ = true;
    }
  }

  int fd_;
  vk32::EventLoop& loop_;
  std::string text_;
  bool ended_ = false;
};

int Run(int fd, vk32::PortNames& names, bool keepGoing, const std::string& tracePath) {
  vk32::PosixEventLoop loop;
  vk32::PosixSerialDriver driver(loop, names);
  vk32::ScriptScreen screen([](const std::string& line) { std::cout << line << std::endl; });
  std::optional<vk32::Trace> trace;
  std::optional<vk32::TracingDriver> tracing;
  if (!tracePath.empty()) tracing.emplace(driver, trace.emplace(tracePath));
  vk32::App app(loop, screen, tracing ? static_cast<vk32::SerialDriver&>(*tracing) : driver, names);
  vk32::ScriptSession session(app, screen);
  vk32::StartProgram(app);
  LineReader lines(fd, loop);
  bool failed = false;
  while (!session.Finished() && (keepGoing || !failed)) {
    const auto line = lines.Next([&] { return session.Finished(); });
    if (!line) break;
    failed = !session.RunLine(*line) || failed;
  }
  if (screen.Faulted()) return ProgramFault;
  return failed || session.AfterFailed() ? CommandFailed : AllDone;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App options("VK32 without a screen: runs commands, one a line, from FILE or the standard input.");
  std::vector<std::string> ports;
  std::string file, trace;
  bool keepGoing = false;
  options.add_option("--port", ports, "COMn=PATH: which device stands behind a port name")
      ->type_name("COMn=PATH")
      ->allow_extra_args(false);
  options.add_flag("--keep-going", keepGoing, "go on behind a command that failed");
  options.add_option("--trace", trace, "file that takes each read and write")->type_name("FILE");
  options.add_option("FILE", file, "the commands");
  options.set_version_flag("--version", vk32::ProgramVersion());
  try {
    options.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return options.exit(error) == 0 ? AllDone : WrongUsage;
  }

  vk32::PortNames names;
  for (const std::string& port : ports) {
    const std::size_t equals = port.find('=');
    if (equals == std::string::npos || vk32::PortNames::Number(port.substr(0, equals)) == 0) {
      std::cerr << "--port takes COMn=PATH with n from 1 to 32, not " << port << "\n";
      return WrongUsage;
    }
    names.Assign(port.substr(0, equals), port.substr(equals + 1));
  }
  int fd = STDIN_FILENO;
  if (!file.empty() && (fd = open(file.c_str(), O_RDONLY | O_CLOEXEC)) < 0) {
    std::cerr << "The script " << file << " can't be read. Name a file that exists and that you may read.\n";
    return WrongUsage;
  }
  try {
    return Run(fd, names, keepGoing, trace);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return WrongUsage;
  }
}
