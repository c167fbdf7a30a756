#pragma once

#include <QSize>

class QWidget;

// The smallest screen the practice works on: every window must fit it.
inline constexpr QSize SmallestScreen(1366, 768);

// Keeps a window within the free area of its screen (the primary one before it is shown),
// shrinking it to that area where it is larger, so that no part of it opens out of reach.
void keepOnScreen(QWidget *window);
// Places the shown `window` beside the shown `anchor` with both frames whole on the screen:
// right of it where there is room, else left of it; where neither side has room, in the
// screen's lower right corner, clear of the anchor's title bar and upper fields.
void placeBeside(QWidget *window, const QWidget *anchor);
// The least width at which a window manager shows `window`'s whole title beside the frame's
// buttons; a small window is made at least that wide, or its title is cut to "В… е".
int titleWidth(const QWidget *window);
void keepTitleWhole(QWidget *window);
// Shows a window that may be open already: on screen, in front of the others, active.
void bringForward(QWidget *window);
