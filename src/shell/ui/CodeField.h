#pragma once

#include <QLineEdit>

// An access code is typed blind and shown as "*", whatever the style would draw.
inline void hideAsStars(QLineEdit *field)
{
    field->setEchoMode(QLineEdit::Password);
    field->setStyleSheet(QStringLiteral("lineedit-password-character: 42"));
}
