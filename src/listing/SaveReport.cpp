// A report on its way to the place that the user chooses.
#include "listing/SaveReport.h"

#include <algorithm>
#include <cctype>

#include "platform/Fault.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace vk32 {
namespace {

bool IsPdf(const std::string& path) {
  std::string ending = TextOf(PathOf(path).extension());
  std::ranges::transform(ending, ending.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending == ".pdf";
}

std::string AsPdf(Screen& screen, const std::string& html) {
  if (auto pdf = screen.MakePdf(html)) return *std::move(pdf);
  throw RuntimeFault(RuntimeFault::InvalidCall,
                     "A PDF can be made by the desktop program alone. Choose a name that ends in .html.");
}

}  // namespace

ReportHead ReportHeadOf(const App& app, const std::string& source) {
  const Globals& globals = app.globals;
  return {globals.CurrentProduct, globals.CurrentProduct == "VK-RTX" ? globals.CurrentModel : "", source,
          app.forms.dispatcher.Loop().DateAndTime(), "VK32 " + ProgramVersion()};
}

std::string SaveReport(App& app, FileDialog& dialog, const std::string& html) {
  dialog.Prepare("Save Report", "Web Pages (*.html)|*.html|PDF Documents (*.pdf)|*.pdf");
  dialog.ShowSave();
  const std::string path = dialog.FileName;
  if (path.empty()) return {};
  try {
    const std::string content = IsPdf(path) ? AsPdf(app.forms.GetScreen(), html) : html;
    OutputFile file(path);
    file.Write(content);
    file.Commit();
    return FileNameOf(path);
  } catch (const RuntimeFault& fault) {
    app.forms.MsgBox(fault.Description(), MessageIcon::Critical, "Error!");
    return {};
  }
}

}  // namespace vk32
