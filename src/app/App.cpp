// What the program is made of, and its start.
#include "app/App.h"

#include "firmware/DownloadingMsg.h"
#include "models/serial/Configuration_RB2000.h"
#include "shell/Shell.h"

namespace vk32 {

App::App(EventLoop& loop, Screen& screen, SerialDriver& driver, const PortNames& portNames)
    : ports(portNames), forms(loop, screen), comm(driver, forms.dispatcher) {
  forms.dispatcher.AtEnd([this] { comm.CloseAll(); });
}

std::string ProgramVersion() { return "1.8.11"; }

void StartProgram(App& app) {
  RegisterShell(app);
  RegisterForm<DownloadingMsg>(app);
  RegisterForm<Configuration_RB2000>(app);
  app.forms.dispatcher.Dispatch([&] { app.forms.Show("Splash"); });
}

}  // namespace vk32
