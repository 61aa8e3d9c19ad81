// What the program is, and where its maker can be reached.
#include "shell/About.h"

#include "forms/SaveAs.h"
#include "shell/MainMenu.h"
#include "shell/Subs.h"

namespace vk32 {

About::About(App& app) : Form(app.forms, FormName, "About VK32", ShellWidth, ShellHeight), app_(app) {
  WebsiteLbl.ForeColor = AboutLink;
}

void About::Form_Load() { VersionLbl.Caption = VersionText(); }

void About::CloseCmd_Click() { UnloadMe(); }

void About::SupportCmd_Click() {
  const std::string path = SaveAs(SupportDialog, "Save Support File", "Text Files (*.txt)|*.txt",
                                  [this](const std::string&) { return app_.supportText(); });
  if (!path.empty()) SupportLbl.Caption = "Saved as " + path;
}

void About::WebsiteLbl_Click() { OpenWebSite(app_, WebSite); }

void About::WebsiteLbl_MouseDown() { WebsiteLbl.ForeColor = PressedLink; }

void About::WebsiteLbl_MouseUp() { WebsiteLbl.ForeColor = AboutLink; }

}  // namespace vk32
