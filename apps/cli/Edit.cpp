// Fields of a configuration, found and set by the names of the listing.
#include "cli/Edit.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <span>
#include <utility>

#include "cli/Configuration.h"
#include "cli/TableEditor.h"
#include "listing/Report.h"
#include "models/wizard/WizardForm.h"
#include "platform/Paths.h"

namespace vk32 {
namespace {

constexpr std::size_t Offers = 3;

/// How many letters have to be put in, left out or changed.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t corner = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = corner + (a[i] == b[j] ? 0 : 1);
      corner = row[j + 1];
      row[j + 1] = std::min({changed, corner + 1, row[j] + 1});
    }
  }
  return row.back();
}

/// The end of a path with as many names as the other text has.
std::string EndLike(const std::string& path, const std::string& name) {
  auto slashes = std::ranges::count(name, '/');
  std::size_t at = path.size();
  while (at > 0 && (path[at - 1] != '/' || slashes-- > 0)) --at;
  return path.substr(at);
}

std::string Nearest(const Listing& listing, const std::string& name) {
  std::multimap<std::size_t, std::string> ranked;
  for (const ListedValue& row : listing) {
    const std::string path = row.Path();
    ranked.emplace(Distance(Lower(EndLike(path, name)), name), path);
  }
  std::string nearest;
  std::size_t count = 0;
  for (auto at = ranked.begin(); at != ranked.end() && count < Offers; ++at, ++count) nearest += "\n  " + at->second;
  return nearest;
}

/// `path`: of the row, in small letters.
bool IsMeant(const ListedValue& row, const std::string& path, const std::string& name) {
  if (path.ends_with(name)) return path.size() == name.size() || path[path.size() - name.size() - 1] == '/';
  return row.page.size() + 1 + row.field.size() == name.size() && Lower(row.page + "/" + row.field) == name;
}

[[noreturn]] void Refuse(const ListedValue& row, const std::string& why) {
  throw Failure(ExitStatus::DoesNotFit, row.Path() + " " + why);
}

std::string OneOf(const std::vector<std::string>& entries) {
  // Long lists are numbers in their order.
  const bool tooMany = entries.size() > 20;
  std::string words;
  for (const std::string& entry : std::span(entries).first(tooMany ? 3 : entries.size())) {
    words += (words.empty() ? "" : ", ") + entry;
  }
  return "takes one of: " + words + (tooMany ? ", ... " + entries.back() : "") + ".";
}

void Choose(const ListedValue& row, const OptionButton&, const std::string& value) {
  std::vector<OptionButton*> options;
  std::vector<std::string> captions;
  for (Control* control : row.control->Siblings()) {
    auto* const option = dynamic_cast<OptionButton*>(control);
    if (!option) continue;
    options.push_back(option);
    captions.push_back(option->Caption);
  }
  options[FindEntry(row, captions, value)]->Value = true;
}

std::string WithoutUnit(const ListedValue& row, const std::string& value) {
  const std::string unit = " " + row.unit;
  return row.unit.empty() || !value.ends_with(unit) ? value : value.substr(0, value.size() - unit.size());
}

void SetControl(const ListedValue& row, const std::string& given) {
  const std::string value = WithoutUnit(row, given);
  if (!row.control->Enabled) Refuse(row, "can't be changed with the other values as they are.");
  if (auto* text = dynamic_cast<TextBox*>(row.control)) {
    text->Text = value;
  } else if (auto* list = dynamic_cast<ComboBox*>(row.control)) {
    list->Text = std::string(list->Entries()[FindEntry(row, list->Entries(), value)]);
  } else if (auto* check = dynamic_cast<CheckBox*>(row.control)) {
    check->Value = FindEntry(row, {"No", "Yes"}, value) == 1 ? 1 : 0;
  } else if (const auto* option = dynamic_cast<OptionButton*>(row.control)) {
    Choose(row, *option, value);
  } else {
    Refuse(row, "follows from other fields.");
  }
}

std::pair<const Frame*, int> RowOf(const Control& cell) { return {cell.Parent(), cell.Index().value_or(0)}; }

}  // namespace

Assignment ParseAssignment(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals != std::string::npos && equals > 0) return {text.substr(0, equals), text.substr(equals + 1)};
  throw Failure(ExitStatus::WrongUsage, "\"" + text + "\" sets nothing. Write \"Page/Field=value\".");
}

std::size_t FindField(const Listing& listing, const std::string& name) {
  const std::string wanted = Lower(name);
  std::vector<std::size_t> meant;
  for (std::size_t i = 0; i < listing.size(); ++i) {
    const std::string path = Lower(listing[i].Path());
    if (path == wanted) return i;
    if (IsMeant(listing[i], path, wanted)) meant.push_back(i);
  }
  if (meant.size() == 1) return meant[0];
  if (meant.empty()) {
    throw Failure(ExitStatus::WrongUsage, "There is no field " + name + ". Near to it:" + Nearest(listing, wanted));
  }
  std::string paths;
  for (const std::size_t i : meant) paths += "\n  " + listing[i].Path();
  throw Failure(ExitStatus::WrongUsage, "There is more than one field " + name + ":" + paths);
}

std::size_t FindEntry(const ListedValue& row, const std::vector<std::string>& entries, const std::string& value) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (Lower(entries[i]) == Lower(value)) return i;
  }
  Refuse(row, OneOf(entries));
}

void SetFields(Program& program, const std::vector<Assignment>& assignments) {
  const Listing listing = program.Wizard().List();
  std::map<std::size_t, const Assignment*> inOrder;
  for (const Assignment& assignment : assignments) {
    const std::size_t field = FindField(listing, assignment.field);
    if (inOrder.emplace(field, &assignment).second) continue;
    throw Failure(ExitStatus::WrongUsage, listing[field].Path() + " is set twice.");
  }
  struct Row {
    const Control* control = nullptr;  // one of its cells
    RowCells cells;
  };
  std::map<std::pair<const Frame*, int>, Row> rows;
  for (const auto& [field, assignment] : inOrder) {
    const Control& control = *listing[field].control;
    if (!HasEditor(control)) continue;
    Row& row = rows[RowOf(control)];
    row.control = &control;
    row.cells[control.Name()] = {listing[field], assignment->value};
  }
  // One act for all fields: behind each one the wizard looks at all of its values.
  program.Act(
      [&] {
        for (const auto& [field, assignment] : inOrder) {
          const ListedValue& row = listing[field];
          if (row.value != assignment->value && !HasEditor(*row.control)) SetControl(row, assignment->value);
        }
      },
      ExitStatus::DoesNotFit);
  for (const auto& [place, row] : rows) EditRow(program, *row.control, row.cells);
}

std::string Edited(Program& program, const std::string& file, const std::vector<Assignment>& assignments,
                   const TemporaryFolder& scratch) {
  const std::string edited = scratch.path + "/edited.cfg";
  program.OpenWizard();
  program.Open(file);
  SetFields(program, assignments);
  program.GoToApply();
  program.Save(edited, Lasting::ThisRun);
  // A text that is no number can become 0 on its way.
  program.OpenWizard();
  program.Open(edited);
  const Listing kept = program.Wizard().List();
  program.CloseWizard();
  for (const Assignment& assignment : assignments) {
    const ListedValue& row = kept[FindField(kept, assignment.field)];
    if (!row.shown && !assignment.value.empty()) Refuse(row, "does not show with the other values as they are.");
    if (Lower(row.value) == Lower(WithoutUnit(row, assignment.value))) continue;
    Refuse(row, "would become \"" + Printable(row.value) + "\" and not \"" + assignment.value + "\".");
  }
  std::string content = ContentOf(edited);
  std::filesystem::remove(PathOf(edited));  // in place of another one, it would be written out to the disk at once
  return content;
}

}  // namespace vk32
