// The wizard of the VK-RTX in both its models: pages, tables and their editors, blocks, file, Finish.
#include <random>

#include "models/WizardUser.h"
#include "models/vkrtx/Configuration_VKRTX.h"

namespace vk32 {
namespace {

constexpr const char *Df1 = "VK-RTX-DF1", *Modbus = "VK-RTX-Modbus";  // the models' names in the simulator
const std::string RouteCells = "RouteSlotLbl RouteSrcPortLbl RouteDstLowLbl RouteDestinationPortLbl RouteIPAddressLbl";
const std::string MapCells =
    "AbModMapSlotLbl AbModMapAddrLbl AbModMapModStartLbl AbModMapAbDataFiletLbl AbModMapDataTypeLbl "
    "AbModMapDataPointsLbl AbModMapAbFncLbl";

struct VkRtx : WizardUser {
  explicit VkRtx(const std::string& model, FakeDevice* device = nullptr)
      : WizardUser("VKRTX", device,
                   model == Df1 ? "\nclick MainMenu.ABEthAsciiDf1ModelCmd" : "\nclick MainMenu.ABEthModbusModelCmd") {}
  std::string Row(const std::string& cells, int row) {
    std::string shown;
    for (const std::string& cell : Split(cells)) shown += " " + cell + "(" + Str(row) + ")";
    return Use("see" + shown);
  }
  const AbModMapRecord& Record(int slot) const { return app.globals.AbModMapTable[slot]; }
};

struct Case {
  const char* model;
  std::string acts, expected;
  int number = 0;
};
/// "slot|source|low|high|destination|address"
std::string Route(const std::string& route) {
  return "click AddRouteCmd\nfill Route " + route + "\nclick Route.PerformRouteCmd\n";
}
/// "slot|function|file|word|reference|start|points|type|low|high"
std::string Map(const std::string& map) {
  return "click AddMapCmd\nfill ABModMapping " + map + "\nclick ABModMapping.MapCmd\n";
}
/// A row of either table, known by its low.
std::string AddRow(bool maps, int slot, int low) {
  return maps ? Map(Str(slot) + "|Typed R/W|7|0|4X|1|1|Integer|" + Str(low) + "|9")
              : Route(Str(slot) + "|Channel A|" + Str(low) + "|9|Ethernet|10.0.0." + Str(low));
}
std::string DeleteRow(bool maps, int slot) {
  const std::string list = ".SlotLst " + Str(slot) + "\nclick ";
  return maps ? "click DelMapCmd\nselect ABModMapping" + list + "ABModMapping.MapCmd"
              : "click DelRouteCmd\nselect DelRoute" + list + "DelRoute.DeleteRouteCmd";
}
/// "ID|address|ID|address" from the first row on.
std::string Slaves(const std::string& entries) {
  std::string acts;
  for (int i = 0; const std::string& text : Split(entries, '|')) {
    acts += (i % 2 == 0 ? "type NodeIpNodeTxt(" : "type NodeIpIpAddrTxt(") + Str(i / 2 + 1) + ") " + text + "\n";
    ++i;
  }
  return acts;
}
std::string Refusal(const std::string& words) { return "box critical \"VK32\" \"" + words + "\" -> OK\n"; }

const std::string Ip = "to EthComFrame\ntype EthIPTxt 192.168.1.5\ntype EthSubTxt 255.255.255.0\n",
                  Dhcp = "to EthComFrame\nselect EthDHCPLst Enabled\n";
const std::string ChannelB = "to SerComFrame\nselect EnableCHBLst True\n" + Dhcp;
const std::string A = "to SerProtoFrame(0)\nselect SerProtoLst(0) ASCII\nto RoutingFrame\n", AsciiA = Dhcp + A;
const std::string AsciiAB = ChannelB + "to SerProtoFrame(1)\nselect SerProtoLst(1) ASCII\nclick BackCmd\n" + A;
const std::string Master = "to SerProtoFrame(0)\nselect ModbusModeLst(0) Master\n";
const std::string Routes = Dhcp + "to RoutingFrame\n", Nodes = Dhcp + "to NodeIpFrame\n",
                  ToMaps = "to AbModMappingFrame\n", Maps = Dhcp + ToMaps;
const std::string ToClients = "to EIPClientSetupFrame\ncheck EIPClientRoutingChk(0) on\ntype EIPClientSlotTxt(0) ",
                  ToConversion = "to ConversionFrame\ntype ASCIIPcccFileTxt(0) ";

TEST(ConfigurationVkRtx, WalksItsPages) {
  const std::string first =
                        "ConfigFrame/OpenConfigLbl SerComFrame/SerComSetLbl EthComFrame/EthComSetLbl "
                        "SerProtoFrame(0)/SerProtSetLbl ",
                    ethernet = "EthProtoFrame/EthProtSetLbl ", routing = ethernet + "RoutingFrame/RoutingSetLbl ",
                    clients = "EIPClientSetupFrame/RoutingSetLbl ", conversion = "ConversionFrame/ConvSetLbl ",
                    maps = "AbModMappingFrame/ConvSetLbl ", apply = "ApplyFrame/ApplySetLbl";
  const Case cases[] = {{Df1, Dhcp, routing},
                        {Df1, ChannelB, "SerProtoFrame(1)/SerProtSetLbl " + routing},
                        {Df1, AsciiA + Route("1|Channel A|1|1|Ethernet|1.1.1.1"), routing + clients + conversion},
                        {Df1, AsciiA + Route("1|Channel A|1|1|Channel A"), routing + conversion},
                        {Modbus, Dhcp, ethernet + "NodeIpFrame/RoutingSetLbl " + maps},
                        {Modbus, Dhcp + Master, ethernet + maps}};
  for (const Case& c : cases) {
    VkRtx user(c.model);
    user.Use(c.acts);
    user.Walk(first + c.expected + apply);
  }
}

// The same acts on the routes and on the maps, whose rows are known by their lows: 99 is entered, or a row deleted.
TEST(ConfigurationVkRtx, TablesKeepTheirOrderWithoutAGap) {
  const struct {
    int before;
    char act;
    int slot;
    std::string lows, scrollMax;
  } rows[] = {{0, '+', 1, "99", "0"},
              {4, '+', 3, "1 2 99 3 4", "0"},
              {4, '+', 5, "1 2 3 4 99", "0"},
              {5, '+', 1, "99 1 2 3 4 5", "480"},
              {19, '+', 1, "99 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19", "7200"},
              {1, '-', 1, "", "0"},
              {3, '-', 1, "2 3", "0"},
              {6, '-', 6, "1 2 3 4 5", "0"},
              {20, '-', 5, "1 2 3 4 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20", "6720"}};
  for (const bool maps : {false, true}) {
    const std::string command = maps ? "MapCmd" : "RouteCmd", table = maps ? "Mapping Table" : "Routing Table";
    for (const auto& row : rows) {
      VkRtx user(maps ? Modbus : Df1);
      EXPECT_EQ(user.Use((maps ? Maps : Routes) + "click Edit" + command),
                Refusal("There is no entries in the " + table + " to edit."));
      EXPECT_EQ(user.Use("click Del" + command), Refusal("There is no entries in the " + table + " to delete."));
      for (int low = 1; low <= row.before; ++low) user.Use(AddRow(maps, low, low));
      user.Use(row.act == '+' ? AddRow(maps, row.slot, 99) : DeleteRow(maps, row.slot));
      const auto lows = Split(row.lows);
      for (std::size_t i = 1; i <= 20; ++i) {
        const int slot = static_cast<int>(i);
        const std::string low = i <= lows.size() ? lows[i - 1] : "",
                          used = low.empty() ? "|" : Str(slot) + "|" + low + (maps ? " - 9" : "");
        EXPECT_EQ(user.Row(maps ? "AbModMapSlotLbl AbModMapAddrLbl" : "RouteSlotLbl RouteDstLowLbl", slot), used)
            << row.lows;
        EXPECT_EQ(user.Record(slot).LowAddress + 100 * user.Record(slot).ABFile,
                  maps && !low.empty() ? Val(low) + 700 : 0)
            << row.lows;
      }
      EXPECT_EQ(user.app.globals.AbModMapCount, maps ? static_cast<int>(lows.size()) : 0);
      EXPECT_EQ(user.Get(maps ? "Configuration_VKRTX.AbModMapVScroll.Max" : "Configuration_VKRTX.RouteVScroll.Max"),
                row.scrollMax);
      const std::string full =
          Refusal("There is no more " + std::string(maps ? "slots" : "slot") + " available in the " + table + ".");
      EXPECT_EQ(user.Use("click Add" + command), lows.size() == 20 ? full : "");
    }
  }
}

TEST(ConfigurationVkRtx, ARouteIsTakenWhole) {
  VkRtx user(Df1);
  user.Use(AsciiAB + Route("1|Channel B|1|2|Ethernet|10.0.0.9") + "click AddRouteCmd");
  for (const char* entry :
       {"select Route.SourceLst Channel A", "type Route.RemDstLowTxt 3", "type Route.RemDstHighTxt 4",
        "select Route.DestinationLst Ethernet", "type Route.IPAddressTxt 10.0.0.8"}) {
    user.Use("click Route.PerformRouteCmd");
    EXPECT_EQ(user.Row(RouteCells, 2), "||||") << entry;
    EXPECT_EQ(user.Use(entry), "");
  }
  user.Use("select Route.DestinationLst Channel B\nclick Route.PerformRouteCmd");  // the box still holds an address
  EXPECT_EQ(user.Row(RouteCells, 2), "2|Channel A|3|Channel B|");
  // A port that has left the lists shows as empty.
  user.Use("click BackCmd\nclick BackCmd\nclick BackCmd\nclick BackCmd\nclick BackCmd\nselect EnableCHBLst False\n" +
           Routes);
  const std::string look =
      "see Route.SlotLst Route.SourceLst Route.RemDstLowTxt Route.DestinationLst Route.IPAddressTxt";
  EXPECT_EQ(user.Use("click EditRouteCmd\n" + look), "1||1|Ethernet|10.0.0.9");
  EXPECT_EQ(user.Use("select Route.SlotLst 2\n" + look), "2|Channel A|3||");
  user.Use("select Route.DestinationLst Ethernet\ntype Route.IPAddressTxt 1.1.1.1\nclick Route.PerformRouteCmd");
  EXPECT_EQ(user.Row(RouteCells, 1), "1|Channel B|1|Ethernet|10.0.0.9");
  EXPECT_EQ(user.Row(RouteCells, 2), "2|Channel A|3|Ethernet|1.1.1.1");
  // A row that went under the editor does not come back.
  user.Use(
      "click EditRouteCmd\nselect Route.SlotLst 2\nclick DelRouteCmd\nselect DelRoute.SlotLst 1\nclick "
      "DelRoute.DeleteRouteCmd");
  user.Use("click Route.PerformRouteCmd");
  EXPECT_EQ(user.Row(RouteCells, 2), "||||");
  user.Use("click Route.CancelCmd\n" + Route("1|Channel A|1|2|Channel A"));
  // No slot chosen; then a table that is cleared under both editors.
  user.Use("click DelRouteCmd\nclick DelRoute.DeleteRouteCmd");
  EXPECT_EQ(user.Use("select DelRoute.SlotLst 2\nsee DelRoute.SourcePortTxt DelRoute.IPAddressTxt"),
            "Channel A|1.1.1.1");
  user.Use("click AddRouteCmd\nclick ClrTableCmd\nclick DelRoute.DeleteRouteCmd\n" +
           Route("3|Channel A|5|6|Channel A"));
  EXPECT_EQ(user.Use("see RouteDstLowLbl(1) RouteDstLowLbl(2) RouteDstLowLbl(3)"), "||");
}

TEST(ConfigurationVkRtx, AsciiRoutesMakeClientsAndPanels) {
  const std::string a = "|Channel A|40|40|Ethernet|10.0.0.", b = "|Channel B|50|50|Ethernet|10.0.0.";
  const std::string clients = "click NextCmd\npage\nsee EIPClientIpAddrValLbl(0) EIPClientIpAddrValLbl(1)";
  const std::string panel = "Configuration_VKRTX.ASCIIPcccConvFrame";
  const struct {
    std::string routes, clients, panels;
    const char* lastTop;
  } rows[] = {
      {Route("1" + a + "1"), "EIPClientSetupFrame10.0.0.1|", "TrueFalse", "(0).Top 1080"},
      {Route("1" + b + "2"), "EIPClientSetupFrame10.0.0.2|", "FalseTrue", "(1).Top 1080"},
      {Route("1" + b + "2") + Route("1" + a + "1"), "EIPClientSetupFrame10.0.0.1|10.0.0.2", "TrueTrue", "(1).Top 4200"},
      {Route("1" + a + "1") + Route("2" + b + "1"), "EIPClientSetupFrame10.0.0.1|10.0.0.1", "TrueTrue", "(1).Top 4200"},
      {Route("1" + a + "1") + Route("2" + a + "2") + Route("3" + a + "3") + Route("4" + b + "4"),
       "EIPClientSetupFrame10.0.0.1|10.0.0.2", "TrueTrue", "(1).Top 4200"},
      {Route("1|Channel B|1|2|Channel A"), "ConversionFrame|", "FalseTrue", "(1).Top 1080"}};
  for (const auto& row : rows) {
    VkRtx user(Df1);
    EXPECT_EQ(user.Use(AsciiAB + row.routes + clients), row.clients);
    EXPECT_EQ(user.Get("Configuration_VKRTX.EIPClientRoutingChk(1).Visible"),
              row.clients.ends_with('|') ? "False" : "True");
    user.Use("to ConversionFrame");
    const std::string first = user.Get(panel + "(0).Shown"), top = Split(row.lastTop)[0];
    EXPECT_EQ(first + user.Get(panel + "(1).Shown"), row.panels) << row.clients;
    EXPECT_EQ(top + " " + user.Get(panel + top), row.lastTop) << row.clients;
  }
  // A client keeps its settings with its address.
  VkRtx user(Df1);
  const std::string slots = "click NextCmd\nsee EIPClientSlotTxt(0) EIPClientSlotTxt(1)";
  user.Use(AsciiAB + Route("1" + a + "1") + ToClients + "7\nclick BackCmd");
  EXPECT_EQ(user.Use(Route("1" + b + "2") + slots), "0|7");
  EXPECT_EQ(user.Get("Configuration_VKRTX.EIPClientSlotTxt(1).Shown"), "True");
  user.Use("click BackCmd\nclick EditRouteCmd\nselect Route.SlotLst 2\ntype Route.IPAddressTxt 10.0.0.3");
  EXPECT_EQ(user.Use("click Route.PerformRouteCmd\n" + slots), "0|0");
  // Routes that went ask for nothing any more.
  EXPECT_EQ(user.Use("back RoutingFrame\nclick ClrTableCmd\nclick NextCmd\npage"), "ApplyFrame");
}

TEST(ConfigurationVkRtx, TakesSlavesOverUpToTheFirstEmptyRow) {
  const std::string box = Refusal("One or more Mapping slots contain invalid entries.");
  const Case cases[] = {{Modbus, "", "", 0},
                        {Modbus, "5|10.0.0.5|6|a.b.c.d", "", 2},
                        {Modbus, "5|10.0.0.5|||6|10.0.0.6", "", 1},
                        {Modbus, "0|0.0.0.0|255|255.255.255.255|0|0.0.0.0", "", 3},
                        {Modbus, "5|10.0.0.5|6", box, 1},
                        {Modbus, "|10.0.0.5", box, 0},
                        {Modbus, "5|10.0.0.5|256|10.0.0.6", box, 1},
                        {Modbus, "-1|10.0.0.5", box, 0},
                        {Modbus, "5 a|10.0.0.5", box, 0},
                        {Modbus, "5|1.2.3", box, 0},
                        {Modbus, "5|1.2.3.256", box, 0}};
  for (const Case& c : cases) {
    const bool valid = c.expected.empty();
    VkRtx user(Modbus);
    EXPECT_EQ(user.Use(Nodes + Slaves(c.acts) + "click NextCmd\npage"),
              c.expected + (valid ? "AbModMappingFrame" : "NodeIpFrame"));
    EXPECT_EQ(user.app.globals.NodeIpCount, c.number) << c.acts;
    // A master passes the page, but not its rows.
    user.Use((valid ? "click BackCmd\n" : "") + ("click BackCmd\nclick BackCmd\n" + Master) + "to EthProtoFrame");
    EXPECT_EQ(user.Use("click NextCmd\npage"), c.expected + (valid ? "AbModMappingFrame" : "EthProtoFrame")) << c.acts;
    EXPECT_EQ(user.app.globals.CurrentPage, valid ? 7 : 5);
  }
}

TEST(ConfigurationVkRtx, MapsAreShownAndReadBack) {
  const struct {
    std::string entries, row, readBack;
  } rows[] = {
      {"1|Typed R/W|7|0|4X|1|20|Integer|5|10", "1|5 - 10|40001|7:0|Int|20|TypedRW", "5|4X|1|7|Typed R/W|Integer"},
      {"1|Prot Typed R/W|7|0|0X|1|20|Binary|5|10", "1|5 - 10|1|7:0|Bin|20|ProtTypedRW",
       "5|0X|1|7|Prot Typed R/W|Binary"},
      {"1|Word Range R/W|8|0|3X|0|20|Floating Pt|-1|300", "1|-1 - 300|30000|8:0|Float|20|WordRangeRW",
       "-1|3X|0|8|Word Range R/W|Floating Pt"},
      {"1|Typed R/W|7|0|4X|10000|20|Integer|5|10", "1|5 - 10|50000|7:0|Int|20|TypedRW", "5||0|7|Typed R/W|Integer"},
      {"1|Typed R/W|7|-3|1X|9999|32767|Integer|5|10", "1|5 - 10|19999|7:-3|Int|32767|TypedRW",
       "5|1X|9999|7|Typed R/W|Integer"}};
  for (const auto& row : rows) {
    VkRtx user(Modbus);
    user.Use(Maps + Map(row.entries) + "click EditMapCmd");
    EXPECT_EQ(user.Row(MapCells, 1), row.row);
    EXPECT_EQ(user.Use("see ABModMapping.LowAddrLst ABModMapping.ModRefLst ABModMapping.ModStartTxt "
                       "ABModMapping.ABFileTxt ABModMapping.ABFncLst ABModMapping.DataTypeLst"),
              row.readBack);
  }
}

TEST(ConfigurationVkRtx, AMapThatFailsLeavesWhatIsDone) {
  VkRtx user(Modbus);
  const auto lows = [&] {  // of rows and records
    std::string text;
    for (int i = 1; i <= 4; ++i)
      text += user.Row(MapCells, i).substr(2, 1) + "," + Str(user.Record(i).LowAddress) + " ";
    return text + Str(user.app.globals.AbModMapCount);
  };
  const std::string fields = "|Typed R/W|7|0|4X|1|1|Binary|";
  user.Use(Maps + Map("1" + fields + "1|9") + Map("2" + fields + "2|9") + Map("1|Typed R/W|x|0|4X|1|1|Binary|9|9"));
  EXPECT_EQ(lows(), "1,9 1,1 2,2 |,0 2");
  for (const char* act : {"click NextCmd", "click CancelCmd", "click ClrMapTableCmd"})
    EXPECT_EQ(user.Use(act).substr(0, 6), "error ") << act;              // behind the editor
  user.Use("type ABModMapping.ABFileTxt 7\nclick ABModMapping.MapCmd");  // opens one more gap
  EXPECT_EQ(lows(), "9,9 1,9 1,1 2,0 3");
  user.Use(
      "click EditMapCmd\ntype ABModMapping.LowAddrLst 5\ntype ABModMapping.ABFileTxt x\nclick ABModMapping.MapCmd");
  EXPECT_EQ(lows(), "9,5 1,9 1,1 2,0 3");
  user.Use("click ABModMapping.CancelCmd\nclick ClrMapTableCmd");
  EXPECT_EQ(lows(), "|,0 |,0 |,0 |,0 0");
}

TEST(ConfigurationVkRtx, AClearedTableComesBackUntilThePageIsLeftOrFilled) {
  std::string routes, maps;
  for (int i = 1; i <= 6; ++i) {
    routes += AddRow(false, i, i);
    maps += AddRow(true, i, i);
  }
  const struct {
    const char* model;
    std::string page, clear, cells, acts;
  } tables[] = {
      {Df1, "RoutingFrame", "ClrTableCmd", RouteCells, routes + "scroll RouteVScroll 480\n"},
      {Modbus, "NodeIpFrame", "NodeIpClrTablCmd", "NodeIpNodeTxt NodeIpIpAddrTxt", Slaves("5|1.1.1.1|6|2.2.2.2")},
      {Modbus, "AbModMappingFrame", "ClrMapTableCmd", MapCells, maps + "scroll AbModMapVScroll 480\n"}};
  for (const auto& table : tables) {
    TemporaryFile file("other.cfg");
    GatewayDevice device(table.model);
    VkRtx user(table.model, &device);
    user.Use(Ip + "finish SaveOpt " + file.Path() + "\nagain\n" + Ip + "to " + table.page);
    const auto state = [&] {
      std::string all = Str(VKRTXWizard(user.app).routing.CountRowsInUse()) + Str(user.app.globals.AbModMapCount);
      for (const char* frame : {"RoutesFrame", "AbModMapFrame"})
        all += user.Get("Configuration_VKRTX." + std::string(frame) + ".Top");
      for (int row = 1; row <= 10; ++row) all += user.Row(table.cells, row) + Str(user.Record(row).LowAddress);
      return all;
    };
    const std::string clear = "click " + table.clear + "\n", buttons = "\nshown " + table.clear + " Undo" + table.clear;
    const std::vector<std::string> ends = {table.acts, "click BackCmd\nclick NextCmd", "click NextCmd\nclick BackCmd",
                                           "click UploadCmd", "open " + file.Path() + "\nto " + table.page};
    for (const std::string& end : ends) {
      EXPECT_EQ(user.Use(clear + table.acts), "");
      const std::string full = state();
      EXPECT_EQ(user.Use(clear + buttons), "-+");
      EXPECT_EQ(user.Row(table.cells, 1).find_first_not_of('|'), std::string::npos);
      EXPECT_EQ(user.Use("click Undo" + table.clear + buttons), "+-");
      EXPECT_EQ(state(), full);
      user.Use(clear + end);
      EXPECT_EQ(user.Use(buttons), "+-") << end;
    }
  }
}

// Whatever was done before, in whatever order.
TEST(ConfigurationVkRtx, ASavedFileOpensAgain) {
  std::mt19937 random(1);
  for (const bool maps : {false, true}) {
    const char* const model = maps ? Modbus : Df1;
    const std::string table = maps ? ToMaps : "to RoutingFrame\n", clear = maps ? "ClrMapTableCmd" : "ClrTableCmd",
                      open = "\ncheck OpenConfigChk off\n" + table;
    TemporaryFile none("none.cfg"), one("one.cfg"), saved("saved.cfg");
    const std::string empty = "open " + none.Path() + open,
                      remove = DeleteRow(maps, 1),  // often, and one after the other
        half = (maps ? Map("1|Typed R/W|7|x") : Route("1|Ethernet|x")) + "click " + (maps ? "ABModMapping" : "Route") +
               ".CancelCmd";
    const std::string acts[] = {empty,
                                empty,
                                "open " + one.Path() + open,
                                "click UploadCmd",
                                AddRow(maps, 1, 1),
                                half,
                                remove,
                                remove,
                                remove,
                                "click " + clear,
                                "click Undo" + clear};
    VkRtx(model).Use(Dhcp + "finish SaveOpt " + none.Path());
    VkRtx(model).Use(Dhcp + table + AddRow(maps, 1, 1) + "finish SaveOpt " + one.Path());
    for (int run = 0; run < 40; ++run) {
      GatewayDevice device(model);
      VkRtx user(model, &device);
      user.Use(Dhcp + table);
      for (int i = 0; i < 6; ++i) user.Use(acts[random() % std::size(acts)]);
      user.Use("finish SaveOpt " + saved.Path());
      EXPECT_EQ(user.Use("again\nopen " + saved.Path() + "\npage"), "SerComFrame") << saved.Content();
    }
  }
}

TEST(ConfigurationVkRtx, SendsItsChoicesInBlocksAndReadsThemBack) {
  const std::string client = AsciiA + Route("1|Channel A|40|41|Ethernet|10.0.0.1");
  std::string seven = Routes, routes = Routes, slaves, maps = ToMaps;
  for (int i = 1; i <= 7; ++i) seven += Route(Str(i) + "|Ethernet|" + Str(i) + "|9|Channel A");
  for (int i = 1; i <= 20; ++i) routes += Route(Str(i) + "|Channel A|" + Str(i) + "|255|Ethernet|10.0.0." + Str(i));
  for (int i = 1; i <= 10; ++i) slaves += Str(i) + "|10.0.1." + Str(i) + "|";
  for (int i = 1; i <= 19; ++i) maps += Map(Str(i) + "|Typed R/W|" + Str(i) + "|500|3X|50|1|Binary|" + Str(i) + "|9");
  const Case cases[] = {
      {Df1,
       "to SerComFrame\nselect SerBaudLst(0) 115200\nselect SerDataLst(0) 7\nselect SerStopLst(0) 2\nselect "
       "SerParityLst(0) Even\nselect SerHandLst Yes\n" +
           Dhcp,
       "01 00 C2 01 07 02 00 01 00 00 00", 1},
      {Df1, Dhcp, "00 80 25 00 08 01 02 00 00 00 00", 2},
      {Df1,
       "to SerComFrame\nselect EnableCHBLst True\nselect SerBaudLst(1) 2400\nselect SerParityLst(1) Odd\n" + AsciiAB,
       "01 60 09 00 08 01 01 00 00 00 03", 2},
      {Df1, Ip, "05 01 A8 C0 00 FF FF FF 00 00 00 00 00 00 1E 00 00 00 00 00 04", 3},
      {Df1, Ip + "type EthGateTxt 10.0.0.1\ntype SocketTimeOutTxt 255\nselect EthSpeedLst 100 Mbps\n" + Dhcp,
       "00 00 00 00 00 00 00 00 01 00 00 0A 64 01 FF 00 00 00 00 00 04", 3},
      {Df1, Dhcp + "to SerProtoFrame(0)\nselect Df1ErrorLst(0) CRC", "02", 4},
      {Modbus, Dhcp, "01 01 B8 0B", 4},
      {Modbus, Dhcp + Master + "select ModbusProtocolLst(0) ASCII\ntype ModbusTimeoutTxt(0) 500", "02 00 F4 01", 4},
      {Df1, ChannelB + "to SerProtoFrame(1)\nselect Df1ErrorLst(1) CRC", "02", 5},
      {Df1, Dhcp, "", 10},
      {Df1,
       AsciiAB + Route("1|Channel A|40|41|Channel A") + Route("2|Channel B|50|51|Channel A") + ToConversion +
           "300\ntype ASCIIPcccWordTxt(0) 10\nselect ASCIIPcccTypeLst(0) Integer\n"
           "select ASCIIPcccFncLst(0) Protected Typed Logical Write\ntype ASCIIPcccFileTxt(1) 7",
       "28 01 2C 00 0A 00 01 00 00 00 00 00 00 00 00 00 32 00 07 00 00 03 00 00 00 00 00 00 00 00 00 00", 10},
      {Modbus, Nodes + Slaves("5|10.0.0.9|6|a.b.c.1"), "02 09 00 00 0A AE 08 01 00 00 00 AE 08", 20},
      {Modbus, Nodes + Slaves("5|10.0.0.9"), "01 05 09 00 00 0A", 24},
      {Modbus, Maps + Map("1|Word Range R/W|300|2|3X|0|-2|Floating Pt|1|10"),
       "01 01 0A 03 FF FF 2C 01 02 00 02 FE FF 03", 30},
      {Df1, client + ToClients + "3", "01 00 00 0A 01 03", 50},
      {Df1, Dhcp, "00 27 10", 100},
      {Df1, client + "type MsgTimeOutTxt 32767", "01 7F FF 03 FF 28 29 05 00 0A 00 00 01", 100},
      {Df1, Routes + Route("1|Channel A|x|255|Ethernet|10.0.0.1"), "01 27 10 00 FF 00 FF 04 00 0A 00 00 01", 100},
      {Df1, seven, "00 00 00 04 00 07 09 00 FF 00 00 00 00", 101},
      {Df1, routes, "00 00 00 00 FF 13 FF 04 00 0A 00 00 13 00 FF 14 FF 04 00 0A 00 00 14", 103},
      {Modbus, Nodes + Slaves(slaves) + maps,
       "00 11 09 03 31 00 11 00 F4 01 01 01 00 01 12 09 03 31 00 12 00 F4 01 01 01 00 01 13 09 03 31 00 13 00 F4 01 01 "
       "01 00 01",
       34}};
  for (const Case& c : cases) {
    GatewayDevice device(c.model);
    TemporaryFile file("gateway.cfg");
    VkRtx user(c.model, &device);
    EXPECT_EQ(user.Use(c.acts + "\nfinish DownOpt"), "reminder\nsuccess\n");
    const sim::Blocks sent = device.gateway.BlocksInForce();
    EXPECT_EQ(ToHex(sent.at(c.number)), c.expected) << c.acts;
    // The device and a file give back what they got.
    EXPECT_EQ(user.Use("again\nclick UploadCmd\nfinish DownSaveOpt " + file.Path()), "reminder\nreminder\nsuccess\n");
    EXPECT_EQ(device.gateway.BlocksInForce(), sent) << c.acts;
    EXPECT_EQ(user.Use("again\nopen " + file.Path() + "\nfinish DownOpt"), "reminder\nsuccess\n");
    EXPECT_EQ(device.gateway.BlocksInForce(), sent) << c.acts;
  }
}

TEST(ConfigurationVkRtx, ShowsWhatADeviceSays) {
  const struct {
    const char* model;
    int block;
    std::string data, look, words, back;
  } rows[] = {
      {Df1, 5, "00",
       "SerBaudLst(0) SerDataLst(1) EnableCHBLst SerProtoLst(1) RouteSrcPortLbl(3) EIPClientSlotTxt(0) "
       "ASCIIPcccTypeLst(1)",
       "19200|7|True|ASCII|Channel B|2|Integer", "00"},
      {Modbus, 2, "01 80 25 00 08 01 02 00 00 00 03", "EnableCHBLst", "False", "01 80 25 00 08 01 02 00 00 00 03"},
      {Modbus, 2, "02 80 25 00 08 01 02 00 00 00 03", "EnableCHBLst", "False", "00 80 25 00 08 01 02 00 00 00 03"},
      {Df1, 1, "00 01 02 03 09 03 07 05 00 00 07", "SerBaudLst(0) SerDataLst(0) SerParityLst(0) SerHandLst",
       "9600|8|None|Yes", "01 01 02 03 09 03 07 01 00 00 07"},
      {Df1, 3, "05 01 A8 C0 00 00 00 00 00 00 00 00 02 07 FF 00 00 00 00 00 09", "EthDHCPLst EthSpeedLst EthIPTxt",
       "Enabled|Auto Detect|192.168.1.5", "00 00 00 00 00 00 00 00 00 00 00 00 02 01 FF 00 00 00 00 00 09"},
      {Df1, 4, "03", "Df1ModeLst(0) Df1ErrorLst(0)", "|CRC", "03"},
      {Df1, 50, "32 01 A8 C0 00 05", "EIPClientIpAddrValLbl(0) EIPClientSlotTxt(0)", "192.168.1.50|0", ""},
      {Df1, 100, "FF 27 10 00 FF 01 02 00 FE 01 02 03 04",
       "RouteDestinationPortLbl(1) RouteIPAddressLbl(1) RouteSlotLbl(20)", "Channel B||20", ""},
      {Df1, 100, "01 27 10 00 07 01 02 00 09 01 02 03 04",
       "RouteSrcPortLbl(1) RouteDstLowLbl(1) RouteDestinationPortLbl(1)", "|1|", ""},
      {Modbus, 24, "FF 05 01 02 03 04", "NodeIpIpAddrTxt(1) NodeIpNodeTxt(10)", "4.3.2.1|0", ""},
      {Modbus, 30, "FF 01 0A 02 FF FF 07 00 00 00 01 14 00 01", "AbModMapModStartLbl(1) AbModMapSlotLbl(20)", "0|20",
       ""},
      {Modbus, 30, "02 01 0A 04 00 00 07 00 00 00 01 14 00 03 01 0A 02 00 00 07 00 00 00 07 14 00 02",
       "AbModMapModStartLbl(2) AbModMapAbFncLbl(2) AbModMapDataTypeLbl(2)", "40001|TypedRW|Float",
       "02 01 0A 04 00 00 07 00 00 00 01 14 00 03 01 0A 02 00 00 07 00 00 00 07 14 00 02"}};
  for (const auto& row : rows) {
    GatewayDevice device(row.model);
    device.Teach(row.block, FromHex(row.data));
    VkRtx user(row.model, &device);
    EXPECT_EQ(user.Use("click UploadCmd\nsee " + row.look), "reminder\n" + row.words) << row.data;
    user.Use("finish DownOpt");
    EXPECT_FALSE(user.app.forms.dispatcher.Ended()) << row.data;
    if (row.back.empty()) continue;
    EXPECT_EQ(ToHex(device.gateway.BlocksInForce().at(row.block)), row.back);
  }
  // What the models offer, and a property that shows nowhere.
  VkRtx modbus(Modbus);
  EXPECT_EQ(modbus.Use("items SerProtoLst(1)"), "item \"Modbus\"\n");
  EXPECT_EQ(modbus.Get("Configuration_VKRTX.AbModMapTableFrame.Caption"), "Routing Table");
}

TEST(ConfigurationVkRtx, AHangUpInAnyBlockLeavesPagesAndDevice) {
  for (const char* model : {Df1, Modbus}) {
    for (const auto& [block, data] : sim::FindGatewayKind(model)->factoryBlocks) {
      GatewayDevice deaf(model, {.deafBlock = block});
      VkRtx reader(model, &deaf), writer(model, &deaf);
      EXPECT_EQ(reader.Use("click UploadCmd\nsee SerBaudLst(0) EthIPTxt"), "reminder\ntime-out\n9600|");
      EXPECT_EQ(writer.Use(Dhcp + "finish DownOpt\npage"), "reminder\ntime-out\nApplyFrame") << block;
      EXPECT_FALSE(reader.driver.written.ends_with(EndOfExchange) || writer.driver.written.ends_with(EndOfExchange));
      EXPECT_EQ(deaf.gateway.BlocksInForce(), sim::FindGatewayKind(model)->factoryBlocks);
      EXPECT_EQ(ToHex(writer.driver.written.substr(0, 20)), "A5 CE 11 FA 00 01 00 0B 01 80 25 00 08 01 02 00 00 00 " +
                                                                std::string(model == Df1 ? "00 49" : "01 48"));
    }
  }
}

TEST(ConfigurationVkRtx, FinishRefusesWhatHasNoBytes) {
  const std::string client = AsciiA + Route("1|Channel A|1|1|Ethernet|1.1.1.1"),
                    full = "Allen-Bradley/Modbus Mapping, Mapping Table";
  std::string twenty = Maps;
  for (int i = 1; i <= 20; ++i) twenty += Map(Str(i) + "|Typed R/W|7|0|4X|1|1|Integer|1|2");
  const Case cases[] = {
      {Df1, Dhcp + "type SocketTimeOutTxt 300", "Ethernet Communication Settings, Socket Timeout"},
      {Df1, "to EthComFrame\ntype EthGateTxt 1.2.3\n" + Dhcp,
       "Ethernet Communication Settings, Default Gateway (shown with DHCP Disabled)"},
      {Df1, Routes + Route("1|Channel A|1|256|Channel A"), "Routing Table Setup, slot 1, High"},
      {Df1, Routes + Route("1|Channel A|-1|2|Channel A"), "Routing Table Setup, slot 1, Low"},
      {Df1, Routes + Route("1|Channel A|1|2|Ethernet|1.2.3.999"), "Routing Table Setup, slot 1, IP Address"},
      {Df1, Routes + "type MsgTimeOutTxt 40000", "Routing Table Setup, Message Timeout"},
      {Df1, Routes + "type MsgTimeOutTxt -5", "Routing Table Setup, Message Timeout"},
      {Df1, client + ToClients + "x",
       "Ethernet/IP Client Setup, client 1, Controller Slot Number (shown with Routing Required)"},
      {Df1, client + ToConversion + "70000",
       "Protocol Conversion Settings - Channel A, File Number (shown with an ASCII route from the channel)"},
      {Modbus, Dhcp + Master + "type ModbusTimeoutTxt(0) x",
       "Serial Protocol Settings, Request Timeout (shown with Modbus Mode Master)"},
      {Modbus, Dhcp + Master + "type ModbusTimeoutTxt(0) -1",
       "Serial Protocol Settings, Request Timeout (shown with Modbus Mode Master)"},
      {Df1, client + ToConversion + "1\ntype ASCIIPcccWordTxt(0) -1",
       "Protocol Conversion Settings - Channel A, Element Number"},
      {Modbus, Maps + Map("1|Typed R/W|7|0|4X|1|1|Binary|300|1"), "Allen-Bradley/Modbus Mapping, slot 1, Low Address"},
      {Modbus, twenty, full}};
  for (const Case& c : cases) {
    for (const std::string option : {"DownOpt", "DownSaveOpt", "SaveOpt"}) {
      GatewayDevice device(c.model);
      TemporaryFile file("refused.cfg");
      VkRtx user(c.model, &device);
      const std::string told = user.Use(c.acts + "\nfinish " + option + " " + file.Path());
      const bool saves = option == "SaveOpt" && c.expected == full;  // a file holds them all
      EXPECT_EQ(file.Content().find("\r\n20\r\n") != std::string::npos, saves);
      if (saves) continue;
      const std::string start = "box critical \"Error!\" \"" + c.expected + ": the device can't hold this value.";
      EXPECT_EQ(told.substr(0, start.size()), start);
      EXPECT_EQ(Split(told, '\n').size(), 1u) << told;
      EXPECT_EQ(user.Use("page") + user.driver.written + file.Content() + user.app.globals.BlockTable[1], "ApplyFrame");
      EXPECT_EQ(user.app.globals.SocketTimeout + user.app.globals.RouteCount, 0);
    }
  }
}

TEST(ConfigurationVkRtx, SavesAndOpensItsFile) {
  const std::string ethernet = "\"192.168.1.5\"\n\"255.255.255.0\"\n\"\"\n0\n0\n30\n4\n";
  const std::string modbus = "\"VK-RTX\"\n\"AB Ethernet, Modbus\"\n9600\n8\n1\n2\n0\n1\n1\n1\n3000\n" + ethernet;
  const std::string df1 =
      "\"VK-RTX\"\n\"AB Ethernet, ASCII, DF1\"\n9600\n8\n1\n2\n0\n3\n0\n9600\n8\n1\n2\n0\n0\n0\n0\n" + ethernet;
  const Case files[] = {
      {Modbus, Ip + "to NodeIpFrame\n" + Slaves("3|192.168.1.20") + ToMaps + Map("1|Typed R/W|7|0|4X|1|5|Integer|1|10"),
       modbus + "1\n1,10,4,0,7,0,1,5,0\n1\n3,\"192.168.1.20\"\n"},
      {Modbus, Ip, modbus + "0\n0\n"},
      {Df1, Ip + A + Route("1|Channel A|40|41|Ethernet|10.0.0.1") + ToClients + "2\n" + ToConversion + "300",
       df1 + "\"10.0.0.1\",1,2\n\"\",0,0\n1\n10000\n3,255,40,41,5,0,\"10.0.0.1\"\n40\n300\n0\n3\n0\n0\n0\n0\n3\n0\n"}};
  for (const Case& c : files) {
    TemporaryFile file("gateway.cfg");
    VkRtx user(c.model);
    user.Use(c.acts + "\nfinish SaveOpt " + file.Path());
    EXPECT_EQ(file.Content(), Lines(c.expected));
  }
  TemporaryFile negative("negative.cfg");
  negative.Fill(Lines(modbus + "-1\n-7\n"));
  VkRtx opener(Modbus);
  opener.Use("open " + negative.Path() + "\n" + ToMaps + Map("1|Typed R/W|7|0|4X|1|1|Integer|1|9"));
  EXPECT_EQ(opener.app.globals.AbModMapCount + opener.app.globals.NodeIpCount, 1);
  const std::pair<const char*, std::string> refused[] = {{Modbus, modbus + "21\n"},
                                                         {Modbus, modbus + "0\n11\n"},
                                                         {Modbus, modbus + "32768\n"},
                                                         {Modbus, modbus + "0\n1\n3,20\n"},
                                                         {Df1, df1 + "\"\",0,0\n\"\",0,0\n21\n"}};
  for (const auto& [model, text] : refused) {
    TemporaryFile file("gateway.cfg");
    file.Fill(Lines(text));
    VkRtx user(model);
    EXPECT_EQ(user.Use("open " + file.Path() + "\npage\nsee EthIPTxt"), "broken\nConfigFrame") << text;
    EXPECT_EQ(user.app.globals.EthernetIP, "");
  }
}

}  // namespace
}  // namespace vk32
