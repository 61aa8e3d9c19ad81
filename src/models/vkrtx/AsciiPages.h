// What the routes of ASCII channels ask for on the VK-RTX: EtherNet/IP clients, and conversion of the texts.
#pragma once

#include <string>

#include "app/App.h"
#include "forms/ControlArray.h"
#include "models/lists/ChoiceList.h"
#include "models/vkrtx/RoutingPage.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

constexpr const char* ClientPageTitle = "Ethernet/IP Client Setup";
constexpr const char* ConversionPageTitle = "Protocol Conversion Settings";
/// " - Channel A" or " - Channel B"
inline std::string OfChannel(int i) { return i == 0 ? " - Channel A" : " - Channel B"; }

/// Elements 0 and 1 of the arrays are the clients on one page, and the channels on the other.
class AsciiPages {
 public:
  AsciiPages(Form& form, App& app, const RoutingPage& routing);

  void SetUpDf1Model();
  struct Client {
    EIPClientRecord record;
    std::string slotText = "0";
  };
  /// Those that the routes ask for, at most two, with what the user set for their addresses.
  std::vector<Client> ClientsOfRoutes() const;
  /// A route starts on the channel while that speaks ASCII.
  bool Converts(int channel) const;
  /// What both pages will show.
  std::vector<Foretold> Foretell() const;
  /// Makes EIPClients and the blocks of the client page from the routes; what the user set for an address stays.
  void BuildEIPClientList();
  /// Sets ConvChannelA, ConvChannelB and ConvNeeded from the routes.
  void FindConversionChannels();
  /// Shows the panels of the channels that need conversion, the first at the top.
  void ArrangeConversionPage();
  /// Takes the text fields of both pages into the parameters. DoesNotFit if one is no 16-bit number.
  void CollectTextFields();

  // The parameters, onto the pages.
  void SetupClients();
  void SetupConversion();

 private:
  void KeepUserSettings(Client& client) const;
  void ShowClient(int i, const Client& client);
  void EIPClientRoutingChk_Click(int i);

  template <class T, class... Rest>
  ControlArray<T> PerClient(const char* name, int row, int left, int width, Rest... rest) {
    return {name, 0, 1, [=, this](ControlName element, int i) {
              auto control = std::make_unique<T>(EIPClientSetupFrame, element,
                                                 Place{left, 2520 + 360 * row + 1440 * i, width, 315}, rest...);
              control->Visible = false;
              return control;
            }};
  }
  template <class T, class... Rest>
  ControlArray<T> PerPanel(const char* name, Place place, Rest... rest) {
    return {name, 0, 1, [=, this](ControlName element, int i) {
              return std::make_unique<T>(ASCIIPcccConvFrame[i], element, place, rest...);
            }};
  }
  ControlArray<ChoiceList> PanelLists(const char* name, Place place, Table<std::int16_t, 2> Parameters::*codes,
                                      const ChoiceTable& choices, const char* defaultText) {
    return {name, 0, 1, [=, this](ControlName element, int i) {
              return std::make_unique<ChoiceList>(ASCIIPcccConvFrame[i], element, place, (app_.globals.*codes)[i],
                                                  choices, defaultText);
            }};
  }

  Form& form_;
  App& app_;
  const RoutingPage& routing_;

 public:
  // clang-format off
  // Ethernet/IP Client Setup
  Frame                  EIPClientSetupFrame    {form_, "EIPClientSetupFrame", PagePlace};
  Label                  EIPClientTitleLbl      {EIPClientSetupFrame, "EIPClientTitleLbl", {360, 240, 8280,  480}, ClientPageTitle, TextRole::Title};
  Label                  EIPClientSetupLbl      {EIPClientSetupFrame, "EIPClientSetupLbl", {360, 780, 8280, 1350},
                                                 "The options below are for setting up any routing that may be necessary for directing Ethernet/IP packets to the Controller.  "
                                                 "This is necessary if the device uses a module to provide Ethernet functionality.  An example of a setup that would require "
                                                 "routing is a ControlLogix Processor with a 1756-ENBT module for Ethernet/IP communication."};
  ControlArray<Label>    EIPClientHeadLbl       {"EIPClientHeadLbl", 0, 1, [this](ControlName element, int i) {
    auto head = std::make_unique<Label>(EIPClientSetupFrame, element, Place{360, 2160 + 1440 * i, 8280, 315}, i == 0 ? "Client 1" : "Client 2", TextRole::Heading);
    head->Visible = false;
    return head;
  }};
  ControlArray<Label>    EIPClientIpAddrLbl     = PerClient<Label>   ("EIPClientIpAddrLbl",    0,  360, 2640, "Client IP Address:");
  ControlArray<Label>    EIPClientIpAddrValLbl  = PerClient<Label>   ("EIPClientIpAddrValLbl", 0, 3120, 2160, "");
  ControlArray<CheckBox> EIPClientRoutingChk    {"EIPClientRoutingChk", 0, 1, [this](ControlName element, int i) {
    auto check = std::make_unique<CheckBox>(EIPClientSetupFrame, element, Place{360, 2880 + 1440 * i, 2640, 315}, "Routing Required", [this, i] { EIPClientRoutingChk_Click(i); });
    check->Visible = false;
    return check;
  }};
  ControlArray<Label>    EIPClientSlotLbl       = PerClient<Label>   ("EIPClientSlotLbl",      2,  360, 2640, "Controller Slot Number");
  ControlArray<TextBox>  EIPClientSlotTxt       = PerClient<TextBox> ("EIPClientSlotTxt",      2, 3120, 1080);

  // Protocol Conversion Settings
  Frame                    ConversionFrame      {form_, "ConversionFrame", PagePlace};
  Label                    ConversionTitleLbl   {ConversionFrame, "ConversionTitleLbl", {360, 240, 8280, 480}, ConversionPageTitle, TextRole::Title};
  ControlArray<Frame>      ASCIIPcccConvFrame   {"ASCIIPcccConvFrame", 0, 1, [this](ControlName element, int i) {
    return std::make_unique<Frame>(ConversionFrame, element, Place{360, i == 0 ? 1080 : 4200, 8280, 2880});
  }};
  ControlArray<Label>      ASCIIPcccTitleLbl    {"ASCIIPcccTitleLbl", 0, 1, [this](ControlName element, int i) {
    return std::make_unique<Label>(ASCIIPcccConvFrame[i], element, Place{0, 120, 6360, 315}, "ASCII - PCCC Conversion Settings" + OfChannel(i), TextRole::Heading);
  }};
  ControlArray<Frame>      ASCIIPcccLineFrame   = PerPanel<Frame>  ("ASCIIPcccLineFrame", {   0,  480, 6360,  15}, Fill::Hairline);
  ControlArray<Label>      ASCIIPcccFileLbl     = PerPanel<Label>  ("ASCIIPcccFileLbl",   {   0,  600, 2640, 315}, "File Number");
  ControlArray<TextBox>    ASCIIPcccFileTxt     = PerPanel<TextBox>("ASCIIPcccFileTxt",   {2760,  600, 1080, 315});
  ControlArray<Label>      ASCIIPcccWordLbl     = PerPanel<Label>  ("ASCIIPcccWordLbl",   {   0,  960, 2640, 315}, "Element Number");
  ControlArray<TextBox>    ASCIIPcccWordTxt     = PerPanel<TextBox>("ASCIIPcccWordTxt",   {2760,  960, 1080, 315});
  ControlArray<Label>      ASCIIPcccTypeLbl     = PerPanel<Label>  ("ASCIIPcccTypeLbl",   {   0, 1320, 2640, 315}, "File Type");
  ControlArray<ChoiceList> ASCIIPcccTypeLst     = PanelLists("ASCIIPcccTypeLst", {2760, 1320, 1680, 315}, &Parameters::ConvFileType, {Code("Integer", 0), Code("String", 3)}, "String");
  ControlArray<Label>      ASCIIPcccFncLbl      = PerPanel<Label>  ("ASCIIPcccFncLbl",    {   0, 1680, 2640, 315}, "DF1 Msg Function");
  ControlArray<ChoiceList> ASCIIPcccFncLst      = PanelLists("ASCIIPcccFncLst",  {2760, 1680, 3600, 315}, &Parameters::ConvFunction,
                                                             {Code("Typed Write", 0), Code("Protected Typed Logical Write", 1)}, "Typed Write");
  // clang-format on
};

}  // namespace vk32
