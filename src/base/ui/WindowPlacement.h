#pragma once

#include <QSize>

class QWidget;

// The smallest screen the practice works on: every window must fit it.
inline constexpr QSize SmallestScreen(1366, 768);

// Keeps a window within the free area of its screen (the primary one before it is shown),
// shrinking it to that area where it is larger, so that no part of it opens out of reach.
void keepOnScreen(QWidget *window);
// Shows a window that may be open already: on screen, in front of the others, active.
void bringForward(QWidget *window);
