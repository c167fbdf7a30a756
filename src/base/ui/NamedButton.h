#pragma once

#include <QPushButton>

// A button with the system's name and caption. It takes the default role only when a screen
// gives it, as the forms decide which button Enter presses.
inline QPushButton *namedButton(const QString &name, const QString &caption, QWidget *parent,
                                const QString &tip = {})
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}
