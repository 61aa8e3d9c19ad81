// What the controls of a form are called: worked out from the labels that stand by them. A hidden field has its name
// from labels that are hidden with it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/Form.h"

namespace vk32 {

/// In twips from the form's corner.
Place PlaceOf(const Control& control);

/// A check box or an option.
bool IsMark(const Control& control);
/// A label that is underlined and can have the focus.
bool IsLink(const Label& label);

/// Up to this width in twips, a check box or an option is a bare mark without words.
constexpr int BareMarkWidth = 330;
/// The label at its right that speaks for a bare box or option: it can be clicked, or says the same; nullptr for all
/// that have words themselves.
const Label* CompanionOf(const Control& control);

/// What brings words and stands in the field's row at its left, or else right above it; nullptr if nothing does.
const Control* WordsOf(const Control& field);
/// The heads of the column that a cell stands in, from top to bottom; none where there is no table.
std::vector<const Label*> HeadsOf(const Control& cell);
/// Their words.
std::string ColumnHeads(const Control& cell);
/// The row that a cell stands in, by the first column and its head: "Slot 3". Empty where there is no table.
/// `heads`: ColumnHeads, or what remembers its results.
std::string RowName(const Control& cell, const std::function<std::string(const Control&)>& heads = ColumnHeads);
/// The nearest heading above, of what lies in the same frame; nullptr if there is none.
const Label* HeadingAbove(const Control& control);
/// The unit at the right of a field; empty if it has none.
std::string UnitOf(const Control& field);

/// What the control is called on its own: its own words, or those that stand by it. Never empty.
std::string NameOf(const Control& control);

}  // namespace vk32
