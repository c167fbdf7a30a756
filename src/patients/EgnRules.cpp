#include "patients/EgnRules.h"

#include "store/TextReading.h"

#include <algorithm>

using text::numberAt;

namespace {

// The year the number places its holder in, by the century code of characters 3-4; 0 when
// the code places it nowhere.
int birthYear(const QString &egn, qint64 monthCode)
{
    QString century;
    if (monthCode > 0 && monthCode < 13)
        century = QStringLiteral("19");
    else if (monthCode > 20 && monthCode < 33)
        century = QStringLiteral("18");
    else if (monthCode > 40 && monthCode < 53)
        century = QStringLiteral("20");
    if (century.isEmpty())
        return 0;
    return int(text::leadingNumber(QString(century + egn.left(2))));
}

// The century of a month code, by the public rule: 0 when the code names no month.
int centuryOf(qint64 monthCode)
{
    if (monthCode >= 1 && monthCode <= 12)
        return 1900;
    if (monthCode >= 21 && monthCode <= 32)
        return 1800;
    if (monthCode >= 41 && monthCode <= 52)
        return 2000;
    return 0;
}

int daysAllowed(qint64 month, bool leap)
{
    switch (month) {
    case 4: case 6: case 9: case 11:
        return 30;
    case 2:
        return leap ? 29 : 28;
    default:
        return 31;
    }
}

bool systemMonthBad(const QString &egn)
{
    const qint64 month = numberAt(egn, 3, 2);
    const qint64 first = numberAt(egn, 1, 1);
    if (first != 0)
        return month > 12;
    return month > 52 || month < 41;
}

// The public rule takes the month and the year from the century code and the true calendar;
// for every number the system's rule takes, the two give the same answer.
bool publicDateBad(const QString &egn)
{
    const qint64 monthCode = numberAt(egn, 3, 2);
    const int century = centuryOf(monthCode);
    if (century == 0)
        return false;
    const int year = century + int(numberAt(egn, 1, 2));
    return numberAt(egn, 5, 2) > daysAllowed(EgnCenturyMonth(egn), QDate::isLeapYear(year));
}

} // namespace

int EgnCenturyMonth(const QString &egn)
{
    const qint64 monthCode = numberAt(egn, 3, 2);
    const int century = centuryOf(monthCode);
    if (century == 0)
        return 0;
    return int(monthCode - (century == 1900 ? 0 : century == 1800 ? 20 : 40));
}

bool EgnDateBad(const QString &egn, EgnRule rule)
{
    if (rule == EgnRule::Public)
        return publicDateBad(egn);
    const qint64 monthCode = numberAt(egn, 3, 2);
    // Divisible by four is the whole leap rule here, so 1900 and the unplaced year 0 are leap.
    const bool leap = birthYear(egn, monthCode) % 4 == 0;
    const qint64 month = numberAt(egn, 1, 1) != 0 ? monthCode : monthCode - 40;
    if (month < 1 || month > 12)
        return false;
    return numberAt(egn, 5, 2) > daysAllowed(month, leap);
}

bool EgnMonthBad(const QString &egn, EgnRule rule)
{
    // The public rule only adds: what the system takes (month 00 among it) stays taken.
    if (rule == EgnRule::Public && EgnCenturyMonth(egn) != 0)
        return false;
    return systemMonthBad(egn);
}

int EgnCheckDigit(const QString &egn)
{
    static constexpr int weights[] = {2, 4, 8, 5, 10, 9, 7, 3, 6};
    qint64 sum = 0;
    for (int i = 0; i < 9; ++i)
        sum += numberAt(egn, i + 1, 1) * weights[i];
    const int digit = int(sum % 11);
    return digit == 10 ? 0 : digit;
}

bool EgnCheckDigitBad(const QString &egn) { return numberAt(egn, 10, 1) != EgnCheckDigit(egn); }

bool EgnNotTenDigits(const QString &egn)
{
    return egn.size() != 10 || !std::all_of(egn.begin(), egn.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString EgnBirthDateText(const QString &egn, EgnRule rule)
{
    const qint64 monthCode = numberAt(egn, 3, 2);
    if (rule == EgnRule::Public && monthCode > 20 && monthCode < 33)
        return egn.mid(4, 2) + u'.' + QString::number(monthCode - 20) + QStringLiteral(".18") + egn.left(2);
    if (monthCode > 40)
        return egn.mid(4, 2) + u'.' + QString::number(monthCode - 40) + QStringLiteral(".20") + egn.left(2);
    return egn.mid(4, 2) + u'.' + egn.mid(2, 2) + QStringLiteral(".19") + egn.left(2);
}

std::optional<QDate> EgnBirthDate(const QString &egn, EgnRule rule)
{
    const QStringList parts = EgnBirthDateText(egn, rule).split(u'.');
    // Only plain digits and a four-digit year: a short number gives no date rather than year 197.
    if (parts.size() != 3 || parts[2].size() != 4)
        return std::nullopt;
    for (const QString &part : parts)
        if (part.isEmpty() || part.size() > 4 || !std::all_of(part.begin(), part.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
            return std::nullopt;
    const QDate date(parts[2].toInt(), parts[1].toInt(), parts[0].toInt());
    if (!date.isValid())
        return std::nullopt;
    return date;
}

QString EgnSex(const QString &egn)
{
    return numberAt(egn, 9, 1) % 2 == 0 ? QStringLiteral("М") : QStringLiteral("Ж");
}

std::optional<bool> EgnOverEighteen(const QString &egn, const QDate &today, EgnRule rule)
{
    const auto born = EgnBirthDate(egn, rule);
    if (!born)
        return std::nullopt;
    const int years = today.year() - born->year();
    if (years != 18)
        return years > 18;
    if (today.month() != born->month())
        return today.month() > born->month();
    return today.day() > born->day();
}
