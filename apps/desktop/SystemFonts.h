// The fonts of the program: which of them a system has.
#pragma once

#include <QStringList>

namespace vk32 {

/// The first one that is there counts.
struct FontFamilies {
  QStringList sans, mono;
};

/// Brings the fonts in that the program carries for a system that lacks its own. Needs the application object.
FontFamilies SystemFonts();

}  // namespace vk32
