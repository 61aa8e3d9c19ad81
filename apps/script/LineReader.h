// Lines from a descriptor, and questions to the user at the terminal.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/EventLoop.h"

namespace vk32 {

/// While no line has come, events run.
class LineReader {
 public:
  LineReader(int fd, EventLoop& loop) : fd_(fd), loop_(loop) {}

  /// Without its end; nothing at the end of the input, or when `stop` says so. std::system_error if the input can't be
  /// read.
  std::optional<std::string> Next(const std::function<bool()>& stop);

 private:
  void ReadWhatWaits();

  int fd_;
  EventLoop& loop_;
  std::string text_;
  bool ended_ = false;
};

/// The terminal that the program was started at, whatever its standard input and output are.
class Terminal {
 public:
  explicit Terminal(EventLoop& loop);
  ~Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  bool IsThere() const { return fd_ >= 0; }
  /// Shows a text and waits for a line of the user. Nothing if the terminal has gone, or `stop` says so.
  std::optional<std::string> Ask(const std::string& text, const std::function<bool()>& stop);

 private:
  int fd_;
  LineReader lines_;
};

}  // namespace vk32
