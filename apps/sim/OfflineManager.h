// The recovery mode of a simulated gateway: a menu on a terminal, and the exchange that replaces the firmware.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SerialDriver.h"
#include "sim/Misbehaviour.h"
#include "sim/XmodemReceiver.h"

namespace vk32::sim {

/// How long the flash memory takes.
struct FlashTimes {
  Time erase{std::chrono::seconds(3)};
  Time ready{std::chrono::milliseconds(500)};  // from the end of the erase
  Time burn{std::chrono::milliseconds(200)};   // for each 4096 bytes
};

class OfflineManager {
 public:
  /// `takesXmodem`: the menu takes a file also by Xmodem, not as a plain stream alone. `version` of the system code
  /// that the device was made with.
  OfflineManager(std::string_view product, bool takesXmodem, const std::string& version, Misbehaviour misbehaviour)
      : product_(product), takesXmodem_(takesXmodem), version_(version), misbehaviour_(misbehaviour) {}

  struct Reaction {
    Bytes says;
    bool hasFirmware = false;  // a file has come to its end
  };

  /// The messages that call it: one of these bytes, or FirmwareMode.
  static bool IsCall(char byte) { return byte == '\x1B' || byte == '\r'; }
  bool Active() const { return stage_ != &Away; }
  /// Takes a byte that is for it, the first of a call included.
  Reaction Take(char byte, Time now);
  /// Goes back to the device's other messages.
  void Leave();

  /// When it acts next of its own; nothing if it only waits.
  std::optional<Time> NextDue() const { return due_; }
  /// What it does at that moment.
  Reaction RunDue();

  /// What has come of the file that was sent last; empty if none was.
  const Bytes& Firmware() const { return firmware_; }

  FlashTimes times;

 private:
  /// What it does in one state with a byte, and when the state's time is over.
  struct Stage {
    void (OfflineManager::*take)(char byte, Time now);
    void (OfflineManager::*timeOver)(Time now);
  };
  struct Choice;
  static const Stage Away, AtMenu, AtQuestion, Wiping, Ready, InBlocks, InText;  // the menu
  static const Stage Erasing, Erased, InStream, Ending, Deaf;                    // the exchange
  static const Choice Choices[];

  void Go(const Stage& stage, std::optional<Time> due);
  void Say(std::string_view text) { reaction_.says += text; }

  // The menu
  void TakeKey(char key, Time now);
  void Repeat(Time now);
  void Choose(char key, Time now);
  bool EndsWord(char key, Time now);
  void ShowBanner(Time now);
  void ShowMenu(Time now);
  void ShowVersion(Time now);
  void AskToErase(Time now);
  void Restart(Time now);
  void Wipe(Time now);
  void ShowDot(Time now);
  void AskForFile(Time now);
  void TakeFirst(char byte, Time now);
  void TakeBlockByte(char byte, Time now);
  void TakeText(char byte, Time now);
  bool LeaveIfTold();
  void EndFile(Time now);
  void BreakOff(Time now);

  // The exchange
  void Erase();
  void BeginExchange(Time now);
  void SayErased(Time now);
  void SayReady(Time now);
  void TakeStream(char byte, Time now);
  void EndBurnOrStream(Time now);
  void AwaitEnd(char byte, Time now);

  void Drop(char, Time) {}
  void LeaveAt(Time) { Leave(); }

  std::string product_;
  bool takesXmodem_;
  const std::string& version_;
  Misbehaviour misbehaviour_;

  const Stage* stage_ = &Away;
  std::optional<Time> due_;
  Reaction reaction_;          // of the call that runs
  bool commandBegun_ = false;  // the byte before was the first of a command of two
  std::string_view rest_;      // of the word whose first letter has chosen
  Time restUntil_{0};
  int ticks_ = 0;  // of a stage that acts more than once
  std::optional<Time> burnEnd_;
  XmodemReceiver receiver_;
  bool erased_ = false;  // the system code that it was made with is gone
  Bytes firmware_;
};

}  // namespace vk32::sim
