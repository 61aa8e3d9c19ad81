// The serial driver on a real pseudo-terminal.
#include "platform/PosixSerialDriver.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/serial.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/InAChild.h"
#include "platform/PosixEventLoop.h"
#include "support/Harness.h"

namespace {

/// What a real port's driver would tell, while `real`: a pseudo-terminal tells nothing of it.
struct RealLine {
  bool real = false;
  std::vector<int> unsent;   // what waits in the queue, from one look to the next; the last one stays
  std::vector<int> chip{1};  // 0: the chip still sends
  serial_icounter_struct counts{};
} line;

int Next(std::vector<int>& values) {
  const int value = values.front();
  if (values.size() > 1) values.erase(values.begin());
  return value;
}

}  // namespace

extern "C" int fstat(int fd, struct stat* found) noexcept {
  const int result = fstatat(fd, "", found, AT_EMPTY_PATH);
  if (line.real && S_ISCHR(found->st_mode)) found->st_rdev = makedev(4, 255);
  return result;
}
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  if (line.real && request == TIOCOUTQ) return *static_cast<int*>(argument) = Next(line.unsent), 0;
  if (line.real && request == TIOCSERGETLSR) return *static_cast<int*>(argument) = Next(line.chip), 0;
  if (line.real && request == TIOCGICOUNT) return *static_cast<serial_icounter_struct*>(argument) = line.counts, 0;
  return static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
}

namespace vk32 {
namespace {

constexpr std::string_view Com12 = R"(\\.\COM12)";
constexpr char Xon = 17;
constexpr char Xoff = 19;

/// The loop of the programs without a window; it counts the sleeps and acts before them.
class CountingLoop : public PosixEventLoop {
 public:
  void Wait(const WaitFor& what) override {
    if (what.ready == WaitFor::ToWrite) {
      ++sleeps;
      if (beforeSleep) beforeSleep();
    }
    PosixEventLoop::Wait(what);
  }

  int sleeps = 0;
  std::function<void()> beforeSleep;
};

/// A driver, and the device's side of a pseudo-terminal that stands behind COM12.
class PosixSerialDriverTest : public testing::Test {
 protected:
  PosixSerialDriverTest() {
    std::filesystem::create_directory(folder_.Path());
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
    std::filesystem::create_symlink("/dev/null", folder_.Path() + "/COM9");
    Plug();
  }
  ~PosixSerialDriverTest() override {
    line = {};
    Unplug();
  }

  void Plug() {
    Unplug();
    device_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_EQ(grantpt(device_), 0);
    ASSERT_EQ(unlockpt(device_), 0);
    path_ = ptsname(device_);
    names_.Assign("COM12", path_);
  }

  void Unplug() {
    if (device_ >= 0) close(std::exchange(device_, -1));
  }

  /// Opened as a port is for an exchange.
  SerialDriver::Handle Opened(bool fOutX = false) {
    const auto handle = driver_.Open(Com12);
    EXPECT_GT(handle, 0) << driver_.ErrorText(driver_.LastError());
    EXPECT_TRUE(driver_.SetupQueues(handle, 1024, 1024));
    EXPECT_TRUE(driver_.Purge(handle, 15));
    SetLine(handle, fOutX);
    return handle;
  }

  void SetLine(SerialDriver::Handle handle, bool fOutX) {
    DeviceControlBlock dcb;
    EXPECT_TRUE(driver_.GetState(handle, dcb));
    EXPECT_TRUE(driver_.BuildState("baud=19200 parity=N data=8 stop=1", dcb));
    dcb.fOutX = fOutX;
    EXPECT_TRUE(driver_.SetState(handle, dcb));
  }

  void FromDevice(std::string_view bytes) {
    EXPECT_EQ(write(device_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  /// Bytes that the device has received, once as many as `count` are there.
  Bytes AtDevice(std::size_t count) {
    Bytes all;
    char chunk[4096];
    while (all.size() < count) {
      const ssize_t taken = read(device_, chunk, std::min(sizeof chunk, count - all.size()));
      if (taken <= 0) break;
      all.append(chunk, static_cast<std::size_t>(taken));
    }
    return all;
  }

  /// Sends bytes and waits until they wait at the port.
  void Arrive(SerialDriver::Handle handle, std::string_view bytes) {
    FromDevice(bytes);
    while (Waiting(handle) < static_cast<int>(bytes.size()) && !HasFailure()) loop_.Wait(driver_.WaitHandle(handle));
  }

  /// Until the bytes have left or can't.
  bool Write(SerialDriver::Handle handle, std::string_view bytes, std::uint32_t& written) {
    bool done = driver_.Write(handle, bytes, written);
    while (!done && driver_.LastError() >= SerialDriver::ErrorIoIncomplete) {
      loop_.Wait(driver_.PendingWait(handle));
      done = driver_.PendingResult(handle, written);
    }
    return done;
  }

  /// Sends XOFF and waits until the line stands still.
  void Hold(SerialDriver::Handle handle) {
    FromDevice({&Xoff, 1});
    pollfd line{driver_.WaitHandle(handle), POLLOUT, 0};
    while (poll(&line, 1, 0) == 1 && (line.revents & POLLHUP) == 0) std::this_thread::yield();
  }

  int Waiting(SerialDriver::Handle handle) {
    std::uint32_t errors = 0;
    CommStatus status;
    EXPECT_TRUE(driver_.ClearError(handle, errors, status));
    EXPECT_EQ(errors, 0u);
    return status.cbInQue;
  }

  int device_ = -1;
  std::string path_;
  CountingLoop loop_;
  const TemporaryFile folder_{"run"};
  PortNames names_{folder_.Path(), "/nowhere", "/nowhere"};
  PosixSerialDriver driver_{loop_, names_};
};

TEST_F(PosixSerialDriverTest, BytesPassUnchangedBothWays) {
  Bytes all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const auto handle = Opened();
  std::uint32_t written = 0;
  EXPECT_TRUE(Write(handle, all, written));
  EXPECT_EQ(written, 256u);
  EXPECT_EQ(AtDevice(256), all);

  Bytes data = "old";
  EXPECT_TRUE(driver_.Read(handle, 10, data));
  EXPECT_EQ(data, "");
  EXPECT_EQ(Waiting(handle), 0);
  Arrive(handle, all);
  EXPECT_EQ(Waiting(handle), 256);
  EXPECT_TRUE(driver_.Read(handle, 1, data));
  EXPECT_EQ(data, all.substr(0, 1));
  EXPECT_EQ(Waiting(handle), 255);
  EXPECT_TRUE(driver_.Read(handle, 4'000'000'000, data));
  EXPECT_EQ(data, all.substr(1));

  Arrive(handle, "late");
  EXPECT_TRUE(driver_.Purge(handle, 15));
  EXPECT_EQ(Waiting(handle), 0);
}

TEST_F(PosixSerialDriverTest, MissingPort) {
  const auto fails = [&](const std::string& path, int code) {
    names_.Assign("COM31", path);
    EXPECT_EQ(driver_.Open(R"(\\.\COM31)"), SerialDriver::InvalidHandle);
    EXPECT_EQ(driver_.LastError(), code);
    return driver_.ErrorText(code);
  };
  for (const char* name : {R"(\\.\COM30)", R"(\\.\COM33)", "", R"(\\.\COM9)"}) {
    EXPECT_EQ(driver_.Open(name), SerialDriver::InvalidHandle) << name;
    EXPECT_EQ(driver_.LastError(), ENOENT) << name;
  }
  EXPECT_NE(driver_.ErrorText(ENOENT).find("COM9: " + folder_.Path() + " can be written to by others"),
            std::string::npos);
  EXPECT_EQ(fails(path_ + "0", ENOENT), "No such file or directory: no serial device stands behind COM31: " + path_ +
                                            "0 is missing; plug it in, or choose the port again");
  EXPECT_EQ(fails("/dev/null", ENOTTY), "Inappropriate ioctl for device: /dev/null is no serial port");
  EXPECT_EQ(fails("/dev/" + std::string(300, 'x'), ENAMETOOLONG), "File name too long");
  EXPECT_LT(fails("/" + std::string(200, 'x'), ENOENT).size(), 250u);
  EXPECT_EQ(driver_.ErrorText(4711), "Unknown error 4711");
}

TEST_F(PosixSerialDriverTest, BusyPortNamesItsHolder) {
  const auto handle = Opened();
  PosixSerialDriver other(loop_, names_);
  EXPECT_EQ(other.Open(Com12), SerialDriver::InvalidHandle);
  EXPECT_EQ(other.LastError(), EBUSY);
  EXPECT_NE(other.ErrorText(EBUSY).find(" (process " + std::to_string(getpid()) + ")"), std::string::npos);
  EXPECT_EQ(other.ErrorText(EACCES), "Permission denied");
  EXPECT_TRUE(driver_.Close(handle));
  EXPECT_GT(other.Open(Com12), 0);
}

TEST_F(PosixSerialDriverTest, ForbiddenPortNamesTheGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can become a user who may not open the port";
  const auto open = [&] { return driver_.Open(Com12) > 0 ? 0 : driver_.LastError(); };
  ASSERT_EQ(chown(path_.c_str(), 0, 1), 0);
  const auto told = [&](mode_t mode, const std::string& text) {
    chmod(path_.c_str(), mode);
    return AsNobody(
        [&] { return open() == EACCES && driver_.ErrorText(EACCES) == "Permission denied: " + path_ + text ? 0 : 1; });
  };
  EXPECT_EQ(told(0600, " is open to root alone"), 0);
  EXPECT_EQ(told(0620, " is open to root alone"), 0);
  EXPECT_EQ(told(0660,
                 " belongs to the group daemon: add yourself with \"sudo usermod -aG daemon nobody\" and log in"
                 " again"),
            0);
  ASSERT_EQ(chmod(path_.c_str(), 0666), 0);
  for (int killed = 0; killed < 2; ++killed) EXPECT_EQ(AsNobody(open), 0);  // and leaves the port free
}

TEST_F(PosixSerialDriverTest, GoneDeviceIsAnErrorAndNotASpin) {
  std::uint32_t number = 0;
  CommStatus status;
  DeviceControlBlock dcb;
  Bytes data;
  const std::function<bool(SerialDriver::Handle)> verbs[] = {
      [&](auto handle) { return driver_.ClearError(handle, number, status); },
      [&](auto handle) { return driver_.Read(handle, 10, data); },
      [&](auto handle) { return Write(handle, "hello", number); },
      [&](auto handle) { return driver_.Purge(handle, 15); },
      [&](auto handle) { return driver_.GetState(handle, dcb); },
  };
  for (const auto& first : verbs) {
    Plug();
    const auto handle = Opened();
    Arrive(handle, "lost");
    Unplug();
    EXPECT_EQ(driver_.WaitHandle(handle), -1);
    EXPECT_FALSE(first(handle)) << &first - verbs;
    for (const auto& verb : verbs) {
      EXPECT_FALSE(verb(handle)) << &verb - verbs << " after " << &first - verbs;
      EXPECT_EQ(driver_.LastError(), EIO);
    }
    EXPECT_EQ(driver_.ErrorText(EIO), "Input/output error: the serial device is gone: plug it in again");
    EXPECT_TRUE(driver_.Close(handle));
    EXPECT_EQ(driver_.Open(Com12), SerialDriver::InvalidHandle);
    EXPECT_EQ(driver_.LastError(), ENOENT);
  }
  EXPECT_EQ(loop_.sleeps, 0);
}

TEST_F(PosixSerialDriverTest, DeviceGoneWhileItHoldsAWrite) {
  const auto handle = Opened(true);
  EXPECT_TRUE(driver_.SetTimeouts(handle, {0, 0, 0, 1000, 0}));
  Hold(handle);
  loop_.beforeSleep = [&] { Unplug(); };
  std::uint32_t written = 1;
  EXPECT_FALSE(Write(handle, "hello", written));
  EXPECT_EQ(driver_.LastError(), EIO);
  EXPECT_EQ(written, 0u);
  EXPECT_EQ(loop_.sleeps, 1);
}

TEST_F(PosixSerialDriverTest, XoffHoldsAWriteUntilXon) {
  auto handle = Opened(true);
  Hold(handle);
  loop_.beforeSleep = [&] { FromDevice({&Xon, 1}); };
  std::uint32_t written = 0;
  EXPECT_TRUE(Write(handle, "hello", written));
  EXPECT_EQ(written, 5u);
  EXPECT_EQ(AtDevice(5), "hello");
  EXPECT_LT(loop_.sleeps, 5);
  EXPECT_EQ(Waiting(handle), 0);  // both bytes are no data

  loop_.sleeps = 0;
  for (const bool reopened : {false, true}) {
    Hold(handle);
    if (reopened) {
      EXPECT_TRUE(driver_.Close(handle));
      handle = Opened();
    }
    SetLine(handle, false);
    EXPECT_TRUE(Write(handle, "free", written));
    EXPECT_EQ(AtDevice(4), "free");
    EXPECT_EQ(loop_.sleeps, 0);
    if (!reopened) SetLine(handle, true);
  }
  Arrive(handle, Bytes{Xoff, Xon});
  Bytes data;
  EXPECT_TRUE(driver_.Read(handle, 10, data));
  EXPECT_EQ(data, (Bytes{Xoff, Xon}));
}

TEST_F(PosixSerialDriverTest, WriteTimeoutGivesTheShortCount) {
  const auto handle = Opened(true);
  const Bytes large(65536, 'x');
  std::uint32_t written = 0;
  EXPECT_TRUE(driver_.SetTimeouts(handle, {0, 0, 0, 0, 20}));
  EXPECT_TRUE(Write(handle, large, written));
  EXPECT_GT(written, 0u);
  EXPECT_LT(written, large.size());
  EXPECT_EQ(AtDevice(written), large.substr(0, written));

  Hold(handle);
  EXPECT_TRUE(driver_.SetTimeouts(handle, {0, 0, 0, 2, 0}));
  EXPECT_TRUE(Write(handle, "hello", written));
  EXPECT_EQ(written, 0u);
  EXPECT_LT(loop_.sleeps, 10);
}

TEST_F(PosixSerialDriverTest, RealPortTellsWhatHasLeftAndWhatWentWrong) {
  line.real = true;
  line.unsent = {0};
  const auto handle = Opened();
  line.unsent = {5, 3, 0};
  line.chip = {0, 1};
  std::uint32_t written = 0, errors = 0;
  EXPECT_TRUE(Write(handle, "hello", written));
  EXPECT_EQ(written, 5u);
  EXPECT_EQ(line.unsent.size() + line.chip.size(), 2u);  // all that was still on its way was waited for
  line.unsent = {3};                                     // held
  EXPECT_TRUE(driver_.SetTimeouts(handle, {0, 0, 0, 0, 20}));
  EXPECT_TRUE(Write(handle, "hello", written));
  EXPECT_EQ(written, 2u);

  CommStatus status;
  line.counts.frame = line.counts.overrun = line.counts.brk = 4;
  for (const std::uint32_t expected : {2u | 8u | 16u, 0u}) {
    EXPECT_TRUE(driver_.ClearError(handle, errors, status));
    EXPECT_EQ(errors, expected);
  }
}

TEST_F(PosixSerialDriverTest, StateIsTakenStrictly) {
  const auto handle = Opened();
  for (const std::int32_t baud : {300, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400}) {
    DeviceControlBlock got;
    EXPECT_TRUE(driver_.SetState(handle, {baud, 'N', 8, 1, baud > 9600, Xon, Xoff})) << baud;
    EXPECT_TRUE(driver_.GetState(handle, got));
    EXPECT_TRUE(got.BaudRate == baud && got.fOutX == (baud > 9600) && got.ByteSize == 8) << baud;
  }
  // No pseudo-terminal has parity or seven bits, so these are wrong here as well.
  for (const DeviceControlBlock& wrong :
       {DeviceControlBlock{9601, 'N', 8, 1}, DeviceControlBlock{0, 'N', 8, 1}, DeviceControlBlock{9600, 'M', 8, 1},
        DeviceControlBlock{9600, 'E', 8, 1}, DeviceControlBlock{9600, 'N', 7, 1}, DeviceControlBlock{9600, 'N', 4, 1},
        DeviceControlBlock{9600, 'N', 8, 3}}) {
    EXPECT_FALSE(driver_.SetState(handle, wrong)) << wrong.BaudRate << wrong.Parity << wrong.ByteSize;
    EXPECT_EQ(driver_.LastError(), EINVAL);
  }
  DeviceControlBlock dcb;
  EXPECT_FALSE(driver_.BuildState("baud=9600", dcb));
  EXPECT_EQ(driver_.LastError(), EINVAL);
}

TEST_F(PosixSerialDriverTest, UnknownHandlesTouchNothing) {
  std::uint32_t number = 0;
  for (const SerialDriver::Handle handle : {0, -1, 1}) {
    EXPECT_FALSE(driver_.Close(handle));
    EXPECT_FALSE(driver_.Purge(handle, 15));
    EXPECT_FALSE(Write(handle, "x", number));
    EXPECT_EQ(driver_.LastError(), EBADF);
    EXPECT_EQ(driver_.WaitHandle(handle), -1);
  }
}

TEST(ParseSettings, TakesTheFourSettingsAndNothingElse) {
  const std::string good = "baud=19200 parity=N data=8 stop=1";
  DeviceControlBlock dcb{4800, 'O', 6, 2, true, 1, 2};
  for (const std::string row :
       {" stop=1|", " stop=1| stop=1 stop=1", " stop=1| stop=1 to=on", " stop=1| stop=1 ", "stop=1|stop=1.5",
        "stop=1|stop=0", " parity|  parity", " parity|,parity", "baud| baud", "baud|BAUD", "19200|", "19200|0",
        "19200|-1", "19200|+1", "19200|9600.0", "19200|99999999999", "N|n", "N|M", "data=8|data=9"}) {
    const std::string part = row.substr(0, row.find('|'));
    const std::string settings = std::string(good).replace(good.find(part), part.size(), row.substr(part.size() + 1));
    EXPECT_FALSE(ParseSettings(settings, dcb)) << settings;
    EXPECT_EQ(dcb.BaudRate, 4800) << settings;
  }
  EXPECT_FALSE(ParseSettings("", dcb));
  EXPECT_TRUE(ParseSettings(good, dcb));
  EXPECT_TRUE(dcb.BaudRate == 19200 && dcb.Parity == 'N' && dcb.ByteSize == 8 && dcb.StopBits == 1);
  EXPECT_TRUE(ParseSettings("stop=2 data=7 parity=E baud=300", dcb));
  EXPECT_TRUE(dcb.BaudRate == 300 && dcb.Parity == 'E' && dcb.ByteSize == 7 && dcb.StopBits == 2);
  EXPECT_TRUE(dcb.fOutX && dcb.XonChar == 1);
}

}  // namespace
}  // namespace vk32
