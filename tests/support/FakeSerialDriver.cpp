// A serial driver for tests, and the devices at its other end.
#include "support/FakeSerialDriver.h"

#include <algorithm>
#include <cerrno>

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {

ScriptedDevice& ScriptedDevice::On(Bytes message, std::vector<Reply> replies) {
  exchanges_.push_back({std::move(message), std::move(replies)});
  return *this;
}

void ScriptedDevice::FromHost(std::string_view bytes, Time now) {
  for (const char byte : bytes) {
    pending_ += byte;
    if (exchanges_.empty() || pending_ != exchanges_.front().message) continue;
    for (const Reply& reply : exchanges_.front().replies) says_[now + reply.delay] += reply.bytes;
    exchanges_.pop_front();
    pending_.clear();
  }
}

Bytes ScriptedDevice::ToHost(Time now) {
  Bytes bytes;
  while (!says_.empty() && says_.begin()->first <= now) {
    bytes += says_.begin()->second;
    says_.erase(says_.begin());
  }
  return bytes;
}

std::optional<Time> ScriptedDevice::NextDue() const {
  return says_.empty() ? std::nullopt : std::optional(says_.begin()->first);
}

GatewayDevice::GatewayDevice(std::string_view product, sim::Misbehaviour misbehaviour, bool pace)
    : gateway(*sim::FindGatewayKind(product), misbehaviour),
      line_(gateway, pace ? sim::SimulatedLine::ByteTime(sim::FindGatewayKind(product)->baudRate) : Time{0}) {}

void GatewayDevice::Teach(int number, const Bytes& data) {
  const auto size = static_cast<int>(data.size());
  const Bytes body = Bytes{Chr(BlockFrame::Write), '\0', Chr(number), '\0', Chr(size)} + data;
  FromHost(BlockFrame::Start + Chr(size + 6) + body + Checksum8(body, size + 5) + EndOfExchange, {});
  ToHost({});
}

FakeSerialDriver::FakeSerialDriver(VirtualEventLoop& loop) : loop_(loop) { loop_.Add(*this); }

FakeSerialDriver::~FakeSerialDriver() { loop_.Remove(*this); }

void FakeSerialDriver::Fail(const std::string& verb, std::int32_t code, int skip) {
  failures_.insert({verb, {skip, code}});
}

void FakeSerialDriver::MakePending(int incomplete, std::int32_t code) { pending_ = {incomplete, code}; }

bool FakeSerialDriver::Call(const std::string& verb, const std::string& argument) {
  calls.push_back(argument.empty() ? verb : verb + " " + argument);
  for (auto at = failures_.lower_bound(verb); at != failures_.upper_bound(verb); ++at) {
    if (at->second.first-- > 0) continue;
    lastError_ = at->second.second;
    failures_.erase(at);
    return false;
  }
  return true;
}

bool FakeSerialDriver::Known(Handle handle) {
  const bool known = handle == 1 && open_ && ports_.contains(*open_);
  FakeDevice* const device = known ? ports_[*open_] : nullptr;
  if (known && !(device && device->Gone())) return true;
  lastError_ = known ? EIO : EBADF;
  return false;
}

SerialDriver::Handle FakeSerialDriver::Open(std::string_view name) {
  const bool works = Call("Open", std::string(name));
  const std::string port(name.substr(4));
  if (!works) return InvalidHandle;
  if (!ports_.contains(port)) {
    lastError_ = ENOENT;
    return InvalidHandle;
  }
  open_ = port;
  state.fOutX = false;
  held_ = false;
  return 1;
}

bool FakeSerialDriver::SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) {
  return Call("SetupQueues", std::to_string(inQueue) + " " + std::to_string(outQueue)) && Known(handle);
}

bool FakeSerialDriver::Purge(Handle handle, std::uint32_t flags) {
  if (!Call("Purge", std::to_string(flags)) || !Known(handle)) return false;
  RunDue(loop_.Now());
  if ((flags & 1) != 0) outgoing_.reset();
  if ((flags & 8) != 0) input.clear();
  return true;
}

bool FakeSerialDriver::SetTimeouts(Handle handle, const CommTimeouts& timeouts) {
  return Call("SetTimeouts", std::to_string(timeouts.ReadIntervalTimeout) + " " +
                                 std::to_string(timeouts.ReadTotalTimeoutMultiplier) + " " +
                                 std::to_string(timeouts.ReadTotalTimeoutConstant) + " " +
                                 std::to_string(timeouts.WriteTotalTimeoutMultiplier) + " " +
                                 std::to_string(timeouts.WriteTotalTimeoutConstant)) &&
         Known(handle);
}

bool FakeSerialDriver::GetState(Handle handle, DeviceControlBlock& dcb) {
  if (!Call("GetState") || !Known(handle)) return false;
  dcb = state;
  return true;
}

bool FakeSerialDriver::BuildState(std::string_view settings, DeviceControlBlock& dcb) {
  if (!Call("BuildState", std::string(settings))) return false;
  lastError_ = EINVAL;
  return ParseSettings(settings, dcb);
}

bool FakeSerialDriver::SetState(Handle handle, const DeviceControlBlock& dcb) {
  if (!Call("SetState", std::to_string(dcb.BaudRate) + (dcb.fOutX ? " XON" : " NOXON")) || !Known(handle)) return false;
  state = dcb;
  held_ = held_ && state.fOutX;
  return true;
}

bool FakeSerialDriver::ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) {
  if (!Call("ClearError")) return false;
  RunDue(loop_.Now());
  errors = lineErrors;
  status.cbInQue = static_cast<std::int32_t>(input.size());
  return Known(handle);
}

bool FakeSerialDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  if (!Call("Read", std::to_string(count)) || !Known(handle)) return false;
  data = input.substr(0, count);
  input.erase(0, count);
  if (!pending_) return true;
  pendingCount_ = static_cast<std::uint32_t>(data.size());
  lastError_ = ErrorIoPending;
  return false;
}

std::uint32_t FakeSerialDriver::Carry(std::string_view data) {
  const Bytes gone(data.substr(0, writeLimit.value_or(UINT32_MAX)));
  written += gone;
  if (FakeDevice* device = ports_[*open_]) device->FromHost(gone, loop_.Now());
  return static_cast<std::uint32_t>(gone.size());
}

bool FakeSerialDriver::Write(Handle handle, std::string_view data, std::uint32_t& count) {
  if (!Call("Write", std::to_string(data.size())) || !Known(handle)) return false;
  RunDue(loop_.Now());
  if (held_) {
    outgoing_ = data;
    giveUp_ = loop_.Now() + std::chrono::seconds(data.size());
    lastError_ = ErrorIoPending;
    return false;
  }
  count = Carry(data);
  if (!pending_) return true;
  pendingCount_ = count;
  lastError_ = ErrorIoPending;
  return false;
}

bool FakeSerialDriver::PendingResult(Handle handle, std::uint32_t& count) {
  calls.emplace_back("PendingResult");
  count = 0;
  if (!pending_) {
    if (!Known(handle)) return false;
    const bool done = outgoing_ && (!held_ || loop_.Now() >= giveUp_);
    lastError_ = outgoing_ ? ErrorIoIncomplete : EINVAL;
    if (done && !held_) count = Carry(*outgoing_);
    if (done) outgoing_.reset();
    return done;
  }
  auto& [incomplete, code] = *pending_;
  if (incomplete-- > 0) {
    lastError_ = ErrorIoIncomplete;
    return false;
  }
  lastError_ = code;
  count = pendingCount_;
  pending_.reset();
  return lastError_ == 0;
}

bool FakeSerialDriver::Close(Handle handle) {
  if (!Call("Close")) return false;
  const bool known = handle == 1 && open_;
  open_.reset();
  outgoing_.reset();
  input.clear();
  lastError_ = EBADF;
  return known;
}

std::optional<Time> FakeSerialDriver::NextDue() const {
  const auto port = open_ ? ports_.find(*open_) : ports_.end();
  return port == ports_.end() || !port->second ? std::nullopt : port->second->NextDue();
}

void FakeSerialDriver::RunDue(Time now) {
  const auto port = open_ ? ports_.find(*open_) : ports_.end();
  if (port == ports_.end() || !port->second) return;
  for (const char byte : port->second->ToHost(now)) {
    const bool flow = state.fOutX && (byte == state.XonChar || byte == state.XoffChar);
    if (flow) {
      held_ = byte == state.XoffChar;
    } else {
      input += byte;
    }
  }
}

}  // namespace vk32
