#pragma once

#include <QString>

#include <functional>

class QWidget;

// The maintenance commands of the menu "Служебна": backup, restore, repair, clean-out.
namespace maintenanceui {

enum class ArchiveDialog { Save, Open };
// Which file the user picks in the archive dialog; empty when cancelled. Tests put their own
// answer here; nullptr puts back the real file dialogs.
using ArchiveChooser = std::function<QString(QWidget *owner, ArchiveDialog dialog)>;
void setArchiveChooser(ArchiveChooser chooser);

void backupData(QWidget *owner);
// `closeWindows` closes every open window, each asking over its unsaved typing, and answers
// false when one stays open, which stops the restore; `reload` refreshes what the main window
// shows once the restored file is open.
void restoreData(QWidget *owner, const std::function<bool()> &closeWindows, const std::function<void()> &reload);
void repairData();
// Asks first, naming the doctor whose patients stay.
void cleanOutData();

} // namespace maintenanceui
