// The port choice and the tools of one product.
#pragma once

#include "shell/PortsFound.h"
#include "shell/ShellFrame.h"
#include "shell/StatusLine.h"

namespace vk32 {

class ProductMenu : public Form {
 public:
  static constexpr const char* FormName = "ProductMenu";

  explicit ProductMenu(App& app);

 private:
  void Form_Load() override;
  /// A device information that is still being read goes with the menu.
  void Form_Unload() override;
  void COMCbo_Click();
  void ConfigureCmd_Click();
  void UpgradeCmd_Click();
  void DeviceInfoCmd_Click();
  void OfflineCmd_Click();
  void ReturnCmd_Click();
  void ExitCmd_Click();

  /// Opens the tool, or brings it to the front. False, after telling the user, if it would begin a conversation while
  /// another one is under way.
  bool ShowTool(const char* name);

  App& app_;
  std::string deviceInfoPort_;  // of the device information that shows

  // clang-format off
  ShellFrame  shell {*this};
  ShellMenu   menu  {*this};
  Label       DeviceLbl     {*this, "DeviceLbl",     {3270, 1800, 4020, 480}, "", TextRole::Product};
  Label       DescLbl       {*this, "DescLbl",       {3270, 2340, 4020, 540}, ""};
  Label       ComPortLbl    {*this, "ComPortLbl",    {3270, 3060, 2100, 315}, "COM Port Selection"};
  ComboBox    COMCbo        {*this, "COMCbo",        {5640, 3060, 1650, 315}, PortTexts(), &ProductMenu::COMCbo_Click,
                             ComboBox::Style::ChoiceWhenDone};
  PortsFound  ports {app_, *this, COMCbo};
  ImageButton ConfigureCmd  {*this, "ConfigureCmd",  { 240, 3000, 2325, 450}, &ProductMenu::ConfigureCmd_Click, WindowKey::Enter};
  ImageButton UpgradeCmd    {*this, "UpgradeCmd",    { 240, 3600, 2325, 450}, &ProductMenu::UpgradeCmd_Click};
  ImageButton DeviceInfoCmd {*this, "DeviceInfoCmd", { 240, 4200, 2325, 450}, &ProductMenu::DeviceInfoCmd_Click};
  ImageButton OfflineCmd    {*this, "OfflineCmd",    { 240, 4800, 2325, 450}, &ProductMenu::OfflineCmd_Click};
  ImageButton ReturnCmd     {*this, "ReturnCmd",     { 240, 5925, 3480, 450}, &ProductMenu::ReturnCmd_Click};
  ImageButton ExitCmd       {*this, "ExitCmd",       {5865, 5925, 1425, 450}, &ProductMenu::ExitCmd_Click};

 public:
  StatusLine  status        {*this, {240, 1800, 2430, 960}};
  // clang-format on

 private:
  static std::vector<std::string> PortTexts();
};

}  // namespace vk32
