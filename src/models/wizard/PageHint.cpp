// What is wrong with a value, in words on the page that shows it.
#include "models/wizard/PageHint.h"

#include <utility>

#include "forms/Form.h"
#include "forms/Tables.h"

namespace vk32 {
namespace {

constexpr Place Usual{4500, 7035, 7980, 480};
constexpr int SignSize = 180, SignBefore = 300, SignBelow = 30;  // twips, from the corner of the words

}  // namespace

PageHint::PageHint(Form& form, std::function<void(const std::string&)> tell)
    : tell_(std::move(tell)),
      PageHintMark(form, "PageHintMark", {Usual.left - SignBefore, Usual.top + SignBelow, SignSize, SignSize},
                   Symbol::Cross),
      PageHintLbl(form, "PageHintLbl", Usual, "", TextRole::Small) {
  PageHintLbl.ForeColor = StepCurrent;
  PageHintMark.Visible = PageHintLbl.Visible = false;
}

void PageHint::Show(const std::string& words, Place place, const Control* value) {
  value_ = value;
  PageHintMark.Left = place.left - SignBefore;
  PageHintMark.Top = place.top + SignBelow;
  PageHintLbl.Left = place.left;
  PageHintLbl.Top = place.top;
  PageHintLbl.Width = place.width;
  PageHintLbl.Height = place.height;
  PageHintLbl.Caption = words;
  PageHintMark.Visible = PageHintLbl.Visible = true;
  MarkRows();
  tell_(words);
}

void PageHint::Hide() {
  if (!Shows()) return;
  value_ = nullptr;
  PageHintLbl.Caption = "";
  PageHintMark.Visible = PageHintLbl.Visible = false;
  MarkRows();
  tell_({});
}

void PageHint::Follow(const Control& changed) {
  if (!PageHintLbl.Visible) return;
  const bool isField = changed.GetKind() == Control::Kind::TextBox || changed.GetKind() == Control::Kind::CheckBox;
  bool about = value_ ? &changed == value_ : isField;
  const bool besideIt = value_ && value_->Parent() == changed.Parent();  // else it costs more than it tells
  for (const ControlTable* table : PageHintLbl.OwnerForm().Tables()) {
    const int row = besideIt ? table->RowOf(*value_) : 0;
    about = about || (row > 0 && row == table->RowOf(changed));
  }
  if (about) Hide();
}

void PageHint::MarkRows() {
  for (ControlTable* table : PageHintLbl.OwnerForm().Tables()) table->MarkRow(value_ ? table->RowOf(*value_) : 0);
}

}  // namespace vk32
