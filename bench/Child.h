// A program that is measured from outside.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/EventLoop.h"

namespace vk32::bench {

/// Runs from the constructor to the destructor, with its input and output at pipes.
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

  Time ProcessorTime() const;
  double ResidentMegabytes() const;
  bool Runs() const;

 private:
  pid_t pid_ = -1;
  int input_ = -1, output_ = -1;
  std::string read_;
};

}  // namespace vk32::bench
