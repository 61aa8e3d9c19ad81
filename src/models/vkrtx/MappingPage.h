// The page of the VK-RTX that shows the Allen-Bradley/Modbus mapping table.
#pragma once

#include "forms/ControlArray.h"
#include "models/mapping/MappingTable.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

constexpr const char* MappingPageTitle = "Allen-Bradley/Modbus Mapping";

class MappingPage {
 public:
  MappingPage(Form& form, App& app) : form_(form), app_(app) {
    AbModMapTableFrame.Caption = "Routing Table";
    table.PutInOrder();
  }

  /// Hands the form to the editor, as the owner of the table.
  void SetUpModbusModel() {
    app_.globals.OwnerForm = form_.Name();
    table.AdjustAbModMapVScrollBar();
    app_.globals.AbModMapCount = 0;
  }

 private:
  static int RowTop(int row) { return 120 + 480 * (row - 1); }
  /// Element 0 is the head of the column.
  ControlArray<Label> Column(const char* name, int left, int width, const char* head) {
    return {name, 0, MappingTable::Rows, [=, this](ControlName element, int row) {
              return row == 0 ? std::make_unique<Label>(AbModMapHeadFrame, element, Place{left, 0, width, 735}, head,
                                                        TextRole::TableHead)
                              : std::make_unique<Label>(AbModMapFrame, element, Place{left, RowTop(row), width, 240},
                                                        "", TextRole::TableText);
            }};
  }

  Form& form_;
  App& app_;

 public:
  MappingTable table{app_, form_};

  // clang-format off
  Frame               AbModMappingFrame      {form_, "AbModMappingFrame", PagePlace};
  Label               ABModMappingTitleLbl   {AbModMappingFrame, "ABModMappingTitleLbl", {360,  240, 8280,  480}, MappingPageTitle, TextRole::Title};
  Label               AbModLbl               {AbModMappingFrame, "AbModLbl",             {360,  780, 8280,  540},
                                              "The mapping table is used to map data between Allen-Bradley and Modbus formats."};
  Label               AbModMapFrameLbl       {AbModMappingFrame, "AbModMapFrameLbl",     {360, 1440, 4200,  315}, "Mapping Table", TextRole::Heading};
  Frame               AbModMapHeadFrame      {AbModMappingFrame, "AbModMapHeadFrame",    {360, 1800, 7980,  735}};
  RowTable            AbModMapTableFrame     {AbModMappingFrame, "AbModMapTableFrame",   {360, 2640, 7980, 2400}, table, AbModRowFrame, AbModMapMark, AbModMapVScroll};
  Frame               AbModMapFrame          {AbModMapTableFrame, "AbModMapFrame",       {  0,    0, 7980, 9720}};
  RowFrame            AbModRowFrame          {AbModMapFrame, "AbModRowFrame", "AbModRowMarkFrame", {0, 0, 7980, 465}, 480};
  ControlArray<Label> AbModMapSlotLbl        = Column("AbModMapSlotLbl",         120,  420, "Slot");
  ControlArray<Label> AbModMapAddrLbl        = Column("AbModMapAddrLbl",         600,  900, "Address Range");
  ControlArray<Label> AbModMapModStartLbl    = Column("AbModMapModStartLbl",    1560,  780, "Modbus Start");
  ControlArray<Label> AbModMapAbDataFiletLbl = Column("AbModMapAbDataFiletLbl", 2400, 1020, "Allen Bradley Datafile");
  ControlArray<Label> AbModMapDataTypeLbl    = Column("AbModMapDataTypeLbl",    3480,  660, "Data Type");
  ControlArray<Label> AbModMapDataPointsLbl  = Column("AbModMapDataPointsLbl",  4200,  660, "Data Points");
  ControlArray<Label> AbModMapAbFncLbl       = Column("AbModMapAbFncLbl",       4920, 2820, "Allen Bradley Function");
  RowSign             AbModMapMark           {AbModMapFrame, "AbModMapMark", {360, 150, 180, 180}, 480};
  VScrollBar          AbModMapVScroll        {AbModMappingFrame, "AbModMapVScroll", {8340, 2640,  300, 2400}, [this] { AbModMapFrame.Top = -AbModMapVScroll.Value; }};
  CommandButton       AddMapCmd              {AbModMappingFrame, "AddMapCmd",       { 360, 5280, 1560,  390}, "Add Map", [this] { table.ProcessAddMapCmd(); }};
  CommandButton       EditMapCmd             {AbModMappingFrame, "EditMapCmd",      {2040, 5280, 1560,  390}, "Edit Map", [this] { table.ProcessEditMapCmd(); }};
  CommandButton       DelMapCmd              {AbModMappingFrame, "DelMapCmd",       {3720, 5280, 1800,  390}, "Delete Map", [this] { table.ProcessDelMapCmd(); }};
  CommandButton       ClrMapTableCmd         {AbModMappingFrame, "ClrMapTableCmd",  {6120, 5280, 2520,  390}, "Clear Mapping Table", [this] { table.ProcessClrMapTableCmd(); }};
  UndoClearButton     UndoClrMapTableCmd     {AbModMappingFrame, "UndoClrMapTableCmd", ClrMapTableCmd};
  // clang-format on
};

}  // namespace vk32
