// The dialogs for opening and saving a file.
#include "FileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTreeView>

#include "Text.h"
#include "platform/Files.h"

namespace vk32 {
namespace {

constexpr QSize DialogSize(800, 480);

using Refuse = std::function<void(const std::string& reason)>;

/// In UTF-8 on every system.
std::string NativePath(const QString& path) { return QDir::toNativeSeparators(path).toStdString(); }

class SaveDialog : public QFileDialog {
 public:
  SaveDialog(QWidget* parent, const Refuse& refuse) : QFileDialog(parent), refuse_(refuse) {}

  /// False if nothing can be saved there; the user has been told.
  bool IsWritable() {
    const QStringList chosen = selectedFiles();
    if (chosen.isEmpty() || QFileInfo(chosen.front()).isDir()) return true;
    const std::string reason = WhyNotWritable(NativePath(chosen.front()));
    if (!reason.empty()) refuse_(reason);
    return reason.empty();
  }

 protected:
  void accept() override {
    // A dialog of the desktop itself has closed already; it is asked after it has.
    if (testAttribute(Qt::WA_DontShowOnScreen) || IsWritable()) QFileDialog::accept();
  }

 private:
  const Refuse& refuse_;
};

/// Dates and sizes are whole; the names share what is left.
void ShowWholeColumns(QFileDialog& dialog) {
  dialog.setViewMode(QFileDialog::Detail);
  for (QTreeView* files : dialog.findChildren<QTreeView*>()) {
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setStretchLastSection(false);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
}

QStringList Split(const std::string& filter) { return FromWords(filter).split(u'|'); }

}  // namespace

QStringList NameFilters(const std::string& filter) {
  const QStringList parts = Split(filter);
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    QString description = parts[at];
    description.remove(QRegularExpression(QStringLiteral("\\s*\\([^)]*\\)\\s*$")));
    QStringList patterns = parts[at + 1].split(u';');
    // Here "*.*" would leave out names without a point.
    patterns.replaceInStrings(QRegularExpression(QStringLiteral("^\\*\\.\\*$")), QStringLiteral("*"));
    filters += description + " (" + patterns.join(u' ') + ")";
  }
  return filters;
}

QString DefaultSuffix(const std::string& filter, qsizetype chosen) {
  const QString pattern = Split(filter).value(2 * chosen + 1).split(u';').front();
  const QString suffix = pattern.mid(pattern.lastIndexOf(u'.') + 1);
  return pattern.contains(u'.') && !suffix.contains(u'*') ? suffix : QString();
}

std::optional<std::string> AskForFile(const FileDialogRequest& request, QString& folder, QWidget* parent,
                                      const Refuse& refuse) {
  SaveDialog dialog(parent, refuse);
  const bool save = request.kind == FileDialogRequest::Kind::Save;
  dialog.setWindowTitle(FromWords(request.title));
  dialog.setNameFilters(NameFilters(request.filter));
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (save) {
    dialog.setDefaultSuffix(DefaultSuffix(request.filter, 0));
    QObject::connect(&dialog, &QFileDialog::filterSelected, [&](const QString& chosen) {
      dialog.setDefaultSuffix(DefaultSuffix(request.filter, dialog.nameFilters().indexOf(chosen)));
    });
  }
  if (!folder.isEmpty()) dialog.setDirectory(folder);
  dialog.resize(DialogSize);
  ShowWholeColumns(dialog);
  do {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  } while (save && !dialog.IsWritable());
  const QString chosen = dialog.selectedFiles().front();
  folder = QFileInfo(chosen).absolutePath();
  return NativePath(chosen);
}

}  // namespace vk32
