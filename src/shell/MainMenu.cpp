// The menu of products and models.
#include "shell/MainMenu.h"

#include "core/ConfigurationForm.h"
#include "link/Conversation.h"
#include "shell/Products.h"
#include "shell/Subs.h"

namespace vk32 {

MainMenu::MainMenu(App& app)
    : Form(app.forms, FormName, "VK32 Confguration Software", ShellWidth, ShellHeight), app_(app) {
  // The design state is that of ShowProductMenu.
  WebsiteLbl.ForeColor = MainMenuLink;
  for (ImageButton* button : {&RB1500Cmd, &RB2500Cmd, &ABEthAsciiDf1ModelCmd, &ABEthModbusModelCmd, &ReturnCmd}) {
    button->Visible = false;
  }
  // The band lies above; who walks by Tab has come for a product.
  PutInTabOrder({&VK5300Cmd, &VKRTXCmd, &RB3000Cmd, &RB2000Cmd, &RBCardCmd, &ABEthAsciiDf1ModelCmd,
                 &ABEthModbusModelCmd, &AboutCmd, &ReturnCmd, &ExitCmd, &WebsiteLbl});
}

void MainMenu::Form_Load() { VersionLbl.Caption = VersionText(); }

void MainMenu::ShowProductMenu() {
  ProductModelLbl.Caption = "Products";
  SelectLbl.Caption = "Select a product from the menu on the left.";
  AboutCmd.Visible = true;
  ReturnCmd.Visible = false;
  ShowProductButtons(true);
  ABEthAsciiDf1ModelCmd.Visible = false;
  ABEthModbusModelCmd.Visible = false;
}

void MainMenu::ShowModelMenu() {
  ProductModelLbl.Caption = "Models";
  SelectLbl.Caption = "Select a model from the menu on the left.";
  AboutCmd.Visible = false;
  ReturnCmd.Visible = true;
  ShowProductButtons(false);
  if (app_.globals.CurrentProduct == "VK-RTX") {
    ABEthAsciiDf1ModelCmd.Visible = true;
    ABEthModbusModelCmd.Visible = true;
  }
}

void MainMenu::ShowProductButtons(bool visible) {
  for (ImageButton* button : {&VK5300Cmd, &VKRTXCmd, &RB3000Cmd, &RB2000Cmd, &RBCardCmd}) button->Visible = visible;
  RB2500Cmd.Visible = false;
  RB1500Cmd.Visible = false;
}

/// What is open for another product or model closes: its wizard, as they share the parameters, and the tools.
/// False if a conversation with the one that was chosen so far is under way; the user has been told.
bool MainMenu::Leave(std::string_view product, std::string_view model) {
  const Globals& globals = app_.globals;
  if (product == globals.CurrentProduct && model == globals.CurrentModel) return true;
  if (RefusedByConversation(app_)) return false;
  for (const Product& other : Products()) {
    auto* wizard = dynamic_cast<ConfigurationForm*>(app_.forms.Find(other.wizard));
    if (wizard && !wizard->MayGo()) return false;
    app_.forms.Unload(other.wizard);
  }
  for (const char* tool : {"Firmware", "OfflineMngr", "DeviceInfo"}) app_.forms.Unload(tool);
  return true;
}

void MainMenu::VKRTXCmd_Click() {
  if (!Leave("VK-RTX", app_.globals.CurrentModel)) return;
  SelectProduct(app_.globals, "VK-RTX");
  ShowModelMenu();
}

void MainMenu::VK5300Cmd_Click() { GoToProductMenu("VK5300"); }
void MainMenu::RB3000Cmd_Click() { GoToProductMenu("RB3000"); }
void MainMenu::RB2000Cmd_Click() { GoToProductMenu("RB2000"); }
void MainMenu::RBCardCmd_Click() { GoToProductMenu("RBCard"); }
void MainMenu::ABEthAsciiDf1ModelCmd_Click() { GoToProductMenuWithModel("AB Ethernet, ASCII, DF1"); }
void MainMenu::ABEthModbusModelCmd_Click() { GoToProductMenuWithModel("AB Ethernet, Modbus"); }

void MainMenu::GoToProductMenu(std::string_view product) {
  if (!Leave(product, app_.globals.CurrentModel)) return;
  UnloadMe();
  SelectProduct(app_.globals, product);
  app_.forms.Show("ProductMenu");
}

void MainMenu::GoToProductMenuWithModel(std::string_view name) {
  if (!Leave(app_.globals.CurrentProduct, name)) return;
  UnloadMe();
  SelectModel(app_.globals, name);
  app_.forms.Show("ProductMenu");
}

void MainMenu::ReturnCmd_Click() { ShowProductMenu(); }

void MainMenu::AboutCmd_Click() { app_.forms.Show("About"); }

void MainMenu::ExitCmd_Click() { app_.forms.dispatcher.End(); }

void MainMenu::WebsiteLbl_Click() { OpenWebSite(app_, WebSite); }

void MainMenu::WebsiteLbl_MouseDown() { WebsiteLbl.ForeColor = PressedLink; }

void MainMenu::WebsiteLbl_MouseUp() { WebsiteLbl.ForeColor = MainMenuLink; }

}  // namespace vk32
