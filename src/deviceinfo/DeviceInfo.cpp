// What a gateway says of itself. The products differ in the order of bytes in their records; that is in their firmware.
#include "deviceinfo/DeviceInfo.h"

#include "core/Convert.h"
#include "link/Conversation.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "shell/ProductMenu.h"

namespace vk32 {
namespace {

constexpr int AnswerInterval = 2000;                   // ms
constexpr int EndOfTextInterval = 50;                  // ms: a pause so long ends a text; about 96 bytes at 19200 bit/s
constexpr int VKRTXRecordLength = 284;                 // bytes; the last one is Checksum8 of the others
constexpr int PieceLengths[] = {16, 12, 256, 16, 32};  // of the VK5300; the texts may be shorter

constexpr Purpose ReadingDeviceInfo{"Reading the device information", "Wait until it has been read."};

struct TextField {
  int offset, size;
};
constexpr TextField FirmwareFields[] = {{28, 64}, {92, 48}, {140, 48}, {188, 48}, {236, 48}};

constexpr const char* Distributors[] = {"Norvanta",       "Tessaron", "Ardent Relay", "Pellwood Controls Co",
                                        "Kestwick Drive", "ZTQ",      "Ombria"};

/// The byte at an offset of the record, counted from 0.
std::int32_t ByteAt(const Bytes& record, int offset) { return Asc(record, offset + 1); }

std::int32_t HighFirst(const Bytes& record, int offset, int size) {
  std::int32_t value = 0;
  for (int i = 0; i < size; ++i) value = value * 256 + ByteAt(record, offset + i);
  return value;
}

std::int32_t LowFirst(const Bytes& record, int offset, int size) {
  std::int32_t value = 0;
  for (int i = size - 1; i >= 0; --i) value = value * 256 + ByteAt(record, offset + i);
  return value;
}

std::string HardwareAddress(const Bytes& record, int offset) {
  std::string text;
  for (int i = 0; i < 6; ++i) {
    if (i > 0) text += "-";
    text += ByteToHex(CByte(ByteAt(record, offset + i)));
  }
  return text;
}

std::string Address(const Bytes& record, int first, int step) {
  std::string text = Str(ByteAt(record, first));
  for (int i = 1; i < 4; ++i) text += "." + Str(ByteAt(record, first + i * step));
  return text;
}

/// Identity and network are no texts: nothing may be missing.
bool IsWhole(const std::array<Bytes, 5>& pieces, std::size_t i) {
  return pieces[i].size() == static_cast<std::size_t>(PieceLengths[i]);
}

std::string AddressInOrder(const Bytes& record, int offset) { return Address(record, offset, 1); }
std::string AddressReversed(const Bytes& record, int offset) { return Address(record, offset + 3, -1); }

}  // namespace

DeviceInfo::DeviceInfo(App& app) : Form(app.forms, FormName, "Device Information", ShellWidth, 7500), app_(app) {
  for (TextBox* field : {&SerialTxt, &HardwareTxt, &DistributorTxt, &EMACTxt, &IPAddrTxt, &SubnetTxt, &GatewayTxt,
                         &ProductModelTxt, &ProductFirmwareVerTxt, &ProductFirmwareDateTxt}) {
    field->Locked = true;
  }
}

void DeviceInfo::Form_Load() {
  app_.globals.CommFailed = FlagTrue;
  // The window shows when the answer has come; until then its menu tells.
  auto* menu = dynamic_cast<ProductMenu*>(app_.forms.Find(ProductMenu::FormName));
  const auto conversation = Conversation::Begin(app_, *this, ReadingDeviceInfo, menu ? &menu->status : nullptr);
  if (!conversation) return;
  app_.globals.CommFailed = FlagFalse;
  SetTimeOut(*conversation, AnswerInterval);
  conversation->exchange.Begin(Exchange::Kind::Reading);
  conversation->exchange.Next("the request of the device information");
  conversation->CommOpen();
  SetDeviceLink(*conversation);
  bool read = true;
  if (conversation->product == "VK-RTX") {
    read = ReadVKRTX(*conversation);
  } else if (conversation->product == "VK5300") {
    read = ReadVK5300(*conversation);
  }
  if (read) {
    conversation->exchange.End(true);
  } else {
    TellTimeOut(*conversation);
    app_.globals.CommFailed = FlagTrue;
  }
  conversation->CommClose();
}

bool DeviceInfo::ReadVKRTX(Conversation& conversation) {
  if (!SendAndWaitForAck(conversation, InfoRequest)) return false;
  Bytes record;
  const std::int32_t n = ReadBytes(conversation, record, VKRTXRecordLength);
  if (n < 0) return false;
  if (Mid(record, n, 1) != Checksum8(record, n - 1)) {
    conversation.exchange.Refuse("the reply's checksum is wrong");
    return false;
  }
  Send(conversation, EndOfExchange);
  try {
    DecodeVKRTX(record);
  } catch (const RuntimeFault&) {
    for (TextBox* field : {&SerialTxt, &HardwareTxt, &DistributorTxt}) field->Text = "None";
  }
  return true;
}

bool DeviceInfo::ReadVK5300(Conversation& conversation) {
  if (!SendAndWaitForAck(conversation, InfoRequest)) return false;
  TimeOutTmr.Interval = EndOfTextInterval;
  std::array<Bytes, 5> pieces;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) Send(conversation, InfoContinue);
    // A text ends by the time-out: what came is kept and the result not looked at.
    ReadBytes(conversation, pieces[i], PieceLengths[i]);
    if (!pieces[i].empty()) conversation.Answered(true);
  }
  if (!IsWhole(pieces, 0) || !IsWhole(pieces, 1)) {
    conversation.exchange.Refuse("the device information came in part");
    return false;
  }
  DecodeVK5300(pieces);
  return true;
}

void DeviceInfo::DecodeVKRTX(const Bytes& record) {
  ShowIdentity(HighFirst(record, 0, 3), ByteAt(record, 3), HighFirst(record, 4, 2));
  DistributorCode = CInt(ByteAt(record, 9));
  ShowDistributor();
  EMACTxt.Text = HardwareAddress(record, 10);
  IPAddrTxt.Text = AddressInOrder(record, 16);
  SubnetTxt.Text = AddressInOrder(record, 20);
  GatewayTxt.Text = AddressInOrder(record, 24);
  DecodeFirmwareTexts(record);
}

void DeviceInfo::DecodeFirmwareTexts(const Bytes& record) {
  for (std::size_t i = 0; i < FirmwareTexts.size(); ++i) {
    const Bytes field = Mid(record, FirmwareFields[i].offset + 1, FirmwareFields[i].size);
    FirmwareTexts[i] = field.substr(0, field.find('\0')) + " ";
  }
  if (FirmwareTexts[0][0] == 'E') return;
  FirmwareTexts.fill("None");
  FirmwareTexts[0] = "No Firmware Loaded";
}

void DeviceInfo::DecodeVK5300(const std::array<Bytes, 5>& pieces) {
  const Bytes& identity = pieces[0];
  const Bytes& network = pieces[1];
  ShowIdentity(LowFirst(identity, 0, 3), ByteAt(identity, 3), LowFirst(identity, 4, 2));
  DistributorCode = CInt(ByteAt(identity, 9));
  ShowDistributor();
  EMACTxt.Text = HardwareAddress(identity, 10);
  IPAddrTxt.Text = AddressReversed(network, 0);
  SubnetTxt.Text = AddressReversed(network, 4);
  GatewayTxt.Text = AddressReversed(network, 8);
  ProductModelTxt.Text = pieces[2];
  ProductFirmwareVerTxt.Text = pieces[3];
  ProductFirmwareDateTxt.Text = pieces[4];
}

void DeviceInfo::ShowIdentity(std::int32_t serial, std::int32_t hardware, std::int32_t revision) {
  SerialTxt.Text = Str(serial);
  HardwareTxt.Text = Str(hardware) + "-" + Str(revision);
}

void DeviceInfo::ShowDistributor() {
  const auto code = static_cast<std::size_t>(DistributorCode);
  DistributorTxt.Text = code < std::size(Distributors) ? Distributors[code] : "";
}

}  // namespace vk32
