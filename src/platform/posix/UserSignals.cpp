// The signals of the system, as something to be read.
#include "platform/UserSignals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace vk32 {

struct UserSignals::State {
  sigset_t set;
  int fd;
};

UserSignals::UserSignals(bool presses) : state_(std::make_unique<State>()) {
  sigemptyset(&state_->set);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&state_->set, number);
  if (presses) sigaddset(&state_->set, SIGUSR1);
  sigprocmask(SIG_BLOCK, &state_->set, nullptr);
  state_->fd = signalfd(-1, &state_->set, SFD_CLOEXEC | SFD_NONBLOCK);
}

UserSignals::~UserSignals() { close(state_->fd); }

int UserSignals::Handle() const { return state_->fd; }

std::optional<UserSignals::Signal> UserSignals::Take() {
  signalfd_siginfo taken{};
  if (read(state_->fd, &taken, sizeof taken) != sizeof taken) return std::nullopt;
  return taken.ssi_signo == SIGUSR1 ? Press : End;
}

void UserSignals::LetGo() { sigprocmask(SIG_UNBLOCK, &state_->set, nullptr); }

}  // namespace vk32
