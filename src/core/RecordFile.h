// A configuration file: lines of fields, joined by commas. One object either writes them or reads them, so that a
// product's record is told once.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Files.h"

namespace vk32 {

/// Texts stand in double quotes, without an escape for one within; numbers in plain decimal; lines end with CR LF. In
/// reading a comma and the end of a line part fields alike, and blanks around a field don't count.
/// Reading faults 62 at the end of the file and 13 at a field of another kind; 6 where a number does not fit its type.
class RecordFile {
 public:
  static RecordFile ForReading(const std::string& path);
  /// An existing file is replaced when Commit is reached, and stays whole if it is not.
  static RecordFile ForWriting(const std::string& path, Lasting lasting = Lasting::ForGood);

  bool Reads() const { return input_ != nullptr; }
  /// A text that has a form in the file: no quote, no end of line, and no more than a file's longest field.
  static bool CanHold(std::string_view text);

  // One field each. Writing takes the value, reading sets it.
  void Text(std::string& value);
  void Long(std::int32_t& value);     // signed 32-bit
  void Integer(std::int16_t& value);  // signed 16-bit
  void Byte(std::int32_t& value);     // 0 to 255, in a wider variable

  /// Ends a line in writing.
  void EndLine();
  /// The whole file is on disk and has its name.
  void Commit();

 private:
  RecordFile() = default;

  void Number(std::int32_t& value, std::int32_t min, std::int32_t max);
  void WriteField(const std::string& field);
  std::string ReadText();
  std::string ReadNumber();
  int Next();
  int SkipToField();
  void SkipSeparator();

  std::unique_ptr<InputFile> input_;
  std::unique_ptr<OutputFile> output_;
  int peeked_ = NothingPeeked;
  bool lineBegun_ = false;

  static constexpr int NothingPeeked = -2;
};

}  // namespace vk32
