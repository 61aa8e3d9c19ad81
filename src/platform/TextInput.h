// Text that comes at its own time: the standard input, a file, the user at the terminal.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vk32 {

/// What some editors put before a text in UTF-8.
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

class TextInput {
 public:
  static std::unique_ptr<TextInput> StandardInput();
  /// std::system_error if the file can't be opened.
  static std::unique_ptr<TextInput> File(const std::string& path);
  /// The terminal that the program was started at, whatever its standard input and output are; nullptr: there is none.
  static std::unique_ptr<TextInput> Terminal();

  virtual ~TextInput() = default;

  /// Readable when Take has something to do. Asks for what comes next: to be called before each wait.
  virtual int Handle() const = 0;
  /// Adds what has come to `text`, if anything has. False at the end. std::system_error if it can't be read.
  virtual bool Take(std::string& text) = 0;
  /// Drops what the user has typed at the terminal and nobody has taken yet.
  virtual void DropTyped() = 0;
  /// Shows a text on the terminal; false if it has gone.
  virtual bool Show(const std::string& text) = 0;
};

}  // namespace vk32
