// The Xmodem sender: blocks of 128 bytes and the 8-bit checksum.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "link/Conversation.h"

namespace vk32 {

/// What the sender asks of the form that shows its progress. Counts are bytes.
class XmodemProgress {
 public:
  virtual ~XmodemProgress() = default;
  virtual void StartOfflineProgressBar() = 0;
  virtual void UpdateOfflineProgressBar(std::size_t done, std::size_t total) = 0;
  virtual void FinishOfflineProgressBar() = 0;
};

/// One transfer on the port that is open already.
class Xmodem {
 public:
  Xmodem(Conversation& conversation, XmodemProgress& form) : conversation_(conversation), form_(form) {}

  /// Sends the whole data. True on failure, which closes the port unless it was the end that went unanswered; false on
  /// success, which leaves it open with flow control off. A receiver that asks for a block again gets it, without
  /// limit.
  bool XmodemSend(const Bytes& data);
  /// Words for the failure; empty if there was none.
  const std::string& WhyFailed() const { return whyFailed_; }

  /// The sum of the bytes, low 8 bits.
  static std::uint8_t XmodemChecksum(std::string_view block);

 private:
  /// One byte within `limit` ms; 255 if none came.
  std::uint8_t XmodemReadByte(int limit);
  bool XmodemSendEot();
  bool Fail(const std::string& why);
  void StartTimer(int limit);
  void XmodemTimerProc(int limit);

  Conversation& conversation_;
  XmodemProgress& form_;
  std::string whyFailed_;
  bool XmodemTimedOut = false;
  std::optional<Alarm> XmodemTimer;
};

}  // namespace vk32
