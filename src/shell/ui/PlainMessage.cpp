#include "shell/ui/PlainMessage.h"

#include "base/Dialogs.h"

void plainMessage(QWidget *parent, const QString &title, const QString &text, QMessageBox::Icon icon)
{
    QMessageBox box(icon, title, displayText(text), QMessageBox::Ok, parent);
    box.setObjectName(QStringLiteral("PlainMessage"));
    box.exec();
}
