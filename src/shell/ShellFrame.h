// The frame that the shell's windows share, so that going from one to the next feels like one window.
#pragma once

#include "app/App.h"
#include "forms/Controls.h"

namespace vk32 {

constexpr int ShellWidth = 7530, ShellHeight = 6600;  // twips

inline std::string VersionText() { return "Version  " + ProgramVersion(); }

/// The band with the program's name, and the line above the buttons.
struct ShellFrame {
  /// `footTop`: of the line above the buttons.
  explicit ShellFrame(Form& form_, int footTop = 5700)
      : form(form_), FootLineFrame(form, "FootLineFrame", {0, footTop, 7530, 15}, Fill::Hairline) {}

  // clang-format off
  Form& form;
  Frame BandFrame       {form, "BandFrame",       {   0,    0, 7530, 1440}, Fill::Band};
  Frame FootLineFrame;
  Image IconImg         {form, "IconImg",         { 240,  360,  720,  720}};
  Label BandNameLbl     {form, "BandNameLbl",     {1200,  345, 3000,  480}, "VK32", TextRole::BandName};
  Label BandSubtitleLbl {form, "BandSubtitleLbl", {1200,  780, 3000,  315}, "Configuration Software", TextRole::BandSubtitle};
  // clang-format on
};

/// The menu panel at the left.
struct ShellMenu {
  explicit ShellMenu(Form& form_) : form(form_) {}

  Form& form;
  Frame SideFrame{form, "SideFrame", {0, 1440, 2910, 4260}, Fill::Side};
  Frame SideLineFrame{form, "SideLineFrame", {2910, 1440, 15, 4260}, Fill::Hairline};
};

}  // namespace vk32
