// The built programs, over a real pseudo-terminal and alone.
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <thread>

#include "support/Harness.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// A built program at the other end of a line; nothing that it does can hang a test.
struct Process {
  /// `program`: "vk32-sim", "vk32-script" or "vk32", or a path; `folder`: where it runs, and where port names are kept.
  /// Two seconds of processor time end it, and half a minute of any: no wait of these tests takes it.
  Process(const std::string& program, std::vector<std::string> arguments, const std::string& folder) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) ADD_FAILURE() << "no line";
    arguments.insert(arguments.begin(), (program[0] == '/' ? "" : VK32_PROGRAMS "/") + program);
    std::vector<char*> words;
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(ends[1], fd);
      const rlimit seconds{2, 2};
      setrlimit(RLIMIT_CPU, &seconds);
      alarm(30);
      setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
      setenv("QT_QPA_PLATFORM", "offscreen", 1);
      if (chdir(folder.c_str()) == 0) execv(words[0], words.data());
      _exit(127);
    }
    close(ends[1]);
    line_ = ends[0];
  }
  ~Process() {
    close(line_);
    if (pid_ > 0) kill(pid_, SIGKILL), Wait();
  }
  Process(const Process&) = delete;

  /// A program that has ended takes no input, and that is no reason to end the tests.
  void Send(const std::string& text) const { send(line_, text.data(), text.size(), MSG_NOSIGNAL); }
  void CloseInput() const { shutdown(line_, SHUT_WR); }
  void Signal(int number) const { kill(pid_, number); }

  /// The next line with its end; empty at the end of the output.
  std::string Line() const {
    std::string line;
    for (char byte = 0; byte != '\n' && read(line_, &byte, 1) == 1;) line += byte;
    return line;
  }
  /// The lines that a command prints, up to "ok" or "error".
  std::string Do(const std::string& command) const {
    Send(command + "\n");
    std::string lines, line;
    do lines += line = Line();
    while (!line.empty() && line != "ok\n" && !line.starts_with("error "));
    return lines;
  }
  /// All that it still prints.
  std::string Rest() const {
    std::string all;
    for (std::string line; !(line = Line()).empty();) all += line;
    return all;
  }

  /// Its exit status; -1 if a signal ended it.
  int Wait() {
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t pid_ = -1;
  int line_ = -1;
};

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
  const std::string left = gone.script.Do("click Configuration_RB2000.NextCmd");
  EXPECT_NE(left.find("A timeout or error has occured while communicating to the RB2000"), std::string::npos) << left;
  EXPECT_LT(Clock::now() - start, 1500ms);
  EXPECT_EQ(gone.sim.Line(), "RB2000 has been unplugged\n");
  EXPECT_EQ(gone.sim.Wait(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(gone.runtime + "/vk32/COM5")));

  const auto asked = Clock::now();
  for (const char* command : {"after 300 click Configuration_RB2000.CancelCmd", "click Configuration_RB2000.UploadCmd",
                              "click ProductMenu.ConfigureCmd"}) {
    deaf.script.Do(command);
  }
  EXPECT_GE(Clock::now() - asked, 300ms);
  deaf.script.Do("after 1 get ProductMenu.Width");
  EXPECT_EQ(deaf.script.Line().substr(0, 6), "value ") << "while the next command is waited for";
  deaf.sim.Signal(SIGUSR1);
  EXPECT_EQ(deaf.Upload(), "value \"19200\"\nok\n");
}

TEST(EndToEnd, PortNameOfASimulatorIsItsOwn) {
  const std::vector<std::string> rb2000{"RB2000", "--port", "COM5"};
  Pair pair(rb2000);
  const std::string port = pair.runtime + "/vk32/COM5", other = pair.runtime + "/other";
  EXPECT_EQ(fs::status(pair.runtime + "/vk32").permissions(), fs::perms::owner_all);
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
  EXPECT_TRUE(fs::remove(port));
  fs::create_symlink("/dev/pts/gone", port);  // its number may be another's by now
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    Process heir("vk32-sim", rb2000, pair.runtime);
    EXPECT_EQ(heir.Line().substr(0, 17), "RB2000 on COM5, /");
    heir.Signal(signal);
    EXPECT_EQ(heir.Wait(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(port)));
  }
}

TEST(EndToEnd, SimulatorOnADevice) {
  const int host = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  EXPECT_EQ(grantpt(host) + unlockpt(host), 0);
  const std::string path = ptsname(host);
  Process sim("vk32-sim", {"RB2000", "--device", path}, "/tmp");
  EXPECT_EQ(sim.Line(), "RB2000 on " + path + "\n");
  EXPECT_EQ(write(host, "TEE", 3), 3);
  char reply[2];
  EXPECT_EQ(read(host, reply, 2), 2);
  EXPECT_EQ(Bytes(reply, 2), "TR");
  close(host);
  EXPECT_EQ(sim.Line(), path + " can't be used: Input/output error: the serial device is gone: plug it in again.\n");
  EXPECT_EQ(sim.Wait(), 1);
}

TEST(EndToEnd, ConfigurationsTravelOnTheCommandLine) {
  const TemporaryFile file("card.cfg");
  const std::string folder = fs::path(file.Path()).parent_path();
  Process sim("vk32-sim", {"RBCard", "--port", "COM5"}, folder);
  sim.Line();
  const std::string device = fs::read_symlink(folder + "/vk32/COM5");
  EXPECT_EQ(Process("vk32-cli", {"read", "RBCard", "--port", "COM5", "-y", "-o", file.Path()}, folder).Wait(), 0);
  EXPECT_EQ(Process("vk32-cli", {"write", file.Path(), "--port", device, "-y", "--verify"}, folder).Wait(), 0);
  EXPECT_EQ(sim.Line().substr(0, 17), "RBCard has stored");
  const Process script("vk32-script", {"--port", "COM9=" + device}, folder);
  for (const char* command : {"click Splash", "click MainMenu.RBCardCmd", "select ProductMenu.COMCbo COM9",
                              "click ProductMenu.ConfigureCmd", "click Configuration_RBCard.UploadCmd"}) {
    script.Do(command);
  }
  EXPECT_TRUE(script.Do("get Configuration_RBCard.SourceLbl.Caption").starts_with("value \"Read from COM9, "));
  Process other("vk32-sim",
                {"VK5300", "--port", "COM6", "--info-model", "M", "--info-version", "V", "--info-date", "D"}, folder);
  other.Line();
  const std::string told = Process("vk32-cli", {"info", "VK5300", "--port", "COM6", "-y"}, folder).Rest();
  EXPECT_NE(told.find(": M\nFirmware Version: V\nFirmware Date: D\n"), std::string::npos) << told;
}

/// A device on a pseudo-terminal that says the same to whatever it hears, or repeats it; noise goes on in silence.
struct Hostile {
  explicit Hostile(const std::string& how) {
    EXPECT_EQ(grantpt(host) + unlockpt(host), 0);
    path = ptsname(host);
    device = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);  // else there is nothing to read from yet
    talk = std::jthread([this, how](const std::stop_token& ending) {
      while (!ending.stop_requested()) {
        char heard[512];
        pollfd waiting{host, POLLIN, 0};
        const ssize_t count = poll(&waiting, 1, 20) > 0 ? read(host, heard, sizeof heard) : 0;
        const std::string_view said = how == "echo"                 ? std::string_view(heard, count)
                                      : how == "noise" || count > 0 ? "\x15TR\xFF@"
                                                                    : "";
        if (write(host, said.data(), said.size()) < 0) return;
      }
    });
  }
  ~Hostile() { talk.request_stop(), talk.join(), close(device), close(host); }

  int host = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), device = -1;
  std::string path;
  std::jthread talk;
};

TEST(EndToEnd, WhatAHostileDeviceSaysIsNeverCalledDone) {
  const auto run = [](const std::string& command, const std::string& how) {
    unshare(CLONE_FILES);  // else another's child holds this one's line until its program has begun
    const TemporaryFile file("read.cfg");
    const std::string folder = fs::path(file.Path()).parent_path();
    std::optional<Process> sim;
    std::optional<Hostile> hostile;
    const bool simulated = how.starts_with("--");
    const std::string kind = command.starts_with("read") ? Split(command)[1] : "VK5300";
    if (simulated) sim.emplace("vk32-sim", Split(kind + " --port COM5 " + how), folder).Line();
    const std::string port = simulated ? "COM5" : hostile.emplace(how).path;
    Process cli("vk32-cli", Split(command + " -y --port " + port), folder);
    const std::string told = cli.Rest();
    const bool unverified = told.find("has acknowledged the configuration, but") != std::string::npos;
    EXPECT_EQ(cli.Wait(), unverified ? 1 : 3) << command << " " << how << "\n" << told;
    EXPECT_EQ(told.find(" has been "), std::string::npos) << command << " " << how << "\n" << told;
    EXPECT_TRUE(!fs::exists(file.Path()) && (!fs::exists(folder + "/old") || fs::is_empty(folder + "/old"))) << how;
  };
  const std::string write = "write " VK32_EXAMPLES "/batch/template.cfg";
  const std::pair<std::string, const char*> rows[] = {{"read VK-RTX-DF1 -o read.cfg", "echo"},
                                                      {"read RB2000 -o read.cfg", "noise"},
                                                      {"read VK5300 -o read.cfg", "nak"},
                                                      {"read VK5300 -o read.cfg", "--misbehave unplug=60"},
                                                      {"read RB2000 -o read.cfg", "--misbehave short=9"},
                                                      {"info VK5300", "echo"},
                                                      {"firmware " VK32_EXAMPLES "/example.rom", "noise"},
                                                      {write, "echo"},
                                                      {write, "noise"},
                                                      {write + " --verify", "nak"},
                                                      {write + " --verify", "--misbehave unplug=60"},
                                                      {write + " --verify", "--misbehave bad-checksum"},
                                                      {write + " --backup old", "nak"},
                                                      {write + " --backup old", "--misbehave junk"}};
  std::vector<std::future<void>> jobs;  // side by side: most of their time is waiting
  for (const auto& [command, how] : rows) jobs.push_back(std::async(std::launch::async, run, command, how));
}

TEST(EndToEnd, ATraceIsPlayedAndSaysWhetherAllOfItWasAsked) {
  const TemporaryFile trace("trace", "1 > 41\n2 < 42\n");
  for (const bool asked : {true, false}) {
    Process sim("vk32-sim", {"RB2000", "--replay", trace.Path()}, "/tmp");
    const std::string line = sim.Line();
    const int host = open(line.substr(10, line.size() - 11).c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    char answer = 0;
    EXPECT_TRUE(!asked || write(host, "A", 1) + read(host, &answer, 1) == 2);
    sim.Signal(SIGTERM);
    EXPECT_EQ(sim.Rest().starts_with("Ended before "), !asked);
    EXPECT_EQ(sim.Wait(), asked ? 0 : 3);
    EXPECT_EQ(answer, asked ? 'B' : 0);
    close(host);
  }
}

TEST(EndToEnd, CtrlCEndsACommandThatWaitsOrIsBusy) {
  const int host = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  EXPECT_EQ(grantpt(host) + unlockpt(host), 0);
  const std::string path = ptsname(host);
  const int device = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);  // else there is nothing to read from yet
  Process command("vk32-cli", {"read", "RBCard", "--port", path, "-y"}, "/tmp");
  char asked;
  EXPECT_EQ(read(host, &asked, 1), 1);
  command.Signal(SIGINT);
  EXPECT_EQ(command.Rest().substr(0, 8), "Stopped.");
  EXPECT_EQ(command.Wait(), 7);
  close(device), close(host);
  std::vector<std::string> words(300, VK32_EXAMPLES "/batch/template.cfg");
  words[0] = "check";
  Process busy("vk32-cli", words, "/tmp");
  busy.Line(), busy.Signal(SIGINT), busy.Rest();
  EXPECT_EQ(busy.Wait(), 7);
}

TEST(EndToEnd, ExitStatuses) {
  const TemporaryFile commands("commands.vks");
  commands.Fill(
      "\xEF\xBB\xBF# comment\r\n\r\nclick Splash\r\nget MainMenu.ProductModelLbl.Caption\r\nquit\r\nclick Nothing\r\n");
  const std::string folder = fs::path(commands.Path()).parent_path(), none = "error no form Nothing is loaded\n";
  // `prints`: all, or the beginning if it does not end a line.
  const auto run = [&](const char* program, const std::vector<std::string>& arguments, const char* input, int status,
                       const std::string& prints) {
    Process process(program, arguments, folder);
    process.Send(input), process.CloseInput();
    const std::string printed = process.Rest();
    EXPECT_EQ(prints.ends_with('\n') ? printed : printed.substr(0, prints.size()), prints);
    EXPECT_EQ(process.Wait(), status) << input << printed;
  };
  run("vk32-script", {}, "click Splash\nclick MainMenu.ExitCmd\nclick Nothing\n", 0, "ok\nended\nok\n");
  run("vk32-script", {commands.Path()}, "", 0, "ok\nvalue \"Products\"\nok\nok\n");
  run("vk32-script", {"--version"}, "", 0, "vk32-script 1.8.11\n");
  run("vk32-script", {}, "click Nothing\nquit\n", 1, none);
  run("vk32-script", {"--keep-going"}, "click Nothing\nquit", 1, none + "ok\n");
  run("vk32-script", {}, "after 1 click Nothing\nwait 20\n", 1, "ok\nafter-" + none + "ok\n");
  run("vk32-script", {"--port", "COM3="}, "", 2, "--port takes COMn=PATH with n from 1 to 32, not COM3=\n");
  run("vk32-script", {"--nonsense"}, "", 2, "");
  run("vk32-script", {"--trace", folder}, "quit\n", 2, "The trace " + folder + " can't be written.");
  run("vk32-script", {"/nowhere/rb2000.vks"}, "", 2, "The script /nowhere/rb2000.vks can't be read (No such");
  run("/bin/sh", {"-c", VK32_PROGRAMS "/vk32-script >/dev/full"}, "click Splash\n", 2, "The standard output can't be");
  run("vk32-script", {folder}, "", 2, "The script " + folder + " can't be read (Is a directory).");
  run("vk32-sim", {"RB9999"}, "", 2, "There is no simulated RB9999.");
  run("vk32-sim", {"RB2000", "--port", "COM33"}, "", 2, "--port takes COM1 to COM32, not COM33.\n");
  run("vk32-sim", {"RB2000", "--device", "/dev/null"}, "", 1, "/dev/null can't be used: Inappropriate ioctl for");
  run("vk32-sim", {"RB2000", "--replay", commands.Path()}, "", 1,
      "The trace " + commands.Path() + " can't be played: ");
  run("vk32-sim", {"RB2000", "--misbehave", "late"}, "", 2, "--misbehave: not one of: silent, late=MS,");
  run("vk32-sim", {"RB2000", "--misbehave", "late=x"}, "", 2, "--misbehave: not a number: late=x");
  Process deaf("vk32-script", {}, folder);
  shutdown(deaf.line_, SHUT_RD);  // as a reader that has ended
  deaf.Send("click Splash\n");
  EXPECT_EQ(deaf.Wait(), 2);
  fs::create_symlink(folder, folder + "/vk32");
  const std::string ignored = folder + "/vk32 is a link and is passed over";
  const auto tellsIt = [&](const char* program, const std::string& told) {
    EXPECT_EQ(Process(program, {"--port", "COM3=/dev/null"}, folder).Line().substr(0, told.size()), told);
  };
  tellsIt("vk32-script", ignored);
  if (!fs::exists(VK32_PROGRAMS "/vk32")) return;  // a build without the desktop
  tellsIt("vk32", "vk32: " + ignored);
  const std::string bare = "-u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM ", here = "QT_QPA_PLATFORM=offscreen",
                    unset = ", which can't start here: unset it",
                    script = ", or use vk32-script, which needs no display";
  const std::array<std::string, 3> rows[] = {
      {"LC_ALL=C", "", "there is no display: start it in a desktop session" + script},
      {"DISPLAY=:7777", "", "the display \":7777\" can't be opened: set DISPLAY to one that lets you in" + script},
      {"WAYLAND_DISPLAY=nowhere", "",
       "the Wayland display \"nowhere\" can't be used: install qt6-wayland if it is missing" + script},
      {"QT_QPA_PLATFORM=nonsense", "", "QT_QPA_PLATFORM is \"nonsense\"" + unset + script},
      {"QT_QPA_PLATFORM=linuxfb", "", "QT_QPA_PLATFORM is \"linuxfb\"" + unset + script},
      {here, "--nonsense", "Unknown option 'nonsense'."},
      {here, "file.cfg", "takes options alone"},
      {here, "--port COM1", "--port wants COMn=PATH, n from 1 to 32, but is \"COM1\""},
      {here, "--port XOM1=/dev/null", "--port wants COMn=PATH, n from 1 to 32, but is \"XOM1=/dev/null\""}};
  for (const auto& [environment, arguments, told] : rows) {
    run("/usr/bin/env", Split(bare + environment + " " VK32_PROGRAMS "/vk32 " + arguments), "", 2,
        "vk32: " + told + "\n");
  }
  run("vk32", {"--version"}, "", 0, "vk32 1.8.11\n");
}

TEST(Examples, DoTheMainJobOfEveryProduct) {
  using Word = const std::string&;
  const auto run = [](Word example, Word gateway, Word port, Word dumped) {
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
    ASSERT_EQ(script.Wait(), 0) << example << "\n" << printed;
    EXPECT_NE(printed.find("box information \"Success!\""), std::string::npos) << example;
    EXPECT_TRUE(fs::exists(folder + "/" + example + ".cfg"));
    std::string line;
    do line = sim.Line();
    while (!line.empty() && line.find(" has stored ") == std::string::npos);
    EXPECT_EQ(line.ends_with(" blocks\n"), dumped.starts_with('\n')) << line;
    EXPECT_NE(dump.Content().find(dumped), std::string::npos) << dump.Content();
    const std::string named = dumped.starts_with('\n') ? " block read reply\n" : " > 54 45 45  image upload\n";
    for (const TemporaryFile* passed : {&trace, &wire}) {
      EXPECT_NE(passed->Content().find(named), std::string::npos) << passed->Content();
    }
    if (!paced) return;
    EXPECT_GT(Clock::now() - start, 970ms);  // 467 and 468 bytes at 9600 bit/s
    EXPECT_EQ(line, "RB2000 has stored a configuration of 448 bytes\n");
    Bytes image = sim::FindGatewayKind("RB2000")->factoryImage;
    image.replace(16, 1, FromHex("0B"));                              // channel A: 57600
    image.replace(19, 1, FromHex("02"));                              // channel B: odd parity
    image.replace(68, 10, FromHex("01 00 40 00 03 00 00 00 00 00"));  // slot 3
    EXPECT_EQ(ToHex(dump.Content()), ToHex(image));
  };
  const std::array<std::string, 4> rows[] = {{"rb2000", "RB2000", "COM32", ""},
                                             {"rb3000", "RB3000", "COM31", ""},
                                             {"vk5300", "VK5300", "COM30", " 1E 00 00 00 00 00 04\nimage: 04 99 "},
                                             {"rbcard", "RBCard", "COM28", ""},
                                             {"vk-rtx-df1", "VK-RTX-DF1", "COM29", "\n4: 02\n5: 00\n"},
                                             {"vk-rtx-modbus", "VK-RTX-Modbus", "COM27", "\n4: 01 01 C4 09\n"}};
  const auto install = [] {
    const TemporaryFile rom("example.rom", ":" + std::string(999, '7'));
    const std::string folder = fs::path(rom.Path()).parent_path(), dump = folder + "/dump";
    Process sim("vk32-sim", {"VK-RTX-DF1", "--port", "COM29", "--erase-time", "9", "--firmware-dump", dump}, folder);
    sim.Line();
    const auto start = Clock::now();
    Process script("vk32-script", {VK32_EXAMPLES "/vk-rtx-firmware.vks"}, folder);
    const std::string printed = script.Rest();
    EXPECT_EQ(script.Wait(), 0) << printed;
    EXPECT_LT(Clock::now() - start, 4s) << "it erases as fast as it was told";
    EXPECT_EQ(sim.Line(), "VK-RTX (AB Ethernet, ASCII, DF1) has received a firmware of 1000 bytes\n");
    std::ifstream received(dump, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(received), {}), rom.Content());
  };
  std::vector<std::future<void>> jobs;  // side by side: most of their time is waiting
  jobs.push_back(std::async(std::launch::async, install));
  for (const auto& [example, gateway, port, dumped] : rows) {
    jobs.push_back(std::async(std::launch::async, run, example, gateway, port, dumped));
  }
}

TEST(Examples, FailWithASilentGateway) {
  sim::Misbehaviour silent;
  silent.silent = true;
  const TemporaryFile rom("example.rom");
  const fs::path home = fs::current_path(), folder = fs::path(rom.Path()).parent_path();
  fs::copy_file(VK32_EXAMPLES "/example.rom", rom.Path());
  fs::current_path(folder);
  for (const auto& example : fs::directory_iterator(VK32_EXAMPLES)) {
    if (example.path().extension() != ".vks") continue;
    GatewayDevice gateway("RB2000", silent);
    Harness h;
    for (const char* port : {"COM27", "COM28", "COM29", "COM30", "COM31", "COM32"}) h.driver.Plug(port, &gateway);
    std::ifstream script(example.path());
    const std::string printed = h.Do(std::string(std::istreambuf_iterator<char>(script), {})), asked = "Press the Conf";
    const std::size_t failed = printed.find("error ");
    EXPECT_NE(failed, std::string::npos) << example.path();
    EXPECT_EQ(printed.rfind(asked, failed), printed.find(asked)) << "it writes what was never read: " << example.path();
  }
  fs::current_path(home);
}

}  // namespace
}  // namespace vk32
