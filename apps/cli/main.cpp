// vk32-cli: the jobs of VK32 on the command line.
#include <iostream>

#include "cli/CommandLine.h"
#include "platform/ProgramStart.h"
#include "platform/SystemEventLoop.h"
#include "platform/UserSignals.h"
#include "script/LineReader.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments = vk32::TakeArguments(argc, argv);
  vk32::SystemEventLoop loop;
  vk32::PortNames names;
  const auto driver = vk32::SystemSerialDriver(loop, names);
  vk32::World world{loop, *driver, names, {std::cout, std::cerr, vk32::ErrorsAreOnTerminal(), false, {}}};
  vk32::UserSignals signals(false);
  loop.StartWhenReadable(signals.Handle(), [&] {
    if (signals.Take()) signals.LetGo();
    world.Stop();
  });
  vk32::Terminal terminal(loop);
  if (terminal.IsThere()) {
    world.console.waitForEnter = [&](const std::string& text) {
      return terminal.Ask(text, [&] { return world.stopped; }).has_value();
    };
  }
  if (const std::string ignored = names.Ignored(); !ignored.empty()) std::cerr << ignored << ".\n";
  const vk32::ExitStatus status = vk32::RunCommandLine(world, {arguments.begin() + 1, arguments.end()});
  return static_cast<int>(vk32::FinishOutput() ? status : vk32::ExitStatus::WrongUsage);
}
