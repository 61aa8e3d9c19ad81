// Lines of a text that comes at its own time, and questions to the user at the terminal.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/EventLoop.h"
#include "platform/TextInput.h"

namespace vk32 {

/// While no line has come, events run.
class LineReader {
 public:
  LineReader(TextInput& input, EventLoop& loop) : input_(input), loop_(loop) {}

  /// Without its end; nothing at the end of the input, or when `stop` says so. std::system_error if the input can't be
  /// read.
  std::optional<std::string> Next(const std::function<bool()>& stop);
  /// Drops what has been typed and not been given yet.
  void DropTyped();

 private:
  TextInput& input_;
  EventLoop& loop_;
  std::string text_;
  bool ended_ = false;
  bool first_ = true;  // no line has been given yet
};

/// The terminal that the program was started at, whatever its standard input and output are.
class Terminal {
 public:
  explicit Terminal(EventLoop& loop);

  bool IsThere() const { return lines_.has_value(); }
  /// Shows a text and waits for a line that the user types from now on. Nothing if the terminal has gone, or `stop`
  /// says so.
  std::optional<std::string> Ask(const std::string& text, const std::function<bool()>& stop);

 private:
  std::unique_ptr<TextInput> input_;
  std::optional<LineReader> lines_;
};

}  // namespace vk32
