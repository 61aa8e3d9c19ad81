// What the program is, and where its maker can be reached.
#include "shell/About.h"

#include "platform/Fault.h"
#include "platform/Files.h"
#include "shell/MainMenu.h"
#include "shell/Subs.h"

namespace vk32 {

About::About(App& app) : Form(app.forms, FormName, "About VK32", ShellWidth, ShellHeight), app_(app) {
  WebsiteLbl.ForeColor = AboutLink;
}

void About::Form_Load() { VersionLbl.Caption = VersionText(); }

void About::CloseCmd_Click() { UnloadMe(); }

void About::SupportCmd_Click() {
  SupportDialog.Prepare("Save Support File", "Text Files (*.txt)|*.txt");
  SupportDialog.ShowSave();
  const std::string path = SupportDialog.FileName;
  if (path.empty()) return;
  try {
    OutputFile file(path);
    file.Write(app_.supportText());
    file.Commit();
    SupportLbl.Caption = "Saved as " + path;
  } catch (const RuntimeFault& fault) {
    app_.forms.MsgBox(fault.Description(), MessageIcon::Critical, "Error!");
  }
}

void About::WebsiteLbl_Click() { OpenWebSite(app_, WebSite); }

void About::WebsiteLbl_MouseDown() { WebsiteLbl.ForeColor = PressedLink; }

void About::WebsiteLbl_MouseUp() { WebsiteLbl.ForeColor = AboutLink; }

}  // namespace vk32
