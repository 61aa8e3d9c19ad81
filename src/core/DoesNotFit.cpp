// The fault of a value that the device can't hold.
#include "core/DoesNotFit.h"

#include <cctype>

namespace vk32 {
namespace {

std::string Named(const FieldPlace& place) {
  return place.field.empty() ? place.page : place.page + ", " + place.field;
}

template <class Change>
std::string WithFirst(std::string words, Change change) {
  words[0] = static_cast<char>(change(static_cast<unsigned char>(words[0])));
  return words;
}

/// Without its full stop, behind a colon.
std::string AsHint(std::string advice) {
  if (advice.ends_with('.')) advice.pop_back();
  return WithFirst(advice, [](int c) { return std::tolower(c); });
}

}  // namespace

DoesNotFit::DoesNotFit(const FieldPlace& place, const std::string& advice)
    : RuntimeFault(Overflow, Named(place) + ": the device can't hold this value.\r\n" + advice),
      hint_(WithFirst(place.field.empty() ? place.page : place.field, [](int c) { return std::toupper(c); }) + ": " +
            AsHint(advice)),
      control_(place.control) {}

}  // namespace vk32
