// The serial driver on termios.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

#include "platform/SystemDriver.h"

namespace vk32 {

/// Raw mode, 8N1, exclusive for the kernel (TIOCEXCL) and for every program that asks (flock). Open fails with EBUSY
/// also while another program has the device open without asking. Codes are those of errno; a device that is gone fails
/// every verb with EIO.
class PosixSerialDriver : public SystemDriver {
 public:
  PosixSerialDriver(EventLoop& loop, const PortNames& names);
  ~PosixSerialDriver() override;
  PosixSerialDriver(const PosixSerialDriver&) = delete;
  PosixSerialDriver& operator=(const PosixSerialDriver&) = delete;

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
  /// How often each line error was seen, in the order of ClearError's bits.
  using ErrorCounts = std::array<int, 5>;

  /// Bytes on their way out.
  struct Outgoing {
    Bytes data;               // once they have not left at once
    std::uint32_t handed;     // to the kernel
    Time earliestEnd, until;  // when the line can have carried them; when the rest is taken back
    int left;                 // of them with the kernel, when it was last looked at
    Time patience;            // until it is looked at again
  };

  struct Port {
    int fd = -1;
    bool gone = false;
    bool pseudo = false;    // a pseudo-terminal: it counts no line errors and can't tell what has left
    bool rateless = false;  // a USB gadget: the line has no rate, and its driver keeps the one that it has
    Time byteTime{0};
    CommTimeouts timeouts;
    ErrorCounts counts{};
    std::optional<Outgoing> outgoing;
  };

  static ErrorCounts CountErrors(int fd);
  std::int32_t WrongSetting() const override;
  PortTrouble TroubleOf(std::int32_t code, bool opening) const override;
  std::string AccessAdvice(const std::string& path) const override;

  /// The port of a handle; null, with the error set, if there is none or its device is gone.
  Port* Live(Handle handle);
  using SystemDriver::Fail;
  bool Fail(Port& port, std::int32_t code);
  /// Goes on with the write of `data` under way. True once it is done; else fails with the device's error or `pending`.
  bool Progress(Port& port, std::string_view data, Time now, std::uint32_t& written, std::int32_t pending);
  /// Hands to the kernel what it takes. 0, or the device's error.
  static std::int32_t Push(Port& port, std::string_view data);
  void CloseDevice(const Port& port);

  std::map<Handle, Port> ports_;
  Handle lastHandle_ = 0;
};

}  // namespace vk32
