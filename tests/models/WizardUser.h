// A user at the wizard of a product, and the device beside it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/Convert.h"
#include "forms/Tables.h"
#include "support/Harness.h"

namespace vk32 {

/// A wizard that there is: the simulator's name of its product and model, its own, and what more leads to the model.
struct TestedModel {
  const char *kind, *wizard, *clicks;
};
constexpr TestedModel TestedModels[] = {{"RB2000", "RB2000", ""},
                                        {"RB3000", "RB3000", ""},
                                        {"RBCard", "RBCard", ""},
                                        {"VK5300", "VK5300", ""},
                                        {"VK-RTX-DF1", "VKRTX", "\nclick MainMenu.ABEthAsciiDf1ModelCmd"},
                                        {"VK-RTX-Modbus", "VKRTX", "\nclick MainMenu.ABEthModbusModelCmd"}};

inline const std::string Dhcp = "to EthComFrame\nselect EthDHCPLst Enabled\n";

/// The wizard of a kind is on its first page; with a device, which stands at COM3.
struct WizardUser : Harness {
  explicit WizardUser(const std::string& kind, FakeDevice* device = nullptr) {
    for (const TestedModel& model : TestedModels) {
      if (kind != model.kind) continue;
      form = std::string("Configuration_") + model.wizard;
      GoTo(std::string(model.wizard) + "Cmd" + model.clicks, device);
    }
    Use("click ProductMenu.ConfigureCmd");
  }

  /// Commands, one a line; a control without its form's name is the wizard's. And: "to FRAME" clicks NEXT until that
  /// page shows, "back FRAME" BACK; "page" tells which one does, "see CONTROLS" their texts or captions, "shown
  /// CONTROLS" + or - for each, "fill FORM TEXT|TEXT" enters into the form's fields in their order; "finish OPTION
  /// FILE", "open FILE", "again" with a new wizard. Returns what was printed, without the dialogs and with a word for
  /// each box of a transfer or a file. Without a FILE it is the user's own.
  std::string Use(const std::string& commands) {
    std::string printed;
    for (const std::string& line : Split(commands, '\n')) {
      if (line.empty()) continue;
      const auto words = Split(line);
      const auto answer = [&](std::size_t at) {
        return "file " + (words.size() > at ? words[at] : file.Path()) + "\nclick NextCmd";
      };
      if (words[0] == "to" || words[0] == "back") {
        const std::string click = words[0] == "to" ? "click NextCmd" : "click BackCmd";
        for (int clicks = 0; Page() != words[1] && clicks < 10; ++clicks) printed += Use(click);
        EXPECT_EQ(Page(), words[1]);
      } else if (words[0] == "page") {
        printed += Page();
      } else if (words[0] == "see") {
        for (std::size_t i = 1; i < words.size(); ++i) printed += (i == 1 ? "" : "|") + At(words[i]).Words();
      } else if (words[0] == "shown") {
        for (std::size_t i = 1; i < words.size(); ++i) printed += At(words[i]).Shown() ? '+' : '-';
      } else if (words[0] == "fill") {
        printed += Fill(words[1], Split(line.substr(line.find(words[1]) + words[1].size() + 1), '|'));
      } else if (words[0] == "finish") {
        printed +=
            Use("to ApplyFrame\nclick " + words[1] + "\n" + (words[1] == "DownOpt" ? "click NextCmd" : answer(2)));
      } else if (words[0] == "open") {
        printed += Use("back ConfigFrame\ncheck OpenConfigChk on\n" + answer(1));
      } else if (words[0] == "again") {
        Do("click " + form + ".CancelCmd\nclick ProductMenu.ConfigureCmd");
      } else {
        const auto points = std::count(words[1].begin(), words[1].end(), '.');
        const bool isOfWizard = words[0] != "file" && points == (words[0] == "get" ? 1 : 0);
        const std::size_t target = words[0].size() + 1;
        printed += Shortened(Do(isOfWizard ? line.substr(0, target) + form + "." + line.substr(target) : line));
      }
    }
    return printed;
  }

  /// BACK over the pages from the last to the first, and NEXT to the last again. Each is a frame.
  void Walk(const std::string& pages) {
    const auto all = Split(pages);
    Use("to " + all.back());
    const std::size_t last = all.size() - 1;
    std::map<std::size_t, int> marks;  // of the steps; the pages of a step have one
    for (std::size_t i = 0; i <= 2 * last; ++i) {
      const std::size_t page = i <= last ? last - i : i - last;
      EXPECT_EQ(Page(), all[page]) << pages;
      EXPECT_EQ(Get(form + ".NextCmd.Picture"), page == last ? "117" : "111");
      EXPECT_EQ(Get(form + ".BackCmd.Shown"), page == 0 ? "False" : "True");
      const int mark = std::stoi(Get(form + ".StepMarkFrame.Top"));
      EXPECT_EQ(marks.emplace(page, mark).first->second, mark);
      EXPECT_LE(mark, marks[std::min(page + 1, last)]);
      EXPECT_EQ(page == last, mark == marks[last]);
      Use(i < last ? "click BackCmd" : i < 2 * last ? "click NextCmd" : "");
    }
  }

  /// What the pages show.
  std::string State() const {
    std::string state;
    for (const Control* control : ControlsOf(form)) {
      if (!control->Parent() || std::string_view(control->Name()).starts_with("Restore")) continue;
      if (dynamic_cast<const RowFrame*>(control)) continue;  // shows where the user is
      for (const char* name : {"Text", "Value", "Visible", "Caption"}) {
        if (const auto* found = control->FindProperty(name)) state += " " + control->FullName() + found->AsText();
      }
    }
    return state;
  }

  const TemporaryFile file{"plant.cfg"};
  std::string form;

 private:
  const std::vector<Control*>& ControlsOf(const std::string& name) const {
    if (const Form* loaded = app.forms.Find(name)) return loaded->Controls();
    throw std::logic_error("no form " + name);
  }
  std::string Page() const {
    if (!app.forms.Find(form)) return "closed";
    std::string page;
    for (const Control* control : ControlsOf(form)) {
      if (control->Left == 3840 && control->Height == 7620 && control->Shown()) page += control->FullName();
    }
    return page;
  }
  std::string Fill(const std::string& editor, const std::vector<std::string>& texts) {
    std::string acts;
    auto text = texts.begin();
    for (const Control* control : ControlsOf(editor)) {
      const bool isList = control->KindName() == "ComboBox";
      if (text == texts.end() || (!isList && control->KindName() != "TextBox")) continue;
      acts += (isList ? "select " : "type ") + editor + "." + control->FullName() + " " + *text++ + "\n";
    }
    return Use(acts);
  }
  const Control& At(const std::string& path) const {
    const std::size_t point = path.find('.') + 1;
    for (const Control* control : ControlsOf(point == 0 ? form : path.substr(0, point - 1))) {
      if (control->FullName() == path.substr(point)) return *control;
    }
    throw std::logic_error("no " + path);
  }
  std::string Shortened(const std::string& printed) const {
    const std::string product = app.globals.CurrentProduct;
    const std::pair<std::string, const char*> boxes[] = {
        {"box critical \"VK32\" \"Press the Configure button on the " + product + " before", "reminder"},
        {"\"Success!\" \"Configuration has been downloaded to the " + product + "\"", "success"},
        {"A timeout or error has occured while communicating to the " + product + "\"", "time-out"},
        {"The selected configuration file is not for the " + product + ".\"", "not for it"},
        {"An error occured while attempting to open the configuration file.\"", "broken"},
        {"dialog ", ""}};
    std::string kept;
    for (std::string line : Split(printed, '\n')) {
      for (const auto& [words, name] : boxes) line = line.find(words) != std::string::npos ? name : line;
      kept += line.empty() ? "" : line + "\n";
    }
    return kept;
  }
};

}  // namespace vk32
