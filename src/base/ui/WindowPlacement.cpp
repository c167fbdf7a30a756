#include "base/ui/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

int clampedStart(int start, int length, int areaStart, int areaLength)
{
    return std::clamp(start, areaStart, std::max(areaStart, areaStart + areaLength - length));
}

const QScreen *screenOf(const QWidget *window, const QRect &frame)
{
    if (const QScreen *under = QGuiApplication::screenAt(frame.center()))
        return under;
    return window->screen() ? window->screen() : QGuiApplication::primaryScreen();
}

} // namespace

void keepOnScreen(QWidget *window)
{
    const QRect frame = window->frameGeometry();
    const QScreen *screen = screenOf(window, frame);
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    // The frame adds a title bar and borders that the window's own size does not count; before
    // the window is first shown the frame is not known yet and the size is all there is.
    const QSize decoration = frame.size() - window->size();
    const QSize fitting = window->size().boundedTo(area.size() - decoration).expandedTo(window->minimumSizeHint());
    window->resize(fitting.expandedTo(window->minimumSize()));
    const QSize outer = window->size() + decoration;
    window->move(clampedStart(frame.x(), outer.width(), area.x(), area.width()),
                 clampedStart(frame.y(), outer.height(), area.y(), area.height()));
}

void placeBeside(QWidget *window, const QWidget *anchor)
{
    keepOnScreen(window);
    const QRect frame = window->frameGeometry();
    const QRect beside = anchor->frameGeometry();
    const QScreen *screen = screenOf(anchor, beside);
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    const int top = clampedStart(beside.top(), frame.height(), area.top(), area.height());
    if (beside.right() + frame.width() <= area.right())
        window->move(beside.right() + 1, top);
    else if (beside.left() - frame.width() >= area.left())
        window->move(beside.left() - frame.width(), top);
    else
        window->move(area.right() + 1 - frame.width(), area.bottom() + 1 - frame.height());
}

int titleWidth(const QWidget *window)
{
    // Title bars draw in a bold face, about the size of the program's; the room for the
    // frame's buttons (menu, minimise, maximise, close) and its borders comes on top.
    constexpr int frameButtons = 4 * 32 + 24;
    QFont title = QGuiApplication::font();
    title.setBold(true);
    return QFontMetrics(title).horizontalAdvance(window->windowTitle()) + frameButtons;
}

void keepTitleWhole(QWidget *window)
{
    window->setMinimumWidth(std::max(window->minimumWidth(), titleWidth(window)));
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
