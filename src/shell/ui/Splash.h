#pragma once

#include <QWidget>

// The start-up picture: product name, version and platform, shown for up to one second.
class Splash final : public QWidget
{
    Q_OBJECT
public:
    Splash();
    // Shows the splash until the next full second of the clock, never longer than a second.
    void showUntilNextSecond();
};
