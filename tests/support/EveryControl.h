// A form with controls of every kind, in two pages; it notes which handlers ran, and what they found.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "forms/ControlArray.h"
#include "forms/Forms.h"
#include "forms/Tables.h"

namespace vk32 {

class EveryControl : public Form, public RowSource {
 public:
  static constexpr const char* FormName = "Every";

  explicit EveryControl(Forms& forms, const char* name = FormName, FormStyle style_ = FormStyle::Window)
      : Form(forms, name, "Every control", 12840, 8400, style_) {
    SecondFrame.Visible = OffTxt.Enabled = OffOpt.Enabled = OtherOpt.Enabled = false;
    GrayTxt.BackColor = 0xE0E0E0;
    ReadTxt.Locked = true;
    ReadTxt.Text = "read only";
    LineLbl.Caption = "COM3\t/dev/ttyS2\tfree";
    PortCbo.EntryToolTip = [](const std::string& entry) { return "behind " + entry; };
    PortCbo.Show("COM2");
    LaterCbo.Show("None");
    RowsVScroll.SmallChange = 480, RowsVScroll.LargeChange = 2400, RowsVScroll.Max = 1440;
    Bar.Value = 38;
  }

  /// Registers it under its name and shows it in place of the splash page.
  static EveryControl& Open(Forms& forms) {
    forms.Register(FormName, [&forms] { return std::make_shared<EveryControl>(forms); });
    auto& form = dynamic_cast<EveryControl&>(forms.Show(FormName));
    forms.Unload("Splash");
    form.TakeLog();
    return form;
  }

  /// A word for each handler that ran since the last look, each with a blank behind it; with the value or the text
  /// that the handler found, if its control has one: "add name:ab flag:1 ". LogLbl shows the same.
  std::string TakeLog() {
    std::string log = LogLbl.Caption;
    LogLbl.Caption = "";
    return log;
  }

 private:
  void Note(const std::string& word) { LogLbl.Caption = LogLbl.Caption.Value() + word + " "; }
  Handler Noting(const char* word) {
    return [=, this] { Note(word); };
  }
  template <class Kind, class Value>
  Handler Noting(const char* word, Kind& control, Value Kind::*property) {
    return [=, this, &control] { Note(word + (":" + (control.*property).AsText())); };
  }
  int CountRowsInUse() const override { return 8; }
  std::vector<Label*> RowLabels(int row) const override { return {&SlotLbl[row], &AreaLbl[row]}; }
  void EditRow(int row) override { Note("edit" + std::to_string(row)); }
  void DeleteRow(int row) override { Note("delete" + std::to_string(row)); }
  void Form_Load() override { Note("load"); }
  void Form_Click() override { Note("form"); }
  void Form_MouseMove() override { Note("move"); }
  void RowTxt_Change(int row) { Note("row" + std::to_string(row) + ":" + RowTxt[row].Text.Value()); }
  void RowsVScroll_Change() {
    Note("scroll:" + RowsVScroll.Value.AsText());
    RowsFrame.Top = -RowsVScroll.Value;
  }
  void ShowPage(bool second) {
    Note(second ? "next" : "back");
    FirstFrame.Visible = !second;
    SecondFrame.Visible = second;
  }
  template <class T, class... Look>
  ControlArray<T> Rows(const char* name, int first, int last, int left, int width, Look... look) {
    return {name, first, last, [=, this](ControlName element, int row) {
              return std::make_unique<T>(RowsFrame, element, Place{left, 120 + 480 * (row - 1), width, 240}, look...);
            }};
  }

 public:
  // clang-format off
  Label         SiteLbl     {*this, "SiteLbl",     {9600,  195,  3000,  315}, "www.norvanta.example", TextRole::Link,
                             Noting("site"), {Noting("down"), Noting("up"), Noting("over")}};
  Frame         MarkFrame   {*this, "MarkFrame",   {   0, 1440,   60,  315}, Fill::Accent};
  Label         StepLbl     {*this, "StepLbl",     { 240, 1440, 3480,  315}, "Welcome / Open Configuration", TextRole::Step};
  Image         IconImg     {*this, "IconImg",     { 240, 2400,  720,  720}};
  Label         LogLbl      {*this, "LogLbl",      { 240, 3360, 3480, 4320}, ""};
  RowLabel      LineLbl     {*this, "LineLbl",     { 240, 7800, 3480,  315},
                             {{0, TextRole::Body}, {900, TextRole::Muted}, {-900, TextRole::MutedRight}}, Noting("line")};

  Frame         FirstFrame  {*this, "FirstFrame",  {3840, 720, 9000, 6900}};
  Label         NameLbl     {FirstFrame, "NameLbl",    { 360, 720, 1800, 315}, "Name"};
  TextBox       NameTxt     {FirstFrame, "NameTxt",    {2280, 720, 2160, 315}, Noting("name", NameTxt, &TextBox::Text)};
  TextBox       OffTxt      {FirstFrame, "OffTxt",     {2280, 1080, 2160, 315}};
  TextBox       GrayTxt     {FirstFrame, "GrayTxt",    {4560, 1080, 2160, 315}};
  TextBox       ReadTxt     {FirstFrame, "ReadTxt",    {6840, 1080, 1440, 315}};
  Label         PortLbl     {FirstFrame, "PortLbl",    { 360, 1440, 1800, 315}, "Port"};
  ComboBox      PortCbo     {FirstFrame, "PortCbo",    {2280, 1440, 1680, 315}, {"None", "COM1", "COM2", "COM3"},
                             Noting("port", PortCbo, &ComboBox::Text)};
  ComboBox      FreeCbo     {FirstFrame, "FreeCbo",    {4560, 1440, 1680, 315}, {"9600", "19200", "a \x80"},
                             Noting("free", FreeCbo, &ComboBox::Text), ComboBox::Style::WithTextPart};
  ComboBox      LaterCbo    {FirstFrame, "LaterCbo",   {6840, 1440, 1440, 315}, {"None", "COM2", "COM3", "COM26"},
                             Noting("later", LaterCbo, &ComboBox::Text), ComboBox::Style::ChoiceWhenDone};
  CheckBox      FlagChk     {FirstFrame, "FlagChk",    { 360, 1920, 2640, 555}, "Respond to Specific Address",
                             Noting("flag", FlagChk, &CheckBox::Value)};
  CheckBox      BareChk     {FirstFrame, "BareChk",    {3360, 1920,  315, 315}, "", Noting("bare", BareChk, &CheckBox::Value)};
  Label         BareLbl     {FirstFrame, "BareLbl",    {3720, 1920, 3000, 315}, "Beside a bare box", TextRole::Body, Noting("label")};
  OptionButton  OneOpt      {FirstFrame, "OneOpt",     { 360, 2520, 2160, 315}, "Option one", true, Noting("one")};
  OptionButton  TwoOpt      {FirstFrame, "TwoOpt",     {2760, 2520, 2160, 315}, "Option two", false, Noting("two")};
  OptionButton  OffOpt      {FirstFrame, "OffOpt",     {5160, 2520, 2160, 315}, "Option off", false, Noting("off")};
  Frame         HeadFrame   {FirstFrame, "HeadFrame",  { 360, 2880, 7980, 495}};
  RowTable      TableFrame  {FirstFrame, "TableFrame", { 360, 3420, 7980, 2400}, *this, ChosenFrame, RowMark, RowsVScroll};
  Frame         RowsFrame   {TableFrame, "RowsFrame",  {   0,    0, 7980, 3840}};
  RowFrame      ChosenFrame {RowsFrame, "ChosenFrame", "ChosenMarkFrame", {0, 0, 7980, 465}, 480};
  RowSign       RowMark     {RowsFrame, "RowMark", {600, 150, 180, 180}, 480};
  ControlArray<Label> SlotLbl = Rows<Label>("SlotLbl", 1, 8, 120, 600, "7", TextRole::TableText);
  ControlArray<Label> AreaLbl = Rows<Label>("AreaLbl", 1, 8, 840, 1320, "a text that its cell can't hold", TextRole::TableText);
  VScrollBar    RowsVScroll {FirstFrame, "RowsVScroll",{8340, 3420, 300, 2400}, &EveryControl::RowsVScroll_Change};
  ControlArray<TextBox> RowTxt = Rows<TextBox>("RowTxt", 2, 4, 2400, 1200, &EveryControl::RowTxt_Change);
  CommandButton AddCmd      {FirstFrame, "AddCmd",     { 360, 6000, 1560, 390}, "Add Route", Noting("add")};
  ProgressBar   Bar         {FirstFrame, "Bar",        {3960, 6045, 4680, 315}};

  Frame         SecondFrame {*this, "SecondFrame", {3840, 720, 9000, 6900}};
  Label         TitleLbl    {SecondFrame, "TitleLbl", {360, 120, 5880, 480}, "Terminal", TextRole::Title};
  OptionButton  OtherOpt    {SecondFrame, "OtherOpt", {6480, 120, 2160, 315}, "A group of its own", true, Noting("other")};
  TextBox       Term        {SecondFrame, "Term",     {360, 720, 8280, 5970}, {}, TextBox::Lines::Many, {68, 24}};

  ImageButton   BackCmd     {*this, "BackCmd",   { 8760, 7815, 1050, 390}, [this] { ShowPage(false); }};
  ImageButton   NextCmd     {*this, "NextCmd",   { 9930, 7815, 1050, 390}, [this] { ShowPage(true); }, WindowKey::Enter};
  ImageButton   CancelCmd   {*this, "CancelCmd", {11340, 7815, 1140, 390}, [this] { UnloadMe(); }, WindowKey::EscapeMovesFocus};
  Timer         TickTmr     {*this, "TickTmr", 100, false, Noting("tick")};
  FileDialog    FileDlg     {*this, "FileDlg"};
  // clang-format on
};

/// The properties as texts, each behind a bar.
inline std::string Seen(const std::vector<const PropertyBase*>& properties) {
  std::string seen;
  for (const PropertyBase* property : properties) seen += "|" + property->AsText();
  return seen;
}

}  // namespace vk32
