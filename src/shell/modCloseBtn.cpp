// The close control of a window.
#include "shell/modCloseBtn.h"

namespace vk32 {

int EnableCloseButton(Form& window, bool enable) {
  if (!window.IsLoaded()) return -1;
  window.CloseEnabled = enable;
  return 0;
}

}  // namespace vk32
