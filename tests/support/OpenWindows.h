#pragma once

#include <QApplication>
#include <QList>
#include <QWidget>

// The visible top-level windows of one kind: how a test sees that a form opened once.
template <typename Screen>
QList<Screen *> openWindows()
{
    QList<Screen *> found;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *screen = qobject_cast<Screen *>(widget); screen && screen->isVisible())
            found << screen;
    return found;
}
