// A simulated gateway.
#include "sim/Gateway.h"

#include <algorithm>
#include <utility>

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

// A message that stands still for so long is given up, so that a broken one does not eat the next.
constexpr Time MessageGap = 500ms;

/// Registers as (register, first byte, second byte); all others are 0.
struct RegisterRow {
  int index, high, low;
};

Bytes MakeImage(int registers, std::initializer_list<RegisterRow> rows) {
  Bytes image(static_cast<std::size_t>(registers) * 2, '\0');
  for (const RegisterRow& row : rows) {
    image[static_cast<std::size_t>(row.index) * 2] = Chr(row.high);
    image[static_cast<std::size_t>(row.index) * 2 + 1] = Chr(row.low);
  }
  return image;
}

Bytes Rb2000Image() {
  return MakeImage(224, {
                            {0, 4, 153},
                            {6, 2, 0},
                            {7, 5, 0},
                            {8, 9, 0},  // channel A: 19200
                            {9, 8, 6},  // channel B: 9600, even parity
                            {10, 8, 0},
                            {11, 8, 0},
                            {12, 0, 1},  // CRC
                            {13, 1, 0},
                            {20, 17, 36},  // broadcast, specific address 17
                            {21, 1, 7},    // broadcast 1 to 7
                            {22, 2, 0},    // SLC
                            // Slots 1 and 2: 40001 to 40020 in file 7, word 0; 40101 to 40110 in file 8, float
                            {24, 0x41, 0x9C},
                            {25, 0x54, 0x9C},
                            {26, 7, 0},
                            {27, 0, 0},
                            {28, 0, 0},
                            {29, 0xA5, 0x9C},
                            {30, 0xAE, 0x9C},
                            {31, 8, 0},
                            {32, 0, 0},
                            {33, 1, 0},
                        });
}

Bytes Rb3000Image() {
  return MakeImage(224, {
                            {0, 4, 153},
                            {6, 2, 0},
                            {7, 1, 0},
                            {8, 8, 0},
                            {9, 8, 0},
                            {10, 8, 0},
                            {11, 8, 0},
                            {13, 1, 0},
                            {20, 0, 4},  // slave, broadcast
                            {21, 2, 5},  // broadcast 2 to 5
                            {22, 1, 0},  // PLC-3
                            // Slots 1 and 2: 1 to 64 in file 3, word 0; 30001 to 30010 in file 10, word 5
                            {24, 1, 0},
                            {25, 64, 0},
                            {26, 3, 0},
                            {27, 0, 0},
                            {28, 0, 0},
                            {29, 0x31, 0x75},
                            {30, 0x3A, 0x75},
                            {31, 10, 0},
                            {32, 5, 0},
                            {33, 0, 0},
                        });
}

Bytes Vk5300Image() {
  return MakeImage(20, {
                           {0, 4, 153},
                           {7, 2, 0},  // DH+ node
                           {8, 8, 0},  // 57.6 kBaud
                           {9, 11, 0},
                           {10, 8, 0},
                       });
}

Bytes RbCardImage() {
  return MakeImage(20, {
                           {0, 4, 153},
                           {7, 1, 0},  // DH+ node
                           {8, 8, 0},  // 57.6 kBaud
                           {9, 8, 0},  // DF1: 9600
                           {10, 8, 0},
                           {11, 8, 0},
                           {13, 1, 0},
                       });
}

// Serial number 123456, hardware 2-300, distributor 3, a MAC address; the order of bytes is the product's.
Bytes Identity(InfoStyle style) {
  const Bytes number = style == InfoStyle::OneRecord ? Bytes("\x01\xE2\x40") : Bytes("\x40\xE2\x01");
  const Bytes revision = style == InfoStyle::OneRecord ? Bytes("\x01\x2C") : Bytes("\x2C\x01");
  return number + '\x02' + revision + Bytes(3, '\0') + '\x03' + Bytes("\x00\x0A\x1B\x2C\x3D\x4E", 6);
}

Bytes Network(InfoStyle style) {
  Bytes addresses("\xC0\xA8\x01\x64\xFF\xFF\xFF\x00\xC0\xA8\x01\x01", 12);  // 192.168.1.100, its mask and gateway
  if (style == InfoStyle::Pieces) {
    for (int i = 0; i < 12; i += 4) std::reverse(addresses.begin() + i, addresses.begin() + i + 4);
  }
  return addresses;
}

/// Texts of 64 and four times 48 bytes; the last byte of all is left for the checksum.
Bytes FirmwareRecord() {
  Bytes texts;
  for (const auto& [text, size] :
       {std::pair("Ethernet firmware 3.2", 64), {"DF1 1.4", 48}, {"Modbus 1.1", 48}, {"", 48}, {"", 47}}) {
    Bytes field(text);
    field.resize(static_cast<std::size_t>(size));
    texts += field;
  }
  return texts;
}

}  // namespace

const GatewayKind* FindGatewayKind(std::string_view product) {
  static const GatewayKind kinds[] = {
      {"RB2000", 9600, 10, Rb2000Image(), InfoStyle::None, false},
      {"RB3000", 19200, 10, Rb3000Image(), InfoStyle::None, false},
      {"RBCard", 19200, 12, RbCardImage(), InfoStyle::None, false},
      {"VK5300", 19200, 12, Vk5300Image(), InfoStyle::Pieces, true},
      {"VK-RTX", 19200, 12, {}, InfoStyle::OneRecord, true},
  };
  const auto kind = std::find_if(std::begin(kinds), std::end(kinds),
                                 [&](const GatewayKind& candidate) { return candidate.product == product; });
  return kind == std::end(kinds) ? nullptr : kind;
}

Gateway::Gateway(const GatewayKind& kind, Misbehaviour misbehaviour)
    : kind_(kind),
      misbehaviour_(misbehaviour),
      image_(kind.factoryImage),
      offlineManager_(kind.product, kind.takesXmodem, infoTexts.version, misbehaviour) {}

void Gateway::Receive(std::string_view bytes, Time now) {
  // What is due at the same moment as a byte comes after it: the byte still counts.
  RunDue(now - Time{1});
  for (const char byte : bytes) TakeByte(byte, now);
}

void Gateway::RunDue(Time now) {
  for (auto due = NextDue(); due && *due <= now; due = NextDue()) React(offlineManager_.RunDue(), *due);
}

void Gateway::PressConfigure() {
  configuring_ = true;
  offlineManager_.Leave();
}

void Gateway::TakeByte(char byte, Time now) {
  if (offlineManager_.Active()) return React(offlineManager_.Take(byte, now), now);
  if (now - lastByte_ > MessageGap) received_.clear();
  lastByte_ = now;
  if (misbehaviour_.hold > 0ns && received_.empty()) {
    pieces_.push_back({now, Bytes(1, '\x13')});
    pieces_.push_back({now + misbehaviour_.hold, Bytes(1, '\x11')});
  }
  received_ += byte;
  if (!configuring_) received_.clear();
  Understand(now);
}

void Gateway::Understand(Time now) {
  while (!received_.empty()) {
    const auto begins = [&](const Bytes& start) {
      return received_.compare(0, std::min(start.size(), received_.size()), start, 0,
                               std::min(start.size(), received_.size())) == 0;
    };
    if (begins(ImageFrame::Start)) {
      if (!TakeImageFrame(now)) return;
    } else if (begins(ImageRequest)) {
      if (received_.size() < ImageRequest.size()) return;
      received_.erase(0, ImageRequest.size());
      AnswerImageRequest(now);
    } else if (OfflineManager::IsCall(received_[0])) {
      CallOfflineManager(now);
    } else if (begins(FirmwareMode)) {
      if (received_.size() < FirmwareMode.size()) return;
      CallOfflineManager(now);
    } else if (begins(InfoRequest) && kind_.info != InfoStyle::None) {
      if (received_.size() < InfoRequest.size()) return;
      received_.erase(0, InfoRequest.size());
      AnswerInfoRequest(now);
    } else if (begins(InfoContinue) && infoPiece_ > 0) {
      received_.erase(0, 1);
      SayInfoPiece(now);
    } else {
      received_.erase(0, 1);
    }
  }
}

void Gateway::CallOfflineManager(Time now) {
  for (const char byte : std::exchange(received_, {})) React(offlineManager_.Take(byte, now), now);
}

void Gateway::React(const OfflineManager::Reaction& reaction, Time now) {
  if (!reaction.says.empty()) Say(reaction.says, now);
  if (reaction.hasFirmware && OnFirmware) OnFirmware();
}

/// False while the frame isn't complete. A frame with a wrong length or checksum is taken, and answered by silence.
bool Gateway::TakeImageFrame(Time now) {
  if (received_.size() < ImageFrame::Prefix) return false;
  const int length = Asc(received_, ImageFrame::Length + 1) + 256 * Asc(received_, ImageFrame::Length + 2);
  const auto whole = static_cast<std::size_t>(ImageFrame::Prefix + length + ImageFrame::ChecksumLength);
  if (received_.size() < whole) return false;
  const Bytes body = Mid(received_, ImageFrame::Prefix + 1, length);
  const Bytes checksum = Mid(received_, ImageFrame::Prefix + length + 1, ImageFrame::ChecksumLength);
  received_.erase(0, whole);
  std::int32_t sum = 0;
  for (int i = 1; i <= length; ++i) sum += Asc(body, i);
  const bool good = !image_.empty() && body.size() == ImageFrame::PrefixLength + image_.size() &&
                    checksum == Bytes{Chr(sum & 255), Chr(sum >> 8 & 255)};
  if (!good) return true;
  image_ = body.substr(ImageFrame::PrefixLength);
  Say(Bytes(1, Ack), now);
  if (OnStored) OnStored();
  return true;
}

void Gateway::AnswerInfoRequest(Time now) {
  infoPiece_ = 0;
  if (kind_.info == InfoStyle::Pieces) {
    Say(Bytes(1, Ack), now);
    SayInfoPiece(now);
    return;
  }
  const Bytes record = Identity(kind_.info) + Network(kind_.info) + FirmwareRecord();
  Bytes checksum = Checksum8(record, static_cast<int>(record.size()));
  if (misbehaviour_.badChecksum) checksum[0] = static_cast<char>(checksum[0] ^ 0x55);
  Bytes reply = record + checksum;
  reply.resize(reply.size() - std::min(reply.size(), static_cast<std::size_t>(misbehaviour_.shortBy)));
  Say(Ack + reply, now);
}

void Gateway::SayInfoPiece(Time now) {
  const Bytes pieces[] = {Identity(kind_.info), Network(kind_.info), infoTexts.model, infoTexts.version,
                          infoTexts.date};
  const int piece = infoPiece_++;
  if (misbehaviour_.silent || piece >= static_cast<int>(std::size(pieces)) || piece >= misbehaviour_.infoPieces) return;
  pieces_.push_back({now + misbehaviour_.late, pieces[piece]});
}

void Gateway::AnswerImageRequest(Time now) {
  if (image_.empty()) return;
  const Bytes header = Bytes{0, 1} + Bytes(static_cast<std::size_t>(kind_.headerLength) - 2, '\0');
  const Bytes body = header + image_;
  const auto length = static_cast<std::int32_t>(body.size());
  Bytes checksum = Checksum16(body, length);
  if (misbehaviour_.badChecksum) checksum[0] = static_cast<char>(checksum[0] ^ 0x55);
  Bytes reply = ImageReplyStart + Chr(length & 255) + Chr(length >> 8) + body + checksum;
  reply.resize(reply.size() - std::min(reply.size(), static_cast<std::size_t>(misbehaviour_.shortBy)));
  Say(reply, now);
}

void Gateway::Say(Bytes bytes, Time now) {
  if (misbehaviour_.silent) return;
  if (misbehaviour_.junk) bytes.insert(0, "\x15\xFF\x00?", 4);
  pieces_.push_back({now + misbehaviour_.late, std::move(bytes)});
}

std::optional<Gateway::Piece> Gateway::NextPiece() {
  if (pieces_.empty()) return std::nullopt;
  const auto next =
      std::min_element(pieces_.begin(), pieces_.end(), [](const Piece& a, const Piece& b) { return a.from < b.from; });
  Piece piece = std::move(*next);
  pieces_.erase(next);
  return piece;
}

}  // namespace vk32::sim
