// The parameter set that is being edited: the shared variables that a wizard fills, a device or a file gives.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/Fault.h"

namespace vk32 {

/// Elements 0 to `Last`; an index beyond faults 9.
template <class T, int Last>
class Table {
 public:
  T& operator[](int index) { return elements_[Checked(index)]; }
  const T& operator[](int index) const { return elements_[Checked(index)]; }

 private:
  static std::size_t Checked(int index) {
    if (index < 0 || index > Last) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
    return static_cast<std::size_t>(index);
  }

  std::array<T, Last + 1> elements_{};
};

// Protocols: one scheme for the serial channels, the Ethernet port and the routes. The user never picks Ethernet/IP: it
// stands in routes alone.
constexpr std::int16_t DF1Protocol = 0;
constexpr std::int16_t ModbusProtocol = 1;
constexpr std::int16_t ASCIIProtocol = 3;
constexpr std::int16_t ABEthernetProtocol = 4;
constexpr std::int16_t EthernetIPProtocol = 5;

// Ports of the routes.
constexpr std::int16_t EthernetPort = 0;
constexpr std::int16_t ChannelBPort = 254;
constexpr std::int16_t ChannelAPort = 255;

// Element 0 of what exists per channel is Channel A, element 1 Channel B.

struct SerialRecord {
  std::int32_t Baud = 0;  // bit/s
  std::int16_t DataBits = 0;
  std::int16_t StopBits = 0;
  std::int16_t Parity = 0;     // 0 even, 1 odd, 2 none
  std::int16_t Handshake = 0;  // 0 no, 1 yes
};

struct ModbusRecord {
  std::int16_t Protocol = 0;        // 1 RTU, 2 ASCII
  std::int16_t Mode = 0;            // 0 master, 1 slave
  std::int16_t RequestTimeout = 0;  // ms
};

/// A way of messages through the gateway.
struct RouteRecord {
  std::int16_t SourceProtocol = 0;
  std::int16_t SourcePort = 0;
  std::int16_t DestLow = 0;  // of the destination range
  std::int16_t DestHigh = 0;
  std::int16_t DestProtocol = 0;
  std::int16_t DestPort = 0;
  std::string IPAddress;  // dotted decimal, or empty
};

inline bool StartsOnAsciiChannel(const RouteRecord& route) {
  return (route.SourcePort == ChannelAPort || route.SourcePort == ChannelBPort) &&
         route.SourceProtocol == ASCIIProtocol;
}

/// A Modbus slave and where it is.
struct NodeIpRecord {
  std::int16_t Node = 0;  // slave address, 0 to 255
  std::string IPAddress;
};

struct NodeIpPortRecord {
  std::string IPAddress;
  std::int16_t Port = 0;  // TCP port
};

/// A controller that the gateway reaches as an EtherNet/IP client.
struct EIPClientRecord {
  std::string IPAddress;     // empty: the entry is free
  std::int16_t Routing = 0;  // 1: through a backplane, to Slot
  std::int16_t Slot = 0;     // of the controller in its chassis
};

/// A map between Allen-Bradley data and Modbus references.
struct AbModMapRecord {
  std::int16_t LowAddress = 0;
  std::int16_t HighAddress = 0;
  std::int16_t ModbusReference = 0;  // 0 "0X", 1 "1X", 3 "3X", 4 "4X"
  std::int16_t ModbusStart = 0;      // as displayed, less 1
  std::int16_t ABFile = 0;
  std::int16_t ABWord = 0;
  std::int16_t ABFunction = 0;  // 0 ProtTypedRW, 1 TypedRW, 2 WordRangeRW
  std::int16_t DataPoints = 0;
  std::int16_t DataType = 0;  // 0 Int, 1 Bin, 3 Float
};

/// A file that is refused leaves it as it was, and so does a Finish that is.
struct Parameters {
  // The device's parameter registers of the RB products and of the second half of the VK5300: element i of each makes
  // up register i; values 0 to 255. RegisterHigh[i] is the first byte on the wire and in a file, RegisterLow[i] the
  // second.
  std::array<std::int32_t, 257> RegisterHigh{};
  std::array<std::int32_t, 257> RegisterLow{};

  // Serial port of the VK-RTX
  Table<SerialRecord, 1> SerialConfig;
  std::int16_t ChannelBEnabled = 0;
  Table<std::int16_t, 1> SerialProtocol;
  Table<std::int16_t, 2> DF1Flags;  // bit 0: half duplex; bit 1: CRC, else BCC
  Table<ModbusRecord, 2> ModbusConfig;

  // Ethernet port of the VK-RTX and the VK5300
  std::uint8_t EthernetProtocol = 0;
  std::int16_t DHCPEnabled = 0;
  std::int16_t EthernetSpeed = 0;                           // in the product's own code
  std::int16_t SocketTimeout = 0;                           // s
  std::string EthernetIP, EthernetSubnet, EthernetGateway;  // dotted decimal, as typed or as made from a device's bytes

  // Tables of the VK-RTX. Rows begin at element 1.
  std::int16_t RouteCount = 0;
  std::int16_t MessageTimeout = 0;  // ms
  Table<RouteRecord, 20> Routes;
  std::int16_t NodeIpCount = 0;
  Table<NodeIpRecord, 10> NodeIpTable;
  std::int16_t NodeIpPortCount = 0;
  Table<NodeIpPortRecord, 20> NodeIpPorts;  // parallel to NodeIpTable
  Table<EIPClientRecord, 2> EIPClients;     // elements 0 and 1
  std::int16_t AbModMapCount = 0;
  Table<AbModMapRecord, 20> AbModMapTable;  // element 0 is copied on an insert at slot 1, and never shown

  // Conversion of ASCII texts of a channel to PCCC writes, on the VK-RTX
  Table<std::int16_t, 2> ConvNode;
  Table<std::int16_t, 2> ConvFile;
  Table<std::int16_t, 2> ConvElement;
  Table<std::int16_t, 2> ConvFileType;  // 0 Integer, 3 String
  Table<std::int16_t, 2> ConvFunction;  // 0 Typed Write, 1 Protected Typed Logical Write
  std::int16_t ConvChannelA = 0;        // 1: an ASCII route starts on the channel
  std::int16_t ConvChannelB = 0;
  std::uint16_t ConvNeeded = 0;  // 65535 if either does
};

}  // namespace vk32
