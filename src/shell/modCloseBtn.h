// The close control of a window.
#pragma once

#include "forms/Form.h"

namespace vk32 {

/// Takes the window's own close control from the user, or gives it back. 0 on success, -1 if the form has no window.
int EnableCloseButton(Form& window, bool enable);

}  // namespace vk32
