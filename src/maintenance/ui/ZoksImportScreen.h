#pragma once

#include <QString>

class QWidget;

// "Добавяне от ЗОКС" in the window: the file is chosen (temp.mdb of the data folder first), the
// patients are added for the signed-in doctor with the progress dialog, and a message says what
// was added and who was left out.
namespace zoksscreen {

void ImportFromZoks(QWidget *owner);
// The import of a chosen file with its messages; the file dialog stays out of it.
void importFile(const QString &path);

} // namespace zoksscreen
