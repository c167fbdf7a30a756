#pragma once

#include <QChar>
#include <QString>

// Escape, the close box, "Изход" and a reload of a grid never store what a person typed, and
// never drop it unseen: they ask this first. ДА drops the typing; НЕ keeps the typing and the
// window as they are. `whatIsUnsaved` names it: "Има незаписан ред на услуга."
inline QString dropTypingQuestion(const QString &whatIsUnsaved)
{
    return whatIsUnsaved + QChar(13) + QStringLiteral("Да се откажа ли от въведеното?");
}
