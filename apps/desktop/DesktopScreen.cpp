// The screen of the desktop.
#include "DesktopScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QScreen>
#include <QToolTip>
#include <QUrl>
#include <algorithm>

#include "Accessibility.h"
#include "FileDialogs.h"
#include "FileOpener.h"
#include "FormWindow.h"
#include "MessageBox.h"
#include "Paper.h"
#include "ProgramStyle.h"
#include "Text.h"
#include "WindowIcon.h"
#include "app/ManualPages.h"
#include "forms/Forms.h"

namespace vk32 {
namespace {

/// Not at once: an event of the window, or of one of its controls, may still be on the stack.
void DeleteLater(FormWindow* window) { window->deleteLater(); }

/// Where the manual was installed, beside the program or in its place on Linux, or made with it, or else where the
/// program was built from. Empty if the page is nowhere.
QString ManualPath(std::string_view page) {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* place : {"../share/doc/vk32/manual/%1.html", "manual/%1.html", "packaging/manual/%1.html",
                            "../../docs/manual/%1.adoc"}) {
    const QFileInfo file(program, QString::fromLatin1(place).arg(QString::fromStdString(std::string(page))));
    if (file.exists()) return file.canonicalFilePath();
  }
  return {};
}

}  // namespace

DesktopScreen::DesktopScreen() : middle_(QGuiApplication::primaryScreen()->availableGeometry().center()) {
  QApplication::setStyle(ProgramStyle::Make());
  QApplication::setPalette(colors::ProgramPalette());
  QApplication::setFont(theme_.Font(TextRole::Body));
  QApplication::setQuitOnLastWindowClosed(false);
  QToolTip::setFont(theme_.Font(TextRole::Body));
  QToolTip::setPalette(colors::ProgramPalette());
  InstallAccessibility();
}

DesktopScreen::~DesktopScreen() {
  windows_.clear();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

FormWindow* DesktopScreen::WindowOf(const Form& form) const {
  const auto at =
      std::find_if(windows_.begin(), windows_.end(), [&](const Opened& opened) { return opened.form == &form; });
  return at == windows_.end() ? nullptr : at->window.get();
}

void DesktopScreen::FormLoaded(Form&) {
  // Its window is made when it is first shown: many a form is only loaded ahead.
}

void DesktopScreen::FormShown(Form& form) {
  const QWidget* active = ActiveWindow();
  if (active) middle_ = active->geometry().center();
  auto at = std::find_if(windows_.begin(), windows_.end(), [&](const Opened& opened) { return opened.form == &form; });
  // The splash page has no frame to show it in, and is not to wait until it is drawn.
  if (form.style != FormStyle::Splash && QApplication::windowIcon().isNull()) {
    QApplication::setWindowIcon(QIcon(new WindowIcon));
  }
  if (at == windows_.end()) {
    windows_.push_back({&form, std::shared_ptr<FormWindow>(new FormWindow(form, theme_), DeleteLater)});
  } else {
    std::rotate(at, at + 1, windows_.end());
  }
  FormWindow& window = *windows_.back().window;
  // Only a dialog stands above whatever shows; another window above the one that the user has opened it from.
  const bool isDialog = form.style == FormStyle::Dialog || form.style == FormStyle::Modal;
  const bool isOwned = active && active != &window && (isDialog || active->isActiveWindow());
  window.Open(middle_, isOwned ? active : nullptr);
}

void DesktopScreen::FormHidden(Form& form) {
  FormWindow* window = WindowOf(form);
  if (!window) return;
  Leave(*window);
  window->hide();
}

void DesktopScreen::FormUnloaded(Form& form) {
  const auto at =
      std::find_if(windows_.begin(), windows_.end(), [&](const Opened& opened) { return opened.form == &form; });
  if (at == windows_.end()) return;
  Leave(*at->window);
  at->window->Detach();
  form.Registry().dispatcher.KeepWhileActing(std::move(at->window));
  windows_.erase(at);
}

void DesktopScreen::Leave(const QWidget& window) {
  if (window.isVisible()) middle_ = window.geometry().center();
}

QWidget* DesktopScreen::ActiveWindow() const {
  QWidget* topmost = nullptr;
  for (const Opened& opened : windows_) {
    if (opened.window->isActiveWindow()) return opened.window.get();
    if (opened.window->isVisible()) topmost = opened.window.get();
  }
  return topmost;
}

Answer DesktopScreen::Ask(const MessageBoxRequest& request) {
  MessageBox box(request, theme_, ActiveWindow());
  box.onHelp = [this] {
    if (const std::string reason = OpenManualPage(MessagesPage); !reason.empty()) Tell(reason);
  };
  return box.Ask();
}

void DesktopScreen::Tell(const std::string& reason) {
  MessageBox({reason, MessageIcon::Exclamation, "VK32"}, theme_, QApplication::activeModalWidget()).Ask();
}

std::optional<std::string> DesktopScreen::AskFile(const FileDialogRequest& request) {
  return AskForFile(request, folder_, ActiveWindow(), [this](const std::string& reason) { Tell(reason); });
}

void DesktopScreen::OpenWebSite(const std::string& url) { QDesktopServices::openUrl(QUrl(FromWords(url))); }

void DesktopScreen::CopyText(const std::string& text) {
  QGuiApplication::clipboard()->setText(FromBytes(text).remove(u'\r'));
}

std::string DesktopScreen::Description() const {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const QString size = screen ? QString("%1 x %2 at %3 %")
                                    .arg(screen->geometry().width())
                                    .arg(screen->geometry().height())
                                    .arg(qRound(screen->devicePixelRatio() * 100))
                              : QString("no screen");
  return QString("Qt %1 (%2), %3").arg(qVersion(), QGuiApplication::platformName(), size).toStdString();
}

std::optional<std::string> DesktopScreen::MakePdf(const std::string& html) { return PdfOf(html); }

std::string DesktopScreen::OpenManualPage(std::string_view page) {
  const QString path = ManualPath(page);
  if (path.isEmpty()) {
    return "The manual is not installed. Its place is the folder manual beside the program, or share/doc/vk32/manual "
           "beside the program's folder.";
  }
  const std::string reason = "No program on this computer opens the manual. It is in the file\n" + path.toStdString();
  const auto tellOnce = [this, reason] {
    if (std::exchange(tellsReason_, true)) return;
    Tell(reason);
    tellsReason_ = false;
  };
  return OpenFile(path, tellOnce) ? "" : reason;
}

std::string DesktopScreen::OpenManual(const std::string& form) { return OpenManualPage(ManualPage(form)); }

void DesktopScreen::ShowHighContrast(bool high) {
  if (high == theme_.highContrast) return;
  theme_.highContrast = high;
  for (const Opened& opened : windows_) opened.window->RefreshAll();
}

void DesktopScreen::ProgramFaulted(int number, const std::string& description) {
  faulted_ = true;
  Ask({"Run-time error '" + std::to_string(number) + "':\n\n" + description, MessageIcon::Critical, "VK32"});
}

void DesktopScreen::ProgramEnded() {
  ended_ = true;
  for (const Opened& opened : windows_) opened.window->hide();
  QCoreApplication::exit(ExitStatus());
}

}  // namespace vk32
