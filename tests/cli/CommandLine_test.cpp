// The commands of vk32-cli in virtual time, against simulated gateways.
#include "cli/CommandLine.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>

#include "cli/Csv.h"
#include "models/WizardUser.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

/// A command line whose words are parted by blanks, with a device on COM3 and a folder of its own.
struct Cli {
  explicit Cli(FakeDevice* device = nullptr) { driver.Plug("COM3", device); }

  /// "3: the device does not answer", or the bare status; "%" stands for the folder. The result goes to `out`.
  std::string Run(std::string command) {
    for (std::size_t at = 0; (at = command.find('%')) != std::string::npos;) command.replace(at, 1, folder);
    out.str({}), err.str({});
    world.stopped = false, world.console.yes = false;
    auto words = Split(command);  // "@" stands for a blank, but for that of a port
    for (std::string& word : words) {
      if (word.find("@COM") == std::string::npos) std::ranges::replace(word, '@', ' ');
    }
    const auto status = static_cast<int>(RunCommandLine(world, words));
    return std::to_string(status) + ": " + err.str();
  }
  std::string Content(const std::string& name) const {
    std::ifstream file(folder + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const TemporaryFile place{"place"};
  const std::string folder = std::filesystem::path(place.Path()).parent_path().string();
  std::ostringstream out, err;
  VirtualEventLoop loop;
  FakeSerialDriver driver{loop};
  PortNames names{"", "/nowhere", "/nowhere"};
  World world{loop, driver, names, {out, err, false, false, {}}};
};

TEST(CommandLine, WhatIsReadComesBackFromTheDeviceThatItIsWrittenTo) {
  for (const TestedModel& model : TestedModels) {
    const std::string kind = model.kind;
    GatewayDevice device(kind), other(kind);
    Cli cli(&device);
    EXPECT_EQ(cli.Run("read " + kind + " --port COM3 -y -o %/a.cfg")[0], '0') << cli.err.str();
    cli.driver.Plug("COM3", &other);
    for (int time : {1, 2}) {
      EXPECT_EQ(cli.Run("write %/a.cfg --port COM3 -y --verify --backup %/old")[0], '0') << time << cli.err.str();
    }
    EXPECT_EQ(cli.Run("diff %/a.cfg " + kind + "@COM3 -y"), "0: No field differs.\n") << cli.out.str();
    EXPECT_EQ(cli.Run("check %/a.cfg")[0], '0') << cli.out.str();
    EXPECT_EQ(cli.Run("read " + kind + " --port COM3 -y")[0], '0') << cli.err.str();
    EXPECT_EQ(cli.out.str(), cli.Content("a.cfg")) << kind;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(cli.folder + "/old"), {}), 2) << kind;
  }
}

TEST(CommandLine, WhatTheDeviceDoesNotHoldIsNotVerified) {
  GatewayDevice device("RB2000"), factory("RB2000");
  Cli cli(&device);
  cli.Run("read RB2000 --port COM3 -y -o %/a.cfg");
  cli.Run("set %/a.cfg specific@address=3 -o %/b.cfg");
  int asked = 0;
  cli.world.console.waitForEnter = [&](const std::string&) {
    if (++asked == 2) cli.driver.Plug("COM3", &factory);
    return true;
  };
  const std::string told = cli.Run("write %/b.cfg --port COM3 --verify");
  EXPECT_TRUE(told.starts_with("1: ") && told.find("  - 3\n  + 17\n") != std::string::npos) << told;
}

TEST(CommandLine, ADeviceThatDoesNotAcknowledgeIsNeverDone) {
  const auto at = [](auto member, auto value) {
    sim::Misbehaviour misbehaviour;
    misbehaviour.*member = value;
    return misbehaviour;
  };
  using M = sim::Misbehaviour;
  const std::tuple<const char*, M, const char*> rows[] = {
      {"read RB2000 --port COM3 -y -o %/b.cfg", at(&M::silent, true), "3"},
      {"read RBCard --port COM3 -y -o %/b.cfg", at(&M::shortBy, 9), "3"},
      {"read VK-RTX --model df1 --port COM3 -y -o %/b.cfg", at(&M::deafBlock, 50), "3: A timeout"},
      {"read VK5300 --port COM3 -y -o %/b.cfg", at(&M::badChecksum, true), "3: A timeout"},
      {"write %/a.cfg --port COM3 -y", at(&M::silent, true), "3: A timeout"},
      {"write %/a.cfg --port COM3 -y", at(&M::unplugAfter, 100), "3"},
      {"write %/a.cfg --port COM3 -y --backup %/old", at(&M::silent, true), "3: COM3 did not answer within 3 s"},
      {"write %/a.cfg --port COM3 -y --verify", at(&M::shortBy, 9), "1: "},
      {"read RB2000 --port /dev/null -y", at(&M::silent, true), "3: /dev/null did not answer within 3 s"},
      {"info VK5300 --port COM3 -y", at(&M::infoPieces, 1), "3: A timeout"},
      {"firmware %/f.rom --port COM3 -y", at(&M::silent, true), "3: Press the Configuration Button"},
      {"firmware %/f.rom --port COM3 -y", at(&M::noReady, true), "3: An error has occured"},
      {"firmware %/f.rom --port COM3 -y", at(&M::noBurn, true), "3: An error has occured"}};
  for (const auto& [command, misbehaviour, told] : rows) {
    if (Split(command)[3] == "/dev/null" && !PortNames::DeviceIsThere("/dev/null")) continue;  // on Windows
    const std::string product = Split(command)[1];
    GatewayDevice good("RB2000"), bad(product == "VK-RTX" || product == "%/f.rom" ? "VK-RTX-DF1"
                                      : product[0] == '%'                         ? "RB2000"
                                                                                  : product,
                                      misbehaviour);
    Cli cli(&good);
    cli.Run("read RB2000 --port COM3 -y -o %/a.cfg");
    std::filesystem::copy_file(VK32_EXAMPLES "/example.rom", cli.folder + "/f.rom");
    for (const char* port : {"COM3", "COM1"}) cli.driver.Plug(port, &bad);
    EXPECT_TRUE(cli.Run(command).starts_with(told)) << command << "\n" << cli.err.str();
    EXPECT_EQ(cli.err.str().find('\r'), std::string::npos) << "a terminal wants lines";
    EXPECT_EQ(cli.Content("b.cfg"), "") << command;
    EXPECT_EQ(cli.driver.WaitHandle(1), -1) << command;
  }
}

TEST(CommandLine, APortThatIsTakenWhileTheQuestionStandsIsNoSilence) {
  for (const std::string command : {"read RB2000", "write %/a.cfg", "firmware " VK32_EXAMPLES "/example.rom"}) {
    GatewayDevice device("RB2000");
    Cli cli(&device);
    cli.Run("read RB2000 --port COM3 -y -o %/a.cfg");
    cli.world.console.waitForEnter = [&](const std::string&) { return cli.driver.Fail("Open", 32), true; };
    const std::string told = cli.Run(command + " --port COM3");
    EXPECT_TRUE(told.starts_with("4: ") && told.find("Sent last") == std::string::npos) << told;
    EXPECT_EQ(told.ends_with("Nothing has been sent.\n"), command[0] == 'w') << told;
  }
}

TEST(CommandLine, WhatCanNotBeDoneIsToldByItsStatus) {
  GatewayDevice device("RB2000");
  Cli cli(&device);
  cli.Run("read RB2000 --port COM3 -y -o %/a.cfg");
  TemporaryFile broken("broken.cfg", "\"RB2000\"\r\n\"RB2000\"\r\n1,2,3\r\n"),
      other("o.cfg", "\"RB9\",\"x\",\"y\"\r\n");
  const std::pair<std::string, std::string> rows[] = {
      {"", "2: "},
      {"read RB2000", "2: --port is required"},
      {"write %/a.cfg", "2: --port is required"},
      {"info VK5300", "2: --port is required"},
      {"firmware %/f.rom", "2: --port is required"},
      {"show", "2: SOURCE is required"},
      {"show %/a.cfg --html --json", "2: --json excludes --html"},
      {"show vk-rtx-df1", "2: There is no file vk-rtx-df1. Name the product VK-RTX with --port P."},
      {"diff %/a.cfg RB2000", "2: There is no file RB2000. Name the product RB2000 with its port, as in RB2000@COM3."},
      {"diff %/a.cfg", "2: B is required"},
      {"check", "2: FILE is required"},
      {"set %/a.cfg -o %/x", "2: ASSIGNMENT is required"},
      {"set %/a.cfg a=b", "2: --output is required"},
      {"batch %/a.cfg", "2: TABLE is required"},
      {"batch %/a.cfg %/a.csv", "2: Give --out DIR"},
      {"read RB9999 --port COM3 -y", "2: There is no product RB9999. Choose one of VK5300, "},
      {"read VK-RTX --port COM3 -y", "2: Which model of the VK-RTX?"},
      {"read RB2000 --port COM3", "2: You are asked to make the device ready"},
      {"info VK-RTX --port COM3 -y", "2: The VK-RTX does not tell what it is."},
      {"read RB2000 --port COM4 -y", "4: UNABLE TO OPEN COM PORT"},
      {"read RB2000 --port %/none -y", "4: There is no port "},
      {"read RB2000 --port COM3 -y -o %/none/a.cfg", "5: "},
      {"write %/none.cfg --port COM3 -y", "5: "},
      {"write %/a.cfg --port COM3 -y --backup %/a.cfg/x", "5: The folder " + cli.folder + "/a.cfg/x can't be made: "},
      {"write " + broken.Path() + " --port COM3 -y", "5: The selected configuration file"},
      {"write " + other.Path() + " --port COM3 -y", "5: " + other.Path()},
      {"firmware %/a.cfg --port COM3 -y", "5: The selected file is not a valid firmware file."}};
  for (const auto& [command, told] : rows) {
    EXPECT_TRUE(cli.Run(command).starts_with(told)) << command << "\n" << cli.err.str();
    EXPECT_EQ(cli.out.str(), "") << command;
  }
}

TEST(CommandLine, StoppedAtAnyTimeItEndsTheConversation) {
  GatewayDevice good("VK-RTX-DF1");
  for (const auto& [command, moments] :
       {std::pair("read VK-RTX-DF1 --port COM3 -o %/b.cfg", std::vector{0ms, 20ms, 150ms}),
        {"write %/a.cfg --port COM3", {0ms, 20ms, 150ms}},
        {"batch %/a.cfg %/t.csv --out %/out", {0ms}},
        {"firmware %/f.rom --port COM3", {0ms, 500ms, 2000ms, 3500ms}}}) {
    for (const Time moment : moments) {
      GatewayDevice paced("VK-RTX-DF1", {}, true);
      Cli cli(&good);
      cli.Run("read VK-RTX-DF1 --port COM3 -y -o %/a.cfg");
      std::filesystem::copy_file(VK32_EXAMPLES "/example.rom", cli.folder + "/f.rom");
      std::ofstream(cli.folder + "/t.csv") << "Name,Message Timeout\na,5000\n";
      cli.driver.Plug("COM3", &paced);
      cli.world.console.waitForEnter = [&](const std::string&) { return moment > 0ms || (cli.world.Stop(), false); };
      const Alarm stop(cli.loop, moment, [&] { cli.world.Stop(); });
      EXPECT_TRUE(cli.Run(command).starts_with("7: Stopped.")) << command << "\n" << cli.err.str();
      const bool untouched = cli.err.str().ends_with("Nothing has been sent.\n");
      EXPECT_TRUE(command[0] != 'w' || untouched == (moment == 0ms)) << cli.err.str();
      EXPECT_EQ(cli.driver.WaitHandle(1), -1) << command;
      EXPECT_EQ(cli.Content("b.cfg"), "") << command;
    }
  }
}

TEST(CommandLine, DevicesAreShown) {
  GatewayDevice vk5300("VK5300"), rtx("VK-RTX-DF1");
  Cli cli(&vk5300);
  const std::tuple<const char*, GatewayDevice*, const char*> rows[] = {
      {"info VK5300 --port COM3 -y", &vk5300, "\nIP Address: 192.168.1.100\n"},
      {"info VK5300 --port COM3 -y --json", &vk5300, "\"IP Address\": \"192.168.1.100\""},
      {"show VK5300 --port COM3 -y", &vk5300, "VK5300\n\nData Highway Settings\n  Network Type: DH+\n"},
      {"show VK-RTX --model df1 --port COM3 -y", &rtx, "VK-RTX, AB Ethernet, ASCII, DF1\n"},
      {"show VK-RTX-DF1 --port COM3 -y --json", &rtx, " DF1\",\n  \"source\": \"COM3\""},
      {"ports --json", nullptr, "[]\n"}};
  for (const auto& [command, device, shown] : rows) {
    cli.driver.Plug("COM3", device);
    EXPECT_EQ(cli.Run(command)[0], '0') << cli.err.str();
    EXPECT_NE(cli.out.str().find(shown), std::string::npos) << command << cli.out.str();
  }
}

TEST(CommandLine, ATerminalShowsHowFarItIsEachStepOnce) {
  GatewayDevice device("VK-RTX-DF1");
  Cli cli(&device);
  std::filesystem::copy_file(VK32_EXAMPLES "/example.rom", cli.folder + "/f.rom");
  cli.world.console.showsProgress = true;
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"read VK-RTX-DF1 --port COM3 -y -o %/a.cfg",
       {"Reading from COM3: block 1 of 12\r", "\r\033[KReading from COM3: block 2 of 12\r",
        "\r\033[KThe VK-RTX on COM3"}},
      {"firmware %/f.rom --port COM3 -y",
       {"Firmware is being installed... 0 %\r", "\r\033[KErasing flash memory... 13 %\r", "\r\033[K" + cli.folder}}};
  for (const auto& [command, shown] : rows) {
    EXPECT_EQ(cli.Run(command)[0], '0');
    const std::string seen = cli.err.str();
    EXPECT_TRUE(seen.starts_with("\r\033[K" + shown[0])) << seen;
    for (const std::string& part : shown) EXPECT_NE(seen.find(part), std::string::npos) << part << seen;
    const auto steps = Split(seen, '\r');
    EXPECT_TRUE(std::ranges::adjacent_find(steps) == steps.end()) << seen;
  }
  EXPECT_EQ(cli.Run("check %/a.cfg"), "0: ") << "nothing passes";
  cli.world.console.waitForEnter = [&](const std::string&) {
    const std::string before = cli.err.str();
    return before.empty() || before.ends_with("\r\033[K");  // the question has a line of its own
  };
  EXPECT_EQ(cli.Run("write %/a.cfg --port COM3 --verify")[0], '0');
}

TEST(CommandLine, FilesAreListedComparedAndChangedByTheNamesOfTheirFields) {
  Cli cli;
  const TemporaryFile vk5300("e.cfg", Lines(R"("1.8.11"
"VK5300"
"DHP-ABEthernet"
0
63
10
"10.0.0."
"255.0.0.0"
)"
                                            "\"<b>&\x9b\"\n"
                                            R"(3
0
300
)"));
  for (const char* seed : {"vkrtx-df1", "vkrtx-modbus", "rb2000"}) {
    std::filesystem::copy_file(std::string(VK32_SEEDS "/configuration-file/") + seed + ".cfg", cli.folder + "/" + seed);
  }
  // The command, the status and what is told, a part of the result.
  const std::tuple<std::string, const char*, std::string> rows[] = {
      {"show %/rb2000", "0: ", "  CHB - Modbus Protocol Settings\n    Modbus Device Type: Slave\n"},
      {"show %/rb2000 --json", "0: ", "\"field\": \"Specific Address\",\n      \"value\": \"17\""},
      {"show " + vk5300.Path() + " --html", "0: ", "<td>&lt;b&gt;&amp;?</td>"},
      {"check %/rb2000 " + vk5300.Path(), "6: Not all files",
       "Default Gateway is \"<b>&?\". Default Gateway: enter four numbers from 0 to 255, parted by points\n" +
           vk5300.Path() + ": Ethernet Settings/Socket Timeout is \"300\". "},
      {"check [a,b]", "5: ", "[a,b] can't be read"},
      {"diff %/rb2000 %/vkrtx-df1", "1: ", "Gateway: Product\n  - RB2000\n  + VK-RTX\n"},
      {"diff %/rb2000 %/nothing", "5: ", ""},
      {"set %/rb2000 Stop=1 -o %/x",
       "2: There is no field Stop. Near to it:\n  Serial Settings/CHA - DF1 Serial Settings/Speed\n", ""},
      {"set %/rb2000 Parity=Odd -o %/x", "2: There is more than one field Parity:\n  Serial", ""},
      {"set %/rb2000 specific@address=3 specific@address=4 -o %/x", "2: Protocol Settings/CHB - Modbus Protocol", ""},
      {"set %/rb2000 destination@data@table@address@decoding=x -o %/x", "6: Protocol Settings/CHB - Modbus Proto", ""},
      {"set %/rb2000 Slot -o %/x", "2: \"Slot\" sets nothing.", ""},
      {"set %/rb2000 specific@address=999 -o %/x", "6: Protocol Settings/CHB - Modbus Protocol Settings/Specific", ""},
      {"set %/rb2000 specific@address=3 respond@to@specific@address=no -o %/x", "6: ", ""},
      {"set %/vkrtx-df1 message@timeout=ten -o %/x", "6: Routing Table Setup/Message Timeout would become \"0\"", ""},
      {"set %/vkrtx-df1 slot@4/source@port=Ethernet -o %/x", "6: Slot 4 can't be filled while slot 3 is empty", ""},
      {"set %/vkrtx-df1 slot@3/source@port=x -o %/x", "6: Routing Table Setup/Slot 3/Source Port takes one of: ", ""},
      {"set %/rb2000 specific@address=3 -o %/x", "0: ", ""},
      {"diff %/rb2000 %/x", "1: 1 field differs.", "  - 17\n  + 3\n"},
      {"set %/vkrtx-modbus slot@1/modbus@start=31005 slot@1/data@type=float -o %/x", "0: ", ""},
      {"diff %/vkrtx-modbus %/x --json", "1: 2 fields differ.", "\"left\": \"40001\",\n      \"right\": \"31005\""},
      {"set %/vkrtx-modbus slot@1/address@range=2@-@9 slot@1/allen@bradley@datafile=9:17 "
       "slot@1/data@points=20 slot@1/allen@bradley@function=ProtTypedRW -o %/x",
       "0: ", ""},
      {"show %/x", "0: ", "Address Range: 2 - 9\n    Modbus Start: 40001\n    Allen Bradley Datafile: 9:17\n"},
      {"set %/vkrtx-df1 slot@3/source@port=ethernet slot@3/destination@range@low=7 slot@3/destination@range@high=8 "
       "slot@3/destination@port=Ethernet slot@3/ip@address=10.0.0.9 -o %/x",
       "0: ", ""},
      {"show %/x", "0: ", "    Destination Range High: 8\n    Destination Port: Ethernet\n    IP Address: 10.0.0.9\n"}};
  for (const auto& [command, told, result] : rows) {
    EXPECT_TRUE(cli.Run(command).starts_with(told)) << command << "\n" << cli.err.str();
    EXPECT_NE(cli.out.str().find(result), std::string::npos) << command << "\n" << cli.out.str();
  }
}

TEST(CommandLine, ABatchKnowsTheStateOfEachGateway) {
  GatewayDevice first("RB2000"), second("RB2000");
  Cli cli(&first);
  std::filesystem::copy_file(VK32_SEEDS "/configuration-file/rb2000.cfg", cli.folder + "/t.cfg");
  const CsvCells quoted{"a, \"one\"", "b"};
  std::ofstream(cli.folder + "/quoted.csv") << CsvLine(quoted);
  EXPECT_EQ(ReadCsv(cli.folder + "/quoted.csv").at(0).cells, quoted);
  const TemporaryFile table("t.csv");
  std::string boxes;
  int confirmed = 0, silentFrom = 5;  // the gateway, the download, the upload; then those of the second row
  cli.world.console.waitForEnter = [&](const std::string& text) {
    boxes += text.starts_with("Connect") ? text.substr(0, text.find('\n')) + ";" : "";
    if (++confirmed == 4) cli.driver.Plug("COM3", &second);
    if (confirmed == silentFrom) cli.driver.Plug("COM3", nullptr);
    return true;
  };
  for (const char* port : {"COM4", "COM5"}) cli.names.Assign(port, "/dev/null");
  const std::string write = "batch %/t.cfg " + table.Path() + " --write --port COM3";
  const std::tuple<const char*, std::string, const char*, const char*> rows[] = {
      {"Name;Specific Addres\na;5\nb;6\n", write, "/t.csv: There is no field Specific Addres. Near", ""},
      {"Name,Specific Address\na,5,6\n", write, "5: ", ""},
      {"Name,Specific Address\na,5\na,6\n", write, "5: ", ""},
      {"Name,Specific Address\na,5\nb,999\n", write, "6: ", ""},
      {"Name,Specific Address\n\n\n\"a,5\nb,6\n", write, "/t.csv: a cell in line 4 opens with a quote", ""},
      {"Name,Specific Address\n\"a\"b,5\n", write, "/t.csv: a cell in line 2 opens with a quote", ""},
      {"Name,specific address,Specific Address\na,5,\n", write, "/t.csv: More than one column", ""},
      {"Name,Specific Address\na,5\n", write + " --results " + table.Path(), "/t.csv holds something else", ""},
      {"Name,Specific Address\na,5\n", write + " --results %/no/r.csv", "/no/r.csv can't be written", ""},
      {"Name,Port,Specific Address\na,COM4,5\nb,COM5,6\n", write, "5: ", ""},
      {"Name,Specific Address\na,5\nb,6\n", write + " -y", "5: ", ""},
      {"Name,Specific Address\n\"a, one\",5\nb,6\n", write, "3: ", "a, one: verified\nb: "},
      {"Name,Specific Address\n\"a, one\",5\nb,6\n", write, "0: a, one is done already.", "b: verified\n"},
      {"Name,Specific Address\n\"a, one\",5\nb,7\n", write, "0: a, one is done already.", "b: verified\n"},
      {"Name,Specific Address,Port\nb,7,COM4\n", write, "4: ", "b: "}};
  for (const auto& [content, command, told, result] : rows) {
    table.Fill(content);
    const std::string told_ = cli.Run(command);
    EXPECT_TRUE(told_.find(told) != std::string::npos && cli.out.str().starts_with(result)) << told_ << cli.out.str();
    EXPECT_TRUE(boxes.empty() || *result != '\0') << content;
    cli.driver.Plug("COM3", &second);
    if (confirmed > 0) silentFrom = 0;
  }
  const std::string b = "Connect the gateway b to COM3.;";
  EXPECT_EQ(boxes, "Connect the gateway a, one to COM3.;" + b + b + b);
  EXPECT_EQ(cli.Run("batch %/t.cfg " + table.Path() + " --out %/out")[0], '0') << cli.err.str();
  EXPECT_EQ(cli.Run("diff %/out/b.cfg RB2000@COM3 -y"), "0: No field differs.\n") << cli.out.str();
}

}  // namespace
}  // namespace vk32
