// Lists whose choice is held in a byte of the parameter registers.
#pragma once

#include <cstdint>
#include <string>

#include "core/Globals.h"
#include "models/lists/ChoiceList.h"

namespace vk32 {

enum class Half { High, Low };  // RegisterHigh is the first byte on the wire

/// A byte of the image: byte 2 x index of it, or the one behind.
struct RegisterByte {
  int index;  // 0 to 256
  Half half;

  std::int32_t& In(Parameters& parameters) const {
    return (half == Half::High ? parameters.RegisterHigh : parameters.RegisterLow)[static_cast<std::size_t>(index)];
  }
};

class RegisterList : public ChoiceList {
 public:
  RegisterList(const Container& container, ControlName name, Place place, Parameters& registers, RegisterByte byte,
               ChoiceTable choices, std::string defaultText, const Handler& then = {})
      : ChoiceList(container, name, place, byte.In(registers), std::move(choices), std::move(defaultText), then) {}
};

}  // namespace vk32
