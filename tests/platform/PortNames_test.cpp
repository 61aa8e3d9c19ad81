// The search for the device behind a port name, in folders made up for it.
#include "platform/PortNames.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace vk32 {
namespace {

namespace fs = std::filesystem;

class PortNamesTest : public testing::Test {
 protected:
  PortNamesTest() {
    for (const char* folder : {"run", "dev/pts", "dev/serial/by-path", "sys/class/tty"}) {
      fs::create_directories(root_ / folder);
    }
    fs::permissions(root_ / "run", fs::perms::owner_all);
  }
  ~PortNamesTest() override { fs::remove_all(root_); }

  static fs::path NewFolder() {
    std::string name = testing::TempDir() + "/names.XXXXXX";
    return fs::canonical(mkdtemp(name.data()));
  }

  std::string Path(const std::string& name) const { return root_ / name; }

  void File(const std::string& name, const std::string& text = "") {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << text;
  }

  void Link(const std::string& name, const std::string& target) {
    fs::create_directories((root_ / name).parent_path());
    fs::create_symlink(target, root_ / name);
  }

  void OnBoard(const std::string& name, const std::string& type) {
    File("dev/" + name);
    File("sys/class/tty/" + name + "/type", type + "\n");
  }

  /// An adapter whose port hangs on an interface of it, as USB serial chips have it.
  void Adapter(const std::string& name, const std::string& byPath, const std::string& product) {
    File("dev/" + name);
    const std::string usb = "sys/devices/usb1/" + name + "-adapter";
    fs::create_directories(root_ / usb / "1:1.0" / name);
    if (!product.empty()) File(usb + "/product", product + "\n");
    Link("sys/class/tty/" + name + "/device", Path(usb + "/1:1.0/" + name));
    if (!byPath.empty()) Link("dev/serial/by-path/" + byPath, "../../" + name);
  }

  /// What stands behind a name; empty if nothing does.
  std::string Found(const std::string& portName) const {
    const auto device = names_.Find(portName);
    return device ? device->path : "";
  }

  const fs::path root_ = NewFolder();
  PortNames names_{Path("run"), Path("dev"), Path("sys")};
};

TEST_F(PortNamesTest, FirstHitWins) {
  OnBoard("ttyS0", "4");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyS0"));
  File("dev/ttyX1");
  Link("dev/COM1", "ttyX1");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyX1"));
  File("dev/pts/7");
  Link("run/COM1", Path("dev/pts/7"));
  EXPECT_EQ(Found("COM1"), Path("dev/pts/7"));
  EXPECT_EQ(names_.Find("COM1")->description, Path("dev/pts/7"));
  names_.Assign("COM1", Path("dev/COM1"));
  EXPECT_EQ(Found("COM1"), Path("dev/ttyX1"));
  names_.Assign("COM1", "/nowhere/tty");
  EXPECT_EQ(Found("COM1"), "/nowhere/tty");
  EXPECT_EQ(Found("COM2"), "");
}

TEST_F(PortNamesTest, LinksThatLeadNowhereAreNoHit) {
  OnBoard("ttyS0", "4");
  Link("run/COM1", Path("dev/pts/8"));
  Link("dev/COM1", "ttyX2");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyS0"));
}

TEST_F(PortNamesTest, RuntimeFolderOfOthersIsNotTrusted) {
  File("dev/pts/7");
  Link("run/COM5", Path("dev/pts/7"));
  EXPECT_EQ(Found("COM5"), Path("dev/pts/7"));
  for (const fs::perms open : {fs::perms::group_write, fs::perms::others_write}) {
    fs::permissions(Path("run"), fs::perms::owner_all | open);
    EXPECT_EQ(Found("COM5"), "");
  }
  fs::permissions(Path("run"), fs::perms::owner_all);
  Link("alias", Path("run"));
  EXPECT_FALSE(PortNames(Path("alias"), Path("dev"), Path("sys")).Find("COM5"));
  EXPECT_FALSE(PortNames("", Path("dev"), Path("sys")).Find("COM5"));
  if (geteuid() == 0) {
    ASSERT_EQ(chown(Path("run").c_str(), 65534, 65534), 0);
    EXPECT_EQ(Found("COM5"), "");
  }
}

TEST_F(PortNamesTest, RealDevicesInTheirOrder) {
  OnBoard("ttyS10", "4");
  OnBoard("ttyS1", "0");
  OnBoard("ttyS2", "4");
  File("sys/class/tty/ttyS3/type", "4\n");  // no such device file
  OnBoard("tty1", "4");
  // Without a type, only the device itself tells.
  File("dev/ttyS4");
  Link("sys/class/tty/ttyS4/device", Path("sys/devices/platform/serial8250"));
  fs::create_directories(Path("sys/devices/platform/serial8250"));
  File("dev/ttyS5");
  Link("sys/class/tty/ttyS5/device", Path("sys/devices/pnp0"));
  fs::create_directories(Path("sys/devices/pnp0"));
  Adapter("ttyUSB10", "", "");
  Adapter("ttyUSB9", "", "");
  Adapter("ttyUSB0", "pci-0000:00:14.0-usb-0:2:1.0-port0", "FT232R USB UART");
  Adapter("ttyACM0", "pci-0000:00:14.0-usb-0:1:1.0", "Gateway");
  Link("dev/serial/by-path/pci-0000:00:14.0-usbv2-0:2:1.0-port0", "../../ttyUSB0");
  Link("dev/serial/by-path/pci-0000:00:16.3", "../../ttyS2");
  Link("dev/serial/by-path/pci-0000:00:19.0", "../../ttyUSB77");

  const char* const expected[] = {
      "ttyS2, on-board",          "ttyS5, on-board", "ttyS10, on-board", "ttyACM0, Gateway",
      "ttyUSB0, FT232R USB UART", "ttyUSB9",         "ttyUSB10",
  };
  int number = 0;
  for (const char* description : expected) {
    const auto device = names_.Find("COM" + std::to_string(++number));
    ASSERT_TRUE(device) << description;
    EXPECT_EQ(device->description, Path("dev/") + description);
    EXPECT_EQ(device->path, device->description.substr(0, device->description.find(',')));
  }
  EXPECT_EQ(Found("COM8"), "");
}

TEST(PortNames, NumbersOneToThirtyTwo) {
  EXPECT_EQ(PortNames::Number("COM1"), 1);
  EXPECT_EQ(PortNames::Number("COM32"), 32);
  for (const char* name : {"", "COM", "COM0", "COM33", "COM01", "COM-1", "COM+1", "COM 1", "COM1 ", "com1", "LPT1",
                           "None", "COM99999999999"}) {
    EXPECT_EQ(PortNames::Number(name), 0) << name;
  }
}

TEST(PortNames, RuntimeFolderFollowsTheEnvironment) {
  const char* set = getenv("XDG_RUNTIME_DIR");
  const std::string before = set != nullptr ? set : "";
  setenv("XDG_RUNTIME_DIR", "/run/somewhere", 1);
  EXPECT_EQ(PortNames::RuntimeFolder(), "/run/somewhere/vk32");
  const std::string user = std::to_string(geteuid());
  for (const char* none : {"", "relative"}) {
    setenv("XDG_RUNTIME_DIR", none, 1);
    EXPECT_EQ(PortNames::RuntimeFolder(),
              fs::is_directory("/run/user/" + user) ? "/run/user/" + user + "/vk32" : "/tmp/vk32-" + user);
  }
  set != nullptr ? setenv("XDG_RUNTIME_DIR", before.c_str(), 1) : unsetenv("XDG_RUNTIME_DIR");
}

}  // namespace
}  // namespace vk32
