// The wizard of the RBCard.
#include "models/highway/Configuration_RBCard.h"

namespace vk32 {
namespace {

constexpr int TimeOutInterval = 15000;  // ms
enum Mode { DhPlus = 0, Dh485 = 1 };

/// Baud, but kBaud for 19.2.
ChoiceTable Dh485Speeds() { return {Code("4800", 7), Code("9600", 8), Code("19.2", 9)}; }

}  // namespace

Configuration_RBCard::Configuration_RBCard(App& app_) : ImageWizard(app_, FormName, TimeOutInterval, 3240, 3600) {
  // The labels beside boxes and options take no clicks here.
  for (Label* label : {&OpenConfigChkLbl, &DownOptLbl, &DownSaveOptLbl, &SaveOptLbl}) label->OnClick = {};
}

std::vector<WizardPage> Configuration_RBCard::Pages() {
  return {{&OpenConfigLbl, {&ConfigFrame}},
          {&HwyComSetLbl, {&HwyComFrame}},
          {&Df1ComSetLbl, {&Df1ComFrame}},
          {&ApplySetLbl, {&ApplyFrame}}};
}

std::span<const FixedByte> Configuration_RBCard::FixedBytes() const {
  // What they mean to the device is not known; it wants them so.
  static constexpr FixedByte fixed[] = {
      {{0, Half::High}, 4}, {{0, Half::Low}, 153}, {{10, Half::High}, 8}, {{11, Half::High}, 8}, {{13, Half::High}, 1}};
  return fixed;
}

std::vector<RegisterList*> Configuration_RBCard::Df1Lists() {
  return {&Df1SpeedLst,    &Df1ParityLst, &Df1StopBitsLst,    &Df1DataBitsLst,
          &Df1ErrorChkLst, &Df1DupMsgLst, &Df1EmbeddedRespLst};
}

void Configuration_RBCard::Form_Load() {
  Begin(3);
  DhpOpt.Value = true;
  for (RegisterList* list : Df1Lists()) list->SelectDefault();
  // Whatever an earlier wizard left: "None" for the parity keeps the even bit.
  Register(HighwayImage::NetworkType) = DhPlus;
  Register(HighwayImage::Node) = 1;
  Register(HighwayImage::Speed) = 8;
  Register(HighwayImage::Df1Speed) = 8;
  Register(HighwayImage::LineFlags) = 0;
  Register(HighwayImage::Df1Flags) = 0;
}

void Configuration_RBCard::DhpOpt_Click() {
  if (SetupDone == FlagTrue) return;
  ShowDHPlusLists();
  HwyNodeLst.Text = "1";
  HwySpeedLst.Text = "57.6";
  Register(HighwayImage::NetworkType) = DhPlus;
}

void Configuration_RBCard::Dh485Opt_Click() {
  if (SetupDone == FlagTrue) return;
  ShowDH485Lists();
  HwyNodeLst.Text = "1";
  HwySpeedLst.Text = "19.2";
  Register(HighwayImage::NetworkType) = Dh485;
}

void Configuration_RBCard::ShowDHPlusLists() {
  HwyParamsLbl.Caption = "DH+ Parameters";
  HwyNodeLst.SetChoices(HighwayImage::DhPlusNodes());
  HwyNodeUnitLbl.Caption = "Octal";
  HwySpeedLst.SetChoices(HighwayImage::DhPlusSpeeds());
  HwySpeedUnitLbl.Caption = "kBaud";
}

void Configuration_RBCard::ShowDH485Lists() {
  HwyParamsLbl.Caption = "DH485 Parameters";
  HwyNodeLst.SetChoices(HighwayImage::Dh485Nodes());
  HwyNodeUnitLbl.Caption = "Decimal";
  HwySpeedLst.SetChoices(Dh485Speeds());
  HwySpeedUnitLbl.Caption = "kBaud";
}

void Configuration_RBCard::HwySpeedLst_Click() {
  const std::string& speed = HwySpeedLst.Text;
  HwySpeedUnitLbl.Caption = speed == "4800" || speed == "9600" ? "Baud" : "kBaud";
}

void Configuration_RBCard::Parameter_Setup_RB() {
  SetupDone = FlagTrue;
  if (Register(HighwayImage::NetworkType) == Dh485) {
    Dh485Opt.Value = true;
    ShowDH485Lists();
  } else {
    DhpOpt.Value = true;
    ShowDHPlusLists();
  }
  HwyNodeLst.Decode();
  HwySpeedLst.Decode();
  for (RegisterList* list : Df1Lists()) list->Decode();
}

void Configuration_RBCard::Record(RecordFile& file, std::string& product, std::string& modelTag) {
  for (std::string* text : {&product, &modelTag}) {
    file.Text(*text);
    file.EndLine();
  }
  for (const RegisterByte byte : {HighwayImage::NetworkType, HighwayImage::Node, HighwayImage::Speed,
                                  HighwayImage::Df1Speed, HighwayImage::LineFlags, HighwayImage::Df1Flags}) {
    file.Byte(Register(byte));
    file.EndLine();
  }
}

}  // namespace vk32
