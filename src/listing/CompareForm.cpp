// Two configurations side by side.
#include "listing/CompareForm.h"

#include <algorithm>

namespace vk32 {
namespace {

/// Each field of either side, in the order of the pages: those that differ and, if all are wanted, the others.
std::vector<std::vector<TextCell>> RowsOf(const std::vector<Difference>& fields, bool all) {
  std::vector<std::vector<TextCell>> rows;
  for (const Difference& field : fields) {
    const bool differs = field.left != field.right;
    if (!differs && !all) continue;
    rows.push_back({{differs ? "≠" : ""}, {field.Words()}, ValueCell(field.left), ValueCell(field.right)});
  }
  return rows;
}

}  // namespace

CompareForm::CompareForm(App& app) : Form(app.forms, FormName, "Compare", 10320, 8190, FormStyle::Dialog), app_(app) {}

void CompareForm::Show(App& app, ComparedSide left, ComparedSide right) {
  auto& form = static_cast<CompareForm&>(app.forms.Load(FormName));
  form.left_ = std::move(left);
  form.right_ = std::move(right);
  form.ShowRows();
  app.forms.Show(FormName);
  form.SetFocus(form.CompareCloseCmd);
}

void CompareForm::ShowRows() {
  const auto fields = Pair(left_.values, right_.values);
  const auto differing =
      std::count_if(fields.begin(), fields.end(), [](auto& field) { return field.left != field.right; });
  SummaryLbl.Caption = differing == 0
                           ? "All " + std::to_string(fields.size()) + " values are equal"
                           : std::to_string(differing) + " of " + std::to_string(fields.size()) + " values differ";
  ValueLeftLbl[0].Caption = left_.name + "\r\n" + left_.state;
  ValueRightLbl[0].Caption = right_.name + "\r\n" + right_.state;
  rows.Show(RowsOf(fields, ShowAllChk.Value == 1));
}

}  // namespace vk32
