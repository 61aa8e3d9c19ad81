// Text that a thread reads: neither a console, a pipe nor a file can be waited for together with a port.
#include "platform/TextInput.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/win32/Win32.h"

namespace vk32 {
namespace {

/// What the program and the thread share. The thread may stay in a read for ever: it outlives the program's part.
struct Source {
  OwnedHandle handle, ready = MakeEvent();
  bool console = false;

  std::mutex mutex;
  std::condition_variable asked;
  bool wanted = false;
  std::string text;
  bool ended = false;
  DWORD error = 0;
};

/// Some bytes; none at the end, and with an error.
std::string ReadBytes(HANDLE handle, DWORD& error) {
  char bytes[4096];
  DWORD count = 0;
  if (ReadFile(handle, bytes, sizeof bytes, &count, nullptr) != 0) return {bytes, count};
  const DWORD why = GetLastError();
  if (why != ERROR_BROKEN_PIPE && why != ERROR_HANDLE_EOF) error = why;
  return {};
}

/// A line that the user has typed; none when he ends it by Ctrl+Z, or the console has gone.
std::string ReadTyped(HANDLE console) {
  constexpr wchar_t CtrlZ = 26;
  wchar_t typed[1024];
  DWORD count = 0;
  if (ReadConsoleW(console, typed, static_cast<DWORD>(std::size(typed)), &count, nullptr) == 0) return {};
  return count > 0 && typed[0] == CtrlZ ? "" : NarrowOf({typed, count});
}

void ReadAll(const std::shared_ptr<Source>& source) {
  std::unique_lock lock(source->mutex);
  while (!source->ended) {
    // Two may read the same console, the script and its questions: each takes what it has asked for alone.
    source->asked.wait(lock, [&] { return source->wanted; });
    lock.unlock();
    DWORD error = 0;
    const HANDLE handle = source->handle.get();
    std::string some = source->console ? ReadTyped(handle) : ReadBytes(handle, error);
    lock.lock();
    source->error = error;
    source->wanted = false;
    source->ended = some.empty();
    std::erase(some, '\r');  // a line ends as on every system
    source->text += some;
    SetEvent(source->ready.get());
  }
}

class ThreadInput : public TextInput {
 public:
  ThreadInput(OwnedHandle handle, OwnedHandle output) : output_(std::move(output)) {
    DWORD mode = 0;
    source_->console = GetConsoleMode(handle.get(), &mode) != 0;
    source_->handle = std::move(handle);
    std::thread([source = source_] { ReadAll(source); }).detach();
  }

  int Handle() const override {
    const std::lock_guard lock(source_->mutex);
    if (!source_->ended && !IsSignalled(source_->ready.get())) {
      source_->wanted = true;
      source_->asked.notify_one();
    }
    return NumberOf(source_->ready.get());
  }

  bool Take(std::string& text) override {
    const std::lock_guard lock(source_->mutex);
    text += std::exchange(source_->text, {});
    if (source_->error != 0) throw std::system_error(static_cast<int>(source_->error), std::system_category());
    if (!source_->ended) ResetEvent(source_->ready.get());
    return !source_->ended;
  }

  void DropTyped() override {
    const std::lock_guard lock(source_->mutex);
    source_->text.clear();
    if (!source_->ended) ResetEvent(source_->ready.get());
    FlushConsoleInputBuffer(source_->handle.get());
  }

  bool Show(const std::string& text) override {
    const std::wstring wide = WideOf(text);
    return WriteConsoleW(output_.get(), wide.data(), static_cast<DWORD>(wide.size()), nullptr, nullptr) != 0;
  }

 private:
  std::shared_ptr<Source> source_ = std::make_shared<Source>();
  OwnedHandle output_;
};

[[noreturn]] void Throw(DWORD error) { throw std::system_error(static_cast<int>(error), std::system_category()); }

OwnedHandle OpenConsole(const wchar_t* name) {
  const HANDLE console = OpenExisting(name, {GENERIC_READ | GENERIC_WRITE});
  return OwnedHandle(console == INVALID_HANDLE_VALUE ? nullptr : console);
}

}  // namespace

std::unique_ptr<TextInput> TextInput::StandardInput() {
  HANDLE own = nullptr;
  const HANDLE process = GetCurrentProcess();
  DuplicateHandle(process, GetStdHandle(STD_INPUT_HANDLE), process, &own, 0, FALSE, DUPLICATE_SAME_ACCESS);
  return std::make_unique<ThreadInput>(OwnedHandle(own), OwnedHandle());
}

std::unique_ptr<TextInput> TextInput::File(const std::string& path) {
  const std::wstring wide = WideOf(path);
  if (NamesDevice(wide)) Throw(ERROR_FILE_NOT_FOUND);
  const HANDLE file = OpenExisting(wide, {});
  if (file == INVALID_HANDLE_VALUE) Throw(GetLastError());
  return std::make_unique<ThreadInput>(OwnedHandle(file), OwnedHandle());
}

std::unique_ptr<TextInput> TextInput::Terminal() {
  OwnedHandle input = OpenConsole(L"CONIN$"), output = OpenConsole(L"CONOUT$");
  return input && output ? std::make_unique<ThreadInput>(std::move(input), std::move(output)) : nullptr;
}

}  // namespace vk32
