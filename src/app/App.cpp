// What the program is made of, and its start.
#include "app/App.h"

#include "app/Backstage.h"
#include "app/SupportFile.h"
#include "deviceinfo/DeviceInfo.h"
#include "firmware/DownloadingMsg.h"
#include "firmware/Firmware.h"
#include "firmware/OfflineMngr.h"
#include "listing/CompareForm.h"
#include "models/highway/Configuration_RBCard.h"
#include "models/highway/Configuration_VK5300.h"
#include "models/mapping/ABModMapping.h"
#include "models/serial/Configuration_RB2000.h"
#include "models/serial/Configuration_RB3000.h"
#include "models/serial/DDTAExplanationFrm.h"
#include "models/vkrtx/Configuration_VKRTX.h"
#include "models/vkrtx/DelRoute.h"
#include "models/vkrtx/Route.h"
#include "shell/Shell.h"

namespace vk32 {

App::App(EventLoop& loop, Screen& screen, SerialDriver& untraced, PortNames& portNames)
    : ports(portNames),
      forms(loop, screen),
      trace(loop.Now()),
      driver(untraced, trace, loop),
      comm(driver, forms.dispatcher) {
  forms.dispatcher.AtEnd([this] { comm.CloseAll(); });
}

App::~App() { forms.UnloadAll(); }  // while the port of a conversation can still be closed

std::string ProgramVersion() { return VK32_VERSION; }

void RegisterForms(App& app) {
  RegisterShell(app);
  RegisterForm<DownloadingMsg>(app);
  RegisterForm<Firmware>(app);
  RegisterForm<OfflineMngr>(app);
  RegisterForm<DeviceInfo>(app);
  RegisterForm<Configuration_RB2000>(app);
  RegisterForm<Configuration_RB3000>(app);
  RegisterForm<DDTAExplanationFrm>(app);
  RegisterForm<Configuration_VK5300>(app);
  RegisterForm<Configuration_RBCard>(app);
  RegisterForm<Configuration_VKRTX>(app);
  RegisterForm<Route>(app);
  RegisterForm<DelRoute>(app);
  RegisterForm<ABModMapping>(app);
  RegisterForm<CompareForm>(app);
  app.lookElsewhere = [&app] { return std::make_unique<BackstageReader>(app); };
  app.supportText = [&app] { return SupportText(app); };
}

void StartProgram(App& app) {
  RegisterForms(app);
  app.forms.dispatcher.Dispatch([&] { app.forms.Show("Splash"); });
}

}  // namespace vk32
