// Saving and opening of configuration files, through the dialogs.
#include "core/OpenSave.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/TestWizard.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

/// What happens behind the dialog, which is answered by the path; cancelled without one.
std::string Behind(Harness& h, const std::string& button, const std::string& path = {}) {
  h.Do("file " + (path.empty() ? "cancel" : path));
  const std::string told = h.Do("click TestWizard." + button);
  const std::string filter = h.app.globals.CurrentProduct + " Configuration Files (*.cfg)|*.cfg";
  const std::string dialog = button == "SaveCmd"
                                 ? "save \"Save Configuration File\" \"" + filter + "\" -> "
                                 : "open \"Select Configuration File\" \"" + filter + "|All Files (*.*)|*.*\" -> ";
  const std::string begins = "dialog " + dialog + (path.empty() ? "cancelled" : "\"" + path + "\"") + "\n";
  EXPECT_EQ(told.substr(0, begins.size()), begins);
  return told.substr(begins.size());
}

TEST(OpenSave, SavesWhereTheUserSays) {
  const TemporaryFile file("a b.cfg");
  WizardHarness h("RB3000");
  h.app.globals.LoadRegisters("\5\1", 0);
  EXPECT_EQ(Behind(h, "SaveCmd", file.Path()), "True\n");
  EXPECT_EQ(file.Content(), "\"RB3000\"\r\n\"Tag\"\r\n5,1\r\n");
  EXPECT_EQ(Behind(h, "SaveCmd"), "False\n");  // the path of the last time is no answer
}

TEST(OpenSave, AFailedSaveLeavesTheOldFileAndTellsNothing) {
  const TemporaryFile file("old.cfg");
  file.Fill("old");
  const fs::path folder = fs::path(file.Path()).parent_path();
  WizardHarness h("RB3000");
  EXPECT_EQ(Behind(h, "SaveCmd", folder / "nowhere" / "new.cfg"), "False\n");
  h.app.globals.RegisterLow[0] = 256;  // faults in the middle of the record
  EXPECT_EQ(Behind(h, "SaveCmd", file.Path()), "False\n");
  EXPECT_EQ(file.Content(), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST(OpenSave, OpensWhatIsForTheProductAndLeavesAllElse) {
  const std::string taken = "setup RB\nTrue\n";
  const std::string other =
      "box exclamation \"Error!\" \"The selected configuration file is not for the RB3000.\" -> OK\nFalse\n";
  const std::string broken =
      "box critical \"Error!\" \"An error occured while attempting to open the configuration file.\" -> OK\nFalse\n";
  const std::pair<std::string, std::vector<const char*>> rows[] = {
      {taken, {"'RB3000'\r\n'Tag'\r\n5,1\r\n", "'RB3000','Tag',5,1"}},
      {other,
       {"'RB2000','Tag',5,1", "'RB3000','Other',5,1", "'rb3000','Tag',5,1", "'RB3000','tag',5,1", "'RB3000 ','Tag',5,1",
        "'RB3000','Other',5", "'RB3000'", ""}},
      {broken,
       {"'RB3000','Tag'", "'RB3000','Tag',5", "'RB3000','Tag',5,x", "'RB3000','Tag',5,256",
        "'RB2000','Tag',5"}}};  // a broken file is asked for its tag alone
  for (const auto& [told, contents] : rows) {
    for (std::string content : contents) {
      const TemporaryFile file("test.cfg");
      std::replace(content.begin(), content.end(), '\'', '"');
      file.Fill(content);
      WizardHarness h("RB3000");
      h.app.globals.LoadRegisters("MN", 0);
      EXPECT_EQ(Behind(h, "OpenCmd", file.Path()), told) << content;
      EXPECT_EQ(h.app.globals.RegistersToString(0, 1), told == taken ? "\5\1" : "MN") << content;
      EXPECT_EQ(Behind(h, "OpenCmd"), "False\n");
      EXPECT_EQ(Behind(h, "OpenCmd", file.Path() + "x"), broken);
    }
  }
}

TEST(OpenSave, EachProductSetsUpItsOwnHalves) {
  const std::pair<const char*, std::string> rows[] = {{"RB2000", "setup RB\n"},
                                                      {"RB3000", "setup RB\n"},
                                                      {"RBCard", "setup RB\n"},
                                                      {"VK-RTX", "setup VK\n"},
                                                      {"VK5300", "setup VK\nsetup RB\n"}};
  for (const auto& [product, told] : rows) {
    const TemporaryFile file("test.cfg");
    WizardHarness h(product);
    EXPECT_EQ(Behind(h, "SaveCmd", file.Path()), "True\n");
    EXPECT_EQ(Behind(h, "OpenCmd", file.Path()), told + "True\n");
  }
}

}  // namespace
}  // namespace vk32
