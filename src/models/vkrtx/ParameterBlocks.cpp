// The parameter blocks of the VK-RTX: their tables, and the walks over them in both directions.
#include "models/vkrtx/ParameterBlocks.h"

#include <algorithm>
#include <utility>

#include "core/Convert.h"
#include "models/ethernet/EthernetBlock.h"
#include "models/vkrtx/AsciiPages.h"
#include "models/vkrtx/MappingPage.h"
#include "models/vkrtx/NodeIpPage.h"
#include "models/vkrtx/PortPages.h"
#include "models/vkrtx/RoutingPage.h"

namespace vk32 {
namespace {

using enum Format;

/// "Serial Communication Settings", "Channel A, Baud Rate"
FieldPlace At(const std::string& page, const std::string& part, const char* field, ControlName control) {
  return {page, part + ", " + field, control};
}

/// "Routing Table Setup", "slot 3, Low"; the control is an array of rows.
FieldPlace Slot(const char* page, int row, const char* field, const char* control) {
  return At(page, "slot " + Str(row), field, {control, row});
}

std::string ChannelText(int i) { return i == 0 ? ChannelAText : ChannelBText; }

// The blocks of the ports. Offset, form, variable, name.

constexpr int ChannelSize = 11;  // 8 and 9 are 0

BlockFields ChannelFields(Parameters& p, int i) {
  SerialRecord& serial = p.SerialConfig[i];
  const auto name = [i](const char* field, const char* control) {
    return At("Serial Communication Settings", ChannelText(i), field, {control, i});
  };
  return {
      // Channel A is always enabled: what a device says of it is not read.
      i == 0 ? BlockField{0, Byte, Constant{1}, {}}
             : BlockField{0,
                          Code,
                          p.ChannelBEnabled,
                          {"Serial Communication Settings", "Channel B, Enabled", "EnableCHBLst"}},
      {1, ThreeBytesLowFirst, serial.Baud, name("Baud Rate", "SerBaudLst")},
      {4, Code, serial.DataBits, name("Data Bits", "SerDataLst")},
      {5, Code, serial.StopBits, name("Stop Bits", "SerStopLst")},
      {6, Code, serial.Parity, name("Parity", "SerParityLst")},
      {7, Code, serial.Handshake, {"Serial Communication Settings", ChannelText(i) + ", Handshaking", "SerHandLst"}},
      {10, Code, p.SerialProtocol[i], At("Serial Protocol Settings", ChannelText(i), "Protocol", {"SerProtoLst", i})},
  };
}

constexpr int NoProtocolSize = 1, Df1Size = 1, ModbusSize = 4;

/// Of block 4 and 5. A channel whose protocol has no settings sends a byte 0.
BlockFields ProtocolFields(Parameters& p, int i) {
  const auto name = [i](const char* field, const char* control) {
    return At("Serial Protocol Settings", ChannelText(i), field, {control, i});
  };
  if (p.SerialProtocol[i] == DF1Protocol) return {{0, Code, p.DF1Flags[i], name("DF1 Settings", "Df1ErrorLst")}};
  // Channel B never speaks Modbus.
  if (p.SerialProtocol[i] == ModbusProtocol && i == 0) {
    return {
        {0, Code, p.ModbusConfig[0].Protocol, name("Modbus Protocol", "ModbusProtocolLst")},
        {1, Code, p.ModbusConfig[0].Mode, name("Modbus Mode", "ModbusModeLst")},
        {2, WordLowFirst, p.ModbusConfig[0].RequestTimeout, RequestTimeoutPlace()},
    };
  }
  return {};
}

int ProtocolSize(const BlockFields& fields) {
  return fields.empty() ? NoProtocolSize : fields.size() == 1 ? Df1Size : ModbusSize;
}

// The block of the conversion: two halves, 7 to 15 of each are 0.

constexpr int ConversionHalf = 16;

BlockFields ConversionFields(Parameters& p, int i) {
  const auto name = [i](const char* field, const char* control) {
    return FieldPlace{ConversionPageTitle + OfChannel(i), field, {control, i}};
  };
  return {
      {0, Byte, p.ConvNode[i], {RoutingPageTitle, "Low of the ASCII route of " + ChannelText(i), "RoutesTableFrame"}},
      {1, WordHighFirst, p.ConvFile[i], name("File Number", "ASCIIPcccFileTxt")},
      {3, WordHighFirst, p.ConvElement[i], name("Element Number", "ASCIIPcccWordTxt")},
      {5, Code, p.ConvFileType[i], name("File Type", "ASCIIPcccTypeLst")},
      {6, Code, p.ConvFunction[i], name("DF1 Msg Function", "ASCIIPcccFncLst")},
  };
}

// The block of a client.

constexpr int ClientSize = 6;

BlockFields ClientFields(Parameters& p, int i) {
  const auto name = [i](const char* field, const char* control) {
    return At(ClientPageTitle, "client " + Str(i + 1), field, {control, i});
  };
  EIPClientRecord& client = p.EIPClients[i];
  return {
      {0,
       AddressReversed,
       &client.IPAddress,
       {RoutingPageTitle, "IP Address of the ASCII route to " + client.IPAddress, "RoutesTableFrame"}},
      {4, Byte, client.Routing, name("Routing Required", "EIPClientRoutingChk")},
      {5, Byte, client.Slot, name("Controller Slot Number (shown with Routing Required)", "EIPClientSlotTxt")},
  };
}

// The tables: a head in each block, then records.

constexpr int Everything = 255;
constexpr int Nothing = 0;

struct TableLayout {
  int firstBlock, lastBlock;
  int lastRow;
  int head;                           // bytes; in the blocks behind the first they are 0
  int record;                         // bytes
  int perBlockWritten, perBlockRead;  // records
  BlockFields (*headFields)(Parameters&);
  BlockFields (*recordFields)(Parameters&, int row);
};

// clang-format off

/// The addresses and their TCP ports. Not read back: the list is made anew from the Slave/IP rows.
constexpr TableLayout NodeIpPortLayout{
    .firstBlock = 20, .lastBlock = 23, .lastRow = 10, .head = 1, .record = 6, .perBlockWritten = 10, .perBlockRead = Nothing,
    .headFields = [](Parameters& p) -> BlockFields {
      return {{0, Byte, p.NodeIpPortCount, {NodeIpPageTitle, ""}}};
    },
    .recordFields = [](Parameters& p, int row) -> BlockFields {
      return {
          {0, AddressReversed, &p.NodeIpPorts[row].IPAddress, Slot(NodeIpPageTitle, row, "IP Address", "NodeIpIpAddrTxt")},
          {4, WordLowFirst,     p.NodeIpPorts[row].Port,      Slot(NodeIpPageTitle, row, "Port", "NodeIpIpAddrTxt")},
      };
    }};

constexpr TableLayout NodeIpLayout{
    .firstBlock = 24, .lastBlock = 26, .lastRow = 10, .head = 1, .record = 5, .perBlockWritten = 12, .perBlockRead = 12,
    .headFields = [](Parameters& p) -> BlockFields {
      return {{0, Byte, p.NodeIpCount, {NodeIpPageTitle, ""}}};
    },
    .recordFields = [](Parameters& p, int row) -> BlockFields {
      return {
          {0, Byte,             p.NodeIpTable[row].Node,      Slot(NodeIpPageTitle, row, "Slave ID", "NodeIpNodeTxt")},
          {1, AddressReversed, &p.NodeIpTable[row].IPAddress, Slot(NodeIpPageTitle, row, "IP Address", "NodeIpIpAddrTxt")},
      };
    }};

/// The device takes all maps in block 30, and gives them back four to a block.
constexpr TableLayout MapLayout{
    .firstBlock = 30, .lastBlock = 43, .lastRow = 20, .head = 1, .record = 13, .perBlockWritten = Everything, .perBlockRead = 4,
    .headFields = [](Parameters& p) -> BlockFields {
      return {{0, Byte, p.AbModMapCount, {MappingPageTitle, ""}}};
    },
    .recordFields = [](Parameters& p, int row) -> BlockFields {
      AbModMapRecord& map = p.AbModMapTable[row];
      return {
          { 0, Byte,           map.LowAddress,      Slot(MappingPageTitle, row, "Low Address", "AbModMapAddrLbl")},
          { 1, Byte,           map.HighAddress,     Slot(MappingPageTitle, row, "High Address", "AbModMapAddrLbl")},
          { 2, Code,           map.ModbusReference, Slot(MappingPageTitle, row, "Modbus Register/Coil Refrence", "AbModMapModStartLbl")},
          { 3, SignedLowFirst, map.ModbusStart,     Slot(MappingPageTitle, row, "Modbus Start Address", "AbModMapModStartLbl")},
          { 5, SignedLowFirst, map.ABFile,          Slot(MappingPageTitle, row, "File", "AbModMapAbDataFiletLbl")},
          { 7, SignedLowFirst, map.ABWord,          Slot(MappingPageTitle, row, "Word", "AbModMapAbDataFiletLbl")},
          { 9, Code,           map.ABFunction,      Slot(MappingPageTitle, row, "Allen-Bradley Function", "AbModMapAbFncLbl")},
          {10, SignedLowFirst, map.DataPoints,      Slot(MappingPageTitle, row, "Number of Data Points", "AbModMapDataPointsLbl")},
          {12, Code,           map.DataType,        Slot(MappingPageTitle, row, "Data Type", "AbModMapDataTypeLbl")},
      };
    }};

/// Their addresses stand forward, unlike all others.
constexpr TableLayout RouteLayout{
    .firstBlock = 100, .lastBlock = 103, .lastRow = 20, .head = 3, .record = 10, .perBlockWritten = 6, .perBlockRead = 6,
    .headFields = [](Parameters& p) -> BlockFields {
      return {
          {0, Byte,          p.RouteCount, {RoutingPageTitle, ""}},
          {1, WordHighFirst, p.MessageTimeout, {RoutingPageTitle, "Message Timeout", "MsgTimeOutTxt"}},
      };
    },
    .recordFields = [](Parameters& p, int row) -> BlockFields {
      RouteRecord& route = p.Routes[row];
      return {
          {0, Code,            route.SourceProtocol, Slot(RoutingPageTitle, row, "Source Port", "RouteSrcPortLbl")},
          {1, Code,            route.SourcePort,     Slot(RoutingPageTitle, row, "Source Port", "RouteSrcPortLbl")},
          {2, Byte,            route.DestLow,        Slot(RoutingPageTitle, row, "Low", "RouteDstLowLbl")},
          {3, Byte,            route.DestHigh,       Slot(RoutingPageTitle, row, "High", "RouteDstHighLbl")},
          {4, Code,            route.DestProtocol,   Slot(RoutingPageTitle, row, "Destination Port", "RouteDestinationPortLbl")},
          {5, Code,            route.DestPort,       Slot(RoutingPageTitle, row, "Destination Port", "RouteDestinationPortLbl")},
          {6, AddressForward, &route.IPAddress,      Slot(RoutingPageTitle, row, "IP Address", "RouteIPAddressLbl")},
      };
    }};

// clang-format on

/// The blocks of a table with records 1 to `count`.
void WriteTable(const TableLayout& layout, Parameters& p, int count, BlockImages& blocks) {
  const auto image = [&](int block) -> Bytes& { return blocks[static_cast<std::size_t>(block)]; };
  image(layout.firstBlock) = MakeBlock(layout.head, layout.headFields(p));
  for (int block = layout.firstBlock + 1; block <= layout.lastBlock; ++block) image(block) = MakeBlock(layout.head, {});
  for (int row = 1; row <= count; ++row) {
    image(layout.firstBlock + (row - 1) / layout.perBlockWritten) +=
        MakeBlock(layout.record, layout.recordFields(p, row));
  }
}

/// The records of one block. The first is taken whatever `count` says, and none behind row `count`.
void ReadTable(const TableLayout& layout, int block, const Bytes& data, int count, Parameters& p) {
  int row = (block - layout.firstBlock) * layout.perBlockRead + 1;
  if (row > layout.lastRow) return;
  int k = 0;
  do {
    ReadFields(layout.recordFields(p, row), data, layout.head + layout.record * k);
    ++k;
    ++row;
  } while (k < layout.perBlockRead && row <= layout.lastRow && row <= count);
}

bool IsIn(const TableLayout& layout, int block) { return block >= layout.firstBlock && block <= layout.lastBlock; }

/// Head and records. A device may count more rows than there are.
void ReadCountedTable(const TableLayout& layout, std::int16_t& count, int block, const Bytes& data, Parameters& p) {
  if (block == layout.firstBlock) {
    ReadFields(layout.headFields(p), data);
    count = static_cast<std::int16_t>(std::min<int>(count, layout.lastRow));
  }
  ReadTable(layout, block, data, count, p);
}

void ReadClient(int i, const Bytes& data, Parameters& p) {
  ReadFields(ClientFields(p, i), data);
  // Without routing the byte behind is not a slot.
  if (p.EIPClients[i].Routing != 1) p.EIPClients[i].Slot = 0;
}

constexpr int FirstClientBlock = 50;
constexpr int ConversionBlock = 10;

}  // namespace

void BuildPortBlocks(Parameters& p, BlockImages& blocks) {
  blocks[EthernetBlockNumber] = MakeEthernetBlock(p);
  for (int i = 0; i <= 1; ++i) {
    const auto channel = static_cast<std::size_t>(i);
    blocks[1 + channel] = MakeBlock(ChannelSize, ChannelFields(p, i));
    const BlockFields protocol = ProtocolFields(p, i);
    blocks[4 + channel] = MakeBlock(ProtocolSize(protocol), protocol);
  }
}

void BuildModbusModelBlocks(Parameters& p, BlockImages& blocks) {
  if (p.NodeIpPortCount > 0) WriteTable(NodeIpPortLayout, p, p.NodeIpPortCount, blocks);
  if (p.NodeIpCount > 0) WriteTable(NodeIpLayout, p, p.NodeIpCount, blocks);
  if (p.AbModMapCount >= 1) WriteTable(MapLayout, p, p.AbModMapCount, blocks);
}

void BuildClientBlocks(const Parameters& parameters, BlockImages& blocks) {
  Parameters sent = parameters;
  for (int i = 0; i <= 1; ++i) {
    EIPClientRecord& client = sent.EIPClients[i];
    if (client.IPAddress <= "0.0.0.0") client = {"0.0.0.0"};
    blocks[FirstClientBlock + static_cast<std::size_t>(i)] = MakeBlock(ClientSize, ClientFields(sent, i));
  }
}

void BuildRouteBlocks(const Parameters& parameters, BlockImages& blocks) {
  Parameters sent = parameters;
  for (int row = 1; row <= sent.RouteCount; ++row) {
    if (sent.Routes[row].IPAddress.empty()) sent.Routes[row].IPAddress = "0.0.0.0";
  }
  WriteTable(RouteLayout, sent, sent.RouteCount, blocks);
}

void BuildConversionBlock(Parameters& p, BlockImages& blocks) {
  Bytes& block = blocks[ConversionBlock];
  block.clear();
  if (p.ConvChannelA != 1 && p.ConvChannelB != 1) return;
  block.resize(2 * ConversionHalf);
  if (p.ConvChannelA == 1) WriteFields(ConversionFields(p, 0), block);
  if (p.ConvChannelB == 1) WriteFields(ConversionFields(p, 1), block, ConversionHalf);
}

void DecodeBlock(int block, const Bytes& data, Parameters& p, TablesAs tables) {
  switch (block) {
    case 1:
    case 2: return ReadFields(ChannelFields(p, block - 1), data);
    case EthernetBlockNumber: return ReadFields(EthernetFields(p), data);
    case 4:
    case 5: return ReadFields(ProtocolFields(p, block - 4), data);
    case ConversionBlock:
      ReadFields(ConversionFields(p, 0), data);
      return ReadFields(ConversionFields(p, 1), data, ConversionHalf);
    default: break;
  }
  if (block >= FirstClientBlock && block <= FirstClientBlock + 2) return ReadClient(block - FirstClientBlock, data, p);
  if (IsIn(NodeIpLayout, block)) return ReadCountedTable(NodeIpLayout, p.NodeIpCount, block, data, p);
  if (IsIn(MapLayout, block)) {
    TableLayout maps = MapLayout;
    if (tables == TablesAs::Written) maps.perBlockRead = maps.perBlockWritten;
    return ReadCountedTable(maps, p.AbModMapCount, block, data, p);
  }
  if (!IsIn(RouteLayout, block)) return;
  // All records of a block are routes, whether they were in use or not.
  if (block == RouteLayout.firstBlock) ReadFields(RouteLayout.headFields(p), data);
  ReadTable(RouteLayout, block, data, RouteLayout.lastRow, p);
}

}  // namespace vk32
