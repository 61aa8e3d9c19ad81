// The pages of a wizard.
#include "shell/WizardPages.h"

namespace vk32 {

void ShowPageStep(const std::vector<WizardPage>& pages, int page, Frame& mark) {
  if (page < 0 || page >= static_cast<int>(pages.size())) return;
  for (const WizardPage& other : pages) other.step->ForeColor = StepOther;
  Label& step = *pages[static_cast<std::size_t>(page)].step;
  step.ForeColor = StepCurrent;
  mark.Top = step.Top;
}

void ShowPageFrame(const std::vector<WizardPage>& pages, int page) {
  if (page < 0 || page >= static_cast<int>(pages.size())) return;
  const Frame* shown = pages[static_cast<std::size_t>(page)].panes.front();
  for (const WizardPage& other : pages) {
    for (Frame* frame : other.panes) frame->Visible = frame == shown;
    for (Frame* frame : other.others) frame->Visible = frame == shown;
  }
}

}  // namespace vk32
