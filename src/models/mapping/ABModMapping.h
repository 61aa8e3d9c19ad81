// Adds, edits or deletes a slot of the mapping table.
#pragma once

#include "app/App.h"
#include "models/mapping/MappingTable.h"

namespace vk32 {

class ABModMapping : public Form {
 public:
  static constexpr const char* FormName = "ABModMapping";

  explicit ABModMapping(App& app)
      : Form(app.forms, FormName, "Add New Mapping", 6000, 6600, FormStyle::Modal), app_(app) {}

 private:
  void Form_Load() override;
  void SlotLst_Click();
  void MapCmd_Click();
  void CancelCmd_Click() { UnloadMe(); }

  /// A mapping table that has changed under the editor, or a field that is no 16-bit number, faults.
  void CommitMap();
  void OfferSlots(const std::vector<std::string>& slots);
  void LockFields();
  /// Why the map is not whole or not good, in a line; empty: it is.
  std::string WhatIsWrong() const;
  void ControlChanged(const Control& control, const PropertyBase& property) override;
  void WriteRecord(int slot);
  void WriteRow(int slot);
  MappingTable OwnersTable() const;

  App& app_;

 public:
  // clang-format off
  Label         MappingTitleLbl {*this, "MappingTitleLbl", { 240,  240, 5520, 480}, "", TextRole::Title};
  Label         SlotLbl         {*this, "SlotLbl",         { 240,  900, 3120, 315}, "Slot"};
  ComboBox      SlotLst         {*this, "SlotLst",         {3480,  900, 1080, 315}, {}, &ABModMapping::SlotLst_Click};
  Label         ABFncLbl        {*this, "ABFncLbl",        { 240, 1260, 3120, 315}, "Allen-Bradley Function"};
  ComboBox      ABFncLst        {*this, "ABFncLst",        {3480, 1260, 2280, 315}, ListTexts(ABFunctions()), {}, ComboBox::Style::WithTextPart};
  Label         ABDataFileLbl   {*this, "ABDataFileLbl",   { 240, 1740, 5520, 315}, "Allen-Bradley Datafile", TextRole::Heading};
  Label         ABFileLbl       {*this, "ABFileLbl",       { 240, 2100, 3120, 315}, "File"};
  TextBox       ABFileTxt       {*this, "ABFileTxt",       {3480, 2100, 1080, 315}};
  Label         ABWordLbl       {*this, "ABWordLbl",       { 240, 2460, 3120, 315}, "Word"};
  TextBox       ABWordTxt       {*this, "ABWordTxt",       {3480, 2460, 1080, 315}};
  Label         ModRefLbl       {*this, "ModRefLbl",       { 240, 3180, 3120, 315}, "Modbus Register/Coil Refrence"};
  ComboBox      ModRefLst       {*this, "ModRefLst",       {3480, 3180, 1080, 315}, ListTexts(ModbusReferences()), {}, ComboBox::Style::WithTextPart};
  Label         ModStartLbl     {*this, "ModStartLbl",     { 240, 3540, 3120, 315}, "Modbus Start Address"};
  TextBox       ModStartTxt     {*this, "ModStartTxt",     {3480, 3540, 1080, 315}};
  Label         DataPointsLbl   {*this, "DataPointsLbl",   { 240, 3900, 3120, 315}, "Number of Data Points"};
  TextBox       DataPointsTxt   {*this, "DataPointsTxt",   {3480, 3900, 1080, 315}};
  Label         DataTypeLbl     {*this, "DataTypeLbl",     { 240, 4260, 3120, 315}, "Data Type"};
  ComboBox      DataTypeLst     {*this, "DataTypeLst",     {3480, 4260, 1680, 315}, ListTexts(DataTypes()), {}, ComboBox::Style::WithTextPart};
  Label         LowAddrLbl      {*this, "LowAddrLbl",      { 240, 4980, 3120, 315}, "Low Address"};
  TextBox       LowAddrLst      {*this, "LowAddrLst",      {3480, 4980, 1080, 315}};
  Label         HighAddrLbl     {*this, "HighAddrLbl",     { 240, 5340, 3120, 315}, "High Address"};
  TextBox       HighAddrLst     {*this, "HighAddrLst",     {3480, 5340, 1080, 315}};
  Label         HintLbl         {*this, "HintLbl",         { 240, 5655, 5520, 315}, "", TextRole::Small};
  CommandButton MapCmd          {*this, "MapCmd",          {2640, 5970, 1680, 390}, "", &ABModMapping::MapCmd_Click, WindowKey::Enter};
  CommandButton CancelCmd       {*this, "CancelCmd",       {4440, 5970, 1320, 390}, "Cancel", &ABModMapping::CancelCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
