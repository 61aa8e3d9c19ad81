// The wizard of the RB2000.
#include "models/serial/Configuration_RB2000.h"

#include "core/Convert.h"
#include "shell/Subs.h"

namespace vk32 {

namespace {

enum Page { MappingPage = 3 };

}  // namespace

Configuration_RB2000::Configuration_RB2000(App& app_) : SerialWizard(app_, FormName, 3600, 3960) {}

std::vector<WizardPage> Configuration_RB2000::Pages() {
  return {{&OpenConfigLbl, {&ConfigFrame}},
          {&SerialSetLbl, {&SerialSettingsFrame}},
          {&ProtoSetLbl, {&ProtocolSettingsFrame}},
          {&ModAddrMapLbl, MappingFrames()},
          {&ApplySetLbl, {&ApplyFrame}}};
}

std::span<const FixedByte> Configuration_RB2000::FixedBytes() const {
  // What they mean to the device is not known; it wants them so.
  static constexpr FixedByte fixed[] = {
      {{0, Half::High}, 4},  {{0, Half::Low}, 153}, {{6, Half::High}, 2},
      {{10, Half::High}, 8}, {{11, Half::High}, 8}, {{13, Half::High}, 1},
  };
  return fixed;
}

std::vector<RegisterList*> Configuration_RB2000::Lists() {
  // clang-format off
  return {&ChaSpeedLst, &ChaParityLst, &ChaDataBitsLst, &ChaStopBitsLst, &ChaHandshakingLst, &ChaConnectionLst,
          &ChbSpeedLst, &ChbParityLst, &ChbDataBitsLst, &ChbStopBitsLst, &ChbHandshakingLst, &ChbConnectionLst,
          &ChaDf1StationAddrLst, &ChaDf1ErrorModeLst, &ChbModDeviceTypeLst, &ChbModProtocolLst, &ChbModSlavePlcTypeLst,
          &ChbModSlaveBroadcastEnableLst, &ChbModSlaveBroadcastStartLst, &ChbModSlaveBroadcastEndLst};
  // clang-format on
}

void Configuration_RB2000::Form_Load() {
  Begin(4);
  app.globals.ClearRegisters();
  for (RegisterList* list : Lists()) list->SelectDefault();
  ChbModSlaveSpecificAddrLst.SelectDefault();
  ChbModSlaveSpecificAddrLst.Visible = false;
  ChbModSlaveSpecificAddrLst.SpokenName = "Specific Address";  // the words beside it are its check box's
  SetSlotTabOrder();
  ShowFloatColumn(true);
}

bool Configuration_RB2000::Passes(int page) const { return page == MappingPage && IsMaster(); }

bool Configuration_RB2000::LeavePage() {
  return app.globals.CurrentPage != MappingPage || IsMaster() || SlotsAreValid();
}

void Configuration_RB2000::ChbModDeviceTypeLst_Click() {
  ModSlaveFrame.Visible = !IsMaster();
  ModMasterFrame.Visible = IsMaster();
}

void Configuration_RB2000::ChbModSlavePlcTypeLst_Click() {
  ShowFloatColumn(ChbModSlavePlcTypeLst.Text.Value() != "PLC-3");
}

void Configuration_RB2000::ChbModSlaveBroadcastEnableLst_Click() {
  const bool broadcast = ChbModSlaveBroadcastEnableLst.Text.Value() == "Yes";
  ShowAll({&ChbModSlaveBroadcastStartLbl, &ChbModSlaveBroadcastStartLst, &ChbModSlaveBroadcastStartUnitLbl,
           &ChbModSlaveBroadcastEndLbl, &ChbModSlaveBroadcastEndLst, &ChbModSlaveBroadcastEndUnitLbl},
          broadcast);
  ChbModSlaveSpecificAddrChk.Top = broadcast ? 2280 : 1200;
  ChbModSlaveSpecificAddrLst.Top = broadcast ? 2400 : 1320;
}

void Configuration_RB2000::ChbModSlaveSpecificAddrChk_Click() {
  const bool specific = ChbModSlaveSpecificAddrChk.Value == 1;
  std::int32_t& flags = Register(SerialImage::ModbusFlags);
  flags =
      specific ? SetBits(flags, SerialImage::SpecificAddressMask) : ClearBits(flags, SerialImage::SpecificAddressMask);
  ChbModSlaveSpecificAddrLst.Visible = specific;
}

void Configuration_RB2000::Parameter_Setup_RB() {
  for (RegisterList* list : Lists()) list->Decode();
  const std::int32_t flags = Register(SerialImage::ModbusFlags);
  ChbModSlaveSpecificAddrChk.Value = (flags & SerialImage::SpecificAddressMask) != 0 ? 1 : 0;
  ChbModSlaveSpecificAddrLst.Decode();
  SelectDecoding({&ChbModMasterNXYYZOpt, &ChbModMasterNXYZZOpt, &ChbModMasterNYXZZOpt});
  SetupSlots();
}

}  // namespace vk32
