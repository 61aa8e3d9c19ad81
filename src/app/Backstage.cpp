// A configuration that is on no screen.
#include "app/Backstage.h"

#include <algorithm>

#include "core/RecordFile.h"
#include "models/wizard/WizardForm.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

bool IsProduct(const std::string& name) {
  const auto products = Products();
  return std::any_of(products.begin(), products.end(), [&](const Product& product) { return product.name == name; });
}

}  // namespace

FileKind KindOfFile(const std::string& path) {
  RecordFile file = RecordFile::ForReading(path);
  FileKind kind;
  file.Text(kind.product);
  if (!IsProduct(kind.product)) file.Text(kind.product);  // behind the program's version
  file.Text(kind.model);
  return kind;
}

Answer SilentScreen::Ask(const MessageBoxRequest& request) {
  told.push_back(request.text);
  return Declining(request.buttons);
}

Backstage::Backstage(EventLoop& loop, SerialDriver& driver, PortNames& ports) : app(loop, screen, driver, ports) {
  RegisterForms(app);
  app.globals.ComPortText = "None";
}

WizardForm& Backstage::Begin(const std::string& product, const std::string& model) {
  SelectProduct(app.globals, product);
  SelectModel(app.globals, model);
  const std::string name(FindProduct(product).wizard);
  app.forms.dispatcher.Dispatch([&] { app.forms.Load(name); });
  if (auto* wizard = dynamic_cast<WizardForm*>(app.forms.Find(name))) return *wizard;
  throw RuntimeFault(RuntimeFault::InvalidCall);
}

WizardForm* Backstage::Open(const std::string& path) {
  FileKind kind;
  try {
    kind = KindOfFile(path);
  } catch (const RuntimeFault& fault) {
    screen.told.push_back(path + " can't be read as a configuration file: " + fault.Description());
    return nullptr;
  }
  if (!IsProduct(kind.product)) {
    screen.told.push_back(path + " is no configuration file of this program. Choose a file that it has saved.");
    return nullptr;
  }
  WizardForm& wizard = Begin(kind.product, kind.model);
  bool opened = false;
  screen.file = path;
  app.forms.dispatcher.Dispatch([&] { opened = wizard.OpenFileAskedFor(); });
  return opened ? &wizard : nullptr;
}

}  // namespace vk32
