// Two configurations side by side.
#include "listing/CompareForm.h"

#include "listing/SaveReport.h"

namespace vk32 {
CompareForm::CompareForm(App& app) : Form(app.forms, FormName, "Compare", 10320, 8190, FormStyle::Dialog) {}

void CompareForm::Show(App& app, ComparedSide left, ComparedSide right) {
  auto& form = static_cast<CompareForm&>(app.forms.Load(FormName));
  form.left_ = std::move(left);
  form.right_ = std::move(right);
  form.head_ = ReportHeadOf(app, "");
  form.ShowRows();
  app.forms.Show(FormName);
  form.SetFocus(form.CompareCloseCmd);
}

std::vector<Difference> CompareForm::ShownFields() const {
  return ShowAllChk.Value == 1 ? Pair(left_.values, right_.values) : Compare(left_.values, right_.values);
}

void CompareForm::ShowRows() {
  const auto all = Pair(left_.values, right_.values).size(), differing = Compare(left_.values, right_.values).size();
  SummaryLbl.Caption = differing == 0 ? "All " + std::to_string(all) + " values are equal"
                                      : std::to_string(differing) + " of " + std::to_string(all) + " values differ";
  ValueLeftLbl[0].Caption = left_.name + "\r\n" + left_.state;
  ValueRightLbl[0].Caption = right_.name + "\r\n" + right_.state;
  std::vector<std::vector<TextCell>> cells;
  for (const Difference& field : ShownFields()) {
    cells.push_back({{field.differs ? "≠" : ""}, {field.Words()}, ValueCell(field.left), ValueCell(field.right)});
  }
  rows.Show(std::move(cells));
}

void CompareForm::SaveReportCmd_Click() {
  SaveReport(ReportDialog, HtmlComparison(head_, SummaryLbl.Caption, left_.name + ", " + left_.state,
                                          right_.name + ", " + right_.state, ShownFields()));
}

}  // namespace vk32
