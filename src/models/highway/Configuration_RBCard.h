// The wizard of the RBCard: a plug-in card between DF1 and a Data Highway.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "models/highway/HighwayImage.h"
#include "models/registers/ImageWizard.h"
#include "models/registers/LineChoices.h"

namespace vk32 {

class Configuration_RBCard : public ImageWizard {
 public:
  static constexpr const char* FormName = "Configuration_RBCard";

  explicit Configuration_RBCard(App& app);

  void Parameter_Setup_RB() override;
  std::string ModelTag() const override { return "DF1-DHP-DH485"; }

 private:
  void Form_Load() override;
  std::vector<WizardPage> Pages() override;
  std::span<const FixedByte> FixedBytes() const override;
  int RegisterCount() const override { return HighwayImage::Registers; }
  void Record(RecordFile& file, std::string& product, std::string& modelTag) override;

  void DhpOpt_Click();
  void Dh485Opt_Click();
  void HwySpeedLst_Click();
  void ShowDHPlusLists();
  void ShowDH485Lists();
  std::vector<RegisterList*> Df1Lists();

  /// True from the first Parameter_Setup_RB on: clicks on the two options then do nothing.
  Flag SetupDone = FlagFalse;
  Parameters& image = app.globals;

 public:
  // clang-format off
  // Side menu
  Label        CommParamsLbl        {*this, "CommParamsLbl", {240, 1980, 3480, 315}, "Communication Parameters", TextRole::Heading};
  Label        HwyComSetLbl         {*this, "HwyComSetLbl",  {240, 2340, 3480, 315}, "Data Highway Settings", TextRole::Step};
  Label        Df1ComSetLbl         {*this, "Df1ComSetLbl",  {240, 2700, 3480, 315}, "DF1 Settings", TextRole::Step};

  // DH+ Communication Settings
  Frame        HwyComFrame          {*this, "HwyComFrame", PagePlace};
  Label        HwyComTitleLbl       {HwyComFrame, "HwyComTitleLbl",     { 360,  240, 8280, 480}, "DH+ Communication Settings", TextRole::Title};
  Label        HwyParamsLbl         {HwyComFrame, "HwyParamsLbl",       { 360, 1200, 6120, 315}, "DH+ Parameters", TextRole::Heading};
  Frame        HwyLineFrame         {HwyComFrame, "HwyLineFrame",       { 360, 1560, 6120,  15}, Fill::Hairline};
  Label        HwyModeLbl           {HwyComFrame, "HwyModeLbl",         { 360, 1680, 1800, 315}, "Network Mode"};
  OptionButton DhpOpt               {HwyComFrame, "DhpOpt",             {2280, 1680,  315, 315}, "DH+", true, &Configuration_RBCard::DhpOpt_Click};
  Label        DhpOptLbl            {HwyComFrame, "DhpOptLbl",          {2640, 1680,  960, 315}, "DH+"};
  OptionButton Dh485Opt             {HwyComFrame, "Dh485Opt",           {3720, 1680,  315, 315}, "DH485", false, &Configuration_RBCard::Dh485Opt_Click};
  Label        DH485OptLbl          {HwyComFrame, "DH485OptLbl",        {4080, 1680,  960, 315}, "DH485"};
  Label        HwyNodeLbl           {HwyComFrame, "HwyNodeLbl",         { 360, 2040, 1800, 315}, "Node Address"};
  RegisterList HwyNodeLst           {HwyComFrame, "HwyNodeLst",         {2280, 2040, 1680, 315}, image, HighwayImage::Node, HighwayImage::DhPlusNodes(), "1"};
  Label        HwyNodeUnitLbl       {HwyComFrame, "HwyNodeUnitLbl",     {4080, 2040,  900, 315}, "", TextRole::Muted};
  Label        HwySpeedLbl          {HwyComFrame, "HwySpeedLbl",        { 360, 2400, 1800, 315}, "Network Speed"};
  RegisterList HwySpeedLst          {HwyComFrame, "HwySpeedLst",        {2280, 2400, 1680, 315}, image, HighwayImage::Speed, HighwayImage::DhPlusSpeeds(), "57.6",
                                     &Configuration_RBCard::HwySpeedLst_Click};
  Label        HwySpeedUnitLbl      {HwyComFrame, "HwySpeedUnitLbl",    {4080, 2400,  900, 315}, "", TextRole::Muted};

  // DF1 Communication Settings
  Frame        Df1ComFrame          {*this, "Df1ComFrame", PagePlace};
  Label        Df1ComTitleLbl       {Df1ComFrame, "Df1ComTitleLbl",     { 360,  240, 8280, 480}, "DF1 Communication Settings", TextRole::Title};
  Label        Df1SerialParamsLbl   {Df1ComFrame, "Df1SerialParamsLbl", { 360, 1200, 6120, 315}, "Serial Parameters", TextRole::Heading};
  Frame        Df1SerialLineFrame   {Df1ComFrame, "Df1SerialLineFrame", { 360, 1560, 6120,  15}, Fill::Hairline};
  Label        Df1SpeedLbl          {Df1ComFrame, "Df1SpeedLbl",        { 360, 1680, 2640, 315}, "Serial Speed"};
  RegisterList Df1SpeedLst          {Df1ComFrame, "Df1SpeedLst",        {3120, 1680, 1680, 315}, image, HighwayImage::Df1Speed, LineChoices::Speeds(), "9600"};
  Label        Df1SpeedUnitLbl      {Df1ComFrame, "Df1SpeedUnitLbl",    {4920, 1680,  900, 315}, "Baud", TextRole::Muted};
  Label        Df1ParityLbl         {Df1ComFrame, "Df1ParityLbl",       { 360, 2040, 2640, 315}, "Parity"};
  RegisterList Df1ParityLst         {Df1ComFrame, "Df1ParityLst",       {3120, 2040, 1680, 315}, image, HighwayImage::LineFlags,
                                     {LineChoices::NoParity, LineChoices::EvenParity, LineChoices::OddParity}, "None"};
  Label        Df1DataBitsLbl       {Df1ComFrame, "Df1DataBitsLbl",     { 360, 2400, 2640, 315}, "Data Bits"};
  RegisterList Df1DataBitsLst       {Df1ComFrame, "Df1DataBitsLst",     {3120, 2400, 1680, 315}, image, HighwayImage::LineFlags, LineChoices::DataBits(), "8"};
  Label        Df1StopBitsLbl       {Df1ComFrame, "Df1StopBitsLbl",     { 360, 2760, 2640, 315}, "Stop Bits"};
  RegisterList Df1StopBitsLst       {Df1ComFrame, "Df1StopBitsLst",     {3120, 2760, 1680, 315}, image, HighwayImage::LineFlags, LineChoices::StopBits(), "1"};
  Label        Df1ProtoParamsLbl    {Df1ComFrame, "Df1ProtoParamsLbl",  { 360, 3240, 6120, 315}, "DF1 Parameters", TextRole::Heading};
  Frame        Df1ProtoLineFrame    {Df1ComFrame, "Df1ProtoLineFrame",  { 360, 3600, 6120,  15}, Fill::Hairline};
  Label        Df1ErrorChkLbl       {Df1ComFrame, "Df1ErrorChkLbl",     { 360, 3720, 2640, 315}, "Error Checking"};
  RegisterList Df1ErrorChkLst       {Df1ComFrame, "Df1ErrorChkLst",     {3120, 3720, 1680, 315}, image, HighwayImage::Df1Flags, LineChoices::ErrorChecking(), "BCC"};
  Label        Df1DupMsgLbl         {Df1ComFrame, "Df1DupMsgLbl",       { 360, 4080, 2640, 315}, "Duplicate Messages"};
  RegisterList Df1DupMsgLst         {Df1ComFrame, "Df1DupMsgLst",       {3120, 4080, 1680, 315}, image, HighwayImage::Df1Flags, {{"Ignore", 2, 0, 2}, {"Accept", 2, 2, 2}}, "Ignore"};
  Label        Df1EmbeddedRespLbl   {Df1ComFrame, "Df1EmbeddedRespLbl", { 360, 4440, 2640, 315}, "Embedded Responses"};
  RegisterList Df1EmbeddedRespLst   {Df1ComFrame, "Df1EmbeddedRespLst", {3120, 4440, 1680, 315}, image, HighwayImage::Df1Flags, {{"None", 4, 0, 4}, {"Execute", 4, 4, 4}}, "None"};
  // clang-format on
};

}  // namespace vk32
