// A simulated gateway.
#include "sim/Gateway.h"

#include <algorithm>
#include <utility>

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "sim/FarEnd.h"

namespace vk32::sim {
namespace {

using namespace std::chrono_literals;

// Who writes blocks and then falls silent for so long has given the exchange up.
constexpr Time ExchangeGap = 3s;

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

std::size_t ImageFrameLength(const Bytes& begun) {
  if (begun.size() < ImageFrame::Prefix) return 0;
  const int length = Asc(begun, ImageFrame::Length + 1) + 256 * Asc(begun, ImageFrame::Length + 2);
  return static_cast<std::size_t>(ImageFrame::Prefix + length + ImageFrame::ChecksumLength);
}

std::size_t BlockFrameLength(const Bytes& begun) {
  if (begun.size() <= BlockFrame::Count) return 0;
  return static_cast<std::size_t>(BlockFrame::Count + 1 + Asc(begun, BlockFrame::Count + 1));
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

Gateway::Gateway(const GatewayKind& kind, Misbehaviour misbehaviour)
    : kind_(kind),
      misbehaviour_(misbehaviour),
      image_(kind.factoryImage),
      blocks_(kind.factoryBlocks),
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
  blocks_.Abandon();
  offlineManager_.Leave();
}

void Gateway::TakeByte(char byte, Time now) {
  if (now < restartEnd_) return;
  if (offlineManager_.Active()) return React(offlineManager_.Take(byte, now), now);
  const bool broken = !received_.empty() && now - lastByte_ > MessageGap;
  if (broken) received_.clear();
  if (broken || now - std::max(lastByte_, lastAnswer_) > ExchangeGap) blocks_.Abandon();
  lastByte_ = now;
  if (misbehaviour_.hold > 0ns && received_.empty()) {
    pieces_.push_back({now, Bytes(1, '\x13')});
    pieces_.push_back({now + misbehaviour_.hold, Bytes(1, '\x11')});
  }
  received_ += byte;
  if (!configuring_) received_.clear();
  Understand(now);
}

/// Its start, its length as soon as that can be told (0 until then), and what it makes the gateway do.
struct Gateway::Message {
  const Bytes& start;
  std::size_t (*length)(const Bytes& begun);
  void (Gateway::*act)(const Bytes& message, Time now);
  bool ofBlocks = false;  // every other message breaks off an exchange that writes blocks
};

const Gateway::Message Gateway::Messages[] = {
    {ImageFrame::Start, ImageFrameLength, &Gateway::TakeImageFrame},
    {ImageRequest, nullptr, &Gateway::AnswerImageRequest},
    {BlockFrame::Start, BlockFrameLength, &Gateway::TakeBlockFrame, true},
    {EndOfExchange, nullptr, &Gateway::StoreBlocks, true},
    {Restart, nullptr, &Gateway::Reboot},
    {InfoRequest, nullptr, &Gateway::AnswerInfoRequest},
    {InfoContinue, nullptr, &Gateway::ContinueInfo},
    {RecoveryProbe, nullptr, &Gateway::CallOfflineManager},
    {RecoveryNewline, nullptr, &Gateway::CallOfflineManager},
    {FirmwareMode, nullptr, &Gateway::CallOfflineManager},
};

bool Gateway::Knows(const Message& message) const {
  if (message.ofBlocks) return !kind_.factoryBlocks.empty();
  return message.act != &Gateway::Reboot || kind_.restarts;
}

void Gateway::Understand(Time now) {
  while (!received_.empty()) {
    const auto* const message = std::find_if(std::begin(Messages), std::end(Messages), [&](const Message& candidate) {
      const std::size_t begun = std::min(candidate.start.size(), received_.size());
      return Knows(candidate) && received_.compare(0, begun, candidate.start, 0, begun) == 0;
    });
    if (message == std::end(Messages)) {
      received_.erase(0, 1);
      continue;
    }
    const std::size_t whole = message->length ? message->length(received_) : message->start.size();
    if (whole == 0 || received_.size() < whole) return;
    const Bytes taken = received_.substr(0, whole);
    received_.erase(0, whole);
    if (!message->ofBlocks) blocks_.Abandon();
    (this->*message->act)(taken, now);
  }
}

void Gateway::CallOfflineManager(const Bytes& call, Time now) {
  for (const char byte : call) React(offlineManager_.Take(byte, now), now);
}

void Gateway::React(const OfflineManager::Reaction& reaction, Time now) {
  if (!reaction.says.empty()) Say(reaction.says, now);
  if (reaction.hasFirmware && OnFirmware) OnFirmware();
}

/// A frame with a wrong length or checksum is answered by silence.
void Gateway::TakeImageFrame(const Bytes& frame, Time now) {
  const auto length = static_cast<int>(frame.size()) - ImageFrame::Prefix - ImageFrame::ChecksumLength;
  const Bytes body = Mid(frame, ImageFrame::Prefix + 1, length);
  const Bytes checksum = Mid(frame, ImageFrame::Prefix + length + 1);
  std::int32_t sum = 0;
  for (int i = 1; i <= length; ++i) sum += Asc(body, i);
  const bool good = !image_.empty() && body.size() == ImageFrame::PrefixLength + image_.size() &&
                    checksum == Bytes{Chr(sum & 255), Chr(sum >> 8 & 255)};
  if (!good) return;
  image_ = body.substr(ImageFrame::PrefixLength);
  Say(Bytes(1, Ack), now);
  if (OnStored) OnStored(std::to_string(image_.size()) + " bytes");
}

void Gateway::AnswerImageRequest(const Bytes&, Time now) {
  if (image_.empty()) return;
  const Bytes body = Bytes{0, 1} + Bytes(static_cast<std::size_t>(kind_.headerLength) - 2, '\0') + image_;
  const auto length = static_cast<std::int32_t>(body.size());
  SayRecord("", ImageReplyStart + Chr(length & 255) + Chr(length >> 8) + body, Checksum16(body, length), now);
}

/// A frame that is broken, or asks for what the device does not have, is answered by silence.
void Gateway::TakeBlockFrame(const Bytes& frame, Time now) {
  const Bytes body = Mid(frame, BlockFrame::Command + 1);
  if (frame.size() <= BlockFrame::Data || Checksum8(body, static_cast<int>(body.size())) != Bytes(1, '\0')) return;
  const auto at = [&](int offset) { return Asc(frame, offset + 1); };
  const int number = at(BlockFrame::Number);
  if (at(BlockFrame::AddressHigh) != 0 || at(BlockFrame::AddressExt) != 0 || number == misbehaviour_.deafBlock) return;
  const Bytes data = frame.substr(BlockFrame::Data, frame.size() - BlockFrame::Data - 1);
  const int command = at(BlockFrame::Command), length = at(BlockFrame::Length);
  if (command == BlockFrame::Read && length == BlockFrame::ReadLength && data.empty()) AnswerBlockRead(number, now);
  if (command == BlockFrame::Write && static_cast<std::size_t>(length) == data.size() && blocks_.Stage(number, data)) {
    Say(Bytes(1, Ack), now);
  }
}

void Gateway::AnswerBlockRead(int number, Time now) {
  blocks_.Abandon();
  const auto block = blocks_.InForce().find(number);
  if (block == blocks_.InForce().end()) return;
  Bytes data = block->second;
  data.resize(BlockFrame::ReadLength);
  // The number in front: a reader that takes it for data shows it.
  const Bytes record = Chr(number) + data;
  SayRecord(Bytes(1, Ack), record, Checksum8(record, static_cast<int>(record.size())), now);
}

/// The end of an upload, or of the device information, comes here too, and finds nothing to store.
void Gateway::StoreBlocks(const Bytes&, Time) {
  const int count = blocks_.Commit();
  if (count > 0 && OnStored) OnStored(std::to_string(count) + (count == 1 ? " block" : " blocks"));
}

void Gateway::Reboot(const Bytes&, Time now) {
  restartEnd_ = now + restartTime;
  infoPiece_ = 0;
}

void Gateway::AnswerInfoRequest(const Bytes&, Time now) {
  infoPiece_ = 0;
  if (kind_.info == InfoStyle::Pieces) {
    Say(Bytes(1, Ack), now);
    SayInfoPiece(now);
  }
  if (kind_.info == InfoStyle::OneRecord) {
    const Bytes record = Identity(kind_.info) + Network(kind_.info) + FirmwareRecord();
    SayRecord(Bytes(1, Ack), record, Checksum8(record, static_cast<int>(record.size())), now);
  }
}

void Gateway::ContinueInfo(const Bytes&, Time now) {
  if (infoPiece_ > 0) SayInfoPiece(now);
}

void Gateway::SayInfoPiece(Time now) {
  const Bytes pieces[] = {Identity(kind_.info), Network(kind_.info), infoTexts.model, infoTexts.version,
                          infoTexts.date};
  const int piece = infoPiece_++;
  if (misbehaviour_.silent || piece >= static_cast<int>(std::size(pieces)) || piece >= misbehaviour_.infoPieces) return;
  pieces_.push_back({now + misbehaviour_.late, pieces[piece]});
}

/// What stands before the record is spared by the faults that the record has to bear.
void Gateway::SayRecord(const Bytes& before, Bytes record, Bytes checksum, Time now) {
  if (misbehaviour_.badChecksum) checksum[0] = static_cast<char>(checksum[0] ^ 0x55);
  record += checksum;
  record.resize(record.size() - std::min(record.size(), static_cast<std::size_t>(misbehaviour_.shortBy)));
  Say(before + record, now);
}

void Gateway::Say(Bytes bytes, Time now) {
  if (misbehaviour_.silent) return;
  if (misbehaviour_.junk) bytes.insert(0, "\x15\xFF\x00?", 4);
  lastAnswer_ = now + misbehaviour_.late;
  pieces_.push_back({lastAnswer_, std::move(bytes)});
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
