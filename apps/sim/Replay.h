// The device of a trace: it answers what was answered then.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "sim/FarEnd.h"

namespace vk32::sim {

/// What VK32 has written together is a question, and what came before the next one is its answer: it is given byte for
/// byte, as long after the question as it was then. Questions are awaited in the order of the trace, and from its start
/// again after the last. Where another one comes, that is told, and the trace goes on behind the next place at which it
/// stands; if it stands nowhere, it gets no answer.
class Replay : public FarEnd {
 public:
  /// Lines that are none of a trace are passed over, and so are answers before the first question. std::runtime_error,
  /// with words for the user, if nothing is asked in it, or a line of it can't be read.
  explicit Replay(std::string_view trace);

  void FromHost(std::string_view bytes, Time now) override;
  Bytes ToHost(Time now) override;
  std::optional<Time> NextDue() const override;

  /// Called with a sentence where something else than the awaited question has come, and when the trace is at its end.
  std::function<void(const std::string&)> Tell = [](const std::string&) {};
  /// Every question was asked, and nothing else.
  bool AsTraced() const { return !differed_ && rounds_ > 0 && next_ == 0 && came_.empty(); }
  /// The awaited question: "line 12, image upload".
  std::string Awaited() const { return Place(questions_[next_]); }

 private:
  struct Question {
    int line;    // of the trace, from 1
    Time asked;  // in the trace
    Bytes bytes;
    std::vector<std::pair<Time, Bytes>> answers;  // each so long after it
  };

  static std::string Place(const Question& question);
  void TakeByte(char byte, Time now);
  /// The question of which so much has come: the awaited one, else the next that begins so; nullptr if none does.
  const Question* Meant() const;
  void Answer(const Question& question, Time now);
  void GiveUp();
  void TellDifference(const std::string& outcome);

  std::vector<Question> questions_;
  std::size_t next_ = 0;
  Bytes came_;  // of a question that is not complete yet
  Time lastByte_{0};
  std::deque<std::pair<Time, Bytes>> says_;
  bool differed_ = false;
  int rounds_ = 0;  // how often the last question was answered
};

}  // namespace vk32::sim
