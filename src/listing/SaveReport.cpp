// A report on its way to the place that the user chooses.
#include "listing/SaveReport.h"

#include <algorithm>
#include <cctype>

#include "forms/SaveAs.h"
#include "platform/Fault.h"
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

ReportHead ReportHeadOf(const std::string& product, const std::string& model, const std::string& source,
                        const EventLoop& loop) {
  return {product, model, source, loop.DateAndTime(), "VK32 " + ProgramVersion()};
}

ReportHead ReportHeadOf(const App& app, const std::string& source) {
  const Globals& globals = app.globals;
  return ReportHeadOf(globals.CurrentProduct, globals.CurrentProduct == "VK-RTX" ? globals.CurrentModel : "", source,
                      app.forms.dispatcher.Loop());
}

std::string SaveReport(FileDialog& dialog, const std::string& html) {
  Screen& screen = dialog.OwnerForm().Registry().GetScreen();
  return FileNameOf(SaveAs(dialog, "Save Report",
                           "Web Pages and PDF Documents (*.html;*.pdf)|*.html;*.pdf|"
                           "Web Pages (*.html)|*.html|PDF Documents (*.pdf)|*.pdf",
                           [&](const std::string& path) { return IsPdf(path) ? AsPdf(screen, html) : html; }));
}

}  // namespace vk32
