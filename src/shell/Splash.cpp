// The page that the program starts on: leaves by its timer or by a click.
#include "shell/Splash.h"

namespace vk32 {

Splash::Splash(App& app) : Form(app.forms, FormName, "VK32", 7530, 4965, FormStyle::Splash), app_(app) {}

void Splash::Form_Load() {
  Width = 7530;
  Height = 4965;
  SplashTimer.Interval = 1800;
  SplashTimer.Enabled = true;
  VersionLbl.Caption = VersionText();
  app_.globals.ComPortText = "None";
  app_.forms.Load("MainMenu");
}

void Splash::SplashTimer_Timer() {
  UnloadMe();
  app_.forms.Show("MainMenu");
}

void Splash::Form_Click() { SplashTimer_Timer(); }

void Splash::Form_Close() { SplashTimer_Timer(); }

}  // namespace vk32
