// The console's Ctrl+C and Ctrl+Break, as something to be waited for.
#include "platform/UserSignals.h"

#include <atomic>

#include "platform/win32/Win32.h"

namespace vk32 {

struct UserSignals::State {
  OwnedHandle came = MakeEvent();
  bool presses = false;
  std::atomic<int> ends{0}, pressed{0};
  std::atomic<bool> letGo{false};

  /// The system calls a plain function, on a thread of its own.
  static inline std::atomic<State*> receiver{nullptr};
  static BOOL WINAPI Take(DWORD kind);
};

BOOL WINAPI UserSignals::State::Take(DWORD kind) {
  State* const state = receiver;
  if (state == nullptr) return FALSE;
  const bool press = kind == CTRL_BREAK_EVENT && state->presses;
  if (!press && state->letGo) return FALSE;
  ++(press ? state->pressed : state->ends);
  SetEvent(state->came.get());
  // The console closes: the program has some seconds to end by itself, but only for as long as this does not return.
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

UserSignals::UserSignals(bool presses) : state_(std::make_unique<State>()) {
  state_->presses = presses;
  State::receiver = state_.get();
  SetConsoleCtrlHandler(State::Take, TRUE);
}

UserSignals::~UserSignals() {
  SetConsoleCtrlHandler(State::Take, FALSE);
  State::receiver = nullptr;
}

int UserSignals::Handle() const { return NumberOf(state_->came.get()); }

std::optional<UserSignals::Signal> UserSignals::Take() {
  ResetEvent(state_->came.get());
  const auto one = [](std::atomic<int>& count) { return count.exchange(0) > 0; };
  if (one(state_->ends)) return End;
  if (one(state_->pressed)) return Press;
  return std::nullopt;
}

void UserSignals::LetGo() { state_->letGo = true; }

}  // namespace vk32
