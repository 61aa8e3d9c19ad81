// What the wizards of all products have in common: they start anew each time, and open their own whole files alone.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

constexpr struct Model {
  const char *product, *clicks, *kind, *ethernet;  // kind: in the simulator
} Models[] = {
    {"RB2000", "", "RB2000", ""},
    {"RB3000", "", "RB3000", ""},
    {"RBCard", "", "RBCard", ""},
    {"VK5300", "", "VK5300", "to EthComFrame\nselect EthDHCPLst Enabled\n"},
    {"VKRTX", "\nclick MainMenu.ABEthAsciiDf1ModelCmd", "VK-RTX-DF1", "to EthComFrame\nselect EthDHCPLst Enabled\n"},
    {"VKRTX", "\nclick MainMenu.ABEthModbusModelCmd", "VK-RTX-Modbus", "to EthComFrame\nselect EthDHCPLst Enabled\n"}};

/// What the pages show.
std::string State(WizardUser& user) {
  std::string state;
  for (const Control* control : user.app.forms.Find(user.form)->Controls()) {
    for (const char* name : {"Text", "Value", "Visible"}) {
      if (const auto* property = control->FindProperty(name)) state += " " + control->FullName() + property->AsText();
    }
  }
  return state;
}

void ChangeEverything(WizardUser& user) {
  for (Control* control : user.app.forms.Find(user.form)->Controls()) {
    if (auto* list = dynamic_cast<ComboBox*>(control)) list->ListIndex = static_cast<int>(list->Entries().size()) - 1;
    if (auto* box = dynamic_cast<TextBox*>(control)) box->Text = "7";
    if (auto* check = dynamic_cast<CheckBox*>(control)) check->Value = 1;
    if (auto* option = dynamic_cast<OptionButton*>(control)) option->Value = true;
  }
}

TEST(Wizards, StartAnewEachTime) {
  for (const Model& model : Models) {
    GatewayDevice first(model.kind), second(model.kind);
    WizardUser fresh(model.product, &first, model.clicks), user(model.product, &second, model.clicks);
    const std::string before = State(user), finish = std::string(model.ethernet) + "finish DownOpt";
    user.Use("click UploadCmd");
    ChangeEverything(user);
    user.Use("again");
    EXPECT_EQ(State(user), before);
    EXPECT_EQ(fresh.Use(finish) + user.Use(finish), "reminder\nsuccess\nreminder\nsuccess\n");
    EXPECT_EQ(ToHex(second.gateway.Image()), ToHex(first.gateway.Image()));
    EXPECT_EQ(second.gateway.BlocksInForce(), first.gateway.BlocksInForce()) << model.kind;
  }
}

TEST(Wizards, OpenTheirOwnWholeFilesAlone) {
  TemporaryFile file("gateway.cfg");
  std::vector<std::string> contents;
  for (const Model& model : Models) {
    WizardUser(model.product, nullptr, model.clicks).Use(std::string(model.ethernet) + "finish SaveOpt " + file.Path());
    contents.push_back(file.Content());
  }
  for (std::size_t own = 0; own < contents.size(); ++own) {
    WizardUser user(Models[own].product, nullptr, Models[own].clicks);
    ChangeEverything(user);
    const auto registers = [&] { return ToHex(user.app.globals.RegistersToString(0, 224)); };
    const std::string before = State(user) + registers(), open = "open " + file.Path() + "\npage";
    for (std::size_t other = 0; other < contents.size(); ++other) {
      if (other == own) continue;
      file.Fill(contents[other]);
      EXPECT_EQ(user.Use(open), "not for it\nConfigFrame");
    }
    // Cut off behind a line, or with a line that is none.
    const auto lines = Split(contents[own], '\n');
    std::string start;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      file.Fill(start);
      EXPECT_TRUE(user.Use(open).ends_with("\nConfigFrame")) << start;
      file.Fill(start + "x" + contents[own].substr(start.size()));
      EXPECT_TRUE(user.Use(open).ends_with("\nConfigFrame")) << start;
      start += lines[i] + "\n";
    }
    EXPECT_EQ(State(user) + registers(), before);
    file.Fill(contents[own] + "more");
    EXPECT_EQ(user.Use("open " + file.Path()), "");
    EXPECT_NE(State(user) + registers(), before);
  }
}

}  // namespace
}  // namespace vk32
