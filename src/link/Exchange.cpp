// An exchange with a device in words.
#include "link/Exchange.h"

#include <algorithm>

#include "app/App.h"
#include "core/Convert.h"
#include "link/Conversation.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t LongestShown = 32;  // bytes of a message
constexpr Time SteadyTime = 1s;           // from when on the pace tells how long the rest will take

struct Verbs {
  const char *goesOn, *ended;
};
/// By Exchange::Kind.
constexpr Verbs KindVerbs[] = {
    {"Reading from ", "Read from "}, {"Writing to ", "Written to "}, {"Restarting the device on ", "Restarted on "}};

/// "3 s", "1.6 s"
std::string Seconds(Time time) {
  const auto tenths = static_cast<int>((time + 50ms) / 100ms);
  return Str(tenths / 10) + (tenths % 10 == 0 ? "" : "." + Str(tenths % 10)) + " s";
}

std::string Count(int number, const std::string& unit) { return Str(number) + " " + unit + (number == 1 ? "" : "s"); }

void AppendShown(Bytes& shown, const Bytes& bytes) {
  shown.append(bytes, 0, LongestShown - std::min(LongestShown, shown.size()));
}

std::string Hex(const Bytes& shown, int length) {
  const bool cut = length > static_cast<int>(shown.size());
  return HexText(shown) + (cut ? " ... (" + Count(length, "byte") + ")" : "");
}

std::string Capitalised(std::string words) {
  if (!words.empty() && words[0] >= 'a' && words[0] <= 'z') words[0] = static_cast<char>(words[0] - 32);
  return words;
}

}  // namespace

Time Exchange::Now() const { return conversation_.app.forms.dispatcher.Loop().Now(); }

std::string Exchange::PortName() const { return "COM" + Str(conversation_.port); }

void Exchange::Begin(Kind kind, Unit unit, int total) {
  kind_ = kind;
  unit_ = unit;
  begun_ = Now();
  running_ = true;
  answered_ = false;
  portFault_.clear();
  refusal_.clear();
  SetTotal(total);
}

void Exchange::SetTotal(int total) {
  total_ = total;
  done_ = 0;
  Tell();
}

void Exchange::Advance(int count) {
  if (!running_) return;
  done_ += count;
  Tell();
}

void Exchange::Tell() const {
  if (!running_ || !observer_ || conversation_.port == 0) return;
  const Verbs& verbs = KindVerbs[static_cast<int>(kind_)];
  if (!portFault_.empty()) {
    observer_->ExchangeGoesOn(FailureWords(), 0, 0);
  } else if (kind_ == Kind::Writing && total_ > 0 && done_ == total_) {
    observer_->ExchangeGoesOn(verbs.ended + PortName() + ": " + Amount() + ". Waiting for the acknowledgement, " +
                                  Seconds(conversation_.TimeOutTmr().Interval.Value() * 1ms) + " at most",
                              done_, total_);
  } else {
    const std::string of = " of " + Str(total_);
    std::string words = verbs.goesOn + PortName();
    if (total_ > 0 && unit_ == Unit::Block) words += ": block " + Str(std::min(done_ + 1, total_)) + of;
    if (total_ > 0 && unit_ == Unit::Byte) words += ": " + Str(done_) + of + " bytes";
    observer_->ExchangeGoesOn(words + TimeLeft(), done_, total_);
  }
}

std::string Exchange::TimeLeft() const {
  const Time passed = Now() - begun_;
  if (passed < SteadyTime || done_ == 0 || done_ >= total_) return {};
  return ", " + Str(static_cast<int>((passed * (total_ - done_) / done_ + 999ms) / 1s)) + " s left";
}

std::string Exchange::Amount() const {
  return Count(total_ > 0 ? total_ : done_, unit_ == Unit::Block ? "block" : "byte");
}

void Exchange::End(bool good) {
  if (!running_) return;
  running_ = false;
  if (!good && failure_.empty()) failure_ = FailureWords();
  if (!observer_) return;
  if (conversation_.IsOver()) {
    observer_->ExchangeEnded({}, true);
  } else if (!failure_.empty()) {
    observer_->ExchangeEnded(failure_, false);
  } else {
    observer_->ExchangeEnded(
        KindVerbs[static_cast<int>(kind_)].ended + PortName() + " in " + Seconds(Now() - begun_) + ": " + Amount(),
        true);
  }
}

void Exchange::PortFailed(const std::string& what, const std::string& words) {
  if (!portFault_.empty()) return;  // what follows comes of the first
  portFault_ = what + ": " + words;
  const std::size_t colon = words.find(": ");
  portAdvice_ = colon == std::string::npos ? "" : words.substr(colon + 2);
  Tell();
}

void Exchange::Sent(const Bytes& message, std::int32_t left) {
  sent_.clear();
  came_.clear();
  AppendShown(sent_, message);
  sentLength_ = static_cast<int>(message.size());
  left_ = left;
  cameLength_ = 0;
  if (kind_ == Kind::Writing && unit_ == Unit::Byte) Advance(left_);
}

void Exchange::Came(const Bytes& chunk) {
  if (chunk.empty()) return;
  AppendShown(came_, chunk);
  const int count = static_cast<int>(chunk.size());
  cameLength_ += count;
  cameInWait_ += count;
  answered_ = true;
  if (kind_ == Kind::Reading && unit_ == Unit::Byte) Advance(count);
}

void Exchange::WaitBegins(int bytes) {
  wanted_ = bytes;
  cameInWait_ = 0;
  waitBegun_ = Now();
}

void Exchange::WaitEnds() { waited_ = Now() - waitBegun_; }

std::string Exchange::Cause() const {
  const std::string after = " within " + Seconds(waited_) + " after " + message_;
  if (!refusal_.empty()) return refusal_;
  if (!portFault_.empty()) return portFault_;
  if (left_ < sentLength_) return "only " + Str(left_) + " of " + Count(sentLength_, "byte") + " have left";
  if (cameInWait_ == 0) return "nothing came" + after;
  if (wanted_ > 0) return Str(cameInWait_) + " of " + Count(wanted_, "byte") + " came" + after;
  return Count(cameInWait_, "byte") + " came" + after + ", but no acknowledgement";
}

std::string Exchange::BlocksBefore() const {
  if (unit_ != Unit::Block || done_ == 0) return {};
  return "; " + Str(done_) + " of " + Amount() + (kind_ == Kind::Reading ? " had come" : " had gone");
}

std::string Exchange::FailureWords() const {
  if (conversation_.port == 0) return "No port is chosen: choose one in the " + conversation_.product + " Main Menu";
  // A line has no room for all: what to do is enough.
  if (!portFault_.empty()) {
    const std::string words =
        PortName() + (portAdvice_.empty() ? " " + portFault_ : ": " + portAdvice_) + BlocksBefore();
    return refusal_.empty() ? words : Capitalised(refusal_) + ". " + words;
  }
  if (refusal_.empty() && !answered_ && left_ == sentLength_) {
    return PortName() + " did not answer within " + Seconds(waited_) + ". Is the Configure button pressed?";
  }
  return Capitalised(Cause()) + BlocksBefore();
}

std::string Exchange::Details() const {
  if (conversation_.port == 0) return FailureWords() + ".";
  const auto device = conversation_.app.ports.Find(PortName());
  std::string lines = PortName() + (device ? " (" + device->path + ")" : "") + ": " + Cause() + BlocksBefore() + ".";
  if (sentLength_ > 0) lines += "\nSent last: " + Hex(sent_, sentLength_);
  if (cameLength_ > 0) lines += "\nCame then: " + Hex(came_, cameLength_);
  return lines;
}

}  // namespace vk32
