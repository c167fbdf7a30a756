#include "reports/xml/XmlValues.h"

#include "reports/xml/XmlLines.h"

#include <QtMath>

#include <utility>

namespace reports {
namespace {

// The trimmed part up to the first blank, and the trimmed rest behind it. Without a blank the
// first part is empty and the whole text is the rest.
std::pair<QString, QString> cutAtFirstBlank(const QString &text)
{
    const qsizetype blank = text.indexOf(u' ');
    if (blank < 0)
        return {QString(), TrimBlanks(text)};
    return {TrimBlanks(text.left(blank)), TrimBlanks(text.mid(blank + 1))};
}

constexpr qint64 LargestLev = 32767;

} // namespace

PersonName SplitPersonName(const QString &names)
{
    const auto [first, rest] = cutAtFirstBlank(names);
    const auto [middle, last] = cutAtFirstBlank(rest);
    return {first, middle, last};
}

std::optional<QString> RepPrice(double cena)
{
    if (!qIsFinite(cena) || cena < 0 || cena >= LargestLev + 1)
        return std::nullopt;
    // Whole cents first: a stored 17.99 is 1798.9999... times 100, which must not lose a cent.
    const qint64 cents = qRound64(cena * 100.0);
    if (cents < 0 || cents / 100 > LargestLev)
        return std::nullopt;
    return QStringLiteral("%1.%2").arg(cents / 100).arg(cents % 100);
}

QString YearMonthDayOfTyped(const QString &typed)
{
    return typed.mid(6, 4) + u'-' + typed.mid(3, 2) + u'-' + typed.left(2);
}

QString UnpaddedDate(const std::optional<QDate> &date)
{
    if (!date || !date->isValid())
        return QStringLiteral("--");
    return QStringLiteral("%1-%2-%3").arg(date->year()).arg(date->month()).arg(date->day());
}

QString YearMonthDayOfQueryForm(const QString &queryForm)
{
    return queryForm.right(4) + u'-' + queryForm.left(2) + u'-' + queryForm.mid(3, 2);
}

QString InvestigationCodeName(const QString &kod)
{
    const QString code = TrimBlanks(kod);
    return code.left(2) + u'.' + code.mid(2, 2);
}

} // namespace reports
