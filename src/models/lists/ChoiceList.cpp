// Lists whose choice is held in a number.
#include "models/lists/ChoiceList.h"

#include <algorithm>

#include "core/Convert.h"

namespace vk32 {
namespace {

std::vector<std::string> TextsOf(const ChoiceTable& choices) {
  std::vector<std::string> texts;
  for (const Choice& choice : choices) texts.push_back(choice.text);
  return texts;
}

}  // namespace

ChoiceTable Numbers(int first, int last) {
  ChoiceTable choices;
  for (int n = first; n <= last; ++n) choices.push_back(Code(Str(n), n));
  return choices;
}

ChoiceList::ChoiceList(const Container& container, ControlName name, Place place, NumberRef number, ChoiceTable choices,
                       std::string defaultText, const Handler& then)
    : ComboBox(container, name, place, TextsOf(choices), {}),
      number_(number),
      choices_(std::move(choices)),
      default_(std::move(defaultText)) {
  OnClick = Handler([this, then] {
    Encode();
    then.Run(OwnerForm(), Index().value_or(0));
  });
}

void ChoiceList::SetChoices(ChoiceTable choices) {
  choices_ = std::move(choices);
  SetEntries(TextsOf(choices_));
}

void ChoiceList::Encode() {
  for (const Choice& choice : choices_) {
    if (choice.text == Text.Value()) number_.Set(SetBits(ClearBits(number_.Get(), choice.mask), choice.writes));
  }
}

void ChoiceList::Decode() {
  const std::int32_t number = number_.Get();
  auto picked = std::find_if(choices_.begin(), choices_.end(), [&](const Choice& choice) {
    return choice.test != 0 && (number & choice.test) == choice.value;
  });
  if (picked == choices_.end()) {
    picked = std::find_if(choices_.begin(), choices_.end(), [](const Choice& choice) { return choice.test == 0; });
  }
  if (picked != choices_.end()) Text = std::string(picked->text);
}

}  // namespace vk32
