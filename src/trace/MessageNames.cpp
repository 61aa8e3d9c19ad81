// The names of the messages on the wire.
#include "trace/MessageNames.h"

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

constexpr std::size_t XmodemBlockLength = 132;
constexpr char Soh = 0x01;

bool IsBlockFrame(const Bytes& bytes, std::uint8_t command) {
  return bytes.size() > BlockFrame::Data && bytes.starts_with(BlockFrame::Start) &&
         Asc(bytes, BlockFrame::Command + 1) == command &&
         bytes.size() == static_cast<std::size_t>(BlockFrame::Count + 1 + Asc(bytes, BlockFrame::Count + 1));
}

/// It bears no mark but its length, and the sum that its checksum makes.
bool IsBlockReply(const Bytes& bytes) {
  return bytes.size() == BlockFrame::ReplyLength && Checksum8(bytes, BlockFrame::ReplyLength) == Bytes(1, '\0');
}

bool IsImageFrame(const Bytes& bytes) {
  if (bytes.size() < ImageFrame::Image || !bytes.starts_with(ImageFrame::Start)) return false;
  const int length = Asc(bytes, ImageFrame::Length + 1) + 256 * Asc(bytes, ImageFrame::Length + 2);
  return bytes.size() == static_cast<std::size_t>(ImageFrame::Prefix + length + ImageFrame::ChecksumLength);
}

bool IsImageReply(const Bytes& bytes) {
  return bytes.size() > 4 && bytes.starts_with(ImageReplyStart) &&
         bytes.size() == static_cast<std::size_t>(4 + Asc(bytes, 3) + 256 * Asc(bytes, 4) + ImageFrame::ChecksumLength);
}

}  // namespace

std::string_view MessageName(const Bytes& bytes) {
  const struct {
    const Bytes& message;
    std::string_view name;
  } whole[] = {
      {EndOfExchange, "end of exchange"},
      {InfoRequest, "device information"},
      {InfoContinue, "continue device information"},
      {FirmwareMode, "firmware mode"},
      {ImageRequest, "image upload"},
      {Restart, "restart"},
      {RecoveryProbe, "recovery probe"},
      {RecoveryNewline, "recovery newline"},
  };
  for (const auto& row : whole) {
    if (bytes == row.message) return row.name;
  }
  if (bytes == Bytes(1, Ack)) return "acknowledge";
  if (IsBlockFrame(bytes, BlockFrame::Read)) return "block read";
  if (IsBlockFrame(bytes, BlockFrame::Write)) return "block write";
  if (IsBlockReply(bytes)) return "block read reply";
  if (bytes[0] == Ack && IsBlockReply(bytes.substr(1))) return "acknowledge, block read reply";
  if (IsImageFrame(bytes)) return "image download";
  if (IsImageReply(bytes)) return "image upload reply";
  if (bytes.size() == XmodemBlockLength && bytes[0] == Soh) return "Xmodem block";
  return {};
}

}  // namespace vk32
