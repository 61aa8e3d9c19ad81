// The names by which a simulated gateway is told to misbehave.
#include "sim/Misbehaviour.h"

#include <charconv>
#include <string_view>

namespace vk32::sim {
namespace {

struct MisbehaviourName {
  std::string_view name;
  bool numbered;
  void (*set)(Misbehaviour& misbehaviour, int number);
};

constexpr MisbehaviourName MisbehaviourNames[] = {
    {"silent", false, [](auto& how, int) { how.silent = true; }},
    {"late", true, [](auto& how, int number) { how.late = std::chrono::milliseconds(number); }},
    {"junk", false, [](auto& how, int) { how.junk = true; }},
    {"bad-checksum", false, [](auto& how, int) { how.badChecksum = true; }},
    {"short", true, [](auto& how, int number) { how.shortBy = number; }},
    {"deaf-block", true, [](auto& how, int number) { how.deafBlock = number; }},
    {"info-pieces", true, [](auto& how, int number) { how.infoPieces = number; }},
    {"hold", true, [](auto& how, int number) { how.hold = std::chrono::milliseconds(number); }},
    {"unplug", true, [](auto& how, int number) { how.unplugAfter = number; }},
    {"banner", true, [](auto& how, int number) { how.bannerLength = number; }},
    {"no-ready", false, [](auto& how, int) { how.noReady = true; }},
    {"no-burn", false, [](auto& how, int) { how.noBurn = true; }},
    {"hold-for-good", false, [](auto& how, int) { how.holdForGood = true; }},
    {"nak", true, [](auto& how, int number) { how.naks = number; }},
    {"cancel", false, [](auto& how, int) { how.cancel = true; }},
};

}  // namespace

std::string SetMisbehaviour(const std::string& text, Misbehaviour& misbehaviour) {
  const std::size_t equals = text.find('=');
  int number = 0;
  const bool numbered = equals != std::string::npos;
  if (numbered) {
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data() + equals + 1, end, number).ptr != end || number < 0) return "not a number: " + text;
  }
  for (const MisbehaviourName& known : MisbehaviourNames) {
    if (known.name != text.substr(0, equals) || known.numbered != numbered) continue;
    known.set(misbehaviour, number);
    return {};
  }
  return std::string("not one of: ") + MisbehaviourHelp;
}

}  // namespace vk32::sim
