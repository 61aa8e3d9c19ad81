// A real serial device that a simulated gateway answers on.
#include "sim/SerialDevice.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vk32::sim {
namespace {

constexpr const char* PortName = "COM1";  // any: the driver opens by names

}  // namespace

SerialDevice::SerialDevice(const std::string& path, int baudRate) : path_(path) {
  if (!PortNames::DeviceIsThere(path)) {
    throw std::runtime_error("There is no device " + path +
                             ". Plug the adapter in, or name another one: " + PortNames::ListCommand());
  }
  names_.Assign(PortName, path);
  handle_ = driver_->Open(PortName);
  DeviceControlBlock state;
  state.BaudRate = baudRate;
  Done(handle_ != SerialDriver::InvalidHandle && driver_->SetState(handle_, state));
}

Bytes SerialDevice::Read(std::size_t most) {
  Bytes bytes;
  Done(driver_->Read(handle_, static_cast<std::uint32_t>(std::min<std::size_t>(most, UINT32_MAX)), bytes));
  return bytes;
}

void SerialDevice::Write(std::string_view bytes) {
  waiting_ += bytes;
  std::uint32_t written = 0;
  if (sending_) sending_ = !Done(driver_->PendingResult(handle_, written));
  if (!sending_ && !waiting_.empty()) sending_ = !Done(driver_->Write(handle_, std::exchange(waiting_, {}), written));
}

bool SerialDevice::Done(bool well) const {
  const std::int32_t code = well ? 0 : driver_->LastError();
  if (well || code == SerialDriver::ErrorIoPending || code == SerialDriver::ErrorIoIncomplete) return well;
  throw std::runtime_error(path_ + " can't be used: " + driver_->ErrorText(code) + ".");
}

}  // namespace vk32::sim
