// The device of a trace.
#include "sim/Replay.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "core/Convert.h"
#include "trace/MessageNames.h"
#include "trace/Trace.h"

namespace vk32::sim {
namespace {

/// Some bytes behind an offset, for the user.
std::string Excerpt(const Bytes& bytes, std::size_t from) {
  constexpr std::size_t Longest = 8;
  if (from >= bytes.size()) return "nothing";
  return HexText(bytes.substr(from, Longest)) + (bytes.size() - from > Longest ? " ..." : "");
}

}  // namespace

Replay::Replay(std::string_view trace) {
  std::istringstream lines{std::string(trace)};
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    try {
      const auto record = ReadTraceLine(line);
      if (record && record->direction == '>') questions_.push_back({number, record->at, record->bytes, {}});
      if (!record || record->direction == '>' || questions_.empty()) continue;
      questions_.back().answers.emplace_back(record->at - questions_.back().asked, record->bytes);
    } catch (const std::runtime_error& fault) {
      throw std::runtime_error("line " + std::to_string(number) + ": " + fault.what() + ". Take the trace as it was.");
    }
  }
  if (questions_.empty()) {
    throw std::runtime_error("nothing is asked in it. Name a trace that VK32 has written, or a file that holds one.");
  }
}

std::string Replay::Place(const Question& question) {
  const std::string line = "line " + std::to_string(question.line);
  const auto name = MessageName(question.bytes);
  return name.empty() ? line : line + ", " + std::string(name);
}

void Replay::FromHost(std::string_view bytes, Time now) {
  for (const char byte : bytes) TakeByte(byte, now);
}

void Replay::TakeByte(char byte, Time now) {
  if (now - lastByte_ >= MessageGap) GiveUp();
  lastByte_ = now;
  came_ += byte;
  const Question* const meant = Meant();
  if (meant && meant->bytes == came_) Answer(*meant, now);
}

const Replay::Question* Replay::Meant() const {
  for (std::size_t i = 0; i < questions_.size(); ++i) {
    const Question& question = questions_[(next_ + i) % questions_.size()];
    if (question.bytes.starts_with(came_)) return &question;
  }
  return nullptr;
}

void Replay::Answer(const Question& question, Time now) {
  if (&question != &questions_[next_]) TellDifference("The trace goes on behind " + Place(question) + ".");
  came_.clear();
  for (const auto& [delay, bytes] : question.answers) {
    says_.emplace_back(std::max(now + delay, says_.empty() ? now : says_.back().first), bytes);
  }
  next_ = static_cast<std::size_t>(&question - questions_.data()) + 1;
  if (next_ < questions_.size()) return;
  next_ = 0;
  ++rounds_;
  Tell("The trace is at its end, and begins anew.");
}

void Replay::GiveUp() {
  if (came_.empty()) return;
  TellDifference("It gets no answer.");
  came_.clear();
}

void Replay::TellDifference(const std::string& outcome) {
  differed_ = true;
  const Bytes& awaited = questions_[next_].bytes;
  const auto from = static_cast<std::size_t>(
      std::mismatch(awaited.begin(), awaited.end(), came_.begin(), came_.end()).first - awaited.begin());
  Tell("Something else than " + Awaited() + ": from byte " + std::to_string(from + 1) + " on " +
       Excerpt(awaited, from) + " was awaited and " + Excerpt(came_, from) + " has come. " + outcome);
}

Bytes Replay::ToHost(Time now) {
  if (now - lastByte_ >= MessageGap) GiveUp();
  Bytes bytes;
  for (; !says_.empty() && says_.front().first <= now; says_.pop_front()) bytes += says_.front().second;
  return bytes;
}

std::optional<Time> Replay::NextDue() const {
  std::optional<Time> next;
  if (!says_.empty()) next = says_.front().first;
  if (!came_.empty()) next = std::min(next.value_or(Never), lastByte_ + MessageGap);
  return next;
}

}  // namespace vk32::sim
