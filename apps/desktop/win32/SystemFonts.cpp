// The fonts of Windows, and those that the program carries for one that lacks them.
#include "SystemFonts.h"

#include <QFontDatabase>

namespace vk32 {

FontFamilies SystemFonts() {
  FontFamilies families{{"Segoe UI", "DejaVu Sans"}, {"Cascadia Mono", "Consolas", "DejaVu Sans Mono"}};
  if (!QFontDatabase::hasFamily(families.sans.front())) {
    QFontDatabase::addApplicationFont(":/fonts/DejaVuSans.ttf");
    QFontDatabase::addApplicationFont(":/fonts/DejaVuSans-Bold.ttf");
  }
  if (!QFontDatabase::hasFamily("Consolas")) QFontDatabase::addApplicationFont(":/fonts/DejaVuSansMono.ttf");
  return families;
}

}  // namespace vk32
