#pragma once

class QWidget;

// Shrinks a top-level window, down to its minimum size, and moves it so that its frame lies
// within the free area of the screen it stands on (the area without panels and task bars). A
// window placed beside another, or sized for a larger screen, then opens where it can be used.
void keepOnScreen(QWidget *window);
