// How a form is walked by keys, and what its controls are called.
#include "Navigation.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "Text.h"
#include "Theme.h"
#include "forms/Tables.h"
#include "resources/Pictures.h"

namespace vk32 {
namespace {

constexpr int SameRow = 6;        // px between the middles of what stands in one row
constexpr int CompanionGap = 10;  // px from a control to the label that speaks for it

const Label* AsLabel(const Control* control) {
  return control->GetKind() == Control::Kind::Label ? static_cast<const Label*>(control) : nullptr;
}

bool IsMark(const Control& control) {
  return control.GetKind() == Control::Kind::CheckBox || control.GetKind() == Control::Kind::OptionButton;
}

/// The words a control brings itself.
QString OwnWords(const Control& control) {
  switch (control.GetKind()) {
    case Control::Kind::TextBox:
    case Control::Kind::ComboBox: return {};
    default: return FromWords(control.Words());
  }
}

std::vector<const Label*> LabelsBeside(const Control& control) {
  std::vector<const Label*> labels;
  for (const Control* other : control.OwnerForm().Controls()) {
    const Label* label = AsLabel(other);
    if (label && label->Parent() == control.Parent() && label->Visible && !label->Caption.Value().empty()) {
      labels.push_back(label);
    }
  }
  return labels;
}

bool InOneRow(const QRect& a, const QRect& b) {
  return std::abs(a.center().y() - b.center().y()) <= std::max(SameRow, std::abs(a.height() - b.height()) / 2);
}

/// The label right above a field, from the same left edge.
const Control* WordsAbove(const Control& control) {
  const QRect place = PlaceOnForm(control);
  for (const Label* label : LabelsBeside(control)) {
    const QRect area = PlaceOnForm(*label);
    const int gap = place.top() - area.bottom() - 1;
    if (label->role == TextRole::Body && area.left() == place.left() && gap >= 0 && gap <= CompanionGap) return label;
  }
  return nullptr;
}

bool CanNameItsRow(const Control& control) {
  if (const Label* label = AsLabel(&control))
    return label->role == TextRole::Body || label->role == TextRole::TableText;
  return IsMark(control);
}

/// What brings words and ends, in the same row, where the control begins or before.
const Control* WordsAtLeft(const Control& control) {
  const QRect place = PlaceOnForm(control);
  const Control* found = nullptr;
  for (const Control* other : control.OwnerForm().Controls()) {
    if (!CanNameItsRow(*other) || other->Parent() != control.Parent() || !other->Visible || other->Words().empty()) {
      continue;
    }
    const QRect area = PlaceOnForm(*other);
    if (!InOneRow(area, place) || area.right() > place.left()) continue;
    if (!found || area.left() > PlaceOnForm(*found).left()) found = other;
  }
  return found;
}

const Control* WordsOf(const Control& field) {
  const Control* words = WordsAtLeft(field);
  return words ? words : WordsAbove(field);
}

/// The heads of the column that the control stands in, from top to bottom.
QString ColumnHeads(const Control& control) {
  const QRect place = PlaceOnForm(control);
  std::vector<const Label*> heads;
  for (const Label* label : LabelsBeside(control)) {
    const QRect area = PlaceOnForm(*label);
    const int middle = place.center().x();
    if (label->role == TextRole::TableHead && area.bottom() < place.top() + SameRow && area.left() <= middle &&
        middle <= area.right()) {
      heads.push_back(label);
    }
  }
  std::stable_sort(heads.begin(), heads.end(),
                   [](const Label* a, const Label* b) { return PlaceOnForm(*a).top() < PlaceOnForm(*b).top(); });
  QStringList words;
  for (const Label* head : heads) words += FromWords(head->Caption.Value());
  return words.join(u' ');
}

/// The nearest heading or title above the control, in its frame or in one around that; or the title of the window.
QString HeadingAbove(const Control& control) {
  for (const Control* inner = &control; inner; inner = inner->Parent()) {
    const int place = PlaceOnForm(*inner).top();
    const Label* found = nullptr;
    for (const Label* label : LabelsBeside(*inner)) {
      const bool heads = label->role == TextRole::Heading || label->role == TextRole::HeadingLink ||
                         label->role == TextRole::Title || label->role == TextRole::Product;
      const int top = PlaceOnForm(*label).top();
      if (heads && top < place && (!found || top > PlaceOnForm(*found).top())) found = label;
    }
    if (found) return FromWords(found->Caption.Value());
  }
  const std::string& caption = control.OwnerForm().Caption;
  return caption.empty() ? QString::fromLatin1(control.Name()) : FromWords(caption);
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

/// A letter that is still free: the first of a word if possible.
QChar FreeLetter(const QString& words, const std::set<QChar>& taken) {
  const auto isFree = [&](QChar letter) { return letter >= u'A' && letter <= u'Z' && !taken.count(letter); };
  for (qsizetype at = 0; at < words.size(); ++at) {
    if ((at == 0 || !words[at - 1].isLetter()) && isFree(words[at].toUpper())) return words[at].toUpper();
  }
  for (const QChar character : words) {
    if (isFree(character.toUpper())) return character.toUpper();
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

bool IsLink(const Label& label) {
  return label.role == TextRole::Link || label.role == TextRole::HeadingLink || label.role == TextRole::BodyLink;
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

const Label* CompanionOf(const Control& control) {
  const QRect place = PlaceOnForm(control);
  if (!IsMark(control) || place.width() > BareMarkWidth) return nullptr;
  for (const Label* label : LabelsBeside(control)) {
    const QRect area = PlaceOnForm(*label);
    const int gap = area.left() - place.right() - 1;
    if (label->IsClickable() && !IsLink(*label) && InOneRow(area, place) && gap >= 0 && gap <= CompanionGap) {
      return label;
    }
  }
  return nullptr;
}

QRect PlaceOnForm(const Control& control) {
  int left = control.Left, top = control.Top;
  for (const Frame* frame = control.Parent(); frame; frame = frame->Parent()) {
    left += frame->Left;
    top += frame->Top;
  }
  return QRect(QPoint(ToPixels(left), ToPixels(top)),
               QPoint(ToPixels(left + control.Width) - 1, ToPixels(top + control.Height) - 1));
}

QString AccessibleName(const Control& control) {
  if (QString words = OwnWords(control); !words.isEmpty()) return words;
  if (const Label* companion = CompanionOf(control)) {
    return FromWords(companion->Caption.Value());
  }
  QStringList words;
  if (const QString heads = ColumnHeads(control); !heads.isEmpty()) words += heads;
  if (const Control* label = WordsOf(control)) words += FromWords(label->Words());
  return words.isEmpty() ? HeadingAbove(control) : words.join(u' ');
}

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
