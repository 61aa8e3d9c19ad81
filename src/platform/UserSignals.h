// What the user tells a program without a window from outside: that it is to end, and what he presses.
#pragma once

#include <memory>
#include <optional>

namespace vk32 {

class UserSignals {
 public:
  enum Signal {
    End,    // Ctrl+C, and whatever else ends a program
    Press,  // a button of a simulated device: SIGUSR1; on Windows Ctrl+Break
  };

  /// From now on they come here. `presses`: Press as well.
  explicit UserSignals(bool presses);
  ~UserSignals();
  UserSignals(const UserSignals&) = delete;
  UserSignals& operator=(const UserSignals&) = delete;

  /// Readable when a signal has come.
  int Handle() const;
  /// The next one that has come, if any.
  std::optional<Signal> Take();
  /// The next one ends the program at once.
  void LetGo();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vk32
