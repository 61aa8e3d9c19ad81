// The numbered parameter blocks of a simulated gateway.
#include "sim/BlockStore.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vk32::sim {
namespace {

constexpr struct {
  int first, last;  // numbers
  std::size_t bytes;
} Rooms[] = {
    {1, 2, 11},      // serial channel
    {3, 3, 21},      // Ethernet
    {4, 4, 4},       // protocol of channel A
    {5, 5, 1},       // protocol of channel B
    {10, 10, 32},    // protocol conversion
    {20, 23, 61},    // addresses and ports: a head, ten records of 6
    {24, 26, 61},    // slaves and addresses: a head, twelve records of 5
    {30, 30, 248},   // maps: a head, and as many records of 13 as a frame holds
    {31, 43, 53},    // more of them: a head, four records of 13
    {50, 51, 6},     // EtherNet/IP client
    {100, 103, 63},  // routes: a head of 3, six records of 10
};

constexpr int FirstMapBlock = 30;
constexpr std::size_t MapBytes = 4 * 13;  // of a block that is told

/// All maps arrive in their first block, and are told four to a block.
void SpreadMaps(Blocks& blocks) {
  const Bytes arrived = blocks.at(FirstMapBlock);
  if (arrived.size() <= 1 + MapBytes) return;
  blocks[FirstMapBlock] = arrived.substr(0, 1 + MapBytes);
  int number = FirstMapBlock + 1;
  for (std::size_t at = 1 + MapBytes; at < arrived.size(); at += MapBytes) {
    blocks[number++] = Bytes(1, '\0') + arrived.substr(at, MapBytes);
  }
}

}  // namespace

bool BlockStore::Stage(int number, const Bytes& data) {
  const auto room = std::find_if(std::begin(Rooms), std::end(Rooms), [&](const auto& candidate) {
    return candidate.first <= number && number <= candidate.last;
  });
  if (!inForce_.contains(number) || room == std::end(Rooms) || data.size() > room->bytes) return false;
  staged_[number] = data;
  return true;
}

int BlockStore::Commit() {
  const auto count = static_cast<int>(staged_.size());
  for (auto& [number, data] : staged_) inForce_[number] = std::move(data);
  if (staged_.contains(FirstMapBlock)) SpreadMaps(inForce_);
  staged_.clear();
  return count;
}

}  // namespace vk32::sim
