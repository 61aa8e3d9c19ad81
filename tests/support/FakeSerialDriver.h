// A serial driver whose every verb can fail on demand, and whose other end is a device of the test.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "platform/SerialDriver.h"
#include "sim/SimulatedLine.h"
#include "support/VirtualEventLoop.h"

namespace vk32 {

/// The other end of a fake port.
using FakeDevice = sim::FarEnd;

/// Says what it has to say, each at its time.
class SpeakingDevice : public FakeDevice {
 public:
  Bytes ToHost(Time now) override {
    Bytes bytes;
    for (; !says.empty() && says.begin()->first <= now; says.erase(says.begin())) bytes += says.begin()->second;
    return bytes;
  }
  std::optional<Time> NextDue() const override {
    return says.empty() ? std::nullopt : std::optional(says.begin()->first);
  }

  std::map<Time, Bytes> says;
};

/// Answers as told, message by message. What comes in is matched against the awaited message from its first byte on.
class ScriptedDevice : public SpeakingDevice {
 public:
  struct Reply {
    Time delay;  // after the last byte of the message
    Bytes bytes;
  };

  /// Awaits a message and then says the replies. Messages come in the order of these calls.
  ScriptedDevice& On(const Bytes& message, const std::vector<Reply>& replies = {}) {
    return exchanges_.emplace_back(message, replies), *this;
  }
  /// True if every awaited message has come, and nothing else.
  bool Done() const { return exchanges_.empty() && pending_.empty(); }

  void FromHost(std::string_view bytes, Time now) override;

 private:
  std::deque<std::pair<Bytes, std::vector<Reply>>> exchanges_;
  Bytes pending_;
};

/// A simulated gateway as the other end.
class GatewayDevice : public FakeDevice {
 public:
  explicit GatewayDevice(std::string_view product, sim::Misbehaviour misbehaviour = {}, bool pace = false);

  void FromHost(std::string_view bytes, Time now) override { line_.FromHost(bytes, now); }
  Bytes ToHost(Time now) override { return line_.ToHost(now); }
  std::optional<Time> NextDue() const override { return line_.NextDue(); }
  bool Gone() const override { return line_.Gone(); }
  /// Writes a block into it, as a whole exchange.
  void Teach(int number, const Bytes& data);

  sim::Gateway gateway;

 private:
  sim::SimulatedLine line_;
};

class FakeSerialDriver : public SerialDriver, public Outside {
 public:
  explicit FakeSerialDriver(VirtualEventLoop& loop) : loop_(loop) { loop_.Add(*this); }

  /// A port with a device at its other end; nullptr: an open end.
  void Plug(const std::string& portName, FakeDevice* device) { ports_[portName] = device; }

  /// The verb fails at its next call (or the `skip`-th after it) with that code.
  void Fail(const std::string& verb, std::int32_t code, int skip = 0) { failures_.push_back({verb, code, skip}); }
  /// The next Read or Write ends with 997, and PendingResult `incomplete` times with 996; then with `code`, or well if
  /// 0.
  void MakePending(int incomplete, std::int32_t code = 0) { pending_ = {incomplete, code}; }

  /// The verbs that were called, in order, with their main argument.
  std::vector<std::string> calls;
  /// All bytes that were written.
  Bytes written;
  /// Bytes that wait to be read, put there by the test.
  Bytes input;
  /// The line errors that ClearError reports.
  std::uint32_t lineErrors = 0;
  DeviceControlBlock state;

  // SerialDriver
  Handle Open(std::string_view name) override;
  bool SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) override;
  bool Purge(Handle handle, std::uint32_t flags) override;
  bool SetTimeouts(Handle handle, const CommTimeouts& timeouts) override;
  bool GetState(Handle handle, DeviceControlBlock& dcb) override { return dcb = state, Call(handle, "GetState"); }
  bool BuildState(std::string_view settings, DeviceControlBlock& dcb) override;
  bool SetState(Handle handle, const DeviceControlBlock& dcb) override;
  bool ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) override;
  bool Read(Handle handle, std::uint32_t count, Bytes& data) override;
  bool Write(Handle handle, std::string_view data, std::uint32_t& written) override;
  bool PendingResult(Handle handle, std::uint32_t& count) override;
  WaitFor PendingWait(Handle) const override { return {-1, WaitFor::ToWrite, outgoing_ ? giveUp_ : loop_.Now()}; }
  bool Close(Handle handle) override;
  std::int32_t LastError() const override { return lastError_; }
  std::string ErrorText(std::int32_t code) const override {
    return "  words of " + std::to_string(code) + std::string(" \0x", 3);
  }
  int WaitHandle(Handle handle) const override;

  // Outside
  std::optional<Time> NextDue() const override { return Device() ? Device()->NextDue() : std::nullopt; }
  void RunDue(Time now) override;
  bool Readable(int fd) const override { return fd == WaitFd && (!input.empty() || (Device() && Device()->Gone())); }

 private:
  static constexpr int WaitFd = 1000;  // of no system

  /// Lets the bytes through to the device.
  std::uint32_t Carry(std::string_view data);
  bool Call(const std::string& verb);
  bool Call(Handle handle, const std::string& verb);
  /// True if what has moved so many bytes is done by now.
  bool Done(std::uint32_t count);
  /// At the other end of the open port; nullptr if there is none.
  FakeDevice* Device() const { return open_ ? ports_.at(*open_) : nullptr; }

  VirtualEventLoop& loop_;
  std::map<std::string, FakeDevice*> ports_;
  std::optional<std::string> open_;  // name of the open port: one is enough for the system
  std::vector<std::tuple<std::string, std::int32_t, int>> failures_;  // verb, code, calls until then
  std::optional<std::pair<int, std::int32_t>> pending_;
  std::uint32_t pendingCount_ = 0;
  bool held_ = false;              // by XOFF
  std::optional<Bytes> outgoing_;  // a write that it holds back
  Time giveUp_{0};                 // the time-out of that write
  std::int32_t lastError_ = 0;
};

}  // namespace vk32
