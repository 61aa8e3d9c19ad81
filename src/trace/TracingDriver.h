// A serial driver that records what passes through another one.
#pragma once

#include "platform/SerialDriver.h"
#include "trace/Trace.h"

namespace vk32 {

class TracingDriver : public SerialDriver {
 public:
  /// `loop`: whose clock tells the moments.
  TracingDriver(SerialDriver& driver, TraceSink& trace, const EventLoop& loop)
      : driver_(driver), trace_(trace), loop_(loop) {}

  Handle Open(std::string_view name) override { return driver_.Open(name); }
  bool SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) override {
    return driver_.SetupQueues(handle, inQueue, outQueue);
  }
  bool Purge(Handle handle, std::uint32_t flags) override;
  bool SetTimeouts(Handle handle, const CommTimeouts& timeouts) override {
    return driver_.SetTimeouts(handle, timeouts);
  }
  bool GetState(Handle handle, DeviceControlBlock& dcb) override { return driver_.GetState(handle, dcb); }
  bool BuildState(std::string_view settings, DeviceControlBlock& dcb) override {
    return driver_.BuildState(settings, dcb);
  }
  bool SetState(Handle handle, const DeviceControlBlock& dcb) override { return driver_.SetState(handle, dcb); }
  bool ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) override {
    return driver_.ClearError(handle, errors, status);
  }
  bool Read(Handle handle, std::uint32_t count, Bytes& data) override;
  bool Write(Handle handle, std::string_view data, std::uint32_t& written) override;
  bool PendingResult(Handle handle, std::uint32_t& count) override;
  WaitFor PendingWait(Handle handle) const override { return driver_.PendingWait(handle); }
  bool Close(Handle handle) override;
  std::int32_t LastError() const override { return driver_.LastError(); }
  std::string ErrorText(std::int32_t code) const override { return driver_.ErrorText(code); }
  int WaitHandle(Handle handle) const override { return driver_.WaitHandle(handle); }

 private:
  /// What has left of the write under way.
  void TraceOutgoing();

  SerialDriver& driver_;
  TraceSink& trace_;
  const EventLoop& loop_;
  Bytes outgoing_;          // a write that is not done yet
  std::uint32_t gone_ = 0;  // bytes of it
};

}  // namespace vk32
