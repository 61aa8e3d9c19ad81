// The told controls of all forms are what they have always been: their names, kinds, places and words. VK32_KEEP=FILE
// writes them as they are now. Each form has its page of the manual.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <utility>

#include "app/ManualPages.h"
#include "core/Convert.h"
#include "script/Quoting.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

std::string Line(const Form& form, const Control& control) {
  std::string line = form.Name() + ("." + control.FullName()) + " " + std::string(control.KindName());
  for (const int twips : {control.Left.Value(), control.Top.Value(), control.Width.Value(), control.Height.Value()}) {
    line += " " + Str(twips);
  }
  return line + " " + Quote(control.Words());
}

/// All stands on whole pixels, and the tab order never goes back to what is above or in the same row further left.
void ExpectOrder(const Form& form) {
  using Kind = Control::Kind;
  static const std::set<Kind> stops{Kind::TextBox,      Kind::ComboBox,    Kind::CheckBox,
                                    Kind::OptionButton, Kind::ImageButton, Kind::CommandButton};
  std::map<int, const Control*> order;
  for (const Control* control : form.Controls()) {
    for (const int twips :
         {control->Left.Value(), control->Top.Value(), control->Width.Value(), control->Height.Value()}) {
      EXPECT_TRUE(twips % 15 == 0 || twips % 15 == 7) << Line(form, *control);  // 7: in the middle between two
    }
    EXPECT_TRUE(order.emplace(control->TabIndex, control).second) << Line(form, *control);
  }
  std::map<const Frame*, const Control*> before;
  for (const auto& [index, control] : order) {
    if (!stops.contains(control->GetKind()) || !control->Visible) continue;
    const Control* last = std::exchange(before[control->Parent()], control);
    EXPECT_TRUE(!last || last->Name() == std::string("COMCbo") || control->Top > last->Top ||
                control->Left > last->Left)
        << Line(form, *last) << Line(form, *control);
  }
}

TEST(ToldForms, KeepTheirControls) {
  Harness h;
  h.app.globals.CurrentProduct = "VK-RTX";
  h.app.globals.OwnerForm = "Configuration_VKRTX";
  std::set<std::string> lines;
  for (const char* model : {"AB Ethernet, ASCII, DF1", "AB Ethernet, Modbus"}) {
    h.app.globals.CurrentModel = model;
    h.app.forms.Load("Configuration_VKRTX");  // the editors of its tables need it
    for (const std::string& name : h.app.forms.Names()) {
      const Form& form = h.app.forms.Load(name);
      const std::string page = VK32_MANUAL "/" + std::string(ManualPage(name)) + ".adoc";
      EXPECT_TRUE(std::filesystem::exists(page)) << name << ": " << page;
      for (const Control* control : form.Controls()) lines.insert(Line(form, *control));
      ExpectOrder(form);
    }
    h.app.forms.UnloadAll();
  }
  if (const char* path = std::getenv("VK32_KEEP")) {
    std::ofstream kept(path);
    for (const std::string& line : lines) kept << line << "\n";
  }
  std::ifstream file(VK32_TOLD);
  int told = 0;
  for (std::string line; std::getline(file, line); ++told) EXPECT_TRUE(lines.contains(line)) << line;
  EXPECT_GT(told, 1500);
}

}  // namespace
}  // namespace vk32
