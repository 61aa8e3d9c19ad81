// A serial driver for tests, and the devices at its other end.
#include "support/FakeSerialDriver.h"

#include <cerrno>

#include "core/Convert.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"

namespace vk32 {

template <class... Numbers>
static std::string Words(const char* verb, Numbers... arguments) {
  return (verb + ... + (" " + std::to_string(arguments)));
}

void ScriptedDevice::FromHost(std::string_view bytes, Time now) {
  for (const char byte : bytes) {
    pending_ += byte;
    if (exchanges_.empty() || pending_ != exchanges_.front().first) continue;
    for (const Reply& reply : exchanges_.front().second) says[now + reply.delay] += reply.bytes;
    exchanges_.pop_front();
    pending_.clear();
  }
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

bool FakeSerialDriver::Call(const std::string& verb) {
  calls.push_back(verb);
  for (auto& [failing, code, skip] : failures_) {
    if (failing != verb.substr(0, verb.find(' ')) || skip-- != 0) continue;
    lastError_ = code;
    return false;
  }
  return true;
}

bool FakeSerialDriver::Call(Handle handle, const std::string& verb) {
  if (!Call(verb)) return false;
  const bool known = handle == 1 && open_;
  if (known && !(Device() && Device()->Gone())) return true;
  lastError_ = known ? EIO : EBADF;
  return false;
}

SerialDriver::Handle FakeSerialDriver::Open(std::string_view name) {
  lastError_ = ENOENT;
  if (!Call("Open " + std::string(name)) || !ports_.contains(std::string(name.substr(4)))) return InvalidHandle;
  open_ = name.substr(4);
  state.fOutX = held_ = false;
  return 1;
}

bool FakeSerialDriver::SetupQueues(Handle handle, std::uint32_t inQueue, std::uint32_t outQueue) {
  return Call(handle, Words("SetupQueues", inQueue, outQueue));
}

bool FakeSerialDriver::Purge(Handle handle, std::uint32_t flags) {
  if (!Call(handle, Words("Purge", flags))) return false;
  RunDue(loop_.Now());
  if ((flags & 1) != 0) outgoing_.reset();
  if ((flags & 8) != 0) input.clear();
  return true;
}

bool FakeSerialDriver::SetTimeouts(Handle handle, const CommTimeouts& t) {
  return Call(handle, Words("SetTimeouts", t.ReadIntervalTimeout, t.ReadTotalTimeoutMultiplier,
                            t.ReadTotalTimeoutConstant, t.WriteTotalTimeoutMultiplier, t.WriteTotalTimeoutConstant));
}

bool FakeSerialDriver::BuildState(std::string_view settings, DeviceControlBlock& dcb) {
  lastError_ = EINVAL;
  return Call("BuildState " + std::string(settings)) && ParseSettings(settings, dcb);
}

bool FakeSerialDriver::SetState(Handle handle, const DeviceControlBlock& dcb) {
  if (!Call(handle, Words("SetState", dcb.BaudRate) + (dcb.fOutX ? " XON" : " NOXON"))) return false;
  state = dcb;
  held_ = held_ && state.fOutX;
  return true;
}

bool FakeSerialDriver::ClearError(Handle handle, std::uint32_t& errors, CommStatus& status) {
  RunDue(loop_.Now());
  errors = lineErrors;
  status.cbInQue = static_cast<std::int32_t>(input.size());
  return Call(handle, "ClearError");
}

bool FakeSerialDriver::Done(std::uint32_t count) {
  pendingCount_ = count;
  if (pending_) lastError_ = ErrorIoPending;
  return !pending_;
}

bool FakeSerialDriver::Read(Handle handle, std::uint32_t count, Bytes& data) {
  if (!Call(handle, Words("Read", count))) return false;
  data = input.substr(0, count);
  input.erase(0, count);
  const auto came = static_cast<std::uint32_t>(data.size());
  if (pending_) data += '?';  // a part of the buffer that nothing came into
  return Done(came);
}

std::uint32_t FakeSerialDriver::Carry(std::string_view data) {
  written += data;
  if (Device()) Device()->FromHost(data, loop_.Now());
  return static_cast<std::uint32_t>(data.size());
}

bool FakeSerialDriver::Write(Handle handle, std::string_view data, std::uint32_t& count) {
  count = 1;  // as a failure may leave it
  if (!Call(handle, Words("Write", data.size()))) return false;
  RunDue(loop_.Now());
  if (!held_) return Done(count = Carry(data));
  outgoing_ = data;
  giveUp_ = loop_.Now() + std::chrono::seconds(data.size());
  lastError_ = ErrorIoPending;
  return false;
}

bool FakeSerialDriver::PendingResult(Handle handle, std::uint32_t& count) {
  if (!Call(handle, "PendingResult")) return false;
  count = 0;
  const bool incomplete = pending_ ? pending_->first-- > 0 : outgoing_ && held_ && loop_.Now() < giveUp_;
  if (incomplete || (!pending_ && !outgoing_)) {
    lastError_ = incomplete ? ErrorIoIncomplete : EINVAL;
    return false;
  }
  if (pending_) {
    count = pendingCount_;
    lastError_ = pending_->second;
    pending_.reset();
    return lastError_ == 0;
  }
  if (!held_) count = Carry(*outgoing_);
  outgoing_.reset();
  return true;
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

int FakeSerialDriver::WaitHandle(Handle handle) const {
  const auto port = handle == 1 && open_ ? ports_.find(*open_) : ports_.end();
  return port == ports_.end() || (port->second && port->second->Gone()) ? -1 : WaitFd;
}

void FakeSerialDriver::RunDue(Time now) {
  for (const char byte : Device() ? Device()->ToHost(now) : Bytes()) {
    const bool flow = state.fOutX && (byte == state.XonChar || byte == state.XoffChar);
    if (flow) held_ = byte == state.XoffChar;
    if (!flow) input += byte;
  }
}

}  // namespace vk32
