// The pages of a wizard: one frame is shown at a time, and one step of the side menu is the current one.
#pragma once

#include <vector>

#include "forms/Controls.h"

namespace vk32 {

struct WizardPage {
  Label* step;
  std::vector<Frame*> frames;  // the first one is shown when the page is
};

// A number that is no page does nothing in either.

/// Colours the step label of the page and moves the mark to it.
void ShowPageStep(const std::vector<WizardPage>& pages, int page, Frame& mark);
/// Shows the first frame of the page and hides all others.
void ShowPageFrame(const std::vector<WizardPage>& pages, int page);

}  // namespace vk32
