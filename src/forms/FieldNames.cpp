// What the controls of a form are called.
#include "forms/FieldNames.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace vk32 {
namespace {

// Twips.
constexpr int SameRow = 90;        // between the middles of what stands in one row
constexpr int CompanionGap = 150;  // from a control to the label that speaks for it

const Label* AsLabel(const Control* control) {
  return control->GetKind() == Control::Kind::Label ? static_cast<const Label*>(control) : nullptr;
}

/// A label of one of the roles that has words.
const Label* LabelIn(const Control* control, std::initializer_list<TextRole> roles, bool hiddenToo) {
  const Label* label = AsLabel(control);
  const bool fits = label && (label->Visible || hiddenToo) && !label->Caption.Value().empty() &&
                    std::find(roles.begin(), roles.end(), label->role) != roles.end();
  return fits ? label : nullptr;
}

int RightOf(const Place& place) { return place.left + place.width; }
int BottomOf(const Place& place) { return place.top + place.height; }

Place PlaceInFrame(const Control& control) { return {control.Left, control.Top, control.Width, control.Height}; }

bool InOneRow(const Place& a, const Place& b) {
  const int apart = std::abs(a.top + BottomOf(a) - b.top - BottomOf(b)) / 2;
  return apart <= std::max(SameRow, std::abs(a.height - b.height) / 2);
}

/// The label right above a field, from the same left edge.
const Control* WordsAbove(const Control& field) {
  const Place place = PlaceInFrame(field);
  for (const Control* other : field.Siblings()) {
    const Label* label = LabelIn(other, {TextRole::Body}, !field.Visible);
    if (!label || label->Left != place.left) continue;
    const int gap = place.top - BottomOf(PlaceInFrame(*label));
    if (gap >= 0 && gap <= CompanionGap) return label;
  }
  return nullptr;
}

/// What brings words and ends, in the same row, where the field begins or before: the nearest, or the first of all.
const Control* WordsAtLeft(const Control& field, bool nearest) {
  const Place place = PlaceInFrame(field);
  const Control* found = nullptr;
  for (const Control* other : field.Siblings()) {
    const bool mark = IsMark(*other) && other->Visible && !other->Words().empty();
    if (!mark && !LabelIn(other, {TextRole::Body, TextRole::TableText}, !field.Visible)) continue;
    const Place area = PlaceInFrame(*other);
    if (!InOneRow(area, place) || RightOf(area) > place.left) continue;
    if (!found || (area.left > found->Left) == nearest) found = other;
  }
  return found;
}

/// The frame around the rows of a table, or nullptr.
const Frame* TableAround(const Control& control) {
  for (const Frame* frame = control.Parent(); frame; frame = frame->Parent()) {
    if (frame->fill == Fill::Table) return frame;
  }
  return nullptr;
}

/// Heads stand beside the cells, or in a frame of their own beside that of the rows, which slides.
std::vector<const Label*> HeadsFor(const Control& cell, const Frame* table) {
  std::vector<const Label*> heads;
  const auto add = [&](const std::vector<Control*>& controls) {
    for (const Control* control : controls) {
      if (const Label* label = LabelIn(control, {TextRole::TableHead}, !cell.Visible)) heads.push_back(label);
    }
  };
  add(cell.Siblings());
  for (const Control* other : table ? table->Siblings() : std::vector<Control*>()) {
    const bool frame = other != table && other->GetKind() == Control::Kind::Frame;
    if (frame) add(static_cast<const Frame*>(other)->Children());
  }
  return heads;
}

/// The lowest label of one of the roles above the control, over some of its width.
const Label* NearestAbove(const Control& control, std::initializer_list<TextRole> roles) {
  const Place place = PlaceInFrame(control);
  const Label* found = nullptr;
  for (const Control* other : control.Siblings()) {
    const Label* label = LabelIn(other, roles, true);
    if (!label || label->Top >= place.top || (found && label->Top <= found->Top)) continue;
    if (label->Left < RightOf(place) && place.left < RightOf(PlaceInFrame(*label))) found = label;
  }
  return found;
}

}  // namespace

Place PlaceOf(const Control& control) {
  Place place = PlaceInFrame(control);
  for (const Frame* frame = control.Parent(); frame; frame = frame->Parent()) {
    place.left += frame->Left;
    place.top += frame->Top;
  }
  return place;
}

bool IsMark(const Control& control) {
  return control.GetKind() == Control::Kind::CheckBox || control.GetKind() == Control::Kind::OptionButton;
}

bool IsLink(const Label& label) {
  return label.role == TextRole::Link || label.role == TextRole::HeadingLink || label.role == TextRole::BodyLink;
}

const Label* CompanionOf(const Control& control) {
  const Place place = PlaceInFrame(control);
  if (!IsMark(control) || place.width > BareMarkWidth) return nullptr;
  for (const Control* other : control.Siblings()) {
    const Label* label = AsLabel(other);
    if (!label || !label->Visible || label->Caption.Value().empty()) continue;
    const Place area = PlaceInFrame(*label);
    const int gap = area.left - RightOf(place);
    const bool speaks = label->IsClickable() || label->Words() == control.Words();
    if (speaks && !IsLink(*label) && InOneRow(area, place) && gap >= 0 && gap <= CompanionGap) return label;
  }
  return nullptr;
}

const Control* WordsOf(const Control& field) {
  const Control* words = WordsAtLeft(field, true);
  return words ? words : WordsAbove(field);
}

std::vector<const Label*> HeadsOf(const Control& cell) {
  const Frame* table = TableAround(cell);
  const Place place = PlaceOf(cell);
  const int middle = place.left + place.width / 2, top = table ? PlaceOf(*table).top : place.top;
  std::vector<const Label*> heads = HeadsFor(cell, table);
  std::erase_if(heads, [&](const Label* head) {
    const Place area = PlaceOf(*head);
    return BottomOf(area) >= top + SameRow || area.left > middle || middle > RightOf(area);
  });
  std::stable_sort(heads.begin(), heads.end(), [](auto* a, auto* b) { return a->Top < b->Top; });
  return heads;
}

std::string ColumnHeads(const Control& cell) {
  std::string words;
  for (const Label* head : HeadsOf(cell)) words += (words.empty() ? "" : " ") + head->Words();
  return words;
}

std::string RowName(const Control& cell, const std::function<std::string(const Control&)>& heads) {
  const Control* first = nullptr;
  if (const Frame* table = TableAround(cell)) {
    // Rows of labels, which are empty while they are not in use: the first column is known by its place.
    for (const Control* other : cell.Siblings()) {
      const bool inRow = AsLabel(other) && other->Index() == cell.Index();
      if (inRow && (!first || other->Left < first->Left)) first = other;
    }
    if (!first) first = table;
  } else if (!heads(cell).empty()) {
    first = WordsAtLeft(cell, false);
  }
  if (!first) return {};
  const std::string words = first->Words().empty() ? std::to_string(first->Index().value_or(0)) : first->Words();
  return heads(*first) + " " + words;
}

const Label* HeadingAbove(const Control& control) {
  return NearestAbove(control, {TextRole::Heading, TextRole::HeadingLink});
}

std::string UnitOf(const Control& field) {
  const Place place = PlaceInFrame(field);
  for (const Control* other : field.Siblings()) {
    const Label* label = LabelIn(other, {TextRole::Muted}, !field.Visible);
    if (!label) continue;
    const int gap = label->Left - RightOf(place);
    if (InOneRow(PlaceInFrame(*label), place) && gap >= 0 && gap <= CompanionGap) return label->Caption;
  }
  return {};
}

std::string NameOf(const Control& control) {
  const bool field = control.GetKind() == Control::Kind::TextBox || control.GetKind() == Control::Kind::ComboBox;
  if (!field && !control.Words().empty()) return control.Words();
  if (!control.SpokenName.empty()) return control.SpokenName;
  if (const Label* companion = CompanionOf(control)) return companion->Words();
  std::string words = ColumnHeads(control);
  if (const Control* label = WordsOf(control)) words += (words.empty() ? "" : " ") + label->Words();
  if (!words.empty()) return words;
  for (const Control* inner = &control; inner; inner = inner->Parent()) {
    const Label* head =
        NearestAbove(*inner, {TextRole::Heading, TextRole::HeadingLink, TextRole::Title, TextRole::Product});
    if (head) return head->Words();
  }
  const std::string& caption = control.OwnerForm().Caption;
  return caption.empty() ? control.Name() : caption;
}

}  // namespace vk32
