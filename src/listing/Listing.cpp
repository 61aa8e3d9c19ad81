// The walk over the pages of a wizard, and the comparison of two.
#include "listing/Listing.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

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

/// The row of a field without page and value.
ListedValue NamedRow(Control& control, RememberedHeads& columns) {
  ListedValue named{control.FullName(), {}, RowName(control, std::ref(columns)), {}, {}, {}, &control};
  if (named.group.empty()) {
    const Label* heading = GroupHeading(control);
    named.field = FieldName(control);
    if (heading && heading->Words() != named.field) named.group = heading->Words();
    named.unit = UnitOf(control);
  } else {
    const std::string& heads = columns(control);
    named.field = heads.empty() ? control.SpokenName : heads;
  }
  return named;
}

using NamedRows = std::unordered_map<const Control*, ListedValue>;

void ListPage(const ListedPage& page, const std::vector<Foretold>& foretold, NamedRows& names, Listing& listing) {
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
      const auto [named, isNew] = names.try_emplace(field.control);
      if (isNew) named->second = NamedRow(*field.control, columns);
      const Foretold* told = Find(foretold, field.control);
      ListedValue& row = listing.emplace_back(named->second);
      row.page = page.name;
      row.value = told && told->value ? *told->value : ValueOf(*field.control);
      row.shown = field.shown;
    }
  }
}

using FilledRows = std::set<std::pair<std::string_view, std::string_view>>;  // by page and group

using Places = std::unordered_map<std::string_view, std::size_t>;

Places PlacesOf(const Listing& listing) {
  Places places;
  places.reserve(listing.size());
  for (std::size_t i = 0; i < listing.size(); ++i) places.emplace(listing[i].key, i);
  return places;
}

/// Gives each field of either, in the order of the pages, with its row in both; nullptr where a side has none.
template <class Take>
void ForEachField(const Listing& left, const Listing& right, Take take) {
  if (std::ranges::equal(left, right, {}, &ListedValue::key, &ListedValue::key)) {
    for (std::size_t i = 0; i < left.size(); ++i) take(&left[i], &right[i]);
    return;
  }
  const Places inLeft = PlacesOf(left), inRight = PlacesOf(right);
  std::size_t next = 0;  // of the right rows that have not had their turn
  const auto takeRightUpTo = [&](std::size_t end) {
    for (; next < end; ++next) {
      if (!inLeft.contains(right[next].key)) take(nullptr, &right[next]);
    }
  };
  for (const ListedValue& row : left) {
    const auto partner = inRight.find(row.key);
    if (partner == inRight.end()) {
      take(&row, nullptr);
      continue;
    }
    takeRightUpTo(partner->second);
    take(&row, &right[partner->second]);
  }
  takeRightUpTo(right.size());
}

bool Differ(const ListedValue* left, const ListedValue* right) {
  return !left || !right || left->value != right->value || left->unit != right->unit;
}

Difference FieldOf(const ListedValue* left, const ListedValue* right) {
  const ListedValue& named = right ? *right : *left;
  Difference field{named.page, named.group, named.field, {}, {}, Differ(left, right)};
  if (left) field.left = left->Text();
  if (right) field.right = right->Text();
  return field;
}

}  // namespace

void KeptNames::Follow(const Control& control, const PropertyBase& property) {
  // A frame that comes and goes is a page, or a part of one: its labels stay where they are.
  const bool frameShows = control.GetKind() == Control::Kind::Frame && &property == &control.Visible;
  const PropertyBase* const place[] = {&control.Left, &control.Top, &control.Width, &control.Height, &control.Visible};
  if (!frameShows && (std::ranges::find(place, &property) != std::end(place) || property.Name() == "Caption"))
    rows_.clear();
}

Listing ListPages(const std::vector<ListedPage>& pages, const std::vector<Foretold>& foretold, KeptNames& names) {
  Listing listing;
  listing.reserve(names.rows_.size());
  for (const ListedPage& page : pages) ListPage(page, foretold, names.rows_, listing);
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
  FilledRows filled;
  for (const Listing* side : {&left, &right}) {
    for (const ListedValue& row : *side) {
      if (!row.IsBlank()) filled.insert({row.page, row.group});
    }
  }
  std::vector<Difference> fields;
  ForEachField(left, right, [&](const ListedValue* a, const ListedValue* b) {
    fields.push_back(FieldOf(a, b));
    // An empty slot is sent the same, with the field or without.
    const ListedValue* const only = a && b ? nullptr : a ? a : b;
    if (only && only->IsInTable() && !filled.contains({only->page, only->group})) fields.back().differs = false;
  });
  return fields;
}

std::vector<Difference> Compare(const Listing& left, const Listing& right) {
  std::vector<Difference> differences = Pair(left, right);
  std::erase_if(differences, [](const Difference& field) { return !field.differs; });
  return differences;
}

std::vector<Difference> Changes(const Listing& before, const Listing& now) {
  std::vector<Difference> changes;
  ForEachField(before, now, [&](const ListedValue* a, const ListedValue* b) {
    if (b && b->shown && Differ(a, b)) changes.push_back(FieldOf(a, b));
  });
  return changes;
}

}  // namespace vk32
