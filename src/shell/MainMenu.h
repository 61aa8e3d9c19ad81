// The menu of products and models.
#pragma once

#include "shell/ShellFrame.h"

namespace vk32 {

class MainMenu : public Form {
 public:
  static constexpr const char* FormName = "MainMenu";

  explicit MainMenu(App& app);

  void ShowProductMenu();
  void ShowModelMenu();

 private:
  void Form_Load() override;
  void VK5300Cmd_Click();
  void VKRTXCmd_Click();
  void RB3000Cmd_Click();
  void RB2000Cmd_Click();
  void RBCardCmd_Click();
  void ABEthAsciiDf1ModelCmd_Click();
  void ABEthModbusModelCmd_Click();
  void ReturnCmd_Click();
  void AboutCmd_Click();
  void ExitCmd_Click();
  void WebsiteLbl_Click();
  void WebsiteLbl_MouseDown();
  void WebsiteLbl_MouseUp();

  bool Leave(std::string_view product, std::string_view model);
  void GoToProductMenu(std::string_view product);
  void GoToProductMenuWithModel(std::string_view model);
  void ShowProductButtons(bool visible);

  App& app_;

  // clang-format off
  ShellFrame  shell {*this};
  ShellMenu   menu  {*this};
  Label       VersionLbl            {*this, "VersionLbl",            {4440,  375, 2850, 315}, "", TextRole::BandText};
  Label       WebsiteLbl            {*this, "WebsiteLbl",            {4440,  720, 2850, 315}, "www.norvanta.example", TextRole::Link,
                                     &MainMenu::WebsiteLbl_Click, {&MainMenu::WebsiteLbl_MouseDown, &MainMenu::WebsiteLbl_MouseUp, {}}};
  Label       ProductModelLbl       {*this, "ProductModelLbl",       { 240, 1800, 2430, 480}, "Products", TextRole::Product};
  ImageButton VK5300Cmd             {*this, "VK5300Cmd",             { 240, 2520, 2430, 525}, &MainMenu::VK5300Cmd_Click};
  ImageButton VKRTXCmd              {*this, "VKRTXCmd",              { 240, 3120, 2430, 525}, &MainMenu::VKRTXCmd_Click};
  ImageButton RB3000Cmd             {*this, "RB3000Cmd",             { 240, 3720, 2430, 525}, &MainMenu::RB3000Cmd_Click};
  ImageButton RB2000Cmd             {*this, "RB2000Cmd",             { 240, 4320, 2430, 525}, &MainMenu::RB2000Cmd_Click};
  ImageButton RBCardCmd             {*this, "RBCardCmd",             { 240, 4920, 2430, 525}, &MainMenu::RBCardCmd_Click};
  // Reserved places of the second column.
  ImageButton RB1500Cmd             {*this, "RB1500Cmd",             {2880, 3120, 2430, 525}, {}};
  ImageButton RB2500Cmd             {*this, "RB2500Cmd",             {2880, 2520, 2430, 525}, {}};
  ImageButton ABEthAsciiDf1ModelCmd {*this, "ABEthAsciiDf1ModelCmd", { 240, 2520, 2430, 525}, &MainMenu::ABEthAsciiDf1ModelCmd_Click};
  ImageButton ABEthModbusModelCmd   {*this, "ABEthModbusModelCmd",   { 240, 3120, 2430, 525}, &MainMenu::ABEthModbusModelCmd_Click};
  Label       SelectLbl             {*this, "SelectLbl",             {3270, 1920, 3300, 540}, "Select a product from the menu on the left."};
  ImageButton AboutCmd              {*this, "AboutCmd",              { 240, 5925, 1425, 450}, &MainMenu::AboutCmd_Click};
  ImageButton ReturnCmd             {*this, "ReturnCmd",             { 240, 5925, 3480, 450}, &MainMenu::ReturnCmd_Click};
  ImageButton ExitCmd               {*this, "ExitCmd",               {5865, 5925, 1425, 450}, &MainMenu::ExitCmd_Click};
  // clang-format on
};

/// Colours of the link at rest, and while it is pressed.
constexpr Color MainMenuLink = 8621446, AboutLink = 503197, PressedLink = 2368684;
/// The maker's web site.
constexpr const char* WebSite = "https://www.norvanta.example/";

}  // namespace vk32
