// The fonts of desktops on Linux.
#include "SystemFonts.h"

namespace vk32 {

FontFamilies SystemFonts() {
  return {{"DejaVu Sans", "Segoe UI", "Noto Sans", "Cantarell", "sans-serif"},
          {"DejaVu Sans Mono", "Cascadia Mono", "Consolas", "monospace"}};
}

}  // namespace vk32
