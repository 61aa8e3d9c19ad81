// The product menu follows the ports of the system.
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "support/Harness.h"

namespace vk32 {
namespace {

/// The system's own files tell that something has happened to them.
struct SystemFiles : Outside {
  std::optional<Time> NextDue() const override { return std::nullopt; }
  void RunDue(Time) override {}
  bool Readable(int fd) const override {
    pollfd file{fd, POLLIN, 0};
    return poll(&file, 1, 0) == 1;
  }
};

TEST(ProductMenu, FollowsWhatIsPluggedInAndOutAndHeld) {
  const TemporaryFile port("COM5");
  const std::string folder = std::filesystem::path(port.Path()).parent_path();
  Harness h;
  SystemFiles files;
  h.loop.Add(files);
  h.names = PortNames(folder, "/nowhere", "/nowhere");
  for (const char* name : {"COM1", "COM5"}) h.driver.Plug(name, nullptr);
  h.GoTo("RB2000Cmd");
  /// The rows, the chosen one in brackets, and what is told of the chosen port.
  const auto seen = [&] {
    h.Do("wait 1000");
    std::string rows;
    for (int row = 1; row <= 5; ++row) {
      const std::string label = "ProductMenu.PortFoundLbl(" + std::to_string(row) + ").";
      if (h.Get(label + "Shown") == "False") continue;
      const std::string name = Split(h.Get(label + "Caption"), '\t')[0];
      rows += h.Get(label + "Chosen") == "True" ? "[" + name + "] " : name + " ";
    }
    return (h.Get("ProductMenu.NoPortLbl.Shown") == "True" ? "none " : rows) + h.Get("ProductMenu.PortLbl.Caption");
  };
  const std::string path = port.Path();
  EXPECT_EQ(seen(), "none No port is chosen");
  port.Fill("x");
  EXPECT_EQ(seen(), "COM5 No port is chosen");
  h.Do("click ProductMenu.PortFoundLbl(1)");
  EXPECT_EQ(seen() + h.app.globals.ComPortText, "[COM5] " + path + ", freeCOM5");
  const int holder = open(path.c_str(), O_RDONLY);
  flock(holder, LOCK_EX);
  EXPECT_EQ(seen(), "[COM5] " + path + ",\r\nin use by VK32 itself");
  close(holder);
  for (const char* name : {"/COM1", "/COM2", "/COM3", "/COM4", "/COM6"}) std::ofstream(folder + name) << "x";
  EXPECT_EQ(seen(), "COM1 COM2 COM3 COM4 [COM5] " + path + ", free");
  h.Do("scroll ProductMenu.PortsVScroll 1");
  EXPECT_EQ(seen(), "COM2 COM3 COM4 [COM5] COM6 " + path + ", free");
  std::filesystem::remove(path);
  EXPECT_EQ(seen(), "COM1 COM2 COM3 COM4 COM6 " + path + ",\r\nis missing");
  EXPECT_EQ(Split(h.Get("ProductMenu.COMCbo.Notes"), '\n').size(), 33);
  h.Do("select ProductMenu.COMCbo COM7");
  EXPECT_EQ(seen(), "COM1 COM2 COM3 COM4 COM6 No port is chosen");
}

}  // namespace
}  // namespace vk32
