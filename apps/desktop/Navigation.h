// How a form is walked by keys: worked out from the controls alone.
#pragma once

#include <QChar>
#include <QRect>
#include <QString>
#include <map>
#include <vector>

#include "forms/FieldNames.h"
#include "forms/Form.h"

namespace vk32 {

/// Shown, and enabled with all its frames.
bool IsReachable(const Control& control);
/// Of a kind that can have the focus.
bool TakesFocus(const Control& control);
/// The line of a side menu that is at work now.
bool IsCurrentStep(const Control& control);
/// A label that tells what follows: the title of a page, or the heading of a group.
bool IsHeading(const Control& control);
bool IsField(const Control& control);
bool IsButton(const Control& control);

/// What Tab walks through now, in order. Of the options of a frame only the selected one is a stop, or else the first.
std::vector<Control*> TabStops(const Form& form);
/// The options in the same container as `option` that can be reached, in order.
std::vector<OptionButton*> OptionGroup(const OptionButton& option);
/// The first stop that takes input, in one of the frames, or anywhere if there are none; nullptr if there is no such
/// stop.
Control* FirstField(const Form& form, const std::vector<const Frame*>& frames);
/// The reachable button that a key of the window stands for, or nullptr.
Control* ButtonFor(const Form& form, WindowKey key);

/// In pixels from the form's corner.
QRect PlaceOnForm(const Control& control);
/// What assistive technology calls the control. Never empty.
QString AccessibleName(const Control& control);

/// The letters and digits that work together with Alt now.
struct Mnemonics {
  std::map<QChar, Control*> targets;      // upper-case letter to what it leads to
  std::map<const Control*, QChar> marks;  // whose words show the letter
};
Mnemonics ChooseMnemonics(const Form& form);

}  // namespace vk32
