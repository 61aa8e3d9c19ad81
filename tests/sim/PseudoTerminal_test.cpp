// The simulated line's hold on its host.
#include "sim/PseudoTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace vk32::sim {
namespace {

TEST(PseudoTerminal, HoldsTheHostAndUndoesNoXoff) {
  PseudoTerminal terminal;
  const int host = open(terminal.Path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  const auto goes = [&](int patience = 0) {
    pollfd line{host, POLLOUT, 0};
    return poll(&line, 1, patience) == 1 && write(host, "x", 1) == 1;
  };
  termios flow{};
  tcgetattr(host, &flow);
  for (const bool byXon : {true, false}) {
    flow.c_iflag |= IXON;
    tcsetattr(host, TCSANOW, &flow);
    EXPECT_TRUE(goes());
    terminal.HoldHost(true);
    EXPECT_FALSE(goes());
    terminal.Write("\x13");
    terminal.HoldHost(false);
    EXPECT_FALSE(goes());
    EXPECT_NE(terminal.Sending().until, Never);
    flow.c_iflag &= ~static_cast<tcflag_t>(IXON);
    if (!byXon) tcsetattr(host, TCSANOW, &flow);
    terminal.Write(byXon ? "\x11" : "");
    EXPECT_TRUE(goes(5000)) << byXon;
  }
  close(host);
}

}  // namespace
}  // namespace vk32::sim
