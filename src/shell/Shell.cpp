// The forms of the shell.
#include "shell/Shell.h"

#include "shell/About.h"
#include "shell/MainMenu.h"
#include "shell/ProductMenu.h"
#include "shell/Splash.h"

namespace vk32 {

void RegisterShell(App& app) {
  RegisterForm<Splash>(app);
  RegisterForm<MainMenu>(app);
  RegisterForm<About>(app);
  RegisterForm<ProductMenu>(app);
}

}  // namespace vk32
