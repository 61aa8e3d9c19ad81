// The search for the device behind a port name, in folders made up for it.
#include "platform/PortNames.h"

#include <poll.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/PlaceWatch.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

class PortNamesTest : public testing::Test {
 protected:
  PortNamesTest() {
    fs::create_directories(root_ / "dev/serial/by-path");
    mkdir(Path("run").c_str(), 0700);
  }

  std::string Path(const std::string& name) const { return root_ / name; }
  void File(const std::string& name, const std::string& text = "") const {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << text;
  }
  void Link(const std::string& name, const std::string& target) const { fs::create_symlink(target, root_ / name); }

  /// A port on a device of the system, if one is told; `type`: empty if the system names none.
  void Port(const std::string& name, const std::string& device, const std::string& type = "") const {
    File("dev/" + name);
    fs::create_directories(root_ / "sys/devices" / device);
    File("sys/class/tty/" + name + "/type", type);
    if (!device.empty()) Link("sys/class/tty/" + name + "/device", Path("sys/devices/" + device));
  }
  /// A USB adapter, whose port hangs on an interface of it.
  void Adapter(const std::string& name, const std::string& byPath, const std::string& product = "") const {
    Port(name, "pci0/usb1/" + name + "-adapter/1:1.0/" + name);
    File("sys/devices/pci0/usb1/" + name + "-adapter/product", product);
    if (!byPath.empty()) Link("dev/serial/by-path/" + byPath, "../../" + name);
  }

  /// What stands behind a name, its path below /dev; empty if nothing does.
  std::string Found(const std::string& portName) const {
    const auto device = names_.Find(portName);
    return device ? fs::relative(device->path, Path("dev")).string() : "";
  }

  const TemporaryFile file_{"none"};
  const fs::path root_ = fs::canonical(fs::path(file_.Path()).parent_path());
  PortNames names_{Path("run"), Path("dev"), Path("sys")};
};

TEST_F(PortNamesTest, FirstHitWins) {
  Port("ttyS0", "pnp0", "4");
  Link("run/COM1", Path("dev/pts"));
  Link("dev/COM1", "ttyX1");
  EXPECT_EQ(Found("COM1"), "ttyS0");  // links that lead nowhere are no hit
  File("dev/ttyX1");
  EXPECT_EQ(Found("COM1"), "ttyX1");
  File("dev/pts");
  EXPECT_EQ(Found("COM1"), "pts");
  EXPECT_EQ(names_.Find("COM1")->Description(), Path("dev/pts"));
  names_.Assign("COM1", Path("dev/none"));
  EXPECT_EQ(Found("COM1"), "none");
  EXPECT_EQ(Found("COM2"), "");
}

TEST_F(PortNamesTest, RuntimeFolderOfOthersIsPassedOver) {
  File("dev/pts");
  Link("run/COM5", Path("dev/pts"));
  Link("alias", Path("run"));
  EXPECT_EQ(Found("COM5") + names_.Ignored(), "pts");
  const auto check = [&](const std::string& folder, const std::string& why) {
    const PortNames names(Path(folder), Path("dev"), Path("sys"));
    EXPECT_FALSE(names.Find("COM5")) << why;
    EXPECT_TRUE(names.Ignored().starts_with(Path(folder) + why)) << names.Ignored();
    EXPECT_EQ(names.Ignored("COM5") + names.Ignored("COM6"), names.Ignored());
  };
  check("alias", " is a link and");
  for (const fs::perms open : {fs::perms::group_write, fs::perms::others_write}) {
    fs::permissions(Path("run"), fs::perms::owner_all | open);
    check("run", " can be written to by others and");
  }
  if (geteuid() == 0 && chown(Path("run").c_str(), 1, 1) == 0) check("run", " belongs to another user and");
  EXPECT_EQ(PortNames(Path("none")).Ignored() + PortNames("").Ignored(), "");
}

TEST_F(PortNamesTest, RealDevicesInTheirOrder) {
  Port("ttyS10", "pnp1", "4");
  Port("ttyS1", "pnp2", "0");            // a name for a port that was never found
  Port("ttyS4", "platform/serial8250");  // without a type, only the device tells
  for (const char* name : {"ttyS5", "ttyS6"}) Port(name, "pnp3");
  Port("ttyAMA0", "platform/fe201000.serial", "32");
  // The last two before a partner is connected.
  for (const char* name : {"tty1", "rfcomm0", "ttyGS0"}) Port(name, "", "4");
  fs::remove(Path("dev/ttyS6"));
  for (const char* name : {"ttyUSB10", "ttyUSB9"}) Adapter(name, "");
  Adapter("ttyUSB0", "pci-0000:00:14.0-usb-0:2:1.0-port0", "FT232R USB UART");
  Adapter("ttyXRUSB0", "pci-0000:00:14.0-usb-0:1:1.0", "Gateway");
  Link("dev/serial/by-path/pci-0000:00:14.0-usbv2", "../../ttyUSB0");
  Link("dev/serial/by-path/pci-0000:00:16.3", "../../ttyS10");
  Link("dev/serial/by-path/pci-0000:00:19.0", "../../ttyUSB77");
  std::string all;
  for (const auto& [name, device] : names_.FindAll()) {
    EXPECT_EQ(names_.Find(name)->path, device.path);
    all += name + " " + fs::path(device.Description()).filename().string() + "\n";
  }
  EXPECT_EQ(all,
            "COM1 ttyAMA0, Serial port\nCOM2 ttyS5, Serial port\nCOM3 ttyS10, Serial port\n"
            "COM4 ttyXRUSB0, Gateway\nCOM5 ttyUSB0, FT232R USB UART\nCOM6 rfcomm0, Bluetooth\n"
            "COM7 ttyGS0, USB gadget\nCOM8 ttyUSB9, USB serial port\nCOM9 ttyUSB10, USB serial port\n");
}

TEST_F(PortNamesTest, ChosenDeviceStaysUntilTheNextChoice) {
  const fs::path socket = root_ / "dev/serial/by-path/usb-0:2:1.0";
  Adapter("ttyUSB0", socket.filename(), "Adapter");
  names_.Choose("COM1");
  Adapter("ttyUSB1", "usb-0:1:1.0");  // in an earlier socket
  EXPECT_EQ(Found("COM1") + Found("COM2"), "ttyUSB0ttyUSB0");
  fs::remove(socket);  // another one takes its number
  EXPECT_FALSE(fs::exists(names_.Find("COM1")->path));
  EXPECT_EQ(names_.Find("COM1")->Description(), socket.string() + ", Adapter");
  EXPECT_EQ(names_.FindAll().at(0).device.path, Path("dev/ttyUSB1"));  // what a new choice would find
  Adapter("ttyUSB2", socket.filename(), "Adapter");                    // its socket has it again
  EXPECT_EQ(Found("COM1"), "ttyUSB2");
  names_.Choose("COM1");
  EXPECT_EQ(Found("COM1"), "ttyUSB1");

  File("dev/pts");
  Link("run/COM1", Path("dev/pts"));
  names_.Choose("COM1");
  fs::remove(root_ / "run/COM1");
  EXPECT_EQ(Found("COM1"), "../run/COM1");
  names_.Choose("COM32");
  EXPECT_EQ(Found("COM1"), "ttyUSB1");
  Port("ttyS0", "pnp0", "4");
  EXPECT_EQ(Found("COM1"), "ttyS0");
}

TEST_F(PortNamesTest, OnlyWhatConcernsAPortWakesItsWatch) {
  fs::remove(root_ / "dev/serial/by-path");
  File("pts/1");
  Link("run/COM1", "../pts/1");
  PlaceWatch watch;
  // 0: it sleeps on, 1: it has been woken, 2: and a port has come or gone.
  const auto told = [&](const auto& act) {
    const PortPlaces places = names_.Places();
    watch.Watch(places.folders, places.paths, "");
    watch.TakeChange();
    act();
    pollfd waiting{watch.Handle(), POLLIN, 0};
    return poll(&waiting, 1, 0) + (watch.TakeChange() ? 1 : 0);
  };
  EXPECT_EQ(told([&] { File("pts/2"), File("other"); }), 0);
  EXPECT_EQ(told([&] { fs::remove(root_ / "pts/1"); }), 2);
  EXPECT_EQ(told([&] { File("pts/3"); }), 1);  // of the same folder
  EXPECT_EQ(told([&] { File("pts/1"); }), 2);
  EXPECT_EQ(told([&] { fs::create_directory(root_ / "dev/serial/by-path"); }), 2);
  EXPECT_EQ(told([&] { fs::remove_all(root_ / "run"); }), 2);
  EXPECT_EQ(told([&] { fs::create_directory(root_ / "run"); }), 2);
}

TEST(PortNames, NumbersOneToThirtyTwo) {
  EXPECT_EQ(PortNames::Number("COM32"), 32);
  for (const char* name : {"COM", "COM0", "COM33", "COM01", "COM1 ", "com1"}) EXPECT_EQ(PortNames::Number(name), 0);
}

}  // namespace
}  // namespace vk32
