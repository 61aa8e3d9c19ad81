// The frame builder.
#include "link/BuildFrame.h"

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {
namespace {

Bytes BuildBlockFrame(const Globals& globals, std::uint8_t code) {
  Bytes tail;
  std::int32_t n = 0;
  if (code == BlockFrame::Read) {
    tail = Bytes(1, Chr(globals.BlockLength));
    n = 6;
  } else if (code == BlockFrame::Write) {
    tail = Chr(globals.BlockLength) + globals.BlockData;
    n = static_cast<std::int32_t>(tail.size()) + 5;
  }
  Bytes body;
  body += Chr(code);
  body += Chr(globals.BlockAddressHigh);
  body += Chr(globals.BlockNumber);
  body += Chr(globals.BlockAddressExt);
  body += tail;
  return BlockFrame::Start + Chr(n) + body + Checksum8(body, static_cast<int>(body.size()));
}

Bytes BuildImageFrame(Globals& globals) {
  globals.BlockLength = CInt(static_cast<double>(globals.ConfigImage.size()) + ImageFrame::PrefixLength);
  std::int32_t low = 0, high = 0;
  SplitWord(globals.BlockLength, low, high);
  const Bytes body = Bytes{0, 1} + Bytes(ImageFrame::PrefixLength - 2, '\0') + globals.ConfigImage;
  return ImageFrame::Start + Chr(low) + Chr(high) + Bytes(2, '\0') + body +
         Checksum16(body, static_cast<int>(body.size()));
}

}  // namespace

Bytes BuildFrame(Globals& globals, std::string_view product, std::uint8_t code) {
  if (product == "VK-RTX" || (product == "VK5300" && code != ImageFrame::Code)) return BuildBlockFrame(globals, code);
  if (product == "VK5300" || product == "RB2000" || product == "RB3000" || product == "RBCard") {
    return BuildImageFrame(globals);
  }
  return {};
}

}  // namespace vk32
