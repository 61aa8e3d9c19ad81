// What the wizards of all products have in common: they start anew each time, and open their own whole files alone.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

void ChangeEverything(WizardUser& user, bool texts = true) {
  for (Control* control : user.app.forms.Find(user.form)->Controls()) {
    if (auto* list = dynamic_cast<ComboBox*>(control)) list->ListIndex = static_cast<int>(list->Entries().size()) - 1;
    if (auto* box = dynamic_cast<TextBox*>(control); box && texts) box->Text = "7";
    if (auto* check = dynamic_cast<CheckBox*>(control); check && check->Visible) check->Value = 1;
    if (auto* option = dynamic_cast<OptionButton*>(control)) option->Value = true;
  }
  user.app.forms.dispatcher.Dispatch([] {});  // whose end counts what was changed behind the user's back
}

/// FINISH with the option, once a wizard that has an Ethernet page holds no address that is missing.
std::string Finish(WizardUser& user, const std::string& option) {
  const bool ethernet = user.app.forms.Find(user.form)->Find("EthDHCPLst");
  return user.Use((ethernet ? Dhcp : "") + "finish " + option);
}

TEST(Wizards, StartAnewEachTime) {
  for (const TestedModel& model : TestedModels) {
    GatewayDevice first(model.kind), second(model.kind);
    WizardUser fresh(model.kind, &first), user(model.kind, &second);
    const std::string before = user.State();
    std::map<const Frame*, int> chosen;  // of the options in a frame
    for (const Control* control : user.app.forms.Find(user.form)->Controls()) {
      if (const auto* option = dynamic_cast<const OptionButton*>(control)) chosen[option->Parent()] += option->Value;
    }
    for (const Control* control : user.app.forms.Find(user.form)->Controls()) {
      const auto* bar = dynamic_cast<const VScrollBar*>(control);
      EXPECT_TRUE(!bar || bar->Max == 0 || (bar->SmallChange > 0 && bar->LargeChange >= 3 * bar->SmallChange))
          << control->Name();
    }
    for (const auto& [frame, count] : chosen) EXPECT_EQ(count, 1) << frame->Name();
    EXPECT_EQ(user.Get(user.form + ".DeviceLbl.Caption"), user.app.globals.CurrentProduct);
    EXPECT_EQ(user.Get(user.form + ".ModelLbl.Caption"), user.app.globals.CurrentModel);
    if (user.app.globals.CurrentModel == "AB Ethernet, ASCII, DF1") second.Teach(4, "\3");  // what no list shows
    user.Use("click UploadCmd");
    ChangeEverything(user);
    user.Use("again");
    EXPECT_EQ(user.State(), before);
    EXPECT_EQ(Finish(fresh, "DownOpt") + Finish(user, "DownOpt"), "reminder\nsuccess\nreminder\nsuccess\n");
    EXPECT_EQ(ToHex(second.gateway.Image()), ToHex(first.gateway.Image()));
    EXPECT_EQ(second.gateway.BlocksInForce(), first.gateway.BlocksInForce()) << model.kind;
  }
}

TEST(Wizards, TheWordsBesideAMarkTakeItsClickButInTwoProducts) {
  for (const TestedModel& model : TestedModels) {
    const std::string kind = model.kind;
    const bool deaf = kind == "RBCard" || kind == "VK5300";
    WizardUser user(kind);
    user.Use("click OpenConfigChkLbl");
    EXPECT_EQ(user.Get(user.form + ".OpenConfigChk.Value"), deaf ? "0" : "1") << kind;
    user.Use("check OpenConfigChk off\n" + (kind.starts_with("VK") ? Dhcp : "") + "to ApplyFrame\nclick SaveOptLbl");
    EXPECT_EQ(user.Get(user.form + ".SaveOpt.Value"), deaf ? "False" : "True") << kind;
  }
}

TEST(Wizards, AskOnceBeforeChangedValuesGo) {
  for (const bool window : {true, false}) {
    WizardUser user("RB2000");
    const auto go = [&](const std::string& answers) {
      std::string printed = user.Do(answers);
      if (window) user.app.forms.Find(user.form)->UserCloses();
      if (!window) printed = user.Do("click MainMenu.RB3000Cmd");
      return (printed.find("box question") != std::string::npos ? "asked " : "") +
             std::string(user.app.forms.Find(user.form) ? "open" : "closed");
    };
    const std::string change = "to ProtocolSettingsFrame\nselect ChbModProtocolLst ASCII\nclick ProductMenu.ReturnCmd";
    user.Use(change);
    for (const char* stays : {"answer cancel", "answer save\nfile cancel", "answer save\nfile /nowhere/plant.cfg"}) {
      EXPECT_TRUE(go(stays).ends_with("open")) << stays;
    }
    for (const bool whole : {false, true}) {
      user.Use(whole ? "type ModStartTxt(2) "
                     : "to MappingFrame(0)\ntype ModStartTxt(2) 1\nclick ProductMenu.ReturnCmd");
      EXPECT_TRUE(go("answer save\nfile " + user.file.Path()).ends_with(whole ? "closed" : "open"));
    }
    EXPECT_NE(user.file.Content(), "");
    WizardUser same("RB2000");
    same.app.forms.Find(same.form)->UserCloses();
    EXPECT_FALSE(same.app.forms.Find(same.form)) << "unchanged, it does not ask";
  }
}

/// Another value in every list, mark and option, and a row of each table that has an editor.
void ChangeToWhatFits(WizardUser& user, const std::string& kind) {
  const std::string row = "fill Route 1|Channel A|1|1|Ethernet|1.1.1.1\nclick Route.PerformRouteCmd\n",
                    map = "fill ABModMapping 1|Typed R/W|7|0|4X|1|3|Integer|2|9\nclick ABModMapping.MapCmd\n";
  const std::map<std::string, std::string> tables{{"VK-RTX-DF1", "to RoutingFrame\nclick AddRouteCmd\n" + row},
                                                  {"VK-RTX-Modbus", "to AbModMappingFrame\nclick AddMapCmd\n" + map}};
  ChangeEverything(user, false);
  user.app.forms.Find(user.form)->Get<CheckBox>("VerifyChk").Value = 0;
  user.Use("check OpenConfigChk off\n" + std::string(user.app.forms.Find(user.form)->Find("EthDHCPLst") ? Dhcp : "") +
           (tables.contains(kind) ? tables.at(kind) : ""));
}

TEST(Wizards, OfferWhatACancelledOneHeld) {
  for (const TestedModel& model : TestedModels) {
    GatewayDevice first(model.kind), second(model.kind);
    WizardUser direct(model.kind, &first), user(model.kind, &second);
    for (WizardUser* each : {&direct, &user}) ChangeToWhatFits(*each, model.kind);
    const std::string changed = user.Use("see ChangedLbl");
    EXPECT_EQ(user.Use("again\ncheck RestoreChk on\nclick NextCmd\nsee ChangedLbl"), changed);
    EXPECT_EQ(direct.Use("finish DownOpt") + user.Use("finish DownOpt"), "reminder\nsuccess\nreminder\nsuccess\n");
    EXPECT_EQ(ToHex(second.gateway.Image()), ToHex(first.gateway.Image())) << model.kind;
    EXPECT_EQ(second.gateway.BlocksInForce(), first.gateway.BlocksInForce()) << model.kind;
  }
}

TEST(Wizards, OpenTheirOwnWholeFilesAlone) {
  std::vector<std::string> contents;
  for (const TestedModel& model : TestedModels) {
    WizardUser user(model.kind);
    Finish(user, "SaveOpt");
    contents.push_back(user.file.Content());
  }
  for (std::size_t own = 0; own < contents.size(); ++own) {
    WizardUser user(TestedModels[own].kind);
    ChangeEverything(user);
    const auto state = [&] { return user.State() + ToHex(user.app.globals.RegistersToString(0, 224)); };
    const auto open = [&](const std::string& content) {
      user.file.Fill(content);
      return user.Use("open\npage");
    };
    const std::string before = state();
    for (std::size_t other = 0; other < contents.size(); ++other) {
      EXPECT_TRUE(other == own || open(contents[other]) == "not for it\nConfigFrame");
    }
    // Cut off behind a line, or with a line that is none.
    std::string start;
    for (const std::string& line : Split(contents[own], '\n')) {
      EXPECT_TRUE(open(start).ends_with("\nConfigFrame")) << start;
      EXPECT_TRUE(open(start + "x" + contents[own].substr(start.size())).ends_with("\nConfigFrame")) << start;
      start += line + "\n";
    }
    EXPECT_EQ(state(), before);
    EXPECT_EQ(open(contents[own] + "more").find("\n"), std::string::npos);
    EXPECT_NE(state(), before);
  }
}

// From a spreadsheet: the block at a field, what is then told, what the rows show. A second time it is taken back.
TEST(Wizards, ABlockFillsATableOrChangesNothing) {
  const std::string rb = "to MappingFrame(0)\n", rbSee = "see ModStartTxt(13) ABWordTxt(13) ModEndTxt(14) FloatChk(14)",
                    ip = Dhcp + "to NodeIpFrame\n", ipSee = "see NodeIpNodeTxt(9) NodeIpIpAddrTxt(9) NodeIpNodeTxt(10)";
  const std::array<std::string, 6> rows[] = {
      {"RB2000", rb, "ModStartTxt(13) \"1\\t2\\t3\\t 4 \\r\\n5\\t6\\t\\t\\tyes\\r\\n\"", "", rbSee, "1|4|6|"},
      {"RB2000", rb, "ModEndTxt(13) \"1\\t2\\t3\\t4\\t5\"", "5 columns, and only 4 from here on", rbSee, "|||"},
      {"RB3000", rb + "click NextMappingCmd(0)\nclick NextMappingCmd(1)", "ModEndTxt(39) \"1\\n2\"",
       "2 rows, and only 1 from here on", "see ModEndTxt(39)", ""},
      {"RB3000", rb, "ModEndTxt(13) \"1\\n20000\"", "slot 15, end address is not a Modbus address", rbSee, "|||"},
      {"RB3000", rb, "ABWordTxt(13) \"word\\n\"", "slot 14, word is not a number", rbSee, "|||"},
      {"RB3000", rb, "FloatChk(13) \"maybe\\n\"", "slot 14, Floating Point is neither yes nor no", rbSee, "|||"},
      {"VK-RTX-Modbus", ip, "NodeIpNodeTxt(9) \"8\\t1.1.1.8\\n9\"", "", ipSee, "8|1.1.1.8|9"},
      {"VK-RTX-Modbus", ip, "NodeIpNodeTxt(9) \"8\\t1.1.8\\n\"", "slot 9, IP Address is not an IP address", ipSee,
       "||"}};
  for (const auto& [kind, way, block, hint, look, shown] : rows) {
    WizardUser user(kind);
    user.Use(way);
    const std::string cell = Split(block)[0], target = user.form + "." + cell;
    const std::string refused = hint.empty() ? "" : "error " + target + " does not take this text\n";
    EXPECT_EQ(user.Use("paste " + block), refused);
    EXPECT_EQ(user.Use("see PageHintLbl"), hint.empty() ? "" : "Not pasted: " + hint);
    EXPECT_EQ(user.Use(look), shown) << block;
    const std::string none(std::count(look.begin(), look.end(), ' ') - 1U, '|');
    EXPECT_EQ(user.Use((hint.empty() ? "press " + cell + " Undo\n" : "") + look), none);
  }
}

// What is entered and refused: the page that shows then, its hint, the focus, the row's mark; and what makes it good.
TEST(Wizards, ARefusalLeadsToItsValue) {
  const std::string slot = "to MappingFrame(0)\ntype ModStartTxt(",
                    pane = "to MappingFrame(0)\nclick NextMappingCmd(0)\n", next = "\nclick NextCmd",
                    finish = "\nfinish SaveOpt", address = ": enter four numbers from 0 to 255, parted by points",
                    route = Dhcp +
                            "to RoutingFrame\nclick AddRouteCmd\nfill Route 1|Channel A|300|9|Channel A\n"
                            "click Route.PerformRouteCmd";
  const std::array<std::string, 7> rows[] = {
      {"RB2000", slot + "2) 1\nclick NextMappingCmd(0)" + next, "MappingFrame(1)",
       "Slot 3 (slots 1 to 14):\nthe end address is missing", "NextCmd", "", "click BackCmd"},
      {"RB2000", slot + "2) 1" + next, "MappingFrame(0)", "Slot 3 (slots 1 to 14):\nthe end address is missing",
       "ModEndTxt(2)", "SlotMark(2)", "type ModStartTxt(2) "},
      {"RB3000",
       pane + "type ModStartTxt(20) 20000\ntype ModEndTxt(20) 1\ntype ABFileTxt(20) 1\ntype ABWordTxt(20) 1" + next,
       "MappingFrame(1)", "Slot 21 (slots 15 to 28):\nthe start address is not a Modbus address", "ModStartTxt(20)",
       "SlotMark(20)", "click BackCmd"},
      {"RB2000",
       pane + "click NextMappingCmd(1)\ntype ModStartTxt(30) 70000\nclick BackCmd\nselect ChbModDeviceTypeLst Master" +
           finish,
       "MappingFrame(2)", "Slot 31, Modbus Start Address: enter a number from 0 to 65535", "ModStartTxt(30)",
       "SlotMark(30)", "type ModStartTxt(30) 7"},
      {"VK5300", "to EthComFrame\ntype EthIPTxt 1.2" + next, "EthComFrame", "IP Address" + address, "EthIPTxt", "",
       "type EthIPTxt 1"},
      {"VK-RTX-DF1", "to EthComFrame\ntype EthGateTxt 1.2\nselect EthDHCPLst Enabled" + finish, "EthComFrame",
       "Default Gateway (shown with DHCP Disabled)" + address, "NextCmd", "", "click NextCmd"},
      {"VK-RTX-DF1", route + finish, "RoutingFrame", "Slot 1, Low: enter a number from 0 to 255", "RoutesTableFrame",
       "RouteMark", "click DelRouteCmd\nclick DelRoute.DeleteRouteCmd"},
      {"VK-RTX-Modbus", Dhcp + "to NodeIpFrame\ntype NodeIpIpAddrTxt(1) 1.1.1.1" + next, "NodeIpFrame",
       "Slot 1, Slave ID is missing", "NodeIpNodeTxt(1)", "NodeIpMark", "type NodeIpNodeTxt(1) 7"}};
  for (const auto& [kind, acts, page, hint, focus, mark, mend] : rows) {
    WizardUser user(kind);
    user.Use(acts);
    const std::string look = "shown PageHintLbl PageHintMark StatusMark" + (mark.empty() ? "" : " " + mark);
    EXPECT_EQ(user.Use("page") + "|" + user.Get(user.form + ".PageHintLbl.Caption"), page + "|" + hint);
    EXPECT_EQ(user.Get(user.form + ".ActiveControl") + user.Use(look), focus + (mark.empty() ? "+++" : "++++")) << hint;
    user.Use(mend);
    EXPECT_EQ(user.Use(look), mark.empty() ? "---" : "----") << hint;
  }
}

TEST(Wizards, CompareWithTheDevice) {
  for (const TestedModel& model : TestedModels) {
    SCOPED_TRACE(model.kind);
    GatewayDevice device(model.kind, {}, true);
    WizardUser user(model.kind, &device);
    const bool ethernet = user.app.forms.Find(user.form)->Find("EthDHCPLst");
    EXPECT_EQ(
        user.Use(std::string("click UploadCmd\n") + (ethernet ? Dhcp : "") + "to ApplyFrame\nclick CompareDeviceCmd"),
        "reminder\nreminder\n");
    const std::string summary = user.Get("Compare.SummaryLbl.Caption");
    EXPECT_EQ(summary.starts_with("All "), !ethernet) << summary;
    // The end of the wizard is the end of the reading.
    user.Do("click Compare.CompareCloseCmd\nafter 1 click " + user.form + ".CancelCmd");
    user.Elapsed();
    user.Use("click CompareDeviceCmd");
    EXPECT_LT(user.Elapsed(), 100ms);
    EXPECT_FALSE(user.app.comm.IsOpen(3) || user.app.forms.Find("Compare"));
  }
}

// By what happens when the device is to be read back.
TEST(Wizards, VerifyWhatTheDeviceHolds) {
  const std::string acknowledged = "has acknowledged the configuration, but ";
  const std::tuple<const char*, std::string, const char*, int> rows[] = {
      // and how many boxes come
      {"good", "Configuration has been downloaded", "closed", 3},
      {"other", acknowledged + "does not hold what was sent: ", "ApplyFrame", 3},
      {"silent", acknowledged + "it could not be read back: it is not verified.", "ApplyFrame", 3},
      {"cancel", "", "closed", 2}};
  for (const TestedModel& model : TestedModels) {
    for (const auto& [event, told, page, count] : rows) {
      SCOPED_TRACE(std::string(model.kind) + " " + event);
      GatewayDevice device(model.kind, {}, true), factory(model.kind), same(model.kind, {}, true);
      const auto begin = [&](WizardUser& one) {
        one.Use("click UploadCmd");
        ChangeToWhatFits(one, model.kind);
        one.Use("to ApplyFrame\nclick DownOpt");
      };
      WizardUser user(model.kind, &device);
      begin(user);
      int boxes = 0;
      const std::string what = event;
      user.screen.onBox = [&](const auto&) {
        if (++boxes != 2) return;
        if (what == "other") user.driver.Plug("COM3", &factory);
        if (what == "silent") user.driver.Plug("COM3", nullptr);
        if (what == "cancel") user.session.RunLine("after 20 click " + user.form + ".CancelCmd");
      };
      user.Use("check VerifyChk on");
      EXPECT_NE(user.Do("click " + user.form + ".NextCmd").find(told), std::string::npos);
      EXPECT_EQ(user.details.empty(), what != "silent") << "the cause";
      EXPECT_EQ(boxes, count);
      EXPECT_EQ(user.Use("page"), page);
      EXPECT_EQ(user.Use("see ProductMenu.StatusLbl").ends_with(", and verified"), what == "good");
      EXPECT_TRUE(count == 2 || what == "good" || user.Use("see SourceLbl").starts_with("Written to COM3, 21:4"));
      EXPECT_EQ(user.app.forms.Find("Compare") != nullptr, what == "other");
      EXPECT_EQ(user.driver.WaitHandle(1), -1);
      if (what != "good") continue;
      WizardUser plain(model.kind, &same);
      begin(plain);
      plain.Use("click NextCmd\nclick ProductMenu.ConfigureCmd\nclick UploadCmd");
      EXPECT_EQ(ToHex(user.driver.written), ToHex(plain.driver.written)) << "as a download and an upload do";
    }
  }
}

TEST(Wizards, ReportWhatTheyShowAndWhereItDiffers) {
  WizardUser user("RBCard");
  const TemporaryFile report("r.html");
  const std::string own = user.form + ".ReportCmd", compared = "Compare.SaveReportCmd";
  user.Use("finish SaveOpt\nclick ProductMenu.ConfigureCmd\nto HwyComFrame\nclick Dh485Opt\nselect HwySpeedLst 9600\n");
  user.Use("to ApplyFrame\nfile " + user.file.Path() + "\nclick CompareFileCmd");
  const std::array<std::string, 4> rows[] = {
      {own, report.Path(), "", "<td>Factory values; 3 values changed</td>"},
      {own, "/nowhere/r.html", "The folder \\\"/nowhere\\\" does not exist",
       "<th>Network Speed</th><td>9600 Baud</td>"},
      {compared, report.Path(), "", "<th>In the wizard, 3 values changed</th><th>In the file, plant.cfg</th>"},
      {compared, report.Path() + ".PDF", "Choose a name that ends in .html",
       "<td>≠</td><td>DH+ Communication Settings: DH+ Parameters, Network Speed</td><td>9600 Baud</td><td>57.6 kBaud"}};
  for (const auto& [button, path, told, content] : rows) {
    const std::string printed = user.Do("file " + path + "\nclick " + button);
    EXPECT_EQ(printed.find("box ") != std::string::npos, !told.empty()) << printed;
    EXPECT_NE(printed.find(told), std::string::npos) << printed;
    EXPECT_NE(report.Content().find(content), std::string::npos) << report.Content();
  }
  const std::string
      look = "see Compare.DiffSignLbl(1) Compare.ValueFieldLbl(1) Compare.DiffSignLbl(4) Compare.ValueFieldLbl(4)",
      first = "\u2260|DH+ Communication Settings: DH+ Parameters, Network Mode||";
  EXPECT_EQ(user.Use(look), first);
  EXPECT_EQ(user.Use("see Compare.ValueLeftLbl(0) Compare.ValueRightLbl(0)"),
            "In the wizard\r\n3 values changed|In the file\r\nplant.cfg");
  user.Do("check Compare.ShowAllChk on");
  EXPECT_EQ(user.Use(look), first + "DF1 Settings: Serial Parameters, Serial Speed");
}

// In each line of a file another number: it is saved again as it was opened, or refused by words that lead to it.
TEST(Wizards, EachNumberOfAFileCounts) {
  for (const TestedModel& model : TestedModels) {
    if (std::string_view(model.kind).starts_with("RB")) continue;
    WizardUser maker(model.kind);
    ChangeToWhatFits(maker, model.kind);
    maker.Use("finish SaveOpt");
    const std::string content = maker.file.Content();
    int refused = 0;
    for (std::size_t at = 0; at < content.size(); ++at) {
      const std::size_t end = content.find_first_not_of("0123456789", at);
      if (at == 0 || end == at || (content[at - 1] != ',' && content[at - 1] != '\n')) continue;
      const bool alone = content[end] == '\r' && content[at - 1] == '\n';  // routes and clients follow each other
      for (const char* number : {"1", "300"}) {
        WizardUser user(model.kind);
        const std::string changed = std::string(content).replace(at, end - at, number);
        user.file.Fill(changed);
        if (user.Use("open\npage") == "broken\nConfigFrame") continue;
        std::string told;
        for (int page = 0; page < 10 && told.empty() && user.Use("page") != "ApplyFrame"; ++page)
          told = user.Use("click NextCmd");
        if (told.empty()) told = user.Use("click SaveOpt\nfile " + user.file.Path() + "\nclick NextCmd");
        EXPECT_TRUE(!alone || number[0] != '1' || user.file.Content().starts_with(changed.substr(0, at + 2)))
            << user.file.Content() << changed;
        EXPECT_EQ(user.Use("page") == "closed" ? "+" : user.Use("shown PageHintLbl"), "+")
            << changed.substr(0, at) << told;
        refused += !told.empty();
      }
    }
    EXPECT_GT(refused, 0) << model.kind;
  }
}

}  // namespace
}  // namespace vk32
