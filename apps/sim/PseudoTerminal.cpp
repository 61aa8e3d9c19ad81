// A pseudo-terminal that stands as a serial port under a port name.
#include "sim/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "platform/PortNames.h"
#include "platform/SystemEventLoop.h"

namespace vk32::sim {

namespace {

namespace fs = std::filesystem;

constexpr int Tries = 10;

void MakeFolder(const fs::path& folder, const std::string& portName) {
  fs::create_directories(folder.parent_path());
  mkdir(folder.c_str(), 0700);
  const std::string why = PortNames::WhyNotTrusted(folder);
  if (why.empty()) return;
  throw std::runtime_error(portName + " can't be taken: " + folder.string() + " " + why +
                           ". Remove it, or set XDG_RUNTIME_DIR to a folder of your own.");
}

}  // namespace

PseudoTerminal::PseudoTerminal() {
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  char name[128];
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0 || ptsname_r(master_, name, sizeof name) != 0) {
    throw std::system_error(errno, std::generic_category(), "no pseudo-terminal");
  }
  path_ = name;
  slave_ = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave_ < 0) throw std::system_error(errno, std::generic_category(), path_);
  termios settings{};
  tcgetattr(slave_, &settings);
  cfmakeraw(&settings);
  tcsetattr(slave_, TCSANOW, &settings);
}

PseudoTerminal::~PseudoTerminal() {
  if (!link_.empty()) {
    unlink(link_.c_str());
    rmdir(fs::path(link_).parent_path().c_str());  // behind the last link; another one holds it
  }
  close(slave_);
  close(master_);
}

void PseudoTerminal::RegisterAs(const std::string& portName) {
  const fs::path folder = PortNames::RuntimeFolder();
  const fs::path link = folder / portName;
  // A simulator that ends may take the empty folder away before there is a link in it.
  bool made = false;
  for (int i = 0; i < Tries && !made; ++i) {
    MakeFolder(folder, portName);
    std::error_code ignored;
    // A link that leads nowhere was left behind by a simulator that was killed.
    // Or to this very terminal: the number of a dead one goes to the next.
    if (fs::is_symlink(link, ignored) && (!fs::exists(link, ignored) || fs::read_symlink(link, ignored) == path_)) {
      unlink(link.c_str());
    }
    made = symlink(path_.c_str(), link.c_str()) == 0;
    if (!made && errno != ENOENT) break;
  }
  if (!made) {
    throw std::runtime_error(portName + " can't be taken: " + std::generic_category().message(errno) + " (" +
                             link.string() + "). Choose another port number, or end the simulator that holds it.");
  }
  link_ = link;
  portName_ = portName;
}

Bytes PseudoTerminal::Read(std::size_t most) {
  char buffer[4096];
  const ssize_t count = read(master_, buffer, std::min(sizeof buffer, most));
  return count > 0 ? Bytes(buffer, static_cast<std::size_t>(count)) : Bytes();
}

void PseudoTerminal::Write(std::string_view bytes) {
  constexpr std::string_view Flow = "\x11\x13";
  if (const auto last = bytes.find_last_of(Flow); last != bytes.npos) heldByDevice_ = bytes[last] == Flow[1];
  while (!bytes.empty()) {
    const ssize_t count = write(master_, bytes.data(), bytes.size());
    if (count <= 0) break;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  HoldOrLetGo();
}

void PseudoTerminal::HoldHost(bool held) {
  wantsHold_ = held;
  HoldOrLetGo();
}

void PseudoTerminal::HoldOrLetGo() {
  if (wantsHold_ == held_) return;
  // The kernel has one stop for both: letting go would undo the device's XOFF.
  termios settings{};
  if (held_ && heldByDevice_ && tcgetattr(slave_, &settings) == 0 && (settings.c_iflag & IXON) != 0) return;
  if (tcflow(slave_, wantsHold_ ? TCOOFF : TCOON) == 0) held_ = wantsHold_;
}

WaitFor PseudoTerminal::Sending() const {
  // The host may end its flow control, which nobody tells.
  const Time again = MonotonicNow() + std::chrono::milliseconds(20);
  return {-1, WaitFor::ToWrite, wantsHold_ == held_ ? Never : again};
}

std::string_view PortHelp() {
  return "A simulated gateway on a pseudo-terminal. Ends on Ctrl-C; SIGUSR1 presses its Configure button.";
}

std::unique_ptr<HostPort> VirtualPort(const std::string& portName) {
  auto terminal = std::make_unique<PseudoTerminal>();
  if (!portName.empty()) terminal->RegisterAs(portName);
  return terminal;
}

}  // namespace vk32::sim
