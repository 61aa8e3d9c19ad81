// The receiving side of Xmodem.
#include "sim/XmodemReceiver.h"

#include <numeric>
#include <utility>

#include "link/Frames.h"

namespace vk32::sim {
namespace {

constexpr std::size_t NumberAt = 1, ComplementAt = 2, DataAt = 3;  // offsets in a block
constexpr std::size_t DataLength = 128, SumAt = DataAt + DataLength, BlockLength = SumAt + 1;

std::uint8_t ByteAt(const Bytes& block, std::size_t offset) { return static_cast<std::uint8_t>(block[offset]); }

bool Intact(const Bytes& block) {
  const auto sum = std::accumulate(block.begin() + DataAt, block.begin() + SumAt, 0);
  return static_cast<std::uint8_t>(sum) == ByteAt(block, SumAt) &&
         ByteAt(block, NumberAt) + ByteAt(block, ComplementAt) == 255;
}

}  // namespace

char XmodemReceiver::Take(char byte, Bytes& data) {
  ended_ = block_.empty() && byte == Eot;
  if (ended_) return Ack;
  if (block_.empty() && byte != Soh) return 0;
  block_ += byte;
  return block_.size() < BlockLength ? '\0' : Answer(std::exchange(block_, {}), data);
}

char XmodemReceiver::Answer(const Bytes& block, Bytes& data) {
  if (!Intact(block)) return Nak;
  if (cancel_) return Can;
  if (refused_ < naks_) {
    ++refused_;
    return Nak;
  }
  refused_ = 0;
  const std::uint8_t number = ByteAt(block, NumberAt);
  // The sender has not seen the answer to the last block: it comes again.
  if (!data.empty() && number == static_cast<std::uint8_t>(awaited_ - 1)) return Ack;
  if (number != awaited_) return Can;
  data.append(block, DataAt, DataLength);
  ++awaited_;
  return Ack;
}

}  // namespace vk32::sim
