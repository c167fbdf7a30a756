#pragma once

#include <QString>

class QWidget;

// "Пренасяне от стара версия" in the window: the folder of the earlier edition's files and a
// new data folder are chosen; what would be taken is shown and asked about before anything is
// written. The open practice is never touched: the new folder is for the next start.
namespace legacyscreen {

void TakeOverOldPractice(QWidget *owner);
// The same for chosen folders; the folder dialogs stay out of it.
void takeOver(const QString &fromFolder, const QString &dataFolder);

} // namespace legacyscreen
