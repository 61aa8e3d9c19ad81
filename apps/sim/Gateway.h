// A simulated gateway: eats bytes, yields bytes, with time as an argument.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"
#include "sim/Misbehaviour.h"
#include "sim/OfflineManager.h"

namespace vk32::sim {

/// How a product tells its device information.
enum class InfoStyle { None, OneRecord, Pieces };

/// What is particular to a product.
struct GatewayKind {
  std::string_view product;
  int baudRate;        // bit/s
  int headerLength;    // bytes before the image in an upload
  Bytes factoryImage;  // empty: it has none
  InfoStyle info;
  bool takesXmodem;  // in its recovery menu
};

/// The texts of the device information; any bytes.
struct InfoTexts {
  Bytes model = "VK5300 Ethernet to DH+";
  Bytes version = "Version 2.14";
  Bytes date = "March 3 2019";
};

/// nullptr for a product that can't be simulated.
const GatewayKind* FindGatewayKind(std::string_view product);

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
  /// The firmware file that has come last, or as much as has come of it; empty if none has.
  const Bytes& Firmware() const { return offlineManager_.Firmware(); }
  FlashTimes& Flash() { return offlineManager_.times; }
  InfoTexts infoTexts;
  /// Called whenever a configuration was stored.
  std::function<void()> OnStored;
  /// Called whenever a firmware file has come to its end.
  std::function<void()> OnFirmware;

  const Misbehaviour& Faults() const { return misbehaviour_; }

 private:
  void TakeByte(char byte, Time now);
  void Understand(Time now);
  void CallOfflineManager(Time now);
  void React(const OfflineManager::Reaction& reaction, Time now);
  bool TakeImageFrame(Time now);
  void AnswerImageRequest(Time now);
  void AnswerInfoRequest(Time now);
  void SayInfoPiece(Time now);
  void Say(Bytes bytes, Time now);

  const GatewayKind& kind_;
  Misbehaviour misbehaviour_;
  bool configuring_ = true;
  Bytes image_;
  Bytes received_;  // of a message that is not complete yet
  Time lastByte_{0};
  int infoPiece_ = 0;  // the next one, from 0
  std::deque<Piece> pieces_;
  OfflineManager offlineManager_;
};

}  // namespace vk32::sim
