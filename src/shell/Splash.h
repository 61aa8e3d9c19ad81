// The page that the program starts on.
#pragma once

#include "shell/ShellFrame.h"

namespace vk32 {

class Splash : public Form {
 public:
  static constexpr const char* FormName = "Splash";

  explicit Splash(App& app);

 private:
  void Form_Load() override;
  void Form_Click() override;
  void Form_Close() override;
  void SplashTimer_Timer();

  App& app_;

  // clang-format off
  Frame BandFrame   {*this, "BandFrame",   {   0, 4125, 7530,  840}, Fill::Band};
  Image IconImg     {*this, "IconImg",     { 600, 1320, 1440, 1440}};
  Label TitleLbl    {*this, "TitleLbl",    {2460, 1215, 4800,  960}, "VK32", TextRole::SplashName};
  Label SubtitleLbl {*this, "SubtitleLbl", {2460, 2175, 4830,  360}, "Configuration Software", TextRole::SplashSubtitle};
  Label FamilyLbl   {*this, "FamilyLbl",   {2460, 2580, 4830,  315}, "for Norvanta gateways", TextRole::Muted};
  Label VersionLbl  {*this, "VersionLbl",  { 600, 4320, 3600,  450}, "", TextRole::BandSubtitle};
  Timer SplashTimer {*this, "SplashTimer", 0, false, &Splash::SplashTimer_Timer};
  // clang-format on
};

}  // namespace vk32
