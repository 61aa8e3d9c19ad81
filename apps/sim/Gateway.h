// A simulated gateway: eats bytes, yields bytes, with time as an argument.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"
#include "sim/BlockStore.h"
#include "sim/GatewayKind.h"
#include "sim/Misbehaviour.h"
#include "sim/OfflineManager.h"

namespace vk32::sim {

/// The texts of the device information; any bytes.
struct InfoTexts {
  Bytes model = "VK5300 Ethernet to DH+";
  Bytes version = "Version 2.14";
  Bytes date = "March 3 2019";
};

class Gateway {
 public:
  explicit Gateway(const GatewayKind& kind, Misbehaviour misbehaviour = {});
  Gateway(const Gateway&) = delete;
  Gateway& operator=(const Gateway&) = delete;

  /// Takes bytes that have arrived at `now`; what it does of its own before that moment, it has done by then.
  void Receive(std::string_view bytes, Time now);
  /// When it does something of its own next; nothing if it only waits for bytes.
  std::optional<Time> NextDue() const { return offlineManager_.NextDue(); }
  /// What is due by `now` happens, each at its own moment.
  void RunDue(Time now);
  /// What it says at `now` or has said before, in order, with the moment of each piece.
  struct Piece {
    Time from;
    Bytes bytes;
  };
  std::optional<Piece> NextPiece();

  /// The button on the device. It answers a configurator only after it was pressed. Leaves the recovery menu.
  void PressConfigure();
  /// Starts as a device in operation, whose Configure button was not pressed yet.
  void StartInOperation() { configuring_ = false; }

  const Bytes& Image() const { return image_; }
  const Blocks& BlocksInForce() const { return blocks_.InForce(); }
  /// The firmware file that has come last, or as much as has come of it; empty if none has.
  const Bytes& Firmware() const { return offlineManager_.Firmware(); }
  FlashTimes& Flash() { return offlineManager_.times; }
  /// From the message that restarts it until it hears again.
  Time restartTime{std::chrono::milliseconds(300)};
  InfoTexts infoTexts;
  /// Called whenever a configuration was stored, with its size: "448 bytes" of an image, or "12 blocks".
  std::function<void(const std::string& size)> OnStored;
  /// Called whenever a firmware file has come to its end.
  std::function<void()> OnFirmware;

  const Misbehaviour& Faults() const { return misbehaviour_; }

 private:
  struct Message;
  static const Message Messages[];

  void TakeByte(char byte, Time now);
  void Understand(Time now);
  bool Knows(const Message& message) const;
  void React(const OfflineManager::Reaction& reaction, Time now);
  // Each takes a whole message.
  void CallOfflineManager(const Bytes& call, Time now);
  void TakeImageFrame(const Bytes& frame, Time now);
  void AnswerImageRequest(const Bytes&, Time now);
  void AnswerInfoRequest(const Bytes&, Time now);
  void ContinueInfo(const Bytes&, Time now);
  void TakeBlockFrame(const Bytes& frame, Time now);
  void StoreBlocks(const Bytes&, Time now);
  void Reboot(const Bytes&, Time now);

  void AnswerBlockRead(int number, Time now);
  void SayInfoPiece(Time now);
  void SayRecord(const Bytes& before, Bytes record, Bytes checksum, Time now);
  void Say(Bytes bytes, Time now);

  const GatewayKind& kind_;
  Misbehaviour misbehaviour_;
  bool configuring_ = true;
  Bytes image_;
  BlockStore blocks_;
  Bytes received_;  // of a message that is not complete yet
  Time lastByte_{0}, lastAnswer_{0}, restartEnd_{0};
  int infoPiece_ = 0;  // the next one, from 0
  std::deque<Piece> pieces_;
  OfflineManager offlineManager_;
};

}  // namespace vk32::sim
