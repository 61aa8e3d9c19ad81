// The serial driver on a real pseudo-terminal.
#include "platform/posix/PosixSerialDriver.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>

#include <cstdarg>
#include <functional>

#include "platform/SystemEventLoop.h"

/// What a real port's driver would tell, while `real`: a pseudo-terminal tells nothing of it.
static struct RealLine {
  bool real = false;
  // From one look to the next, the last one stays: what waits in the queue; behind a 0, whether the chip has sent all.
  // -1: the port has gone.
  std::vector<int> unsent{0, 1};
  serial_icounter_struct counts{};
} line;

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
  if (line.real && (request == TIOCOUTQ || request == TIOCSERGETLSR)) {
    *static_cast<int*>(argument) = line.unsent.front();
    if (line.unsent.size() > 1) line.unsent.erase(line.unsent.begin());
    return *static_cast<int*>(argument) < 0 ? errno = ENODEV, -1 : 0;
  }
  if (line.real && request == TIOCGICOUNT) return *static_cast<serial_icounter_struct*>(argument) = line.counts, 0;
  return static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
}

namespace vk32 {
namespace {

constexpr std::string_view Com12 = R"(\\.\COM12)", Good = "baud=19200 parity=N data=8 stop=1";
constexpr char Xon = 17, Xoff = 19;

/// Counts the sleeps of a write and acts before them.
struct CountingLoop : SystemEventLoop {
  void Wait(const WaitFor& what) override {
    if (what.ready == WaitFor::ToWrite) ++sleeps, beforeSleep();
    SystemEventLoop::Wait(what);
  }
  int sleeps = 0;
  std::function<void()> beforeSleep = [] {};
};

/// A driver, and the device's side of a pseudo-terminal that stands behind COM12.
class PosixSerialDriverTest : public testing::Test {
 protected:
  PosixSerialDriverTest() { Plug(); }
  ~PosixSerialDriverTest() override {
    line = {};
    Unplug();
  }

  void Plug() {
    device_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_EQ(grantpt(device_) + unlockpt(device_), 0);
    names_.Assign("COM12", path_ = ptsname(device_));
  }
  void Unplug() {
    if (device_ >= 0) close(std::exchange(device_, -1));
  }

  /// 0, or the error.
  int Open(std::string_view name = Com12) {
    handle_ = driver_.Open(name);
    return handle_ > 0 ? 0 : driver_.LastError();
  }
  /// Opens the port as for an exchange.
  void OpenLine(bool fOutX = false) {
    EXPECT_EQ(Open(), 0) << driver_.ErrorText(driver_.LastError());
    EXPECT_TRUE(driver_.SetState(handle_, {19200, 'N', 8, 1, fOutX, Xon, Xoff}));
  }

  void FromDevice(std::string_view bytes) {
    EXPECT_EQ(write(device_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// Sends bytes and waits until they wait at the port.
  void Arrive(std::string_view bytes) {
    FromDevice(bytes);
    while (Waiting() < static_cast<int>(bytes.size()) && !HasFailure()) loop_.Wait(driver_.WaitHandle(handle_));
  }
  /// Sends XOFF and waits until the line stands still.
  void Hold() {
    FromDevice({&Xoff, 1});
    pollfd line{driver_.WaitHandle(handle_), POLLOUT, 0};
    while (poll(&line, 1, 0) == 1 && (line.revents & POLLHUP) == 0) continue;
  }
  /// Bytes that the device has received, once as many as `count` are there.
  Bytes AtDevice(int count) {
    Bytes all(static_cast<std::size_t>(count), 0);
    for (char& byte : all) EXPECT_EQ(read(device_, &byte, 1), 1);
    return all;
  }

  /// How many bytes have left, once they have or can't; -1: error.
  int Write(std::string_view bytes) {
    std::uint32_t written = 0;
    bool done = driver_.Write(handle_, bytes, written);
    while (!done && driver_.LastError() >= SerialDriver::ErrorIoIncomplete) {
      loop_.Wait(driver_.PendingWait(handle_));
      done = driver_.PendingResult(handle_, written);
    }
    return done ? static_cast<int>(written) : -1;
  }
  Bytes Read(std::uint32_t count) {
    Bytes data = "old";
    return driver_.Read(handle_, count, data) ? data : "refused";
  }
  int Waiting() {
    EXPECT_TRUE(driver_.ClearError(handle_, errors_, status_) && errors_ == 0);
    return status_.cbInQue;
  }

  int device_ = -1;
  std::uint32_t errors_ = 0;
  CommStatus status_;
  DeviceControlBlock dcb_;
  SerialDriver::Handle handle_ = 0;
  std::string path_;
  CountingLoop loop_;
  PortNames names_{"/tmp", "/nowhere", "/nowhere"};
  PosixSerialDriver driver_{loop_, names_};
};

TEST_F(PosixSerialDriverTest, MissingPort) {
  const std::string behind = "No such file or directory: no serial device stands behind ", x(200, 'x');
  names_.Assign("COM12", "/" + x);
  EXPECT_EQ(Open(), ENOENT);
  EXPECT_EQ(driver_.ErrorText(ENOENT),
            behind + "COM12: ..." + x.substr(0, 61) + " is missing; plug it in, or choose the port again");
  EXPECT_EQ(Open(""), ENOENT);
  EXPECT_TRUE(driver_.ErrorText(ENOENT).starts_with(behind + ": /tmp "));  // a folder that is passed over
  names_.Assign("COM12", "/dev/null");
  EXPECT_EQ(Open(), ENOTTY);
  EXPECT_EQ(driver_.ErrorText(ENOTTY), "Inappropriate ioctl for device: /dev/null is no serial port");
  EXPECT_EQ(driver_.ErrorText(ENOENT) + driver_.ErrorText(4711), "No such file or directoryUnknown error 4711");
}

TEST_F(PosixSerialDriverTest, BusyPortNamesItsHolder) {
  const auto isHeldBy = [&](pid_t holder) {
    EXPECT_EQ(Open(), EBUSY);
    const std::string told = driver_.ErrorText(EBUSY), process = " (process " + std::to_string(holder) + "): end it";
    EXPECT_NE(told.find(process), std::string::npos) << told;
  };
  PosixSerialDriver other(loop_, names_);
  const auto held = other.Open(Com12);
  isHeldBy(getpid());
  EXPECT_TRUE(other.Close(held));
  const pid_t opener = fork();  // asks for no lock
  if (opener == 0) {
    close(device_);  // who has that is the device
    open(path_.c_str(), O_RDWR | O_NOCTTY);
    raise(SIGSTOP);
  }
  waitpid(opener, nullptr, WUNTRACED);
  isHeldBy(opener);
  kill(opener, SIGKILL);
  waitpid(opener, nullptr, 0);
  EXPECT_EQ(Open(), 0);
}

TEST_F(PosixSerialDriverTest, ForbiddenPortNamesTheGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can become a user who may not open the port";
  ASSERT_EQ(chown(path_.c_str(), 0, 1), 0);
  const std::pair<mode_t, std::string> rows[] = {
      {0660, " belongs to the group daemon: add yourself with \"sudo usermod -aG daemon nobody\" and log"},
      {0600, " is open to root alone"}};
  for (const auto& [mode, words] : rows) {
    ASSERT_EQ(chmod(path_.c_str(), mode), 0);
    const std::string told = "Permission denied: " + path_ + words;
    const auto isTold = [&] { return driver_.ErrorText(EACCES).starts_with(told); };
    EXPECT_EXIT(_exit(setuid(65534) == 0 && Open() == EACCES && isTold()), testing::ExitedWithCode(1), "");
  }
  chmod(path_.c_str(), 0666);
  for (int killed = 0; killed < 2; ++killed) {  // and leaves it free
    EXPECT_EXIT(_exit(setuid(65534) == 0 ? Open() : 255), testing::ExitedWithCode(0), "");
  }
}

TEST_F(PosixSerialDriverTest, GoneDeviceIsAnErrorAndNotASpin) {
  Bytes data;
  const std::function<bool()> verbs[] = {
      [&] { return driver_.ClearError(handle_, errors_, status_); }, [&] { return driver_.Read(handle_, 10, data); },
      [&] { return Write("hello") >= 0; }, [&] { return driver_.Purge(handle_, 15); },
      [&] { return driver_.GetState(handle_, dcb_); }};
  for (const auto& verb : verbs) {
    Plug(), OpenLine(), Arrive("lost"), Unplug();
    for (int time = 1; time <= 2; ++time) EXPECT_EQ(verb() ? 0 : driver_.LastError(), EIO) << &verb - verbs << time;
    EXPECT_EQ(driver_.WaitHandle(handle_), -1);
    EXPECT_EQ(driver_.ErrorText(EIO), "Input/output error: the serial device is gone: plug it in again");
    EXPECT_TRUE(driver_.Close(handle_) && !driver_.Close(handle_));
    EXPECT_EQ(verb() ? 0 : driver_.LastError(), EBADF) << &verb - verbs;
  }
  EXPECT_EQ(loop_.sleeps, 0);
}

TEST_F(PosixSerialDriverTest, BytesPassUnchangedWithoutFlowControl) {
  Bytes all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  OpenLine(true), Hold();
  EXPECT_TRUE(driver_.Close(handle_));
  OpenLine();
  EXPECT_EQ(Write(all), 256);
  EXPECT_EQ(AtDevice(256), all);
  EXPECT_EQ(loop_.sleeps, 0);
  EXPECT_EQ(Read(10), "");
  Arrive(all);
  EXPECT_EQ(Read(1), all.substr(0, 1));
  EXPECT_EQ(Waiting(), 255);
  EXPECT_EQ(Read(4'000'000'000), all.substr(1));
  Arrive("late");
  EXPECT_TRUE(driver_.Purge(handle_, 15));
  EXPECT_EQ(Waiting(), 0);
}

TEST_F(PosixSerialDriverTest, XoffHoldsAWriteUntilXonItsTimeOutOrItsEnd) {
  OpenLine(true), Hold();
  loop_.beforeSleep = [&] { FromDevice({&Xon, 1}); };
  EXPECT_EQ(Write("hello"), 5);
  EXPECT_EQ(AtDevice(5), "hello");
  EXPECT_LT(loop_.sleeps, 5);
  EXPECT_EQ(Waiting(), 0);  // both bytes are no data
  EXPECT_TRUE(driver_.SetTimeouts(handle_, {0, 0, 0, 0, 20}));
  Bytes large;
  while (large.size() < 65536) large += std::to_string(large.size());
  const int written = Write(large);
  EXPECT_TRUE(written > 0 && written < 65536) << written;
  EXPECT_EQ(AtDevice(written), large.substr(0, static_cast<std::size_t>(written)));
  loop_.sleeps = 0;
  loop_.beforeSleep = [] {};
  Hold();
  EXPECT_TRUE(driver_.SetTimeouts(handle_, {0, 0, 0, 2, 0}));
  EXPECT_EQ(Write("hello"), 0);
  EXPECT_LT(loop_.sleeps, 10);
  loop_.beforeSleep = [&] { Unplug(); };
  EXPECT_TRUE(Write("hello") == -1 && driver_.LastError() == EIO);
}

TEST_F(PosixSerialDriverTest, RealPortTellsWhatHasLeftAndWhatWentWrong) {
  line.real = true;
  OpenLine();
  line.unsent = {5, 3, 0, 0, 0, 1};
  EXPECT_EQ(Write("hello"), 5);
  EXPECT_EQ(line.unsent.size(), 1u);  // all that was still on its way was waited for
  line.unsent = {3};                  // held
  EXPECT_TRUE(driver_.SetTimeouts(handle_, {0, 0, 0, 0, 20}));
  EXPECT_EQ(Write("hello"), 2);
  line.counts.frame = line.counts.overrun = line.counts.brk = 4;
  for (const std::uint32_t expected : {2u | 8u | 16u, 0u}) {
    EXPECT_TRUE(driver_.ClearError(handle_, errors_, status_) && errors_ == expected) << errors_;
  }
  line.unsent = {-1};
  EXPECT_TRUE(Write("hello") == -1 && driver_.LastError() == EIO);
}

TEST_F(PosixSerialDriverTest, StateIsTakenStrictly) {
  OpenLine();
  for (const std::int32_t baud : {300, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400}) {
    EXPECT_TRUE(driver_.SetState(handle_, {baud, 'N', 8, 1, baud > 9600, Xon, Xoff})) << baud;
    EXPECT_TRUE(driver_.GetState(handle_, dcb_) && dcb_.BaudRate == baud && dcb_.fOutX == (baud > 9600)) << baud;
    EXPECT_EQ(dcb_.ByteSize * 10000 + dcb_.XonChar * 100 + dcb_.XoffChar, 81719);
  }
  // No pseudo-terminal has parity or seven bits, so these are wrong here as well.
  const auto refuse = [&](const DeviceControlBlock& wrong) {
    EXPECT_TRUE(!driver_.SetState(handle_, wrong) && driver_.LastError() == EINVAL) << wrong.BaudRate << wrong.Parity;
  };
  refuse({9601, 'N', 8, 1}), refuse({9600, 'M', 8, 1}), refuse({9600, 'E', 8, 1}), refuse({9600, 'O', 8, 1});
  refuse({9600, 'N', 7, 1}), refuse({9600, 'N', 4, 1}), refuse({9600, 'N', 9, 1});
  refuse({9600, 'N', 8, 3}), refuse({9600, 'N', 8, 0});
  EXPECT_TRUE(driver_.BuildState(Good, dcb_) && !driver_.BuildState("baud=9600", dcb_));
}

TEST(ParseSettings, TakesTheFourSettingsAndNothingElse) {
  DeviceControlBlock dcb{4800, 'O', 6, 2, true, 1, 2};
  for (const std::string row :
       {" stop=1|", "stop=1|stop=1 stop=1", "stop=1|stop=1 to=on", "stop=1|stop=1.5", " parity|,parity", "baud|BAUD",
        "19200|", "19200|0", "19200|+1", "19200|99999999999", " data|  data", "N|n", "N|M", "data=8|data=9"}) {
    const std::string part = row.substr(0, row.find('|'));
    const std::string settings = std::string(Good).replace(Good.find(part), part.size(), row.substr(part.size() + 1));
    EXPECT_TRUE(!ParseSettings(settings, dcb) && dcb.BaudRate == 4800) << settings;
  }
  EXPECT_TRUE(ParseSettings("stop=2 data=7 parity=E baud=300", dcb));
  EXPECT_TRUE(dcb.BaudRate == 300 && dcb.Parity == 'E' && dcb.ByteSize == 7 && dcb.StopBits == 2 && dcb.fOutX);
}

}  // namespace
}  // namespace vk32
