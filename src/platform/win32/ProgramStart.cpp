// What a program without a window does first.
#include "platform/ProgramStart.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/win32/Win32.h"
// Behind the header of the system.
#include <shellapi.h>

namespace vk32 {
namespace {

/// The console outlives the program.
void SpeakUtf8() {
  static const UINT before = GetConsoleOutputCP();
  if (before == 0 || before == CP_UTF8 || SetConsoleOutputCP(CP_UTF8) == 0) return;
  std::atexit([] { SetConsoleOutputCP(before); });
}

HANDLE Errors() { return GetStdHandle(STD_ERROR_HANDLE); }

}  // namespace

std::vector<std::string> TakeArguments(int, char**) {
  // A line ends as it does in a file of this program, also when it is compared with one of another system.
  for (std::FILE* const stream : {stdout, stderr}) {
    _setmode(_fileno(stream), _O_BINARY);
    // Else a console gets byte by byte, and shows none of a letter that takes two.
    std::setvbuf(stream, nullptr, _IOFBF, BUFSIZ);
  }
  SpeakUtf8();
  DWORD mode = 0;
  if (GetConsoleMode(Errors(), &mode) != 0) SetConsoleMode(Errors(), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  std::vector<std::string> arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) arguments.push_back(NarrowOf(wide.get()[i]));
  return arguments;
}

bool ErrorsAreOnTerminal() {
  DWORD mode = 0;
  // One that can't take a line back shows no progress.
  return GetConsoleMode(Errors(), &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace vk32
