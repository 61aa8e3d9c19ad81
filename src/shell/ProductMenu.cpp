// The port choice and the tools of one product.
#include "shell/ProductMenu.h"

#include "core/Convert.h"
#include "link/Conversation.h"
#include "link/VKComSubs.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

constexpr int RaisedNext = 111;

void PlaceTool(ImageButton& button, int top) {
  if (top == Hidden) {
    button.Visible = false;
  } else {
    button.Top = top;
  }
}

}  // namespace

ProductMenu::ProductMenu(App& app) : Form(app.forms, FormName, "", ShellWidth, ShellHeight), app_(app) {
  COMCbo.EntryToolTip = [this](const std::string& entry) {
    const auto device = app_.ports.Find(entry);
    return device ? device->Description() : std::string();
  };
}

std::vector<std::string> ProductMenu::PortTexts() {
  std::vector<std::string> texts{"None"};
  for (int number = 1; number <= MaxPorts; ++number) texts.push_back("COM" + Str(number));
  return texts;
}

void ProductMenu::Form_Load() {
  const Product& product = FindProduct(app_.globals.CurrentProduct);
  DeviceLbl.Caption = app_.globals.CurrentProduct + " Main Menu";
  Caption = app_.globals.CurrentProduct + " Main Menu";
  DescLbl.Caption =
      "Select the COM Port that will be used to communicate with the " + app_.globals.CurrentProduct + ".";
  ConfigureCmd.Top = 3000;
  UpgradeCmd.Top = 3600;
  DeviceInfoCmd.Top = 4200;
  OfflineCmd.Top = 4800;
  COMCbo.Show(app_.globals.ComPortText);
  ports.Refresh();
  PlaceTool(UpgradeCmd, product.upgradeTop);
  PlaceTool(DeviceInfoCmd, product.deviceInfoTop);
  PlaceTool(OfflineCmd, product.offlineTop);
}

void ProductMenu::Form_Unload() {
  if (Form* info = app_.forms.Find("DeviceInfo"); info && !info->Visible) app_.forms.Unload(*info);
}

void ProductMenu::COMCbo_Click() {
  if (RefusedByConversation(app_)) {
    COMCbo.Show(app_.globals.ComPortText);
    return;
  }
  status.Tell({});  // it told of another port
  app_.globals.ComPortText = COMCbo.Text;
  if (const int number = PortNames::Number(COMCbo.Text.Value())) app_.globals.ComPortNumber = number;
  if (COMCbo.Text.Value() != "None") {
    app_.ports.Choose(COMCbo.Text.Value());
    CheckComPort(app_, *this);
  }
  ports.Refresh();
}

void ProductMenu::ConfigureCmd_Click() { app_.forms.Show(FindProduct(app_.globals.CurrentProduct).wizard); }

bool ProductMenu::ShowTool(const char* name) {
  if (!app_.forms.Find(name) && RefusedByConversation(app_)) return false;
  app_.forms.Show(name);
  return true;
}

void ProductMenu::UpgradeCmd_Click() {
  if (!ShowTool("Firmware") || app_.globals.FirmwarePage != 0) return;
  app_.forms.Find("Firmware")->Get<ImageButton>("NextCmd").Picture = RaisedNext;
}

void ProductMenu::DeviceInfoCmd_Click() {
  Form* there = app_.forms.Find("DeviceInfo");
  if (there && there->Visible && deviceInfoPort_ == app_.globals.ComPortText) {
    there->Visible = true;  // in front of the others
    return;
  }
  if (RefusedByConversation(app_)) return;
  if (there) app_.forms.Unload(*there);  // it tells of the device on another port
  deviceInfoPort_ = app_.globals.ComPortText;
  Form& info = app_.forms.Load("DeviceInfo");
  if (app_.globals.CommFailed != FlagFalse) {
    info.Visible = false;
    app_.forms.Unload(info);
  } else {
    info.Visible = true;
  }
}

void ProductMenu::OfflineCmd_Click() { ShowTool("OfflineMngr"); }

void ProductMenu::ReturnCmd_Click() {
  UnloadMe();
  app_.forms.Show("MainMenu");
}

void ProductMenu::ExitCmd_Click() { app_.forms.dispatcher.End(); }

}  // namespace vk32
