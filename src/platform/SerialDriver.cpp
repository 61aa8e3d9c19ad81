// The settings text of a port.
#include "platform/SerialDriver.h"

#include <charconv>
#include <iterator>

namespace vk32 {
namespace {

bool TakeBaud(std::string_view value, DeviceControlBlock& dcb) {
  if (value.empty() || value.front() < '1' || value.front() > '9') return false;
  const char* end = value.data() + value.size();
  const auto [stopped, fault] = std::from_chars(value.data(), end, dcb.BaudRate);
  return fault == std::errc{} && stopped == end;
}

bool TakeParity(std::string_view value, DeviceControlBlock& dcb) {
  if (value != "N" && value != "O" && value != "E") return false;
  dcb.Parity = value.front();
  return true;
}

bool TakeDigit(std::string_view value, char lowest, char highest, std::uint8_t& field) {
  if (value.size() != 1 || value.front() < lowest || value.front() > highest) return false;
  field = static_cast<std::uint8_t>(value.front() - '0');
  return true;
}

struct Setting {
  std::string_view key;
  bool (*take)(std::string_view value, DeviceControlBlock& dcb);
};

constexpr Setting Settings[] = {
    {"baud", TakeBaud},
    {"parity", TakeParity},
    {"data", [](std::string_view value, DeviceControlBlock& dcb) { return TakeDigit(value, '5', '8', dcb.ByteSize); }},
    {"stop", [](std::string_view value, DeviceControlBlock& dcb) { return TakeDigit(value, '1', '2', dcb.StopBits); }},
};

constexpr unsigned AllSeen = (1u << std::size(Settings)) - 1;

}  // namespace

bool ParseSettings(std::string_view settings, DeviceControlBlock& dcb) {
  DeviceControlBlock parsed = dcb;
  unsigned seen = 0;
  for (bool more = true; more;) {
    const auto blank = settings.find(' ');
    const auto part = settings.substr(0, blank);
    const auto equals = part.find('=');
    if (equals == std::string_view::npos) return false;
    unsigned bit = 1;
    for (const Setting& setting : Settings) {
      if (part.substr(0, equals) == setting.key) {
        if ((seen & bit) != 0 || !setting.take(part.substr(equals + 1), parsed)) return false;
        break;
      }
      bit <<= 1;
    }
    if (bit > AllSeen) return false;
    seen |= bit;
    more = blank != std::string_view::npos;
    if (more) settings.remove_prefix(blank + 1);
  }
  if (seen != AllSeen) return false;
  dcb = parsed;
  return true;
}

}  // namespace vk32
