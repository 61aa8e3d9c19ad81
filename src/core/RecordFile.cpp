// A configuration file, field by field.
#include "core/RecordFile.h"

#include <cmath>
#include <limits>

#include "core/Convert.h"
#include "platform/Fault.h"

namespace vk32 {
namespace {

constexpr int EndOfFile = -1;
// No field of the system comes near it: a file that is no configuration can't fill the memory.
constexpr std::size_t LongestField = 4096;

bool IsBlank(int c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(int c) { return c == '\r' || c == '\n'; }

void Append(std::string& field, int c) {
  if (field.size() == LongestField) throw RuntimeFault(RuntimeFault::TypeMismatch);
  field += static_cast<char>(c);
}

}  // namespace

RecordFile RecordFile::ForReading(const std::string& path) {
  RecordFile file;
  file.input_ = std::make_unique<InputFile>(path);
  return file;
}

RecordFile RecordFile::ForWriting(const std::string& path, Lasting lasting) {
  RecordFile file;
  file.output_ = std::make_unique<OutputFile>(path, lasting);
  return file;
}

bool RecordFile::CanHold(std::string_view text) {
  return text.size() <= LongestField && text.find_first_of("\"\r\n") == std::string_view::npos;
}

void RecordFile::Text(std::string& value) {
  if (!output_) {
    value = ReadText();
    return;
  }
  // Such a text could not be read back.
  if (!CanHold(value)) throw RuntimeFault(RuntimeFault::InvalidCall);
  WriteField('"' + value + '"');
}

void RecordFile::Long(std::int32_t& value) {
  Number(value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
}

void RecordFile::Integer(std::int16_t& value) {
  std::int32_t wide = value;
  Number(wide, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
  value = static_cast<std::int16_t>(wide);
}

void RecordFile::Byte(std::int32_t& value) { Number(value, 0, 255); }

void RecordFile::Number(std::int32_t& value, std::int32_t min, std::int32_t max) {
  const double number = output_ ? value : CDbl(ReadNumber());
  if (number != std::floor(number)) throw RuntimeFault(RuntimeFault::TypeMismatch);
  if (number < min || number > max) throw RuntimeFault(RuntimeFault::Overflow);
  value = static_cast<std::int32_t>(number);
  if (output_) WriteField(Str(value));
}

void RecordFile::EndLine() {
  if (output_) output_->Write("\r\n");
  lineBegun_ = false;
}

void RecordFile::Commit() { output_->Commit(); }

void RecordFile::WriteField(const std::string& field) {
  if (lineBegun_) output_->Write(",");
  output_->Write(field);
  lineBegun_ = true;
}

std::string RecordFile::ReadText() {
  if (SkipToField() != '"') throw RuntimeFault(RuntimeFault::TypeMismatch);
  std::string text;
  for (int c = Next(); c != '"'; c = Next()) {
    if (c == EndOfFile) throw RuntimeFault(RuntimeFault::InputPastEndOfFile);
    Append(text, c);
  }
  SkipSeparator();
  return text;
}

std::string RecordFile::ReadNumber() {
  std::string number;
  int c = SkipToField();
  for (; c != EndOfFile && c != ',' && !IsLineEnd(c) && !IsBlank(c); c = Next()) Append(number, c);
  peeked_ = c;
  SkipSeparator();
  return number;
}

int RecordFile::Next() {
  if (peeked_ == NothingPeeked) return input_->Get();
  const int c = peeked_;
  peeked_ = NothingPeeked;
  return c;
}

int RecordFile::SkipToField() {
  int c = Next();
  while (IsBlank(c) || IsLineEnd(c)) c = Next();
  if (c == EndOfFile) throw RuntimeFault(RuntimeFault::InputPastEndOfFile);
  return c;
}

/// One comma, or the end of the line, behind a field.
void RecordFile::SkipSeparator() {
  int c = Next();
  while (IsBlank(c)) c = Next();
  if (c != ',') peeked_ = c;
  if (c != ',' && c != EndOfFile && !IsLineEnd(c)) throw RuntimeFault(RuntimeFault::TypeMismatch);
}

}  // namespace vk32
