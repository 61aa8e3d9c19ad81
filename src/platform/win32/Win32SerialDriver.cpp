// The serial driver on the communications resources of Windows.
#include "platform/win32/Win32SerialDriver.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr DWORD Patience = 1000;        // ms, for the system to let go of what was taken back
constexpr DWORD LongRead = 0x7FFFFFFF;  // ms; then it begins anew
constexpr Time ShortPause = 1ms, LongPause = 50ms;
constexpr std::uint32_t LeastQueue = 4096;  // bytes
constexpr std::size_t MostInput = 1 << 16;  // bytes that are taken from a device which nobody reads
constexpr DWORD LineErrors = CE_RXOVER | CE_OVERRUN | CE_RXPARITY | CE_FRAME | CE_BREAK;

/// Raw, without flow control but for XOFF from the device; both control lines say that the program is there.
bool Encode(const DeviceControlBlock& dcb, DCB& line) {
  if (dcb.ByteSize < 5 || dcb.ByteSize > 8 || dcb.StopBits < 1 || dcb.StopBits > 2 || dcb.BaudRate <= 0) return false;
  constexpr std::string_view Parities = "NOE";  // in the order of the system's numbers
  const std::size_t parity = Parities.find(dcb.Parity);
  if (parity == std::string_view::npos) return false;
  line.BaudRate = static_cast<DWORD>(dcb.BaudRate);
  line.fBinary = TRUE;
  line.fParity = parity != 0 ? TRUE : FALSE;
  line.fOutxCtsFlow = line.fOutxDsrFlow = line.fDsrSensitivity = FALSE;
  line.fDtrControl = DTR_CONTROL_ENABLE;
  line.fRtsControl = RTS_CONTROL_ENABLE;
  line.fOutX = dcb.fOutX ? TRUE : FALSE;
  line.fInX = line.fErrorChar = line.fNull = line.fAbortOnError = FALSE;
  line.ByteSize = dcb.ByteSize;
  line.Parity = static_cast<BYTE>(parity);
  line.StopBits = dcb.StopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
  line.XonChar = static_cast<char>(dcb.XonChar);
  line.XoffChar = static_cast<char>(dcb.XoffChar);
  return true;
}

void Decode(const DCB& line, DeviceControlBlock& dcb) {
  dcb.BaudRate = static_cast<std::int32_t>(line.BaudRate);
  dcb.Parity = line.Parity == EVENPARITY ? 'E' : line.Parity == ODDPARITY ? 'O' : 'N';
  dcb.ByteSize = line.ByteSize;
  dcb.StopBits = line.StopBits == ONESTOPBIT ? 1 : 2;
  dcb.fOutX = line.fOutX != 0;
  dcb.XonChar = static_cast<std::uint8_t>(line.XonChar);
  dcb.XoffChar = static_cast<std::uint8_t>(line.XoffChar);
}

/// Settings that stand already are not sent again: an adapter may disturb the line over it.
bool Apply(HANDLE file, const DCB& wanted, const DCB& now) {
  return std::memcmp(&wanted, &now, sizeof wanted) == 0 || SetCommState(file, const_cast<DCB*>(&wanted)) != 0;
}

bool StateOf(HANDLE file, DCB& line) {
  line = {};
  line.DCBlength = sizeof line;
  return GetCommState(file, &line) != 0;
}

/// Makes an opened device a raw line whose reads are done as soon as there is a byte.
bool Claim(HANDLE file) {
  DCB now, line;
  if (!StateOf(file, now)) return false;
  line = now;
  DeviceControlBlock raw;
  Decode(now, raw);
  raw.Parity = 'N', raw.ByteSize = 8, raw.StopBits = 1, raw.fOutX = false;
  raw.XonChar = 17, raw.XoffChar = 19;
  if (raw.BaudRate <= 0) raw.BaudRate = 9600;
  COMMTIMEOUTS timeouts{MAXDWORD, MAXDWORD, LongRead, 0, 0};
  return Encode(raw, line) && Apply(file, line, now) && SetCommTimeouts(file, &timeouts) != 0;
}

std::wstring PlaceOf(const std::string& path) {
  return WideOf(path.find('\\') == std::string::npos ? R"(\\.\)" + path : path);
}

/// Drivers have many codes for a device that has gone. The others are those of a call that they can't carry out.
bool MeansGone(DWORD code) {
  constexpr DWORD Refusals[] = {ERROR_INVALID_FUNCTION,  ERROR_INVALID_PARAMETER,   ERROR_NOT_SUPPORTED,
                                ERROR_NOT_ENOUGH_MEMORY, ERROR_NO_SYSTEM_RESOURCES, ERROR_CALL_NOT_IMPLEMENTED};
  return std::find(std::begin(Refusals), std::end(Refusals), code) == std::end(Refusals);
}

}  // namespace

Win32SerialDriver::Win32SerialDriver(EventLoop& loop, const PortNames& names) : SystemDriver(loop, names) {}

Win32SerialDriver::~Win32SerialDriver() {
  for (const auto& [handle, port] : ports_) CloseDevice(*port);
  // What the system has not let go of may still be written to: the memory stays.
  for (auto& operation : abandoned_) {
    if (!operation->IsDone()) static_cast<void>(operation.release());
  }
}

SerialDriver::Handle Win32SerialDriver::Open(std::string_view name) {
  name = PortNameIn(name);
  const auto device = names_.Find(name);
  const PortDevice found = device.value_or(PortDevice{});
  if (!device) return FailOpen(ERROR_FILE_NOT_FOUND, name, found);
  const HANDLE file = OpenExisting(PlaceOf(device->path), {GENERIC_READ | GENERIC_WRITE, 0, FILE_FLAG_OVERLAPPED});
  if (file == INVALID_HANDLE_VALUE) return FailOpen(static_cast<std::int32_t>(GetLastError()), name, found);
  auto port = std::make_unique<Port>();
  port->file.reset(file);
  DCB line;
  if (!Claim(file) || !StateOf(file, line)) return FailOpen(static_cast<std::int32_t>(GetLastError()), name, found);
  port->byteTime = ByteTime(static_cast<std::int32_t>(line.BaudRate));
  ports_.emplace(++lastHandle_, std::move(port));
  return lastHandle_;
}

bool Win32SerialDriver::SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  return SetupComm(port->file.get(), std::max(inQueue, LeastQueue), std::max(outQueue, LeastQueue)) != 0 || Fail(*port);
}

bool Win32SerialDriver::Purge(Handle handle, std::uint32_t flags) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  if ((flags & (PURGE_TXABORT | PURGE_TXCLEAR)) != 0 && port->outgoing) Abort(*port);
  COMSTAT status;
  if (!Look(*port, status)) return Fail(*port);
  // A driver with nothing queued would take back what is on its way to the device already.
  DWORD purged = flags & (PURGE_RXABORT | PURGE_RXCLEAR);
  if (status.cbOutQue > 0) purged |= flags & (PURGE_TXABORT | PURGE_TXCLEAR);
  if (purged != 0 && PurgeComm(port->file.get(), purged) == 0) return Fail(*port);
  if ((flags & PURGE_RXCLEAR) != 0) {
    port->input.clear();
    if (port->incoming->IsDone()) port->incoming->begun = false;
  }
  return true;
}

bool Win32SerialDriver::SetTimeouts(Handle handle, const CommTimeouts& timeouts) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  port->timeouts = timeouts;
  return true;
}

bool Win32SerialDriver::GetState(Handle handle, DeviceControlBlock& dcb) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  DCB line;
  if (!StateOf(port->file.get(), line)) return Fail(*port);
  Decode(line, dcb);
  return true;
}

bool Win32SerialDriver::SetState(Handle handle, const DeviceControlBlock& dcb) {
  Port* port = Live(handle);
  if (port == nullptr) return false;
  DCB now;
  if (!StateOf(port->file.get(), now)) return Fail(*port);
  DCB line = now;
  if (!Encode(dcb, line)) return Fail(WrongSetting());
  if (!Apply(port->file.get(), line, now)) return Fail(*port);
  // A line that an XOFF has stopped would stay so for ever.
  if (now.fOutX != 0 && !dcb.fOutX) EscapeCommFunction(port->file.get(), SETXON);
  port->byteTime = ByteTime(dcb.BaudRate);
  return true;
}

bool Win32SerialDriver::ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) {
  errors = 0;
  status = {};
  Port* port = Live(handle);
  if (port == nullptr) return false;
  COMSTAT found;
  // What has come is taken before the loss of its device is told.
  if ((!Collect(*port) || !Look(*port, found)) && port->input.empty()) return Fail(*port);
  status.cbInQue = static_cast<std::int32_t>(port->input.size());
  errors = std::exchange(port->errors, 0) & LineErrors;
  return true;
}

bool Win32SerialDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  data.clear();
  Port* port = Live(handle);
  if (port == nullptr) return false;
  if (!Collect(*port) && port->input.empty()) return Fail(*port);
  data = port->input.substr(0, count);
  port->input.erase(0, data.size());
  return true;
}

bool Win32SerialDriver::Write(Handle handle, std::string_view data, std::uint32_t& written) {
  written = 0;
  Port* port = Live(handle);
  if (port == nullptr) return false;
  if (port->outgoing) Abort(*port);
  port->outgoing = std::make_unique<Outgoing>();
  Outgoing& outgoing = *port->outgoing;
  outgoing.data = data;
  outgoing.until = EndOfWrite(loop_.Now(), port->timeouts, data.size());
  outgoing.begun = true;
  if (WriteFile(port->file.get(), outgoing.data.data(), static_cast<DWORD>(data.size()), nullptr, &outgoing.system) ==
          0 &&
      GetLastError() != ERROR_IO_PENDING) {
    port->outgoing.reset();
    return Fail(*port);
  }
  return Progress(*port, written, ErrorIoPending);
}

bool Win32SerialDriver::PendingResult(Handle handle, std::uint32_t& count) {
  count = 0;
  Port* port = Live(handle);
  if (port == nullptr) return false;
  return port->outgoing ? Progress(*port, count, ErrorIoIncomplete) : Fail(ERROR_INVALID_PARAMETER);
}

bool Win32SerialDriver::Progress(Port& port, std::uint32_t& written, std::int32_t pending) {
  Outgoing& outgoing = *port.outgoing;
  const DWORD size = static_cast<DWORD>(outgoing.data.size());
  const bool done = outgoing.IsDone(), late = loop_.Now() >= outgoing.until;
  COMSTAT status;
  const bool tells = Look(port, status);
  // The queue holds what a write under way has still to give; a driver that does not count that says 0.
  if (tells && (done || status.cbOutQue > 0)) outgoing.left = size - std::min(size, status.cbOutQue);
  written = outgoing.left;
  if (!tells) return Fail(port);
  if (!done && late) {
    written = Abort(port);
    return true;
  }
  // A driver may say that it is done when all is in its own queue.
  if (!done || (status.cbOutQue > 0 && !late)) {
    outgoing.patience = std::clamp<Time>(port.byteTime * status.cbOutQue, ShortPause, LongPause);
    return Fail(pending);
  }
  // What the caller is told has not left must not leave later.
  if (status.cbOutQue > 0) PurgeComm(port.file.get(), PURGE_TXABORT | PURGE_TXCLEAR);
  DWORD count = 0;
  const bool well = GetOverlappedResult(port.file.get(), &outgoing.system, &count, FALSE) != 0;
  written = std::min<std::uint32_t>(written, count);
  const DWORD error = GetLastError();
  port.outgoing.reset();
  SetLastError(error);
  return well || Fail(port);
}

std::uint32_t Win32SerialDriver::Abort(Port& port) {
  DWORD left = 0;
  std::unique_ptr<Outgoing> outgoing = std::move(port.outgoing);
  if (!outgoing->IsDone()) {
    PurgeComm(port.file.get(), PURGE_TXABORT | PURGE_TXCLEAR);
    CancelIoEx(port.file.get(), &outgoing->system);
    WaitForSingleObject(outgoing->done.get(), Patience);
  }
  GetOverlappedResult(port.file.get(), &outgoing->system, &left, FALSE);
  Abandon(std::move(outgoing));
  return left;
}

void Win32SerialDriver::Abandon(std::unique_ptr<Operation> operation) {
  std::erase_if(abandoned_, [](const auto& old) { return old->IsDone(); });
  if (!operation->IsDone()) abandoned_.push_back(std::move(operation));
}

WaitFor Win32SerialDriver::PendingWait(Handle handle) const {
  const Port* port = Find(handle);
  if (port == nullptr || !port->outgoing) return {-1};
  const Outgoing& outgoing = *port->outgoing;
  if (!outgoing.IsDone()) return {NumberOf(outgoing.done.get()), WaitFor::ToWrite, outgoing.until};
  return {-1, WaitFor::ToWrite, std::min(loop_.Now() + outgoing.patience, outgoing.until)};
}

bool Win32SerialDriver::Close(Handle handle) {
  const auto at = ports_.find(handle);
  if (at == ports_.end()) return Fail(ERROR_INVALID_HANDLE);
  CloseDevice(*at->second);
  ports_.erase(at);
  return true;
}

void Win32SerialDriver::CloseDevice(Port& port) {
  if (port.outgoing) Abort(port);
  COMSTAT status;
  // The system would wait for bytes that a held line keeps.
  if (Look(port, status) && status.cbOutQue > 0) PurgeComm(port.file.get(), PURGE_TXABORT | PURGE_TXCLEAR);
  if (!port.incoming->IsDone()) {
    CancelIoEx(port.file.get(), &port.incoming->system);
    WaitForSingleObject(port.incoming->done.get(), Patience);
  }
  port.file.reset();
  Abandon(std::move(port.incoming));
}

int Win32SerialDriver::WaitHandle(Handle handle) const {
  Port* port = Find(handle);
  if (port == nullptr || port->gone) return -1;
  // That a device has gone the next verb tells.
  const bool ready = !Collect(*port) || !port->input.empty();
  return NumberOf(ready ? always_.get() : port->incoming->done.get());
}

bool Win32SerialDriver::Look(Port& port, COMSTAT& status) {
  DWORD errors = 0;
  if (ClearCommError(port.file.get(), &errors, &status) == 0) return false;
  port.errors |= errors;
  return true;
}

bool Win32SerialDriver::Collect(Port& port) {
  Incoming& incoming = *port.incoming;
  const HANDLE file = port.file.get();
  bool aborted = false;
  while (incoming.IsDone() && port.input.size() < MostInput) {
    DWORD count = 0;
    if (std::exchange(incoming.begun, false)) {
      const bool well = GetOverlappedResult(file, &incoming.system, &count, FALSE) != 0;
      // A purge ends it as well, once.
      if (!well && (std::exchange(aborted, true) || GetLastError() != ERROR_OPERATION_ABORTED)) return false;
      port.input.append(incoming.data, count);
    }
    COMSTAT status;
    if (!Look(port, status)) return false;
    // What is there at once, or else the next byte: some drivers give nothing before all is there that was asked for.
    const DWORD wanted = std::clamp<DWORD>(status.cbInQue, 1, sizeof incoming.data);
    ResetEvent(incoming.done.get());
    incoming.begun =
        ReadFile(file, incoming.data, wanted, nullptr, &incoming.system) != 0 || GetLastError() == ERROR_IO_PENDING;
    if (!incoming.begun) return false;
  }
  return true;
}

PortTrouble Win32SerialDriver::TroubleOf(std::int32_t code, bool opening) const {
  if (!opening) return code == ERROR_DEVICE_NOT_CONNECTED ? PortTrouble::Gone : PortTrouble::None;
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND: return PortTrouble::Missing;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: return PortTrouble::Busy;
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE:
    case ERROR_INVALID_PARAMETER: return PortTrouble::NoSerialPort;
    case ERROR_GEN_FAILURE:
    case ERROR_NOT_READY:
    case ERROR_BAD_COMMAND:
    case ERROR_IO_DEVICE:
    case ERROR_SEM_TIMEOUT:
    case ERROR_DEVICE_NOT_CONNECTED: return PortTrouble::NoHardware;
    default: return PortTrouble::None;
  }
}

std::string Win32SerialDriver::AccessAdvice(const std::string&) const { return ""; }

Win32SerialDriver::Port* Win32SerialDriver::Find(Handle handle) const {
  const auto at = ports_.find(handle);
  return at == ports_.end() ? nullptr : at->second.get();
}

Win32SerialDriver::Port* Win32SerialDriver::Live(Handle handle) {
  Port* port = Find(handle);
  if (port == nullptr) {
    Fail(ERROR_INVALID_HANDLE);
  } else if (port->gone) {
    Fail(ERROR_DEVICE_NOT_CONNECTED);
    port = nullptr;
  }
  return port;
}

bool Win32SerialDriver::Fail(Port& port) {
  const DWORD code = GetLastError();
  port.gone = port.gone || MeansGone(code);
  return Fail(port.gone ? ERROR_DEVICE_NOT_CONNECTED : static_cast<std::int32_t>(code));
}

std::unique_ptr<SerialDriver> SystemSerialDriver(EventLoop& loop, const PortNames& names) {
  return std::make_unique<Win32SerialDriver>(loop, names);
}

}  // namespace vk32
