// The serial port layer. The steps of each operation map to the verbs of the driver one to one.
#include "link/modCOMM.h"

#include <algorithm>
#include <charconv>

#include "platform/Fault.h"

namespace vk32 {
namespace {

constexpr std::uint32_t QueueSize = 1024;
constexpr std::uint32_t PurgeAll = 15;    // abort and clear, transmit and receive
constexpr std::uint32_t PurgeOutput = 5;  // abort and clear, transmit
constexpr std::int32_t ReadBufferSize = 1024;
constexpr CommTimeouts Timeouts{0xFFFFFFFF, 0, 1000, 1000, 0};  // reads return at once, writes have 1000 ms a byte

std::string Hex(std::uint32_t value) {
  char text[8];
  const auto end = std::to_chars(text, text + sizeof text, value, 16).ptr;
  std::string hex(text, end);
  std::transform(hex.begin(), hex.end(), hex.begin(), [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
  return hex;
}

}  // namespace

bool modCOMM::IsPort(std::int32_t port) const {
  return port >= 1 && port <= static_cast<std::int32_t>(CommPorts.size());
}

modCOMM::CommPort& modCOMM::Port(std::int32_t port) {
  if (!IsPort(port)) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
  return CommPorts[static_cast<std::size_t>(port - 1)];
}

/// Run-time faults of an operation become its status.
std::int32_t modCOMM::Trap(const char* procedure, const std::function<std::int32_t()>& body) {
  try {
    return body();
  } catch (const RuntimeFault& fault) {
    CommLastError = fault.Code();
    CommLastSource = procedure;
    CommLastMessage = fault.Description();
    return CommLastError;
  }
}

std::int32_t modCOMM::CommOpen(std::int32_t port, const std::string& name, const std::string& settings) {
  return Trap("CommOpen", [&]() -> std::int32_t {
    CommPort& record = Port(port);
    if (record.Open) {
      CommLastError = -1;
      CommLastSource = "CommOpen";
      CommLastMessage = "Port in use.";
      return -1;
    }
    record.Handle = driver_.Open("\\\\.\\" + name);
    if (record.Handle == SerialDriver::InvalidHandle) return CommSetLastError("CommOpen (CreateFile)");
    record.Open = true;
    ++opens_;
    if (!driver_.SetupQueues(record.Handle, QueueSize, QueueSize)) return CommSetLastError("CommOpen (SetupComm)");
    if (!driver_.Purge(record.Handle, PurgeAll)) return CommSetLastError("CommOpen (PurgeComm)");
    if (!driver_.SetTimeouts(record.Handle, Timeouts)) return CommSetLastError("CommOpen (SetCommTimeouts)");
    if (!driver_.GetState(record.Handle, record.DCB)) return CommSetLastError("CommOpen (GetCommState)");
    if (!driver_.BuildState(settings, record.DCB)) return CommSetLastError("CommOpen (BuildCommDCB)");
    if (!driver_.SetState(record.Handle, record.DCB)) return CommSetLastError("CommOpen (SetCommState)");
    return 0;
  });
}

std::int32_t modCOMM::CommSet(std::int32_t port, const std::string& settings) {
  return SetFlow(port, settings, true, "CommSet");
}

std::int32_t modCOMM::CommSetNOXON(std::int32_t port, const std::string& settings) {
  return SetFlow(port, settings, false, "CommSetNOXON");
}

std::int32_t modCOMM::SetFlow(std::int32_t port, const std::string& settings, bool outX, const std::string& procedure) {
  return Trap(procedure.c_str(), [&]() -> std::int32_t {
    CommPort& record = Port(port);
    if (!driver_.GetState(record.Handle, record.DCB)) return CommSetLastError(procedure + " (GetCommState)");
    if (!driver_.BuildState(settings, record.DCB)) return CommSetLastError(procedure + " (BuildCommDCB)");
    record.DCB.fOutX = outX;
    record.DCB.XonChar = 17;
    record.DCB.XoffChar = 19;
    if (!driver_.SetState(record.Handle, record.DCB)) return CommSetLastError(procedure + " (SetCommState)");
    return 0;
  });
}

std::int32_t modCOMM::CommClose(std::int32_t port) {
  return Trap("CommClose", [&]() -> std::int32_t {
    CommPort& record = Port(port);
    if (!record.Open) return 0;
    if (!driver_.Close(record.Handle)) return CommSetLastError("CommClose (CloseHandle)");
    record.Open = false;
    return 0;
  });
}

std::int32_t modCOMM::CommFlush(std::int32_t port) {
  return Trap("CommFlush", [&]() -> std::int32_t {
    if (!driver_.Purge(Port(port).Handle, PurgeAll)) return CommSetLastError("CommFlush (PurgeComm)");
    return 0;
  });
}

std::int32_t modCOMM::CommRead(std::int32_t port, Bytes& data, std::int32_t maximum) {
  return Trap("CommRead", [&]() -> std::int32_t {
    data.clear();
    dispatcher_.DoEvents();
    CommPort& record = Port(port);
    std::uint32_t errors = 0;
    CommStatus status;
    if (!driver_.ClearError(record.Handle, errors, status)) {
      CommSetLastError("CommRead (ClearCommError)");
      return -1;
    }
    const std::int32_t wanted = std::min({status.cbInQue, maximum, ReadBufferSize});
    if (wanted <= 0) return 0;
    if (driver_.Read(record.Handle, static_cast<std::uint32_t>(wanted), data)) {
      return static_cast<std::int32_t>(data.size());
    }
    if (driver_.LastError() != SerialDriver::ErrorIoPending) {
      data.clear();
      CommSetLastErrorFlags(driver_.LastError(), "CommRead (ReadFile)", record.Handle);
      return -1;
    }
    std::uint32_t count = 0;
    while (!driver_.PendingResult(record.Handle, count)) {
      if (driver_.LastError() == SerialDriver::ErrorIoIncomplete) continue;
      data.clear();
      CommSetLastErrorFlags(driver_.LastError(), "CommRead (GetOverlappedResult)", record.Handle);
      return -1;
    }
    data.resize(std::min<std::size_t>(count, data.size()));
    return static_cast<std::int32_t>(data.size());
  });
}

std::int32_t modCOMM::CommWrite(std::int32_t port, const Bytes& data, const std::function<bool()>& stop) {
  const SerialDriver::Handle handle = Port(port).Handle;  // the port may be closed, and opened anew, meanwhile
  std::uint32_t written = 0;
  bool done = driver_.Write(handle, data, written);
  // Taken before events run: a handler may use the driver, too.
  const std::int32_t error = done ? 0 : driver_.LastError();
  dispatcher_.DoEvents();
  if (!done && error == 0) return static_cast<std::int32_t>(written);
  if (!done && error != SerialDriver::ErrorIoPending) {
    CommSetLastErrorFlags(error, "CommWrite (WriteFile)", handle);
    return -1;
  }
  while (!done) {
    if (stop()) {
      driver_.Purge(handle, PurgeOutput);
      return static_cast<std::int32_t>(written);
    }
    done = driver_.PendingResult(handle, written);
    if (done) break;
    if (driver_.LastError() != SerialDriver::ErrorIoIncomplete) {
      CommSetLastErrorFlags(driver_.LastError(), "CommWrite (GetOverlappedResult)", handle);
      return static_cast<std::int32_t>(written);
    }
    dispatcher_.Idle(driver_.PendingWait(handle));
    dispatcher_.DoEvents();
  }
  // Room for the driver and the form's events behind each write.
  dispatcher_.DoEvents(10);
  return static_cast<std::int32_t>(written);
}

std::int32_t modCOMM::CommGetError(std::string& text) const {
  text = "Error (" + std::to_string(CommLastError) + "): " + CommLastSource + " - " + CommLastMessage;
  return CommLastError;
}

std::int32_t modCOMM::CommSetLastError(const std::string& source) { return Record(driver_.LastError(), source); }

std::int32_t modCOMM::Record(std::int32_t code, const std::string& source) {
  CommLastError = code;
  CommLastSource = source;
  CommLastMessage = CommGetErrorText(code);
  return code;
}

std::int32_t modCOMM::CommSetLastErrorFlags(std::int32_t code, const std::string& source, SerialDriver::Handle handle) {
  Record(code, source);
  std::uint32_t flags = 0;
  CommStatus status;
  driver_.ClearError(handle, flags, status);
  CommLastMessage += "  COMM Error Flags = " + Hex(flags);
  return code;
}

std::string modCOMM::CommGetErrorText(std::int32_t code) const {
  std::string text = driver_.ErrorText(code).substr(0, 255);
  text = text.substr(0, text.find('\0'));
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool modCOMM::IsOpen(std::int32_t port) const {
  return IsPort(port) && CommPorts[static_cast<std::size_t>(port - 1)].Open;
}

int modCOMM::WaitHandle(std::int32_t port) { return IsOpen(port) ? driver_.WaitHandle(Port(port).Handle) : -1; }

void modCOMM::CloseAll() {
  for (std::int32_t port = 1; port <= static_cast<std::int32_t>(CommPorts.size()); ++port) CommClose(port);
}

}  // namespace vk32
