// The wizard of the VK-RTX in both its models: pages, tables and their editors, blocks, file, Finish.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

constexpr const char *Df1 = "VK-RTX-DF1", *Modbus = "VK-RTX-Modbus";  // the models' names in the simulator
const std::string RouteCells = "RouteSlotLbl RouteSrcPortLbl RouteDstLowLbl RouteDestinationPortLbl RouteIPAddressLbl";
const std::string MapCells =
    "AbModMapSlotLbl AbModMapAddrLbl AbModMapModStartLbl AbModMapAbDataFiletLbl AbModMapDataTypeLbl "
    "AbModMapDataPointsLbl AbModMapAbFncLbl";

struct VkRtx : WizardUser {
  using WizardUser::WizardUser;
  std::string Row(const std::string& cells, int row) {
    std::string shown;
    for (const std::string& cell : Split(cells)) shown += " " + cell + "(" + Str(row) + ")";
    return Use("see" + shown);
  }
  std::string Low(int slot) const { return Str(app.globals.AbModMapTable[slot].LowAddress); }
};

using Case = std::tuple<const char*, std::string, std::string>;  // model, acts, what is expected
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
  return maps ? Map(Str(slot) + "|Typed R/W|7|0|4X|1|" + Str(low) + "|Integer|" + Str(low) + "|9")
              : Route(Str(slot) + "|Channel A|" + Str(low) + "|9|Ethernet|10.0.0." + Str(low));
}
std::string DeleteRow(bool maps, int slot) {
  const std::string list = ".SlotLst " + Str(slot) + "\nclick ";
  return maps ? "click DelMapCmd\nselect ABModMapping" + list + "ABModMapping.MapCmd\n"
              : "click DelRouteCmd\nselect DelRoute" + list + "DelRoute.DeleteRouteCmd\n";
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
                  EnableB = "to SerComFrame\nselect EnableCHBLst True\n", ChannelB = EnableB + Dhcp,
                  A = "to SerProtoFrame(0)\nselect SerProtoLst(0) ASCII\nto RoutingFrame\n", AsciiA = Dhcp + A,
                  AsciiAB = ChannelB + "to SerProtoFrame(1)\nselect SerProtoLst(1) ASCII\nclick BackCmd\n" + A,
                  Master = "to SerProtoFrame(0)\nselect ModbusModeLst(0) Master\n", Routes = Dhcp + "to RoutingFrame\n",
                  Nodes = Dhcp + "to NodeIpFrame\n", ToMaps = "to AbModMappingFrame\n", Maps = Dhcp + ToMaps,
                  ToClients = "to EIPClientSetupFrame\ncheck EIPClientRoutingChk(0) on\ntype EIPClientSlotTxt(0) ",
                  ToConversion = "to ConversionFrame\ntype ASCIIPcccFileTxt(0) ";

TEST(ConfigurationVkRtx, WalksItsPages) {
  const std::string first = "ConfigFrame SerComFrame EthComFrame SerProtoFrame(0) ", ethernet = "EthProtoFrame ",
                    routing = ethernet + "RoutingFrame ", clients = "EIPClientSetupFrame ",
                    conversion = "ConversionFrame ", maps = "AbModMappingFrame ", apply = "ApplyFrame";
  const Case cases[] = {{Df1, Dhcp, routing},
                        {Df1, ChannelB, "SerProtoFrame(1) " + routing},
                        {Df1, AsciiA + Route("1|Channel A|1|1|Ethernet|1.1.1.1"), routing + clients + conversion},
                        {Df1, AsciiA + Route("1|Channel A|1|1|Channel A"), routing + conversion},
                        {Modbus, Dhcp, ethernet + "NodeIpFrame " + maps},
                        {Modbus, Dhcp + Master, ethernet + maps}};
  for (const auto& [model, acts, expected] : cases) {
    VkRtx user(model);
    user.Use(acts);
    user.Walk(first + expected + apply);
  }
}

// The same acts on the routes and on the maps, whose rows are known by their lows: 99 is entered, or a row deleted.
TEST(ConfigurationVkRtx, TablesKeepTheirOrderWithoutAGap) {
  // How many there are before, the act and its slot, the lows that are left, the bar's Max.
  const std::tuple<int, char, int, std::string, std::string> rows[] = {
      {4, '+', 3, "1 2 99 3 4", "0"},
      {4, '+', 4, "1 2 3 99 4", "0"},
      {5, '+', 1, "99 1 2 3 4 5", "480"},
      {19, '+', 20, "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 99", "7200"},
      {1, '-', 1, "", "0"},
      {6, '-', 6, "1 2 3 4 5", "0"},
      {20, '-', 5, "1 2 3 4 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20", "6720"}};
  for (const bool maps : {false, true}) {
    const std::string command = maps ? "MapCmd\n" : "RouteCmd\n", none = "There is no entries in the ",
                      full = std::string("There is no more ") + (maps ? "slots" : "slot") + " available in the ",
                      table = maps ? "Mapping Table" : "Routing Table", bar = maps ? "AbModMapVScroll" : "RouteVScroll",
                      cells = maps ? "AbModMapSlotLbl AbModMapDataPointsLbl" : "RouteSlotLbl RouteDstLowLbl";
    for (const auto& [before, act, at, left, scrollMax] : rows) {
      VkRtx user(maps ? Modbus : Df1);
      EXPECT_EQ(user.Use((maps ? Maps : Routes) + "click Edit" + command + "click Del" + command),
                Refusal(none + table + " to edit.") + Refusal(none + table + " to delete."));
      for (int low = 1; low <= before; ++low) user.Use(AddRow(maps, low, low));
      user.Use(act == '+' ? AddRow(maps, at, 99) : DeleteRow(maps, at));
      EXPECT_EQ(user.Use("get " + bar + ".Max"), "value \"" + scrollMax + "\"\n");
      const auto lows = Split(left);
      EXPECT_EQ(user.app.globals.AbModMapCount, maps ? static_cast<int>(lows.size()) : 0);
      for (std::size_t i = 0; i < 20; ++i) {
        const int slot = static_cast<int>(i) + 1;
        const std::string shown = user.Row(cells, slot) + "," + user.Low(slot);
        EXPECT_EQ(shown, i < lows.size() ? Str(slot) + "|" + lows[i] + "," + (maps ? lows[i] : "0") : "|,0") << left;
      }
      EXPECT_EQ(user.Use("click Add" + command), lows.size() == 20 ? Refusal(full + table + ".") : "");
    }
  }
}

TEST(ConfigurationVkRtx, ARouteIsTakenWhole) {
  VkRtx user(Df1);
  user.Use(AsciiAB + Route("1|Channel B|1|2|Ethernet|10.0.0.9") + "click AddRouteCmd");
  for (const std::string entry : {"SourceLst Channel A", "RemDstLowTxt 3", "RemDstHighTxt 4", "DestinationLst Ethernet",
                                  "IPAddressTxt 10.0.0.8"}) {
    user.Use("click Route.PerformRouteCmd");
    EXPECT_EQ(user.Row(RouteCells, 2), "||||") << entry;
    EXPECT_EQ(user.Use((entry.find("Txt") == std::string::npos ? "select Route." : "type Route.") + entry), "");
  }
  user.Use("select Route.DestinationLst Channel B\nclick Route.PerformRouteCmd");
  EXPECT_EQ(user.Row(RouteCells, 2), "2|Channel A|3|Channel B|");  // the box still holds an address
  // A port that has left the lists shows as empty.
  user.Use("back SerComFrame\nselect EnableCHBLst False\n" + Routes + "click EditRouteCmd");
  const std::string look =
      "\nsee Route.SlotLst Route.SourceLst Route.RemDstLowTxt Route.RemDstHighTxt Route.DestinationLst "
      "Route.IPAddressTxt";
  EXPECT_EQ(user.Use(look), "1||1|2|Ethernet|10.0.0.9");
  EXPECT_EQ(user.Use("select Route.SlotLst 2" + look), "2|Channel A|3|4||");
  user.Use("select Route.DestinationLst Ethernet\ntype Route.IPAddressTxt 1.1.1.1\nclick Route.PerformRouteCmd");
  EXPECT_EQ(user.Row(RouteCells, 2), "2|Channel A|3|Ethernet|1.1.1.1");
  // A row that went under the editor does not come back, and no other goes in its place.
  user.Use("click EditRouteCmd\nselect Route.SlotLst 2\n" + DeleteRow(false, 1) + "click Route.PerformRouteCmd");
  EXPECT_EQ(user.Row(RouteCells, 2), "||||");
  user.Use("click Route.CancelCmd\nclick DelRouteCmd\nclick DelRoute.DeleteRouteCmd");  // no slot chosen
  EXPECT_EQ(user.Use("select DelRoute.SlotLst 1\nsee DelRoute.SourcePortTxt DelRoute.IPAddressTxt"),
            "Channel A|1.1.1.1");
  user.Use("click AddRouteCmd\nclick ClrTableCmd\nclick DelRoute.DeleteRouteCmd\n" +
           Route("2|Channel A|5|6|Channel A"));
  EXPECT_EQ(user.Use("see RouteDstLowLbl(1) RouteDstLowLbl(2)"), "|");
}

TEST(ConfigurationVkRtx, AnEditorSaysWhatItLacks) {
  const std::string map = "fill ABModMapping 1|Typed R/W|7|0|4X|1|8|Integer|";
  const std::array<std::string, 3> rows[] = {
      {Df1, "", "Source Port is missing"},
      {Df1, "fill Route 1|Channel A|x|9|Channel A", "Low: enter a number from 0 to 255"},
      {Df1, "fill Route 1|Channel A|10|9|Channel A", "Low is above High"},
      {Df1, "fill Route 1|Channel A|1|9|Ethernet|10", "IP Address: enter four numbers from 0 to 255, parted by points"},
      {Df1, "fill Route 1|Channel A|1|9|Ethernet|1.1.1.1", ""},
      {Modbus, "fill ABModMapping 1|Typed R/W|7|0|4X|0", "Data Type is missing"},
      {Modbus, "fill ABModMapping 1|Typed R/W|7|0|4X|10000|8|Integer",
       "Modbus Start Address: enter a number from 1 to 9999"},
      {Modbus, map + "1|256", "High Address: enter a number from 0 to 255"},
      {Modbus, map + "1|2", ""}};
  for (const auto& [model, acts, hint] : rows) {
    VkRtx user(model.c_str());
    const bool maps = model == Modbus;
    user.Use((maps ? Maps + "click AddMapCmd\n" : Routes + "click AddRouteCmd\n") + acts);
    EXPECT_EQ(user.Use(maps ? "see ABModMapping.HintLbl" : "see Route.HintLbl"), hint) << acts;
  }
}

TEST(ConfigurationVkRtx, AsciiRoutesMakeClientsAndPanels) {
  const std::string a = "|Channel A|40|40|Ethernet|10.0.0.", b = "|Channel B|50|50|Ethernet|10.0.0.",
                    a1 = Route("1" + a + "1"),
                    see = "click NextCmd\npage\nsee EIPClientIpAddrValLbl(0) EIPClientIpAddrValLbl(1)",
                    panels = "to ConversionFrame\nshown ASCIIPcccConvFrame(0) ASCIIPcccConvFrame(1)\n";
  const std::array<std::string, 5> rows[] = {
      {a1, "EIPClientSetupFrame10.0.0.1|", "+-", "(0)", "1080"},
      {Route("1" + b + "2"), "EIPClientSetupFrame10.0.0.2|", "-+", "(1)", "1080"},
      {Route("1" + b + "2") + a1, "EIPClientSetupFrame10.0.0.1|10.0.0.2", "++", "(1)", "4200"},
      {a1 + Route("2" + a + "2") + Route("3" + b + "3"), "EIPClientSetupFrame10.0.0.1|10.0.0.2", "++", "(1)", "4200"},
      {Route("1|Channel B|1|2|Channel A"), "ConversionFrame|", "-+", "(1)", "1080"}};
  for (const auto& [routes, clients, shown, panel, top] : rows) {
    VkRtx user(Df1);
    EXPECT_EQ(user.Use(AsciiAB + routes + see), clients);
    EXPECT_EQ(user.Use(panels + "get ASCIIPcccConvFrame" + panel + ".Top"), shown + "value \"" + top + "\"\n");
  }
  // A client keeps its settings with its address.
  VkRtx user(Df1);
  const std::string slots = "click NextCmd\nsee EIPClientSlotTxt(0) EIPClientSlotTxt(1)\nshown EIPClientSlotTxt(1)";
  user.Use(AsciiAB + a1 + ToClients + "7\nclick BackCmd");
  EXPECT_EQ(user.Use(Route("1" + b + "2") + slots), "0|7+");
  user.Use("click BackCmd\nclick EditRouteCmd\nselect Route.SlotLst 2\ntype Route.IPAddressTxt 10.0.0.3");
  EXPECT_EQ(user.Use("click Route.PerformRouteCmd\n" + slots), "0|0-");
  // Routes that went ask for nothing any more.
  EXPECT_EQ(user.Use("to ConversionFrame\nback RoutingFrame\nclick ClrTableCmd\nclick NextCmd\npage"), "ApplyFrame");
}

TEST(ConfigurationVkRtx, TakesSlavesOverUpToTheFirstEmptyRow) {
  const std::string box = Refusal("One or more Mapping slots contain invalid entries.");
  const std::pair<int, std::string> good[] = {
      {0, ""}, {2, "5|10.0.0.5|6|a.b.c.d"}, {1, "5|10.0.0.5|||6|10.0.0.6"}, {3, "0|0.0.0.0|255|1.1.1.1|0|0.0.0.0"}};
  for (const auto& [count, entries] : good) {
    VkRtx user(Modbus);
    EXPECT_EQ(user.Use(Nodes + Slaves(entries) + "click NextCmd\npage"), "AbModMappingFrame");
    EXPECT_EQ(user.app.globals.NodeIpCount, count) << entries;
  }
  for (const char* entries :
       {"5|10.0.0.5|6", "|10.0.0.5", "5|10.0.0.5|256|10.0.0.6", "-1|1.1.1.1", "5 a|1.1.1.1", "5|1.2.3"}) {
    VkRtx user(Modbus);
    EXPECT_EQ(user.Use(Nodes + Slaves(entries) + "click NextCmd\npage"), box + "NodeIpFrame") << entries;
    // A master passes the page, but not its rows.
    user.Use("back SerProtoFrame(0)\n" + Master + "to EthProtoFrame");
    EXPECT_EQ(user.Use("click NextCmd\npage"), box + "EthProtoFrame") << entries;
  }
}

TEST(ConfigurationVkRtx, MapsAreShownAndReadBackAndOneThatFailsLeavesWhatIsDone) {
  const std::array<std::string, 3> rows[] = {
      {"Typed R/W|7|0|4X|1|20|Integer|5|10", "5 - 10|40001|7:0|Int|20|TypedRW", "5|4X|1|Typed R/W|Integer"},
      {"Prot Typed R/W|7|0|0X|1|2|Binary|5|10", "5 - 10|1|7:0|Bin|2|ProtTypedRW", "5|0X|1|Prot Typed R/W|Binary"},
      {"Word Range R/W|8|0|3X|0|2|Floating Pt|-1|300", "-1 - 300|30000|8:0|Float|2|WordRangeRW",
       "-1|3X|0|Word Range R/W|Floating Pt"},
      {"Typed R/W|7|0|4X|10000|20|Integer|5|10", "5 - 10|50000|7:0|Int|20|TypedRW", "5||0|Typed R/W|Integer"},
      {"Typed R/W|7|-3|1X|9999|32767|Integer|5|1", "5 - 1|19999|7:-3|Int|32767|TypedRW",
       "5|1X|9999|Typed R/W|Integer"}};
  for (const auto& [entries, cells, readBack] : rows) {
    VkRtx user(Modbus);
    user.Use(Maps + Map("1|" + entries) + "click EditMapCmd");
    EXPECT_EQ(user.Row(MapCells, 1), "1|" + cells);
    EXPECT_EQ(user.Use("see ABModMapping.LowAddrLst ABModMapping.ModRefLst ABModMapping.ModStartTxt "
                       "ABModMapping.ABFncLst ABModMapping.DataTypeLst"),
              readBack);
    const auto entered = Split(entries, '|');
    EXPECT_EQ(
        user.Use(
            "see ABModMapping.ABFileTxt ABModMapping.ABWordTxt ABModMapping.DataPointsTxt ABModMapping.HighAddrLst"),
        entered[1] + "|" + entered[2] + "|" + entered[5] + "|" + entered[8]);
  }
  VkRtx user(Modbus);
  const auto lows = [&] {  // of rows and records
    std::string text;
    for (int i = 1; i <= 4; ++i) text += user.Row("AbModMapAddrLbl", i).substr(0, 1) + "," + user.Low(i) + " ";
    return text + Str(user.app.globals.AbModMapCount);
  };
  user.Use(Maps + AddRow(true, 1, 1) + AddRow(true, 2, 2) + Map("1|Typed R/W|x|0|4X|1|1|Binary|9|9"));
  EXPECT_EQ(lows(), "1,9 1,1 2,2 ,0 2");
  EXPECT_TRUE(user.Use("click ClrMapTableCmd").starts_with("error "));   // behind the editor
  user.Use("type ABModMapping.ABFileTxt 7\nclick ABModMapping.MapCmd");  // opens one more gap
  EXPECT_EQ(lows(), "9,9 1,9 1,1 2,0 3");
  user.Use("click EditMapCmd\nfill ABModMapping 1|Typed R/W|x|0|4X|1|1|Binary|5|9\nclick ABModMapping.MapCmd");
  EXPECT_EQ(lows(), "9,5 1,9 1,1 2,0 3");
  user.Use("click ABModMapping.CancelCmd\nclick ClrMapTableCmd");
  EXPECT_EQ(lows(), ",0 ,0 ,0 ,0 0");
}

TEST(ConfigurationVkRtx, AClearedTableComesBackUntilThePageIsLeftOrFilled) {
  std::string routes, maps;
  for (int i = 1; i <= 6; ++i) routes += AddRow(false, i, i), maps += AddRow(true, i, i);
  const std::array<std::string, 4> tables[] = {
      {Df1, "RoutingFrame", "ClrTableCmd", routes + "scroll RouteVScroll 480\n"},
      {Modbus, "NodeIpFrame", "NodeIpClrTablCmd", Slaves("5|1.1.1.1|6|2.2.2.2")},
      {Modbus, "AbModMappingFrame", "ClrMapTableCmd", maps + "scroll AbModMapVScroll 480\n"}};
  for (const auto& [model, page, table, acts] : tables) {
    GatewayDevice device(model);
    VkRtx user(model, &device);
    user.Use(Ip + "finish SaveOpt\nagain\n" + Ip + "to " + page);
    const auto state = [&] { return user.State() + user.Low(2) + Str(user.app.globals.AbModMapCount); };
    const std::string clear = "click " + table + "\n", undo = "click Undo" + clear.substr(6),
                      buttons = "shown " + table + " Undo" + table;
    for (const std::string act :
         {"", "click BackCmd\nclick NextCmd", "click NextCmd\nclick BackCmd", "click UploadCmd", "open\nto "}) {
      user.Use(clear);
      const std::string empty = state();
      EXPECT_EQ(user.Use(acts + "\n" + buttons), "+-");
      const std::string full = state();
      EXPECT_EQ(user.Use(clear + buttons), "-+");
      EXPECT_EQ(state(), empty);
      EXPECT_EQ(user.Use(undo + buttons), "+-");
      EXPECT_EQ(state(), full);
      user.Use(clear + act + (act.ends_with("to ") ? page : "") + "\n");
      EXPECT_EQ(user.Use(buttons), act.empty() ? "-+" : "+-") << act;
    }
  }
}

TEST(ConfigurationVkRtx, AChosenRowIsTheOneToEditAndToDelete) {
  for (const bool maps : {false, true}) {
    VkRtx user(maps ? Modbus : Df1);
    const std::string table = maps ? "AbModMapTableFrame" : "RoutesTableFrame", bar = maps ? "AbModMap" : "Route",
                      editor = maps ? "ABModMapping" : "Route", deleting = maps ? editor : "DelRoute",
                      look = "\nget " + table + ".Row\nget " + bar + "VScroll.Value", press = "press " + table + " ",
                      low = maps ? ".DataPointsTxt" : ".RemDstLowTxt";
    user.Use(maps ? Maps : Routes);
    for (int i = 1; i <= 7; ++i) user.Use(AddRow(maps, i, 10 + i));
    const std::tuple<std::string, int, int> rows[] = {
        {press + "Down", 1, 0},
        {press + "End", 7, 960},
        {press + "PageUp", 2, 480},
        {press + "Home", 1, 0},
        {press + "Up", 1, 0},
        {"click " + bar + (maps ? "AddrLbl(4)" : "SlotLbl(4)"), 4, 0},
        {press + "PageDown", 7, 960},
        {press + "Delete\nclick " + deleting + (maps ? ".MapCmd" : ".DeleteRouteCmd"), 6, 480}};
    for (const auto& [act, row, scrolled] : rows) {
      EXPECT_EQ(user.Use(act + look), "value \"" + Str(row) + "\"\nvalue \"" + Str(scrolled) + "\"\n") << act;
    }
    for (const std::string& key : {press + "Enter", "click Edit" + std::string(maps ? "Map" : "Route") + "Cmd"}) {
      EXPECT_EQ(user.Use(key + "\nsee " + editor + ".SlotLst " + editor + low + "\nclick " + editor + ".CancelCmd"),
                "6|16");
    }
  }
}

TEST(ConfigurationVkRtx, SendsItsChoicesInBlocksAndReadsThemBack) {
  std::string routes = Routes, slaves, maps;
  for (int i = 1; i <= 19; ++i) {
    const std::string n = Str(i);
    routes += Route(n + "|Channel A|" + n + "|255|Ethernet|10.0.0." + n);
    maps += Map(n + "|Typed R/W|" + n + "|500|3X|50|1|Binary|" + n + "|9");
    if (i <= 10) slaves += n + "|10.0.1." + n + "|";
  }
  const std::string slots = Route("1|Channel A|40|41|Channel A") + Route("2|Channel B|50|51|Channel A");
  const Case cases[] = {
      // blocks, each with its number in front
      {Df1, Dhcp, "2 00 80 25 00 08 01 02 00 00 00 00|10|100 00 27 10"},
      {Df1,
       "to SerComFrame\nselect SerBaudLst(0) 115200\nselect SerDataLst(0) 7\nselect SerStopLst(0) 2\n"
       "select SerParityLst(0) Even\nselect SerHandLst Yes\nselect EnableCHBLst True\n"
       "select SerBaudLst(1) 2400\nselect SerParityLst(1) Odd\n" +
           AsciiAB + slots + ToConversion +
           "300\ntype ASCIIPcccWordTxt(0) 10\nselect ASCIIPcccTypeLst(0) Integer\n"
           "select ASCIIPcccFncLst(0) Protected Typed Logical Write\ntype ASCIIPcccFileTxt(1) 7",
       "1 01 00 C2 01 07 02 00 01 00 00 03|2 01 60 09 00 08 01 01 00 00 00 03|"
       "10 28 01 2C 00 0A 00 01 00 00 00 00 00 00 00 00 00 32 00 07 00 00 03 00 00 00 00 00 00 00 00 00 00"},
      {Df1, Ip + A + Route("1|Channel A|40|41|Ethernet|10.0.0.1") + "type MsgTimeOutTxt 32767\n" + ToClients + "3",
       "3 05 01 A8 C0 00 FF FF FF 00 00 00 00 00 00 1E 00 00 00 00 00 04|50 01 00 00 0A 01 03|"
       "100 01 7F FF 03 FF 28 29 05 00 0A 00 00 01"},
      {Df1,
       EnableB + Ip + "type EthGateTxt 10.0.0.1\ntype SocketTimeOutTxt 255\nselect EthSpeedLst 100 Mbps\n" + Dhcp +
           "to SerProtoFrame(0)\nselect Df1ErrorLst(0) CRC\nto SerProtoFrame(1)\nselect Df1ErrorLst(1) CRC",
       "3 00 00 00 00 00 00 00 00 01 00 00 0A 64 01 FF 00 00 00 00 00 04|4 02|5 02"},
      {Df1, Routes + Route("1|Channel A|x|255|Ethernet|10.0.0.1"), "100 01 27 10 00 FF 00 FF 04 00 0A 00 00 01"},
      {Df1, routes + Route("20|Ethernet|7|9|Channel A"),
       "103 00 00 00 00 FF 13 FF 04 00 0A 00 00 13 04 00 07 09 00 FF 00 00 00 00"},
      {Modbus, Dhcp + Master + "select ModbusProtocolLst(0) ASCII\ntype ModbusTimeoutTxt(0) 500", "4 02 00 F4 01"},
      {Modbus, Nodes + Slaves("5|10.0.0.9|6|a.b.c.1") + ToMaps + Map("1|Word Range R/W|300|2|3X|0|-2|Floating Pt|1|10"),
       "4 01 01 B8 0B|20 02 09 00 00 0A AE 08 01 00 00 00 AE 08|24 02 05 09 00 00 0A 06 01 00 00 00|"
       "30 01 01 0A 03 FF FF 2C 01 02 00 02 FE FF 03"},
      {Modbus, Nodes + Slaves(slaves) + ToMaps + maps,
       "34 00 11 09 03 31 00 11 00 F4 01 01 01 00 01 12 09 03 31 00 12 00 F4 01 01 01 00 01 13 09 03 31 00 13 00 F4 "
       "01 01 01 00 01"}};
  for (const auto& [model, acts, expected] : cases) {
    GatewayDevice device(model);
    VkRtx user(model, &device);
    EXPECT_EQ(user.Use(acts + "\nfinish DownOpt"), "reminder\nsuccess\n");
    const sim::Blocks sent = device.gateway.BlocksInForce();
    for (const std::string& block : Split(expected, '|')) {
      const std::string data = ToHex(sent.at(std::stoi(block)));
      EXPECT_EQ(Split(block)[0] + (data.empty() ? "" : " ") + data, block) << acts;
    }
    // The device and a file give back what they got.
    EXPECT_EQ(user.Use("again\nclick UploadCmd\nfinish DownSaveOptLbl"), "reminder\nreminder\nsuccess\n");
    EXPECT_EQ(device.gateway.BlocksInForce(), sent) << acts;
    EXPECT_EQ(user.Use("again\nopen\nfinish DownOpt"), "reminder\nsuccess\n");
    EXPECT_EQ(device.gateway.BlocksInForce(), sent) << acts;
  }
}

TEST(ConfigurationVkRtx, ShowsWhatADeviceSays) {
  const std::string port = " 80 25 00 08 01 02 00 00 00 03", map1 = " 01 0A 04 00 00 07 00 00 00 01 14 00 03",
                    map2 = " 01 0A 02 00 00 07 00 00 00 07 14 00 02",
                    nothing = "00 00 00 00 00 00 00 00 00 00 00 00 02 ";
  const std::tuple<const char*, int, std::string, std::string, std::string, std::string> rows[] = {
      {Df1, 5, "00", "SerDataLst(1) EnableCHBLst SerProtoLst(1) EIPClientSlotTxt(0) ASCIIPcccTypeLst(1)",
       "7|True|ASCII|2|Integer", "00"},
      {Modbus, 2, "02" + port, "EnableCHBLst", "False", "00" + port},
      {Df1, 1, "00 01 02 03 09 03 07 05 00 00 07", "SerBaudLst(0) SerParityLst(0) SerHandLst", "9600|None|Yes",
       "01 01 02 03 09 03 07 01 00 00 07"},
      {Df1, 3, "05 01 A8 C0 00 00 00 00 00 00 00 00 02 07 FF 00 00 00 00 00 09",
       "EthDHCPLst EthSpeedLst EthIPTxt\nto EthProtoFrame\nshown ABEthernetParamFrame",
       "Enabled|Auto Detect|192.168.1.5+", nothing + "01 FF 00 00 00 00 00 09"},
      {Df1, 4, "03", "Df1ModeLst(0) Df1ErrorLst(0)\nget Df1ParamFrame(0).Visible", "|CRCvalue \"True\"\n", "03"},
      {Df1, 50, "32 01 A8 C0 00 05", "EIPClientIpAddrValLbl(0) EIPClientSlotTxt(0)", "192.168.1.50|0", ""},
      {Df1, 100, "FF 27 10 00 FF 01 02 00 FE 01 02 03 04",
       "RouteDestinationPortLbl(1) RouteIPAddressLbl(1) RouteSlotLbl(20)", "Channel B||20", ""},
      {Modbus, 24, "FF 05 01 02 03 04", "NodeIpIpAddrTxt(1) NodeIpNodeTxt(10)", "4.3.2.1|0", ""},
      {Modbus, 30, "FF" + map1 + map2,
       "AbModMapModStartLbl(2) AbModMapAbFncLbl(2) AbModMapDataTypeLbl(2) AbModMapSlotLbl(20)",
       "40001|TypedRW|Float|20", ""},
      {Modbus, 30, "02" + map1 + map2, "AbModMapSlotLbl(3)", "", "02" + map1 + map2}};
  for (const auto& [model, block, data, look, words, back] : rows) {
    GatewayDevice device(model);
    device.Teach(block, FromHex(data));
    VkRtx user(model, &device);
    EXPECT_EQ(user.Use("click UploadCmd\nsee " + look), "reminder\n" + words) << data;
    user.Use("finish DownOpt");
    EXPECT_FALSE(user.app.forms.dispatcher.Ended()) << data;
    EXPECT_EQ(back.empty() ? "" : ToHex(device.gateway.BlocksInForce().at(block)), back);
  }
  EXPECT_EQ(VkRtx(Modbus).Use("items SerProtoLst(1)"), "item \"Modbus\"\n");
}

TEST(ConfigurationVkRtx, FinishRefusesWhatHasNoBytes) {
  const std::string client = AsciiA + Route("1|Channel A|1|1|Ethernet|1.1.1.1"),
                    slot1 = "Routing Table Setup, slot 1, ", ethernet = "Ethernet Communication Settings, ",
                    full = "Allen-Bradley/Modbus Mapping, Mapping Table";
  std::string twenty = Maps;
  for (int i = 1; i <= 20; ++i) twenty += AddRow(true, i, i);
  const Case cases[] = {
      // how the words begin
      {Df1, Dhcp + "type SocketTimeOutTxt 300", ethernet + "Socket Timeout"},
      {Df1, "to EthComFrame\ntype EthGateTxt 1.2.3\n" + Dhcp, ethernet + "Default Gateway (shown with DHCP Disabled)"},
      {Df1, Routes + Route("1|Channel A|1|256|Channel A"), slot1 + "High"},
      {Df1, Routes + Route("1|Channel A|-1|2|Channel A"), slot1 + "Low"},
      {Df1, Routes + Route("1|Channel A|1|2|Ethernet|1.2.3.999"), slot1 + "IP Address"},
      {Df1, Routes + "type MsgTimeOutTxt -5", "Routing Table Setup, Message Timeout"},
      {Df1, client + ToClients + "x", "Ethernet/IP Client Setup, client 1, Controller Slot Number (shown with"},
      {Df1, client + ToConversion + "70000", "Protocol Conversion Settings - Channel A, File Number (shown with"},
      {Modbus, Dhcp + Master + "type ModbusTimeoutTxt(0) x", "Serial Protocol Settings, Request Timeout (shown with"},
      {Modbus, Maps + AddRow(true, 1, 300), "Allen-Bradley/Modbus Mapping, slot 1, Low Address"},
      {Modbus, twenty, full}};
  for (const auto& [model, acts, expected] : cases) {
    for (const std::string option : {"DownOpt", "DownSaveOpt", "SaveOpt"}) {
      GatewayDevice device(model);
      VkRtx user(model, &device);
      const std::string told = user.Use(acts + "\nfinish " + option);
      if (option == "SaveOpt" && expected == full) {  // a file holds them all
        EXPECT_NE(user.file.Content().find("\r\n20\r\n"), std::string::npos);
        continue;
      }
      EXPECT_TRUE(told.starts_with("box critical \"Error!\" \"" + expected)) << told;
      EXPECT_EQ(user.Use("shown ApplyFrame") + user.driver.written + user.file.Content(), "-");
      EXPECT_EQ(user.app.globals.BlockTable[1], "");
      EXPECT_EQ(user.app.globals.SocketTimeout + user.app.globals.RouteCount, 0);
    }
  }
}

TEST(ConfigurationVkRtx, SavesAndOpensItsFile) {
  const std::string line = "\n9600\n8\n1\n2\n0\n", ethernet = "\"192.168.1.5\"\n\"255.255.255.0\"\n\"\"\n0\n0\n30\n4\n",
                    modbus = "\"VK-RTX\"\n\"AB Ethernet, Modbus\"" + line + "1\n1\n1\n3000\n" + ethernet,
                    df1 = "\"VK-RTX\"\n\"AB Ethernet, ASCII, DF1\"" + line + "3\n0" + line + "0\n0\n0\n" + ethernet;
  const Case files[] = {
      {Modbus, Ip + "to NodeIpFrame\n" + Slaves("3|192.168.1.20") + ToMaps + Map("1|Typed R/W|7|0|4X|1|5|Integer|1|10"),
       modbus + "1\n1,10,4,0,7,0,1,5,0\n1\n3,\"192.168.1.20\"\n"},
      {Df1, Ip + A + Route("1|Channel A|40|41|Ethernet|10.0.0.1") + ToClients + "2\n" + ToConversion + "300",
       df1 + "\"10.0.0.1\",1,2\n\"\",0,0\n1\n10000\n3,255,40,41,5,0,\"10.0.0.1\"\n40\n300\n0\n3\n0\n0\n0\n0\n3\n0\n"}};
  for (const auto& [model, acts, expected] : files) {
    VkRtx user(model);
    user.Use(acts + "\nfinish SaveOpt");
    EXPECT_EQ(user.file.Content(), Lines(expected));
  }
  // Negative counts are none. The rows of an earlier configuration stay in sight, and what is saved then opens again.
  VkRtx opener(Modbus);
  opener.Use(Maps + AddRow(true, 1, 1));
  opener.file.Fill(Lines(modbus + "-1\n-7\n"));
  opener.Use("open\ncheck OpenConfigChk off\n" + ToMaps + DeleteRow(true, 1) + "finish SaveOpt");
  EXPECT_EQ(opener.Use("again\nopen\npage"), "SerComFrame") << opener.file.Content();
  opener.Use(ToMaps + AddRow(true, 1, 1));
  EXPECT_EQ(opener.app.globals.AbModMapCount + opener.app.globals.NodeIpCount, 1);
  for (const auto& [model, text] : {std::pair(Modbus, modbus + "21\n"),
                                    {Modbus, modbus + "0\n11\n"},
                                    {Modbus, modbus + "0\n1\n3,20\n"},
                                    {Df1, df1 + "\"\",0,0\n\"\",0,0\n21\n"}}) {
    VkRtx user(model);
    user.file.Fill(Lines(text));
    EXPECT_EQ(user.Use("open\npage\nsee EthIPTxt") + user.app.globals.EthernetIP, "broken\nConfigFrame") << text;
  }
}

}  // namespace
}  // namespace vk32
