// The record of what passes on a line.
#include "trace/Trace.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "core/Convert.h"
#include "platform/Paths.h"
#include "trace/MessageNames.h"

namespace vk32 {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

struct RingHeader {
  Time at;
  std::uint32_t count;  // bytes behind the header
  char direction;
};

/// Takes hexadecimal pairs, parted by one blank, from the front of a text; a second blank ends them.
Bytes TakeHexText(std::string_view& text) {
  Bytes bytes;
  std::uint8_t byte = 0;
  while (text.size() >= 2 && std::from_chars(text.data(), text.data() + 2, byte, 16).ptr == text.data() + 2) {
    bytes += static_cast<char>(byte);
    text.remove_prefix(2);
    if (text.size() < 3 || text[0] != ' ' || text[1] == ' ') break;
    text.remove_prefix(1);
  }
  return bytes;
}

}  // namespace

std::string TraceLine(const TraceRecord& record) {
  char moment[32];
  std::snprintf(moment, sizeof moment, "%12.3f ", Milliseconds(record.at).count());
  std::string line = moment;
  line.append({record.direction, ' '}).append(HexText(record.bytes));
  if (const auto name = MessageName(record.bytes); !name.empty()) line.append("  ").append(name);
  return line;
}

std::optional<TraceRecord> ReadTraceLine(std::string_view line) {
  constexpr double Longest = 1e12;  // ms
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  std::string_view rest = line;
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  double moment = -1;
  const char* const behind = std::from_chars(rest.data(), rest.data() + rest.size(), moment).ptr;
  rest.remove_prefix(static_cast<std::size_t>(behind - rest.data()));
  const std::string_view mark = rest.substr(0, 3);
  if (!(moment >= 0 && moment < Longest) || (mark != " > " && mark != " < ")) return std::nullopt;
  rest.remove_prefix(mark.size());
  TraceRecord record{std::chrono::duration_cast<Time>(Milliseconds(moment)), mark[1], TakeHexText(rest)};
  if (record.bytes.empty() || (!rest.empty() && rest.substr(0, 2) != "  ")) {
    throw std::runtime_error("\"" + std::string(line.substr(0, 60)) + "\" is no whole line of a trace");
  }
  return record;
}

TraceFile::TraceFile(const std::string& path, Time start)
    : path_(path), file_(PathOf(path), std::ios::binary), start_(start) {
  if (!file_)
    throw std::runtime_error("The trace " + path + " can't be written. Name a file in a folder that you may write to.");
}

void TraceFile::Passed(Time now, char direction, const Bytes& bytes) {
  if (!bytes.empty()) file_ << TraceLine({now - start_, direction, bytes}) << std::endl;
}

void TraceFile::Finish() {
  file_.close();
  if (!file_) throw std::runtime_error("The trace " + path_ + " is not whole: its disk is full or has gone.");
}

void TraceRing::Passed(Time now, char direction, const Bytes& bytes) {
  if (bytes.empty()) return;
  if (newer_.size() + sizeof(RingHeader) + bytes.size() > room_ / 2) {
    older_.swap(newer_);
    newer_.clear();
  }
  newer_.reserve(room_ / 2);  // once: a string that grows takes up to twice of what it needs
  char header[sizeof(RingHeader)];
  const RingHeader fields{now - start_, static_cast<std::uint32_t>(bytes.size()), direction};
  std::memcpy(header, &fields, sizeof header);
  newer_.append(header, sizeof header).append(bytes);
}

std::string TraceRing::Text() const {
  std::string text;
  for (const std::string* part : {&older_, &newer_}) {
    for (std::size_t at = 0; at < part->size();) {
      RingHeader fields{};
      std::memcpy(&fields, part->data() + at, sizeof fields);
      at += sizeof fields;
      text += TraceLine({fields.at, fields.direction, part->substr(at, fields.count)}) + "\n";
      at += fields.count;
    }
  }
  return text;
}

}  // namespace vk32
