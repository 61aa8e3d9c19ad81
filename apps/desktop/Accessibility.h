// What assistive technology is told of the widgets that Qt describes poorly or not at all.
#pragma once

namespace vk32 {

/// Once, before the first window.
void InstallAccessibility();

}  // namespace vk32
