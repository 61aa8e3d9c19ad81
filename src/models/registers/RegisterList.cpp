// Lists whose choice is held in a byte of the parameter registers.
#include "models/registers/RegisterList.h"

#include "core/Convert.h"

namespace vk32 {
namespace {

std::vector<std::string> TextsOf(const ChoiceTable& choices) {
  std::vector<std::string> texts;
  for (const Choice& choice : choices) texts.push_back(choice.text);
  return texts;
}

}  // namespace

RegisterList::RegisterList(const Container& container, ControlName name, Place place, Parameters& registers,
                           RegisterByte byte, ChoiceTable choices, std::string defaultText, const Handler& then)
    : ComboBox(container, name, place, TextsOf(choices), {}),
      byte_(byte.In(registers)),
      choices_(std::move(choices)),
      default_(std::move(defaultText)) {
  OnClick = Handler([this, then] {
    Encode();
    then.Run(OwnerForm(), 0);
  });
}

void RegisterList::Encode() {
  for (const Choice& choice : choices_) {
    if (choice.text == Text.Value()) byte_ = SetBits(ClearBits(byte_, choice.mask), choice.writes);
  }
}

void RegisterList::Decode() {
  for (const Choice& choice : choices_) {
    if ((byte_ & choice.test) != choice.value) continue;
    Text = choice.text;
    return;
  }
}

}  // namespace vk32
