// The receiving side of Xmodem: blocks of 128 bytes and the 8-bit sum.
#pragma once

#include <cstdint>

#include "platform/SerialDriver.h"

namespace vk32::sim {

class XmodemReceiver {
 public:
  static constexpr char Soh = 0x01, Eot = 0x04, Nak = 0x15, Can = 0x18;

  /// It refuses each good block `naks` times, or with `cancel` the whole transfer at its first one.
  explicit XmodemReceiver(int naks = 0, bool cancel = false) : naks_(naks), cancel_(cancel) {}

  /// Takes the next byte. The answer to the block or the end that it completes; 0 if it completes none. What a new
  /// block brings, its padding included, goes behind `data`, which is empty at the start.
  char Take(char byte, Bytes& data);
  /// The sender has told its end.
  bool Ended() const { return ended_; }

 private:
  char Answer(const Bytes& block, Bytes& data);

  int naks_;
  bool cancel_;
  Bytes block_;               // as far as it has come
  std::uint8_t awaited_ = 1;  // number of the next block
  bool ended_ = false;
  int refused_ = 0;  // how often it was, so far
};

}  // namespace vk32::sim
