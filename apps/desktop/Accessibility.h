// What assistive technology is told of the widgets that Qt has no description for.
#pragma once

namespace vk32 {

/// Once, before the first window.
void InstallAccessibility();

}  // namespace vk32
