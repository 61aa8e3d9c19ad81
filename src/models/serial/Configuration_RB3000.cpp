// The wizard of the RB3000.
#include "models/serial/Configuration_RB3000.h"

#include "shell/Subs.h"

namespace vk32 {
namespace {

enum Page { MappingPage = 2 };

}  // namespace

Configuration_RB3000::Configuration_RB3000(App& app_) : SerialWizard(app_, FormName, 3240, 3600) {}

std::vector<WizardPage> Configuration_RB3000::Pages() {
  return {{&OpenConfigLbl, {&ConfigFrame}},
          {&ModProtoSetLbl, {&ModSettingsFrame}},
          {&ModAddrMapLbl, MappingFrames()},
          {&ApplySetLbl, {&ApplyFrame}}};
}

std::span<const FixedByte> Configuration_RB3000::FixedBytes() const {
  // Station address 1, both channels at 9600; what the others mean to the device is not known.
  static constexpr FixedByte fixed[] = {
      {{0, Half::High}, 4}, {{0, Half::Low}, 153}, {{6, Half::High}, 2},  {{7, Half::High}, 1},  {{8, Half::High}, 8},
      {{9, Half::High}, 8}, {{10, Half::High}, 8}, {{11, Half::High}, 8}, {{13, Half::High}, 1},
  };
  return fixed;
}

void Configuration_RB3000::Form_Load() {
  Begin(3);
  app.globals.ClearRegisters();
  for (RegisterList* list : {&ModDeviceTypeLst, &PLCTypeLst, &BroadcastLst, &BroadStartLst, &BroadEndLst}) {
    list->SelectDefault();
  }
  SetSlotTabOrder();
  ShowFloatColumn(true);
}

bool Configuration_RB3000::Passes(int page) const { return page == MappingPage && IsMaster(); }

bool Configuration_RB3000::LeavePage() { return app.globals.CurrentPage != MappingPage || SlotsAreValid(); }

void Configuration_RB3000::ModDeviceTypeLst_Click() {
  ModSlaveFrame.Visible = !IsMaster();
  ModMasterFrame.Visible = IsMaster();
}

void Configuration_RB3000::PLCTypeLst_Click() { ShowFloatColumn(PLCTypeLst.Text.Value() != "PLC-3"); }

void Configuration_RB3000::BroadcastLst_Click() {
  const bool broadcast = BroadcastLst.Text.Value() == "Yes";
  ShowAll({&BroadStartLbl, &BroadStartLst, &BroadStartUnitsLbl, &BroadEndLbl, &BroadEndLst, &BroadSEndUnitsLbl},
          broadcast);
}

void Configuration_RB3000::Parameter_Setup_RB() {
  ModDeviceTypeLst.Decode();
  if (IsMaster()) {
    // The slots of a master are not shown: they stay in the registers as they came.
    SelectDecoding({&NXYYZOpt, &NXYZZOpt, &NYXZZOpt});
    return;
  }
  for (RegisterList* list : {&PLCTypeLst, &BroadcastLst, &BroadStartLst, &BroadEndLst}) list->Decode();
  SetupSlots();
}

}  // namespace vk32
