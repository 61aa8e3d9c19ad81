// What a program without a window does first.
#include "platform/ProgramStart.h"

#include <signal.h>
#include <unistd.h>

namespace vk32 {

std::vector<std::string> TakeArguments(int argc, char** argv) {
  signal(SIGPIPE, SIG_IGN);  // a reader that has ended is a failed write, which is told
  return {argv, argv + argc};
}

bool ErrorsAreOnTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace vk32
