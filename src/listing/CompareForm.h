// Two configurations side by side: where they differ, or all of both.
#pragma once

#include "app/App.h"
#include "listing/ListRows.h"
#include "listing/Listing.h"
#include "listing/Report.h"

namespace vk32 {

/// One of the two that are compared.
struct ComparedSide {
  std::string name;   // "On COM3"
  std::string state;  // "read at 21:52"
  Listing values;     // those that are shown
};

class CompareForm : public Form {
 public:
  static constexpr const char* FormName = "Compare";

  explicit CompareForm(App& app);

  /// Shows the comparison, on top of all forms, in place of the one before.
  static void Show(App& app, ComparedSide left, ComparedSide right);
  /// What differs.
  std::vector<Difference> Differences() const { return Compare(left_.values, right_.values); }

 private:
  static constexpr int Lines = 17;

  void ShowAllChk_Click() { ShowRows(); }
  void CompareCloseCmd_Click() { UnloadMe(); }
  void SaveReportCmd_Click();
  /// Those that differ or, if the user wants them, all.
  std::vector<Difference> ShownFields() const;
  void ShowRows();

  static int LineTop(int line) { return 1770 + ListRowHeight * (line - 1); }
  /// Element 0 is the head of the column, if it has one.
  ControlArray<Label> Column(const char* name, int left, int width, const char* head,
                             TextRole role = TextRole::TableText) {
    return {name, head == nullptr ? 1 : 0, Lines, [=, this](ControlName element, int line) {
              return line == 0
                         ? std::make_unique<Label>(*this, element, Place{left, 1200, width, 495}, head,
                                                   TextRole::TableHead)
                         : std::make_unique<Label>(*this, element, Place{left, LineTop(line), width, 240}, "", role);
            }};
  }

  ComparedSide left_, right_;
  ReportHead head_;  // of what was compared, whatever is configured later

 public:
  // clang-format off
  Label       CompareLbl        {*this, "CompareLbl",        { 240,  180, 9840,  480}, "Compare", TextRole::Title};
  Label       SummaryLbl        {*this, "SummaryLbl",        { 240,  780, 5400,  315}, "", TextRole::Heading};
  CheckBox    ShowAllChk        {*this, "ShowAllChk",        {8220,  780, 1860,  315}, "Show all values", &CompareForm::ShowAllChk_Click};
  Frame       CompareTableFrame {*this, "CompareTableFrame", { 240, 1740, 9540, 5100}, Fill::List};
  ControlArray<Frame> CompareLineFrame {"CompareLineFrame", 1, Lines, [this](ControlName element, int line) {
    return std::make_unique<Frame>(*this, element, Place{240, LineTop(line) + 255, 9540, 15}, Fill::Hairline);
  }};
  ControlArray<Label> DiffSignLbl   = Column("DiffSignLbl",    360,  240, nullptr);
  ControlArray<Label> ValueFieldLbl = Column("ValueFieldLbl",  720, 4320, "Page and field", TextRole::TablePath);
  ControlArray<Label> ValueLeftLbl  = Column("ValueLeftLbl",  5160, 2280, "");
  ControlArray<Label> ValueRightLbl = Column("ValueRightLbl", 7560, 2160, "");
  VScrollBar    CompareVScroll  {*this, "CompareVScroll",    {9780, 1740,  300, 5100}, [this] { rows.Draw(); }};
  Frame         FootLineFrame   {*this, "FootLineFrame",     {   0, 7260, 10320,  15}, Fill::Hairline};
  CommandButton SaveReportCmd   {*this, "SaveReportCmd",     { 240, 7515, 2040,  390}, "Save Report...", &CompareForm::SaveReportCmd_Click};
  FileDialog    ReportDialog    {*this, "ReportDialog"};
  CommandButton CompareCloseCmd {*this, "CompareCloseCmd",   {8880, 7515, 1200,  390}, "Close", &CompareForm::CompareCloseCmd_Click, WindowKey::Escape};
  // clang-format on

 private:
  ListRows rows{{&DiffSignLbl, &ValueFieldLbl, &ValueLeftLbl, &ValueRightLbl}, CompareLineFrame, CompareVScroll};
};

}  // namespace vk32
