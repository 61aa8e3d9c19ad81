// What the pages of a wizard show, as rows of text, and where two of them differ.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "forms/Controls.h"

namespace vk32 {

struct ListedValue {
  std::string key;                 // name of the control that holds it: the same in every wizard of the product
  std::string page, group, field;  // together no other row of the listing has them; the group may be empty
  std::string value;               // as the control shows it; of a check box "Yes" or "No", of options the chosen one's
  std::string unit;                // of the value; may be empty
  Control* control;                // of options the first one; valid as long as its form
  bool shown = true;               // False: the page is passed, or does not show the field now

  /// With its unit, as a person reads it.
  std::string Text() const { return value.empty() || unit.empty() ? value : value + " " + unit; }
  /// Of a row of a table: "Slot 3".
  bool IsInTable() const { return !group.empty() && group.back() >= '0' && group.back() <= '9'; }
  /// In a row of a table, nothing has been entered there.
  bool IsBlank() const { return value.empty() || value == "No"; }
  /// "Serial Settings/Channel A/Baud Rate": what a person names the field by.
  std::string Path() const { return page + "/" + (group.empty() ? "" : group + "/") + field; }
};
/// In the order of the pages and of their fields; tables row by row, with the rows that are empty.
using Listing = std::vector<ListedValue>;

/// A page of a wizard, in all its panes.
struct ListedPage {
  std::string name;
  std::vector<Frame*> frames;
  bool passed;
};

/// What a control will show when its page is reached, where it does not say so yet.
struct Foretold {
  const Control* control;
  bool shown;
  std::optional<std::string> value;  // the control's own if there is none
};

/// What the fields of a form are called. A name is worked out from all that stands around its field, which costs far
/// more than to read a value: so it is kept.
class KeptNames {
 public:
  /// A property of a control on a page has changed, whichever: names that may have changed with it are forgotten.
  void Follow(const Control& control, const PropertyBase& property);

 private:
  friend Listing ListPages(const std::vector<ListedPage>&, const std::vector<Foretold>&, KeptNames&);

  std::unordered_map<const Control*, ListedValue> rows_;  // without page and value
};

/// Reads the controls, whether they are on the screen or not; touches none and runs nothing.
Listing ListPages(const std::vector<ListedPage>& pages, const std::vector<Foretold>& foretold, KeptNames& names);
/// Those that are shown.
Listing Shown(Listing listing);

/// Enters a listed value into its control, unless it is there already, and runs the handler, as the user would.
void SetValue(Control& control, const std::string& value);

/// A field of two listings.
struct Difference {
  std::string page, group, field;
  std::optional<std::string> left, right;  // with their units; nothing: only the other side has the field
  bool differs = true;  // False: equal, or of a table's row that is empty on the side that has the field

  /// "Serial Settings: Channel A, Baud Rate"
  std::string Words() const { return page + ": " + (group.empty() ? "" : group + ", ") + field; }
};

/// All fields of either, in the order of the pages.
std::vector<Difference> Pair(const Listing& left, const Listing& right);
/// Those in which they differ.
std::vector<Difference> Compare(const Listing& left, const Listing& right);
/// What `now` shows and `before` had otherwise, though it may not have shown it.
std::vector<Difference> Changes(const Listing& before, const Listing& now);

}  // namespace vk32
