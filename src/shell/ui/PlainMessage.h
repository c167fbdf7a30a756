#pragma once

#include <QMessageBox>
#include <QString>

// A plain message box with a title of its own and an OK button. Most messages go to the
// program's "Информация" dialog through dialogs(); a few screens name the box themselves
// (the password change, the missing help), and those come here.
void plainMessage(QWidget *parent, const QString &title, const QString &text,
                  QMessageBox::Icon icon = QMessageBox::NoIcon);
