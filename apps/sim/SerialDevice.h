// A real serial device that a simulated gateway answers on.
#pragma once

#include <memory>

#include "platform/PortNames.h"
#include "platform/SystemEventLoop.h"
#include "sim/HostPort.h"

namespace vk32::sim {

/// Raw 8N1, for this program alone. What is written waits until the line has carried it. std::runtime_error, with words
/// for the user, once the device is gone.
class SerialDevice : public HostPort {
 public:
  /// `baudRate` in bit/s. std::runtime_error, with words for the user, if the device can't be had.
  SerialDevice(const std::string& path, int baudRate);

  std::string Title() const override { return path_; }
  int Fd() const override { return driver_->WaitHandle(handle_); }
  Bytes Read(std::size_t most) override;
  void Write(std::string_view bytes) override;
  WaitFor Sending() const override { return driver_->PendingWait(handle_); }

 private:
  /// Takes the outcome of one of the driver's verbs; false if it goes on.
  bool Done(bool well) const;

  std::string path_;
  SystemEventLoop loop_;
  PortNames names_;
  std::unique_ptr<SerialDriver> driver_ = SystemSerialDriver(loop_, names_);
  SerialDriver::Handle handle_ = 0;
  bool sending_ = false;
  Bytes waiting_;  // for the end of what is being sent
};

}  // namespace vk32::sim
