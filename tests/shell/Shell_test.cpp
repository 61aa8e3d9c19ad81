// The shell: splash page, menus, port choice, the small procedures that all forms share.
#include <gtest/gtest.h>

#include "shell/Subs.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

TEST(Splash, LeavesByItsTimerOrByAClick) {
  Harness byTimer;
  EXPECT_EQ(byTimer.Do("forms"), "form MainMenu hidden\nform Splash visible\n");
  EXPECT_EQ(byTimer.Get("Splash.VersionLbl.Caption"), "Version  1.8.11");
  byTimer.Do("wait 1799");
  EXPECT_EQ(byTimer.Do("forms"), "form MainMenu hidden\nform Splash visible\n");
  byTimer.Do("wait 1");
  EXPECT_EQ(byTimer.Do("forms"), "form MainMenu visible\n");

  Harness byClick;
  byClick.Do("click Splash");
  EXPECT_EQ(byClick.Do("forms"), "form MainMenu visible\n");
  byClick.Do("click MainMenu.RB2000Cmd\nwait 4000");
  EXPECT_EQ(byClick.Do("forms"), "form ProductMenu visible\n");  // the timer does nothing afterwards
}

/// The names of the buttons of a form that can be seen, with their tops.
std::string ShownButtons(Harness& h, const std::string& form) {
  std::string shown;
  for (const Control* control : h.app.forms.Find(form)->Controls()) {
    if (control->GetKind() == Control::Kind::ImageButton && control->Shown()) {
      shown += std::string(control->Name()) + " " + std::to_string(control->Top) + "\n";
    }
  }
  return shown;
}

TEST(MainMenu, ShowsProductsOrModels) {
  const std::string products =
      "VK5300Cmd 2520\nVKRTXCmd 3120\nRB3000Cmd 3720\nRB2000Cmd 4320\nRBCardCmd 4920\nAboutCmd 5925\nExitCmd 5925\n";
  Harness h;
  h.Do("click Splash");
  EXPECT_EQ(h.Get("MainMenu.Caption"), "VK32 Confguration Software");
  EXPECT_EQ(ShownButtons(h, "MainMenu"), products);
  h.Do("click MainMenu.VKRTXCmd");
  EXPECT_EQ(ShownButtons(h, "MainMenu"),
            "ABEthAsciiDf1ModelCmd 2520\nABEthModbusModelCmd 3120\nReturnCmd 5925\nExitCmd 5925\n");
  EXPECT_EQ(h.Get("MainMenu.ProductModelLbl.Caption"), "Models");
  EXPECT_EQ(h.Get("MainMenu.SelectLbl.Caption"), "Select a model from the menu on the left.");
  h.Do("click MainMenu.ReturnCmd");
  EXPECT_EQ(ShownButtons(h, "MainMenu"), products);
  EXPECT_EQ(h.Get("MainMenu.ProductModelLbl.Caption"), "Products");

  // Loaded again it starts with the products, whatever the last choice was.
  h.Do("click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd\nclick ProductMenu.ReturnCmd");
  EXPECT_EQ(ShownButtons(h, "MainMenu"), products);
}

TEST(MainMenu, AChoiceFillsTheSharedVariables) {
  struct Row {
    const char *clicks, *product, *model, *baudRate, *leds;
    std::vector<std::int16_t> blocks;
  };
  const char* const rb = "     CHA:  Red\r\n     CHB:  Green\r\n     CHC:  Red\r\n     Power:  Green";
  const char* const rtx = "     CHA:  Off\r\n     CHB:  Off\r\n     Diagnostic:  Flashing Green\r\n     Power:  Green";
  const Row rows[] = {
      {"click MainMenu.RB2000Cmd", "RB2000", "", "9600", rb, {}},
      {"click MainMenu.RB3000Cmd", "RB3000", "", "19200", rb, {}},
      {"click MainMenu.RBCardCmd",
       "RBCard",
       "",
       "19200",
       "     Status:  Red\r\n     Net:      Off\r\n     Bus:      Green",
       {}},
      {"click MainMenu.VK5300Cmd",
       "VK5300",
       "",
       "19200",
       "     Net Status:  Off\r\n     DH Network:  Off\r\n     Mod Status:  Flashing Green",
       {1, 3}},
      {"click MainMenu.VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd",
       "VK-RTX",
       "AB Ethernet, ASCII, DF1",
       "19200",
       rtx,
       {12, 1, 2, 3, 4, 5, 10, 50, 51, 100, 101, 102, 103}},
      {"click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd",
       "VK-RTX",
       "AB Ethernet, Modbus",
       "19200",
       rtx,
       {25, 1, 2, 3, 4, 20, 21, 22, 23, 24, 25, 26, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43}},
  };
  for (const Row& row : rows) {
    Harness h;
    h.Do("click Splash");
    h.Do(row.clicks);
    EXPECT_EQ(h.Do("forms"), "form ProductMenu visible\n") << row.product;
    EXPECT_EQ(h.app.globals.CurrentProduct, row.product);
    EXPECT_EQ(h.app.globals.CurrentModel, row.model);
    EXPECT_EQ(h.app.globals.BaudRate, row.baudRate) << row.product;
    EXPECT_EQ(h.app.globals.LEDPatternText, row.leds) << row.product;
    EXPECT_EQ(h.app.globals.BlockList, row.blocks) << row.product;
  }
}

TEST(MainMenu, LinkAndButtonsShowThatTheyArePressed) {
  Harness h;
  h.Do("click Splash");
  h.Do("down MainMenu.WebsiteLbl");
  EXPECT_EQ(h.Get("MainMenu.WebsiteLbl.ForeColor"), "2368684");
  EXPECT_EQ(h.Do("up MainMenu.WebsiteLbl"), "");
  EXPECT_EQ(h.Get("MainMenu.WebsiteLbl.ForeColor"), "8621446");
  EXPECT_EQ(h.Do("click MainMenu.WebsiteLbl"), "web \"https://www.norvanta.example/\"\n");
  h.Do("down MainMenu.RB2000Cmd");
  EXPECT_EQ(h.Get("MainMenu.RB2000Cmd.Picture"), "138");
  h.Do("up MainMenu.RB2000Cmd");  // let go outside: no click
  EXPECT_EQ(h.Get("MainMenu.RB2000Cmd.Picture"), "137");
  EXPECT_EQ(h.Do("forms"), "form MainMenu visible\n");

  h.Do("click MainMenu.AboutCmd");
  EXPECT_EQ(h.Do("forms"), "form MainMenu visible\nform About visible\n");
  h.Do("down About.WebsiteLbl\nup About.WebsiteLbl");
  EXPECT_EQ(h.Get("About.WebsiteLbl.ForeColor"), "503197");
  h.Do("click About.CloseCmd");
  EXPECT_EQ(h.Do("forms\nclick MainMenu.ExitCmd"), "form MainMenu visible\nended\n");
}

TEST(ProductMenu, OffersTheToolsOfTheProduct) {
  const std::string always = "ReturnCmd 5925\nExitCmd 5925\n";
  const struct {
    const char *clicks, *tools;
  } rows[] = {
      {"click MainMenu.RB2000Cmd", "ConfigureCmd 3000\nOfflineCmd 3600\n"},
      {"click MainMenu.RB3000Cmd", "ConfigureCmd 3000\nOfflineCmd 3600\n"},
      {"click MainMenu.RBCardCmd", "ConfigureCmd 3000\nOfflineCmd 3600\n"},
      {"click MainMenu.VK5300Cmd", "ConfigureCmd 3000\nDeviceInfoCmd 3600\nOfflineCmd 4200\n"},
      {"click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd",
       "ConfigureCmd 3000\nUpgradeCmd 3600\nOfflineCmd 4800\n"},
  };
  for (const auto& row : rows) {
    Harness h;
    h.Do("click Splash");
    h.Do(row.clicks);
    EXPECT_EQ(ShownButtons(h, "ProductMenu"), row.tools + always) << row.clicks;
  }
}

TEST(ProductMenu, TestsThePortAtTheMomentOfTheChoice) {
  Harness h;
  h.GoTo("RB2000Cmd");
  EXPECT_EQ(h.Get("ProductMenu.Caption"), "RB2000 Main Menu");
  EXPECT_EQ(h.Get("ProductMenu.DescLbl.Caption"),
            "Select the COM Port that will be used to communicate with the RB2000.");
  EXPECT_EQ(h.Get("ProductMenu.COMCbo.Text"), "None");
  EXPECT_EQ(h.app.forms.Find("ProductMenu")->Get<ComboBox>("COMCbo").Entries().size(), 33u);
  h.driver.Plug("COM4", nullptr);
  EXPECT_EQ(h.Do("select ProductMenu.COMCbo COM4"), "");
  EXPECT_EQ(h.driver.calls.back(), "Close");
  EXPECT_EQ(h.app.globals.ComPortText, "COM4");

  // Another product shows the last port, with no test.
  h.driver.calls.clear();
  h.Do("click ProductMenu.ReturnCmd\nclick MainMenu.RBCardCmd");
  EXPECT_EQ(h.Get("ProductMenu.COMCbo.Text"), "COM4");
  EXPECT_TRUE(h.driver.calls.empty());

  h.Do("select ProductMenu.COMCbo None");
  EXPECT_EQ(h.app.globals.ComPortText, "None");
  EXPECT_EQ(h.app.globals.ComPortNumber, 4);

  EXPECT_EQ(
      h.Do("select ProductMenu.COMCbo COM31"),
      "box information \"INVALID COM PORT!!! Please Select Again.\" \"UNABLE TO OPEN COM PORT,  Error: Error (2): "
      "CommOpen (CreateFile) - words of 2\" -> OK\n");
  EXPECT_EQ(h.Get("ProductMenu.COMCbo.Text"), "None");
  EXPECT_EQ(h.app.globals.ComPortText, "None");
  EXPECT_EQ(h.app.globals.ComPortNumber, 31);
}

TEST(Subs, WizardButtonsFollowThePage) {
  const struct {
    int page, last, next;
    const char* backShown;
  } rows[] = {{0, 4, 111, "False"}, {1, 4, 111, "True"}, {4, 4, 117, "True"}, {0, 0, 111, "False"}};
  Harness h;
  h.GoTo("RB2000Cmd");
  h.Do("click ProductMenu.ConfigureCmd");
  for (const auto& row : rows) {
    UpdateWizardButtons(*h.app.forms.Find("Configuration_RB2000"), row.page, row.last);
    EXPECT_EQ(h.Get("Configuration_RB2000.NextCmd.Picture"), std::to_string(row.next)) << row.page;
    EXPECT_EQ(h.Get("Configuration_RB2000.BackCmd.Visible"), row.backShown) << row.page;
  }
}

TEST(Subs, Addresses) {
  const struct {
    const char* text;
    bool strict, loose;
  } rows[] = {{"0.0.0.0", true, true},      {"255.255.255.255", true, true}, {"256.1.1.1", false, false},
              {"1.2.3", false, false},      {"1.2.3.x", false, true},        {"", false, false},
              {"-1.2.3.4", false, false},   {"1.2.3.4.5", true, true},       {"1.2.3.1e2", true, true},
              {"1.2.3.", false, true},      {"1.2.3.4.5.6", false, true},    {"1..3.4", false, true},
              {"1.2.3.1e999", false, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(ValidateIPAddress(row.text), row.strict ? 0 : 1) << row.text;
    EXPECT_EQ(IsIPAddress(row.text), row.loose) << row.text;
  }
  EXPECT_EQ(ByteToHex(10) + ByteToHex(0) + ByteToHex(255), "0A00FF");
}

}  // namespace
}  // namespace vk32
