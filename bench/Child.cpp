// A program that is measured from outside.
#include "Child.h"

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace vk32::bench {
namespace {

/// The number behind a word of a /proc/.../status.
double StatusNumber(const std::filesystem::path& folder, const std::string& wanted) {
  std::ifstream status(folder / "status");
  for (std::string word; status >> word;) {
    double number = 0;
    if (word == wanted && status >> number) return number;
  }
  throw std::runtime_error("a program has ended too early");
}

}  // namespace

void KeepToOneCore() {
  cpu_set_t cores;
  if (sched_getaffinity(0, sizeof cores, &cores) != 0) return;
  int last = CPU_SETSIZE - 1;
  while (last > 0 && !CPU_ISSET(last, &cores)) --last;
  CPU_ZERO(&cores);
  CPU_SET(last, &cores);
  sched_setaffinity(0, sizeof cores, &cores);
}

Child::Child(const std::vector<std::string>& command) {
  int toChild[2], fromChild[2];
  if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_ = fork();
  if (pid_ == 0) {
    KeepToOneCore();
    dup2(toChild[0], STDIN_FILENO);
    dup2(fromChild[1], STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);  // the table stays one
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  close(toChild[0]);
  close(fromChild[1]);
  input_ = toChild[1];
  output_ = fromChild[0];
}

Child::~Child() {
  close(input_);
  close(output_);
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

void Child::Write(const std::string& text) const {
  if (write(input_, text.data(), text.size()) < 0) throw std::runtime_error("a program takes no input");
}

std::string Child::ReadLine() {
  std::size_t end = 0;
  while ((end = read_.find('\n')) == std::string::npos) {
    char chunk[4096];
    const ssize_t count = read(output_, chunk, sizeof chunk);
    if (count <= 0) return {};
    read_.append(chunk, static_cast<std::size_t>(count));
  }
  std::string line = read_.substr(0, end);
  read_.erase(0, end + 1);
  return line;
}

Time Child::ProcessorTime() const {
  clockid_t clock{};
  timespec used{};
  if (clock_getcpuclockid(pid_, &clock) != 0 || clock_gettime(clock, &used) != 0) {
    throw std::runtime_error("a program has ended too early");
  }
  return std::chrono::seconds(used.tv_sec) + Time(used.tv_nsec);
}

Time Child::QueueTime() const {
  std::ifstream schedule("/proc/" + std::to_string(pid_) + "/schedstat");
  Time::rep ran = 0, waited = 0;
  if (!(schedule >> ran >> waited)) throw std::runtime_error("the system does not tell how long a program waits");
  return Time(waited);
}

double Child::ResidentMegabytes() const { return StatusNumber("/proc/" + std::to_string(pid_), "VmRSS:") / 1024; }

double Child::Sleeps() const {
  double sleeps = 0;
  for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(pid_) + "/task")) {
    sleeps += StatusNumber(thread.path(), "voluntary_ctxt_switches:");
  }
  return sleeps;
}

bool Child::Runs() const { return waitpid(pid_, nullptr, WNOHANG) == 0; }

void Child::Await() {
  siginfo_t end{};  // it stays known until the destructor
  if (waitid(P_PID, static_cast<id_t>(pid_), &end, WEXITED | WNOWAIT) != 0 || end.si_code != CLD_EXITED ||
      end.si_status != 0) {
    throw std::runtime_error("a program has failed");
  }
}

namespace {

std::vector<std::string> ScriptCommand(const std::vector<std::string>& ports) {
  std::vector<std::string> words{VK32_PROGRAMS "/vk32-script"};
  for (std::size_t i = 0; i < ports.size(); ++i) {
    words.insert(words.end(), {"--port", "COM" + std::to_string(i + 1) + "=" + ports[i]});
  }
  return words;
}

}  // namespace

Script::Script(const std::vector<std::string>& ports) : Child(ScriptCommand(ports)) {}

std::string Script::Do(const std::string& command) {
  Write(command + "\n");
  std::string printed, line;
  while ((line = ReadLine()) != "ok") {
    if (line.empty() || line.starts_with("error")) throw std::runtime_error(command + ": " + printed + line);
    printed += line + "\n";
  }
  if (printed.find("\"Error!\"") != std::string::npos) throw std::runtime_error(command + ": " + printed);
  return printed;
}

void Script::Do(const std::vector<std::string>& commands) {
  for (const std::string& command : commands) Do(command);
}

std::vector<std::string> ToProductMenu(const std::vector<std::string>& buttons) {
  std::vector<std::string> commands{"click Splash"};
  for (const std::string& button : buttons) commands.push_back("click MainMenu." + button);
  commands.push_back("select ProductMenu.COMCbo COM1");
  return commands;
}

}  // namespace vk32::bench
