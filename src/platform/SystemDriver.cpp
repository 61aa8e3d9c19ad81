// What the serial drivers of all systems share.
#include "platform/SystemDriver.h"

#include <algorithm>

#include "platform/PortHolder.h"
#include "platform/SystemName.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view NamePrefix = R"(\\.\)";

// A caller cuts the text of an error at 255 characters.
constexpr std::size_t MaxErrorText = 249;

// A write without a time-out ends all the same, so that no event loop has to count beyond this.
constexpr std::uint64_t MaxWriteMs = 24 * 60 * 60 * 1000;

}  // namespace

bool SystemDriver::BuildState(std::string_view settings, DeviceControlBlock& dcb) {
  return ParseSettings(settings, dcb) || Fail(WrongSetting());
}

std::string SystemDriver::ErrorText(std::int32_t code) const {
  std::string text = SystemWords(code);
  std::string advice;
  if (code == failedOpen_.code) {
    advice = Advice(failedOpen_);
  } else if (code == lastError_ && TroubleOf(code, false) == PortTrouble::Gone) {
    advice = "the serial device is gone: plug it in again";
  }
  if (code != 0 && !advice.empty()) text += ": " + advice;
  if (text.size() > MaxErrorText) text.resize(MaxErrorText);
  return text;
}

std::string SystemDriver::Advice(const FailedOpen& failed) const {
  const std::string& path = failed.device.path;
  switch (TroubleOf(failed.code, true)) {
    case PortTrouble::Missing: {
      const std::string nothing = "no serial device stands behind " + failed.portName;
      if (!path.empty()) {
        return nothing + ": " + Short(failed.device.Description()) +
               " is missing; plug it in, or choose the port again";
      }
      const std::string ignored = names_.Ignored(failed.portName);
      return ignored.empty() ? nothing : nothing + ": " + ignored;
    }
    case PortTrouble::Forbidden: return AccessAdvice(path);
    case PortTrouble::Busy: {
      const auto holder = HolderOf(path);
      const std::string who =
          holder ? holder->program + " (process " + std::to_string(holder->process) + ")" : "another program";
      return Short(path) + " is in use by " + who + ": end it and try again";
    }
    case PortTrouble::NoSerialPort: return Short(path) + " is no serial port";
    case PortTrouble::NoHardware: return "no serial hardware answers behind " + Short(path);
    case PortTrouble::None:
    case PortTrouble::Gone: break;
  }
  return "";
}

bool SystemDriver::Fail(std::int32_t code) {
  lastError_ = code;
  failedOpen_ = {};
  return false;
}

SerialDriver::Handle SystemDriver::FailOpen(std::int32_t code, std::string_view portName, const PortDevice& device) {
  Fail(code);
  failedOpen_ = {code, std::string(portName), device};
  return InvalidHandle;
}

std::string_view SystemDriver::PortNameIn(std::string_view name) {
  if (name.starts_with(NamePrefix)) name.remove_prefix(NamePrefix.size());
  return name;
}

Time SystemDriver::ByteTime(std::int32_t baud) { return baud > 0 ? Time{10'000'000'000 / baud} : Time{1ms}; }

Time SystemDriver::EndOfWrite(Time begun, const CommTimeouts& timeouts, std::size_t count) {
  const std::uint64_t perByte = timeouts.WriteTotalTimeoutMultiplier;
  const std::uint64_t wanted = perByte * count + timeouts.WriteTotalTimeoutConstant;
  const bool endless = perByte == 0 && wanted == 0;
  return begun + std::chrono::milliseconds(endless ? MaxWriteMs : std::min(wanted, MaxWriteMs));
}

std::string SystemDriver::Short(const std::string& path) {
  constexpr std::size_t Longest = 64;
  return path.size() <= Longest ? path : "..." + path.substr(path.size() - Longest + 3);
}

}  // namespace vk32
