// What the wizards of the RB2000 and RB3000 share: the 40 mapping slots in three panes, the image and the file record.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "core/DoesNotFit.h"
#include "forms/ControlArray.h"
#include "models/registers/ImageWizard.h"
#include "models/serial/SerialImage.h"
#include "models/serial/SlotTable.h"

namespace vk32 {

class SerialWizard : public ImageWizard {
 public:
  /// Shows or hides the float column; a hidden check box keeps its value.
  void ShowFloatColumn(bool visible);
  /// `result`: 0 if all slots are good; 1 an invalid entry, 2 a missing one, after telling the user.
  void ValidateMappingSlots(int& result);
  /// Shows the pane that the slot lies in.
  void ShowPaneOf(int slot) { ShowPane(PaneOf(slot)); }
  /// "Slot 16 (slots 15 to 28):"
  static std::string SlotWords(int slot);
  bool SlotsAreValid() {
    int result = 0;
    ValidateMappingSlots(result);
    return result == 0;
  }

 protected:
  SerialWizard(App& app, const char* name, int finalizeTop, int applyTop);

  int RegisterCount() const override { return SerialImage::Registers; }
  void BuildParameters(bool sent) override;
  void Record(RecordFile& file, std::string& product, std::string& modelTag) override;

  /// Selects the option of the destination address decoding; a byte that is no decoding leaves them.
  void SelectDecoding(std::initializer_list<OptionButton*> decodings);
  static void ShowAll(std::initializer_list<Control*> controls, bool visible);
  /// Opens the explanation of the decodings.
  void ExplainDecoding();
  /// Sets the slots' fields from the registers; fields that are empty in the image keep their text.
  void SetupSlots();
  /// Along each slot row, and the slots behind the pages declared before them.
  void SetSlotTabOrder();
  std::vector<Frame*> MappingFrames() const;
  void SetDecoding(int code) { Register(SerialImage::AddressDecoding) = code; }

 private:
  static constexpr int Panes = 3, PaneSlots = 14;
  static int PaneOf(int slot) { return slot / PaneSlots; }
  static int RowTop(int slot) { return 1920 + 360 * (slot % PaneSlots); }

  void ShowPane(int pane);
  void NextMappingCmd_Click(int pane) { ShowPane(pane + 1); }
  void BackMappingCmd_Click(int pane) { ShowPane(pane - 1); }
  void ModStartTxt_Change(int i) { StoreField(i, 0, ModStartTxt[i]); }
  void ModEndTxt_Change(int i) { StoreField(i, 1, ModEndTxt[i]); }
  void ABFileTxt_Change(int i) { StoreField(i, 2, ABFileTxt[i]); }
  void ABWordTxt_Change(int i) { StoreField(i, 3, ABWordTxt[i]); }
  void FloatChk_Click(int i);

  void StoreField(int slot, int field, const TextBox& text);
  void SetupSlot(int slot);
  /// Of a slot's field, 0 to 3, as it will be sent.
  std::int32_t SlotWord(int slot, int field) const;
  void FollowSlot(int slot);
  bool ShowsSlots() const;
  /// Says which slot shows something else than will be sent, unless the page says something already.
  void TellDifference();
  void PageShown() override;

  std::string toldDifference_;

  Place HintPlace() const override { return {7140, 7035, 3120, 480}; }
  FieldPlace FieldThatDoesNotFit();

  template <class T, class... Rest>
  ControlArray<T> PerPane(const char* name, Place place, Rest... rest) {
    return {name, 0, Panes - 1, [=, this](ControlName element, int pane) {
              return std::make_unique<T>(MappingFrame[pane], element, place, rest...);
            }};
  }
  template <class T, class... Rest>
  ControlArray<T> PerSlot(const char* name, int left, int width, Rest... rest) {
    return {name, 0, SerialImage::SlotCount - 1, [=, this](ControlName element, int slot) {
              return std::make_unique<T>(MappingFrame[PaneOf(slot)], element, Place{left, RowTop(slot), width, 315},
                                         rest...);
            }};
  }

 public:
  // clang-format off
  ControlArray<Frame>    MappingFrame {"MappingFrame", 0, Panes - 1,
                                       [this](ControlName element, int) { return std::make_unique<Frame>(*this, element, PagePlace); }};

  // Each pane: title, text, column heads
  ControlArray<Label>    MappingTitleLbl = PerPane<Label>("MappingTitleLbl", {360,  240, 8280, 480}, "Address Mapping", TextRole::Title);
  ControlArray<Label>    MappingLbl      = PerPane<Label>("MappingLbl",      {360,  780, 8280, 540},
      "The following mapping table is used for mapping Modbus Registers and Coils to Allan-Bradley Datafiles.");
  ControlArray<Label>    SlotLbl         = PerPane<Label>("SlotLbl",         { 360, 1380,  600, 495}, "Slot", TextRole::TableHead);
  ControlArray<Label>    ModStartLbl     = PerPane<Label>("ModStartLbl",     {1200, 1380, 1560, 495}, "Modbus Start Address", TextRole::TableHead);
  ControlArray<Label>    ModEndLbl       = PerPane<Label>("ModEndLbl",       {3000, 1380, 1560, 495}, "Modbus End Address", TextRole::TableHead);
  ControlArray<Label>    ABDataFileLbl   = PerPane<Label>("ABDataFileLbl",   {4800, 1380, 2280, 255}, "Allan-Bradley Datafile", TextRole::TableHead);
  ControlArray<Label>    ABFileLbl       = PerPane<Label>("ABFileLbl",       {4800, 1635, 1080, 240}, "File", TextRole::TableHead);
  ControlArray<Label>    ABWordLbl       = PerPane<Label>("ABWordLbl",       {6000, 1635, 1080, 240}, "Word", TextRole::TableHead);
  ControlArray<Label>    FloatLbl        = PerPane<Label>("FloatLbl",        {7440, 1380, 1080, 495}, "Floating Point", TextRole::TableHead);

  // Each slot: one row
  ControlArray<Label>    SlotNumLbl  = PerSlot<Label>   ("SlotNumLbl",   360,  600, "");
  ControlArray<Image>    SlotMark    {"SlotMark", 0, SerialImage::SlotCount - 1, [this](ControlName element, int slot) {
      return std::make_unique<Image>(MappingFrame[PaneOf(slot)], element, Place{900, RowTop(slot) + 67, 180, 180}, Symbol::Cross);
  }};
  ControlArray<TextBox>  ModStartTxt = PerSlot<TextBox> ("ModStartTxt", 1200, 1560, &SerialWizard::ModStartTxt_Change);
  ControlArray<TextBox>  ModEndTxt   = PerSlot<TextBox> ("ModEndTxt",   3000, 1560, &SerialWizard::ModEndTxt_Change);
  ControlArray<TextBox>  ABFileTxt   = PerSlot<TextBox> ("ABFileTxt",   4800, 1080, &SerialWizard::ABFileTxt_Change);
  ControlArray<TextBox>  ABWordTxt   = PerSlot<TextBox> ("ABWordTxt",   6000, 1080, &SerialWizard::ABWordTxt_Change);
  ControlArray<CheckBox> FloatChk    = PerSlot<CheckBox>("FloatChk",    7440,  315, "", &SerialWizard::FloatChk_Click);

  ControlArray<CommandButton> BackMappingCmd {"BackMappingCmd", 1, 2, [this](ControlName element, int pane) {
      return std::make_unique<CommandButton>(MappingFrame[pane], element, Place{360, 7080, 2520, 390},
                                             "<--- Previous 14 Slots", &SerialWizard::BackMappingCmd_Click);
  }};
  ControlArray<CommandButton> NextMappingCmd {"NextMappingCmd", 0, 1, [this](ControlName element, int pane) {
      return std::make_unique<CommandButton>(MappingFrame[pane], element, Place{6480, 7080, 2160, 390},
                                             pane == 0 ? "Next 14 Slots --->" : "Next 12 Slots --->", &SerialWizard::NextMappingCmd_Click);
  }};
  // clang-format on

  SlotTable slots{*this};
};

}  // namespace vk32
