// The dialogs for opening and saving a file.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>

#include "forms/Screen.h"

class QWidget;

namespace vk32 {

/// "Settings (*.cfg)|*.cfg|All Files (*.*)|*.*" as Qt wants it: "Settings (*.cfg)", "All Files (*)".
QStringList NameFilters(const std::string& filter);
/// What a name without a suffix gets: that of the first pattern of the chosen description, without its point; empty if
/// it has none. `chosen` counts from 0.
QString DefaultSuffix(const std::string& filter, qsizetype chosen = 0);

/// Asks for a file, starting in `folder`, which becomes the folder of the file that was chosen. Nothing on a cancel. A
/// place where nothing can be saved is refused: `refuse` is given the reason, and the dialog goes on.
std::optional<std::string> AskForFile(const FileDialogRequest& request, QString& folder, QWidget* parent,
                                      const std::function<void(const std::string& reason)>& refuse);

}  // namespace vk32
