// Lines of a text that comes at its own time, and questions to the user at the terminal.
#include "script/LineReader.h"

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
      if (std::exchange(first_, false) && line.starts_with(ByteOrderMark)) line.erase(0, ByteOrderMark.size());
      return line;
    }
    if (ended_ && text_.empty()) return std::nullopt;
    if (ended_ || text_.size() > LongestLine) return std::exchange(text_, {});
    loop_.RunDue();
    if (stop()) return std::nullopt;
    loop_.Wait(input_.Handle());
    ended_ = !input_.Take(text_);
  }
}

void LineReader::DropTyped() {
  text_.clear();
  input_.DropTyped();
}

Terminal::Terminal(EventLoop& loop) : input_(TextInput::Terminal()) {
  if (input_) lines_.emplace(*input_, loop);
}

std::optional<std::string> Terminal::Ask(const std::string& text, const std::function<bool()>& stop) {
  try {
    // What was typed before is no answer to a question that nobody could see.
    lines_->DropTyped();
    return input_->Show(text) ? lines_->Next(stop) : std::nullopt;
  } catch (const std::system_error&) {
    return std::nullopt;  // it hung up
  }
}

}  // namespace vk32
