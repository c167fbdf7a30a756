#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <functional>

// A plain message box as the user saw it.
struct PlainBox final
{
    QString title;
    QString text;
    QMessageBox::Icon icon;
};

// Runs `act` and answers every plain message box it opens with OK; returns the boxes in order.
inline QList<PlainBox> plainBoxesShownBy(const std::function<void()> &act)
{
    QList<PlainBox> shown;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&shown] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            shown.append({box->windowTitle(), box->text(), box->icon()});
            box->button(QMessageBox::Ok)->click();
        }
    });
    poll.start(10);
    act();
    return shown;
}
