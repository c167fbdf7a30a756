#include "treatment/ui/OnScreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

int clampedStart(int start, int length, int areaStart, int areaLength)
{
    return std::clamp(start, areaStart, std::max(areaStart, areaStart + areaLength - length));
}

} // namespace

void keepOnScreen(QWidget *window)
{
    const QRect frame = window->frameGeometry();
    QScreen *screen = QGuiApplication::screenAt(frame.center());
    if (!screen)
        screen = window->screen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    // Before the window is first shown the frame is not known yet; its geometry is all there is.
    const QSize decoration = frame.size() - window->size();
    const QSize fitting = window->size().boundedTo(area.size() - decoration).expandedTo(window->minimumSizeHint());
    window->resize(fitting.expandedTo(window->minimumSize()));
    const QSize outer = window->size() + decoration;
    window->move(clampedStart(frame.x(), outer.width(), area.x(), area.width()),
                 clampedStart(frame.y(), outer.height(), area.y(), area.height()));
}
