// The program vk32 from outside: its options, and what it says where no window can open.
#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/wait.h>

#include <algorithm>
#include <string>

namespace vk32 {
namespace {

TEST(Program, TellsInALineWhatIsWrongAndHowToMendIt) {
  const struct {
    const char* environment;
    std::string arguments;
    int status;
    const char* told;
  } rows[] = {{"", "", 2, "there is no display: start it in a desktop session, or use vk32-script"},
              {"DISPLAY=:7777", "", 2, "the display \":7777\" can't be opened"},
              {"WAYLAND_DISPLAY=nowhere", "", 2, "install qt6-wayland"},
              {"QT_QPA_PLATFORM=nonsense", "", 2, "QT_QPA_PLATFORM is \"nonsense\", which can't start here: unset it"},
              {"QT_QPA_PLATFORM=linuxfb", "", 2, "unset it"},
              {"QT_QPA_PLATFORM=offscreen", "--nonsense", 2, "nonsense"},
              {"QT_QPA_PLATFORM=offscreen", "file.cfg", 2, "takes options alone"},
              {"QT_QPA_PLATFORM=offscreen", "--port COM1", 2, "wants COMn=PATH, n from 1 to 32, but is \"COM1\""},
              {"QT_QPA_PLATFORM=offscreen", "--port XOM1=/dev/null", 2, "but is \"XOM1=/dev/null\""},
              {"", "--version", 0, "1.8.11"}};
  for (const auto& row : rows) {
    const std::string command =
        std::string("env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_RUNTIME_DIR=/tmp ") + row.environment +
        " timeout 5 " VK32_PROGRAM " " + row.arguments + " 2>&1";
    SCOPED_TRACE(command);
    FILE* output = popen(command.c_str(), "r");
    std::string told(4096, '\0');
    told.resize(fread(told.data(), 1, told.size(), output));
    EXPECT_EQ(WEXITSTATUS(pclose(output)), row.status);
    EXPECT_NE(told.find(row.told), std::string::npos) << told;
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
  }
}

}  // namespace
}  // namespace vk32
