#include "shell/ui/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

void keepOnScreen(QWidget *window)
{
    const QScreen *screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect free = screen->availableGeometry();
    // The frame adds a title bar and borders that geometry() does not count.
    const QRect frame = window->frameGeometry();
    const QSize border = frame.size() - window->geometry().size();
    const QSize fitting(std::min(window->width(), free.width() - border.width()),
                        std::min(window->height(), free.height() - border.height()));
    if (fitting != window->size())
        window->resize(fitting.expandedTo(window->minimumSize()));
    const int width = window->width() + border.width();
    const int height = window->height() + border.height();
    const int x = std::clamp(frame.x(), free.left(), std::max(free.left(), free.right() + 1 - width));
    const int y = std::clamp(frame.y(), free.top(), std::max(free.top(), free.bottom() + 1 - height));
    if (QPoint(x, y) != frame.topLeft())
        window->move(x, y);
}

void bringForward(QWidget *window)
{
    if (window->isMinimized())
        window->showNormal();
    window->show();
    keepOnScreen(window);
    window->raise();
    window->activateWindow();
}
