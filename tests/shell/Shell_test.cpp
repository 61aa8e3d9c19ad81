// The shell: splash page, menus, port choice, the small procedures that all forms share.
#include <gtest/gtest.h>

#include "shell/Subs.h"
#include "shell/WizardPages.h"
#include "shell/modCloseBtn.h"
#include "support/EveryControl.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

TEST(Splash, LeavesByItsTimerByAClickOrByItsWindow) {
  Harness byTimer, byClick, byWindow;
  const std::string both = "form MainMenu hidden\nform Splash visible\n", menu = "form MainMenu visible\n";
  EXPECT_EQ(byTimer.Do("forms\nwait 1799\nforms\nwait 1\nforms"), both + both + menu);
  byClick.Do("click Splash\nclick MainMenu.RB2000Cmd\nwait 4000");
  EXPECT_EQ(byClick.Do("forms"), "form ProductMenu visible\n");  // the timer does nothing afterwards
  EXPECT_EQ(byWindow.Get("Splash.VersionLbl.Caption"), "Version  1.8.11");
  byWindow.app.forms.Find("Splash")->UserCloses();
  EXPECT_EQ(byWindow.Do("forms"), menu);
}

/// The names of the buttons of a form that can be seen, with their tops.
std::string ShownButtons(Harness& h, const std::string& form) {
  std::string shown;
  for (const Control* control : h.app.forms.Find(form)->Controls()) {
    if (control->GetKind() != Control::Kind::ImageButton || !control->Shown()) continue;
    shown += std::string(control->Name()) + " " + std::to_string(control->Top) + " ";
  }
  return shown;
}

TEST(MainMenu, ShowsProductsOrModels) {
  const std::string products =
      "VK5300Cmd 2520 VKRTXCmd 3120 RB3000Cmd 3720 RB2000Cmd 4320 RBCardCmd 4920 AboutCmd 5925 ExitCmd 5925 ";
  const std::string models = "ABEthAsciiDf1ModelCmd 2520 ABEthModbusModelCmd 3120 ReturnCmd 5925 ExitCmd 5925 ";
  // Loaded again it starts with the products, whatever the last choice was.
  const std::pair<const char*, std::string> rows[] = {
      {"click Splash", products + "Products Select a product from the menu on the left."},
      {"click MainMenu.VKRTXCmd", models + "Models Select a model from the menu on the left."},
      {"click MainMenu.ReturnCmd", products + "Products Select a product from the menu on the left."},
      {"click MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd\nclick ProductMenu.ReturnCmd",
       products + "Products Select a product from the menu on the left."}};
  Harness h;
  for (const auto& [clicks, shown] : rows) {
    h.Do(clicks);
    EXPECT_EQ(ShownButtons(h, "MainMenu") + h.Get("MainMenu.ProductModelLbl.Caption") + " " +
                  h.Get("MainMenu.SelectLbl.Caption"),
              shown);
  }
}

const std::string Rb = "CHA:  Red|CHB:  Green|CHC:  Red|Power:  Green", Plain = "ConfigureCmd 3000 OfflineCmd 3600 ";
const std::string Rtx = "CHA:  Off|CHB:  Off|Diagnostic:  Flashing Green|Power:  Green";
const std::string Upgrade = "ConfigureCmd 3000 UpgradeCmd 3600 OfflineCmd 4800 ";
const struct {
  std::string clicks, chosen, leds, tools, blocks;
} Choices[] = {{"RB2000Cmd", "RB2000//9600", Rb, Plain, ""},
               {"RB3000Cmd", "RB3000//19200", Rb, Plain, ""},
               {"RBCardCmd", "RBCard//19200", "Status:  Red|Net:      Off|Bus:      Green", Plain, ""},
               {"VK5300Cmd", "VK5300//19200", "Net Status:  Off|DH Network:  Off|Mod Status:  Flashing Green",
                "ConfigureCmd 3000 DeviceInfoCmd 3600 OfflineCmd 4200 ", " 1 3"},
               {"VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd", "VK-RTX/AB Ethernet, ASCII, DF1/19200", Rtx, Upgrade,
                " 12 1 2 3 4 5 10 50 51 100 101 102 103"},
               {"VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd", "VK-RTX/AB Ethernet, Modbus/19200", Rtx, Upgrade,
                " 25 1 2 3 4 20 21 22 23 24 25 26 30 31 32 33 34 35 36 37 38 39 40 41 42 43"}};

TEST(MainMenu, AChoiceFillsTheSharedVariables) {
  for (const auto& choice : Choices) {
    Harness h;
    h.GoTo(choice.clicks);
    const Globals& globals = h.app.globals;
    EXPECT_EQ(globals.CurrentProduct + "/" + globals.CurrentModel + "/" + globals.BaudRate, choice.chosen);
    std::string leds, blocks;
    for (const std::string& line : Split(choice.leds, '|')) leds += (leds.empty() ? "     " : "\r\n     ") + line;
    for (const auto block : globals.BlockList) blocks += " " + std::to_string(block);
    EXPECT_EQ(globals.LEDPatternText + blocks, leds + choice.blocks);
    EXPECT_EQ(h.Get("ProductMenu.Caption") + "|" + h.Get("ProductMenu.DescLbl.Caption"),
              globals.CurrentProduct + " Main Menu|Select the COM Port that will be used to communicate with the " +
                  globals.CurrentProduct + ".");
  }
}

TEST(MainMenu, TheBandShowsTheVersionAndThatTheLinkIsPressed) {
  Harness h;
  h.Do("click Splash\nclick MainMenu.AboutCmd\nclick MainMenu.AboutCmd");
  EXPECT_EQ(h.Do("forms"), "form MainMenu visible\nform About visible\n");
  for (const auto& [link, atRest] :
       {std::pair<std::string, const char*>{"MainMenu.WebsiteLbl", "8621446"}, {"About.WebsiteLbl", "503197"}}) {
    EXPECT_EQ(h.Get(link.substr(0, link.find('.')) + ".VersionLbl.Caption"), "Version  1.8.11");
    h.Do("down " + link);
    EXPECT_EQ(h.Get(link + ".ForeColor"), "2368684");
    EXPECT_EQ(h.Do("up " + link), "");
    EXPECT_EQ(h.Get(link + ".ForeColor"), atRest);
    EXPECT_EQ(h.Do("click " + link), "web \"https://www.norvanta.example/\"\n");
  }
  h.app.forms.Find("About")->UserCloses();  // as its button does
  EXPECT_EQ(h.Do("forms\nclick MainMenu.ExitCmd"), "form MainMenu visible\nended\n");
}

TEST(ProductMenu, AToolThatIsOpenComesInFrontAndAWizardGoesWithItsProduct) {
  for (const auto& choice : Choices) {
    GatewayDevice device{"VK5300"};
    Harness h;
    h.GoTo(choice.clicks, &device);
    EXPECT_EQ(ShownButtons(h, "ProductMenu"), choice.tools + "ReturnCmd 5925 ExitCmd 5925 ");
    const auto onTopAfter = [&h](const std::string& button) -> std::string {
      h.Do("click ProductMenu." + button);
      EXPECT_TRUE(h.app.forms.Loaded().back()->Visible) << button;
      return h.app.forms.Loaded().back()->Name();
    };
    const std::string wizard = onTopAfter("ConfigureCmd");
    for (const std::string& word : Split(choice.tools)) {
      if (word.find("Cmd") == std::string::npos) continue;
      const std::string tool = onTopAfter(word);
      EXPECT_EQ(onTopAfter("ConfigureCmd"), wizard);
      EXPECT_EQ(onTopAfter(word), tool);
    }
    for (const auto& next : Choices) {
      Harness other;
      other.GoTo(choice.clicks);
      other.Do("click ProductMenu.ConfigureCmd\nclick ProductMenu.ReturnCmd\nclick MainMenu." + next.clicks);
      EXPECT_EQ(other.app.forms.Find(wizard) != nullptr, &next == &choice) << choice.chosen << next.chosen;
    }
  }
}

TEST(ProductMenu, TestsThePortAtTheMomentOfTheChoice) {
  Harness h;
  h.GoTo("RB2000Cmd");
  h.driver.Plug("COM4", nullptr);
  EXPECT_EQ(h.Do("items ProductMenu.COMCbo").substr(0, 23), "item \"None\"\nitem \"COM1\"");
  /// What the commands print, whether the port was opened, and what is chosen then.
  const auto after = [&](const std::string& commands) {
    h.driver.calls.clear();
    const std::string printed = h.Do(commands),
                      chosen = h.Get("ProductMenu.COMCbo.Text") + " " + h.app.globals.ComPortText;
    return printed +
           (h.driver.calls.empty()             ? ""
            : h.driver.calls.back() == "Close" ? "closed "
                                               : "tried ") +
           chosen + " " + std::to_string(h.app.globals.ComPortNumber);
  };
  const std::string box =
      "box information \"INVALID COM PORT!!! Please Select Again.\" \"UNABLE TO OPEN COM PORT,  Error: Error ";
  EXPECT_EQ(after("select ProductMenu.COMCbo COM4"), "closed COM4 COM4 4");
  EXPECT_EQ(after("click ProductMenu.ReturnCmd\nclick MainMenu.RBCardCmd"), "COM4 COM4 4");
  EXPECT_EQ(after("select ProductMenu.COMCbo None"), "None None 4");
  EXPECT_EQ(after("select ProductMenu.COMCbo COM32"),
            box + "(2): CommOpen (CreateFile) - words of 2\" -> OK\ntried None None 32");
  h.driver.Fail("SetState", 5);  // it opens halfway, and is closed again
  EXPECT_EQ(after("select ProductMenu.COMCbo COM4"),
            box + "(5): CommOpen (SetCommState) - words of 5\" -> OK\nclosed None None 4");
}

TEST(Subs, ButtonsAndStepsFollowThePage) {
  Harness h;
  EveryControl& form = EveryControl::Open(h.app.forms);
  const std::vector<WizardPage> pages = {{&form.NameLbl, {&form.FirstFrame}},
                                         {&form.StepLbl, {&form.SecondFrame, &form.HeadFrame}}};
  const std::pair<int, const char*> rows[] = {{0, "|111|114|False|True|False|720"},  // the way back does not show
                                              {1, "|111|113|True|False|True|1440"},
                                              {4, "|117|113|True|False|True|1440"},
                                              {-1, "|111|113|True|False|True|1440"}};
  form.BackCmd.Press();
  for (const auto& [page, shown] : rows) {
    UpdateWizardButtons(form, page, 4);
    ShowPageStep(pages, page, form.MarkFrame);
    ShowPageFrame(pages, page);
    EXPECT_EQ(Seen({&form.NextCmd.Picture, &form.BackCmd.Picture, &form.BackCmd.Visible, &form.FirstFrame.Visible,
                    &form.SecondFrame.Visible, &form.MarkFrame.Top}),
              shown)
        << page;
  }
  UpdateWizardButtons(form, 0, 0);
  EXPECT_EQ(form.NextCmd.Picture, 111);
  EXPECT_FALSE(form.HeadFrame.Visible);
  EXPECT_EQ(form.StepLbl.ForeColor, StepCurrent);
  EXPECT_EQ(form.NameLbl.ForeColor, StepOther);
  EXPECT_EQ(EnableCloseButton(form, false), 0);
  EXPECT_FALSE(form.CloseEnabled);
  EXPECT_EQ(EnableCloseButton(*std::make_shared<EveryControl>(h.app.forms), true), -1);
}

TEST(Subs, Addresses) {
  const std::pair<const char*, std::vector<const char*>> rows[] = {
      {"good", {"0.0.0.0", "255.255.255.255", "1.2.3.4.5", "1.2.3.1e2"}},
      {"good to the looser check", {"1.2.3.x", "1.2.3.", "1.2.3.4.5.6", "1..3.4"}},
      {"bad", {"256.1.1.1", "1.2.3", "", "-1.2.3.4", "1.2.3.1e999"}}};
  for (const auto& [kind, texts] : rows) {
    for (const std::string text : texts) {
      const bool good = ValidateIPAddress(text) == 0, loose = IsIPAddress(text);
      EXPECT_EQ(good ? loose ? "good" : "?" : loose ? "good to the looser check" : "bad", kind) << text;
    }
  }
  EXPECT_EQ(ByteToHex(10) + ByteToHex(0) + ByteToHex(255), "0A00FF");
}

}  // namespace
}  // namespace vk32
