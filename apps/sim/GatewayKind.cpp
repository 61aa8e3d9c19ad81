// The products that can be simulated, as they come from the factory.
#include "sim/GatewayKind.h"

#include <algorithm>
#include <initializer_list>

#include "core/Convert.h"

namespace vk32::sim {
namespace {

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

Bytes Block(std::initializer_list<int> bytes) {
  Bytes block;
  for (const int byte : bytes) block += Chr(byte);
  return block;
}

/// Address 192.168.1.100, its mask and gateway.
Bytes EthernetBlock(int speedCode, int socketTimeout) {
  return Block({100, 1, 168, 192, 0, 255, 255, 255, 1, 1, 168, 192, speedCode, 0, socketTimeout, 0, 0, 0, 0, 0, 4});
}

Blocks Df1Blocks() {
  return {
      {1, Block({1, 0x00, 0x4B, 0, 8, 1, 2, 0, 0, 0, 0})},  // 19200, DF1
      {2, Block({1, 0x80, 0x25, 0, 7, 1, 0, 0, 0, 0, 3})},  // on: 9600, 7 data bits, even parity, ASCII
      {3, EthernetBlock(100, 45)},
      {4, Block({2})},  // CRC
      {5, Block({0})},
      // Channel B to node 40, file 7, element 10
      {10, Block({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 40, 0, 7, 0, 10, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0})},
      {50, Block({50, 1, 168, 192, 1, 2})},  // 192.168.1.50, in slot 2
      {51, Block({0, 0, 0, 0, 0, 0})},
      {100, Block({3, 0x1F, 0x40}) +                              // within 8000 ms
                Block({4, 0, 1, 10, 0, 255, 0, 0, 0, 0}) +        // Ethernet, 1 to 10: channel A
                Block({0, 255, 20, 30, 4, 0, 192, 168, 1, 60}) +  // channel A, 20 to 30: 192.168.1.60
                Block({3, 254, 40, 40, 5, 0, 192, 168, 1, 50})},  // channel B, 40: the client
      {101, Block({0, 0, 0})},
      {102, Block({0, 0, 0})},
      {103, Block({0, 0, 0})},
  };
}

Blocks ModbusBlocks() {
  Blocks blocks = {
      {1, Block({1, 0x00, 0xE1, 0, 8, 1, 0, 0, 0, 0, 1})},  // 57600, even parity, Modbus
      {2, Block({0, 0x80, 0x25, 0, 8, 1, 2, 0, 0, 0, 1})},
      {3, EthernetBlock(10, 45)},
      {4, Block({1, 1, 0xC4, 0x09})},  // RTU slave, 2500 ms
      // Slaves 5 and 6: 192.168.1.50 and .51, port 2222
      {20, Block({2, 50, 1, 168, 192, 0xAE, 0x08, 51, 1, 168, 192, 0xAE, 0x08})},
      {24, Block({2, 5, 50, 1, 168, 192, 6, 51, 1, 168, 192})},
      // Nodes, reference, start, file, word, function, points, type. The fifth is where the reader looks for it.
      {30, Block({5}) + Block({1, 10, 4, 0, 0, 7, 0, 0, 0, 1, 20, 0, 0}) +  // 40001, 20 integers
               Block({1, 10, 4, 100, 0, 8, 0, 0, 0, 1, 10, 0, 3}) +         // 40101, 10 floating points
               Block({1, 10, 3, 0xE8, 0x03, 9, 0, 5, 0, 0, 50, 0, 0}) +     // 31001, 50 integers
               Block({11, 20, 1, 0, 0, 3, 0, 0, 0, 2, 64, 0, 1})},          // 10001, 64 bits
      {31, Block({0, 21, 21, 0, 15, 0, 0x2C, 0x01, 2, 0, 2, 16, 0, 1})},    // 16, 16 bits in file 300
  };
  for (const auto& [first, last] : {std::pair(21, 23), {25, 26}, {32, 43}}) {
    for (int number = first; number <= last; ++number) blocks[number] = Block({0});
  }
  return blocks;
}

}  // namespace

std::span<const GatewayKind> GatewayKinds() {
  using enum InfoStyle;
  static const GatewayKind kinds[] = {
      {"RB2000", "RB2000", "", 9600, 10, Rb2000Image(), {}, None, false, false},
      {"RB3000", "RB3000", "", 19200, 10, Rb3000Image(), {}, None, false, false},
      {"RBCard", "RBCard", "", 19200, 12, RbCardImage(), {}, None, false, false},
      {"VK5300", "VK5300", "", 19200, 12, Vk5300Image(), {{3, EthernetBlock(3, 30)}}, Pieces, true, true},
      {"VK-RTX-DF1", "VK-RTX", "AB Ethernet, ASCII, DF1", 19200, 12, {}, Df1Blocks(), OneRecord, true, false},
      {"VK-RTX-Modbus", "VK-RTX", "AB Ethernet, Modbus", 19200, 12, {}, ModbusBlocks(), OneRecord, true, false},
  };
  return kinds;
}

const GatewayKind* FindGatewayKind(std::string_view name) {
  const auto kinds = GatewayKinds();
  const auto kind =
      std::find_if(kinds.begin(), kinds.end(), [&](const GatewayKind& candidate) { return candidate.name == name; });
  return kind == kinds.end() ? nullptr : &*kind;
}

}  // namespace vk32::sim
