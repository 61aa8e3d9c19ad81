// The configuration file of the VK-RTX, field by field.
#include "models/vkrtx/Configuration_VKRTX.h"

namespace vk32 {
namespace {

void IntegerLine(RecordFile& file, std::int16_t& value) {
  file.Integer(value);
  file.EndLine();
}

void TextLine(RecordFile& file, std::string& value) {
  file.Text(value);
  file.EndLine();
}

/// A count that its table can't hold is a fault in the file; one below 0 is that of an empty table.
void CountLine(RecordFile& file, std::int16_t& count, int rows) {
  IntegerLine(file, count);
  if (count > rows) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
  if (count < 0) count = 0;
}

void ConversionLines(RecordFile& file, Parameters& parameters, int channel) {
  for (auto* values : {&parameters.ConvNode, &parameters.ConvFile, &parameters.ConvElement, &parameters.ConvFileType,
                       &parameters.ConvFunction}) {
    IntegerLine(file, (*values)[channel]);
  }
}

}  // namespace

void Configuration_VKRTX::Record(RecordFile& file, std::string& product, std::string& modelTag) {
  Parameters& parameters = app.globals;
  TextLine(file, product);
  TextLine(file, modelTag);
  RecordSerial(file, 0);
  IntegerLine(file, parameters.SerialProtocol[0]);
  if (IsDf1Model()) {
    IntegerLine(file, parameters.DF1Flags[0]);
    RecordSerial(file, 1);
    IntegerLine(file, parameters.ChannelBEnabled);
    IntegerLine(file, parameters.SerialProtocol[1]);
    IntegerLine(file, parameters.DF1Flags[1]);
  }
  if (IsModbusModel()) {
    ModbusRecord& modbus = parameters.ModbusConfig[0];
    IntegerLine(file, modbus.Protocol);
    IntegerLine(file, modbus.Mode);
    IntegerLine(file, modbus.RequestTimeout);
  }
  RecordEthernet(file);
  if (IsModbusModel()) RecordModbusModel(file);
  if (IsDf1Model()) RecordDf1Model(file);
}

void Configuration_VKRTX::RecordSerial(RecordFile& file, int channel) {
  SerialRecord& serial = app.globals.SerialConfig[channel];
  file.Long(serial.Baud);
  file.EndLine();
  IntegerLine(file, serial.DataBits);
  IntegerLine(file, serial.StopBits);
  IntegerLine(file, serial.Parity);
  IntegerLine(file, serial.Handshake);
}

void Configuration_VKRTX::RecordEthernet(RecordFile& file) {
  Parameters& parameters = app.globals;
  TextLine(file, parameters.EthernetIP);
  TextLine(file, parameters.EthernetSubnet);
  TextLine(file, parameters.EthernetGateway);
  IntegerLine(file, parameters.EthernetSpeed);
  IntegerLine(file, parameters.DHCPEnabled);
  IntegerLine(file, parameters.SocketTimeout);
  std::int32_t protocol = parameters.EthernetProtocol;
  file.Byte(protocol);
  file.EndLine();
  parameters.EthernetProtocol = static_cast<std::uint8_t>(protocol);
}

void Configuration_VKRTX::RecordModbusModel(RecordFile& file) {
  Parameters& parameters = app.globals;
  CountLine(file, parameters.AbModMapCount, MappingTable::Rows);
  for (int i = 1; i <= parameters.AbModMapCount; ++i) {
    AbModMapRecord& map = parameters.AbModMapTable[i];
    for (std::int16_t* field : {&map.LowAddress, &map.HighAddress, &map.ModbusReference, &map.ModbusStart, &map.ABFile,
                                &map.ABWord, &map.ABFunction, &map.DataPoints, &map.DataType}) {
      file.Integer(*field);
    }
    file.EndLine();
  }
  CountLine(file, parameters.NodeIpCount, NodeIpPage::Rows);
  for (int i = 1; i <= parameters.NodeIpCount; ++i) {
    file.Integer(parameters.NodeIpTable[i].Node);
    file.Text(parameters.NodeIpTable[i].IPAddress);
    file.EndLine();
  }
}

void Configuration_VKRTX::RecordDf1Model(RecordFile& file) {
  Parameters& parameters = app.globals;
  for (int i = 0; i <= 1; ++i) {
    file.Text(parameters.EIPClients[i].IPAddress);
    file.Integer(parameters.EIPClients[i].Routing);
    file.Integer(parameters.EIPClients[i].Slot);
    file.EndLine();
  }
  CountLine(file, parameters.RouteCount, RoutingPage::Rows);
  IntegerLine(file, parameters.MessageTimeout);
  for (int i = 1; i <= parameters.RouteCount; ++i) {
    RouteRecord& route = parameters.Routes[i];
    for (std::int16_t* field : {&route.SourceProtocol, &route.SourcePort, &route.DestLow, &route.DestHigh,
                                &route.DestProtocol, &route.DestPort}) {
      file.Integer(*field);
    }
    file.Text(route.IPAddress);
    file.EndLine();
  }
  ConversionLines(file, parameters, 0);
  ConversionLines(file, parameters, 1);
}

}  // namespace vk32
