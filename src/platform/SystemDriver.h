// What the serial drivers of all systems share: handles, codes and their words, and how long bytes take.
#pragma once

#include <string>
#include <string_view>

#include "platform/PortNames.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// What a code of the system means for a port.
enum class PortTrouble {
  None,  // that a user could do something about
  Missing,
  Forbidden,
  Busy,
  NoSerialPort,
  NoHardware,
  Gone,
};

class SystemDriver : public SerialDriver {
 public:
  bool BuildState(std::string_view settings, DeviceControlBlock& dcb) override;
  std::int32_t LastError() const override { return lastError_; }
  std::string ErrorText(std::int32_t code) const override;

 protected:
  SystemDriver(EventLoop& loop, const PortNames& names) : loop_(loop), names_(names) {}

  /// What the system calls a wrong setting.
  virtual std::int32_t WrongSetting() const = 0;
  /// `opening`: the code is one of Open.
  virtual PortTrouble TroubleOf(std::int32_t code, bool opening) const = 0;
  /// Why the user may not open the device at a path, and what he can do.
  virtual std::string AccessAdvice(const std::string& path) const = 0;

  bool Fail(std::int32_t code);
  /// Of Open. `device`: empty if none stood behind the name.
  Handle FailOpen(std::int32_t code, std::string_view portName, const PortDevice& device);

  /// The port name in "\\.\COM12".
  static std::string_view PortNameIn(std::string_view name);
  /// The time of one byte on the line: start bit, eight bits, stop bit.
  static Time ByteTime(std::int32_t baud);
  /// When a write of so many bytes has to be over.
  static Time EndOfWrite(Time begun, const CommTimeouts& timeouts, std::size_t count);
  /// The end of a path that is too long for the text of an error.
  static std::string Short(const std::string& path);

  EventLoop& loop_;
  const PortNames& names_;

 private:
  struct FailedOpen {
    std::int32_t code = 0;
    std::string portName;
    PortDevice device;
  };

  std::string Advice(const FailedOpen& failed) const;

  std::int32_t lastError_ = 0;
  FailedOpen failedOpen_;  // the latest failure, if it was one of Open
};

}  // namespace vk32
