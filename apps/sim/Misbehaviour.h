// What a simulated gateway can be told to do wrong.
#pragma once

#include <optional>
#include <string>

#include "platform/EventLoop.h"

namespace vk32::sim {

/// Each on its own; they may be joined.
struct Misbehaviour {
  bool silent = false;                // answers nothing
  Time late{0};                       // before each answer
  bool junk = false;                  // bytes that mean nothing before each answer
  bool badChecksum = false;           // of what it sends
  int shortBy = 0;                    // bytes missing at the end of each long answer
  Time hold{0};                       // XOFF at the first byte of each message, XON so much later
  int deafBlock = -1;                 // a block that it neither tells nor takes; -1: none
  int infoPieces = 5;                 // of the VK5300's device information, after which it falls silent
  int unplugAfter = -1;               // bytes in both directions together, then it is gone; -1: never
  std::optional<int> bannerLength{};  // bytes of the Offline Manager's banner
  bool noReady = false;               // has erased and never says that it is ready for the firmware
  bool noBurn = false;                // never says that the firmware is burnt
  bool holdForGood = false;           // XOFF once the first part of the firmware is to be burnt, and no more
  int naks = 0;                       // in answer to each Xmodem block, before it is taken
  bool cancel = false;                // CAN in answer to the first Xmodem block
};

/// What the user may write for one of them.
constexpr const char* MisbehaviourHelp =
    "silent, late=MS, junk, bad-checksum, short=BYTES, deaf-block=N, info-pieces=N, hold=MS (XOFF), unplug=BYTES; of "
    "the recovery: banner=BYTES, no-ready, no-burn, hold-for-good, nak=N, cancel; repeatable";

/// "silent", "late=300". Empty if the text names a misbehaviour, else what is wrong with it.
std::string SetMisbehaviour(const std::string& text, Misbehaviour& misbehaviour);

}  // namespace vk32::sim
