// Lines from a descriptor, and questions to the user at the terminal.
#include "script/LineReader.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace vk32 {
namespace {

constexpr std::size_t LongestLine = 1 << 20;

}  // namespace

std::optional<std::string> LineReader::Next(const std::function<bool()>& stop) {
  for (;;) {
    if (const std::size_t end = text_.find('\n'); end != std::string::npos) {
      std::string line = text_.substr(0, end);
      text_.erase(0, end + 1);
      return line;
    }
    if (ended_ && text_.empty()) return std::nullopt;
    if (ended_ || text_.size() > LongestLine) return std::exchange(text_, {});
    loop_.RunDue();
    if (stop()) return std::nullopt;
    loop_.Wait(fd_);
    ReadWhatWaits();
  }
}

void LineReader::ReadWhatWaits() {
  pollfd waiting{fd_, POLLIN, 0};
  if (poll(&waiting, 1, 0) <= 0) return;
  char buffer[4096];
  const ssize_t count = read(fd_, buffer, sizeof buffer);
  if (count > 0) {
    text_.append(buffer, static_cast<std::size_t>(count));
  } else if (count == 0) {
    ended_ = true;
  } else if (errno != EINTR && errno != EAGAIN) {
    throw std::system_error(errno, std::generic_category());
  }
}

Terminal::Terminal(EventLoop& loop) : fd_(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY)), lines_(fd_, loop) {}

Terminal::~Terminal() {
  if (fd_ >= 0) close(fd_);
}

std::optional<std::string> Terminal::Ask(const std::string& text, const std::function<bool()>& stop) {
  try {
    if (write(fd_, text.data(), text.size()) < 0) return std::nullopt;
    return lines_.Next(stop);
  } catch (const std::system_error&) {
    return std::nullopt;  // it hung up
  }
}

}  // namespace vk32
