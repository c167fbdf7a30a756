#pragma once

#include <QString>

// The caption of a record navigator: "Запис №: " and the record's position counted from 1.
inline QString recordCaption(int absolutePosition)
{
    return QStringLiteral("Запис №: ") + QString::number(absolutePosition + 1);
}
