// The built programs, over a real pseudo-terminal and alone.
#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "endtoend/Process.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// A simulated RB2000 on COM5 and the program, at the wizard's first page, in a runtime folder of their own.
struct Pair {
  explicit Pair(std::vector<std::string> how) : sim("vk32-sim", Options(std::move(how)), runtime) {
    const std::string line = sim.Line();
    device = line.substr(line.find(", ") + 2, line.size() - line.find(", ") - 3);
    EXPECT_EQ(line, "RB2000 on COM5, " + device + "\n");
  }
  static std::vector<std::string> Options(std::vector<std::string> how) {
    how.insert(how.begin(), {"RB2000", "--port", "COM5"});
    return how;
  }
  void OpenWizard() {
    for (const char* command : {"click Splash", "click MainMenu.RB2000Cmd", "select ProductMenu.COMCbo COM5",
                                "click ProductMenu.ConfigureCmd"}) {
      EXPECT_EQ(script.Do(command), "ok\n") << command;
    }
  }
  bool LinkStands() const { return fs::exists(fs::symlink_status(runtime + "/vk32/COM5")); }
  std::string SpeedA() { return script.Do("get Configuration_RB2000.ChaSpeedLst.Text"); }

  TemporaryFile file{"none"};
  std::string runtime = fs::path(file.Path()).parent_path();
  Process sim;
  std::string device;
  Process script{"vk32-script", {}, runtime};
};

TEST(EndToEnd, DevicesThatDoNotAnswerOrGo) {
  Pair uploading({"--pace", "--misbehave", "unplug=100"}), downloading({"--pace", "--misbehave", "unplug=100"}),
      idle({"--needs-button"});
  for (Pair* pair : {&uploading, &downloading, &idle}) pair->OpenWizard();
  for (int page = 0; page < 4; ++page) downloading.script.Do("click Configuration_RB2000.NextCmd");
  const auto start = Process::Clock::now();
  for (Pair* pair : {&uploading, &idle}) pair->script.Send("click Configuration_RB2000.UploadCmd\n");
  // The program waits on, as for any device that does not answer; the user may leave.
  downloading.script.Do("after 400 click ProductMenu.ExitCmd");
  const std::string left = downloading.script.Do("click Configuration_RB2000.NextCmd");
  EXPECT_EQ(left.substr(left.find('\n')), "\nended\nok\n");
  EXPECT_EQ(downloading.script.Wait(), 0);
  EXPECT_LT(Process::Clock::now() - start, 1500ms);
  for (Pair* pair : {&uploading, &idle}) pair->script.Answer();
  EXPECT_GE(Process::Clock::now() - start, 3000ms);
  EXPECT_EQ(uploading.SpeedA(), "value \"19200\"\nok\n");
  uploading.script.CloseInput();
  EXPECT_EQ(uploading.script.Wait(), 0);
  for (Pair* pair : {&uploading, &downloading}) {
    EXPECT_LT(pair->script.ProcessorSeconds(), 0.3);
    EXPECT_EQ(pair->sim.Line(), "RB2000 has been unplugged\n");
    EXPECT_EQ(pair->sim.Wait(), 0);
    EXPECT_FALSE(pair->LinkStands());
  }
  EXPECT_EQ(idle.SpeedA(), "value \"9600\"\nok\n");
  idle.sim.Signal(SIGUSR1);
  idle.script.Do("click Configuration_RB2000.UploadCmd");
  EXPECT_EQ(idle.SpeedA(), "value \"19200\"\nok\n");
}

TEST(EndToEnd, PortNameOfASimulatorIsItsOwn) {
  Pair pair({});
  EXPECT_EQ(fs::read_symlink(pair.runtime + "/vk32/COM5"), pair.device);
  const auto refused = [&](const std::string& runtime, const std::string& why) {
    Process other("vk32-sim", {"RB2000", "--port", "COM5"}, runtime);
    EXPECT_EQ(other.Line().substr(0, why.size() + 21), "COM5 can't be taken: " + why);
    EXPECT_EQ(other.Wait(), 1);
  };
  refused(pair.runtime, "File exists (" + pair.runtime + "/vk32/COM5). Choose another port number, or end the");
  fs::create_directory(pair.runtime + "/other");
  fs::create_symlink("../vk32", pair.runtime + "/other/vk32");
  refused(pair.runtime + "/other", pair.runtime + "/other/vk32 is a link. Remove it, or set XDG_RUNTIME_DIR to a");
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    Process other("vk32-sim", {"RB2000", "--port", "COM6"}, pair.runtime);
    EXPECT_EQ(other.Line().substr(0, 17), "RB2000 on COM6, /");
    other.Signal(signal);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(pair.runtime + "/vk32/COM6")));
  }
  // One that is killed leaves its link behind, which the next takes over.
  pair.sim.Signal(SIGKILL);
  pair.sim.Wait();
  Process heir("vk32-sim", {"RB2000", "--port", "COM5"}, pair.runtime);
  const bool taken = heir.Line().substr(0, 17) == "RB2000 on COM5, /";
  // Refused only if another program of this machine has been given the terminal's number meanwhile.
  EXPECT_TRUE(taken || fs::exists(pair.runtime + "/vk32/COM5"));
}

TEST(EndToEnd, HeldPortNamesItsHolder) {
  Pair pair({});
  const int held = open(pair.device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  std::string name;
  std::getline(std::ifstream("/proc/self/comm"), name);
  pair.script.Do("click Splash");
  pair.script.Do("click MainMenu.RB2000Cmd");
  EXPECT_EQ(
      pair.script.Do("select ProductMenu.COMCbo COM5"),
      R"(box information "INVALID COM PORT!!! Please Select Again." "UNABLE TO OPEN COM PORT,  Error: Error (16): )"
      R"(CommOpen (CreateFile) - Device or resource busy: )" +
          pair.device + " is in use by " + name + " (process " + std::to_string(getpid()) +
          "): end it and try again\" -> OK\nok\n");
  EXPECT_EQ(pair.script.Do("get ProductMenu.COMCbo.Text"), "value \"None\"\nok\n");
  close(held);
  EXPECT_EQ(pair.script.Do("select ProductMenu.COMCbo COM5"), "ok\n");
}

TEST(EndToEnd, SimulatorDumpsItsBlocksAndTracesWhatPasses) {
  const TemporaryFile dump("dump"), trace("trace");
  Process sim("vk32-sim", {"VK5300", "--dump", dump.Path(), "--trace", trace.Path()}, "/nowhere");
  const std::string line = sim.Line();
  const int terminal =
      open(line.substr(line.find('/'), line.size() - line.find('/') - 1).c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  const auto exchange = [&](const char* message, std::size_t answer) {
    const Bytes bytes = FromHex(message);
    EXPECT_EQ(write(terminal, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    pollfd waiting{terminal, POLLIN, 0};
    for (char byte; answer > 0; --answer) ASSERT_EQ(poll(&waiting, 1, 10'000) + read(terminal, &byte, 1), 2);
  };
  exchange("A5 CE 08 FA 00 03 00 02 AA BB 9C", 1);
  exchange("A5 A5", 0);
  EXPECT_EQ(sim.Line(), "VK5300 has stored a configuration of 1 block\n");
  exchange("A5 CE 06 F5 00 03 00 40 C8", 67);
  close(terminal);
  EXPECT_EQ(dump.Content().substr(0, 28), "3: AA BB\nimage: 04 99 00 00 ");
  std::string passed;
  std::istringstream lines(trace.Content());
  for (std::string text; std::getline(lines, text);) passed += text[13] + text.substr(text.rfind("  ") + 1) + "\n";
  EXPECT_EQ(passed, "> block write\n< acknowledge\n> end of exchange\n> block read\n< acknowledge, block read reply\n");
}

TEST(EndToEnd, ExitStatuses) {
  const TemporaryFile commands("commands.vks");
  commands.Fill("# comment\r\n\r\nclick Splash\r\nget MainMenu.ProductModelLbl.Caption\r\nquit\r\nclick Nothing\r\n");
  const fs::path folder = fs::path(commands.Path()).parent_path();
  fs::create_symlink(folder, folder / "vk32");
  const std::string ignored = (folder / "vk32").string() + " is a link and is passed over";
  const struct {
    const char* program;
    std::vector<std::string> arguments;
    const char* input;
    int status;
    std::string prints;  // all, or the beginning if it does not end a line
    const char* output = nullptr;
    bool runtimeIsALink = false;
  } rows[] = {
      {"vk32-script", {}, "", 0, ""},
      {"vk32-script", {}, "quit\nclick Nothing\n", 0, "ok\n"},
      {"vk32-script", {}, "click Splash\nclick MainMenu.ExitCmd\nclick Nothing\n", 0, "ok\nended\nok\n"},
      {"vk32-script", {}, "get Splash.Caption", 0, "value \"VK32\"\nok\n"},
      {"vk32-script", {commands.Path()}, "", 0, "ok\nvalue \"Products\"\nok\nok\n"},
      {"vk32-script", {"--version"}, "", 0, "1.8.11\n"},
      {"vk32-script", {"--help"}, "", 0, "VK32 without a screen"},
      {"vk32-script", {}, "click Nothing\nquit\n", 1, "error no form Nothing is loaded\n"},
      {"vk32-script", {"--keep-going"}, "click Nothing\nquit\n", 1, "error no form Nothing is loaded\nok\n"},
      {"vk32-script", {}, "after 1 click Nothing\nwait 20\n", 1, "ok\nafter-error no form Nothing is loaded\nok\n"},
      {"vk32-script", {"--port", "COM33=/x"}, "", 2, "--port takes COMn=PATH with n from 1 to 32, not COM33=/x\n"},
      {"vk32-script", {"--port", "COM1"}, "", 2, "--port takes COMn=PATH with n from 1 to 32, not COM1\n"},
      {"vk32-script", {"--nonsense"}, "", 2, ""},
      {"vk32-script", {"--trace", folder}, "quit\n", 2, "The trace " + folder.string() + " can't be written."},
      {"vk32-script", {"/nowhere/rb2000.vks"}, "", 2, "The script /nowhere/rb2000.vks can't be read (No such"},
      {"vk32-script", {folder}, "", 2, "The script " + folder.string() + " can't be read (Is a directory)."},
      {"vk32-script", {"/proc/self/mem"}, "", 2, "The script /proc/self/mem can't be read (Input/output error)."},
      {"vk32-script", {}, "click Splash\n", 2, "The standard output can't be written:", "/dev/full"},
      {"vk32-script", {"--version"}, "", 2, "The standard output can't be written:", "/dev/full"},
      {"vk32-script", {}, "quit\n", 0, ignored, nullptr, true},
      {"vk32-sim", {"RB9999"}, "", 2, "There is no simulated RB9999."},
      {"vk32-sim", {"RB2000", "--port", "COM33"}, "", 2, "--port takes COM1 to COM32, not COM33.\n"},
      {"vk32-sim", {"RB2000", "--misbehave", "late"}, "", 2, "--misbehave: not one of: silent, late=MS,"},
      {"vk32-sim", {"RB2000", "--misbehave", "late=x"}, "", 2, "--misbehave: not a number: late=x"},
      {"vk32", {"--version"}, "", 0, "vk32 1.8.11\n"},
      {"vk32", {"--help"}, "", 0, "Usage: "},
      {"vk32", {"file"}, "", 2, "vk32: takes options alone\n"},
      {"vk32", {"--port", "COM0=/x"}, "", 2, "vk32: --port wants COMn=PATH, n from 1 to 32, but is \"COM0=/x\"\n"},
  };
  for (const auto& row : rows) {
    if (!fs::exists(VK32_PROGRAMS "/" + std::string(row.program))) continue;  // a build without the desktop
    Process process(row.program, row.arguments, row.runtimeIsALink ? folder : folder / "none", row.output);
    process.Send(row.input);
    process.CloseInput();
    const std::string printed = process.Rest();
    const bool all = !row.prints.empty() && row.prints.back() == '\n';
    EXPECT_EQ(all ? printed : printed.substr(0, row.prints.size()), row.prints);
    EXPECT_EQ(process.Wait(), row.status) << row.input << printed;
  }
  Process deaf("vk32-script", {}, folder / "none");
  deaf.CloseOutput();
  deaf.Send("click Splash\n");
  EXPECT_EQ(deaf.Wait(), 2);
  if (!fs::exists(VK32_PROGRAMS "/vk32")) return;
  Process desktop("vk32", {"--port", "COM3=/dev/null"}, folder);
  EXPECT_EQ(desktop.Line().substr(0, ignored.size() + 6), "vk32: " + ignored);
}

/// The example, with its files in a folder of the test.
std::string Example(const std::string& name, const std::string& folder) {
  std::ifstream file(VK32_EXAMPLES "/" + name + ".vks");
  std::string commands;
  for (std::string line; std::getline(file, line);) {
    commands += line.starts_with("file ") ? "file " + folder + "/" + line.substr(5) : line;
    commands += '\n';
  }
  return commands;
}

TEST(Examples, DoTheMainJobOfEveryProduct) {
  for (const auto& [example, gateway, port] :
       std::initializer_list<std::array<const char*, 3>>{{"rb2000", "RB2000", "COM32"},
                                                         {"rb3000", "RB3000", "COM31"},
                                                         {"vk5300", "VK5300", "COM30"},
                                                         {"rbcard", "RBCard", "COM28"},
                                                         {"vk-rtx-df1", "VK-RTX-DF1", "COM29"},
                                                         {"vk-rtx-modbus", "VK-RTX-Modbus", "COM27"}}) {
    const TemporaryFile dump("dump"), trace("trace");
    const std::string folder = fs::path(dump.Path()).parent_path();
    const bool paced = std::string(gateway) == "RB2000";
    std::vector<std::string> options{gateway, "--port", port, "--dump", dump.Path()};
    if (paced) options.emplace_back("--pace");
    Process sim("vk32-sim", options, folder);
    sim.Line();
    const auto start = Process::Clock::now();
    Process script("vk32-script", {"--trace", trace.Path()}, folder);
    script.Send(Example(example, folder));
    script.CloseInput();
    const std::string printed = script.Rest();
    EXPECT_EQ(script.Wait(), 0) << example << "\n" << printed;
    EXPECT_NE(printed.find("box information \"Success!\""), std::string::npos) << example;
    EXPECT_TRUE(fs::exists(folder + "/" + example + ".cfg"));
    if (!paced) continue;
    EXPECT_GT(Process::Clock::now() - start, 970ms);  // 467 and 468 bytes at 9600 bit/s
    EXPECT_EQ(sim.Line(), "RB2000 has stored a configuration of 448 bytes\n");
    Bytes image = sim::FindGatewayKind("RB2000")->factoryImage;
    image.replace(16, 1, FromHex("0B"));                              // channel A: 57600
    image.replace(19, 1, FromHex("02"));                              // channel B: odd parity
    image.replace(68, 10, FromHex("01 00 40 00 03 00 00 00 00 00"));  // slot 3
    EXPECT_EQ(ToHex(dump.Content()), ToHex(image));
    for (const char* passed : {" > 54 45 45  image upload\n", "  image download\n", " < 06  acknowledge\n"}) {
      EXPECT_NE(trace.Content().find(passed), std::string::npos) << passed;
    }
  }
}

}  // namespace
}  // namespace vk32
