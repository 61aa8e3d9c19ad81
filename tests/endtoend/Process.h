// A built program at the other end of a line; nothing that it does can hang a test.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace vk32 {

class Process {
 public:
  /// `program`: "vk32-sim", "vk32-script" or "vk32"; `folder`: where it runs, and where port names are kept. Two
  /// seconds of processor time end it: no wait of these tests takes any.
  Process(const std::string& program, std::vector<std::string> arguments, const std::string& folder) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) ADD_FAILURE() << "no line";
    arguments.insert(arguments.begin(), VK32_PROGRAMS "/" + program);
    std::vector<char*> words;
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(ends[1], fd);
      const rlimit seconds{2, 2};
      setrlimit(RLIMIT_CPU, &seconds);
      setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
      setenv("QT_QPA_PLATFORM", "offscreen", 1);
      if (chdir(folder.c_str()) == 0) execv(words[0], words.data());
      _exit(127);
    }
    close(ends[1]);
    line_ = ends[0];
    const timeval patience{10, 0};  // longer than any wait of these tests
    setsockopt(line_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  }
  ~Process() {
    close(line_);
    if (!ended_) kill(pid_, SIGKILL), waitpid(pid_, nullptr, 0);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// A program that has ended takes no input, and that is no reason to end the tests.
  void Send(const std::string& text) const { send(line_, text.data(), text.size(), MSG_NOSIGNAL); }
  void CloseInput() const { shutdown(line_, SHUT_WR); }
  /// As a reader that has ended.
  void CloseOutput() const { shutdown(line_, SHUT_RD); }
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
    std::string all, line;
    while (!(line = Line()).empty()) all += line;
    return all;
  }

  /// Its exit status; -1 if a signal ended it, or this, since it did not end.
  int Wait() {
    int status = 0;
    for (int tries = 0; !ended_ && tries < 1000; ++tries) {
      ended_ = waitpid(pid_, &status, WNOHANG) == pid_;
      if (!ended_) usleep(5000);
    }
    EXPECT_TRUE(ended_) << "a program does not end";
    return ended_ && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t pid_ = -1;
  int line_ = -1;
  bool ended_ = false;
};

}  // namespace vk32
