// What Windows says of high contrast.
#include "ContrastSetting.h"

#include <windows.h>

namespace vk32 {

void ContrastSetting::Ask() {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  if (!SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0)) return;
  told_((setting.dwFlags & HCF_HIGHCONTRASTON) != 0);
}

}  // namespace vk32
