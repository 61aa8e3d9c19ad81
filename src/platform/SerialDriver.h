// The seam to the serial ports: the verbs of a serial driver, one for each step of a conversation with a port.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"

namespace vk32 {

/// A byte string: every character is one byte, 0 to 255, zero bytes included.
using Bytes = std::string;

/// The settings of a port, kept by its user from call to call.
struct DeviceControlBlock {
  std::int32_t BaudRate = 0;  // bit/s
  char Parity = 'N';
  std::uint8_t ByteSize = 8;  // data bits
  std::uint8_t StopBits = 1;
  bool fOutX = false;  // XOFF from the device holds our output, XON releases it
  std::uint8_t XonChar = 17;
  std::uint8_t XoffChar = 19;
};

/// Takes a text like "baud=9600 parity=N data=8 stop=1" into `dcb` and leaves its other fields. Strict: each of the
/// four keys once, one blank between them, whole numbers. Anything else is false and leaves `dcb` as it was.
bool ParseSettings(std::string_view settings, DeviceControlBlock& dcb);

/// Milliseconds, in the platform's five figures.
struct CommTimeouts {
  std::uint32_t ReadIntervalTimeout = 0;
  std::uint32_t ReadTotalTimeoutMultiplier = 0;
  std::uint32_t ReadTotalTimeoutConstant = 0;
  std::uint32_t WriteTotalTimeoutMultiplier = 0;  // per byte
  std::uint32_t WriteTotalTimeoutConstant = 0;
};

/// The state of a port's queues.
struct CommStatus {
  std::int32_t cbInQue = 0;  // bytes received and not read yet
};

/// One operation per verb. Every verb but LastError and ErrorText returns true on success; on failure LastError tells
/// why.
class SerialDriver {
 public:
  /// 0 stands for a port that was never opened, -1 (all ones) for one that couldn't be opened. Never a descriptor of
  /// the operating system, so that a zero record can't touch the standard input.
  using Handle = std::int32_t;
  static constexpr Handle InvalidHandle = -1;

  // Codes of Read and Write for an operation that has not completed yet; see PendingResult.
  static constexpr std::int32_t ErrorIoIncomplete = 996;
  static constexpr std::int32_t ErrorIoPending = 997;

  virtual ~SerialDriver() = default;

  /// Opens a port for this program alone. `name` is "\\.\" and the port name, as in "\\.\COM12".
  virtual Handle Open(std::string_view name) = 0;
  virtual bool SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) = 0;
  /// Drops what is queued. `flags`: 1 abort writing, 2 abort reading, 4 clear the output, 8 clear the input.
  virtual bool Purge(Handle handle, std::uint32_t flags) = 0;
  virtual bool SetTimeouts(Handle handle, const CommTimeouts& timeouts) = 0;
  virtual bool GetState(Handle handle, DeviceControlBlock& dcb) = 0;
  /// ParseSettings as a verb.
  virtual bool BuildState(std::string_view settings, DeviceControlBlock& dcb) = 0;
  virtual bool SetState(Handle handle, const DeviceControlBlock& dcb) = 0;
  /// `errors`: the line errors since the last call: 1 queue overflow, 2 overrun, 4 parity, 8 framing, 16 break.
  virtual bool ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) = 0;
  /// Reads up to `count` bytes that wait already; never blocks.
  virtual bool Read(Handle handle, std::uint32_t count, Bytes& data) = 0;
  /// Writes. It is done when the bytes have left; until then it fails with ErrorIoPending. `written` is what left
  /// within the time-out; fewer than all is a success.
  virtual bool Write(Handle handle, std::string_view data, std::uint32_t& written) = 0;
  /// What became of the Read or Write that ended with ErrorIoPending. `count`: bytes moved. Fails with
  /// ErrorIoIncomplete while it still goes on; Purge ends it.
  virtual bool PendingResult(Handle handle, std::uint32_t& count) = 0;
  /// When PendingResult is worth another look.
  virtual WaitFor PendingWait(Handle handle) const = 0;
  virtual bool Close(Handle handle) = 0;

  virtual std::int32_t LastError() const = 0;
  /// The system's words for a code; for the latest code they also say what to do about it, where that is known.
  virtual std::string ErrorText(std::int32_t code) const = 0;

  /// A descriptor that becomes readable when bytes come, and when the device goes; -1 if there is none to wait for: the
  /// port is not open, or another verb has found its device gone.
  virtual int WaitHandle(Handle handle) const = 0;
};

class PortNames;

/// The driver of the system that the program runs on. Codes are the system's own.
std::unique_ptr<SerialDriver> SystemSerialDriver(EventLoop& loop, const PortNames& names);

}  // namespace vk32
