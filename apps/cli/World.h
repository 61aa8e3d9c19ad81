// What a command of vk32-cli works with, and how it ends.
#pragma once

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>

#include "platform/EventLoop.h"
#include "platform/PortNames.h"
#include "platform/SerialDriver.h"

namespace vk32 {

enum class ExitStatus {
  Done = 0,
  Different = 1,  // or not verified
  WrongUsage = 2,
  NoAnswer = 3,  // of a device, or a wrong one
  NoPort = 4,
  FileRefused = 5,
  DoesNotFit = 6,  // a value
  Stopped = 7,     // by the user
};

/// Ends a command. Its words are for the user.
struct Failure : std::runtime_error {
  Failure(ExitStatus status_, const std::string& words) : std::runtime_error(words), status(status_) {}
  ExitStatus status;
};

struct Console {
  std::ostream& out;                                          // results
  std::ostream& err;                                          // everything else
  bool showsProgress = false;                                 // on `err`
  bool yes = false;                                           // nothing is asked
  std::function<bool(const std::string& text)> waitForEnter;  // false if it can't come any more; empty: no terminal
};

class Program;

struct World {
  EventLoop& loop;
  SerialDriver& driver;
  PortNames& names;
  Console console;
  Program* running = nullptr;  // the one that is under way
  bool stopped = false;

  /// What the user's Ctrl+C does: ends what is under way as its own CANCEL would.
  void Stop();
  /// Failure if the user has stopped the command.
  void LeaveIfStopped(const std::string& state) const {
    if (stopped) throw Failure(ExitStatus::Stopped, state.empty() ? "Stopped." : "Stopped. " + state);
  }
  /// Takes what has come from the user, without waiting: for work that waits for nothing. Failure if that is a stop.
  void LookForStop();
  /// Failure where the user would have to confirm something and nobody can be asked.
  void RequireUser() const;
  /// Asks the user to press Enter; what does not come is a stop.
  void Confirm(const std::string& text);
};

}  // namespace vk32
