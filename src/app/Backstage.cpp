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
}

WizardForm& Backstage::Begin(const std::string& product, const std::string& model, const std::string& port) {
  app.globals.ComPortText = port;
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

BackstageReader::BackstageReader(App& front)
    : front_(front), stage_(front.forms.dispatcher.Loop(), front.driver, front.ports) {
  stage_.app.forms.dispatcher.EndWith(front.forms.dispatcher);
}

std::optional<Listing> BackstageReader::ReadFile(const std::string& path, const WizardKind& kind) {
  WizardForm* wizard = stage_.Open(path);
  if (wizard == nullptr) return std::nullopt;
  const Globals& opened = stage_.app.globals;
  if (opened.CurrentProduct != kind.product || opened.CurrentModel != kind.model) {
    stage_.screen.told.push_back("The selected configuration file is not for the " + kind.product + ".");
    return std::nullopt;
  }
  return Shown(wizard->List());
}

std::optional<Listing> BackstageReader::ReadDevice(const std::string& port, const WizardKind& kind,
                                                   ExchangeObserver& observer) {
  WizardForm& wizard = stage_.Begin(kind.product, kind.model, port);
  stage_.app.lateAnswers = front_.lateAnswers;
  std::optional<Listing> read;
  stage_.app.forms.dispatcher.Dispatch([&] {
    if (wizard.ReadDevice(observer) == Taken::All) read = Shown(wizard.List());
  });
  front_.lateAnswers = stage_.app.lateAnswers;
  front_.forms.dispatcher.LeaveIfEnded();
  return read;
}

Listing BackstageReader::ShowSent(const SentParameters& sent, const WizardKind& kind) {
  WizardForm& wizard = stage_.Begin(kind.product, kind.model);
  stage_.app.forms.dispatcher.Dispatch([&] { wizard.TakeSent(sent); });
  return Shown(wizard.List());
}

std::string BackstageReader::Why() const {
  return stage_.screen.told.empty() ? "Nothing came, or not all of it." : stage_.screen.told.back();
}

}  // namespace vk32
