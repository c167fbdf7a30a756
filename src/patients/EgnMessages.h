#pragma once

#include <QString>

// The messages that name a fault of a personal number, in one place for every screen.
namespace egnmessages {

inline const QString InvalidLength = QStringLiteral("Невалидно ЕГН!");
inline const QString DateHead = QStringLiteral("Грешна дата в ЕГН: ");
inline const QString MonthHead = QStringLiteral("Грешен месец в ЕГН: ");
inline const QString CheckDigitHead = QStringLiteral("Грешна контролна сума в ЕГН: ");

// The head, a carriage return, three blanks and the number.
inline QString withNumber(const QString &head, const QString &egn)
{
    return head + QChar(13) + QStringLiteral("   ") + egn;
}

} // namespace egnmessages
