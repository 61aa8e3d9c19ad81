// The record of what passes on a line.
#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// Bytes that have passed together.
struct TraceRecord {
  Time at;         // since the trace's start
  char direction;  // '>': VK32 has written them, '<': it has read them
  Bytes bytes;     // at least one
};

/// Time in ms, direction, bytes in hexadecimal and the message's name where they are a whole one, without a line's end:
/// "    1234.567 > 54 45 45  image upload".
std::string TraceLine(const TraceRecord& record);
/// The record that a line tells; nothing if it is no line of a trace, as what stands around one in a file.
/// std::runtime_error, with words for the user, if it is one whose bytes can't be read.
std::optional<TraceRecord> ReadTraceLine(std::string_view line);

/// What takes a trace. Moments are those of an event loop's clock.
class TraceSink {
 public:
  virtual ~TraceSink() = default;
  virtual void Passed(Time now, char direction, const Bytes& bytes) = 0;
};

/// A trace in a file, line by line as things pass.
class TraceFile : public TraceSink {
 public:
  /// Times count from `start`. std::runtime_error, with words for the user, if the file can't be written.
  TraceFile(const std::string& path, Time start);

  void Passed(Time now, char direction, const Bytes& bytes) override;
  /// Closes the file. std::runtime_error, with words for the user, if not all of it could be written.
  void Finish();

 private:
  std::string path_;
  std::ofstream file_;
  Time start_;
};

/// A trace in memory that keeps the latest: at least half of its room, at most all of it.
class TraceRing : public TraceSink {
 public:
  /// Times count from `start`.
  explicit TraceRing(Time start, std::size_t room = 1 << 20) : start_(start), room_(room) {}

  void Passed(Time now, char direction, const Bytes& bytes) override;
  /// Its lines, the oldest first, each with its end.
  std::string Text() const;

 private:
  Time start_;
  std::size_t room_;           // bytes
  std::string older_, newer_;  // records: time, count of bytes, direction, bytes
};

}  // namespace vk32
