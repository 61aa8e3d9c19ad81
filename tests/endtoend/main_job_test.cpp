// The built programs at the two ends of a real pseudo-terminal.
#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "endtoend/Process.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

const std::string Reminder =
    R"(box critical "VK32" "Press the Configure button on the RB2000 before continuing.\r\nThe LED's on the left )"
    R"(should have the following pattern:\r\n\n     CHA:  Red\r\n     CHB:  Green\r\n     CHC:  Red\r\n     )"
    R"(Power:  Green" -> OK)"
    "\n";

/// A simulated RB2000 on COM5, and the program with its wizard, in a runtime folder of their own.
class EndToEnd : public testing::Test {
 protected:
  struct Pair {
    explicit Pair(std::vector<std::string> how) : folder("rb2000.cfg"), sim("vk32-sim", Options(how), Runtime()) {
      const std::string line = sim.Line();
      device = line.substr(line.find(", ") + 2);
      EXPECT_EQ(line, "RB2000 on COM5, " + device);
    }
    static std::vector<std::string> Options(std::vector<std::string> how) {
      how.insert(how.begin(), {"RB2000", "--port", "COM5"});
      return how;
    }
    std::string Runtime() const { return std::filesystem::path(folder.Path()).parent_path(); }
    std::string Link() const { return Runtime() + "/vk32/COM5"; }
    /// The program, at the wizard's first page.
    void OpenWizard() {
      for (const char* command : {"click Splash", "click MainMenu.RB2000Cmd", "select ProductMenu.COMCbo COM5",
                                  "click ProductMenu.ConfigureCmd"}) {
        EXPECT_EQ(script.Do(command), "ok\n") << command;
      }
    }
    std::string Next() { return script.Do("click Configuration_RB2000.NextCmd"); }
    std::string Upload() { return script.Do("click Configuration_RB2000.UploadCmd"); }
    std::string SpeedA() { return script.Do("get Configuration_RB2000.ChaSpeedLst.Text"); }

    TemporaryFile folder;
    Process sim;
    std::string device;
    Process script{"vk32-script", {}, Runtime()};
  };
};

/// The image of a new device with what the main job changes.
Bytes EditedImage() {
  Bytes image = sim::FindGatewayKind("RB2000")->factoryImage;
  image.replace(16, 1, FromHex("0B"));                              // channel A: 57600
  image.replace(19, 1, FromHex("02"));                              // channel B: odd parity
  image.replace(68, 10, FromHex("01 00 40 00 03 00 00 00 01 00"));  // slot 3
  return image;
}

/// In another run, with no device.
void ExpectThatTheFileOpens(const std::string& path) {
  Process later("vk32-script", {}, "/nowhere");
  later.Send(
      "click Splash\nclick MainMenu.RB2000Cmd\nclick ProductMenu.ConfigureCmd\n"
      "check Configuration_RB2000.OpenConfigChk on\nfile " +
      path +
      "\nclick Configuration_RB2000.NextCmd\nget Configuration_RB2000.ChbParityLst.Text\n"
      "get Configuration_RB2000.ModEndTxt(2).Text\nget Configuration_RB2000.FloatChk(2).Value\n");
  later.CloseInput();
  EXPECT_EQ(later.Rest(),
            "ok\nok\nok\nok\nok\ndialog open \"Select Configuration File\" \"RB2000 Configuration Files "
            "(*.cfg)|*.cfg|All Files (*.*)|*.*\" -> \"" +
                path + "\"\nok\nvalue \"Odd\"\nok\nvalue \"64\"\nok\nvalue \"1\"\nok\n");
  EXPECT_EQ(later.Wait(), 0);
}

TEST_F(EndToEnd, MainJob) {
  const TemporaryFile dump("image");
  Pair pair({"--pace", "--dump", dump.Path()});
  pair.OpenWizard();
  const auto start = Process::Clock::now();
  EXPECT_EQ(pair.Upload(), Reminder + "ok\n");
  EXPECT_GT(Process::Clock::now() - start, std::chrono::milliseconds(480));  // 468 bytes at 9600 bit/s
  EXPECT_EQ(pair.SpeedA(), "value \"19200\"\nok\n");

  EXPECT_EQ(pair.Next(), "ok\n");
  for (const char* edit : {"select Configuration_RB2000.ChaSpeedLst 57600",
                           "select Configuration_RB2000.ChbParityLst Odd", "click Configuration_RB2000.NextCmd",
                           "click Configuration_RB2000.NextCmd", "type Configuration_RB2000.ModStartTxt(2) 1",
                           "type Configuration_RB2000.ModEndTxt(2) 64", "type Configuration_RB2000.ABFileTxt(2) 3",
                           "type Configuration_RB2000.ABWordTxt(2) 0", "check Configuration_RB2000.FloatChk(2) on",
                           "click Configuration_RB2000.NextCmd", "click Configuration_RB2000.DownSaveOpt"}) {
    EXPECT_EQ(pair.script.Do(edit), "ok\n") << edit;
  }
  pair.script.Do("file " + pair.folder.Path());
  EXPECT_EQ(pair.Next(),
            Reminder + R"(dialog save "Save Configuration File" "RB2000 Configuration Files (*.cfg)|*.cfg" -> ")" +
                pair.folder.Path() + "\"\n" +
                R"(box information "Success!" "Configuration has been downloaded to the RB2000" -> OK)"
                "\nok\n");
  EXPECT_EQ(pair.sim.Line(), "RB2000 has stored a configuration of 448 bytes\n");
  EXPECT_EQ(ToHex(dump.Content()), ToHex(EditedImage()));

  const std::string saved = pair.folder.Content();
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 215);
  EXPECT_EQ(saved.substr(0, 43), "\"RB2000\"\r\n\"QRV\"\r\n2,0\r\n5,0\r\n11,0\r\n8,2\r\n8,0\r\n");

  ExpectThatTheFileOpens(pair.folder.Path());
}

TEST_F(EndToEnd, DeviceThatDoesNotAnswerAndDeviceThatGoesInAnUpload) {
  Pair unplugged({"--pace", "--misbehave", "unplug=100"}), idle({"--needs-button"});
  const auto start = Process::Clock::now();
  for (Pair* pair : {&unplugged, &idle}) {
    pair->OpenWizard();
    pair->script.Send("click Configuration_RB2000.UploadCmd\n");
  }
  for (Pair* pair : {&unplugged, &idle}) EXPECT_EQ(pair->script.Answer(), Reminder + "ok\n");
  const auto span = Process::Clock::now() - start;
  EXPECT_GE(span, std::chrono::milliseconds(3000));
  EXPECT_LT(span, std::chrono::milliseconds(4500));

  EXPECT_EQ(unplugged.sim.Line(), "RB2000 has been unplugged\n");
  EXPECT_EQ(unplugged.sim.Wait(), 0);
  EXPECT_EQ(unplugged.SpeedA(), "value \"19200\"\nok\n");
  EXPECT_EQ(
      unplugged.script.Do("select ProductMenu.COMCbo COM5"),
      R"(box information "INVALID COM PORT!!! Please Select Again." "UNABLE TO OPEN COM PORT,  Error: Error (2): )"
      R"(CommOpen (CreateFile) - No such file or directory: no serial device stands behind COM5" -> OK)"
      "\nok\n");
  unplugged.script.CloseInput();
  EXPECT_EQ(unplugged.script.Wait(), 0);
  EXPECT_LT(unplugged.script.ProcessorSeconds(), 0.3);

  EXPECT_EQ(idle.SpeedA(), "value \"9600\"\nok\n");
  idle.sim.Signal(SIGUSR1);
  EXPECT_EQ(idle.Upload(), Reminder + "ok\n");
  EXPECT_EQ(idle.SpeedA(), "value \"19200\"\nok\n");
}

TEST_F(EndToEnd, DeviceThatGoesInADownload) {
  Pair pair({"--pace", "--misbehave", "unplug=100"});
  pair.OpenWizard();
  for (int page = 0; page < 4; ++page) EXPECT_EQ(pair.Next(), "ok\n");
  // The program waits on, as for any device that does not answer; the user may leave.
  pair.script.Do("after 400 click ProductMenu.ExitCmd");
  const auto start = Process::Clock::now();
  EXPECT_EQ(pair.Next(), Reminder + "ended\nok\n");
  EXPECT_LT(Process::Clock::now() - start, std::chrono::milliseconds(1500));
  EXPECT_EQ(pair.script.Wait(), 0);
  EXPECT_LT(pair.script.ProcessorSeconds(), 0.3);
  EXPECT_EQ(pair.sim.Line(), "RB2000 has been unplugged\n");
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(pair.Link())));
}

TEST_F(EndToEnd, PortNameOfASimulatorIsItsOwn) {
  Pair pair({});
  EXPECT_EQ(std::filesystem::read_symlink(pair.Link()).string() + "\n", pair.device);
  Process second("vk32-sim", {"RB2000", "--port", "COM5"}, pair.Runtime());
  EXPECT_EQ(second.Line(), "COM5 can't be taken: File exists (" + pair.Link() +
                               "). Choose another port number, or end the simulator that holds it.\n");
  EXPECT_EQ(second.Wait(), 1);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    Process other("vk32-sim", {"RB2000", "--port", "COM6"}, pair.Runtime());
    EXPECT_EQ(other.Line().substr(0, 17), "RB2000 on COM6, /");
    other.Signal(signal);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(pair.Runtime() + "/vk32/COM6")));
  }
  // One that is killed leaves its link behind, which the next takes over.
  pair.sim.Signal(SIGKILL);
  pair.sim.Wait();
  Process heir("vk32-sim", {"RB2000", "--port", "COM5"}, pair.Runtime());
  const bool taken = heir.Line().substr(0, 17) == "RB2000 on COM5, /";
  heir.Signal(SIGTERM);
  heir.Wait();
  // Refused only if another program of this machine has been given the terminal's number meanwhile.
  EXPECT_TRUE(taken || std::filesystem::exists(pair.Link()));
}

TEST_F(EndToEnd, HeldPortNamesItsHolder) {
  Pair pair({});
  const std::string path = pair.device.substr(0, pair.device.size() - 1);
  const int held = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  std::string name;
  std::getline(std::ifstream("/proc/self/comm"), name);

  Process script("vk32-script", {"--port", "COM32=" + path}, "/nowhere");
  script.Do("click Splash");
  script.Do("click MainMenu.RB2000Cmd");
  EXPECT_EQ(
      script.Do("select ProductMenu.COMCbo COM32"),
      R"(box information "INVALID COM PORT!!! Please Select Again." "UNABLE TO OPEN COM PORT,  Error: Error (16): )"
      R"(CommOpen (CreateFile) - Device or resource busy: )" +
          path + " is in use by " + name + " (process " + std::to_string(getpid()) +
          "): end it and try again\" -> OK\nok\n");
  EXPECT_EQ(script.Do("get ProductMenu.COMCbo.Text"), "value \"None\"\nok\n");
  close(held);
  EXPECT_EQ(script.Do("select ProductMenu.COMCbo COM32"), "ok\n");
}

TEST(Simulator, DumpsItsBlocksAndTracesWhatPasses) {
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

TEST_F(EndToEnd, ExitStatuses) {
  const TemporaryFile commands("commands.vks");
  commands.Fill("# comment\r\n\r\nclick Splash\r\nget MainMenu.ProductModelLbl.Caption\r\nquit\r\nclick Nothing\r\n");
  struct Row {
    const char* program;
    std::vector<std::string> arguments;
    const char* input;
    int status;
    std::string prints;  // all, or the beginning if it does not end a line
  };
  const Row rows[] = {
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
      {"vk32-script",
       {"--port", "COM33=/dev/null"},
       "",
       2,
       "--port takes COMn=PATH with n from 1 to 32, not COM33=/dev/null\n"},
      {"vk32-script", {"--port", "COM1"}, "", 2, "--port takes COMn=PATH with n from 1 to 32, not COM1\n"},
      {"vk32-script", {"--nonsense"}, "", 2, ""},
      {"vk32-script", {"/nowhere/rb2000.vks"}, "", 2, "The script /nowhere/rb2000.vks can't be read (No"},
      {"vk32-sim", {"RB9999"}, "", 2, "There is no simulated RB9999."},
      {"vk32-sim", {"RB2000", "--port", "COM33"}, "", 2, "--port takes COM1 to COM32, not COM33.\n"},
  };
  for (const Row& row : rows) {
    Process process(row.program, row.arguments, "/nowhere");
    process.Send(row.input);
    process.CloseInput();
    const std::string printed = process.Rest();
    const bool all = !row.prints.empty() && row.prints.back() == '\n';
    EXPECT_EQ(all ? printed : printed.substr(0, row.prints.size()), row.prints);
    EXPECT_EQ(process.Wait(), row.status) << row.input << printed;
  }
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
  const struct {
    const char *example, *gateway, *port;
  } rows[] = {
      {"rb2000", "RB2000", "COM32"}, {"rb3000", "RB3000", "COM31"},         {"vk5300", "VK5300", "COM30"},
      {"rbcard", "RBCard", "COM28"}, {"vk-rtx-df1", "VK-RTX-DF1", "COM29"}, {"vk-rtx-modbus", "VK-RTX-Modbus", "COM27"},
  };
  for (const auto& row : rows) {
    const TemporaryFile file("marker");
    const std::string folder = std::filesystem::path(file.Path()).parent_path();
    Process sim("vk32-sim", {row.gateway, "--port", row.port}, folder);
    sim.Line();
    Process script("vk32-script", {}, folder);
    script.Send(Example(row.example, folder));
    script.CloseInput();
    const std::string printed = script.Rest();
    EXPECT_EQ(script.Wait(), 0) << row.example << "\n" << printed;
    EXPECT_NE(printed.find("box information \"Success!\""), std::string::npos) << row.example;
    EXPECT_TRUE(std::filesystem::exists(folder + "/" + row.example + ".cfg"));
  }
}

}  // namespace
}  // namespace vk32
