// The mapping slots, the image and the file record of the RB2000 and RB3000.
#include "models/serial/SerialWizard.h"

#include <algorithm>

#include "core/Convert.h"
#include "core/DoesNotFit.h"
#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

/// Of a hint that needs more room than there is between the buttons of the panes.
constexpr Place BesideTheTitle{7740, 255, 4740, 480};
constexpr int SlotTabIndex = 10000;     // behind the pages, before the foot
constexpr int TimeOutInterval = 15000;  // ms
enum SlotCode { Good = 0, Invalid = 1, Missing = 2 };

}  // namespace

SerialWizard::SerialWizard(App& app_, const char* name, int finalizeTop, int applyTop)
    : ImageWizard(app_, name, TimeOutInterval, finalizeTop, applyTop) {
  for (int i = 0; i < SerialImage::SlotCount; ++i) SlotNumLbl[i].Caption = Str(i + 1);
  slots.MarkRow(0);
}

std::vector<Frame*> SerialWizard::MappingFrames() const {
  return {&MappingFrame[0], &MappingFrame[1], &MappingFrame[2]};
}

void SerialWizard::ShowPane(int pane) {
  for (int k = 0; k < Panes; ++k) MappingFrame[k].Visible = k == pane;
}

void SerialWizard::ShowFloatColumn(bool visible) {
  for (const auto& label : FloatLbl) label->Visible = visible;
  for (const auto& check : FloatChk) check->Visible = visible;
}

void SerialWizard::SetSlotTabOrder() {
  int index = SlotTabIndex;
  for (int i = 0; i < SerialImage::SlotCount; ++i) {
    for (Control* control :
         std::initializer_list<Control*>{&ModStartTxt[i], &ModEndTxt[i], &ABFileTxt[i], &ABWordTxt[i], &FloatChk[i]}) {
      control->TabIndex = index++;
    }
  }
  for (const auto& button : BackMappingCmd) button->TabIndex = index++;
  for (const auto& button : NextMappingCmd) button->TabIndex = index++;
}

void SerialWizard::StoreField(int slot, int field, const TextBox& text) {
  const auto r = static_cast<std::size_t>(SerialImage::SlotRegister(slot, field));
  try {
    const std::int32_t value = CLng(Val(text.Text.Value()));
    SplitWord(value, app.globals.RegisterHigh[r], app.globals.RegisterLow[r]);
  } catch (const RuntimeFault&) {
    // Too large to convert: the register stays. A slave's slots are checked by their texts when the page is left.
  }
  FollowSlot(slot);
  TellDifference();
}

void SerialWizard::FollowSlot(int slot) {
  std::array<std::int32_t, SlotTable::Fields> sent;
  for (int field = 0; field < static_cast<int>(sent.size()); ++field) {
    sent[static_cast<std::size_t>(field)] = SlotWord(slot, field);
  }
  slots.Follow(slot, sent);
}

bool SerialWizard::ShowsSlots() const {
  return std::any_of(MappingFrame.begin(), MappingFrame.end(), [](const auto& pane) { return pane->Visible.Value(); });
}

void SerialWizard::TellDifference() {
  if (pageHint.Says(toldDifference_)) pageHint.Hide();
  toldDifference_ = ShowsSlots() ? slots.WordsOfDifference() : "";
  if (!toldDifference_.empty() && !pageHint.Shows()) pageHint.Show(toldDifference_, BesideTheTitle, nullptr);
}

void SerialWizard::PageShown() {
  if (!ShowsSlots()) return;
  for (int slot = 0; slot < SerialImage::SlotCount; ++slot) FollowSlot(slot);
  TellDifference();
}

std::int32_t SerialWizard::SlotWord(int slot, int field) const {
  const auto r = static_cast<std::size_t>(SerialImage::SlotRegister(slot, field));
  return JoinWord(app.globals.RegisterHigh[r], app.globals.RegisterLow[r]);
}

void SerialWizard::FloatChk_Click(int i) {
  const auto r = static_cast<std::size_t>(SerialImage::SlotRegister(i, SerialImage::FloatField));
  app.globals.RegisterHigh[r] = FloatChk[i].Value;
}

void SerialWizard::SelectDecoding(std::initializer_list<OptionButton*> decodings) {
  const auto decoding = static_cast<std::size_t>(Register(SerialImage::AddressDecoding));
  if (decoding < decodings.size()) decodings.begin()[decoding]->Value = true;
}

void SerialWizard::ShowAll(std::initializer_list<Control*> controls, bool visible) {
  for (Control* control : controls) control->Visible = visible;
}

void SerialWizard::ExplainDecoding() { app.forms.Show("DDTAExplanationFrm"); }

void SerialWizard::SetupSlots() {
  for (int i = 0; i < SerialImage::SlotCount; ++i) SetupSlot(i);
  PageShown();
}

void SerialWizard::SetupSlot(int slot) {
  bool started = false;
  TextBox* const fields[] = {&ModStartTxt[slot], &ModEndTxt[slot], &ABFileTxt[slot], &ABWordTxt[slot]};
  for (int field = 0; field < 4; ++field) {
    const std::int32_t value = SlotWord(slot, field);
    if (value != 0 || started) fields[field]->Text = Str(value);
    started = started || (field == 0 && value != 0);
  }
  // A flag that is neither 0 nor 1 shows as off, and the register keeps the device's byte.
  std::int32_t& flag = Register({SerialImage::SlotRegister(slot, SerialImage::FloatField), Half::High});
  const std::int32_t stored = flag;
  FloatChk[slot].Value = stored == 1 ? 1 : 0;
  flag = stored;
}

void SerialWizard::ValidateMappingSlots(int& result) {
  const auto fault = slots.FindFault();
  result = !fault ? Good : fault->missing ? Missing : Invalid;
  if (!fault) return;
  const std::string hint = slots.WordsOf(*fault);
  app.forms.MsgBox(fault->missing ? "Missing Entry Detected" : "Invalid Entry Detected", MessageIcon::Critical,
                   "Error!");
  ShowRefused(slots.FieldOf(fault->slot, fault->field), hint);
}

std::string SerialWizard::SlotWords(int slot) {
  const int first = PaneOf(slot) * PaneSlots + 1;
  const int last = std::min(first + PaneSlots - 1, SerialImage::SlotCount);
  return "Slot " + Str(slot + 1) + " (slots " + Str(first) + " to " + Str(last) + "):";
}

void SerialWizard::BuildParameters(bool sent) {
  try {
    BuildParameterImage();
  } catch (const RuntimeFault&) {
    // Only a master's slots come here unchecked, and only a slave's are shown.
    throw DoesNotFit(FieldThatDoesNotFit(), "Enter a number from 0 to 65535.");
  }
  if (!sent) return;
  try {
    BuildFrame(app.globals, app.globals.CurrentProduct, ImageFrame::Code);
  } catch (const RuntimeFault&) {
    throw DoesNotFit(
        "The configuration can't be sent: the bytes of an image message may add up to 32767 at most, and these add up "
        "to more.\r\nUse fewer mapping slots or smaller numbers, and click FINISH again.");
  }
}

FieldPlace SerialWizard::FieldThatDoesNotFit() {
  constexpr const char* names[] = {"Modbus Start Address", "Modbus End Address", "File", "Word"};
  const auto place = [](const std::string& field, ControlName control) {
    return FieldPlace{"Address Mapping", field + " (shown with Modbus Device Type Slave)", control};
  };
  for (int slot = 0; slot < SerialImage::SlotCount; ++slot) {
    for (int field = 0; field < 4; ++field) {
      const std::int32_t high = Register({SerialImage::SlotRegister(slot, field), Half::Low});
      if (high >= 0 && high <= 255) continue;
      const TextBox& box = slots.FieldOf(slot, static_cast<std::size_t>(field));
      return place("slot " + Str(slot + 1) + ", " + names[field], {box.Name(), slot});
    }
  }
  return place("slots", "");
}

void SerialWizard::Record(RecordFile& file, std::string& product, std::string& modelTag) {
  file.Text(product);
  file.EndLine();
  file.Text(modelTag);
  file.EndLine();
  for (int r = 0; r < SerialImage::Registers; ++r) {
    if (!SerialImage::InFile(r)) continue;
    file.Byte(Register({r, Half::High}));
    file.Byte(Register({r, Half::Low}));
    file.EndLine();
  }
}

}  // namespace vk32
