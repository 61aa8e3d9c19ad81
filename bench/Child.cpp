// A program that is measured from outside.
#include "Child.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>

namespace vk32::bench {

Child::Child(const std::vector<std::string>& command) {
  int toChild[2], fromChild[2];
  if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_ = fork();
  if (pid_ == 0) {
    dup2(toChild[0], STDIN_FILENO);
    dup2(fromChild[1], STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);  // the table stays one
    execv(arguments[0], arguments.data());
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

double Child::ResidentMegabytes() const {
  std::ifstream status("/proc/" + std::to_string(pid_) + "/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmRSS:" && status >> kilobytes) return kilobytes / 1024;
  }
  throw std::runtime_error("a program has ended too early");
}

bool Child::Runs() const { return waitpid(pid_, nullptr, WNOHANG) == 0; }

}  // namespace vk32::bench
