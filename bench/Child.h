// A program that is measured from outside.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/EventLoop.h"

namespace vk32::bench {

/// For this process and what it becomes: no other core than the last one.
void KeepToOneCore();

/// Runs from the constructor to the destructor on one core, with its input and output at pipes.
class Child {
 public:
  explicit Child(const std::vector<std::string>& command);
  /// Ends it if it still runs.
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void Write(const std::string& text) const;
  /// The next line, without its end; empty at the end of the output.
  std::string ReadLine();

  /// Waits for its end; std::runtime_error if that is no good one.
  void Await();

  Time ProcessorTime() const;
  /// How long it could have run, but others had the processor; known until the destructor.
  Time QueueTime() const;
  double ResidentMegabytes() const;
  /// How often its threads have slept so far, each time to be woken.
  double Sleeps() const;
  bool Runs() const;

 private:
  pid_t pid_ = -1;
  int input_ = -1, output_ = -1;
  std::string read_;
};

/// vk32-script, which takes its commands one by one.
class Script : public Child {
 public:
  /// `ports`: the devices behind COM1, COM2 and so on.
  explicit Script(const std::vector<std::string>& ports);

  /// What the command has printed; std::runtime_error if it fails: a measurement of something else is worth nothing.
  std::string Do(const std::string& command);
  void Do(const std::vector<std::string>& commands);
};

/// From the splash page to the menu of a product on COM1, by these buttons of the main menu.
std::vector<std::string> ToProductMenu(const std::vector<std::string>& buttons);

}  // namespace vk32::bench
