// A form with controls of every kind, in two pages; it notes which handlers ran.
#pragma once

#include <string>
#include <utility>

#include "forms/ControlArray.h"
#include "forms/Forms.h"

namespace vk32 {

class GalleryForm : public Form {
 public:
  static constexpr const char* FormName = "GalleryForm";

  explicit GalleryForm(Forms& forms) : Form(forms, FormName, "Gallery", 12840, 8400) {
    SecondFrame.Visible = false;
    OffTxt.Enabled = false;
    OffTxt.Text = "disabled";
    GrayTxt.BackColor = 0xE0E0E0;
    GrayTxt.Text = "automatic";
    ReadTxt.Locked = true;
    ReadTxt.Text = "read only";
    OffOpt.Enabled = false;
    OffCmd.Enabled = false;
    PortCbo.EntryToolTip = [](const std::string& entry) { return "behind " + entry; };
    PortCbo.Show("COM2");
    LaterCbo.Show("None");
    RowsVScroll.SmallChange = 480;
    RowsVScroll.LargeChange = 2400;
    RowsVScroll.Max = 1440;
    Bar.Value = 38;
    log.clear();
  }

  std::string TakeLog() { return std::exchange(log, {}); }

  std::string log;  // a word for each handler that ran

 private:
  Handler Note(const char* word) {
    return [this, word] { log += std::string(word) + " "; };
  }
  void Form_Click() override { log += "form "; }
  void Form_MouseMove() override { log += "move "; }
  void ShowPage(bool second) {
    log += second ? "next " : "back ";
    FirstFrame.Visible = !second;
    SecondFrame.Visible = second;
  }
  template <class T>
  ControlArray<T> Rows(const char* name, const char* words, int left, int width) {
    return {name, 1, 8, [=, this](ControlName element, int row) {
              const Place place{left, 120 + 480 * (row - 1), width, 240};
              return std::make_unique<T>(RowsFrame, element, place, words, TextRole::TableText);
            }};
  }

 public:
  // clang-format off
  Frame         BandFrame   {*this, "BandFrame",   {   0,    0, 12840,  720}, Fill::Band};
  Label         BandLbl     {*this, "BandLbl",     { 240,  120,  3000,  480}, "Gallery", TextRole::BandName};
  Label         SiteLbl     {*this, "SiteLbl",     {9600,  195,  3000,  315}, "www.norvanta.example", TextRole::Link,
                             Note("site"), {Note("down"), Note("up"), Note("over")}};
  Frame         SideFrame   {*this, "SideFrame",   {   0,  720, 3840, 7680}, Fill::Side};
  Frame         SideLine    {*this, "SideLine",    {3825,  720,   15, 7680}, Fill::Hairline};
  Frame         MarkFrame   {*this, "MarkFrame",   {   0, 1440,   60,  315}, Fill::Accent};
  Label         StepLbl     {*this, "StepLbl",     { 240, 1440, 3480,  315}, "Welcome / Open Configuration", TextRole::Step};
  Image         IconImg     {*this, "IconImg",     { 240, 2400,  720,  720}};

  Frame         FirstFrame  {*this, "FirstFrame",  {3840, 720, 9000, 6900}};
  Label         IntroLbl    {FirstFrame, "IntroLbl", {360, 120, 8280, 540},
                             "Two blanks stay.  A text that is longer than one line wraps at its words, and the second line "
                             "stands eighteen pixels below the first."};
  Label         NameLbl     {FirstFrame, "NameLbl",    { 360, 720, 1800, 315}, "Name"};
  TextBox       NameTxt     {FirstFrame, "NameTxt",    {2280, 720, 2160, 315}, Note("name")};
  Label         UnitLbl     {FirstFrame, "UnitLbl",    {4560, 720,  600, 315}, "ms", TextRole::Muted};
  Label         OffLbl      {FirstFrame, "OffLbl",     { 360, 1080, 1800, 315}, "Off"};
  TextBox       OffTxt      {FirstFrame, "OffTxt",     {2280, 1080, 2160, 315}};
  TextBox       GrayTxt     {FirstFrame, "GrayTxt",    {4560, 1080, 2160, 315}};
  TextBox       ReadTxt     {FirstFrame, "ReadTxt",    {6840, 1080, 1440, 315}};
  Label         PortLbl     {FirstFrame, "PortLbl",    { 360, 1440, 1800, 315}, "Port"};
  ComboBox      PortCbo     {FirstFrame, "PortCbo",    {2280, 1440, 1680, 315}, {"None", "COM1", "COM2", "COM3"}, Note("port")};
  ComboBox      FreeCbo     {FirstFrame, "FreeCbo",    {4560, 1440, 1680, 315}, {"9600", "19200"}, Note("free"),
                             ComboBox::Style::WithTextPart};
  ComboBox      LaterCbo    {FirstFrame, "LaterCbo",   {6840, 1440, 1440, 315}, {"None", "COM2", "COM3", "COM26"}, Note("later"),
                             ComboBox::Style::ChoiceWhenDone};
  CheckBox      FlagChk     {FirstFrame, "FlagChk",    { 360, 1920, 2640, 555}, "Respond to Specific Address", Note("flag")};
  CheckBox      BareChk     {FirstFrame, "BareChk",    {3360, 1920,  315, 315}, "", Note("bare")};
  Label         BareLbl     {FirstFrame, "BareLbl",    {3720, 1920, 3000, 315}, "Beside a bare box", TextRole::Body, Note("label")};
  OptionButton  OneOpt      {FirstFrame, "OneOpt",     { 360, 2520, 2160, 315}, "Option one", true, Note("one")};
  OptionButton  TwoOpt      {FirstFrame, "TwoOpt",     {2760, 2520, 2160, 315}, "Option two", false, Note("two")};
  OptionButton  OffOpt      {FirstFrame, "OffOpt",     {5160, 2520, 2160, 315}, "Option off", false, Note("off")};
  Frame         HeadFrame   {FirstFrame, "HeadFrame",  { 360, 2880, 7980, 495}};
  Label         SlotHeadLbl {HeadFrame,  "SlotHeadLbl",{ 120,    0,  600, 495}, "Slot", TextRole::TableHead};
  Label         AreaHeadLbl {HeadFrame,  "AreaHeadLbl",{ 840,    0, 1320, 495}, "Destination Range", TextRole::TableHead};
  Frame         TableFrame  {FirstFrame, "TableFrame", { 360, 3420, 7980, 2400}, Fill::Table};
  Frame         RowsFrame   {TableFrame, "RowsFrame",  {   0,    0, 7980, 3840}};
  ControlArray<Label> SlotLbl = Rows<Label>("SlotLbl", "7", 120, 600);
  ControlArray<Label> AreaLbl = Rows<Label>("AreaLbl", "a text that its cell can't hold", 840, 1320);
  VScrollBar    RowsVScroll {FirstFrame, "RowsVScroll",{8340, 3420, 300, 2400}, [this] {
                               log += "scroll ";
                               RowsFrame.Top = -RowsVScroll.Value;
                             }};
  CommandButton AddCmd      {FirstFrame, "AddCmd",     { 360, 6000, 1560, 390}, "Add Route", Note("add")};
  CommandButton OffCmd      {FirstFrame, "OffCmd",     {2040, 6000, 1800, 390}, "Delete Route", Note("never")};
  ProgressBar   Bar         {FirstFrame, "Bar",        {3960, 6045, 4680, 315}};

  Frame         SecondFrame {*this, "SecondFrame", {3840, 720, 9000, 6900}};
  Label         TitleLbl    {SecondFrame, "TitleLbl", {360, 120, 8280, 480}, "Terminal", TextRole::Title};
  TextBox       Term        {SecondFrame, "Term",     {360, 720, 8280, 5970}, {}, TextBox::Lines::Many};

  Frame         FootLine    {*this, "FootLine", {3840, 7620, 9000, 15}, Fill::Hairline};
  ImageButton   BackCmd     {*this, "BackCmd",   { 8760, 7815, 1050, 390}, [this] { ShowPage(false); }};
  ImageButton   NextCmd     {*this, "NextCmd",   { 9930, 7815, 1050, 390}, [this] { ShowPage(true); }, WindowKey::Enter};
  ImageButton   CancelCmd   {*this, "CancelCmd", {11340, 7815, 1140, 390}, [this] { UnloadMe(); }, WindowKey::EscapeMovesFocus};
  // clang-format on
};

}  // namespace vk32
