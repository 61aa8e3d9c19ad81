// A whole number of any width, by reference: what a list stores its code in, and a field of a block its value.
#pragma once

#include <cstdint>
#include <variant>

namespace vk32 {

class NumberRef {
 public:
  NumberRef(std::int32_t& number) : number_(&number) {}
  NumberRef(std::int16_t& number) : number_(&number) {}
  NumberRef(std::uint8_t& number) : number_(&number) {}

  std::int32_t Get() const;
  /// Faults 6 if the value doesn't fit.
  void Set(std::int32_t value) const;

 private:
  std::variant<std::int32_t*, std::int16_t*, std::uint8_t*> number_;
};

}  // namespace vk32
