// What the wizards list, and where they say that it comes from.
#include "listing/Listing.h"

#include <set>

#include "app/Backstage.h"
#include "listing/Report.h"
#include "listing/SaveReport.h"
#include "models/WizardUser.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {
namespace {

WizardForm& WizardOf(WizardUser& user) { return dynamic_cast<WizardForm&>(*user.app.forms.Find(user.form)); }

std::string Lines(const std::vector<Difference>& differences) {
  std::string lines;
  for (const auto& difference : differences) {
    lines += difference.Words() + " " + difference.left.value_or("-") + " > " + difference.right.value_or("-") + "\n";
  }
  return lines;
}

TEST(Listing, EveryFieldHasANameOfItsOwn) {
  const std::map<std::string, std::string> names{
      {"RB2000ChbConnectionLst", "Serial Settings/CHB - Modbus Serial Settings/Connection"},
      {"RB2000ABWordTxt(39)", "Address Mapping/Slot 40/Allan-Bradley Datafile Word"},
      {"RB2000ChbModMasterNXYYZOpt",
       "Protocol Settings/CHB - Modbus Protocol Settings/Destination Data Table Address Decoding"},
      {"RB3000NXYYZOpt", "Modbus Settings/Destination Data Table Address Decoding"},
      {"RBCardDhpOpt", "DH+ Communication Settings/DH+ Parameters/Network Mode"},
      {"VK5300SocketTimeOutTxt", "Ethernet Settings/Socket Timeout"},
      {"VK-RTX-DF1RouteIPAddressLbl(20)", "Routing Table Setup/Slot 20/IP Address"},
      {"VK-RTX-DF1EIPClientIpAddrValLbl(1)", "Ethernet/IP Client Setup/Client 2/Client IP Address"},
      {"VK-RTX-DF1Df1ErrorLst(1)", "Serial Protocol Settings/Channel B/Error Checking"},
      {"VK-RTX-ModbusNodeIpNodeTxt(10)", "Slave/IP Address Mapping/Slot 10/Slave ID"}};
  std::size_t found = 0;
  for (const TestedModel& model : TestedModels) {
    WizardUser user(model.kind);
    std::set<std::string> paths;
    for (const ListedValue& value : WizardOf(user).List()) {
      EXPECT_TRUE(paths.insert(value.Path()).second && !value.field.empty()) << model.kind << value.key << value.Path();
      const auto name = names.find(model.kind + value.key);
      if (name == names.end()) continue;
      EXPECT_EQ(value.Path(), name->second);
      ++found;
    }
  }
  EXPECT_EQ(found, names.size());
}

TEST(Listing, ComparesByFieldInTheOrderOfThePages) {
  const auto row = [](const char* key, const char* value) {
    return ListedValue{key, "Page", "", key, value, "s", nullptr};
  };
  EXPECT_EQ(Lines(Compare({row("a", "1"), row("gone", ""), row("c", "3"), row("d", "4")},
                          {row("new", "9"), row("a", "1"), row("c", "5"), row("last", "7")})),
            "Page: new - > 9 s\nPage: gone  > -\nPage: c 3 s > 5 s\nPage: d 4 s > -\nPage: last - > 7 s\n");
  const auto slot = [](const char* field, const char* value) {
    return ListedValue{field, "Page", "Slot 1", field, value, "", nullptr};
  };
  EXPECT_EQ(Lines(Compare({slot("a", "")}, {slot("a", ""), slot("b", "No")})), "") << "an empty slot";
  EXPECT_EQ(Lines(Compare({slot("a", "1")}, {slot("a", "1"), slot("b", "No")})), "Page: Slot 1, b - > No\n");
}

TEST(Listing, IsReportedPageByPageAndItsTablesRowByRow) {
  const auto row = [](const char* page, const char* group, const char* field, const char* value, const char* unit = "",
                      bool shown = true) {
    return ListedValue{field, page, group, field, value, unit, nullptr, shown};
  };
  const Listing listing{row("Ports", "", "Speed", "9600", "Baud"),
                        row("Ports", "CHA", "a<\"b", "\xE9"),
                        row("Ports", "CHA", "Hidden", "1", "", false),
                        row("Table", "", "Empty", "", "s"),
                        row("Table", "Slot 1", "From", "1"),
                        row("Table", "Slot 1", "To", "2", "m"),
                        row("Table", "Slot 2", "From", "3"),
                        row("Table", "Slot 2", "To", "No"),
                        row("Table", "Slot 3", "From", ""),
                        row("Table", "Slot 3", "To", "No"),
                        row("Table", "Client 1", "Address", "x"),
                        row("Last", "Client 1", "Address", "y")};
  EXPECT_EQ(
      TextReport(listing),
      "\nPorts\n  Speed: 9600 Baud\n  CHA\n    a<\"b: \u00E9\n\nTable\n  Empty: \n  Slot 1\n    From: 1\n    To: 2 m\n"
      "  Slot 2\n    From: 3\n    To: No\n  Client 1\n    Address: x\n\nLast\n  Client 1\n    Address: y\n");
  const std::string html = HtmlReport({"P", "", "COM3", "", "V"}, listing), fields = "<table class=\"fields\">\n",
                    rows = "</table>\n<table class=\"rows\"><thead><tr><th></th>", end = "</tbody></table>\n";
  EXPECT_TRUE(html.find(fields + "<tr><th>Product</th><td>P</td></tr>\n<tr><th>Source</th><td>COM3</td></tr>\n"
                                 "<tr><th>Program</th><td>V</td></tr>\n</table>\n<table class=\"plant\">") !=
              std::string::npos);
  EXPECT_EQ(html.substr(html.find("<h2>")),
            "<h2>Ports</h2>\n" + fields + "<tr><th>Speed</th><td>9600 Baud</td></tr>\n</table>\n<h3>CHA</h3>\n" +
                fields + "<tr><th>a&lt;&quot;b</th><td>\u00E9</td></tr>\n</table>\n<h2>Table</h2>\n" + fields +
                "<tr><th>Empty</th><td></td></tr>\n" + rows +
                "<th>From</th><th>To</th></tr></thead><tbody>\n"
                "<tr><th>Slot 1</th><td>1</td><td>2 m</td></tr>\n<tr><th>Slot 2</th><td>3</td><td>No</td></tr>\n" +
                end + rows.substr(9) + "<th>Address</th></tr></thead><tbody>\n<tr><th>Client 1</th><td>x</td></tr>\n" +
                end + "<h2>Last</h2>\n" + rows.substr(9) +
                "<th>Address</th></tr></thead><tbody>\n"
                "<tr><th>Client 1</th><td>y</td></tr>\n" +
                end + "</body>\n</html>\n");
  const std::string both = HtmlComparison({}, "1 differs", "A", "B",
                                          {{"Ports", "", "Speed", "1", {}}, {"Ports", "", "Size", "", "", false}});
  EXPECT_EQ(both.substr(both.find("<h2>")),
            "<h2>1 differs</h2>\n<table class=\"rows\"><thead><tr><th></th><th>Page and "
            "field</th><th>A</th><th>B</th></tr></thead>"
            "<tbody>\n<tr><td>\u2260</td><td>Ports: Speed</td><td>1</td><td>not there</td></tr>\n"
            "<tr><td></td><td>Ports: Size</td><td>empty</td><td>empty</td></tr>\n" +
                end + "</body>\n</html>\n");
}

TEST(Listing, KnowsWhatPagesWillShow) {
  WizardUser user("VK-RTX-DF1");
  user.Use(Dhcp +
           "to SerProtoFrame(0)\nselect SerProtoLst(0) ASCII\nto RoutingFrame\nclick AddRouteCmd\n"
           "fill Route 1|Channel A|1|1|Ethernet|10.0.0.1\nclick Route.PerformRouteCmd");
  EXPECT_EQ(ReportHeadOf(user.app, "").model, "AB Ethernet, ASCII, DF1");
  const Listing before = WizardOf(user).List();
  user.Use("to ApplyFrame");
  EXPECT_EQ(Lines(Compare(Shown(before), Shown(WizardOf(user).List()))), "");
  EXPECT_EQ(user.Use("back EIPClientSetupFrame\ncheck EIPClientRoutingChk(0) on\nsee ChangedLbl"), "9 values changed");
  user.Use("finish SaveOpt");

  // A second program sees the same in the file, without a walk over the pages.
  Backstage second(user.loop, user.driver, user.names);
  WizardForm* opened = second.Open(user.file.Path());
  ASSERT_TRUE(opened) << second.screen.told.back();
  EXPECT_EQ(Lines(Compare(Shown(before), Shown(opened->List()))),
            "Ethernet/IP Client Setup: Client 1, Routing Required No > Yes\n"
            "Ethernet/IP Client Setup: Client 1, Controller Slot Number - > 0\n"
            "Protocol Conversion Settings: ASCII - PCCC Conversion Settings - Channel A, File Number  > 0\n"
            "Protocol Conversion Settings: ASCII - PCCC Conversion Settings - Channel A, Element Number  > 0\n");
  EXPECT_FALSE(second.Open("/nowhere/plant.cfg"));
  EXPECT_TRUE(second.screen.told.back().starts_with("/nowhere/plant.cfg can't be read"));
}

TEST(Listing, SaysWhereTheValuesComeFrom) {
  GatewayDevice device("RB2000");
  ScriptedDevice broken;  // ends behind the station address
  broken.On("TEE", {{Time(0), "TR" + FromHex("CA 01") + Bytes(10, 'h') + Bytes(14, '\0') + "\5\0\x55\x55"}}).On("\6");
  const std::string change = "to ProtocolSettingsFrame\nselect ChbModProtocolLst ASCII\n";
  const std::tuple<FakeDevice*, std::string, const char*> rows[] = {
      {&device, "", "Factory values|No changes"},
      {&device, change + "select ChaDf1StationAddrLst 1\n", "Factory values|1 value changed"},
      {&device, change + "select ChbModProtocolLst RTU\n", "Factory values|No changes"},
      {&device, change + "click UploadCmd\n", "reminder\nRead from COM3, 21:40|No changes"},
      {&broken, change + "click UploadCmd\n", "reminder\nPartly read from COM3, 21:40|1 value changed"},
      {nullptr, change + "finish SaveOpt\nclick ProductMenu.ConfigureCmd\nopen\n" + change,
       "Opened plant.cfg|No changes"},
  };
  for (const auto& [port, acts, told] : rows) {
    WizardUser user("RB2000", port);
    EXPECT_EQ(user.Use(acts + "see SourceLbl ChangedLbl"), told) << acts;
  }
  WizardUser user("RB2000", &device);
  EXPECT_EQ(user.Use("click UploadCmd\n" + change +
                     "to ApplyFrame\nsee ChangesSinceLbl ChangeFieldLbl(1) "
                     "ChangeBeforeLbl(1) ChangeAfterLbl(1) ChangeFieldLbl(2)"),
            "reminder\nsince it was read from COM3 at 21:40|"
            "Protocol Settings: CHB - Modbus Protocol Settings, Modbus Protocol|RTU|ASCII|");
  EXPECT_EQ(user.Use("file " + user.file.Path() + "\nclick BackupCmd\nsee ChbModProtocolLst StatusLbl"),
            "ASCII|What the device had has been saved as plant.cfg");
  EXPECT_EQ(user.Use("open\nsee ChbModProtocolLst"), "RTU") << "as the device had it";
  EXPECT_EQ(user.Use("finish DownSaveOpt\nsee ProductMenu.StatusLbl"),
            "reminder\nsuccess\nWritten to COM3, 21:40\r\nSaved as plant.cfg");
}

}  // namespace
}  // namespace vk32
