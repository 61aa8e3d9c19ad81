// The built programs, over a real pseudo-terminal and alone.
#include <array>
#include <filesystem>

#include "endtoend/Process.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// A simulated RB2000 on COM5 and the program, at the wizard's first page, in a runtime folder of their own.
struct Pair {
  explicit Pair(const std::vector<std::string>& how) : sim("vk32-sim", how, runtime) {
    const std::string line = sim.Line();
    EXPECT_EQ(line, "RB2000 on COM5, " + fs::read_symlink(runtime + "/vk32/COM5").string() + "\n");
    for (const char* command : {"click Splash", "click MainMenu.RB2000Cmd", "select ProductMenu.COMCbo COM5",
                                "click ProductMenu.ConfigureCmd"}) {
      EXPECT_EQ(script.Do(command), "ok\n") << command;
    }
  }
  std::string Upload() {
    script.Do("click Configuration_RB2000.UploadCmd");
    return script.Do("get Configuration_RB2000.ChaSpeedLst.Text");
  }

  TemporaryFile file{"none"};
  std::string runtime = fs::path(file.Path()).parent_path();
  Process sim;
  Process script{"vk32-script", {}, runtime};
};

TEST(EndToEnd, DevicesThatDoNotAnswerOrGo) {
  Pair gone({"RB2000", "--port", "COM5", "--pace", "--misbehave", "unplug=100"}),
      deaf({"RB2000", "--port", "COM5", "--needs-button"});
  for (int page = 0; page < 4; ++page) gone.script.Do("click Configuration_RB2000.NextCmd");
  const auto start = Clock::now();
  // The program waits on, as for any device that does not answer; the user may leave.
  gone.script.Do("after 400 click ProductMenu.ExitCmd");
  const std::string left = gone.script.Do("click Configuration_RB2000.NextCmd");
  EXPECT_EQ(left.substr(left.find('\n')), "\nended\nok\n");
  EXPECT_EQ(gone.script.Wait(), 0);
  EXPECT_LT(Clock::now() - start, 1500ms);
  EXPECT_EQ(gone.sim.Line(), "RB2000 has been unplugged\n");
  EXPECT_EQ(gone.sim.Wait(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(gone.runtime + "/vk32/COM5")));

  const auto asked = Clock::now();
  EXPECT_EQ(deaf.Upload(), "value \"9600\"\nok\n");
  EXPECT_GE(Clock::now() - asked, 3000ms);
  deaf.sim.Signal(SIGUSR1);
  EXPECT_EQ(deaf.Upload(), "value \"19200\"\nok\n");
  deaf.script.CloseInput();
  EXPECT_EQ(deaf.script.Wait(), 0);
}

TEST(EndToEnd, PortNameOfASimulatorIsItsOwn) {
  const std::vector<std::string> rb2000{"RB2000", "--port", "COM5"};
  Pair pair(rb2000);
  const std::string port = pair.runtime + "/vk32/COM5", other = pair.runtime + "/other";
  fs::create_directory(other);
  fs::create_symlink("../vk32", other + "/vk32");
  for (const auto& [runtime, why] :
       {std::pair(pair.runtime, "File exists (" + port + ")."), {other, other + "/vk32 is a link."}}) {
    Process refused("vk32-sim", rb2000, runtime);
    EXPECT_EQ(refused.Line().substr(0, why.size() + 21), "COM5 can't be taken: " + why);
    EXPECT_EQ(refused.Wait(), 1);
  }
  // One that is killed leaves its link behind, which the next takes over.
  pair.sim.Signal(SIGKILL);
  pair.sim.Wait();
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    Process heir("vk32-sim", rb2000, pair.runtime);
    EXPECT_EQ(heir.Line().substr(0, 17), "RB2000 on COM5, /");
    heir.Signal(signal);
    EXPECT_EQ(heir.Wait(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(port)));
  }
}

TEST(EndToEnd, ExitStatuses) {
  const TemporaryFile commands("commands.vks");
  commands.Fill("# comment\r\n\r\nclick Splash\r\nget MainMenu.ProductModelLbl.Caption\r\nquit\r\nclick Nothing\r\n");
  const std::string folder = fs::path(commands.Path()).parent_path(), none = "error no form Nothing is loaded\n";
  const struct {
    const char* program;
    std::vector<std::string> arguments;
    const char* input;
    int status;
    std::string prints;  // all, or the beginning if it does not end a line
  } rows[] = {
      {"vk32-script", {}, "click Splash\nclick MainMenu.ExitCmd\nclick Nothing\n", 0, "ok\nended\nok\n"},
      {"vk32-script", {}, "get Splash.Caption", 0, "value \"VK32\"\nok\n"},
      {"vk32-script", {commands.Path()}, "", 0, "ok\nvalue \"Products\"\nok\nok\n"},
      {"vk32-script", {"--version"}, "", 0, "1.8.11\n"},
      {"vk32-script", {}, "click Nothing\nquit\n", 1, none},
      {"vk32-script", {"--keep-going"}, "click Nothing\nquit\n", 1, none + "ok\n"},
      {"vk32-script", {}, "after 1 click Nothing\nwait 20\n", 1, "ok\nafter-" + none + "ok\n"},
      {"vk32-script", {"--port", "COM33=/x"}, "", 2, "--port takes COMn=PATH with n from 1 to 32, not COM33=/x\n"},
      {"vk32-script", {"--nonsense"}, "", 2, ""},
      {"vk32-script", {"--trace", folder}, "quit\n", 2, "The trace " + folder + " can't be written."},
      {"vk32-script", {"/nowhere/rb2000.vks"}, "", 2, "The script /nowhere/rb2000.vks can't be read (No such"},
      {"vk32-script", {folder}, "", 2, "The script " + folder + " can't be read (Is a directory)."},
      {"vk32-sim", {"RB9999"}, "", 2, "There is no simulated RB9999."},
      {"vk32-sim", {"RB2000", "--port", "COM33"}, "", 2, "--port takes COM1 to COM32, not COM33.\n"},
      {"vk32-sim", {"RB2000", "--misbehave", "late"}, "", 2, "--misbehave: not one of: silent, late=MS,"},
      {"vk32-sim", {"RB2000", "--misbehave", "late=x"}, "", 2, "--misbehave: not a number: late=x"},
  };
  for (const auto& row : rows) {
    Process process(row.program, row.arguments, folder);
    process.Send(row.input);
    process.CloseInput();
    const std::string printed = process.Rest();
    EXPECT_EQ(row.prints.ends_with('\n') ? printed : printed.substr(0, row.prints.size()), row.prints);
    EXPECT_EQ(process.Wait(), row.status) << row.input << printed;
  }
  Process deaf("vk32-script", {}, folder);
  deaf.CloseOutput();
  deaf.Send("click Splash\n");
  EXPECT_EQ(deaf.Wait(), 2);
  fs::create_symlink(folder, folder + "/vk32");
  const std::string ignored = folder + "/vk32 is a link and is passed over";
  for (const auto& [program, told] : {std::pair("vk32-script", ignored), {"vk32", "vk32: " + ignored}}) {
    if (!fs::exists(VK32_PROGRAMS "/" + std::string(program))) continue;  // a build without the desktop
    EXPECT_EQ(Process(program, {"--port", "COM3=/dev/null"}, folder).Line().substr(0, told.size()), told);
  }
}

TEST(Examples, DoTheMainJobOfEveryProduct) {
  for (const auto& [example, gateway, port, stored, dumped] : std::initializer_list<std::array<std::string, 5>>{
           {"rb2000", "RB2000", "COM32", " bytes\n", ""},
           {"rb3000", "RB3000", "COM31", " bytes\n", ""},
           {"vk5300", "VK5300", "COM30", " bytes\n", " 1E 00 00 00 00 00 04\nimage: 04 99 "},
           {"rbcard", "RBCard", "COM28", " bytes\n", ""},
           {"vk-rtx-df1", "VK-RTX-DF1", "COM29", " blocks\n", "\n4: 02\n5: 00\n"},
           {"vk-rtx-modbus", "VK-RTX-Modbus", "COM27", " blocks\n", "\n4: 01 01 C4 09\n"}}) {
    const TemporaryFile dump("dump"), wire("wire"), trace("trace");
    const std::string folder = fs::path(dump.Path()).parent_path();
    std::vector<std::string> options{gateway, "--port", port, "--dump", dump.Path(), "--trace", wire.Path()};
    const bool paced = gateway == "RB2000";
    if (paced) options.emplace_back("--pace");
    Process sim("vk32-sim", options, folder);
    sim.Line();
    const auto start = Clock::now();
    Process script("vk32-script", {"--trace", trace.Path(), VK32_EXAMPLES "/" + example + ".vks"}, folder);
    const std::string printed = script.Rest();
    EXPECT_EQ(script.Wait(), 0) << example << "\n" << printed;
    EXPECT_NE(printed.find("box information \"Success!\""), std::string::npos) << example;
    EXPECT_TRUE(fs::exists(folder + "/" + example + ".cfg"));
    std::string line;
    do line = sim.Line();
    while (!line.empty() && !line.ends_with(stored));
    EXPECT_NE(line, "") << example;
    EXPECT_NE(dump.Content().find(dumped), std::string::npos) << dump.Content();
    if (!paced) continue;
    EXPECT_GT(Clock::now() - start, 970ms);  // 467 and 468 bytes at 9600 bit/s
    EXPECT_EQ(line, "RB2000 has stored a configuration of 448 bytes\n");
    Bytes image = sim::FindGatewayKind("RB2000")->factoryImage;
    image.replace(16, 1, FromHex("0B"));                              // channel A: 57600
    image.replace(19, 1, FromHex("02"));                              // channel B: odd parity
    image.replace(68, 10, FromHex("01 00 40 00 03 00 00 00 00 00"));  // slot 3
    EXPECT_EQ(ToHex(dump.Content()), ToHex(image));
    for (const TemporaryFile* passed : {&trace, &wire}) {
      for (const char* message : {" > 54 45 45  image upload\n", " < 06  acknowledge\n"}) {
        EXPECT_NE(passed->Content().find(message), std::string::npos) << passed->Path() << message;
      }
    }
  }
}

}  // namespace
}  // namespace vk32
