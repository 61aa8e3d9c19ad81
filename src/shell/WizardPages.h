// The pages of a wizard: one frame is shown at a time, and one step of the side menu is the current one.
#pragma once

#include <vector>

#include "forms/Controls.h"

namespace vk32 {

struct WizardPage {
  Label* step;
  std::vector<Frame*> panes;        // the first one is shown when the page is
  std::vector<Frame*> others = {};  // stay hidden with it
};

// A number that is no page does nothing in either.

/// Colours the step label of the page and moves the mark to it.
void ShowPageStep(const std::vector<WizardPage>& pages, int page, Frame& mark);
/// Shows the first pane of the page and hides all other frames.
void ShowPageFrame(const std::vector<WizardPage>& pages, int page);

}  // namespace vk32
