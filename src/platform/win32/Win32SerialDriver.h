// The serial driver on the communications resources of Windows.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/SystemDriver.h"
#include "platform/win32/Win32.h"

namespace vk32 {

/// Raw 8N1, for this program alone, as the system opens every port. Codes are those of GetLastError; a device that is
/// gone fails every verb with ERROR_DEVICE_NOT_CONNECTED.
class Win32SerialDriver : public SystemDriver {
 public:
  Win32SerialDriver(EventLoop& loop, const PortNames& names);
  ~Win32SerialDriver() override;
  Win32SerialDriver(const Win32SerialDriver&) = delete;
  Win32SerialDriver& operator=(const Win32SerialDriver&) = delete;

  Handle Open(std::string_view name) override;
  bool SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) override;
  bool Purge(Handle handle, std::uint32_t flags) override;
  bool SetTimeouts(Handle handle, const CommTimeouts& timeouts) override;
  bool GetState(Handle handle, DeviceControlBlock& dcb) override;
  bool SetState(Handle handle, const DeviceControlBlock& dcb) override;
  bool ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) override;
  bool Read(Handle handle, std::uint32_t count, Bytes& data) override;
  bool Write(Handle handle, std::string_view data, std::uint32_t& written) override;
  bool PendingResult(Handle handle, std::uint32_t& count) override;
  WaitFor PendingWait(Handle handle) const override;
  bool Close(Handle handle) override;
  int WaitHandle(Handle handle) const override;

 private:
  /// An operation that the system carries out by itself. It stays in memory until the system is done with it.
  struct Operation {
    OVERLAPPED system{};
    OwnedHandle done = MakeEvent();
    bool begun = false;

    Operation() { system.hEvent = done.get(); }
    virtual ~Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    bool IsDone() const { return !begun || HasOverlappedIoCompleted(&system); }
  };

  struct Outgoing : Operation {
    Bytes data;
    Time until{0};           // when the rest is taken back
    Time patience{0};        // until the driver's queue is looked at again
    std::uint32_t left = 0;  // bytes that were on the line when it was last looked at
  };

  /// The read that waits for the next bytes. There is always one, for drivers tell of what comes by no other means that
  /// all of them have.
  struct Incoming : Operation {
    char data[4096];
  };

  struct Port {
    OwnedHandle file;
    bool gone = false;
    Time byteTime{0};
    CommTimeouts timeouts;
    DWORD errors = 0;  // of the line, that nobody has asked for yet
    std::unique_ptr<Incoming> incoming = std::make_unique<Incoming>();
    Bytes input;  // what has come and was not taken yet
    std::unique_ptr<Outgoing> outgoing;
  };

  std::int32_t WrongSetting() const override { return ERROR_INVALID_PARAMETER; }
  PortTrouble TroubleOf(std::int32_t code, bool opening) const override;
  std::string AccessAdvice(const std::string& path) const override;

  Port* Find(Handle handle) const;
  /// The port of a handle; null, with the error set, if there is none or its device is gone.
  Port* Live(Handle handle);
  using SystemDriver::Fail;
  /// By the system's last error.
  bool Fail(Port& port);
  /// What waits in the queues; false if the device does not tell.
  static bool Look(Port& port, COMSTAT& status);
  /// Takes what has come, and waits for what comes next. False if the device does not give it.
  static bool Collect(Port& port);
  /// Goes on with the write under way. True once it is done; else fails with the device's error or `pending`.
  bool Progress(Port& port, std::uint32_t& written, std::int32_t pending);
  /// Takes the rest of a write back; how much of it has left.
  std::uint32_t Abort(Port& port);
  /// Keeps an operation for as long as the system may still touch it.
  void Abandon(std::unique_ptr<Operation> operation);
  void CloseDevice(Port& port);

  OwnedHandle always_ = MakeEvent(true);  // signalled
  std::map<Handle, std::unique_ptr<Port>> ports_;
  std::vector<std::unique_ptr<Operation>> abandoned_;
  Handle lastHandle_ = 0;
};

}  // namespace vk32
