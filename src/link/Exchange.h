// An exchange with a device in words: what goes on, how far it is, how it ended, and what is known of a failure.
#pragma once

#include <cstdint>
#include <string>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32 {

class Conversation;

/// Hears how an exchange goes. The words are one line.
class ExchangeObserver {
 public:
  virtual ~ExchangeObserver() = default;
  /// `done` of `total` blocks or bytes; a total of 0 is not known.
  virtual void ExchangeGoesOn(const std::string& words, int done, int total) = 0;
  /// Empty words: the user has ended it himself.
  virtual void ExchangeEnded(const std::string& words, bool good) = 0;
};

/// The record of what passes in a conversation. From Begin to End its observer hears of each step; a failure is told
/// also behind later exchanges of the same conversation that went well.
class Exchange {
 public:
  enum class Kind { Reading, Writing, Restarting };
  enum class Unit { Byte, Block };

  Exchange(const Conversation& conversation, ExchangeObserver* observer)
      : conversation_(conversation), observer_(observer) {}

  /// Bytes are counted by themselves, from here or from SetTotal on.
  void Begin(Kind kind, Unit unit = Unit::Byte, int total = 0);
  void SetTotal(int total);
  /// So many more are done.
  void Advance(int count);
  /// What the message that is sent next is: "the request of block 30".
  void Next(std::string message) { message_ = std::move(message); }
  /// Why what came is no good, or not all: the rest of a sentence that the port begins.
  void Refuse(std::string why) { refusal_ = std::move(why); }
  /// A bad end is told by what is known of it, one that the user has brought about not at all.
  void End(bool good);

  // What the conversation sees on its port.

  /// `what`: the rest of a sentence that the port begins; `words`: the system's, and what to do behind a colon.
  void PortFailed(const std::string& what, const std::string& words);
  /// `left`: how many of its bytes have left.
  void Sent(const Bytes& message, std::int32_t left);
  void Came(const Bytes& chunk);
  /// For so many bytes; 0: for an ACK.
  void WaitBegins(int bytes);
  void WaitEnds();

  int Done() const { return done_; }
  /// Nothing that came was refused.
  bool IsGood() const { return refusal_.empty(); }
  /// Lines, parted by LF, on what is known of a failure: port, device and cause, what was sent last, what came then.
  std::string Details() const;

 private:
  Time Now() const;
  std::string PortName() const;
  void Tell() const;
  std::string TimeLeft() const;
  std::string Amount() const;
  std::string Cause() const;
  std::string BlocksBefore() const;
  std::string FailureWords() const;

  const Conversation& conversation_;
  ExchangeObserver* const observer_;
  Kind kind_ = Kind::Reading;
  Unit unit_ = Unit::Byte;
  int done_ = 0, total_ = 0;
  Time begun_{};
  bool running_ = false, answered_ = false;
  std::string failure_;  // of an earlier exchange of the conversation
  std::string message_;  // that was sent last
  Bytes sent_, came_;    // its first bytes; those that came behind it
  int sentLength_ = 0, left_ = 0, cameLength_ = 0;
  std::string portFault_, portAdvice_, refusal_;
  int wanted_ = 0, cameInWait_ = 0;
  Time waitBegun_{}, waited_{};
};

}  // namespace vk32
