// The file dialogs and the common frame of a configuration file.
#include "core/OpenSave.h"

#include "app/App.h"

namespace vk32 {
namespace {

FileDialog& DialogOf(ConfigurationForm& form) { return form.Get<FileDialog>("OpenSaveConfigDialog"); }

}  // namespace

bool SaveConfigFile(App& app, ConfigurationForm& form, const std::string& product, const std::string& modelTag,
                    const Parameters* held) {
  FileDialog& dialog = DialogOf(form);
  dialog.Prepare("Save Configuration File", product + " Configuration Files (*.cfg)|*.cfg");
  dialog.ShowSave();
  if (dialog.FileName.Value().empty()) return false;
  Parameters& parameters = app.globals;
  const Parameters present = parameters;
  if (held) parameters = *held;
  bool saved = false;
  try {
    RecordFile file = RecordFile::ForWriting(dialog.FileName, app.saves);
    saved = form.SaveFile(product, modelTag, file);
    if (saved) file.Commit();
  } catch (const RuntimeFault&) {
    saved = false;
  }
  parameters = present;
  return saved;
}

bool OpenConfigFile(App& app, ConfigurationForm& form, const std::string& product, const std::string& modelTag) {
  FileDialog& dialog = DialogOf(form);
  dialog.Prepare("Select Configuration File", product + " Configuration Files (*.cfg)|*.cfg|All Files (*.*)|*.*");
  dialog.ShowOpen();
  if (dialog.FileName.Value().empty()) return false;

  // A gateway must never receive values of a file that the user was told is not for it: they go when it is refused.
  Parameters& parameters = app.globals;
  const Parameters before = parameters;
  std::string fileProduct, fileTag;
  bool opened = true, read = false;
  try {
    RecordFile file = RecordFile::ForReading(dialog.FileName);
    read = form.OpenFile(fileProduct, fileTag, file);
  } catch (const RuntimeFault&) {
    opened = false;
  }
  if (!read || fileProduct != product || fileTag != modelTag) parameters = before;

  if (opened && !((fileProduct == product || !read) && fileTag == modelTag)) {
    app.forms.MsgBox("The selected configuration file is not for the " + product + ".", MessageIcon::Exclamation,
                     "Error!");
    return false;
  }
  if (!read) {
    app.forms.MsgBox("An error occured while attempting to open the configuration file.", MessageIcon::Critical,
                     "Error!");
    return false;
  }
  CallParameterSetup(app, form);
  return true;
}

void CallParameterSetup(const App& app, ConfigurationForm& form) {
  const std::string& product = app.globals.CurrentProduct;
  if (product == "RB2000" || product == "RB3000" || product == "RBCard") {
    form.Parameter_Setup_RB();
  } else if (product == "VK-RTX") {
    form.Parameter_Setup_VK();
  } else {
    form.Parameter_Setup_VK();
    form.Parameter_Setup_RB();
  }
}

}  // namespace vk32
