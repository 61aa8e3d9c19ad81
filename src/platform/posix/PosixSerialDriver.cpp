// The serial driver on termios.
#include "platform/posix/PosixSerialDriver.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <poll.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "platform/posix/PortOpeners.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

// How long a line is left alone between two looks, at most: one that is held by XOFF, and one that sends, which may be
// faster than its rate where no chip stands behind an adapter.
constexpr Time HeldPause = 20ms, SendingPause = 50ms;

struct Rate {
  std::int32_t baud;
  speed_t code;
};

constexpr Rate Rates[] = {
    {300, B300},   {600, B600},     {1200, B1200},   {1800, B1800},   {2400, B2400},     {4800, B4800},
    {9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}, {230400, B230400},
};

constexpr tcflag_t SizeFlags[] = {CS5, CS6, CS7, CS8};
constexpr tcflag_t CharacterFlags = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB;

std::int32_t BaudRate(const termios& line) {
  for (const Rate& rate : Rates) {
    if (rate.code == cfgetospeed(&line)) return rate.baud;
  }
  return 0;
}

/// Raw 8N1 without flow control. A break is no byte, and a byte with a bad frame is taken as it came.
void MakeRaw(termios& line) {
  line.c_iflag = IGNBRK;
  line.c_oflag = 0;
  line.c_lflag = 0;
  line.c_cflag &= ~(CharacterFlags | CRTSCTS);
  line.c_cflag |= CS8 | CREAD | CLOCAL;
  line.c_cc[VMIN] = 1;  // with 0 an empty queue would read like a device that is gone
  line.c_cc[VTIME] = 0;
}

bool Encode(const DeviceControlBlock& dcb, termios& line) {
  const auto rate =
      std::find_if(std::begin(Rates), std::end(Rates), [&](const Rate& r) { return r.baud == dcb.BaudRate; });
  if (rate == std::end(Rates)) return false;
  if (dcb.ByteSize < 5 || dcb.ByteSize > 8 || dcb.StopBits < 1 || dcb.StopBits > 2) return false;
  cfsetspeed(&line, rate->code);
  line.c_cflag &= ~CharacterFlags;
  line.c_cflag |= SizeFlags[dcb.ByteSize - 5];
  if (dcb.StopBits == 2) line.c_cflag |= CSTOPB;
  switch (dcb.Parity) {
    case 'N': break;
    case 'O': line.c_cflag |= PARENB | PARODD; break;
    case 'E': line.c_cflag |= PARENB; break;
    default: return false;
  }
  line.c_iflag = dcb.fOutX ? line.c_iflag | IXON : line.c_iflag & ~static_cast<tcflag_t>(IXON);
  line.c_cc[VSTART] = dcb.XonChar;
  line.c_cc[VSTOP] = dcb.XoffChar;
  return true;
}

void Decode(const termios& line, DeviceControlBlock& dcb) {
  dcb.BaudRate = BaudRate(line);
  dcb.Parity = (line.c_cflag & PARENB) == 0 ? 'N' : (line.c_cflag & PARODD) != 0 ? 'O' : 'E';
  const auto size = std::find(std::begin(SizeFlags), std::end(SizeFlags), line.c_cflag & CSIZE);
  dcb.ByteSize = static_cast<std::uint8_t>(5 + (size - std::begin(SizeFlags)));
  dcb.StopBits = (line.c_cflag & CSTOPB) != 0 ? 2 : 1;
  dcb.fOutX = (line.c_iflag & IXON) != 0;
  dcb.XonChar = line.c_cc[VSTART];
  dcb.XoffChar = line.c_cc[VSTOP];
}

bool SameLine(const termios& a, const termios& b) {
  return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_lflag == b.c_lflag && a.c_cflag == b.c_cflag &&
         cfgetospeed(&a) == cfgetospeed(&b) && std::equal(std::begin(a.c_cc), std::end(a.c_cc), std::begin(b.c_cc));
}

/// 0 or the error. The kernel takes what it can of the settings and calls that a success, so the outcome is read back.
/// Settings that stand already are not sent again: an adapter may disturb the line over it.
int Apply(int fd, const termios& wanted) {
  termios now{};
  if (tcgetattr(fd, &now) != 0) return errno;
  if (SameLine(now, wanted)) return 0;
  if (tcsetattr(fd, TCSANOW, &wanted) != 0 || tcgetattr(fd, &now) != 0) return errno;
  return SameLine(now, wanted) ? 0 : EINVAL;
}

/// Makes a descriptor this program's own raw line; 0 or the error.
int Claim(int fd) {
  if (isatty(fd) == 0) return errno == EIO ? EIO : ENOTTY;
  if (flock(fd, LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK ? EBUSY : errno;
  // Most programs ask for no lock, and would take bytes away.
  struct stat device {};
  if (fstat(fd, &device) != 0) return errno;
  if (OtherOpener(device)) return EBUSY;
  termios line{};
  if (tcgetattr(fd, &line) != 0) return errno;
  MakeRaw(line);
  if (const int code = Apply(fd, line); code != 0) return code;
  // The kernel keeps a pseudo-terminal closed to others even after its program has died, until the other side ends as
  // well; a killed program would lock its user out.
  if (!IsPseudoTerminal(device)) ioctl(fd, TIOCEXCL);
  return 0;
}

bool HungUp(int fd) {
  pollfd descriptor{fd, 0, 0};
  return poll(&descriptor, 1, 0) == 1 && (descriptor.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

/// Bytes that have not left yet; a chip that is still busy with its own store counts as one. -1: error.
int Unsent(int fd) {
  int queued = 0;
  if (ioctl(fd, TIOCOUTQ, &queued) != 0) return -1;
  int chip = TIOCSER_TEMT;
  if (queued == 0) ioctl(fd, TIOCSERGETLSR, &chip);
  return (chip & TIOCSER_TEMT) != 0 ? queued : 1;
}

bool MeansGone(std::int32_t code) { return code == EIO || code == ENXIO || code == ENODEV; }

}  // namespace

PosixSerialDriver::PosixSerialDriver(EventLoop& loop, const PortNames& names) : SystemDriver(loop, names) {}

PosixSerialDriver::~PosixSerialDriver() {
  for (const auto& [handle, port] : ports_) CloseDevice(port);
}

SerialDriver::Handle PosixSerialDriver::Open(std::string_view name) {
  name = PortNameIn(name);
  const auto device = names_.Find(name);
  const int fd = device ? open(device->path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC) : -1;
  const int code = !device ? ENOENT : fd < 0 ? errno : Claim(fd);
  if (code != 0) {
    if (fd >= 0) close(fd);
    return FailOpen(code, name, device.value_or(PortDevice{}));
  }
  Port port;
  port.fd = fd;
  struct stat opened {};
  port.pseudo = fstat(fd, &opened) == 0 && IsPseudoTerminal(opened);
  port.rateless = device->path.find("/ttyGS") != std::string::npos;
  termios line{};
  if (tcgetattr(fd, &line) == 0) port.byteTime = ByteTime(BaudRate(line));
  port.counts = CountErrors(fd);
  ports_.emplace(++lastHandle_, port);
  return lastHandle_;
}

bool PosixSerialDriver::SetupQueues(Handle handle, std::uint32_t, std::uint32_t) {
  // The kernel's own queues hold 4 KiB and more.
  return Live(handle) != nullptr;
}

bool PosixSerialDriver::Purge(Handle handle, std::uint32_t flags) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  if ((flags & 1) != 0) port->outgoing.reset();
  // What was written to a pseudo-terminal has left: it waits at the other end, and is not this side's to take back.
  const bool output = (flags & 4) != 0 && !port->pseudo;
  const bool input = (flags & 8) != 0;
  if (!output && !input) return true;
  const int queue = output && input ? TCIOFLUSH : output ? TCOFLUSH : TCIFLUSH;
  return tcflush(port->fd, queue) == 0 || Fail(*port, errno);
}

bool PosixSerialDriver::SetTimeouts(Handle handle, const CommTimeouts& timeouts) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  port->timeouts = timeouts;
  return true;
}

bool PosixSerialDriver::GetState(Handle handle, DeviceControlBlock& dcb) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  termios line{};
  if (tcgetattr(port->fd, &line) != 0) return Fail(*port, errno);
  Decode(line, dcb);
  return true;
}

bool PosixSerialDriver::SetState(Handle handle, const DeviceControlBlock& dcb) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  termios line{};
  if (tcgetattr(port->fd, &line) != 0) return Fail(*port, errno);
  MakeRaw(line);
  const speed_t kept = cfgetospeed(&line);
  if (!Encode(dcb, line)) return Fail(EINVAL);
  if (port->rateless) cfsetspeed(&line, kept);
  if (const int code = Apply(port->fd, line); code != 0) return Fail(*port, code);
  port->byteTime = ByteTime(dcb.BaudRate);
  return true;
}

bool PosixSerialDriver::ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) {
  errors = 0;
  status = {};
  Port* port = Live(handle);
  if (port == nullptr) return false;
  int waiting = 0;
  if (ioctl(port->fd, FIONREAD, &waiting) != 0) return Fail(*port, errno);
  if (waiting == 0 && HungUp(port->fd)) return Fail(*port, EIO);
  status.cbInQue = waiting;
  if (port->pseudo) return true;
  const ErrorCounts counts = CountErrors(port->fd);
  for (std::size_t bit = 0; bit < counts.size(); ++bit) {
    if (counts[bit] != port->counts[bit]) errors |= 1u << bit;
  }
  port->counts = counts;
  return true;
}

bool PosixSerialDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  data.clear();
  Port* port = Live(handle);
  if (port == nullptr) return false;
  char chunk[4096];
  while (data.size() < count) {
    const ssize_t taken = read(port->fd, chunk, std::min(sizeof chunk, count - data.size()));
    if (taken > 0) {
      data.append(chunk, static_cast<std::size_t>(taken));
    } else if (taken < 0 && errno == EAGAIN) {
      return true;
    } else if (taken == 0 || errno != EINTR) {
      const int code = taken == 0 ? EIO : errno;
      return !data.empty() || Fail(*port, code);
    }
  }
  return true;
}

bool PosixSerialDriver::Write(Handle handle, std::string_view data, std::uint32_t& written) {
  written = 0;
  Port* port = Live(handle);
  if (port == nullptr) return false;
  const Time now = loop_.Now(), earliestEnd = now + port->byteTime * static_cast<std::int64_t>(data.size());
  const Time until = EndOfWrite(now, port->timeouts, data.size());
  port->outgoing = Outgoing{{}, 0, earliestEnd, until, INT_MAX, Time{0}};
  const bool done = Progress(*port, data, now, written, ErrorIoPending);
  if (port->outgoing) port->outgoing->data = data;
  return done;
}

bool PosixSerialDriver::PendingResult(Handle handle, std::uint32_t& count) {
  count = 0;
  Port* port = Live(handle);
  if (port == nullptr) return false;
  return port->outgoing ? Progress(*port, port->outgoing->data, loop_.Now(), count, ErrorIoIncomplete) : Fail(EINVAL);
}

bool PosixSerialDriver::Progress(Port& port, std::string_view data, Time now, std::uint32_t& written,
                                 std::int32_t pending) {
  Outgoing& outgoing = *port.outgoing;
  const std::int32_t code = Push(port, data);
  const int left = code != 0 ? 0 : port.pseudo ? 0 : Unsent(port.fd);
  written = outgoing.handed - std::min(outgoing.handed, static_cast<std::uint32_t>(std::max(left, 0)));
  if (code != 0 || left < 0) {
    const std::int32_t error = code != 0 ? code : errno;
    port.outgoing.reset();
    return Fail(port, error);
  }
  const bool late = now >= outgoing.until;
  if (!late && written < data.size()) {
    outgoing.patience = left < outgoing.left ? port.byteTime * left : std::min(outgoing.patience * 2, HeldPause);
    outgoing.patience = std::min(std::max(outgoing.patience, outgoing.earliestEnd - now), SendingPause);
    outgoing.left = left;
    return Fail(pending);
  }
  // What the caller is told has not left must not leave later.
  if (late && left > 0) tcflush(port.fd, TCOFLUSH);
  port.outgoing.reset();
  return true;
}

std::int32_t PosixSerialDriver::Push(Port& port, std::string_view data) {
  Outgoing& outgoing = *port.outgoing;
  const std::size_t left = data.size() - outgoing.handed;
  if (left == 0) return 0;
  ssize_t taken = 0;
  do {
    taken = write(port.fd, data.data() + outgoing.handed, left);
  } while (taken < 0 && errno == EINTR);
  if (taken > 0) {
    outgoing.handed += static_cast<std::uint32_t>(taken);
    return 0;
  }
  if (taken < 0 && errno != EAGAIN) return errno;
  return HungUp(port.fd) ? EIO : 0;
}

WaitFor PosixSerialDriver::PendingWait(Handle handle) const {
  const auto at = ports_.find(handle);
  if (at == ports_.end() || !at->second.outgoing) return {-1};
  const Outgoing& outgoing = *at->second.outgoing;
  if (outgoing.handed < outgoing.data.size()) return {at->second.fd, WaitFor::ToWrite, outgoing.until};
  return {-1, WaitFor::ToWrite, std::min(loop_.Now() + outgoing.patience, outgoing.until)};
}

bool PosixSerialDriver::Close(Handle handle) {
  const auto at = ports_.find(handle);
  if (at == ports_.end()) return Fail(EBADF);
  CloseDevice(at->second);
  ports_.erase(at);
  return true;
}

void PosixSerialDriver::CloseDevice(const Port& port) {
  int queued = 0;
  // The kernel would wait half a minute for bytes that a held line keeps.
  if (ioctl(port.fd, TIOCOUTQ, &queued) == 0 && queued > 0) tcflush(port.fd, TCOFLUSH);
  ioctl(port.fd, TIOCNXCL);
  flock(port.fd, LOCK_UN);
  close(port.fd);
}

int PosixSerialDriver::WaitHandle(Handle handle) const {
  const auto at = ports_.find(handle);
  return at == ports_.end() || at->second.gone ? -1 : at->second.fd;
}

PosixSerialDriver::ErrorCounts PosixSerialDriver::CountErrors(int fd) {
  serial_icounter_struct counted{};
  if (ioctl(fd, TIOCGICOUNT, &counted) != 0) return {};
  return {counted.buf_overrun, counted.overrun, counted.parity, counted.frame, counted.brk};
}

std::int32_t PosixSerialDriver::WrongSetting() const { return EINVAL; }

PortTrouble PosixSerialDriver::TroubleOf(std::int32_t code, bool opening) const {
  if (MeansGone(code)) return opening ? PortTrouble::NoHardware : PortTrouble::Gone;
  switch (code) {
    case ENOENT: return PortTrouble::Missing;
    case EACCES: return PortTrouble::Forbidden;
    case EBUSY: return PortTrouble::Busy;
    case ENOTTY: return PortTrouble::NoSerialPort;
    default: return PortTrouble::None;
  }
}

std::string PosixSerialDriver::AccessAdvice(const std::string& path) const {
  struct stat device {};
  if (stat(path.c_str(), &device) != 0) return Short(path) + " can't be reached";
  constexpr mode_t GroupMay = S_IRGRP | S_IWGRP;
  const group* owners = getgrgid(device.st_gid);
  if (owners == nullptr || (device.st_mode & GroupMay) != GroupMay) {
    const passwd* owner = getpwuid(device.st_uid);
    return Short(path) + " is open to " + (owner != nullptr ? owner->pw_name : "its owner") + " alone";
  }
  const passwd* user = getpwuid(geteuid());
  const std::string name = user != nullptr ? user->pw_name : "USER";
  const std::string belongs = Short(path) + " belongs to the group " + owners->gr_name;
  for (char** member = owners->gr_mem; *member != nullptr; ++member) {
    if (*member == name) return belongs + ": you have joined it since you logged in, so log out and in again";
  }
  return belongs + ": add yourself with \"sudo usermod -aG " + owners->gr_name + " " + name + "\" and log in again";
}

PosixSerialDriver::Port* PosixSerialDriver::Live(Handle handle) {
  const auto at = ports_.find(handle);
  if (at == ports_.end()) {
    Fail(EBADF);
    return nullptr;
  }
  if (at->second.gone) {
    Fail(EIO);
    return nullptr;
  }
  return &at->second;
}

bool PosixSerialDriver::Fail(Port& port, std::int32_t code) {
  port.gone = port.gone || MeansGone(code);
  return Fail(port.gone ? EIO : code);
}

std::unique_ptr<SerialDriver> SystemSerialDriver(EventLoop& loop, const PortNames& names) {
  return std::make_unique<PosixSerialDriver>(loop, names);
}

}  // namespace vk32
