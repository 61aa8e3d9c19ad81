// vk32-cli: the jobs of VK32 on the command line.
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <iostream>

#include "cli/CommandLine.h"
#include "platform/PosixEventLoop.h"
#include "platform/PosixSerialDriver.h"
#include "script/LineReader.h"

namespace {

/// What ends the program comes as something to be read. The next one ends it at once.
class StopSignals {
 public:
  StopSignals(vk32::EventLoop& loop, std::function<void()> stop) {
    sigemptyset(&set_);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&set_, number);
    sigprocmask(SIG_BLOCK, &set_, nullptr);
    fd_ = signalfd(-1, &set_, SFD_CLOEXEC);
    loop.StartWhenReadable(fd_, [this, stop = std::move(stop)] {
      signalfd_siginfo taken{};
      if (read(fd_, &taken, sizeof taken) == sizeof taken) sigprocmask(SIG_UNBLOCK, &set_, nullptr);
      stop();
    });
  }

 private:
  sigset_t set_;
  int fd_;
};

}  // namespace

int main(int argc, char** argv) {
  signal(SIGPIPE, SIG_IGN);  // a reader that has ended is a failed write, which is told
  vk32::PosixEventLoop loop;
  vk32::PortNames names;
  vk32::PosixSerialDriver driver(loop, names);
  vk32::World world{loop, driver, names, {std::cout, std::cerr, isatty(STDERR_FILENO) != 0, false, {}}};
  const StopSignals signals(loop, [&] { world.Stop(); });
  vk32::Terminal terminal(loop);
  if (terminal.IsThere()) {
    world.console.waitForEnter = [&](const std::string& text) {
      return terminal.Ask(text, [&] { return world.stopped; }).has_value();
    };
  }
  if (const std::string ignored = names.Ignored(); !ignored.empty()) std::cerr << ignored << ".\n";
  const vk32::ExitStatus status = vk32::RunCommandLine(world, {argv + 1, argv + argc});
  if (std::cout.flush()) return static_cast<int>(status);
  std::cerr
      << "The standard output can't be written: its reader has ended or its disk is full. Give it another place.\n";
  return static_cast<int>(vk32::ExitStatus::WrongUsage);
}
