// A whole number of any width, by reference.
#include "core/NumberRef.h"

#include <limits>
#include <type_traits>

#include "platform/Fault.h"

namespace vk32 {

std::int32_t NumberRef::Get() const {
  return std::visit([](const auto* number) { return static_cast<std::int32_t>(*number); }, number_);
}

void NumberRef::Set(std::int32_t value) const {
  std::visit(
      [value](auto* number) {
        using Number = std::remove_pointer_t<decltype(number)>;
        using Limits = std::numeric_limits<Number>;
        if (value < Limits::min() || value > Limits::max()) throw RuntimeFault(RuntimeFault::Overflow);
        *number = static_cast<Number>(value);
      },
      number_);
}

}  // namespace vk32
