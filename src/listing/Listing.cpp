// The walk over the pages of a wizard, and the comparison of two.
#include "listing/Listing.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>
#include <tuple>

#include "forms/FieldNames.h"

namespace vk32 {
namespace {

struct Field {
  Control* control;
  bool shown;
  bool inTable;
};

const Foretold* Find(const std::vector<Foretold>& foretold, const Control* control) {
  const auto found = std::find_if(foretold.begin(), foretold.end(), [&](auto& row) { return row.control == control; });
  return found == foretold.end() ? nullptr : &*found;
}

bool IsFirstOfItsRow(const Control& cell) {
  const auto& cells = cell.Siblings();
  return std::none_of(cells.begin(), cells.end(), [&](const Control* other) {
    return other->Index() == cell.Index() && other->Left < cell.Left && other->GetKind() == Control::Kind::Label;
  });
}

/// The labels of a table hold values, but for those that number its rows.
bool HoldsValue(const Field& field, const Foretold* told) {
  switch (field.control->GetKind()) {
    case Control::Kind::TextBox:
    case Control::Kind::ComboBox:
    case Control::Kind::CheckBox:
    case Control::Kind::OptionButton: return true;
    case Control::Kind::Label: return told || (field.inTable && !IsFirstOfItsRow(*field.control));
    default: return false;
  }
}

void Collect(const Container& container, bool shown, bool inTable, const std::vector<Foretold>& foretold,
             std::vector<Field>& fields) {
  for (Control* control : container.Children()) {
    const Foretold* told = Find(foretold, control);
    const Field field{control, shown && (told ? told->shown : control->Visible.Value()), inTable};
    if (control->GetKind() == Control::Kind::Frame) {
      const auto& frame = static_cast<const Frame&>(*control);
      Collect(frame, field.shown, inTable || frame.fill == Fill::Table, foretold, fields);
    } else if (HoldsValue(field, told)) {
      fields.push_back(field);
    }
  }
}

const OptionButton* AsOption(const Control* control) {
  return control->GetKind() == Control::Kind::OptionButton ? static_cast<const OptionButton*>(control) : nullptr;
}

std::string ChosenOption(const Control& first) {
  for (const Control* control : first.Siblings()) {
    if (const OptionButton* option = AsOption(control); option && option->Value) return option->Caption;
  }
  return {};
}

std::string ValueOf(const Control& control) {
  switch (control.GetKind()) {
    case Control::Kind::CheckBox: return static_cast<const CheckBox&>(control).Value == 1 ? "Yes" : "No";
    case Control::Kind::OptionButton: return ChosenOption(control);
    default: return control.Words();
  }
}

/// The heading over the group that a field lies in: the outermost on its page.
const Label* GroupHeading(const Control& control) {
  const Label* found = nullptr;
  for (const Control* inner = &control; inner->Parent(); inner = inner->Parent()) {
    if (const Label* heading = HeadingAbove(*inner)) found = heading;
  }
  return found;
}

std::string WithoutColon(std::string words) {
  if (words.ends_with(':')) words.pop_back();
  return words;
}

/// Options are called by what stands beside or above the first of them.
std::string OptionsName(const Control& first) {
  const Control* words = WordsOf(first);
  if (!words) words = HeadingAbove(first);
  return words ? words->Words() : NameOf(first);
}

std::string FieldName(const Control& control) {
  if (AsOption(&control)) return OptionsName(control);
  if (control.GetKind() != Control::Kind::Label) return WithoutColon(NameOf(control));
  const Control* words = WordsOf(control);
  return words ? WithoutColon(words->Words()) : control.FullName();
}

/// The heads of each column are looked for once: the cells of a long table would cost most of a listing.
class RememberedHeads {
 public:
  const std::string& operator()(const Control& cell) {
    const auto [at, isNew] = heads_.try_emplace({cell.Parent(), cell.Name(), cell.Left, cell.Visible});
    if (isNew) at->second = ColumnHeads(cell);
    return at->second;
  }

 private:
  std::map<std::tuple<const Frame*, std::string_view, int, bool>, std::string> heads_;
};

ListedValue Row(const std::string& page, const Field& field, const Foretold* told, RememberedHeads& columns) {
  const Control& control = *field.control;
  const std::string row = RowName(control, std::ref(columns));
  const Label* heading = GroupHeading(control);
  ListedValue listed{control.FullName(), page, row, {}, ValueOf(control), {}, field.control, field.shown};
  if (told && told->value) listed.value = *told->value;
  if (row.empty()) {
    listed.field = FieldName(control);
    if (heading && heading->Words() != listed.field) listed.group = heading->Words();
    listed.unit = UnitOf(control);
  } else {
    const std::string& heads = columns(control);
    listed.field = heads.empty() ? control.SpokenName : heads;
  }
  return listed;
}

void ListPage(const ListedPage& page, const std::vector<Foretold>& foretold, Listing& listing) {
  for (const Frame* frame : page.frames) {
    std::vector<Field> fields;
    Collect(*frame, !page.passed, false, foretold, fields);
    std::stable_sort(fields.begin(), fields.end(),
                     [](const Field& a, const Field& b) { return a.control->TabIndex < b.control->TabIndex; });
    RememberedHeads columns;
    std::vector<const Frame*> options;  // the frames whose options have their row
    for (const Field& field : fields) {
      if (AsOption(field.control)) {
        const Frame* parent = field.control->Parent();
        if (std::find(options.begin(), options.end(), parent) != options.end()) continue;
        options.push_back(parent);
      }
      listing.push_back(Row(page.name, field, Find(foretold, field.control), columns));
    }
  }
}

using Places = std::map<std::string_view, std::size_t>;

Places PlacesOf(const Listing& listing) {
  Places places;
  for (std::size_t i = 0; i < listing.size(); ++i) places[listing[i].key] = i;
  return places;
}

Difference FieldOf(const ListedValue& named, const ListedValue* left, const ListedValue* right) {
  Difference field{named.page, named.group, named.field, {}, {}};
  if (left) field.left = left->Text();
  if (right) field.right = right->Text();
  return field;
}

}  // namespace

Listing ListPages(const std::vector<ListedPage>& pages, const std::vector<Foretold>& foretold) {
  Listing listing;
  for (const ListedPage& page : pages) ListPage(page, foretold, listing);
  return listing;
}

Listing Shown(Listing listing) {
  std::erase_if(listing, [](const ListedValue& row) { return !row.shown; });
  return listing;
}

void SetValue(Control& control, const std::string& value) {
  if (ValueOf(control) == value) return;
  switch (control.GetKind()) {
    case Control::Kind::TextBox: static_cast<TextBox&>(control).Text = value; break;
    case Control::Kind::ComboBox: static_cast<ComboBox&>(control).Text = value; break;
    case Control::Kind::CheckBox: static_cast<CheckBox&>(control).Value = value == "Yes" ? 1 : 0; break;
    case Control::Kind::Label: static_cast<Label&>(control).Caption = value; break;
    case Control::Kind::OptionButton:
      for (Control* other : control.Siblings()) {
        if (AsOption(other) && other->Words() == value) static_cast<OptionButton*>(other)->Value = true;
      }
      break;
    default: break;
  }
}

std::vector<Difference> Pair(const Listing& left, const Listing& right) {
  const Places inLeft = PlacesOf(left), inRight = PlacesOf(right);
  std::vector<Difference> fields;
  std::size_t next = 0;  // of the right rows that have not had their turn
  const auto takeRightUpTo = [&](std::size_t end) {
    for (; next < end; ++next) {
      if (!inLeft.contains(right[next].key)) fields.push_back(FieldOf(right[next], nullptr, &right[next]));
    }
  };
  for (const ListedValue& row : left) {
    const auto partner = inRight.find(row.key);
    if (partner == inRight.end()) {
      fields.push_back(FieldOf(row, &row, nullptr));
      continue;
    }
    takeRightUpTo(partner->second);
    fields.push_back(FieldOf(right[partner->second], &row, &right[partner->second]));
  }
  takeRightUpTo(right.size());
  return fields;
}

std::vector<Difference> Compare(const Listing& left, const Listing& right) {
  std::vector<Difference> differences = Pair(left, right);
  std::erase_if(differences, [](const Difference& field) { return field.left == field.right; });
  return differences;
}

std::vector<Difference> Changes(const Listing& before, const Listing& now) {
  std::vector<Difference> changes = Compare(before, now);
  std::erase_if(changes, [](const Difference& change) { return !change.right; });
  return changes;
}

}  // namespace vk32
