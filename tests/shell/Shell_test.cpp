// The shell: splash page, menus, port choice, the small procedures that all forms share.
#include "shell/Subs.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

const std::string Menu = "form MainMenu visible\n";

TEST(Splash, LeavesByItsTimerByAClickOrByItsWindow) {
  Harness byTimer, byClick, byWindow;
  const std::string both = "form MainMenu hidden\nform Splash visible\n";
  EXPECT_EQ(byTimer.Do("forms\nwait 1799\nforms\nwait 1\nforms"), both + both + Menu);
  byClick.Do("click Splash\nclick MainMenu.RB2000Cmd\nwait 4000");
  EXPECT_EQ(byClick.Do("forms"), "form ProductMenu visible\n");  // the timer does nothing afterwards
  byWindow.app.forms.Find("Splash")->UserCloses();
  EXPECT_EQ(byWindow.Do("forms"), Menu);
}

/// The buttons of a form that can be seen, each with a blank behind it.
std::string ShownButtons(Harness& h, const std::string& form) {
  std::string shown;
  for (const Control* control : h.app.forms.Find(form)->Controls()) {
    const bool isButton = control->GetKind() == Control::Kind::ImageButton;
    if (isButton && control->Shown()) shown += std::string(control->Name()) + " ";
  }
  return shown;
}

TEST(MainMenu, ShowsProductsOrModels) {
  Harness h;
  const auto after = [&h](const std::string& clicks) {
    h.Do(clicks);
    return ShownButtons(h, "MainMenu") + h.Get("MainMenu.ProductModelLbl.Caption");
  };
  const std::string products = "VK5300Cmd VKRTXCmd RB3000Cmd RB2000Cmd RBCardCmd AboutCmd ExitCmd Products";
  EXPECT_EQ(after("click Splash"), products);
  EXPECT_EQ(after("click MainMenu.VKRTXCmd"), "ABEthAsciiDf1ModelCmd ABEthModbusModelCmd ReturnCmd ExitCmd Models");
  EXPECT_EQ(after("click MainMenu.ReturnCmd\nclick MainMenu.VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd\n"
                  "click ProductMenu.ReturnCmd"),
            products);
}

TEST(MainMenu, OpensAboutOnceAndTheWebAndEnds) {
  Harness h;
  h.Do("click Splash\nclick MainMenu.AboutCmd\nclick MainMenu.AboutCmd");
  const std::string web = "web \"https://www.norvanta.example/\"\n";
  EXPECT_EQ(h.Do("forms\nclick About.WebsiteLbl\nclick MainMenu.WebsiteLbl"),
            Menu + "form About visible\n" + web + web);
  h.app.forms.Find("About")->UserCloses();  // as its button does
  EXPECT_EQ(h.Do("forms\nclick MainMenu.ExitCmd"), Menu + "ended\n");
}

TEST(About, SavesWhatTheMakerNeeds) {
  const TemporaryFile file("support.txt");
  const std::string save = "click ProductMenu.ReturnCmd\nclick MainMenu.AboutCmd\nclick About.SupportCmd\n",
                    head =
                        "VK32 support file\nDate: 2026-11-25 21:40\nProgram: VK32 " + ProgramVersion() + "\nSystem: ",
                    ports = "\n\nPorts found\n  none\n",
                    last = "\nLast exchanges (ms since the start of the program, > sent, < came)\n";
  GatewayDevice device("RBCard");
  Harness h;
  h.GoTo("RBCardCmd", &device);
  h.Do("file " + file.Path() + "\n" + save);
  EXPECT_EQ(h.Get("About.SupportLbl.Caption"), "Saved as " + file.Path());
  EXPECT_TRUE(file.Content().starts_with(head)) << file.Content();
  EXPECT_TRUE(file.Content().ends_with("Product: RBCard\nPort: COM3" + ports + last + "  none\n")) << file.Content();
  h.Do("click MainMenu.RBCardCmd\nclick ProductMenu.ConfigureCmd\nclick Configuration_RBCard.UploadCmd");
  EXPECT_NE(h.Do("file /nowhere/x\n" + save).find("box critical \"Error!\" \"The folder"), std::string::npos);
  h.Do("file " + file.Path() + "\nclick About.SupportCmd");
  for (const std::string& part :
       {ports + "\nConfiguration of the RBCard\n  Values: Read from COM3, 21:40\n  Changed: No changes\n"
                "\nDH+ Communication Settings\n  DH+ Parameters\n    Network Mode: DH+\n",
        last + "       0.000 > 54 45 45  image upload\n"}) {
    EXPECT_NE(file.Content().find(part), std::string::npos) << file.Content();
  }
  h.Do("click About.CloseCmd");
  EXPECT_FALSE(h.app.forms.Find("About"));
}

const std::string Plain = "ConfigureCmd OfflineCmd ", Upgrade = "ConfigureCmd UpgradeCmd OfflineCmd ";
const struct {
  std::string clicks, chosen, firstLed, tools, blocks{};
} Choices[] = {{"RB2000Cmd", "RB2000//9600", "CHA:  Red", Plain},
               {"RB3000Cmd", "RB3000//19200", "CHA:  Red", Plain},
               {"RBCardCmd", "RBCard//19200", "Status:  Red", Plain},
               {"VK5300Cmd", "VK5300//19200", "Net Status:  Off", "ConfigureCmd DeviceInfoCmd OfflineCmd ", " 1 3"},
               {"VKRTXCmd\nclick MainMenu.ABEthAsciiDf1ModelCmd", "VK-RTX/AB Ethernet, ASCII, DF1/19200", "CHA:  Off",
                Upgrade, " 12 1 2 3 4 5 10 50 51 100 101 102 103"},
               {"VKRTXCmd\nclick MainMenu.ABEthModbusModelCmd", "VK-RTX/AB Ethernet, Modbus/19200", "CHA:  Off",
                Upgrade, " 25 1 2 3 4 20 21 22 23 24 25 26 30 31 32 33 34 35 36 37 38 39 40 41 42 43"}};

TEST(Links, ShowThePointerAndThePress) {
  Harness h;
  h.Do("click Splash");
  for (const char* name : {"MainMenu", "About", "DDTAExplanationFrm"}) {
    Form& form = h.app.forms.Show(name);
    int found = 0;
    for (Control* control : form.Controls()) {
      auto* label = dynamic_cast<Label*>(control);
      const bool moves = label && label->OnMouseMove && label->role == TextRole::BodyLink;
      if (!moves && !(label && label->OnMouseDown)) continue;
      const Color rest = label->ForeColor;
      label->MouseMove(), label->Press();
      EXPECT_NE(label->ForeColor.Value(), rest) << label->FullName();
      label->Release(), form.MouseMove();
      EXPECT_EQ(label->ForeColor.Value(), rest) << label->FullName();
      ++found;
    }
    EXPECT_GT(found, 0) << name;
  }
}

TEST(ProductMenu, AChoiceFillsTheSharedVariablesAndTakesWizardsAlong) {
  for (const auto& choice : Choices) {
    GatewayDevice device{"VK5300"};
    Harness h;
    h.GoTo(choice.clicks, &device);
    const Globals& globals = h.app.globals;
    EXPECT_EQ(globals.CurrentProduct + "/" + globals.CurrentModel + "/" + globals.BaudRate, choice.chosen);
    std::string blocks;
    for (const auto block : globals.BlockList) blocks += " " + std::to_string(block);
    EXPECT_EQ(blocks, choice.blocks);
    EXPECT_TRUE(globals.LEDPatternText.starts_with("     " + choice.firstLed + "\r\n     ")) << choice.chosen;
    EXPECT_EQ(ShownButtons(h, "ProductMenu"), choice.tools + "ReturnCmd ExitCmd ");
    const auto onTopAfter = [&h](const std::string& button) -> std::string {
      h.Do("click ProductMenu." + button);
      EXPECT_TRUE(h.app.forms.Loaded().back()->Visible) << button;
      return h.app.forms.Loaded().back()->Name();
    };
    const std::string wizard = onTopAfter("ConfigureCmd");
    for (const std::string& word : Split(choice.tools)) {
      const std::string tool = onTopAfter(word);
      EXPECT_EQ(onTopAfter("ConfigureCmd") + onTopAfter(word), wizard + tool);  // it comes in front
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
  /// What the commands print, the driver's last call, and what is chosen then.
  const auto after = [&](const std::string& commands) {
    h.driver.calls.clear();
    const std::string printed = h.Do(commands), last = h.driver.calls.empty() ? "" : h.driver.calls.back() + " ",
                      shown = h.Get("ProductMenu.COMCbo.Text");
    return printed + last + shown + " " + h.app.globals.ComPortText + " " + std::to_string(h.app.globals.ComPortNumber);
  };
  const std::string box =
      "box information \"INVALID COM PORT!!! Please Select Again.\" \"UNABLE TO OPEN COM PORT,  Error: Error ";
  const std::string choose = "select ProductMenu.COMCbo ";
  EXPECT_EQ(after(choose + "COM4"), "Close COM4 COM4 4");
  EXPECT_EQ(after("click ProductMenu.ReturnCmd\nclick MainMenu.RBCardCmd"), "COM4 COM4 4");
  EXPECT_EQ(after(choose + "None"), "None None 4");
  EXPECT_EQ(after(choose + "COM32"),
            box + "(2): CommOpen (CreateFile) - words of 2\" -> OK\nOpen \\\\.\\COM32 None None 32");
  h.driver.Fail("SetState", 5);  // it opens halfway, and is closed again
  EXPECT_EQ(after(choose + "COM4"), box + "(5): CommOpen (SetCommState) - words of 5\" -> OK\nClose None None 4");
}

TEST(Subs, Addresses) {
  const std::pair<const char*, std::vector<const char*>> rows[] = {
      {"both", {"0.0.0.0", "255.255.255.255", "1.2.3.4.5", "1.2.3.1e2"}},
      {"looser", {"1.2.3.x", "1.2.3.", "1.2.3.4.5.6", "1..3.4"}},
      {"none", {"256.1.1.1", "1.2.3", "", "-1.2.3.4", "1.2.3.1e999"}}};
  for (const auto& [checks, texts] : rows) {
    for (const std::string text : texts) {
      const bool strict = ValidateIPAddress(text) == 0;
      EXPECT_EQ(!IsIPAddress(text) ? "none" : strict ? "both" : "looser", checks) << text;
    }
  }
}

}  // namespace
}  // namespace vk32
