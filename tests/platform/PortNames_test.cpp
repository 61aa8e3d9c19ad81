// The search for the device behind a port name, in folders made up for it.
#include "platform/PortNames.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "support/Harness.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

class PortNamesTest : public testing::Test {
 protected:
  PortNamesTest() {
    for (const char* folder : {"run", "dev/serial/by-path", "sys/class/tty"}) fs::create_directories(root_ / folder);
    fs::permissions(root_ / "run", fs::perms::owner_all);
  }

  std::string Path(const std::string& name) const { return root_ / name; }
  void File(const std::string& name, const std::string& text = "") const {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << text;
  }
  void Link(const std::string& name, const std::string& target) const { fs::create_symlink(target, root_ / name); }

  /// A port on a device of the system; `type`: empty if the system names none.
  void Port(const std::string& name, const std::string& device, const std::string& type = "") const {
    File("dev/" + name);
    fs::create_directories(root_ / "sys/devices" / device);
    fs::create_directories(root_ / "sys/class/tty" / name);
    Link("sys/class/tty/" + name + "/device", Path("sys/devices/" + device));
    if (!type.empty()) File("sys/class/tty/" + name + "/type", type + "\n");
  }
  /// A USB adapter, whose port hangs on an interface of it.
  void Adapter(const std::string& name, const std::string& byPath, const std::string& product) const {
    Port(name, "pci0/usb1/" + name + "-adapter/1:1.0/" + name);
    if (!product.empty()) File("sys/devices/pci0/usb1/" + name + "-adapter/product", product + "\n");
    if (!byPath.empty()) Link("dev/serial/by-path/" + byPath, "../../" + name);
  }
  void Unplug(const std::string& name) const {
    fs::remove(root_ / "dev" / name);
    fs::remove_all(root_ / "sys/class/tty" / name);
  }

  /// What stands behind a name; empty if nothing does.
  std::string Found(const std::string& portName) const {
    const auto device = names_.Find(portName);
    return device ? device->path : "";
  }

  const TemporaryFile file_{"none"};
  const fs::path root_ = fs::canonical(fs::path(file_.Path()).parent_path());
  PortNames names_{Path("run"), Path("dev"), Path("sys")};
};

TEST_F(PortNamesTest, FirstHitWins) {
  Port("ttyS0", "pnp0", "4");
  Link("run/COM1", Path("dev/pts"));
  Link("dev/COM1", "ttyX1");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyS0"));  // links that lead nowhere are no hit
  File("dev/ttyX1");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyX1"));
  File("dev/pts");
  EXPECT_EQ(Found("COM1"), Path("dev/pts"));
  EXPECT_EQ(names_.Find("COM1")->description, Path("dev/pts"));
  names_.Assign("COM1", Path("dev/COM1"));
  EXPECT_EQ(Found("COM1"), Path("dev/ttyX1"));
  names_.Assign("COM1", "/nowhere/tty");
  EXPECT_EQ(Found("COM1"), "/nowhere/tty");
  EXPECT_EQ(Found("COM2"), "");
}

TEST_F(PortNamesTest, RuntimeFolderOfOthersIsPassedOver) {
  File("dev/pts");
  Link("run/COM5", Path("dev/pts"));
  Link("alias", Path("run"));
  EXPECT_EQ(Found("COM5"), Path("dev/pts"));
  const auto check = [&](const PortNames& names, const std::string& folder, const std::string& why) {
    EXPECT_FALSE(names.Find("COM5")) << why;
    EXPECT_EQ(names.Ignored().substr(0, Path(folder).size() + why.size() + 1), Path(folder) + why + " ");
    EXPECT_EQ(names.Ignored("COM5"), names.Ignored());
    EXPECT_EQ(names.Ignored("COM6"), "");
  };
  for (const fs::perms open : {fs::perms::group_write, fs::perms::others_write}) {
    fs::permissions(Path("run"), fs::perms::owner_all | open);
    check(names_, "run", " can be written to by others");
  }
  fs::permissions(Path("run"), fs::perms::owner_all);
  check(PortNames(Path("alias"), Path("dev"), Path("sys")), "alias", " is a link");
  if (geteuid() == 0) {
    ASSERT_EQ(chown(Path("run").c_str(), 65534, 65534), 0);
    check(names_, "run", " belongs to another user");
  }
  const PortNames none(Path("none"), "/nowhere", "/nowhere"), empty("", "/nowhere", "/nowhere");
  EXPECT_EQ(none.Ignored() + empty.Ignored(), "");
}

TEST_F(PortNamesTest, RealDevicesInTheirOrder) {
  Port("ttyS10", "pnp1", "4");
  Port("ttyS1", "pnp2", "0");            // a name for a port that was never found
  Port("ttyS4", "platform/serial8250");  // without a type, only the device tells
  Port("ttyS5", "pnp3");
  Port("ttyAMA0", "platform/fe201000.serial", "32");
  File("sys/class/tty/ttyS3/type", "4\n");  // no such device file
  for (const char* name : {"tty1", "console", "ptmx", "ttyprintk"}) {
    File(std::string("dev/") + name);
    File(std::string("sys/class/tty/") + name + "/type", "4\n");
  }
  for (const char* name : {"rfcomm0", "ttyGS0"}) {  // no device before a partner is connected
    File(std::string("dev/") + name);
    fs::create_directories(root_ / "sys/class/tty" / name);
  }
  Adapter("ttyUSB10", "", "");
  Adapter("ttyUSB9", "", "");
  Adapter("ttyUSB0", "pci-0000:00:14.0-usb-0:2:1.0-port0", "FT232R USB UART");
  Adapter("ttyXRUSB0", "pci-0000:00:14.0-usb-0:1:1.0", "Gateway");
  Link("dev/serial/by-path/pci-0000:00:14.0-usbv2-0:2:1.0-port0", "../../ttyUSB0");
  Link("dev/serial/by-path/pci-0000:00:16.3", "../../ttyS10");
  Link("dev/serial/by-path/pci-0000:00:19.0", "../../ttyUSB77");
  std::string all;
  for (int number = 1; const auto device = names_.Find("COM" + std::to_string(number)); ++number) {
    all += device->description.substr(Path("dev/").size()) + "\n";
    EXPECT_EQ(device->path, device->description.substr(0, device->description.find(',')));
  }
  EXPECT_EQ(all,
            "ttyAMA0, on-board\nttyS5, on-board\nttyS10, on-board\nttyXRUSB0, Gateway\nttyUSB0, FT232R USB UART\n"
            "rfcomm0, Bluetooth\nttyGS0, USB gadget\nttyUSB9\nttyUSB10\n");
}

TEST_F(PortNamesTest, ChosenDeviceStaysUntilTheNextChoice) {
  Adapter("ttyUSB0", "usb-0:2:1.0", "Adapter");
  names_.Choose("COM1");
  Adapter("ttyUSB1", "usb-0:1:1.0", "");  // in an earlier socket
  EXPECT_EQ(Found("COM1"), Path("dev/ttyUSB0"));
  EXPECT_EQ(Found("COM2"), Path("dev/ttyUSB0"));
  Unplug("ttyUSB0");
  for (int again = 0; again < 2; ++again) {
    EXPECT_FALSE(fs::exists(Found("COM1")));
    EXPECT_EQ(names_.Find("COM1")->description, Path("dev/ttyUSB0, Adapter"));
    fs::remove(root_ / "dev/serial/by-path/usb-0:2:1.0");
    File("dev/ttyUSB0");  // another one takes its number
  }
  Adapter("ttyUSB2", "usb-0:2:1.0", "Adapter");  // its socket has it again
  EXPECT_EQ(Found("COM1"), Path("dev/ttyUSB2"));
  names_.Choose("COM1");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyUSB1"));

  File("dev/pts");
  Link("run/COM1", Path("dev/pts"));
  names_.Choose("COM1");
  fs::remove(root_ / "run/COM1");
  EXPECT_EQ(Found("COM1"), Path("run/COM1"));
  names_.Choose("COM32");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyUSB1"));
  Port("ttyS0", "pnp0", "4");
  EXPECT_EQ(Found("COM1"), Path("dev/ttyS0"));
}

TEST(PortNames, NumbersOneToThirtyTwo) {
  EXPECT_EQ(PortNames::Number("COM1"), 1);
  EXPECT_EQ(PortNames::Number("COM32"), 32);
  for (const char* name : {"", "COM", "COM0", "COM33", "COM01", "COM-1", "COM+1", "COM 1", "COM1 ", "com1", "LPT1"}) {
    EXPECT_EQ(PortNames::Number(name), 0) << name;
  }
}

TEST(PortNames, RuntimeFolderFollowsTheEnvironment) {
  const char* set = getenv("XDG_RUNTIME_DIR");
  const std::string before = set != nullptr ? set : "", user = std::to_string(geteuid());
  const std::string usual = fs::is_directory("/run/user/" + user) ? "/run/user/" + user + "/vk32" : "/tmp/vk32-" + user;
  for (const auto& [value, folder] :
       {std::pair{"/run/some", std::string("/run/some/vk32")}, {"", usual}, {"x", usual}}) {
    setenv("XDG_RUNTIME_DIR", value, 1);
    EXPECT_EQ(PortNames::RuntimeFolder(), folder);
  }
  set != nullptr ? setenv("XDG_RUNTIME_DIR", before.c_str(), 1) : unsetenv("XDG_RUNTIME_DIR");
}

}  // namespace
}  // namespace vk32
