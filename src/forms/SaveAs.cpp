// A file that the user is asked a place for.
#include "forms/SaveAs.h"

#include "forms/Forms.h"
#include "platform/Fault.h"
#include "platform/Files.h"

namespace vk32 {

std::string SaveAs(FileDialog& dialog, const std::string& title, const std::string& filter,
                   const std::function<std::string(const std::string& path)>& content) {
  dialog.Prepare(title, filter);
  dialog.ShowSave();
  std::string path = dialog.FileName;
  if (path.empty()) return {};
  try {
    const std::string bytes = content(path);
    OutputFile file(path);
    file.Write(bytes);
    file.Commit();
    return path;
  } catch (const RuntimeFault& fault) {
    dialog.OwnerForm().Registry().MsgBox(fault.Description(), MessageIcon::Critical, "Error!");
    return {};
  }
}

}  // namespace vk32
