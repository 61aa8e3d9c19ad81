// A built program at the other end of two pipes; nothing that it does can hang a test.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace vk32 {

class Process {
 public:
  using Clock = std::chrono::steady_clock;

  /// `program`: "vk32-sim", "vk32-script" or "vk32"; `runtimeFolder`: where port names are kept; `output`: a file that
  /// takes its standard output, in place of these pipes.
  Process(const std::string& program, std::vector<std::string> arguments, const std::string& runtimeFolder,
          const char* output = nullptr) {
    int toChild[2], fromChild[2];
    if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0) ADD_FAILURE() << "no pipe";
    arguments.insert(arguments.begin(), VK32_PROGRAMS "/" + program);
    std::vector<char*> words;
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    signal(SIGPIPE, SIG_IGN);  // a program that has ended takes no input, and that is no reason to end the tests
    pid_ = fork();
    if (pid_ == 0) {
      signal(SIGPIPE, SIG_DFL);
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      dup2(toChild[0], STDIN_FILENO);
      dup2(output != nullptr ? open(output, O_WRONLY | O_CLOEXEC) : fromChild[1], STDOUT_FILENO);
      dup2(fromChild[1], STDERR_FILENO);
      setenv("XDG_RUNTIME_DIR", runtimeFolder.c_str(), 1);
      setenv("QT_QPA_PLATFORM", "offscreen", 1);
      execv(words[0], words.data());
      _exit(127);
    }
    close(toChild[0]);
    close(fromChild[1]);
    input_ = toChild[1];
    output_ = fromChild[0];
  }
  ~Process() {
    CloseInput();
    CloseOutput();
    if (!ended_) Signal(SIGKILL);
    if (!ended_) waitpid(pid_, nullptr, 0);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void Send(const std::string& text) const {
    EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void CloseInput() {
    if (input_ >= 0) close(std::exchange(input_, -1));
  }
  /// As a reader that has ended.
  void CloseOutput() {
    if (output_ >= 0) close(std::exchange(output_, -1));
  }
  void Signal(int number) const { kill(pid_, number); }

  /// The next line with its end; empty at the end of the output.
  std::string Line() {
    std::size_t end = 0;
    while ((end = printed_.find('\n')) == std::string::npos && More()) {
    }
    const std::size_t count = end == std::string::npos ? printed_.size() : end + 1;
    std::string line = printed_.substr(0, count);
    printed_.erase(0, count);
    return line;
  }
  /// All lines up to "ok" or "error".
  std::string Answer() {
    std::string lines;
    for (std::string line = Line(); !line.empty(); line = Line()) {
      lines += line;
      if (line == "ok\n" || line.rfind("error ", 0) == 0) break;
    }
    return lines;
  }
  std::string Do(const std::string& command) {
    Send(command + "\n");
    return Answer();
  }
  /// All that it still prints.
  std::string Rest() {
    while (More()) {
    }
    return std::exchange(printed_, {});
  }

  /// Its exit status; -1 if a signal ended it, or this, since it did not end.
  int Wait() {
    for (int tries = 0; !ended_ && tries < 1000; ++tries) {
      int status = 0;
      if (wait4(pid_, &status, WNOHANG, &usage_) == pid_) {
        ended_ = true;
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
      } else {
        usleep(5000);
      }
    }
    EXPECT_TRUE(ended_) << "a program does not end";
    return status_;
  }
  /// The processor time that it has taken, once it has ended.
  double ProcessorSeconds() const {
    const auto seconds = [](const timeval& time) {
      return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage_.ru_utime) + seconds(usage_.ru_stime);
  }

 private:
  /// False at the end of the output.
  bool More() {
    constexpr int patience = 10'000;  // ms: longer than any wait of these tests
    pollfd waiting{output_, POLLIN, 0};
    if (poll(&waiting, 1, patience) != 1) {
      ADD_FAILURE() << "a program says no more, after: " << printed_;
      return false;
    }
    char chunk[4096];
    const ssize_t count = read(output_, chunk, sizeof chunk);
    if (count > 0) printed_.append(chunk, static_cast<std::size_t>(count));
    return count > 0;
  }

  pid_t pid_ = -1;
  int input_ = -1, output_ = -1;
  std::string printed_;
  bool ended_ = false;
  int status_ = -1;
  rusage usage_{};
};

}  // namespace vk32
