// A simulated gateway: eats bytes, yields bytes, with time as an argument.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/SerialDriver.h"

namespace vk32::sim {

/// What a gateway does wrong, each on its own.
struct Misbehaviour {
  bool silent = false;       // answers nothing
  Time late{0};              // before each answer
  bool junk = false;         // bytes that mean nothing before each answer
  bool badChecksum = false;  // of what it sends
  int shortBy = 0;           // bytes missing at the end of each long answer
  Time hold{0};              // XOFF at the first byte of each message, XON so much later
  int infoPieces = 5;        // of the VK5300's device information, after which it falls silent
  int unplugAfter = -1;      // bytes in both directions together, then it is gone; -1: never
};

/// How a product tells its device information.
enum class InfoStyle { None, OneRecord, Pieces };

/// What is particular to a product.
struct GatewayKind {
  std::string_view product;
  int baudRate;        // bit/s
  int headerLength;    // bytes before the image in an upload
  Bytes factoryImage;  // empty: it has none
  InfoStyle info;
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

  /// Takes bytes that have arrived at `now`.
  void Receive(std::string_view bytes, Time now);
  /// What it says at `now` or has said before, in order, with the moment of each piece.
  struct Piece {
    Time from;
    Bytes bytes;
  };
  std::optional<Piece> NextPiece();

  /// The button on the device. It answers a configurator only after it was pressed.
  void PressConfigure() { configuring_ = true; }
  /// Starts as a device in operation, whose Configure button was not pressed yet.
  void StartInOperation() { configuring_ = false; }

  const Bytes& Image() const { return image_; }
  InfoTexts infoTexts;
  /// Called whenever a configuration was stored.
  std::function<void()> OnStored;

  const Misbehaviour& Faults() const { return misbehaviour_; }

 private:
  void Understand(Time now);
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
};

}  // namespace vk32::sim
