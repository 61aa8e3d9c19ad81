// The wizard of the VK5300.
#include "models/highway/Configuration_VK5300.h"

#include "core/ConfigMod.h"
#include "core/Convert.h"
#include "link/VKComSubs.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr int TimeOutInterval = 3000;  // ms
constexpr int RestartTime = 500;       // ms, that the device is given between its two halves
enum Page { Ethernet = 2 };
enum NetworkType { DhPlus = 0, Dh485 = 1 };

ChoiceTable Dh485Speeds() { return {Code("4800", 7), Code("9600", 8), Code("19200", 9)}; }

}  // namespace

Configuration_VK5300::Configuration_VK5300(App& app_) : ImageWizard(app_, FormName, TimeOutInterval, 3240, 3600) {
  // These two labels take no clicks here.
  OpenConfigChkLbl.OnClick = {};
  SaveOptLbl.OnClick = {};
}

std::vector<WizardPage> Configuration_VK5300::Pages() {
  return {{&OpenConfigLbl, {&ConfigFrame}},
          {&DhComSetLbl, {&DhComFrame}},
          {&EthComSetLbl, {&ethernet.EthComFrame}},
          {&ApplySetLbl, {&ApplyFrame}}};
}

std::span<const FixedByte> Configuration_VK5300::FixedBytes() const {
  // What they mean to the device is not known; it wants them so.
  static constexpr FixedByte fixed[] = {
      {{0, Half::High}, 4}, {{0, Half::Low}, 153}, {{9, Half::High}, 11}, {{10, Half::High}, 8}};
  return fixed;
}

void Configuration_VK5300::Form_Load() {
  Begin(3);
  app.globals.HighwayDefaultsOn = FlagTrue;
  DhNetworkLst.Text = "DH+";
  ethernet.SetDefaults();
}

bool Configuration_VK5300::LeavePage() {
  return app.globals.CurrentPage != Ethernet || app.globals.DHCPEnabled != 0 || EthernetFieldsAreValid();
}

void Configuration_VK5300::DhNetworkLst_Click() {
  const bool dhPlus = DhNetworkLst.Text.Value() == "DH+";
  DhNodeLst.SetChoices(dhPlus ? HighwayImage::DhPlusNodes() : HighwayImage::Dh485Nodes());
  DhNodeUnitLbl.Caption = dhPlus ? "Octal" : "Decimal";
  DhSpeedLst.SetChoices(dhPlus ? HighwayImage::DhPlusSpeeds() : Dh485Speeds());
  DhSpeedUnitLbl.Caption = dhPlus ? "kBaud" : "Baud";
  if (app.globals.HighwayDefaultsOn == FlagTrue) {
    DhNodeLst.Text = "1";
    DhSpeedLst.Text = dhPlus ? "57.6" : "19200";
    Register(HighwayImage::NetworkType) = dhPlus ? DhPlus : Dh485;
  }
  app.globals.HighwayDefaultsOn = FlagTrue;
}

void Configuration_VK5300::BuildParameters(bool) {
  ethernet.CollectTextFields();
  Parameters sent = app.globals;
  sent.EthernetProtocol = ABEthernetProtocol;
  const Bytes block = MakeEthernetBlock(sent);
  BuildParameterImage();
  app.globals.BlockTable[EthernetBlockNumber] = block;
}

bool Configuration_VK5300::Download(Conversation& conversation) {
  // After a saved file the image follows the restart at once: the device is used to both.
  const bool waits = DownOpt.Value;
  if (!DownloadBlocks(conversation)) return false;
  if (!SendReboot(conversation)) {
    TellTimeOut(conversation);
    return false;
  }
  if (waits) WaitMilliseconds(conversation, RestartTime);
  return DownloadImage(conversation);
}

Taken Configuration_VK5300::Upload(Conversation& conversation) {
  const Taken block = UploadBlocks(conversation, *this);
  SendReboot(conversation);
  WaitMilliseconds(conversation, RestartTime);
  const Taken half = UploadImage(conversation, *this);
  return block == half ? block : Taken::Part;
}

void Configuration_VK5300::TakeSent(const SentParameters& sent) {
  ReadFields(EthernetFields(app.globals), sent.blocks[EthernetBlockNumber]);
  Parameter_Setup_VK();
  ImageWizard::TakeSent(sent);
}

void Configuration_VK5300::WaitMilliseconds(Conversation& conversation, int time) {
  SetTimeOut(conversation, time);
  WaitForTimeOut(conversation);
}

void Configuration_VK5300::RemoveData(const Bytes& reply) {
  if (app.globals.BlockNumber == EthernetBlockNumber) ReadFields(EthernetFields(app.globals), Mid(reply, 2));
}

void Configuration_VK5300::Parameter_Setup_VK() { ethernet.Setup(); }

void Configuration_VK5300::Parameter_Setup_RB() {
  app.globals.HighwayDefaultsOn = FlagFalse;
  switch (Register(HighwayImage::NetworkType)) {
    case DhPlus: DhNetworkLst.Text = "DH+"; break;
    case Dh485: DhNetworkLst.Text = "DH-485"; break;
    default: return;
  }
  DhNodeLst.Decode();
  DhSpeedLst.Decode();
}

void Configuration_VK5300::Record(RecordFile& file, std::string& product, std::string& modelTag) {
  Globals& globals = app.globals;
  std::string version = ProgramVersion();  // reading takes the file's
  for (std::string* text : {&version, &product, &modelTag}) {
    file.Text(*text);
    file.EndLine();
  }
  globals.FileVersionText = version;
  for (const RegisterByte byte : {HighwayImage::NetworkType, HighwayImage::Node, HighwayImage::Speed}) {
    file.Byte(Register(byte));
    file.EndLine();
  }
  for (std::string* text : {&globals.EthernetIP, &globals.EthernetSubnet, &globals.EthernetGateway}) {
    file.Text(*text);
    file.EndLine();
  }
  for (std::int16_t* number : {&globals.EthernetSpeed, &globals.DHCPEnabled, &globals.SocketTimeout}) {
    file.Integer(*number);
    file.EndLine();
  }
}

}  // namespace vk32
