// Text that comes through a descriptor.
#include "platform/TextInput.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace vk32 {
namespace {

class DescriptorInput : public TextInput {
 public:
  explicit DescriptorInput(int fd) : fd_(fd) {}
  ~DescriptorInput() override {
    if (fd_ != STDIN_FILENO) close(fd_);
  }
  DescriptorInput(const DescriptorInput&) = delete;
  DescriptorInput& operator=(const DescriptorInput&) = delete;

  int Handle() const override { return fd_; }

  bool Take(std::string& text) override {
    pollfd waiting{fd_, POLLIN, 0};
    if (poll(&waiting, 1, 0) <= 0) return true;
    char buffer[4096];
    const ssize_t count = read(fd_, buffer, sizeof buffer);
    if (count > 0) text.append(buffer, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR && errno != EAGAIN) throw std::system_error(errno, std::generic_category());
    return count != 0;
  }

  void DropTyped() override { tcflush(fd_, TCIFLUSH); }

  bool Show(const std::string& text) override { return write(fd_, text.data(), text.size()) >= 0; }

 private:
  int fd_;
};

}  // namespace

std::unique_ptr<TextInput> TextInput::StandardInput() { return std::make_unique<DescriptorInput>(STDIN_FILENO); }

std::unique_ptr<TextInput> TextInput::File(const std::string& path) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw std::system_error(errno, std::generic_category());
  return std::make_unique<DescriptorInput>(fd);
}

std::unique_ptr<TextInput> TextInput::Terminal() {
  const int fd = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
  return fd < 0 ? nullptr : std::make_unique<DescriptorInput>(fd);
}

}  // namespace vk32
