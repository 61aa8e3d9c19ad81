// How a form is walked by keys.
#include "Navigation.h"

#include <algorithm>
#include <set>

#include "Text.h"
#include "Theme.h"
#include "forms/Tables.h"
#include "resources/Pictures.h"

namespace vk32 {
namespace {

const Label* AsLabel(const Control* control) {
  return control->GetKind() == Control::Kind::Label ? static_cast<const Label*>(control) : nullptr;
}

/// The control whose words show the letter that leads to `control`.
const Control* ShowsMarkOf(const Control& control) {
  if (IsButton(control)) return &control;
  if (IsMark(control)) {
    const Label* companion = CompanionOf(control);
    return companion ? static_cast<const Control*>(companion) : &control;
  }
  return IsField(control) ? WordsOf(control) : nullptr;
}

/// The words that the letter is taken from. A picture button keeps its letter when it shows another picture.
QString LetterWords(const Control& shower) {
  const bool picture = shower.GetKind() == Control::Kind::ImageButton;
  const PictureButtonRow* row = picture ? FindPictureButton(shower.Name()) : nullptr;
  return FromWords(row ? std::string(row->words) : shower.Words());
}

/// A letter that is still free: the first of a word if possible; a digit if there is none.
QChar FreeLetter(const QString& words, const std::set<QChar>& taken) {
  const auto isFree = [&](QChar letter) { return letter >= u'A' && letter <= u'Z' && !taken.count(letter); };
  for (qsizetype at = 0; at < words.size(); ++at) {
    if ((at == 0 || !words[at - 1].isLetter()) && isFree(words[at].toUpper())) return words[at].toUpper();
  }
  for (const QChar character : words) {
    if (isFree(character.toUpper())) return character.toUpper();
  }
  for (const QChar character : words) {
    if (character >= u'0' && character <= u'9' && !taken.count(character)) return character;
  }
  return {};
}

/// Who chooses a letter first.
int LetterRank(const Control& control) {
  switch (control.GetKind()) {
    case Control::Kind::ImageButton: return 0;
    case Control::Kind::CommandButton: return 1;
    case Control::Kind::CheckBox:
    case Control::Kind::OptionButton: return 2;
    default: return 3;
  }
}

/// It lies in the frame or in one of the frame's frames.
bool LiesIn(const Control& control, const Frame& frame) {
  for (const Frame* at = control.Parent(); at; at = at->Parent()) {
    if (at == &frame) return true;
  }
  return false;
}

WindowKey KeyOf(const Control& control) {
  switch (control.GetKind()) {
    case Control::Kind::ImageButton: return static_cast<const ImageButton&>(control).key;
    case Control::Kind::CommandButton: return static_cast<const CommandButton&>(control).key;
    default: return WindowKey::None;
  }
}

}  // namespace

bool IsReachable(const Control& control) {
  if (!control.Shown()) return false;
  for (const Control* at = &control; at; at = at->Parent()) {
    if (!at->Enabled) return false;
  }
  return true;
}

bool IsHeading(const Control& control) {
  const Label* label = AsLabel(&control);
  return label && (label->role == TextRole::Heading || label->role == TextRole::HeadingLink ||
                   label->role == TextRole::Title || label->role == TextRole::Product);
}

bool IsCurrentStep(const Control& control) {
  const Label* label = AsLabel(&control);
  return label && label->role == TextRole::Step && label->ForeColor == StepCurrent;
}

bool IsField(const Control& control) {
  switch (control.GetKind()) {
    case Control::Kind::TextBox:
    case Control::Kind::ComboBox:
    case Control::Kind::CheckBox:
    case Control::Kind::OptionButton: return true;
    default: return false;
  }
}

bool IsButton(const Control& control) {
  return control.GetKind() == Control::Kind::ImageButton || control.GetKind() == Control::Kind::CommandButton;
}

bool TakesFocus(const Control& control) {
  if (const Label* label = AsLabel(&control)) return IsLink(*label);
  if (const auto* table = dynamic_cast<const RowTable*>(&control)) return table->CountRows() > 0;
  if (control.GetKind() == Control::Kind::VScrollBar) {
    const auto& bar = static_cast<const VScrollBar&>(control);
    return bar.Max > bar.Min;
  }
  return IsField(control) || IsButton(control);
}

std::vector<OptionButton*> OptionGroup(const OptionButton& option) {
  std::vector<OptionButton*> group;
  for (Control* control : option.OwnerForm().Controls()) {
    if (control->GetKind() == Control::Kind::OptionButton && control->Parent() == option.Parent() &&
        IsReachable(*control)) {
      group.push_back(static_cast<OptionButton*>(control));
    }
  }
  std::stable_sort(group.begin(), group.end(), [](auto* a, auto* b) { return a->TabIndex < b->TabIndex; });
  return group;
}

std::vector<Control*> TabStops(const Form& form) {
  std::vector<Control*> stops;
  for (Control* control : form.Controls()) {
    if (!TakesFocus(*control) || !IsReachable(*control)) continue;
    if (control->GetKind() == Control::Kind::OptionButton) {
      const auto group = OptionGroup(static_cast<OptionButton&>(*control));
      const auto selected =
          std::find_if(group.begin(), group.end(), [](const auto* option) { return option->Value.Value(); });
      if (control != (selected == group.end() ? group.front() : *selected)) continue;
    }
    stops.push_back(control);
  }
  std::stable_sort(stops.begin(), stops.end(), [](auto* a, auto* b) { return a->TabIndex < b->TabIndex; });
  return stops;
}

Control* FirstField(const Form& form, const std::vector<const Frame*>& frames) {
  for (Control* stop : TabStops(form)) {
    const bool locked = stop->GetKind() == Control::Kind::TextBox && static_cast<TextBox*>(stop)->Locked;
    const bool inside = frames.empty() || std::any_of(frames.begin(), frames.end(),
                                                      [stop](const Frame* frame) { return LiesIn(*stop, *frame); });
    if (IsField(*stop) && !locked && inside) return stop;
  }
  return nullptr;
}

Control* ButtonFor(const Form& form, WindowKey key) {
  for (Control* control : form.Controls()) {
    if (IsButton(*control) && KeyOf(*control) == key && IsReachable(*control)) return control;
  }
  return nullptr;
}

QRect PlaceOnForm(const Control& control) {
  const Place place = PlaceOf(control);
  return QRect(QPoint(ToPixels(place.left), ToPixels(place.top)),
               QPoint(ToPixels(place.left + place.width) - 1, ToPixels(place.top + place.height) - 1));
}

QString AccessibleName(const Control& control) { return FromWords(NameOf(control)); }

Mnemonics ChooseMnemonics(const Form& form) {
  std::vector<Control*> candidates;
  for (Control* control : form.Controls()) {
    // Picture buttons stand at the foot of every page: they have their letters also where they don't show.
    const bool picture = control->GetKind() == Control::Kind::ImageButton;
    if (picture || (TakesFocus(*control) && IsReachable(*control))) candidates.push_back(control);
  }
  std::stable_sort(candidates.begin(), candidates.end(), [](const Control* a, const Control* b) {
    return std::pair(LetterRank(*a), a->TabIndex) < std::pair(LetterRank(*b), b->TabIndex);
  });
  Mnemonics mnemonics;
  std::set<QChar> taken;
  for (Control* control : candidates) {
    const Control* shower = ShowsMarkOf(*control);
    if (!shower || mnemonics.marks.count(shower)) continue;
    const QChar letter = FreeLetter(LetterWords(*shower), taken);
    if (letter.isNull()) continue;
    taken.insert(letter);
    if (!IsReachable(*control)) continue;
    mnemonics.targets[letter] = control;
    mnemonics.marks[shower] = letter;
  }
  return mnemonics;
}

}  // namespace vk32
